#!/usr/bin/env python3
"""Every program in examples/ does what its heading says. usage: examples.py KRZ"""
import json
import pathlib
import shutil
import sys
import unittest

from command_test import MovieTest, krz

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"

CHAPTERS = {
    "simple": '00:00:00.000 One\n00:01:30.500 Two, "x"\n',
    "ogm": 'CHAPTER01=00:00:00.000\nCHAPTER01NAME=One\nCHAPTER02=00:01:30.500\nCHAPTER02NAME=Two, "x"\n',
    "csv": '0.000,"One"\n90.500,"Two, ""x"""\n',
    "webvtt": 'WEBVTT\n\n00:00:00.000 --> 00:01:30.500\nOne\n\n00:01:30.500 --> 00:01:31.500\nTwo, "x"\n',
}


class Examples(MovieTest):
    name = "krz-demo.mov"
    tried = set()

    @classmethod
    def tearDownClass(cls):
        untried = {path.name for path in EXAMPLES.glob("*.bas")} - cls.tried
        assert not untried, f"no test runs {untried}"

    def run_example(self, name, *arguments, stdin="", status=0):
        self.tried.add(name)
        answer = krz("run", EXAMPLES / name, *arguments, input=stdin, cwd=self.folder)
        self.assertEqual(answer.returncode, status, answer.stdout + answer.stderr)
        return answer

    def output(self, name, *arguments, **more):
        return self.run_example(name, *arguments, **more).stdout

    def broken(self, name):
        (self.folder / name).write_text("this is no movie")

    def test_short_ones(self):
        self.assertEqual(self.output("tracks.bas", "krz-demo.mov"),
                         "4 tracks\n1 vide 160 120 20\n2 soun 0 0 80000\n3 text 160 20 3\n4 tmcd 160 20 1\n")
        self.assertEqual(self.output("longest_picture.bas", "krz-demo.mov"),
                         "krz-demo.mov: 0.5 seconds, from second 0\n")

    def test_inventory(self):
        (self.folder / "more").mkdir()
        shutil.copy(self.folder / "krz-demo.mov", self.folder / "more/a,b.MOV")
        self.broken("bad.mp4")
        answer = self.run_example("inventory.bas", ".", status=1)
        size = (self.folder / "krz-demo.mov").stat().st_size
        lines = answer.stdout.splitlines()
        self.assertEqual(lines[0], "path,bytes,seconds,video,width,height,fps,sound,text tracks,problem")
        self.assertRegex(lines[1], r'^bad\.mp4,16,,,,,,,,"?.*bad\.mp4: there is no movie')
        self.assertEqual(lines[2:], [f"krz-demo.mov,{size},10.000,raw,160,120,2,twos,1,",
                                     f'"more/a,b.MOV",{size},10.000,raw,160,120,2,twos,1,'])
        self.run_example("inventory.bas", "nowhere", status=2)

    def test_frame_rates_and_times(self):
        self.assertEqual(self.output("frame_rate_report.bas", "krz-demo.mov"),
                         "krz-demo.mov, track 1\n"
                         "  20 pictures, 2 a second on average, no standard rate\n"
                         "         20 x 300 units, 2 a second, 100.0%\n"
                         "  constant\n")
        times = self.output("frame_times.bas", "krz-demo.mov").splitlines()
        self.assertEqual(times[:3] + times[-1:], ["# timestamp format v2", "0.000000", "500.000000", "9500.000000"])
        self.assertIn("longest 500 ms, at 0 ms\n", self.output("frame_times.bas", "krz-demo.mov", "1", "--summary"))
        self.run_example("frame_times.bas", "krz-demo.mov", "2", status=1)

    def test_sync_and_comparison(self):
        self.assertIn("track 3 text from 0.000 s to 10.000 s (disabled)\n", self.output("sync_report.bas", "krz-demo.mov"))
        data = bytearray((self.folder / "krz-demo.mov").read_bytes())
        self.assertEqual(self.output("compare_movies.bas", "krz-demo.mov", "krz-demo.mov"),
                         "alike in all that was compared\n")
        header = data.index(b"tkhd") + 4
        data[header + 3] &= ~1  # the picture is no longer enabled
        (self.folder / "other.mov").write_bytes(data)
        self.assertEqual(self.output("compare_movies.bas", "krz-demo.mov", "other.mov", status=1),
                         "track 1 enabled: True -> False\n1 differences\n")

    def chapters(self, movie):
        return self.good("chapters", "export", movie)

    def test_chapters_are_made_from_tables_from_minutes_and_from_other_movies(self):
        movie, other = self.folder / "krz-demo.mov", self.folder / "other.mov"
        shutil.copy(movie, other)
        table = self.folder / "table.csv"
        table.write_text("0,Anfang\n2.5,Grün 緑,00FF00\n\n7,Ende\n")
        self.assertEqual(self.output("chapters_from_csv.bas", movie, table), "3 chapters\n")
        wanted = "00:00:00.000 Anfang\n00:00:02.500 Grün 緑\n00:00:07.000 Ende\n"
        self.assertEqual(self.chapters(movie), wanted)
        self.assertEqual(self.output("chapters_copy.bas", movie, other), "3 chapters\n")
        self.assertEqual(self.chapters(other), wanted)
        self.assertEqual(self.output("chapters_every.bas", movie, "0.1"), "2 chapters\n")
        self.assertEqual(self.chapters(movie), "00:00:00.000 Chapter 1\n00:00:06.000 Chapter 2\n")
        table.write_text("5,a\n4,b\n")
        self.run_example("chapters_from_csv.bas", movie, table, status=1)
        self.run_example("chapters_every.bas", movie, "0", status=2)
        self.run_example("chapters_copy.bas", movie, status=2)

    def test_chapter_lists_convert_into_each_other(self):
        for form, text in CHAPTERS.items():
            for target, expected in CHAPTERS.items():
                with self.subTest(form=form, target=target):
                    self.assertEqual(self.output("chapter_list_converter.bas", target, stdin=text), expected)
            chapters = json.loads(self.output("chapter_list_converter.bas", "json", stdin=text))
            self.assertEqual(chapters, [{"start": 0, "title": "One"}, {"start": 90.5, "title": 'Two, "x"'}])
        self.run_example("chapter_list_converter.bas", "simple", stdin="nothing\n", status=1)
        self.run_example("chapter_list_converter.bas", "opera", stdin=CHAPTERS["csv"], status=2)

    def test_subtitles_move(self):
        (self.folder / "a.srt").write_text("1\n00:00:01,500 --> 00:00:02,000\nHi\nthere\n\n"
                                         "2\n00:00:03,000 --> 00:00:04,000\n12\n")
        self.assertEqual(self.output("subtitle_shift.bas", "a.srt", "-2.5"), "1\n00:00:00,500 --> 00:00:01,500\n12\n\n")
        stretched = self.output("subtitle_shift.bas", "a.srt", "0", "25", "50")
        self.assertEqual(stretched, "1\n00:00:00,750 --> 00:00:01,000\nHi\nthere\n\n2\n00:00:01,500 --> 00:00:02,000\n12\n\n")

    def test_renaming_replaces_nothing(self):
        shutil.copy(self.folder / "krz-demo.mov", self.folder / "second.mov")
        self.broken("third.mov")
        shown = self.output("rename_by_date.bas", ".")
        self.assertTrue((self.folder / "second.mov").exists())
        self.assertEqual(self.output("rename_by_date.bas", ".", "--rename").replace("renamed", "would be renamed"), shown)
        names = sorted(path.name for path in self.folder.iterdir())
        self.assertEqual(len(names), 3)
        self.assertRegex(names[0], r"^\d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d \(2\)\.mov$")
        self.assertEqual(names[1:], [names[0].replace(" (2)", ""), "third.mov"])

    def test_page(self):
        self.broken("bad.mov")
        self.assertEqual(self.output("movie_page.bas", ".", "page.html"),
                         "wrote page.html: 1 movies, 1 not readable\n")
        page = (self.folder / "page.html").read_text()
        self.assertEqual(page.count("<tr>"), page.count("</tr>"))
        self.assertEqual(page.count("<rect"), 4)
        self.assertIn('class="problem">', page)
        self.run_example("movie_page.bas", ".", "page.html", status=1)

    def test_delivery(self):
        rules = {"picture": {"width": 160, "height": 120, "rate": 2, "formats": ["raw"]},
                 "sound": {"tracks": 1}, "seconds": {"most": 60}}
        (self.folder / "rules.json").write_text(json.dumps(rules))
        self.assertEqual(self.output("delivery_check.bas", "rules.json", "krz-demo.mov"),
                         "krz-demo.mov: good\n0 of 1 movies break a rule\n")
        rules["picture"].update(width=1920, rate=25, formats=["avc1"])
        rules["sound"]["tracks"] = 2
        rules["seconds"]["least"] = 30
        (self.folder / "rules.json").write_text(json.dumps(rules))
        self.assertEqual(self.output("delivery_check.bas", "rules.json", "krz-demo.mov", status=1),
                         "krz-demo.mov: the picture is 160x120, not 1920x120\n"
                         "krz-demo.mov: it has 2 pictures a second, not 25\n"
                         "krz-demo.mov: track 1 has the format raw\n"
                         "krz-demo.mov: it has 1 tracks of soun, not 2\n"
                         "krz-demo.mov: it is shorter than 30 seconds\n"
                         "1 of 1 movies break a rule\n")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
