#!/usr/bin/env python3
"""krz clip: masks as PNG against the region in the file, both read here. usage: clips.py KRZ"""
import random
import struct
import sys
import unittest

from command_test import MovieTest, krz, png, without_frameworks

WIDTH, HEIGHT = 160, 120  # of the video of the demonstration movie


def write_png(path, rows):
    """Grey, 8 bits: rows of truth values, true is black."""
    path.write_bytes(png(len(rows[0]), len(rows), [bytes(0 if dark else 255 for dark in row) for row in rows], color=0))


def atoms(data, path):
    """The payloads of the atoms at a path of types, the last movie atom's."""
    if not path:
        return [data]
    found, at = [], 0
    while at + 8 <= len(data):
        size, kind = struct.unpack_from(">I4s", data, at)
        size = size or len(data) - at
        if size < 8:
            break
        if kind == path[0]:
            found += atoms(data[at + 8:at + size], path[1:])
        at += size
    return found


def regions(movie):
    return atoms(movie.read_bytes(), [b"moov", b"trak", b"clip", b"crgn"])


def pixels_of(record):
    """The set of pixels of a region's record, by the format alone."""
    size, top, left, bottom, right = struct.unpack_from(">H4h", record)
    assert size == len(record), (size, len(record))
    if size == 10:
        return {(x, y) for y in range(top, bottom) for x in range(left, right)}
    words = iter(struct.unpack(f">{(size - 10) // 2}h", record[10:]))
    flips = {}
    for y in words:
        if y == 0x7FFF:
            break
        flips[y] = set(iter(lambda: next(words), 0x7FFF))
    edges, pixels = set(), set()
    for y in range(top, bottom):
        edges ^= flips.get(y, set())
        ordered = sorted(edges)
        for a, b in zip(ordered[::2], ordered[1::2]):
            pixels |= {(x, y) for x in range(a, b)}
    assert edges ^ flips[bottom] == set()
    return pixels


def shape(kind, seed):
    chance = random.Random(seed)
    rows = [[False] * WIDTH for _ in range(HEIGHT)]
    for _ in range(10):
        x, y = chance.randrange(-20, WIDTH), chance.randrange(-20, HEIGHT)
        w, h = chance.randrange(1, 90), chance.randrange(1, 60)
        value = chance.random() < 0.8
        for j in range(max(y, 0), min(y + h, HEIGHT)):
            for i in range(max(x, 0), min(x + w, WIDTH)):
                u, v = (2 * (i - x) + 1) / w - 1, (2 * (j - y) + 1) / h - 1
                if (kind == "rectangles" or (kind == "ovals" and u * u + v * v < 1)
                        or (kind == "stripes" and (i + j) % 7 < 3)
                        or (kind == "dust" and chance.random() < 0.05)):
                    rows[j][i] = value
    return rows


class Clips(MovieTest):
    def setUp(self):
        super().setUp()
        self.mask = self.folder / "mask.png"
        self.out = self.folder / "out.png"

    def test_masks_come_back_as_they_went(self):
        for kind in ("rectangles", "ovals", "stripes", "dust"):
            for seed in range(2):
                with self.subTest(kind=kind, seed=seed):
                    rows = shape(kind, seed)
                    write_png(self.mask, rows)
                    self.good("clip", "set", self.movie, "video", self.mask, "-i", "--final")
                    record, = regions(self.movie)
                    expected = {(x, y) for y, row in enumerate(rows)
                                for x, dark in enumerate(row) if dark}
                    self.assertEqual(expected, pixels_of(record))
                    self.good("clip", "get", self.movie, "video", "-o", self.out, "-f")
                    again = self.folder / "again.mov"
                    self.good("clip", "set", self.movie, "video", self.out, "-o", again, "-f")
                    self.assertEqual([record], regions(again))
                    told = self.good("clip", "set", self.movie, "video", self.out, "-i")
                    self.assertIn("nothing to change", told)

    def test_clearing_leaves_no_trace(self):
        clean = self.good("clip", "clear", self.movie, "all", "-i")
        self.assertIn("nothing to change", clean)
        write_png(self.mask, shape("ovals", 5))
        self.good("clip", "set", self.movie, "1", self.mask, "-i")
        plan = self.good("clip", "clear", self.movie, "all", "-n")
        self.assertRegex(plan, r"~ track 1 \(vide\): clip: \d+x\d+ at \d+,\d+, \d+ bytes -> none")
        self.good("clip", "clear", self.movie, "all", "-i", "--prove")
        self.assertEqual([], regions(self.movie))
        self.good("undo", self.movie)
        self.assertEqual(1, len(regions(self.movie)))

    def test_refusals_say_what_to_do(self):
        write_png(self.mask, shape("ovals", 1))
        movie, mask, out = self.movie, self.mask, self.out
        self.refused(1, "is not cut", "clip", "get", movie, "video", "-o", out)
        self.refused(2, "-o MASK.png", "clip", "get", movie, "video")
        self.refused(2, "is the movie itself", "clip", "get", movie, "video", "-o", movie, "-f")
        self.refused(2, "-i changes", "clip", "set", movie, "video", mask)
        self.refused(2, "shows no picture", "clip", "set", movie, "sound", mask, "-i")
        self.refused(2, "no track is", "clip", "set", movie, "video:7", mask, "-i")
        self.refused(3, "nothing.png", "clip", "set", movie, "video", self.folder / "nothing.png", "-i")
        self.refused(3, "clip.mov", "clip", "set", movie, "video", movie, "-i")
        self.refused(1, "KRZ_FRAMEWORKS", "clip", "set", movie, "video", mask, "-i", env=without_frameworks())
        chance = random.Random(1)
        noise = [[chance.random() < 0.5 for _ in range(400)] for _ in range(400)]
        write_png(mask, noise)
        before = movie.read_bytes()
        answer = krz("clip", "set", movie, "video", mask, "-i")
        self.assertEqual((answer.returncode, movie.read_bytes()), (1, before))
        self.assertIn("64 KiB", answer.stderr)
        write_png(mask, shape("ovals", 1))
        self.assertEqual("", krz("clip", "set", movie, "video", mask, "-i").stderr)
        self.refused(1, "KRZ_FRAMEWORKS", "clip", "get", movie, "video", "-o", out, env=without_frameworks())
        out.write_text("mine")
        self.refused(5, "-f lets it be replaced", "clip", "get", movie, "video", "-o", out)
        self.assertEqual("mine", out.read_text())

    def test_damaged_regions_are_told_and_replaced(self):
        write_png(self.mask, shape("stripes", 1))
        self.good("clip", "set", self.movie, "video", self.mask, "-i", "--final")
        data = bytearray(self.movie.read_bytes())
        place = data.rindex(b"crgn") + 4
        for damage, told in ((b"\0\0", "clip.crgn at byte"), (b"\xff\xff", None), (b"\0\x0c", None)):
            with self.subTest(damage=damage):
                data[place:place + 2] = damage
                if damage == b"\0\0":  # a record without even a box: the atom ends behind its size
                    cut = bytearray(data)
                    struct.pack_into(">I", cut, place - 8, 10)
                    self.movie.write_bytes(cut)
                    self.refused(3, told, "clip", "get", self.movie, "video", "-o", self.out)
                else:
                    self.movie.write_bytes(data)
                    self.good("clip", "get", self.movie, "video", "-o", self.out, "-f")
                self.good("clip", "set", self.movie, "video", self.mask, "-i")
                self.assertGreater(len(pixels_of(regions(self.movie)[-1])), 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
