"""What the tests of commands share: krz as a process, a copy of the demonstration movie for every test, and pictures."""
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

KRZ = os.path.abspath(sys.argv[1])


def krz(*arguments, **options):
    """The finished process; its output is text unless the options say otherwise."""
    options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "text": True, "timeout": 60, **options}
    return subprocess.run([KRZ, *map(str, arguments)], **options)


def without_frameworks():
    """The environment of a krz that finds no font and draws nothing."""
    return {**os.environ, "KRZ_FRAMEWORKS": "/nowhere"}


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png_head(width, height, bits=8, color=2):
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, bits, color, 0, 0, 0))


def png(width, height, rows, bits=8, color=2, extra=b""):
    """A picture of rows of bytes; color 0 is grey, 2 RGB, 3 a palette in `extra`, 6 RGB with alpha."""
    data = zlib.compress(b"".join(b"\0" + row for row in rows))
    return png_head(width, height, bits, color) + extra + chunk(b"IDAT", data) + chunk(b"IEND", b"")


class MovieTest(unittest.TestCase):
    """A folder and in it `movie`, fresh for each test; `demo` is what it is a copy of."""

    name = "clip.mov"

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
        self.movie = self.copy(self.name)

    def copy(self, name):
        return pathlib.Path(shutil.copy(self.demo, self.folder / name))

    def good(self, *arguments, **options):
        """What a command that is to succeed prints."""
        answer = krz(*arguments, **options)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        return answer.stdout

    def refused(self, status, expected, *arguments, **options):
        """One line on standard error, and the movie as it was."""
        before = self.movie.read_bytes()
        answer = krz(*arguments, **options)
        self.assertEqual((answer.returncode, answer.stdout), (status, ""), answer.stderr)
        self.assertRegex(answer.stderr, expected)
        self.assertEqual(answer.stderr.count("\n"), 1, answer.stderr)
        self.assertEqual(self.movie.read_bytes(), before)
