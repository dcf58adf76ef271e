#!/usr/bin/env python3
"""The commands for time codes, as a person uses them. usage: timecode.py KRZ"""
import json
import random
import re
import struct
import sys
import unittest

from command_test import MovieTest, krz


class Timecode(MovieTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # Twenty pictures, half a second each, without what the demonstration has of time codes.
        cls.demo, whole = cls.demo.with_name("plain.mov"), cls.demo
        made = krz("timecode", "remove", whole, "-o", cls.demo)
        assert made.returncode == 0, made.stderr

    def done(self, *arguments):
        return self.good("timecode", *arguments)

    def shown(self, *arguments):
        return json.loads(self.done("show", self.movie, "--json", *arguments))

    def test_every_rate_that_people_name(self):
        for name, scale, duration, frames, drops in (
            ("24", 24, 1, 24, False), ("23.976", 24000, 1001, 24, False), ("23.98", 24000, 1001, 24, False), ("25", 25, 1, 25, False),
            ("29.97", 30000, 1001, 30, False), ("29.97ndf", 30000, 1001, 30, False), ("29.97df", 30000, 1001, 30, True),
            ("59.94DF", 60000, 1001, 60, True), ("119.88df", 120000, 1001, 120, True), ("50", 50, 1, 50, False), ("60", 60, 1, 60, False),
            ("12.5", 25, 2, 13, False), ("48000/1001", 48000, 1001, 48, False), ("60000/2002df", 30000, 1001, 30, True), ("30000/1000", 30, 1, 30, False),
        ):
            with self.subTest(name=name):
                start = "01:00:00;00" if drops else "01:00:00:00"
                self.done("add", self.movie, "--replace", "--start", start, "--rate", name, "-i")
                code = self.shown()
                self.assertEqual((code["timeScale"], code["frameDuration"], code["numberOfFrames"], code["dropFrame"]), (scale, duration, frames, drops))
                self.assertEqual((code["string"], code["faults"]), (start, []))
                self.assertEqual((code["use24Hours"], code["negative"], code["counter"], code["sourceName"]), (True, False, False, None))
                converted = json.loads(self.done("convert", start, "--rate", name, "--json"))
                self.assertEqual(converted["frameNumber"], code["frameNumber"])
        # Without a rate it is that of the pictures.
        self.done("add", self.movie, "--replace", "-i")
        code = self.shown()
        self.assertEqual((code["string"], code["timeScale"], code["frameDuration"]), ("00:00:00:00", 2, 1))

    def test_what_add_is_told_is_in_the_file(self):
        text = self.done("add", self.movie, "--start", "-00:00:02:00", "--rate", "25", "--source", "Reel 7", "--display", "--no-wrap", "-i")
        self.assertIn("time codes from -00:00:02:00 to 00:00:07:24", text)
        code = self.shown()
        self.assertEqual((code["string"], code["frameNumber"], code["sourceName"], code["enabled"]), ("-00:00:02:00", -50, "Reel 7", True))
        self.assertEqual((code["use24Hours"], code["negative"]), (False, True))
        self.assertEqual((code["frames"], code["labelDuration"], code["seconds"]), (250, "00:00:10:00", 10))
        self.assertEqual(self.shown("--at", "2")["string"], "00:00:00:00")
        info = json.loads(krz("info", "--json", self.movie).stdout)
        self.assertTrue(info["hasTimeCodeTrack"])
        self.assertEqual({key: code[key] for key in info["timeCode"]}, info["timeCode"])
        self.assertEqual(list(info["timeCode"]), ["string", "dropFrame", "use24Hours", "negative", "counter", "timeScale", "frameDuration",
                                                  "numberOfFrames", "frameNumber", "sourceName"])
        self.assertIn("tmcd", krz("refs", "show", self.movie).stdout)
        self.assertEqual(krz("verify", self.movie, "-q").stdout, "")
        self.refused(1, "has a timecode track already", "timecode", "add", self.movie, "-i")
        self.done("add", self.movie, "--replace", "--counter", "1000", "--rate", "25", "-i")
        self.assertEqual([self.shown("--at", at)["string"] for at in ("0", "1", "end-0.02")], ["1000", "1025", "1249"])
        self.done("remove", self.movie, "-i")
        self.refused(1, "no timecode track", "timecode", "show", self.movie)
        self.refused(1, "no timecode track", "timecode", "remove", self.movie, "-i")
        self.assertNotIn("tmcd", krz("refs", "show", self.movie).stdout)

    def test_mistakes_are_named_and_nothing_is_written(self):
        before = self.movie.read_bytes()
        for expected, arguments in (
            ("leaves out the frames 00 to 01 of that minute, which begins with 00:01:00;02", ("--start", "00:01:00;00", "--rate", "29.97df")),
            ("is no time code", ("--start", "noon", "--rate", "25")),
            ("neither part may be 0", ("--rate", "0")),
            ("neither part may be 0", ("--rate", "25/0")),
            ("1 to 255 frames", ("--rate", "300")),
            ("1 to 255 frames", ("--rate", "1/3")),
            ("multiple of 30", ("--rate", "25df")),
            ("is no rate", ("--rate", "fast")),
            ("not both", ("--start", "00:00:00:00", "--counter", "1")),
            ("whole number", ("--counter", "1.5", "--rate", "25")),
        ):
            with self.subTest(arguments=arguments):
                self.refused(2, expected, "timecode", "add", self.movie, *arguments, "-i")
        self.refused(2, "-i changes", "timecode", "add", self.movie)
        self.assertEqual(self.movie.read_bytes(), before)
        self.refused(2, "at which rate", "timecode", "convert", "5")
        self.refused(2, "beyond the frames", "timecode", "convert", "99999999999", "--rate", "25")

    def test_conversions_agree_with_each_other(self):
        random.seed(11)
        for rate, frames, per_day in (("25", 25, 2160000), ("29.97df", 30, 2589408), ("59.94df", 60, 5178816), ("23.976", 24, 2073600)):
            for frame in [0, 1799, 1800, 17982, *(random.randrange(per_day) for _ in range(4))]:
                code = json.loads(self.done("convert", frame, "--rate", rate, "--json"))
                self.assertRegex(code["string"], r"^\d\d:\d\d:\d\d[:;]\d\d$")
                seconds = re.search(r"seconds +(.*)", self.done("convert", code["string"], "--rate", rate))[1]
                for back in (code["string"], "tc:" + code["string"], seconds, seconds + "s"):
                    self.assertEqual(json.loads(self.done("convert", back, "--rate", rate, "--json"))["frameNumber"], frame, back)
        self.assertIn("-00:00:00:01", self.done("convert", "--rate", "25", "--", "-1"))
        self.assertIn("24:00:00:00", self.done("convert", "2160000", "--rate", "25", "--no-wrap"))
        self.assertIn("00:00:00:00", self.done("convert", "2160000", "--rate", "25"))

    def test_verbs_that_take_times_take_time_codes(self):
        self.done("add", self.movie, "--start", "09:59:58:00", "--rate", "25", "-i")
        answer = krz("edit", "cut", self.movie, "tc:10:00:00:00-tc:10:00:03:12", "-i", "--prove")
        self.assertEqual(answer.returncode, 0, answer.stderr)
        track = json.loads(self.done("list", self.movie, "--json"))[0]
        self.assertEqual([(e["first"], e["last"]) for e in track["edits"]], [("09:59:58:00", "09:59:59:24"), ("10:00:03:12", "10:00:07:24")])
        self.assertEqual([(s["string"], s["frameNumber"], s["duration"]) for s in track["samples"]], [("09:59:58:00", 899950, 6000)])
        self.assertEqual(self.shown("--at", "tc:10:00:03:12")["time"], 1200)
        listed = self.done("list", self.movie)
        self.assertIn("10:00:03:12 to 10:00:07:24", listed)
        for status, expected, time in ((2, "never shows 10:00:00:00", "tc:10:00:00:00"), (2, "frames go from", "tc:10:00:00:25"),
                                       (2, "is no time code", "tc:now"), (2, "ends at", "end")):
            self.refused(status, expected, "timecode", "show", self.movie, "--at", time)
        self.movie = self.copy("plain.mov")
        self.refused(2, "needs a movie with a timecode track", "samples", "list", self.movie, "video", "--from", "tc:00:00:00:00")

    def test_cut_movies_keep_every_label(self):
        self.done("add", self.movie, "--start", "01:00:00:00", "--rate", "25", "-i")
        random.seed(5)
        labels = list(range(250))  # the frame of the time code in each fiftieth of two seconds, from the start
        for _ in range(6):
            a = random.randrange(len(labels) - 20)
            b = a + random.randrange(1, 18)
            answer = krz("edit", "cut", self.movie, f"{a * 24}u-{b * 24}u", "-i")
            self.assertEqual(answer.returncode, 0, answer.stderr)
            del labels[a:b]
        for place in range(0, len(labels), 7):
            self.assertEqual(self.shown("--at", f"{place * 24 + 23}u")["frameNumber"], 90000 + labels[place], place)
        edits = json.loads(self.done("list", self.movie, "--json"))[0]["edits"]
        shown = [frame - 90000 for e in edits for frame in range(e["firstFrame"], e["lastFrame"] + 1)]
        self.assertEqual(shown, labels)

    def test_damage_is_named_and_never_divided_by(self):
        self.done("add", self.movie, "--rate", "29.97df", "-i", "--final")
        whole = self.movie.read_bytes()
        at = whole.index(b"tmcd\0\0\0\0\0\0\0\1") - 4
        for offset, form, value, expected in (
            (24, ">I", 0, "none may be 0"), (28, ">I", 0, "none may be 0"), (32, ">B", 0, "none may be 0"), (24, ">I", 0x80000000, "none may be 0"),
            (20, ">I", 9, None), (20, ">I", 0x21, None), (32, ">B", 25, None),
        ):
            with self.subTest(offset=offset, value=value):
                damaged = bytearray(whole)
                struct.pack_into(form, damaged, at + offset, value)
                self.movie.write_bytes(damaged)
                if expected:
                    self.refused(3, expected, "timecode", "show", self.movie)
                    self.assertEqual(krz("timecode", "list", self.movie).returncode, 3)
                    info = krz("info", "--json", self.movie)
                    self.assertEqual((info.returncode, json.loads(info.stdout)["timeCode"]), (0, None))
                else:
                    self.assertGreater(len(self.shown()["faults"]), 0)
                    self.assertIn("not legal", self.done("show", self.movie))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
