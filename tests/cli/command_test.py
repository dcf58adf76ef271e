"""What the tests of commands share: krz as a process, and a copy of the demonstration movie for every test."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

KRZ = os.path.abspath(sys.argv[1])


def krz(*arguments, **options):
    """The finished process; its output is text unless the options say otherwise."""
    options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "text": True, "timeout": 60, **options}
    return subprocess.run([KRZ, *map(str, arguments)], **options)


class MovieTest(unittest.TestCase):
    """A folder and in it `movie`, fresh for each test; `demo` is what it is a copy of."""

    @classmethod
    def setUpClass(cls):
        made = tempfile.TemporaryDirectory()
        cls.addClassCleanup(made.cleanup)
        answer = krz("demo", made.name)
        assert answer.returncode == 0, answer.stderr
        cls.demo = pathlib.Path(made.name) / "krz-demo.mov"

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.movie = self.copy("clip.mov")

    def copy(self, name):
        return pathlib.Path(shutil.copy(self.demo, self.folder / name))

    def good(self, *arguments, **options):
        """What a command that is to succeed prints."""
        answer = krz(*arguments, **options)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        return answer.stdout

    def refused(self, status, expected, *arguments):
        """One line on standard error, and the movie as it was."""
        before = self.movie.read_bytes()
        answer = krz(*arguments)
        self.assertEqual((answer.returncode, answer.stdout), (status, ""), answer.stderr)
        self.assertRegex(answer.stderr, expected)
        self.assertEqual(answer.stderr.count("\n"), 1, answer.stderr)
        self.assertEqual(self.movie.read_bytes(), before)
