#!/usr/bin/env python3
"""The commands that change movies: their flags, what they write, and that they keep what is there. usage: edits.py KRZ"""
import fcntl
import json
import os
import random
import shutil
import subprocess
import sys
import time
import unittest

from command_test import KRZ, MovieTest, krz


class Edits(MovieTest):
    def duration(self, path=None):
        """Of every track, in movie units, as the file says."""
        info = json.loads(self.good("info", "--json", path or self.movie))
        return [track["duration"] for track in info["tracks"]]

    def edits(self, track=0):
        listed = json.loads(self.good("edit", "list", self.movie, "--json"))
        return [(e["start"], e["duration"], e["mediaStart"], e["rate"]) for e in listed[track]["edits"]]

    def test_where_the_result_goes_must_be_said(self):
        before = self.movie.read_bytes()
        for flags, expected in (
            ((), "-i changes"),
            (("-i", "-o", "x.mov"), "exclude each other"),
            (("--backup", "-n"), "--backup goes with -i"),
        ):
            with self.subTest(flags=flags):
                answer = krz("edit", "cut", self.movie, "0-1", *flags)
                self.assertEqual(answer.returncode, 2)
                self.assertIn(expected, answer.stderr)
        self.assertEqual(self.movie.read_bytes(), before)

    def test_a_dry_run_says_what_would_change_and_writes_nothing(self):
        before = self.movie.read_bytes()
        said = self.good("edit", "cut", self.movie, "2-4", "-n")
        self.assertRegex(said, r"track 2 \(soun\): edits: 6000@0 -> 1200@0 3600@32000")
        self.assertRegex(said, r"\d+ bytes would be written")
        self.assertEqual(self.movie.read_bytes(), before)
        self.assertEqual(os.listdir(self.folder), ["clip.mov"])

    def test_a_new_file_leaves_the_old_one_alone(self):
        before = self.movie.read_bytes()
        new = self.folder / "short.mov"
        self.good("edit", "keep", self.movie, "8-9", "1-2.5", "-o", new)
        self.assertEqual(self.duration(new), [1500] * 4)
        self.assertEqual(self.movie.read_bytes(), before)
        taken = krz("edit", "keep", self.movie, "0-1", "-o", new)
        self.assertEqual(taken.returncode, 5)
        self.assertIn("short.mov", taken.stderr)
        self.assertEqual(self.duration(new), [1500] * 4)
        self.good("edit", "keep", self.movie, "0-1", "-f", "-o", new)
        self.assertEqual(self.duration(new), [600] * 4)
        self.good("verify", new)

    def test_saves_are_taken_back_one_by_one_or_made_final(self):
        before = self.good("info", "--json", self.movie)
        self.good("edit", "cut", self.movie, "0-1", "-i")
        once = self.good("info", "--json", self.movie)
        self.good("track", "set", self.movie, "sound", "--volume", "0.5", "-i")
        self.assertEqual(self.good("undo", self.movie, "--list").count("saved"), 2)
        self.good("undo", self.movie)
        self.assertEqual(self.good("info", "--json", self.movie), once)
        self.good("undo", self.movie)
        self.assertEqual(self.good("info", "--json", self.movie), before)
        self.assertEqual(krz("undo", self.movie).returncode, 1)
        self.good("edit", "cut", self.movie, "0-1", "-i", "--final")
        self.assertEqual(krz("undo", self.movie).returncode, 1)
        self.good("edit", "cut", self.movie, "0-1", "-i")
        self.assertRegex(self.good("commit", self.movie), r"overwrote \d+ bytes")
        self.assertEqual(krz("undo", self.movie).returncode, 1)
        self.assertEqual(self.duration(), [4800] * 4)

    def test_edits_of_the_whole_movie_and_of_one_track(self):
        self.good("edit", "insert-empty", self.movie, "1", "0.5", "-i")
        self.assertEqual(self.edits()[1], (600, 300, -1, 1.0))
        self.good("edit", "scale", self.movie, "1.5-2.5", "2", "-i", "--track", "video")
        self.assertEqual(self.edits()[2], (900, 1200, 600, 0.5))
        self.assertEqual(self.duration(), [6900, 6300, 6300, 6300])
        self.good("edit", "insert", self.movie, "end", "0-1", "-i", "--prove")
        self.assertEqual(self.duration(), [7500] * 4)
        self.good("verify", self.movie)

    def test_tracks_are_changed_cloned_and_deleted(self):
        self.good("track", "set", self.movie, "video", "--layer", "-3", "--disable", "--size", "320x240", "--offset", "1", "-i")
        self.good("track", "clone", self.movie, "video", "-i", "--prove")
        listed = json.loads(self.good("track", "list", self.movie, "--json"))
        self.assertEqual([t["id"] for t in listed], [1, 2, 3, 4, 5])
        info = json.loads(self.good("info", "--json", self.movie))
        for track in (info["tracks"][0], info["tracks"][4]):
            self.assertEqual((track["layer"], track["enabled"], track["width"], track["height"], track["offset"]),
                             (-3, False, 320, 240, 600))
        # The chapters go, and with them the reference that the pictures had.
        said = self.good("track", "delete", self.movie, "text", "-i")
        self.assertIn("media data stays", said)
        self.assertIn("every reference", self.good("refs", "check", self.movie))
        wrong = krz("track", "delete", self.movie, "sound:4", "-i")
        self.assertEqual(wrong.returncode, 2)
        self.assertIn("no track is", wrong.stderr)

    def test_references_that_lead_nowhere_are_found_and_taken_out(self):
        # The chapters of the pictures are track 3; now they are track 9, which is none.
        whole = self.movie.read_bytes()
        at = whole.index(b"chap") + 4
        self.movie.write_bytes(whole[:at] + b"\0\0\0\x09" + whole[at + 4 :])
        found = krz("refs", "check", self.movie)
        self.assertEqual(found.returncode, 1)
        self.assertIn("names track 9", found.stdout)
        self.assertIn("1 reference taken out", self.good("refs", "prune", self.movie, "-i"))
        self.good("refs", "check", self.movie)
        self.assertIn("nothing to change", self.good("refs", "prune", self.movie, "-i"))

    def test_backup_diff_and_symbolic_links(self):
        link = self.folder / "link.mov"
        link.symlink_to("clip.mov")
        self.movie.chmod(0o640)
        self.good("track", "set", link, "sound", "--volume", "2", "-i", "--backup=.before")
        self.assertTrue(link.is_symlink())
        self.assertEqual(self.movie.stat().st_mode & 0o777, 0o640)
        backup = self.folder / "link.mov.before"
        self.assertEqual(backup.read_bytes(), self.demo.read_bytes())
        answer = krz("diff", backup, self.movie)
        self.assertEqual(answer.returncode, 1)
        self.assertRegex(answer.stdout, "volume")
        self.assertEqual(answer.stdout.count("\n"), 1, answer.stdout)
        self.assertEqual(krz("diff", self.demo, backup, "--samples").returncode, 0)

    def test_used_only_leaves_out_what_is_shown_no_more(self):
        self.good("edit", "keep", self.movie, "4-5", "-i")
        whole, used = self.folder / "whole.mov", self.folder / "used.mov"
        self.good("save", self.movie, "-o", whole)
        self.good("save", self.movie, "-o", used, "--used-only")
        self.assertGreater(whole.stat().st_size, self.demo.stat().st_size * 0.9)
        self.assertLess(used.stat().st_size, self.demo.stat().st_size * 0.2)
        self.assertEqual(self.duration(used), [600] * 4)
        self.good("verify", used)

    def test_a_second_writer_is_told_at_once(self):
        before = self.movie.read_bytes()
        with open(self.movie, "rb") as held:
            fcntl.flock(held, fcntl.LOCK_EX)
            answer = krz("edit", "cut", self.movie, "0-1", "-i")
        self.assertIn(answer.returncode, (3, 5))
        self.assertIn("clip.mov", answer.stderr)
        self.assertEqual(self.movie.read_bytes(), before)

    def test_killed_at_any_moment_the_file_is_the_old_movie_or_the_new_one(self):
        old, new = 6000, 5400
        seen = set()
        random.seed(5)
        for _ in range(60):
            shutil.copy(self.demo, self.movie)
            with subprocess.Popen([KRZ, "edit", "cut", self.movie, "2-3", "-i", "-q"]) as process:
                time.sleep(random.uniform(0, 0.012))
                process.kill()
            durations = self.duration()
            self.assertIn(durations, ([old] * 4, [new] * 4))
            self.good("verify", self.movie)
            seen.add(durations[0])
            # What the kill left behind is no obstacle for the next save.
            self.good("edit", "cut", self.movie, "0-1", "-i")
            self.assertEqual(self.duration(), [durations[0] - 600] * 4)
        print(f"\nafter 60 kills: {sorted(seen)}")

    def test_impossible_edits_change_nothing(self):
        before = self.movie.read_bytes()
        for arguments, status in (
            (("edit", "cut", self.movie, "20-30", "-i"), 1),
            (("edit", "cut", self.movie, "3-2", "-i"), 2),
            (("edit", "cut", self.movie, "1-3", "2-4", "-i"), 2),
            (("edit", "insert-empty", self.movie, "soon", "1", "-i"), 2),
            (("track", "set", self.movie, "video", "--size", "wide", "-i"), 2),
            (("track", "set", self.folder / "none.mov", "video", "--enable", "-i"), 3),
        ):
            with self.subTest(arguments=arguments[3:]):
                answer = krz(*arguments)
                self.assertEqual(answer.returncode, status, answer.stdout + answer.stderr)
                self.assertNotEqual(answer.stderr, "")
                self.assertEqual(self.movie.read_bytes(), before)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
