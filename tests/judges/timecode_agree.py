#!/usr/bin/env python3
"""Time codes that krz writes, as ffprobe, exiftool and mediainfo read them, and those that ffmpeg and cameras write, as krz reads them.

usage: timecode_agree.py KRZ [FOLDER]. FOLDER has real movies, which are compared when it is there. Exit status 77 (skipped)
without ffmpeg.
"""
import json
import pathlib
import shutil

from judge import CORPUS, KRZ, expect, finish, folder, judge_real_movies, must, need, run

# What krz calls a rate, what ffmpeg calls that of the pictures, a start, and the label a second and a half later.
CASES = [
    ("23.976", "24000/1001", "10:20:30:12", "10:20:31:23"),
    ("24", "24", "00:59:59:23", "01:00:01:11"),
    ("25", "25", "23:59:59:00", "00:00:00:12"),
    ("29.97", "30000/1001", "00:00:59:28", "00:01:01:12"),
    ("29.97df", "30000/1001", "00:00:59;28", "00:01:01;14"),
    ("29.97df", "30000/1001", "01:00:00;00", "01:00:01;14"),
    ("30", "30", "12:00:00:00", "12:00:01:15"),
    ("50", "50", "00:00:00:49", "00:00:02:24"),
    ("59.94df", "60000/1001", "00:09:59;59", "00:10:01;28"),
    ("60", "60", "03:04:05:06", "03:04:06:36"),
]


def probed(path):
    """The tag of every timecode stream, and of every stream that refers to one."""
    streams = json.loads(must("ffprobe", "-v", "error", "-show_streams", "-of", "json", path))["streams"]
    tags = [s.get("tags", {}) for s in streams]
    is_timecode = [s.get("codec_tag_string") in ("tmcd", "tc64") for s in streams]
    own = [t.get("timecode") for t, its in zip(tags, is_timecode) if its]
    others = [t["timecode"] for t, its in zip(tags, is_timecode) if not its and "timecode" in t]
    reels = [t["reel_name"] for t in tags if "reel_name" in t]
    return own, others, reels


def shown(path, *arguments):
    answer = run(KRZ, "timecode", "show", path, "--json", *arguments)
    return json.loads(answer.stdout) if answer.returncode == 0 else None


def pictures(path, rate):
    must("ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", f"testsrc=d=4:s=64x48:r={rate}", "-c:v", "mpeg4", path)


def written_by_krz(folder):
    for kind in ("mov", "mp4"):
        for i, (rate, picture_rate, start, later) in enumerate(CASES):
            path = folder / f"{i}.{kind}"
            name = f"{path.name} {rate} {start}"
            pictures(path, picture_rate)
            must(KRZ, "timecode", "add", path, "--start", start, "--rate", rate, "--source", f"Reel{i}", "-i")
            saved = folder / f"saved-{i}.{kind}"
            must(KRZ, "save", path, "-o", saved)
            for each in (path, saved):
                own, others, reels = probed(each)
                expect(own == [start], f"{name}: ffprobe reads {own}")
                expect(others == [start], f"{name}: ffprobe reads {others} at the pictures")
                expect(reels == [f"Reel{i}"], f"{name}: ffprobe reads the reels {reels}")
                code = shown(each, "--at", "1.501")
                expect(code and code["string"] == later, f"{name}: krz reads {code} after a second and a half")
            if shutil.which("mediainfo"):
                text = must("mediainfo", "--Inform=Other;%TimeCode_FirstFrame% %Title%", path).strip()
                expect(text == f"{start} Reel{i}", f"{name}: mediainfo reads {text}")
            if shutil.which("exiftool"):
                text = must("exiftool", "-s", "-s", "-s", "-ee", "-TimeCode", path).strip()
                track = shown(path)["track"]
                expect(text == str(track), f"{name}: exiftool finds the time code in track {text}")
            checked = run(KRZ, "verify", path)
            expect(checked.returncode == 0, f"{name}: {checked.stdout}")
            again = run("ffmpeg", "-v", "error", "-i", path, "-f", "null", "-")
            expect(again.stderr == "", f"{name}: ffmpeg says {again.stderr[:200]}")


def written_by_ffmpeg(folder):
    for kind in ("mov", "mp4"):
        for i, (rate, picture_rate, start, later) in enumerate(CASES):
            path = folder / f"ffmpeg-{i}.{kind}"
            must("ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", f"testsrc=d=4:s=64x48:r={picture_rate}", "-c:v", "mpeg4",
                 "-metadata:s:v", f"reel_name=Tape {i}", "-timecode", start, "-write_tmcd", "1", path)
            own, _, _ = probed(path)
            code = shown(path)
            expect(code and [code["string"]] == own == [start], f"{path.name}: krz reads {code}, ffprobe {own}, written was {start}")
            code = shown(path, "--at", "1.501")
            # It does not say that the day ends.
            wanted = "24:00:00:12" if start.startswith("23:") else later
            expect(code and code["string"] == wanted, f"{path.name}: krz reads {code} after a second and a half")
            expect(code and code["faults"] == [], f"{path.name}: krz finds {code and code['faults']}")
            source = f"Tape {i}" if kind == "mov" else None  # it names no reel in files of the other kind
            expect(code and code["sourceName"] == source, f"{path.name}: krz reads the source {code and code['sourceName']}")


def real_movies():
    compared = 0
    for path in sorted(CORPUS.rglob("*")):
        if path.suffix.lower() not in (".mov", ".mp4", ".m4v", ".m4a"):
            continue
        listed = run(KRZ, "timecode", "list", path, "--json")
        if listed.returncode == 3:
            continue
        probe = run("ffprobe", "-v", "quiet", "-show_streams", "-of", "json", path)
        own = probed(path)[0] if probe.returncode == 0 and probe.stdout.strip() != "{}" else []
        if listed.returncode != 0:
            expect(own == [], f"{path.name}: krz sees no timecode track, ffprobe {own}")
            continue
        tracks = json.loads(listed.stdout)
        first = [t["samples"][0]["string"] for t in tracks if t["samples"]]
        expect(first == own, f"{path.name}: krz reads {first}, ffprobe {own}")
        compared += 1
    print(f"{compared} real movies have time codes")


def main():
    need("ffmpeg", "ffprobe")
    with folder() as name:
        written_by_krz(pathlib.Path(name))
        written_by_ffmpeg(pathlib.Path(name))
    judge_real_movies(real_movies)
    finish(f"{len(CASES) * 4} movies compared")


if __name__ == "__main__":
    main()
