#!/usr/bin/env python3
"""Lets ffprobe and exiftool say what scripts changed. usage: edits_agree.py KRZ

Each case is a script over a movie `m` with the tracks `video`, `sound` and `text`; the movie is saved into its file and
as a new one, and the judges must see the change in both. Exit status 77 (skipped) without the tools.
"""
import json
import pathlib
import re
import shutil

from judge import KRZ, expect, finish, folder, need, run

HEAD = """
Dim m As Movie = OpenMovie(Args(0), True)
Dim video As QTTrackKRZ = m.GetTrackIndexKRZ(1)
Dim sound As QTTrackKRZ = m.GetTrackIndexKRZ(2)
Dim text As QTTrackKRZ = m.GetTrackIndexKRZ(3)
"""
SAVE = """
m.Save
m.SaveAs(Args(1))
"""


def exiftool(path):
    """Tags of the tracks: {"Track1:TrackLayer": 3}; of a tag that is there several times, the first."""
    answer = run("exiftool", "-j", "-n", "-G1:4", "-a", path)
    tags = {}
    for key, value in json.loads(answer.stdout)[0].items():
        tags.setdefault(re.sub(r":Copy\d+", "", key), value)
    return tags


def ffprobe(path):
    """The streams, and of the first the pictures that are shown: when, in seconds."""
    answer = run("ffprobe", "-v", "error", "-show_streams", "-of", "json", path)
    assert answer.returncode == 0 and answer.stderr == "", answer.stderr
    streams = json.loads(answer.stdout)["streams"]
    frames = run("ffprobe", "-v", "error", "-select_streams", "0", "-show_entries", "frame=pts_time", "-of", "csv=p=0", path)
    shown = [float(line.strip(",")) for line in frames.stdout.split()]
    return {"streams": streams, "pictures": shown}


def stream(index, key):
    return lambda e, f: f["streams"][index].get(key) if index < len(f["streams"]) else None


def disposition(index):
    return lambda e, f: f["streams"][index]["disposition"]["default"]


def matrix(index):
    def find(e, f):
        for data in f["streams"][index].get("side_data_list", []):
            if "displaymatrix" in data:
                return [int(n) for line in data["displaymatrix"].strip().split("\n") for n in line.split(":")[1].split()]
        return None
    return find


def tag(name):
    return lambda e, f: e.get(name)


def pictures(e, f):
    return f["pictures"]


def halves(start, count):
    return [start + i * 0.5 for i in range(count)]


