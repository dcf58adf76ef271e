#!/usr/bin/env python3
"""An installed tree, moved: what runs in it, what it says when a part is missing, what is built against it.
usage: installed_tree.py CMAKE BUILD_FOLDER C_COMPILER C++_COMPILER MODULE_OF_ANOTHER_VERSION"""
import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

CMAKE, BUILD, CC, CXX, OTHER_VERSION = sys.argv[1:6]
SOURCE = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
FIX = "install krz again"


def run(*command, **options):
    environment = {name: value for name, value in os.environ.items() if not name.startswith("KRZ_")}
    environment.update(options.pop("environment", {}))
    return subprocess.run([*map(str, command)], capture_output=True, text=True, timeout=120, env=environment, **options)


class InstalledTree(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.work = pathlib.Path(folder.name)
        installed = run(CMAKE, "--install", BUILD, "--prefix", cls.work / "first place", "--strip")
        assert installed.returncode == 0, installed.stdout + installed.stderr
        cls.tree = cls.work / "second place" / "krz"
        cls.tree.parent.mkdir()
        (cls.work / "first place").rename(cls.tree)
        cls.krz = cls.tree / "bin" / "krz"
        cls.libraries = next(cls.tree.glob("**/libtoolbox.so")).parent
        cls.movie = cls.work / "krz-demo.mov"
        made = run(cls.krz, "demo", cls.work)
        assert made.returncode == 0, made.stderr

    def must(self, *command, **options):
        answer = run(*command, **options)
        self.assertEqual(answer.returncode, 0, f"{command}\n{answer.stdout}{answer.stderr}")
        return answer.stdout

    @contextlib.contextmanager
    def instead_of(self, part, replacement=None):
        """A part of the tree is gone, or another file is in its place."""
        aside = self.work / "aside"
        part.rename(aside)
        if replacement:
            shutil.copy(replacement, part)
        try:
            yield
        finally:
            part.unlink(missing_ok=True)
            aside.rename(part)

    def test_everything_is_there_and_names_no_place_of_the_build(self):
        for part in ("bin/krz", "include/krz/runtime.h", "include/krz/toolbox/Toolbox/Toolbox.h",
                     "share/doc/krz/README.md", "share/doc/krz/docs/embedding.md", "share/doc/krz/examples/tracks.bas",
                     "share/doc/krz/examples/embed/embed.cpp"):
            self.assertTrue((self.tree / part).is_file(), part)
        texts = [*self.tree.glob("**/*.cmake"), *self.tree.glob("**/*.pc")]
        self.assertGreaterEqual(len(texts), 6)
        for text in texts:
            for place in (BUILD, str(SOURCE), str(self.work)):
                self.assertNotIn(place, text.read_text(), text)
        for binary in (self.krz, *self.libraries.glob("*.so"), *self.libraries.glob("krz/**/*")):
            if binary.is_file():
                paths = re.findall(r"R(?:UN)?PATH.*\[(.*)\]", self.must("readelf", "-d", binary))
                self.assertTrue(all(p.startswith("$ORIGIN") for line in paths for p in line.split(":")), f"{binary} {paths}")

    def test_the_moved_tree_and_links_to_it_work(self):
        link = self.work / "link-to-krz"
        second = self.work / "link-to-link"
        link.symlink_to(os.path.relpath(self.krz, self.work))
        second.symlink_to(link)
        expected = self.must(self.krz, "info", self.movie)
        self.assertIn(" tracks", expected)
        for program in (link, second, os.path.relpath(self.krz, self.work)):
            self.assertEqual(self.must(program, "info", self.movie, cwd=self.work), expected)
        script = self.tree / "share/doc/krz/examples/tracks.bas"
        self.assertIn("vide 160 120 20", self.must(link, "run", script, self.movie))
        version = self.must("link-to-krz", "--version", cwd="/", environment={"PATH": f"{self.work}:/usr/bin:/bin"})
        self.assertIn(f"plug-in {self.libraries}/", version)
        self.assertIn("frameworks present", version)

    def test_a_missing_or_broken_part_is_named_with_the_fix(self):
        broken = self.work / "broken"
        broken.write_text("this is no library")
        without_entry = next(self.libraries.glob("libtoolbox.so.*.*.*"))
        soname = lambda name: next(p for p in self.libraries.glob(name) if p.name.count(".") == 3)
        module = self.libraries / "krz" / "krz-movie.so"
        cases = [(part, replacement, "") for replacement in (None, broken)
                 for part in (soname("libtoolbox.so.*"), soname("libkrzruntime.so.*"),
                              self.libraries / "krz" / "krz-command.so", module)]
        cases += [(module, without_entry, "no REALPluginMain"), (module, OTHER_VERSION, "interface version 8"),
                  (self.libraries / "krz" / "krz-command.so", without_entry, "krz_command")]
        for part, replacement, reason in cases:
            with self.subTest(part=part.name, replacement=replacement), self.instead_of(part, replacement):
                for command in (["info", self.movie], ["run", self.work / "none.bas"], ["classes"]):
                    if command[0] == "run":
                        (self.work / "none.bas").write_text("Print 1\n")
                    answer = run(self.krz, *command)
                    self.assertEqual((answer.returncode, answer.stdout), (1, ""), answer.stderr)
                    self.assertIn(part.name, answer.stderr)
                    self.assertIn(reason, answer.stderr)
                    self.assertIn(FIX, answer.stderr)
                    self.assertEqual(answer.stderr.count("\n"), 1, answer.stderr)
        self.must(self.krz, "info", self.movie)

    def test_without_frameworks_all_but_drawing_works(self):
        broken = self.work / "broken framework"
        broken.write_text("")
        changed = self.work / "chapters.mov"
        for name in ("ApplicationServices", "Carbon"):
            part = self.libraries / "krz" / "Frameworks" / f"{name}.framework" / name
            for replacement in (None, broken):
                with self.subTest(part=name, replacement=replacement), self.instead_of(part, replacement):
                    version = self.must(self.krz, "--version")
                    self.assertIn(f"/{name}.framework/{name}", version)
                    self.assertIn(FIX, version)
                    self.must(self.krz, "info", self.movie)
                    changed.unlink(missing_ok=True)
                    self.must(self.krz, "chapters", "import", self.movie, "--every", "2s", "-o", changed)
                    self.assertIn("0:08", self.must(self.krz, "chapters", "list", changed))
                    if name == "ApplicationServices":
                        drawn = run(self.krz, "map", self.movie, "-o", self.work / "map.png")
                        self.assertEqual(drawn.returncode, 1, drawn.stderr)
                        self.assertIn(str(part), drawn.stderr)
                        self.assertIn(FIX, drawn.stderr)

    def test_every_header_compiles_alone(self):
        include = self.tree / "include"
        toolbox = include / "krz" / "toolbox"
        warnings = ["-Wall", "-Wextra", "-pedantic", "-Werror", "-fsyntax-only", f"-I{include}", f"-I{toolbox}"]
        c_headers = sorted(p.relative_to(toolbox) for p in toolbox.glob("*/*.h"))
        headers = sorted(p.relative_to(include) for p in include.glob("krz/*.h"))
        self.assertGreater(len(c_headers), 12)
        self.assertGreater(len(headers), 4)
        for header in c_headers:
            for compiler, language in ((CC, ["-xc", "-std=c11", "-Wstrict-prototypes"]), (CXX, ["-xc++", "-std=c++17"])):
                self.must(compiler, *language, *warnings, "-", input=f"#include <{header}>\nint nothing;\n")
        for header in headers:
            self.must(CXX, "-xc++", "-std=c++17", *warnings, "-", input=f"#include <{header}>\nint nothing;\n")

    def test_the_example_is_built_with_the_cmake_package(self):
        example = self.tree / "share/doc/krz/examples/embed"
        self.assertLess(len((example / "embed.cpp").read_text().splitlines()), 40)
        build = self.work / "embed"
        self.must(CMAKE, "-S", example, "-B", build, f"-DCMAKE_PREFIX_PATH={self.tree}", f"-DCMAKE_CXX_COMPILER={CXX}")
        self.must(CMAKE, "--build", build)
        tracks = self.must(self.krz, "run", self.tree / "share/doc/krz/examples/tracks.bas", self.movie).split()[0]
        self.assertEqual(self.must(build / "embed", self.movie),
                         f"{tracks} tracks, 10 seconds\ntrack 1 has 20 pictures of 160 x 120\n")
        failed = run(build / "embed", self.work / "no.mov")
        self.assertEqual(failed.returncode, 1)
        self.assertIn("no.mov: there is no such file", failed.stderr)

    def test_programs_and_modules_are_built_with_pkg_config(self):
        environment = {"PKG_CONFIG_PATH": str(self.libraries / "pkgconfig")}

        def flags(package):
            # As a shell would split them: the tree's path has a space in it.
            text = self.must("pkg-config", "--cflags", "--libs", package, environment=environment)
            return [word.replace("\0", " ") for word in text.replace("\\ ", "\0").split()]

        rpath = f"-Wl,-rpath,{self.libraries}"
        program = self.work / "caller"
        self.must(CC, "-std=c11", HERE / "toolbox_caller.c", "-o", program, *flags("krz-toolbox"), rpath)
        self.assertRegex(self.must(program, self.movie), r"^\d tracks, 6000 of 600\n$")
        several = self.work / "several"
        self.must(CXX, "-std=c++17", HERE / "several_runtimes.cpp", "-o", several, *flags("krz-runtime"), rpath)
        lines = self.must(several, self.movie).splitlines()
        self.assertEqual([re.sub(r"^(\d) \d", r"\1", line) for line in lines],
                         ["1", "QTTrackKRZ 1", "2", "QTTrackKRZ 1", "3", "QTTrackKRZ 1", "0 references"])
        module = self.work / "module.so"
        self.must(CXX, "-std=c++17", "-shared", "-fPIC", "-DANNOUNCED_VERSION=9", SOURCE / "tests/modules/small_module.cpp",
                  "-o", module, *[flag for flag in flags("krz-runtime") if flag.startswith("-I")])
        self.assertIn("Add(amount as integer = 1) as integer",
                      self.must(self.krz, "classes", "TestCounter", environment={"KRZ_MODULE": str(module)}))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
