#!/usr/bin/env python3
"""The commands for chapters, as a person uses them. usage: chapters.py KRZ"""
import json
import os
import sys
import unittest

from command_test import MovieTest, krz

FORMS = ("simple", "ogm", "webvtt", "ffmetadata", "csv", "json")


class Chapters(MovieTest):
    def done(self, *arguments, **options):
        return self.good("chapters", *arguments, **options)

    def titles(self, path=None):
        return [(c["time"], c["text"]) for c in json.loads(self.done("list", path or self.movie, "--json"))]

    def test_every_form_is_read_as_it_was_written(self):
        titles = ["Plain", "with = ; # \\ signs", "a, b; \"c\" 'd'", "<tags> & --> arrows", "日本語 العربية 🎬", "00:01:00 is no time"]
        source = "".join(f"00:00:0{i}.{i}00 {t}\n" for i, t in enumerate(titles))
        self.done("import", self.movie, "-", "-i", input=source)
        self.assertEqual(self.done("export", self.movie), source)
        for form in FORMS:
            with self.subTest(form=form):
                exported = self.done("export", self.movie, "--format", form)
                other = self.folder / f"{form}.mov"
                self.done("import", self.demo, "-", "-o", other, "-f", input=exported)
                self.assertEqual(self.done("export", other, "--format", form), exported)
                self.assertEqual(self.titles(other), self.titles())
                # Line ends of another system, a mark in front, and a last line without an end change nothing.
                spoiled = "\ufeff" + exported.rstrip("\n").replace("\n", "\r\n")
                self.done("import", self.demo, "-", "-o", other, "-f", input=spoiled)
                self.assertEqual(self.done("export", other, "--format", form), exported)

    def test_line_breaks_of_titles_stay_where_a_form_can_say_them(self):
        chapters = json.dumps([{"time": 0, "text": "two\nlines"}, {"time": 600, "text": "one"}])
        self.done("import", self.movie, "-", "-i", input=chapters)
        for form in FORMS:
            exported = self.done("export", self.movie, "--format", form)
            other = self.folder / "lines.mov"
            self.done("import", self.demo, "-", "-o", other, "-f", input=exported)
            wanted = "two lines" if form in ("simple", "ogm") else "two\nlines"
            self.assertEqual(self.titles(other), [(0, wanted), (600, "one")], form)

    def test_forms_of_other_programs(self):
        cases = {
            "seconds": "0 Intro\n4.5 Part\n",
            "hours left out": "0:00 Intro\n00:04,5 Part\n# a remark\n\n",
            "csv without a head": '0,Intro\n4.5,"Part"\n',
            "csv with semicolons": "start;end;title\n0;4.5;Intro\n4.5;;Part\n",
            "subtitles": "1\n00:00:00,000 --> 00:00:04,500\nIntro\n\n2\n00:00:04,500 --> 00:00:10,000\nPart\n",
            "webvtt with names": "WEBVTT - chapters\n\nNOTE nothing\n\nfirst\n00:00.000 --> 00:04.500\nIntro\n\n00:04.500 --> 00:10.000 align:start\nPart\n",
            "ffprobe": json.dumps({"chapters": [{"start_time": "0.000", "end_time": "4.5", "tags": {"title": "Intro"}}, {"start_time": "4.5", "tags": {"title": "Part"}}]}),
            "info": json.dumps({"timeScale": 1000, "chapters": [{"time": 0, "text": "Intro"}, {"time": 4500, "text": "Part"}]}),
            "metadata with more": ";FFMETADATA1\ntitle=Film\n[CHAPTER]\nSTART=0\nEND=4500000000\ntitle=Intro\n[STREAM]\ntitle=x\n[CHAPTER]\nTIMEBASE=1/10\nSTART=45\nEND=100\ntitle=Part\n",
        }
        for name, text in cases.items():
            with self.subTest(name=name):
                self.done("import", self.movie, "-", "-i", input=text)
                self.assertEqual(self.titles(), [(0, "Intro"), (2700, "Part")])

    def test_mistakes_name_file_and_line_and_write_nothing(self):
        cases = (
            ("", "no chapter was found"),
            ("nonsense\n", ":1: a chapter is a time and a title"),
            ("0 A\n\n00:00:61 B\n", ":3: .00:00:61. is not a time"),
            ("0 A\n5 B\n4 C\n", ":3: the chapter does not begin behind"),
            ("0 A\n0.0001 B\n", ":2: the chapter does not begin behind"),
            ("0 A\n10 B\n", ":2: the chapter begins at 10.000 s, where the movie has ended"),
            ("0 A\n99999999999999 B\n", ":2: the chapter begins"),
            ("0 A\n5\n", ":2: the chapter has no title"),
            ("0 A\n1 " + "x" * 20000 + "\n", ":2: the title has 20000 characters"),
            (b"0 A\n1 caf\xe9\n", ":2: the text is not UTF-8"),
            ("CHAPTER01=00:00:00.000\nCHAPTER02=00:00:01\n", ":2: chapter 01 has no name"),
            ("CHAPTER01NAME=x\n", ":1: the time of chapter 01"),
            (";FFMETADATA1\n[CHAPTER]\nSTART=x\n", ":3: .x. is not a number"),
            (";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/0\nSTART=1\n", ":3: a time base"),
            ("start,title\n0\n", ":2: a chapter is a start"),
            ("[1, 2", "no JSON"),
            ("{}", "has none"),
            ('[{"text": "x"}]', ":1: the chapter has no time"),
        )
        for text, expected in cases:
            with self.subTest(text=text[:40]):
                path = self.folder / "chapters.txt"
                path.write_bytes(text if isinstance(text, bytes) else text.encode())
                self.refused(3, f"chapters.txt.*{expected}", "chapters", "import", self.movie, path, "-i")
        self.refused(3, "missing.txt", "chapters", "import", self.movie, self.folder / "missing.txt", "-i")

    def test_regular_chapters(self):
        self.done("import", self.movie, "--every", "4s", "-i")
        self.assertEqual(self.titles(), [(0, "Chapter 1"), (2400, "Chapter 2"), (4800, "Chapter 3")])
        self.done("import", self.movie, "--every", "1h2m", "-i")
        self.assertEqual(self.titles(), [(0, "Chapter 1")])
        for wrong in ("0", "0.0001s", "x", "", "-5"):
            self.assertEqual(krz("chapters", "import", self.movie, "--every", wrong, "-i").returncode, 2, wrong)
        self.assertEqual(krz("chapters", "import", self.movie, "-i").returncode, 2)
        self.assertEqual(krz("chapters", "import", self.movie, "x", "--every", "5", "-i").returncode, 2)

    def test_one_chapter_is_changed_added_and_removed(self):
        self.done("set", self.movie, "2", "--title", "Mitte", "--time", "3.5", "-i")
        self.done("set", self.movie, "4", "--title", "Credits", "--time", "end-1", "-i")
        self.assertEqual(self.titles(), [(0, "Beginning"), (2100, "Mitte"), (4200, "End"), (5400, "Credits")])
        for arguments in (("2", "--time", "7"), ("2", "--time", "0"), ("9", "--title", "x"), ("5", "--title", "x"), ("x", "--title", "y"), ("1",), ("1", "--title", " "), ("4", "--time", "end")):
            self.assertEqual(krz("chapters", "set", self.movie, *arguments, "-i").returncode, 2, arguments)
        self.done("remove", self.movie, "1", "3", "-i")
        self.assertEqual(self.titles(), [(2100, "Mitte"), (5400, "Credits")])
        check = krz("chapters", "check", self.movie)
        self.assertEqual(check.returncode, 1)
        self.assertIn("not at 0", check.stdout)
        self.assertEqual(krz("chapters", "remove", self.movie, "3", "-i").returncode, 2)
        self.done("remove", self.movie, "-i")
        self.assertEqual(self.titles(), [])
        self.assertEqual(krz("chapters", "export", self.movie).returncode, 1)
        self.assertEqual(krz("undo", self.movie).returncode, 0)
        self.assertEqual(len(self.titles()), 2)

    def test_lists_of_several_tracks_and_languages(self):
        self.done("import", self.movie, "-", "-i", "--track", "sound", "--language", "fra", input="0 Début\n5 Fin\n")
        self.assertEqual(len(self.titles()), 3)
        self.assertEqual(json.loads(self.done("list", self.movie, "--json", "--track", "sound:1"))[1]["text"], "Fin")
        text = self.done("list", self.movie)
        self.assertIn("chapters of track 2 (soun), language fra", text)
        self.assertIn("chapters of track 1 (vide), language eng", text)
        self.assertEqual(krz("chapters", "import", self.movie, "-", "-i", "--language", "french", input="0 x\n").returncode, 2)
        self.assertEqual(krz("chapters", "import", self.movie, "-", "-i", "--track", "text:1", input="0 x\n").returncode, 2)
        # The new list of a track stands in the place of its old one, in the same language.
        self.done("import", self.movie, "-", "-i", "--track", "sound", input="0 Tout\n")
        self.assertIn("language fra", self.done("list", self.movie))
        self.assertEqual(krz("track", "list", self.movie, "--json").stdout.count('"text"'), 2)

    def test_the_short_list_and_back(self):
        titles = self.titles()
        self.done("convert", self.movie, "--to", "short", "-i")
        self.done("check", self.movie)
        self.done("set", self.movie, "1", "--title", "Other", "-i")
        check = krz("chapters", "check", self.movie)
        self.assertEqual(check.returncode, 1)
        self.assertIn("short list", check.stdout)
        self.done("convert", self.movie, "--to", "track", "-i")
        self.assertEqual(self.titles(), titles)
        number = [t for t in json.loads(krz("info", "--json", self.movie).stdout)["tracks"] if t["isChapterTrack"]][0]["index"]
        self.assertEqual(krz("track", "delete", self.movie, number, "-i").returncode, 0)
        self.assertIn("the short list in user data", self.done("list", self.movie))
        self.assertEqual(self.titles(), titles)
        self.done("remove", self.movie, "2", "-i")
        self.assertEqual(self.titles(), [titles[0], titles[2]])
        self.done("remove", self.movie, "-i")
        for target in ("short", "track"):
            self.assertEqual(krz("chapters", "convert", self.movie, "--to", target, "-i").returncode, 1)
        self.assertEqual(krz("chapters", "convert", self.movie, "-i").returncode, 2)

    def test_the_short_list_is_cut_only_when_asked(self):
        lines = "".join(f"{i / 100:.2f} Chapter {i}\n" for i in range(300)) + "9 " + "é" * 200 + "\n"
        self.done("import", self.movie, "-", "-i", input=lines)
        before = self.movie.read_bytes()
        answer = krz("chapters", "convert", self.movie, "--to", "short", "-i")
        self.assertEqual(answer.returncode, 4)
        self.assertIn("chapters 256 to 301", answer.stderr)
        self.assertTrue(self.movie.read_bytes() == before)
        answer = krz("chapters", "convert", self.movie, "--to", "short", "-i", "--allow-loss")
        self.assertEqual(answer.returncode, 0)
        self.assertIn("warning", answer.stderr)
        self.done("import", self.movie, "-", "-i", input="0 " + "é" * 200 + "\n")
        self.assertIn("the end of title 1", krz("chapters", "convert", self.movie, "--to", "short", "-i").stderr)

    def test_many_chapters_cost_as_many_times_as_much(self):
        movie = self.folder / "long.mov"
        made = krz("edit", "scale", self.demo, "0-end", "30000", "-o", movie, "-f")
        self.assertEqual(made.returncode, 0, made.stderr)
        self.done("import", movie, "-", "-i", input="".join(f"{i} Chapter {i}\n" for i in range(29000)))
        self.assertEqual(self.done("list", movie).count("\n"), 29001)
        self.assertLess(len(self.done("import", movie, "--every", "1s", "-n")), 500)

    def test_changes_need_a_place_and_files_stay_where_they_are(self):
        before = self.movie.read_bytes()
        self.assertEqual(krz("chapters", "import", self.movie, "-", input="0 x\n").returncode, 2)
        self.done("import", self.movie, "-", "-n", input="0 x\n")
        self.assertTrue(self.movie.read_bytes() == before)
        out = self.folder / "list.txt"
        self.done("export", self.movie, "-o", out, "-f")
        self.assertEqual(krz("chapters", "export", self.movie, "-o", out).returncode, 5)
        self.assertEqual(krz("chapters", "export", self.movie, "--format", "xml").returncode, 2)
        self.assertEqual(krz("chapters", "list", self.folder / "missing.mov").returncode, 3)
        for verb in ("list", "export", "import", "set", "remove", "convert", "check"):
            text = krz("help", "chapters", verb).stdout
            self.assertGreaterEqual(text.count(f"\n  krz chapters {verb} "), 2)

    def test_fonts_are_not_needed(self):
        """Where the frameworks are missing, chapters are made all the same, and fonts have no names."""
        script = self.folder / "fonts.bas"
        script.write_text('Dim c As New QTChapterDataKRZ\nc.FontName = "Monaco"\nPrint "[" + c.FontName + "]", c.FontNumber\n')
        nowhere = dict(os.environ, KRZ_FRAMEWORKS=str(self.folder / "nowhere"))
        self.assertEqual(krz("run", script).stdout, "[Monaco] 4\n")
        self.assertEqual(krz("run", script, env=nowhere).stdout, "[] 0\n")
        empty = self.folder / "Frameworks" / "Carbon.framework"
        empty.mkdir(parents=True)
        (empty / "Carbon").write_text("not a library")
        self.assertEqual(krz("run", script, env=dict(os.environ, KRZ_FRAMEWORKS=str(empty.parent))).stdout, "[] 0\n")
        self.assertEqual(krz("chapters", "import", self.movie, "-", "-i", input="0 x\n", env=nowhere).returncode, 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
