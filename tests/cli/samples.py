#!/usr/bin/env python3
"""The commands that look into the media: lists of samples, their bytes, their descriptions. usage: samples.py KRZ"""
import csv
import io
import json
import pathlib
import re
import shutil
import struct
import sys
import tempfile
import unittest

from command_test import MovieTest, krz


class Samples(MovieTest):
    def setUp(self):
        super().setUp()
        self.tracks = json.loads(self.good("info", "--json", self.movie))["tracks"]

    def rows(self, *arguments):
        return json.loads(self.good("samples", "list", self.movie, *arguments, "--json"))

    def test_every_form_of_a_list_says_the_same(self):
        for place, track in enumerate(self.tracks, 1):
            rows = self.rows(place)
            self.assertEqual([row["number"] for row in rows], list(range(1, track["sampleCount"] + 1)))
            self.assertEqual(list(rows[0]), ["number", "time", "duration", "size", "sync", "description"])
            values = [[int(value) for value in row.values()] for row in rows]
            listed = csv.reader(io.StringIO(self.good("samples", "list", self.movie, place, "--csv")))
            self.assertEqual(next(listed), list(rows[0]))
            self.assertEqual([[int(value) for value in row] for row in listed], values)
            text = self.good("samples", "list", self.movie, place).replace("yes", "1").replace("no ", "0 ")
            self.assertEqual([[int(word) for word in line.split()] for line in text.splitlines()[2:]], values)

    def test_a_list_may_be_of_what_is_shown_in_a_while(self):
        rows = self.rows("video")
        scale = next(t["mediaTimeScale"] for t in self.tracks if t["mediaType"] == "vide")
        for flags, begin, end in ((("--from", "1"), 1, 1e9), (("--to", "0.5"), 0, 0.5), (("--from", "0.5", "--to", "1.5"), 0.5, 1.5)):
            with self.subTest(flags=flags):
                expected = [row for row in rows if row["time"] < end * scale and row["time"] + row["duration"] > begin * scale]
                self.assertNotIn(len(expected), (0, len(rows)))
                self.assertEqual(self.rows("video", *flags), expected)
        self.good("edit", "cut", self.movie, "0-1", "-i")
        cut = self.rows("video", "--from", "0", "--to", "0.5")
        self.assertEqual(cut, [row for row in rows if scale <= row["time"] < 1.5 * scale])
        self.assertEqual(self.rows("video"), rows, "all that the media holds, whatever the edits")
        self.assertEqual(self.rows("video", "--from", "end"), [])

    def test_wrong_usage_says_what_to_write(self):
        for arguments, expected in (
            (("list", self.movie, "all"), "one is needed: id=1"),
            (("list", self.movie, "video:7"), 'no track is "video:7"'),
            (("list", self.movie, "video", "--csv", "--json"), "exclude each other"),
            (("list", self.movie, "video", "--from", "2", "--to", "1"), "--to lies before --from"),
            (("list", self.movie, "video", "--from", "soon"), "is not a time"),
            (("extract", self.movie, "video"), "-o OUT"),
            (("extract", self.movie, "video", "-o", self.movie, "-f"), "is the movie itself"),
            (("extract", self.movie, "video", "-s", "2-1", "-o", "-"), "samples 2-1 are not there"),
            (("extract", self.movie, "video", "-s", "99999", "-o", "-"), "the track has"),
            (("extract", self.movie, "video", "-s", "-", "-o", "-"), "3-9"),
        ):
            with self.subTest(arguments=arguments):
                self.refused(2, expected, "samples", *arguments)

    def test_media_in_other_files_is_read_where_it_may_be(self):
        script = self.folder / "set.bas"
        script.write_text(
            "Dim m As Movie = OpenMovie(Args(0), True)\n"
            "Print m.GetVideoTrackKRZ(1).SetFile(1, GetFolderItem(Args(1)))\nm.Save\n")
        elsewhere = tempfile.TemporaryDirectory()
        self.addCleanup(elsewhere.cleanup)
        near = self.folder / "media" / "near.mov"
        near.parent.mkdir()
        far = pathlib.Path(elsewhere.name) / "far.mov"
        link = self.folder / "link.mov"
        link.symlink_to(far)
        pictures = self.folder / "pictures"
        self.good("samples", "extract", self.demo, "video", "-o", pictures)
        extract = ("samples", "extract", self.movie, "video", "-f", "-o", self.folder / "out")
        for place in (near, far, link):
            shutil.copy(self.demo, place)
            self.assertEqual(self.good("run", script, self.movie, place), "0\n")
            if place != near:
                self.refused(3, r"far\.mov, outside of the movie's folder; .* --allow-external", *extract)
            self.good(*extract, *(() if place == near else ("--allow-external",)))
            self.assertEqual((self.folder / "out").read_bytes(), pictures.read_bytes())
        self.good("save", self.movie, "--allow-external", "-o", self.folder / "whole.mov")
        far.unlink()
        self.refused(3, r"link\.mov, which is not there", *extract, "--allow-external")
        far.mkdir()
        self.refused(3, r"link\.mov", *extract, "--allow-external")
        self.good("verify", self.folder / "whole.mov")

    def test_extracted_bytes_are_those_of_the_samples(self):
        whole = self.movie.read_bytes()
        out = self.folder / "out.bin"
        for place in range(1, len(self.tracks) + 1):
            rows = self.rows(place)
            data = self.good("samples", "extract", self.movie, place, "-o", "-", text=False)
            self.assertEqual(len(data), sum(row["size"] for row in rows))
            at, last = 0, len(rows)
            for row in rows[:3]:
                piece = data[at:at + row["size"]]
                self.assertIn(piece, whole)
                self.good("samples", "extract", self.movie, place, "-s", row["number"], "-o", out, "-f")
                self.assertEqual(out.read_bytes(), piece)
                at += row["size"]
            if last > 3:
                self.good("samples", "extract", self.movie, place, "--samples", f"4-{last}", "-o", out, "-f")
                self.assertEqual(out.read_bytes(), data[at:])
                self.good("samples", "extract", self.movie, place, "--samples", "-3", "-o", out, "-f")
                self.assertEqual(out.read_bytes(), data[:at])

    def test_a_file_that_is_there_stays_unless_forced_and_failure_leaves_nothing(self):
        out = self.folder / "out.bin"
        out.write_text("precious")
        self.refused(5, "out.bin.*-f", "samples", "extract", self.movie, "video", "-o", out)
        self.refused(5, "nowhere", "samples", "extract", self.movie, "video", "-o", self.folder / "nowhere" / "out")
        # The first chunk of every track is said to lie behind the end of the file.
        damaged = bytearray(self.movie.read_bytes())
        for place in re.finditer(b"stco", bytes(damaged)):
            struct.pack_into(">I", damaged, place.end() + 8, 0x7FFFFFFF)
        self.movie.write_bytes(damaged)
        self.refused(3, r"clip\.mov.*the file has only", "samples", "extract", self.movie, "video", "-o", out, "-f")
        self.assertEqual(out.read_text(), "precious")
        self.assertEqual(sorted(p.name for p in self.folder.iterdir()), ["clip.mov", "out.bin"])

    def test_output_that_cannot_be_written_is_no_success(self):
        with open("/dev/full", "wb") as full:
            answer = krz("samples", "extract", self.movie, "video", "-o", "-", stdout=full)
        self.assertEqual(answer.returncode, 5)
        self.assertIn("standard output", answer.stderr)

    def test_descriptions_are_shown_to_the_last_byte(self):
        whole = self.movie.read_bytes()
        blocks = self.good("describe", self.movie).strip().split("\n\n")
        self.assertEqual(len(blocks), sum(len(track["sampleDescriptions"]) for track in self.tracks))
        for block, track in zip(blocks, self.tracks):
            self.assertIn(f"track {track['id']} ({track['mediaType']}), description 1 of 1", block)
            head, record = block.split("  the record, ")
            shown = dict(re.findall(r"^  (\w+) +(.*)$", head, re.M))
            self.assertEqual(list(shown), list(track["sampleDescriptions"][0]))
            stated = int(record.split()[0])
            digits = re.findall(r"^ +\d+  ((?:[0-9a-f]{2} ?)+)", record, re.M)
            data = bytes.fromhex("".join(digits))
            self.assertEqual(len(data), stated)
            self.assertIn(data, whole)
            self.assertEqual(data[4:8].decode("mac-roman"), track["sampleDescriptions"][0]["codecType"])
        self.refused(3, "no movie", "describe", __file__)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
