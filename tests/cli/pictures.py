#!/usr/bin/env python3
"""Pictures that scripts write, judged by other readers; PNG files that others write, broken ones and bombs among them.

usage: pictures.py KRZ
"""
import os
import pathlib
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
import zlib

from command_test import KRZ, chunk, krz, png, png_head

FFMPEG = shutil.which("ffmpeg")

SHOW = """
Dim p As Picture = Picture.Open(Args(0))
Print p.Width, p.Height, p.HasAlphaChannel
If p.Width * p.Height > 64 Then Quit(0)
For y As Integer = 0 To p.Height - 1
  Dim texts() As String
  For x As Integer = 0 To p.Width - 1
    texts.Append Str(p.RGBSurface.Pixel(x, y))
  Next
  Print Join(texts, " ")
Next
"""


def bounded_memory():
    limit = 512 << 20
    resource.setrlimit(resource.RLIMIT_AS, (limit, limit))


class Pictures(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        # A sanitizer reserves more room for addresses than any limit of ours.
        libraries = subprocess.run(["ldd", KRZ], capture_output=True, text=True).stdout
        self.bound = None if "libasan" in libraries else bounded_memory

    def run_script(self, source, *arguments):
        script = self.folder / "script.bas"
        script.write_text(source)
        return krz("run", script, *arguments, cwd=self.folder, preexec_fn=self.bound)

    def shown(self, content):
        path = self.folder / "given.png"
        path.write_bytes(content)
        return self.run_script(SHOW, path)

    def lines(self, content):
        answer = self.shown(content)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        return answer.stdout.splitlines()

    def test_what_others_write_is_read(self):
        self.assertEqual(self.lines(png(2, 1, [b"\x01\x02\x03\xfe\xfd\xfc"])), ["2 1 False", "&c010203 &cFEFDFC"])
        self.assertEqual(self.lines(png(2, 1, [b"\x00\x80"], color=0)), ["2 1 False", "&c000000 &c808080"])
        self.assertEqual(self.lines(png(9, 1, [b"\x81\x00"], bits=1, color=0))[1],
                         "&cFFFFFF" + " &c000000" * 6 + " &cFFFFFF &c000000")
        palette = chunk(b"PLTE", b"\x0a\x14\x1e\xff\x00\x00")
        self.assertEqual(self.lines(png(2, 1, [b"\x40"], bits=1, color=3, extra=palette)), ["2 1 False", "&c0A141E &cFF0000"])
        self.assertEqual(self.lines(png(2, 1, [b"\xff\x00\x00\xff" + b"\x09\x09\x09\x00"], color=6)),
                         ["2 1 True", "&cFF0000 &c000000"])
        self.assertEqual(self.lines(png(1, 1, [b"\xab\xcd\x12\x34\x00\x00"], bits=16))[0], "1 1 False")

    @unittest.skipUnless(FFMPEG, "ffmpeg is not installed")
    def test_what_is_written_is_read_by_others(self):
        answer = self.run_script("""
Dim p As New Picture(37, 11, 32)
For y As Integer = 0 To 10
  For x As Integer = 0 To 36
    p.RGBSurface.Pixel(x, y) = RGB(x * 6, y * 20, 255 - x)
  Next
Next
p.Save("opaque.png")
Dim q As New Picture(8, 2)
q.Graphics.DrawPicture(p, 0, 0, 4, 2, 0, 0, 4, 2)
q.Save("alpha.png")
""")
        self.assertEqual(answer.returncode, 0, answer.stderr)
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["alpha.png", "opaque.png", "script.bas"])

        def raw(name, form):
            return subprocess.run([FFMPEG, "-v", "error", "-i", self.folder / name, "-f", "rawvideo", "-pix_fmt", form, "-"],
                                  capture_output=True, check=True).stdout

        def row(y, width):
            return b"".join(bytes((x * 6, y * 20, 255 - x)) for x in range(width))

        self.assertEqual(raw("opaque.png", "rgb24"), b"".join(row(y, 37) for y in range(11)))
        wanted = b""
        for y in range(2):
            wanted += b"".join(bytes((x * 6, y * 20, 255 - x, 255)) for x in range(4)) + bytes(16)
        self.assertEqual(raw("alpha.png", "rgba"), wanted)

    def test_broken_files_are_refused_whole(self):
        whole = png(20, 20, [os.urandom(60) for _ in range(20)])
        broken = [whole[:n] for n in (0, 7, 8, 20, 32, 33, 40, len(whole) // 2, len(whole) - 30)]
        broken.append(b"GIF89a" + whole)
        broken.append(whole.replace(b"IHDR", b"IHDX"))
        for place in (9, 24, 25, 26, 30, 60):
            flipped = bytearray(whole)
            flipped[place] ^= 0x55
            broken.append(bytes(flipped))
        broken.append(png(20, 20, [bytes(60)] * 3))  # rows are missing
        for content in broken:
            with self.subTest(length=len(content)):
                answer = self.shown(content)
                self.assertEqual(answer.returncode, 1, answer.stdout)
                self.assertIn("UnsupportedFormatException: cannot read the picture", answer.stderr)
                self.assertIn("given.png", answer.stderr)

    def test_sizes_that_are_none_are_refused(self):
        for width, height in ((0, 1), (1, 0), (32768, 1), (1, 32768), (2 ** 31 - 1, 2 ** 31 - 1), (2 ** 32 - 1, 1)):
            answer = self.shown(png_head(width, height) + chunk(b"IDAT", zlib.compress(bytes(100))) + chunk(b"IEND", b""))
            self.assertIn(f"its size is {width} x {height} pixels", answer.stderr)

    def test_bombs_do_not_go_off(self):
        # Small files that claim to be large: refused by their head, before there is memory for them.
        answer = self.shown(png_head(16000, 16000) + chunk(b"IDAT", zlib.compress(bytes(1000))) + chunk(b"IEND", b""))
        self.assertIn("cannot hold 16000 x 16000 pixels", answer.stderr)
        answer = self.shown(png_head(32767, 32767, 1, 0) + chunk(b"IDAT", zlib.compress(bytes(2 ** 27))) + chunk(b"IEND", b""))
        self.assertIn("are more than 268 million", answer.stderr)
        # One that keeps its word, in half the memory that it needs: a message, no crash.
        rows = zlib.compressobj()
        data = b"".join(rows.compress(bytes(2001)) for _ in range(16000)) + rows.flush()
        answer = self.shown(png_head(16000, 16000, 1, 0) + chunk(b"IDAT", data) + chunk(b"IEND", b""))
        if self.bound:
            self.assertIn("OutOfMemoryException: there is no memory for the picture", answer.stderr)
        # Texts and profiles that unfold to very much are passed over.
        bomb = zlib.compress(bytes(200 << 20), 9)
        for extra in (chunk(b"zTXt", b"Comment\0\0" + bomb), chunk(b"iCCP", b"profile\0\0" + bomb)):
            self.assertEqual(self.lines(png(1, 1, [b"\x01\x02\x03"], extra=extra)), ["1 1 False", "&c010203"])

    def test_nothing_is_left_of_a_picture_that_cannot_be_written(self):
        (self.folder / "there.png").write_bytes(b"old")

        def short_files():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (50000, 50000))

        self.bound = short_files
        answer = self.run_script("""
Dim p As New Picture(200, 200, 32)
Dim r As New Random(1)
For y As Integer = 0 To 199
  For x As Integer = 0 To 199
    p.RGBSurface.Pixel(x, y) = RGB(r.InRange(0, 255), r.InRange(0, 255), r.InRange(0, 255))
  Next
Next
p.Save("there.png")
""")
        self.assertNotEqual(answer.returncode, 0)
        self.assertIn("IOException: cannot write", answer.stderr)
        self.assertEqual((self.folder / "there.png").read_bytes(), b"old")
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["script.bas", "there.png"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
