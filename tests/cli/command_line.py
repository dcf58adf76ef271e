#!/usr/bin/env python3
"""What a person sees of krz: exit statuses, messages, help. usage: command_line.py KRZ"""
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time
import unittest

from command_test import KRZ, MovieTest, krz


class CommandLine(MovieTest):
    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def test_wrong_usage_is_status_2_and_says_what_to_do(self):
        for arguments, expected in (
            (["inof", "a.mov"], "did you mean `krz info`"),
            (["xyzzy"], "krz --help"),
            (["info"], "needs more arguments"),
            (["info", "--jsno", "a.mov"], "--jsno is not an option of info"),
            (["classes", "A", "B"], "takes no more arguments"),
        ):
            with self.subTest(arguments=arguments):
                self.refused(2, expected, *arguments)

    def test_a_file_may_have_a_name_that_is_no_text(self):
        name = os.fsencode(self.folder) + b"/caf\xe9.mov"
        shutil.copy(os.fsencode(self.movie), name)
        run = lambda *words: subprocess.run([KRZ, *words], capture_output=True, timeout=60)
        self.assertIn(name, run("info", name).stdout)
        self.assertEqual(json.loads(run("info", name, "--json").stdout)["timeScale"], 600)
        self.assertEqual(run("meta", "set", name, "title=A", "-i").stderr, b"")
        copied = run("save", name, "-o", name + b"\xff")
        self.assertEqual((copied.stderr, os.path.exists(name + b"\xff")), (b"", True))
        self.assertEqual(run("meta", "get", name + b"\xff", "title").stdout, b"A\n")

    def test_a_segment_of_another_movie_is_inserted(self):
        movie, other = self.movie, self.copy("other.mov")
        for arguments, status, expected in (
            ([other, "--at", "1", "--from", "3", "--to", "2"], 2, "nothing of"),
            ([other, "--at", "1", "--from", "3-4"], 2, "is not a time"),
            ([other, "0-1", "--at", "1"], 2, "give the two movies"),
            ([other], 2, "say where to insert"),
            (["1", "0-1", "--from", "3"], 2, "go with --at"),
            ([self.folder / "missing.mov", "--at", "1"], 3, "there is no such file"),
        ):
            with self.subTest(arguments=arguments):
                self.refused(status, expected, "edit", "insert", movie, *arguments, "-i")
        answer = krz("edit", "insert", movie, other, "--at", "end", "--from", "1", "--to", "2", "-n")
        self.assertIn("bytes would be written", answer.stdout)
        self.assertEqual(movie.read_bytes(), other.read_bytes())
        told = self.good("edit", "insert", movie, other, "--at", "1", "--to", "0.5", "--track", "video", "-i", "--prove")
        self.assertIn("proved", told)
        other.unlink()
        self.assertIn("good", krz("verify", movie).stdout)
        self.good("undo", movie)

    def test_help_names_every_command_and_fits_a_screen(self):
        answer = krz("--help")
        self.assertEqual(answer.returncode, 0)
        self.assertLessEqual(answer.stdout.count("\n"), 24)
        names = "|".join(line[2:32] for line in answer.stdout.splitlines() if line.startswith("  "))
        for command in "info describe save verify diff undo commit run check repl classes demo track edit".split():
            self.assertRegex(names, rf"\b{command}\b")
        for command in ("info", "run", "check", "classes", "demo"):
            help_text = krz("help", command)
            self.assertEqual(help_text.returncode, 0)
            self.assertEqual(help_text.stdout, krz(command, "--help").stdout)
            examples = re.findall(rf"^  krz {command}", help_text.stdout, re.M)
            self.assertGreaterEqual(len(examples), 2)

    def test_several_movies_are_done_one_by_one(self):
        movies = [self.movie, self.file("broken.mov", "no movie"), self.copy("new\nline=x.mov")]
        for go_on, status, titles in ((["-k"], 6, ["one", "one"]), ([], 3, ["two", "one"])):
            command = ["meta", "set", *movies, f"title={'one' if go_on else 'two'}", "-i", *go_on]
            answer = krz(*command)
            self.assertEqual(answer.returncode, status, answer.stderr)
            self.assertIn(f"of 3 movies done; failed: {movies[1]} (status 3)", answer.stderr)
            self.assertEqual([krz("meta", "get", movies[i], "title").stdout.strip() for i in (0, 2)], titles)
        listed = "\0".join(map(str, movies))
        answer = krz("track", "set", "--files-from", "-", "all", "--layer", "7", "-i", "-k", input=listed)
        self.assertEqual(answer.returncode, 6, answer.stderr)
        for i in (0, 2):
            self.assertEqual({t["layer"] for t in json.loads(krz("info", "--json", movies[i]).stdout)["tracks"]}, {7})
        self.refused(2, "no movie is named", "track", "list", "--files-from", "-", input="")
        self.assertEqual(krz("meta", "set", movies[0], movies[2], "title=x", "-o", self.folder / "out.mov").returncode, 2)

    def test_version_names_plug_in_and_toolbox(self):
        answer = krz("--version")
        self.assertEqual(answer.returncode, 0)
        self.assertRegex(answer.stdout, r"^krz \d+\.\d+\.\d+\nplug-in /.*krz-movie\.so\ntoolbox \d+\.\d+\.\d+\nframeworks present\n$")

    def test_demonstration_is_made_once_and_never_overwrites(self):
        for _ in range(2):
            self.good("demo", self.folder)
        self.assertEqual([p.name for p in self.folder.glob("krz-demo*")], ["krz-demo.mov"])
        other = self.folder / "other"
        other.mkdir()
        precious = other / "krz-demo.mov"
        precious.write_bytes(b"somebody's movie")
        answer = krz("demo", other)
        self.assertEqual(precious.read_bytes(), b"somebody's movie")
        self.assertEqual(answer.returncode, 1)
        self.assertIn("krz-demo.mov", answer.stderr)

    def test_info_reports_the_good_movies_beside_the_bad(self):
        bad = self.file("bad.mov", b"not a movie at all, only text")
        answer = krz("info", "--json", bad, self.movie, self.folder / "missing.mov")
        self.assertEqual(answer.returncode, 3)
        documents = json.loads(answer.stdout)
        self.assertEqual([d["file"] for d in documents], [str(self.movie)])
        self.assertIn("bad.mov", answer.stderr)
        self.assertIn("missing.mov", answer.stderr)

    def test_info_keys_stand_in_their_order(self):
        text = krz("info", "--json", self.movie).stdout
        document = json.loads(text)
        self.assertEqual(
            list(document),
            ["file", "timeScale", "duration", "seconds", "trackCount", "apertureMode", "hasChapterTrack", "hasTimeCodeTrack",
             "tracks", "chapters", "timeCode", "metaData", "userData"])
        self.assertEqual(
            list(document["tracks"][0]),
            ["index", "id", "mediaType", "enabled", "duration", "offset", "width", "height", "layer", "volume", "created",
             "modified", "matrix", "sampleCount", "fileCount", "sampleDescriptions", "isChapterTrack", "chapterTrack",
             "metaData", "userData", "mediaTimeScale", "apertures"])
        self.assertTrue(text.startswith('{\n  "file": '))

    def test_scripts_end_as_described(self):
        """A nil movie, a wrong argument count, an unknown method, an exception, a missing file."""
        cases = (
            ("nil.bas", "Dim m As Movie\nPrint 1\nPrint m.TrackCountKRZ\n", 1, "1\n", r"nil\.bas:3:\d+: NilObjectException"),
            ("count.bas", "Dim m As Movie\nPrint m.GetTrackIDKRZ()\n", 1, "", r"count\.bas:2:\d+: error: .*GetTrackIDKRZ\(id as integer\)"),
            ("unknown.bas", "Dim m As Movie\nPrint m.TrackCuontKRZ\n", 1, "", r"unknown\.bas:2:\d+: error: .*TrackCountKRZ"),
            ("raise.bas", "Print 1\nDim e As New RuntimeException\ne.Message = \"enough\"\nRaise e\n", 1, "1\n", r"raise\.bas:4:\d+: RuntimeException: enough"),
            ("missing.bas", "Dim m As Movie = OpenMovie(\"not-there.mov\")\n", 1, "", r"missing\.bas:1:\d+: IOException: .*not-there\.mov"),
            ("quit.bas", "Print \"bye\"\nQuit(7)\n", 7, "bye\n", r"^$"),
        )
        for name, text, status, output, error in cases:
            with self.subTest(name=name):
                answer = krz("run", self.file(name, text))
                self.assertEqual(answer.returncode, status, answer.stderr)
                self.assertEqual(answer.stdout, output)
                self.assertRegex(answer.stderr, error)
                if status == 1:
                    self.assertRegex(answer.stderr, r"\n *\^", "a caret under the place")

    def test_scripts_from_standard_input_see_their_arguments(self):
        answer = krz("run", "-", "a b", "--json", input="Print Args(0)\nPrint Args(1)\n")
        self.assertEqual((answer.returncode, answer.stdout), (0, "a b\n--json\n"), answer.stderr)
        self.assertEqual(krz("run", self.folder / "nowhere.bas").returncode, 3)

    def test_interrupt_ends_an_endless_loop_at_once(self):
        script = self.file("endless.bas", "StdOut.WriteLine(\"on\")\nDo\nLoop\n")
        with subprocess.Popen([KRZ, "run", script], stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            time.sleep(0.3)
            begin = time.monotonic()
            process.send_signal(signal.SIGINT)
            output, _ = process.communicate(timeout=10)
        self.assertEqual((process.returncode, output), (130, b"on\n"))
        self.assertLess(time.monotonic() - begin, 2)

    def test_check_finds_mistakes_without_running(self):
        good = self.file("good.bas", "Print 1\nDim m As Movie = OpenMovie(\"x.mov\")\n")
        bad = self.file("bad.bas", "Print 1\nSub A()\n  Print (\nEnd Sub\nSub B()\n  Dim é As Integer = \"é\"\nEnd Sub\n")
        wrong = self.file("wrong.bas", b'Print "\xff" + \xff\n')
        answer = krz("check", good)
        self.assertEqual((answer.returncode, answer.stdout, answer.stderr), (0, "", ""))
        answer = krz("check", good, bad)
        self.assertEqual((answer.returncode, answer.stdout), (1, ""))
        self.assertRegex(answer.stderr, r"bad\.bas:3:10: error: a value[^:]*\n  Print \(\n +\^\n.*bad\.bas:6:22: error: .*must be an Integer")
        answer = krz("check", "--json", bad, wrong)
        self.assertEqual((answer.returncode, answer.stderr), (1, ""))
        found = json.loads(answer.stdout)
        self.assertEqual([(pathlib.Path(d["file"]).name, d["line"], d["column"]) for d in found],
                         [("bad.bas", 3, 10), ("bad.bas", 6, 22), ("wrong.bas", 1, 13)])
        self.assertEqual(list(found[0]), ["file", "line", "column", "message"])
        self.assertEqual(krz("check", "--json", good).stdout, "[]\n")
        self.assertEqual(krz("check").returncode, 2)
        answer = krz("check", self.folder / "nowhere.bas", bad)
        self.assertEqual(answer.returncode, 3)
        self.assertIn("nowhere.bas", answer.stderr)
        self.assertIn("bad.bas:3:10", answer.stderr)

    def test_classes_lists_declarations_as_registered(self):
        listed = json.loads(krz("classes", "--json").stdout)
        track = next(c for c in listed if c["name"] == "QTTrackKRZ")
        self.assertEqual(track["properties"], ["Movie as Movie", "TrackHandle as Integer", "Lasterror as Integer"])
        self.assertIn("GetTrackIndexKRZ(index as integer) as QTTrackKRZ", krz("classes", "movie").stdout)
        answer = krz("classes", "NoSuchClass")
        self.assertEqual(answer.returncode, 1)
        self.assertIn("krz classes", answer.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
