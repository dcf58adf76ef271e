#!/usr/bin/env python3
"""The commands about sound and about the sizes of pictures. usage: sound.py KRZ"""
import csv
import io
import json
import sys
import unittest
import xml.etree.ElementTree

from command_test import MovieTest


class Sound(MovieTest):
    def shown(self):
        return json.loads(self.good("sound", "show", self.movie, "--json"))[0]

    def test_what_is_set_is_shown_and_undone(self):
        before = self.shown()
        self.good("sound", "set", self.movie, "sound", "--volume", "0.25", "--balance", "-128", "--movie-volume", "2", "-i")
        after = self.shown()
        self.assertEqual((after["volume"], after["balance"], after["movieVolume"], after["effectiveVolume"]), (64, -128, 512, 128))
        self.good("undo", self.movie)
        self.assertEqual(self.shown(), before)
        self.good("sound", "set", self.movie, "--layout", "C", "-o", self.folder / "out.mov")
        self.movie = self.folder / "out.mov"
        self.assertEqual(self.shown()["layout"]["text"], "C")

    def test_wrong_settings_are_refused_and_change_nothing(self):
        content = self.movie.read_bytes()
        for expected, *flags in (("to 128", "--balance", "129"), ("to 128", "--balance", "x"), ("volume is", "--volume", "loud"),
                                 ("volume is", "--volume", "500"), ("for 2 channels", "--layout", "stereo"),
                                 ("no loudspeaker", "--layout", "X"), ("say what to set",), ("is no sound", "--volume", "1")):
            selector = "video" if expected == "is no sound" else "sound"
            self.refused(2, expected, "sound", "set", self.movie, selector, *flags, "-i")
        self.refused(2, "where the result goes", "sound", "set", self.movie, "--volume", "1")
        self.assertEqual(self.movie.read_bytes(), content)

    def test_every_form_of_levels_says_the_same(self):
        document = json.loads(self.good("sound", "levels", self.movie, "--every", "0.5", "--json"))[0]
        peaks = document["channels"][0]["peak"]
        self.assertGreater(max(peaks), 0.01)
        self.assertLessEqual(max(peaks), 1)
        rows = list(csv.DictReader(io.StringIO(self.good("sound", "levels", self.movie, "--every", "0.5", "--csv"))))
        self.assertEqual([float(row["peak"]) for row in rows], peaks)
        self.assertEqual([int(row["time"]) for row in rows], [i * document["every"] for i in range(len(peaks))])
        listed = self.good("sound", "levels", self.movie, "--every", "0.5").splitlines()[2:]
        self.assertEqual(len(listed), len(peaks))
        part = json.loads(self.good("sound", "levels", self.movie, "--every", "0.5", "--from", "0.5", "--to", "1.5", "--json"))[0]
        self.assertEqual(part["channels"][0]["peak"], peaks[1:3])

    def test_levels_are_drawn(self):
        picture = self.folder / "levels.svg"
        self.good("sound", "levels", self.movie, "-o", picture)
        drawn = xml.etree.ElementTree.parse(picture).getroot()
        paths = drawn.findall(".//{http://www.w3.org/2000/svg}path")
        self.assertEqual(len(paths), 2, "peak and mean of one channel")
        self.assertGreater(len(paths[0].get("d")), 1000)
        self.refused(5, "-f lets it be replaced", "sound", "levels", self.movie, "-o", picture)
        self.refused(2, "is the movie itself", "sound", "levels", self.movie, "-o", self.movie, "-f")
        self.refused(2, "shorter than a unit", "sound", "levels", self.movie, "--every", "0")
        self.refused(2, "exclude each other", "sound", "levels", self.movie, "--csv", "--json")

    def test_sizes_are_made_set_shown_and_removed(self):
        def sizes():
            return {track["id"]: track["apertures"] for track in json.loads(self.good("info", self.movie, "--json"))["tracks"]}
        without = sizes()
        self.assertEqual(set(without.values()), {None})
        dry = self.good("aperture", "generate", self.movie, "-n")
        self.assertIn("would be written", dry)
        self.assertEqual(sizes(), without)
        self.good("aperture", "generate", self.movie, "-i")
        own = {"width": 160.0, "height": 120.0}
        self.assertEqual(sizes()[1], {"clean": own, "production": own, "encoded": own})
        self.good("aperture", "set", self.movie, "video", "--clean", "150.5x100", "-i", "--prove")
        self.assertEqual(sizes()[1]["clean"], {"width": 150.5, "height": 100.0})
        self.assertEqual(sizes()[1]["production"], own)
        self.assertIn("clean 150.5x100", self.good("info", self.movie))
        self.assertIn("150.5x100", self.good("aperture", "show", self.movie))
        self.good("aperture", "remove", self.movie, "-i")
        self.assertEqual(sizes(), without)
        self.refused(1, "-2009", "aperture", "generate", self.movie, "sound", "-i")
        self.refused(2, "a size is", "aperture", "set", self.movie, "video", "--clean", "7", "-i")
        self.refused(2, "say which size", "aperture", "set", self.movie, "video", "-i")
        self.assertEqual(json.loads(self.good("info", self.movie, "--json"))["apertureMode"], "clas")


unittest.main(argv=sys.argv[:1])
