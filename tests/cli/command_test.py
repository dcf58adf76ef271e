"""What the tests of commands share: krz as a process, a copy of the demonstration movie for every test, and pictures."""
import os
import pathlib
import pty
import re
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
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


class Terminal:
    """A command on a terminal of its own: what is typed, and what appears without moves of the cursor."""

    def __init__(self, command, folder=None, **environment):
        self.child, self.descriptor = pty.fork()
        if self.child == 0:
            os.chdir(folder or ".")
            os.environ.update({"TERM": "xterm", "LC_ALL": "C.UTF-8", **environment})
            os.execvp(command[0], [str(word) for word in command])
        self.text = ""

    def type(self, text):
        os.write(self.descriptor, text.encode())

    def read(self, end):
        """Whether there was more to read before the time `end`."""
        try:
            ready = select.select([self.descriptor], [], [], max(0, end - time.monotonic()))[0]
            more = os.read(self.descriptor, 65536) if ready else b""
        except OSError:  # the other end is closed
            more = b""
        plain = re.sub(rb"\x1b\[[0-9;?]*[A-Za-ln-z]|\x1b[=>]", b"", more)
        self.text += plain.decode(errors="replace").replace("\r", "")
        return bool(more)

    def wait_for(self, expected, seconds=30):
        """What appeared up to and with `expected`, which is taken off."""
        end = time.monotonic() + seconds
        while expected not in self.text:
            if not self.read(end):
                raise AssertionError(f"no {expected!r} in {self.text!r}")
        before, _, self.text = self.text.partition(expected)
        return before + expected

    def status(self, seconds=30):
        """How the command ends, which it is to do by itself."""
        end = time.monotonic() + seconds
        while self.read(end):
            pass
        if time.monotonic() >= end:
            os.kill(self.child, signal.SIGKILL)
        os.close(self.descriptor)
        status = os.waitstatus_to_exitcode(os.waitpid(self.child, 0)[1])
        if status == -signal.SIGKILL:
            raise AssertionError(f"the command does not end; it has said {self.text!r}")
        return status


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
