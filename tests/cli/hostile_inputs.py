#!/usr/bin/env python3
"""Files that are no movies, damaged movies and movies made to do harm: krz says what is wrong with each in one line, within
a second and 64 MiB, and reports the good movie beside it all the same. usage: hostile_inputs.py KRZ"""
import os
import pathlib
import resource
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zlib

from command_test import KRZ, MovieTest

MOST_SECONDS = 1.0
MOST_KIB = 64 * 1024
GIVE_UP_SECONDS = 20
CONTAINERS = {b"moov", b"trak", b"edts", b"mdia", b"minf", b"dinf", b"stbl", b"gmhd"}
TABLES = (b"dref", b"stsd", b"stts", b"stsc", b"stco")


def is_sanitized():
    """Sanitizers take memory and time of their own, so the limits are not measured then."""
    return b"__asan_init" in pathlib.Path(KRZ).read_bytes()


LIMITS_COUNT = not is_sanitized()


def atom(kind, *parts):
    payload = b"".join(parts)
    return struct.pack(">I4s", 8 + len(payload), kind) + payload


def nested(kinds, depth):
    """Atoms one in another, the outermost first in `kinds`, which repeat."""
    headers = bytearray()
    for level in range(depth):
        headers += struct.pack(">I4s", 8 * (depth - level), kinds[level % len(kinds)])
    return bytes(headers)


def packed(movie, stated_size=None, data=None):
    """A movie atom as a compressed movie atom."""
    data = zlib.compress(movie) if data is None else data
    size = len(movie) if stated_size is None else stated_size
    return atom(b"moov", atom(b"cmov", atom(b"dcom", b"zlib"), atom(b"cmvd", struct.pack(">I", size), data)))


def patched(content, offset, number, layout=">I"):
    changed = bytearray(content)
    struct.pack_into(layout, changed, offset, number)
    return bytes(changed)


def atoms_of(content, begin=0, end=None, path=""):
    """Yields (path, kind, offset, size) of every atom, containers before what they hold."""
    end = len(content) if end is None else end
    while end - begin >= 8:
        size, kind = struct.unpack_from(">I4s", content, begin)
        here = f"{path}/{kind.decode('latin-1')}".lstrip("/")
        yield here, kind, begin, size
        if kind in CONTAINERS:
            yield from atoms_of(content, begin + 8, begin + size, here)
        begin += max(size, 8)


class Answer:
    def __init__(self, arguments):
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            begin = time.monotonic()
            process = subprocess.Popen(
                [KRZ, "info", *map(str, arguments)], stdin=subprocess.DEVNULL, stdout=output, stderr=errors,
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_CPU, (GIVE_UP_SECONDS, GIVE_UP_SECONDS)))
            while True:
                done, status, used = os.wait4(process.pid, os.WNOHANG)
                if done:
                    break
                if time.monotonic() - begin > GIVE_UP_SECONDS:
                    process.kill()
                time.sleep(0.0005)
            self.seconds = time.monotonic() - begin
            # Waiting for a processor that others use is not the command's time.
            self.processor_seconds = used.ru_utime + used.ru_stime
            process.returncode = self.status = os.waitstatus_to_exitcode(status)
            self.kib = used.ru_maxrss
            output.seek(0)
            errors.seek(0)
            self.output = output.read().decode()
            self.errors = errors.read().decode()


