#!/usr/bin/env python3
"""Lets ffmpeg encode two movies, krz put a part of one into the other, and ffmpeg decode the result.

usage: joined_movies.py KRZ

Every decoded picture must be the one of the movie it comes from. Exit status 77 (skipped) without ffmpeg or an encoder.
"""
import array
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

KRZ = os.path.abspath(sys.argv[1])


def encode(path, source, rate, seconds, *options):
    subprocess.run(
        ["ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"{source}=size=160x120:rate={rate}:duration={seconds}",
         "-f", "lavfi", "-i", f"sine=440:duration={seconds}", "-c:v", "libx264", "-pix_fmt", "yuv420p", *options,
         "-c:a", "aac", "-y", path], check=True, capture_output=True, timeout=120)


def pictures(path):
    """A digest of every picture that is shown, and what ffmpeg complains of."""
    answer = subprocess.run(
        ["ffmpeg", "-v", "error", "-i", path, "-map", "0:v", "-vsync", "passthrough", "-f", "framemd5", "-"],
        check=True, capture_output=True, text=True, timeout=120)
    lines = [line for line in answer.stdout.splitlines() if not line.startswith("#")]
    return [line.split(",")[-1].strip() for line in lines], answer.stderr


def sound(path):
    """The decoded sound, one channel."""
    answer = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-map", "0:a", "-ac", "1", "-f", "s16le", "-"],
                            check=True, capture_output=True, timeout=120)
    return array.array("h", answer.stdout)


class JoinedMovies(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name)
        self.first = self.path / "first.mp4"
        self.second = self.path / "second.mov"
        encode(self.first, "testsrc", "25", 4, "-g", "12", "-bf", "2")
        encode(self.second, "testsrc2", "30000/1001", 5, "-g", "15", "-bf", "3")
        first = pictures(self.first)[0]
        second = pictures(self.second)[0]
        # One second is 29.97 pictures: those numbered 30 to 89 begin between the first second and the third.
        self.joined = first[:50] + second[30:90] + first[50:]

    def krz(self, *arguments):
        answer = subprocess.run([KRZ, *map(str, arguments)], capture_output=True, text=True, timeout=60)
        self.assertEqual(answer.returncode, 0, answer.stderr)
        return answer.stdout

    def check(self, movie):
        shown, complaints = pictures(movie)
        self.assertEqual(shown, self.joined)
        self.assertEqual(complaints, "")
        self.assertIn("good", self.krz("verify", movie))

    def test_a_movie_that_got_a_part_of_another_stands_by_itself(self):
        new = self.path / "new.mp4"
        segment = ("--at", 2, "--from", 1, "--to", 3)
        self.krz("edit", "insert", self.first, self.second, *segment, "-o", new)
        in_place = self.path / "in-place.mp4"
        shutil.copy(self.first, in_place)
        said = self.krz("edit", "insert", in_place, self.second, *segment, "-i", "--prove")
        self.assertIn("proved: the samples of 2 tracks", said)
        self.second.unlink()
        self.check(new)
        self.check(in_place)

    def test_saving_as_a_new_file_gathers_what_a_movie_refers_to(self):
        script = self.path / "refer.bas"
        script.write_text('Dim a As Movie = OpenMovie(Args(0), True)\nDim b As Movie = OpenMovie(Args(1))\n'
                          'Print b.InsertMovieSegmentKRZ(a, b.TimeScale, 2 * b.TimeScale, 2 * a.TimeScale)\na.Save\n')
        size = self.first.stat().st_size
        self.assertEqual(self.krz("run", script, self.first, self.second), "0\n")
        self.assertLess(self.first.stat().st_size - size, 20_000, "the samples stay in the other file")
        new = self.path / "new.mp4"
        self.krz("save", self.first, "-o", new)
        self.second.unlink()
        self.check(new)
        answer = subprocess.run([KRZ, "save", self.first, "-o", self.path / "late.mp4"], capture_output=True, text=True)
        self.assertEqual(answer.returncode, 5)
        self.assertIn("second.mov, which is not there", answer.stderr)
        self.assertFalse((self.path / "late.mp4").exists())

    def test_sound_that_is_cut_out_begins_as_it_was(self):
        script = self.path / "part.bas"
        script.write_text('Dim b As Movie = OpenMovie(Args(0))\nDim a As Movie = NewMovie(b.TimeScale)\n'
                          'Print b.InsertMovieSegmentKRZ(a, b.TimeScale, b.TimeScale, 0)\na.SaveAs(Args(1))\n')
        part = self.path / "part.mov"
        self.assertEqual(self.krz("run", script, self.first, part), "0\n")
        whole = sound(self.first)
        # Compressed sound is decoded from overlapping packets; without those ahead the first would come out wrong.
        for place, (cut, original) in enumerate(zip(sound(part), whole[44100:88200])):
            self.assertLessEqual(abs(cut - original), 4, place)


if __name__ == "__main__":
    encoders = shutil.which("ffmpeg") and subprocess.run(["ffmpeg", "-v", "error", "-encoders"], capture_output=True, text=True)
    if not encoders or "libx264" not in encoders.stdout:
        print("no ffmpeg with libx264")
        sys.exit(77)
    unittest.main(argv=sys.argv[:1])
