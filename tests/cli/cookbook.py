#!/usr/bin/env python3
"""Every recipe of docs/cookbook.md prints what it says. usage: cookbook.py KRZ SOURCE_FOLDER [--write]

--write puts what is printed now into the document, to be read before it is kept."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from command_test import KRZ, MovieTest

DOCUMENT = pathlib.Path(sys.argv[2]) / "docs" / "cookbook.md"
BLOCK = re.compile(r"```(console|basic)\n(.*?)```\n", re.S)


# What differs from day to day, or with any change to the demonstration.
VARIES = re.compile(r"\d+(?= bytes w)|\d{4}-\d\d-\d\dT[\d:]+Z")


def recipes():
    parts = re.split(r"(?m)^(?=## \d+\. )", DOCUMENT.read_text())
    return parts[0], parts[1:]


class Kitchen:
    """A folder with movies made for one recipe, and a shell's way of running commands there."""

    def __init__(self, made):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)
        for name in ("clip.mov", "one.mov"):
            shutil.copy(made, self.path / name)
        self.environment = {**os.environ, "PATH": os.path.dirname(KRZ) + os.pathsep + os.environ["PATH"],
                            "LC_ALL": "C.UTF-8", "TZ": "UTC", "HOME": self.folder.name}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.folder.cleanup()

    def run(self, command):
        answer = subprocess.run(["bash", "-c", command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                timeout=60, cwd=self.path, env=self.environment)
        return answer.stdout

    def block(self, kind, text):
        """The block as it should be."""
        if kind == "basic":
            name = re.match(r"' (\S+\.bas)\n", text)[1]
            (self.path / name).write_text(text)
            return text
        return "".join(f"$ {command}\n{self.run(command)}" for command in re.findall(r"(?m)^\$ (.*)$", text))


class Cookbook(MovieTest):
    maxDiff = None

    def test_every_recipe_prints_what_it_says(self):
        _, all_recipes = recipes()
        self.assertGreaterEqual(len(all_recipes), 20)
        for number, recipe in enumerate(all_recipes, 1):
            title = recipe.splitlines()[0]
            with self.subTest(title), Kitchen(self.demo) as kitchen:
                self.assertTrue(title.startswith(f"## {number}. "), title)
                printed = 0
                for kind, text in BLOCK.findall(recipe):
                    made = kitchen.block(kind, text)
                    self.assertEqual(VARIES.sub("N", made), VARIES.sub("N", text), title)
                    printed += kind == "console" and bool(re.search(r"(?m)^[^$]", made))
                self.assertGreater(printed, 0, "nothing is printed")


def write():
    Cookbook.setUpClass()
    head, all_recipes = recipes()
    for recipe in all_recipes:
        with Kitchen(Cookbook.demo) as kitchen:
            head += BLOCK.sub(lambda match: f"```{match[1]}\n{kitchen.block(match[1], match[2])}```\n", recipe)
    Cookbook.doClassCleanups()
    DOCUMENT.write_text(head)


if __name__ == "__main__":
    write() if "--write" in sys.argv else unittest.main(argv=sys.argv[:1])
