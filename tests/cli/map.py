#!/usr/bin/env python3
"""krz map: what the picture of a movie shows, and that any movie gives a whole, small one. usage: map.py KRZ [FOLDER]"""
import pathlib
import shutil
import subprocess
import sys
import unittest
import xml.etree.ElementTree as tree

from command_test import MovieTest, krz, without_frameworks

CORPUS = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
SVG = "{http://www.w3.org/2000/svg}"
MOST_BYTES = 100_000

EDIT = """
Dim m As Movie = OpenMovie(Args(0), True)
Dim v As QTTrackKRZ = m.GetTrackIndexKRZ(1)
v.InsertEmptyTrackSegment(1200, 600)
v.ScaleTrackSegment(3000, 1200, 2400)
m.GetTrackIndexKRZ(2).TimeOffset = 900
v.SetTrackRawMatrix(0, 65536, 0, -65536, 0, 0, 120 * 65536, 0, 1073741824)
Dim c As QTTrackKRZ = v.AddClonedTrackToMovie(m, 1)
For i As Integer = 1 To 2000
  c.DeleteTrackSegment(i * 2, 1)
Next
m.Save
"""


class Maps(MovieTest):
    def drawn(self, movie):
        """The map of a movie, parsed: its texts, its hints, its rectangles."""
        document = self.good("map", movie, "-o", "-")
        self.assertLess(len(document), MOST_BYTES)
        root = tree.fromstring(document)
        texts = [element.text for element in root.iter(SVG + "text")]
        hints = [element.text for element in root.iter(SVG + "title")]
        return root, texts, hints

    def edited(self):
        script = self.folder / "edit.bas"
        script.write_text(EDIT)
        self.good("run", script, self.movie)

    def test_it_names_tracks_and_chapters(self):
        root, texts, hints = self.drawn(self.movie)
        for text in ("clip.mov", "1  Pictures", "2  Sound", "3  Chapters", "Beginning", "Middle", "End", "160 × 120"):
            self.assertIn(text, texts)
        self.assertIn("raw · 160×120 · eng · 20 samples", texts)
        self.assertIn("1  Pictures  →  3  Chapters   chap", texts)
        self.assertIn("edit 1: 0:00:00.000 to 0:00:10.000, media from 0:00:00.000", hints)
        # Chapters lie where their times are: 0, 3, 7 of ten seconds.
        lefts = [float(box.get("x")) for box in root.iter(SVG + "rect") for hint in box.iter(SVG + "title") if hint.text[1:3] == ". "]
        self.assertAlmostEqual((lefts[1] - lefts[0]) / (lefts[2] - lefts[0]), 3 / 7, places=2)

    def test_it_shows_time_codes_and_clip_masks(self):
        root, texts, hints = self.drawn(self.movie)
        for text in ("01:00:00:00", "01:00:09:29", "1  Pictures  →  4  Timecode   tmcd"):
            self.assertIn(text, texts)
        script = self.folder / "clip.bas"
        script.write_text("""
Dim m As Movie = OpenMovie(Args(0), True)
Dim mask As New Picture(160, 120)
mask.Graphics.ForeColor = &cFFFFFF
mask.Graphics.FillRect(0, 0, 160, 120)
mask.Graphics.ForeColor = &c000000
mask.Graphics.FillRect(0, 0, 80, 60)
m.GetTrackIndexKRZ(1).TrackClipMask = mask
m.Save
""")
        whole = self.filled(root)
        self.good("run", script, self.movie)
        root, texts, hints = self.drawn(self.movie)
        self.assertTrue(any(text.endswith("clipped") for text in texts), texts)
        self.assertAlmostEqual(self.filled(root) / whole, 1 / 4, places=2)

    def filled(self, root):
        """The area of the first track in the frame, below the lanes: rows of its shape."""
        boxes = [box for box in root.iter(SVG + "rect") for hint in box.iter(SVG + "title") if hint.text == "1  Pictures"]
        return sum(float(box.get("width")) * float(box.get("height")) for box in boxes)

    def test_it_shows_edits_gaps_rates_and_frames(self):
        self.edited()
        root, texts, hints = self.drawn(self.movie)
        self.assertEqual(texts.count("empty"), 2)
        self.assertTrue(any(text.startswith("× 0.5") for text in texts), texts)
        self.assertTrue(any("short edits" in text for text in texts), texts)
        # Turned by a quarter, 160 x 120 stands on its short side, beside chapters that are 160 wide.
        self.assertIn("160 × 160", texts)

    def test_titles_are_escaped(self):
        chapters = self.folder / "chapters.txt"
        titles = ['<b>&amp; "quoted" & bare</b>', "]]> \u0007 \uFFFE \u2028 ünï 日本"]
        chapters.write_text("CHAPTER01=00:00:00.000\nCHAPTER01NAME=%s\nCHAPTER02=00:00:05.000\nCHAPTER02NAME=%s\n" % tuple(titles))
        self.good("chapters", "import", self.movie, chapters, "-i")
        _, texts, hints = self.drawn(self.movie)
        self.assertTrue(any(titles[0] in hint for hint in hints), hints)
        self.assertTrue(any("]]> \uFFFD \uFFFD \u2028 ünï 日本" in hint for hint in hints), hints)
        strange = self.folder / "a<&\"\x01.mov"
        shutil.copy(self.movie, strange)
        self.assertEqual(self.drawn(strange)[1][0], 'a<&"\uFFFD.mov')

    def test_both_forms_are_written_whole_and_replace_nothing_unasked(self):
        self.edited()
        for name in ("map.svg", "MAP.PNG"):
            target = self.folder / name
            self.good("map", self.movie, "-o", target)
            before = target.read_bytes()
            self.assertLess(len(before), 400_000)
            answer = krz("map", self.movie, "-o", target)
            self.assertEqual(answer.returncode, 5)
            self.assertIn("cannot create", answer.stderr)
            self.good("map", self.movie, "-o", target, "-f")
            self.assertEqual(target.read_bytes(), before)
        tree.parse(self.folder / "map.svg")
        if shutil.which("ffprobe"):
            answer = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "stream=codec_name,width", "-of", "csv=p=0",
                                     self.folder / "MAP.PNG"], capture_output=True, text=True)
            self.assertEqual((answer.stdout.strip(), answer.stderr), ("png,2400", ""))

    def test_wrong_uses_say_what_is_right(self):
        for status, expected, arguments in (
            (2, "-o map.svg or -o map.png", (self.movie,)),
            (2, "an .svg or a .png file", (self.movie, "-o", "map.jpg")),
            (3, "no movie", (__file__, "-o", self.folder / "map.svg")),
            (5, "cannot create", (self.movie, "-o", self.folder / "no" / "map.svg")),
            (5, "cannot create", (self.movie, "-o", self.folder / "no" / "map.png")),
        ):
            self.refused(status, expected, "map", *arguments)

    def test_without_fonts_there_is_still_text(self):
        for name, status, message in (("map.svg", 0, ""), ("map.png", 1, "krz: text cannot be drawn")):
            answer = krz("map", self.movie, "-o", self.folder / name, env=without_frameworks())
            self.assertEqual((answer.returncode, answer.stderr.startswith(message), answer.stderr.count("\n")), (status, True, status))
            self.assertEqual((self.folder / name).exists(), status == 0)

    def test_every_movie_of_the_corpus_gives_a_whole_small_map(self):
        if CORPUS is None or not CORPUS.is_dir():
            self.skipTest("there is no folder of real movies")
        drawn = 0
        for movie in sorted(CORPUS.iterdir()):
            if movie.suffix not in (".mov", ".mp4", ".m4a", ".m4v", ".3gp", ".3g2", ".cmfa"):
                continue
            with self.subTest(movie.name):
                if krz("info", movie).returncode == 3 and krz("map", movie, "-o", "-").returncode == 3:
                    continue
                root, texts, _ = self.drawn(movie)
                self.assertEqual(texts[0], movie.name)
                # Nothing is drawn outside of the picture.
                width, height = float(root.get("width")), float(root.get("height"))
                for box in root.iter(SVG + "rect"):
                    x, y, w, h = (float(box.get(name)) for name in ("x", "y", "width", "height"))
                    self.assertTrue(x >= 0 and y >= 0 and w >= 0 and h >= 0 and x + w <= width + 1 and y + h <= height + 1, box.attrib)
                drawn += 1
        self.assertGreater(drawn, 40)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
