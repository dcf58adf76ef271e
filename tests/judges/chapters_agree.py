#!/usr/bin/env python3
"""Chapters that krz writes, as ffprobe reads them, and chapters that ffmpeg writes, as krz reads them.

usage: chapters_agree.py KRZ [FOLDER]. FOLDER has real movies, which are compared when it is there. Exit status 77 (skipped)
without ffmpeg.
"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
from fractions import Fraction

TITLES = ["Opening", "Première & <deuxième>", "第二章 日本語", "الفصل الثالث", "Κεφάλαιο 'quoted' \"double\"", "🎬👩‍🚀 emoji", "Глава; #7 = \\ (end)"]
# Media scales that do not divide the movie's, and one that is coarser: times must come out right all the same.
KINDS = {
    "clip.mov": ["-f", "lavfi", "-i", "testsrc=d=60:s=64x48:r=30000/1001", "-f", "lavfi", "-i", "sine=d=60:r=44100", "-c:v", "mpeg4"],
    "clip.mp4": ["-f", "lavfi", "-i", "testsrc=d=60:s=64x48:r=24", "-f", "lavfi", "-i", "sine=d=60:r=48000", "-c:v", "mpeg4"],
    "song.m4a": ["-f", "lavfi", "-i", "sine=d=60:r=44100", "-c:a", "aac"],
    "book.m4b": ["-f", "lavfi", "-i", "sine=d=60:r=22050", "-c:a", "aac", "-f", "ipod"],
    "slow.mov": ["-f", "lavfi", "-i", "testsrc=d=60:s=64x48:r=25", "-c:v", "mpeg4", "-video_track_timescale", "25"],
}
# Real movies of which ffprobe says something else, and why.
EXPLAINED = {"mp4parser-test-pod.m4a": "two tracks are named as chapters, titles and links: ffprobe shows the last, krz the first"}
faults = []


def run(*command, stdin=None):
    return subprocess.run([str(c) for c in command], capture_output=True, text=True, timeout=60, input=stdin)


def expect(condition, text):
    if not condition:
        faults.append(text)


def probed(path):
    answer = run("ffprobe", "-v", "error", "-show_chapters", "-of", "json", path)
    chapters = json.loads(answer.stdout)["chapters"]
    return [(Fraction(c["time_base"]) * c["start"], Fraction(c["time_base"]) * c["end"], c["tags"].get("title", "")) for c in chapters]


def listed(krz, path):
    answer = run(krz, "chapters", "list", "--json", path)
    assert answer.returncode == 0, answer.stderr
    return [(Fraction(c["time"], c["timeScale"]), Fraction(c["time"] + c["duration"], c["timeScale"]), c["text"]) for c in json.loads(answer.stdout)]


def written_by_krz(krz, folder):
    for name, source in KINDS.items():
        path = folder / name
        made = run("ffmpeg", "-v", "error", "-y", *source, path)
        assert made.returncode == 0, made.stderr
        scale = json.loads(run(krz, "info", "--json", path).stdout)["timeScale"]
        starts = [Fraction(i * 7919 + (i > 0) * 13, 1000) for i in range(len(TITLES))]
        lines = "".join(f"{float(s):.3f} {t}\n" for s, t in zip(starts, TITLES))
        for new in (False, True):
            target = folder / f"new-{name}" if new else path
            answer = run(krz, "chapters", "import", path, "-", *(["-o", target, "-f"] if new else ["-i"]), stdin=lines)
            expect(answer.returncode == 0, f"{name}: {answer.stderr}")
            seen, ours = probed(target), listed(krz, target)
            expect([t for _, _, t in seen] == TITLES, f"{name}: ffprobe reads {[t for _, _, t in seen]}")
            expect([t for _, _, t in ours] == TITLES, f"{name}: krz reads {[t for _, _, t in ours]}")
            exactly = Fraction(1, 2 * scale)  # times between two units of the movie are rounded
            for (start, _, _), (own, _, _), wanted in zip(seen, ours, starts):
                expect(abs(start - wanted) <= exactly, f"{name}: ffprobe has {float(start)} for {float(wanted)}")
                expect(abs(own - wanted) <= exactly, f"{name}: krz has {float(own)} for {float(wanted)}")
            check = run(krz, "chapters", "check", target)
            expect(check.returncode == 0, f"{name}: {check.stdout}")
            verified = run(krz, "verify", target)
            expect(verified.returncode == 0, f"{name}: {verified.stdout}{verified.stderr}")
        converted = run(krz, "chapters", "convert", path, "--to", "short", "-i")
        expect(converted.returncode == 0, f"{name}: {converted.stderr}")
        if shutil.which("mediainfo"):
            text = run("mediainfo", path).stdout
            expect(all(f": {t}" in text for t in TITLES), f"{name}: mediainfo does not read the short list: {text[-900:]}")
        # What ffprobe finds without the track is the short list.
        bare = folder / f"bare-{name}"
        track = listed(krz, path)
        ids = json.loads(run(krz, "info", "--json", path).stdout)["tracks"]
        number = next(t["index"] for t in ids if t["isChapterTrack"])
        answer = run(krz, "track", "delete", path, number, "-o", bare)
        expect(answer.returncode == 0, answer.stderr)
        seen = probed(bare)
        expect([t for _, _, t in seen] == TITLES, f"{name}: ffprobe reads in the short list {seen}")
        answer = run(krz, "chapters", "convert", bare, "--to", "track", "-i")
        expect(answer.returncode == 0, answer.stderr)
        expect([(s, t) for s, _, t in listed(krz, bare)] == [(s, t) for s, _, t in track], f"{name}: there and back again gives something else")


def written_by_ffmpeg(krz, folder):
    metadata = folder / "chapters.txt"
    text = ";FFMETADATA1\n"
    for i, title in enumerate(TITLES):
        escaped = "".join("\\" + c if c in "=;#\\" else c for c in title)
        text += f"[CHAPTER]\nTIMEBASE=1/1000\nSTART={i * 7000}\nEND={(i + 1) * 7000}\ntitle={escaped}\n"
    metadata.write_text(text)
    for name, source in KINDS.items():
        path = folder / f"ffmpeg-{name}"
        inputs = sum(1 for word in source if word == "-i")
        made = run("ffmpeg", "-v", "error", "-y", *source[: 4 * inputs], "-i", metadata, "-map_metadata", inputs, *source[4 * inputs :], path)
        assert made.returncode == 0, made.stderr
        wanted = [(Fraction(i * 7), t) for i, t in enumerate(TITLES)]
        expect([(s, t) for s, _, t in listed(krz, path)] == wanted, f"{path.name}: krz reads {listed(krz, path)}")
        expect([(s, t) for s, _, t in probed(path)] == wanted, f"{path.name}: the judge reads something else: {probed(path)}")
        # ffmpeg's own export and ours are the same chapters.
        exported = folder / "exported.txt"
        exported.write_text(run(krz, "chapters", "export", path, "--format", "ffmetadata").stdout)
        again = run("ffprobe", "-v", "error", "-f", "ffmetadata", "-show_chapters", "-of", "json", exported)
        titles = [c["tags"]["title"] for c in json.loads(again.stdout)["chapters"]]
        expect(titles == TITLES, f"{name}: ffprobe reads {titles} in what was exported")


def real_movies(krz, folder):
    compared = 0
    for path in sorted(folder.iterdir()):
        if path.suffix not in (".mov", ".mp4", ".m4a", ".m4v", ".m4b"):
            continue
        info = run(krz, "chapters", "list", "--json", path)
        if info.returncode != 0 or info.stdout == "[]\n":
            continue
        seen, ours = probed(path), listed(krz, path)
        compared += 1
        same = len(seen) == len(ours) and all(t == u and abs(s - r) < Fraction(1, 100) for (s, _, t), (r, _, u) in zip(seen, ours))
        expect(same != (path.name in EXPLAINED), f"{path.name}: ffprobe {seen}, krz {ours}")
    print(f"{compared} real movies with chapters compared")


def main():
    krz = os.path.abspath(sys.argv[1])
    if not (shutil.which("ffmpeg") and shutil.which("ffprobe")):
        print("skipped: ffmpeg and ffprobe are needed")
        return 77
    with tempfile.TemporaryDirectory() as name:
        written_by_krz(krz, pathlib.Path(name))
        written_by_ffmpeg(krz, pathlib.Path(name))
    if len(sys.argv) > 2 and os.path.isdir(sys.argv[2]):
        real_movies(krz, pathlib.Path(sys.argv[2]))
    for fault in faults:
        print(fault)
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