class HostileInputs(MovieTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        demo = cls.demo.read_bytes()
        begin = next(offset for _, kind, offset, _ in atoms_of(demo) if kind == b"moov")
        size = struct.unpack_from(">I", demo, begin)[0]
        cls.whole = demo
        cls.head = demo[:begin]
        cls.moov = demo[begin : begin + size]
        # Small enough to be damaged in every place. Its media data is missing, which the report does not need.
        cls.small = cls.head + cls.moov
        cls.good_movie = cls.demo.with_name("good.mov")
        cls.good_movie.write_bytes(cls.small)
        cls.good_report = Answer([cls.good_movie]).output

    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        return path

    def ask(self, *paths):
        answer = Answer(paths)
        self.assertNotIn("Sanitizer", answer.errors)
        self.assertIn(answer.status, (0, 3), answer.errors)
        if LIMITS_COUNT:
            self.assertLess(min(answer.seconds, answer.processor_seconds), MOST_SECONDS)
            self.assertLess(answer.kib, MOST_KIB)
        return answer

    def assert_refused(self, path, *expected):
        """Asks for the file and for a good movie behind it, which must be reported as if it were alone."""
        answer = self.ask(path, self.good_movie)
        self.assertEqual(answer.status, 3, answer.output)
        self.assertEqual(answer.errors.count("\n"), 1, answer.errors)
        self.assertIn(str(path), answer.errors)
        self.assertLess(len(answer.errors), 1000)
        for text in expected:
            self.assertIn(text, answer.errors)
        self.assertIn("4 tracks", answer.output)
        self.assertEqual(answer.output, self.good_report)
        return answer

    def assert_answered(self, path):
        """Read, or refused with one line; of a movie with a damaged table the rest is reported first."""
        answer = self.ask(path)
        if answer.status == 3:
            self.assertEqual(answer.errors.count("\n"), 1, answer.errors)
            self.assertIn(str(path), answer.errors)
            if answer.output:
                self.assertEqual(answer.output.splitlines()[0], str(path))
        return answer

    def test_what_is_no_file_with_a_movie_is_named(self):
        (self.folder / "folder").mkdir()
        os.mkfifo(self.folder / "pipe")
        self.assert_refused(self.folder / "folder", "folder")
        self.assert_refused(self.folder / "missing.mov", "no such file")
        self.assert_refused(self.folder / "pipe", "pipe")
        self.assert_refused(pathlib.Path("/dev/zero"), "device")
        self.assert_refused(self.file("empty.mov", b""), "empty")
        self.assert_refused(self.file("short.mov", b"\0\0\0"), "no movie")
        self.assert_refused(self.file("text.mov", b"This is no movie, only a text.\n" * 50), "no movie")
        self.assert_refused(self.file("zeros.mov", b"\0" * 100000), "no movie")
        self.assert_refused(self.file("ones.mov", b"\xff" * 100000), "no movie")
        self.assert_refused(self.file("no-moov.mov", self.head + atom(b"mdat", b"\0" * 5000)), "moov")

    @unittest.skipIf(os.geteuid() == 0, "nothing is unreadable to root")
    def test_a_file_that_may_not_be_read_is_named(self):
        path = self.file("locked.mov", self.small)
        path.chmod(0)
        self.assert_refused(path, "permission")

    def test_cut_anywhere_is_read_or_refused(self):
        movies = {
            "movie first": self.small,
            "media first": self.head + atom(b"mdat", b"\0" * 200) + self.moov,
            "packed": self.head + packed(self.moov),
            "wide sizes": self.head + struct.pack(">I4sQ", 1, b"mdat", 16 + 200) + b"\0" * 200 + self.moov,
            "whole demonstration": self.whole,
        }
        for name, content in movies.items():
            movie = content.index(b"moov") - 4
            end = movie + struct.unpack_from(">I", content, movie)[0]
            cuts = {len(content) - 1, *range(0, len(content), max(1, len(content) // 60))}
            for cut in sorted(cuts):
                with self.subTest(movie=name, cut=cut):
                    path = self.file("cut.mov", content[:cut])
                    answer = self.assert_answered(path)
                    self.assertEqual(answer.status, 0 if cut >= end else 3)

    def test_impossible_atom_sizes_are_refused_with_their_place(self):
        """Each size field of the movie in turn: less than a header, negative, and beyond what holds the atom."""
        for where, kind, offset, size in atoms_of(self.small):
            if "/" not in where:
                continue
            for stated in (2, 7, size + 4, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF):
                with self.subTest(atom=where, stated=stated):
                    path = self.file("size.mov", patched(self.small, offset, stated))
                    answer = self.assert_answered(path)
                    if answer.status == 3:
                        self.assertRegex(answer.errors, r"moov(/[^ ]+)? at byte \d+")

    def test_impossible_wide_sizes_are_refused_with_their_place(self):
        for stated in (0, 7, 15, 1 << 31, 1 << 62, 1 << 63, (1 << 64) - 1, (1 << 64) - len(self.head)):
            with self.subTest(stated=stated):
                wide = struct.pack(">I4sQ", 1, b"trak", stated) + b"\0" * 64
                path = self.file("wide.mov", self.head + atom(b"moov", self.moov[8:], wide))
                self.assertRegex(self.assert_refused(path).errors, r"moov at byte \d+")

    def test_atoms_that_overlap_are_refused_with_their_place(self):
        """A track that reaches over the next one: what would lie inside both."""
        tracks = [(offset, size) for _, kind, offset, size in atoms_of(self.small) if kind == b"trak"]
        (first, first_size), (_, second_size), *_ = tracks
        path = self.file("overlap.mov", patched(self.small, first, first_size + second_size // 2))
        self.assertRegex(self.assert_refused(path, "moov").errors, r"at byte \d+")

    def test_counts_beyond_the_file_are_never_believed(self):
        """What can be read is reported, and the damage with its place."""
        for where, kind, offset, size in atoms_of(self.small):
            if kind not in TABLES:
                continue
            for count in (0x01000000, 0x20000001, 0xFFFFFFFF):
                with self.subTest(table=where, count=count):
                    path = self.file("count.mov", patched(self.small, offset + 12, count))
                    answer = self.assert_answered(path)
                    self.assertEqual(answer.status, 3)
                    self.assertRegex(answer.errors, r"moov/trak[^ ]*/%s[^ ]* at byte \d+" % kind.decode())

    def test_enormous_numbers_inside_tables_are_bounded(self):
        """Every number of every table at its extremes: what is played is wrong, but nothing grows with the number."""
        for where, kind, offset, size in atoms_of(self.small):
            if kind not in TABLES + (b"stsz", b"mvhd", b"tkhd", b"mdhd"):
                continue
            for field in range(offset + 8, offset + size - 3, 4 if kind != b"tkhd" else 12):
                for number in (0, 0x7FFFFFFF, 0xFFFFFFFF):
                    with self.subTest(atom=where, field=field - offset, number=number):
                        path = self.file("number.mov", patched(self.small, field, number))
                        answer = self.assert_answered(path)
                        if answer.status == 3:
                            self.assertRegex(answer.errors, r"moov[^ ]* at byte \d+")

    def test_nesting_without_end_is_not_followed(self):
        depth = 100000
        movies = {
            "moov in moov": nested([b"moov"], depth),
            "tracks": nested([b"moov", b"trak", b"mdia", b"minf", b"stbl"], depth),
            "unknown": nested([b"xxxx"], depth),
            "unknown below moov": atom(b"moov", self.moov[8:], nested([b"xxxx", b"udta", b"meta"], depth)),
            "user data": atom(b"moov", self.moov[8:], nested([b"udta"], depth)),
            "track in track": atom(b"moov", self.moov[8:], nested([b"trak"], depth)),
            "clips": atom(b"moov", self.moov[8:], nested([b"clip", b"crgn"], depth)),
        }
        for name, content in movies.items():
            with self.subTest(movie=name):
                self.assert_answered(self.file("nested.mov", self.head + content))

    def test_packed_movies_that_would_fill_memory_are_refused(self):
        endless = zlib.compress(b"\0" * (64 << 20), 9)
        cases = {
            "claims 4 GiB": packed(self.moov, stated_size=0xFFFFFFFF),
            "claims 1 GiB": packed(self.moov, stated_size=1 << 30),
            "claims too much": packed(self.moov, stated_size=len(self.moov) + 1),
            "claims too little": packed(self.moov, stated_size=len(self.moov) - 1),
            "claims nothing": packed(self.moov, stated_size=0),
            "inflates without end": packed(b"", stated_size=64 << 20, data=endless),
            "inflates beyond its claim": packed(self.moov, data=endless),
            "is no zlib stream": packed(self.moov, data=b"\x78\x9c" + b"\xff" * 500),
            "is cut": packed(self.moov, data=zlib.compress(self.moov)[:-9]),
            "packed twice": packed(packed(self.moov)),
            "lacks its data": atom(b"moov", atom(b"cmov", atom(b"dcom", b"zlib"))),
            "unknown method": atom(b"moov", atom(b"cmov", atom(b"dcom", b"abcd"), atom(b"cmvd", b"\0\0\1\0", b"x" * 99))),
        }
        for name, movie in cases.items():
            with self.subTest(case=name):
                answer = self.assert_refused(self.file("packed.mov", self.head + movie), "cmov")
                self.assertRegex(answer.errors, r"moov/cmov[^ ]* at byte \d+")
        whole = self.ask(self.file("packed.mov", self.head + packed(self.moov)))
        self.assertEqual(whole.status, 0, whole.errors)

    def test_atoms_by_the_million_stay_quick(self):
        million = atom(b"free") * 1000000
        movies = {
            "before the movie": lambda: self.head + million + self.moov,
            "behind the movie": lambda: self.head + self.moov + million,
            "in the movie": lambda: self.head + atom(b"moov", self.moov[8:], million),
            "tracks": lambda: self.head + atom(b"moov", self.moov[8:], atom(b"trak") * 1000000),
            "movies": lambda: self.head + atom(b"moov") * 1000000,
            "fragments": lambda: self.head + self.moov + atom(b"moof") * 1000000,
        }
        for name, make in movies.items():
            with self.subTest(atoms=name):
                # What this process holds counts into the peak of its children, so each movie is let go first.
                answer = self.assert_answered(self.file("million.mov", make()))
                if answer.status == 3:
                    self.assertRegex(answer.errors, r"at byte \d+")

    def test_a_call_with_many_bad_files_reports_every_good_one(self):
        bad = [self.file(f"bad-{i}.mov", self.small[: 40 * i]) for i in range(1, 12)]
        answer = self.ask(*(path for pair in zip(bad, [self.good_movie] * len(bad)) for path in pair))
        self.assertEqual(answer.status, 3)
        self.assertEqual(answer.errors.count("\n"), len(bad))
        for path in bad:
            self.assertIn(str(path), answer.errors)
        self.assertEqual(answer.output.count(str(self.good_movie)), len(bad))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