# The change, and what the judges see then.
CASES = {
    "volume": ("sound.TrackVolume = 128", [(tag("Track2:TrackVolume"), 0.5)]),
    "width sets the volume": ("sound.Width = 64", [(tag("Track2:TrackVolume"), 0.25), (tag("Track2:ImageWidth"), None)]),
    "enabled": ("video.TrackEnabled = False", [(disposition(0), 0), (disposition(1), 1)]),
    "dimensions": ("video.SetTrackDimensions(320.5, 200)", [(tag("Track1:ImageWidth"), 320), (tag("Track1:ImageHeight"), 200)]),
    "layer": ("video.Layer = -3", [(tag("Track1:TrackLayer"), 65536 - 3)]),
    "matrix of a rectangle": (
        "video.SetTrackMatrix(10, 20, 320, 60)",
        [(matrix(0), [131072, 0, 0, 0, 32768, 0, 655360, 1310720, 1073741824])]),
    "matrix, a quarter turned": (
        "video.SetTrackRawMatrix(0, 65536, 0, -65536, 0, 0, 7864320, 0, 1073741824)",
        [(matrix(0), [0, 65536, 0, -65536, 0, 0, 7864320, 0, 1073741824])]),
    "offset": ("video.TimeOffset = 600", [(pictures, halves(1, 20)), (tag("Track1:TrackDuration"), 11)]),
    "segment deleted": ("video.DeleteTrackSegment(600, 3000)", [(pictures, halves(0, 10)), (tag("Track1:TrackDuration"), 5)]),
    "segment scaled": (
        "video.ScaleTrackSegment(0, 6000, 12000)", [(tag("Track1:TrackDuration"), 20), (tag("QuickTime:Duration"), 20)]),
    "empty time": (
        "video.InsertEmptyTrackSegment(1200, 600)",
        [(tag("Track1:TrackDuration"), 11), (tag("QuickTime:Duration"), 11)]),  # ffprobe fills the gap with pictures
    "segment shown again": (
        "video.InsertTrackSegment(video, 0, 900, 6000)", [(tag("Track1:TrackDuration"), 11.5), (stream(0, "nb_frames"), "20")]),
    "movie segment deleted": (
        "If m.DeleteMovieSegmentKRZ(0, 4800) <> 0 Then Quit(9)",
        [(pictures, halves(0, 4)), (tag("Track2:TrackDuration"), 2), (tag("Track3:TrackDuration"), 2)]),
    "movie segment scaled": (
        "If m.ScaleMovieSegmentKRZ(0, 6000, 3000) <> 0 Then Quit(9)",
        [(tag("Track1:TrackDuration"), 5), (tag("Track2:TrackDuration"), 5), (tag("QuickTime:Duration"), 5)]),
    "empty time in the movie": (
        "If m.InsertEmptyMovieSegmentKRZ(0, 600) <> 0 Then Quit(9)", [(pictures, halves(1, 20)), (tag("QuickTime:Duration"), 11)]),
    "movie segment shown again": (
        "If m.InsertMovieSegmentKRZ(m, 0, 600, 6000) <> 0 Then Quit(9)",
        [(tag("Track2:TrackDuration"), 11), (tag("QuickTime:Duration"), 11)]),
    "clone": (
        "video.Layer = 2\nIf video.AddClonedTrackToMovie(m, 1) Is Nil Then Quit(9)",
        [(tag("Track5:TrackID"), 5), (tag("Track5:TrackLayer"), 2), (stream(4, "codec_type"), "video"), (stream(4, "nb_frames"), "20")]),
    "reference deleted": (
        'video.DeleteTrackReference("chap", 1)\nIf video.Lasterror <> 0 Then Quit(9)', [(tag("Track1:ChapterListTrackID"), None)]),
    "media disposed": (
        "sound.DisposeTrackMedia", [(tag("Track2:MediaTimeScale"), None), (tag("Track1:MediaTimeScale"), 600)]),
    "channel layout": (
        "Dim layout As New QTAudioChannelLayoutKRZ\nlayout.ChannelLayoutTag = 6553601\nsound.AudioChannelLayout = layout\n"
        "If sound.Lasterror <> 0 Then Quit(9)",
        [(stream(1, "channel_layout"), "mono")]),
}


def main():
    need("ffprobe", "exiftool")
    with folder() as name:
        place = pathlib.Path(name)
        run(KRZ, "demo", place)
        demo = place / "krz-demo.mov"
        before = exiftool(demo), ffprobe(demo)
        for case, (change, expected) in CASES.items():
            script, edited, new = place / "change.bas", place / "edited.mov", place / "new.mov"
            script.write_text(HEAD + change + SAVE)
            shutil.copy(demo, edited)
            new.unlink(missing_ok=True)
            answer = run(KRZ, "run", script, edited, new)
            expect(answer.returncode == 0 and not answer.stderr, f"{case}: the script ended with {answer.returncode}: {answer.stderr}")
            if answer.returncode != 0:
                continue
            for path in (edited, new):
                judged = exiftool(path), ffprobe(path)
                for question, wanted in expected:
                    expect(question(*judged) == wanted, f"{case}, {path.name}: {question(*judged)} instead of {wanted}")
            seen = [question(*before) == wanted for question, wanted in expected]
            expect(not all(seen), f"{case}: the judges see no difference")
    finish(f"{len(CASES)} changes judged")


if __name__ == "__main__":
    main()
