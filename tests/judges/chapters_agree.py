#!/usr/bin/env python3
"""Chapters that krz writes, as ffprobe reads them, and chapters that ffmpeg writes, as krz reads them.

usage: chapters_agree.py KRZ [FOLDER]. FOLDER has real movies, which are compared when it is there. Exit status 77 (skipped)
without ffmpeg.
"""
import json
import pathlib
import shutil
from fractions import Fraction

from judge import CORPUS, KRZ, expect, finish, folder, judge_real_movies, must, need, run

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


def probed(path):
    chapters = json.loads(must("ffprobe", "-v", "error", "-show_chapters", "-of", "json", path))["chapters"]
    return [(Fraction(c["time_base"]) * c["start"], Fraction(c["time_base"]) * c["end"], c["tags"].get("title", "")) for c in chapters]


def listed(path):
    chapters = json.loads(must(KRZ, "chapters", "list", "--json", path))
    return [(Fraction(c["time"], c["timeScale"]), Fraction(c["time"] + c["duration"], c["timeScale"]), c["text"]) for c in chapters]


def written_by_krz(folder):
    for name, source in KINDS.items():
        path = folder / name
        must("ffmpeg", "-v", "error", "-y", *source, path)
        scale = json.loads(run(KRZ, "info", "--json", path).stdout)["timeScale"]
        starts = [Fraction(i * 7919 + (i > 0) * 13, 1000) for i in range(len(TITLES))]
        lines = "".join(f"{float(s):.3f} {t}\n" for s, t in zip(starts, TITLES))
        for new in (False, True):
            target = folder / f"new-{name}" if new else path
            answer = run(KRZ, "chapters", "import", path, "-", *(["-o", target, "-f"] if new else ["-i"]), input=lines)
            expect(answer.returncode == 0, f"{name}: {answer.stderr}")
            seen, ours = probed(target), listed(target)
            expect([t for _, _, t in seen] == TITLES, f"{name}: ffprobe reads {[t for _, _, t in seen]}")
            expect([t for _, _, t in ours] == TITLES, f"{name}: krz reads {[t for _, _, t in ours]}")
            exactly = Fraction(1, 2 * scale)  # times between two units of the movie are rounded
            for (start, _, _), (own, _, _), wanted in zip(seen, ours, starts):
                expect(abs(start - wanted) <= exactly, f"{name}: ffprobe has {float(start)} for {float(wanted)}")
                expect(abs(own - wanted) <= exactly, f"{name}: krz has {float(own)} for {float(wanted)}")
            check = run(KRZ, "chapters", "check", target)
            expect(check.returncode == 0, f"{name}: {check.stdout}")
            verified = run(KRZ, "verify", target)
            expect(verified.returncode == 0, f"{name}: {verified.stdout}{verified.stderr}")
        must(KRZ, "chapters", "convert", path, "--to", "short", "-i")
        if shutil.which("mediainfo"):
            text = run("mediainfo", path).stdout
            expect(all(f": {t}" in text for t in TITLES), f"{name}: mediainfo does not read the short list: {text[-900:]}")
        # What ffprobe finds without the track is the short list.
        bare = folder / f"bare-{name}"
        track = listed(path)
        ids = json.loads(run(KRZ, "info", "--json", path).stdout)["tracks"]
        number = next(t["index"] for t in ids if t["isChapterTrack"])
        must(KRZ, "track", "delete", path, number, "-o", bare)
        seen = probed(bare)
        expect([t for _, _, t in seen] == TITLES, f"{name}: ffprobe reads in the short list {seen}")
        must(KRZ, "chapters", "convert", bare, "--to", "track", "-i")
        expect([(s, t) for s, _, t in listed(bare)] == [(s, t) for s, _, t in track], f"{name}: there and back again gives something else")


def written_by_ffmpeg(folder):
    metadata = folder / "chapters.txt"
    text = ";FFMETADATA1\n"
    for i, title in enumerate(TITLES):
        escaped = "".join("\\" + c if c in "=;#\\" else c for c in title)
        text += f"[CHAPTER]\nTIMEBASE=1/1000\nSTART={i * 7000}\nEND={(i + 1) * 7000}\ntitle={escaped}\n"
    metadata.write_text(text)
    for name, source in KINDS.items():
        path = folder / f"ffmpeg-{name}"
        inputs = sum(1 for word in source if word == "-i")
        must("ffmpeg", "-v", "error", "-y", *source[: 4 * inputs], "-i", metadata, "-map_metadata", inputs, *source[4 * inputs :], path)
        wanted = [(Fraction(i * 7), t) for i, t in enumerate(TITLES)]
        expect([(s, t) for s, _, t in listed(path)] == wanted, f"{path.name}: krz reads {listed(path)}")
        expect([(s, t) for s, _, t in probed(path)] == wanted, f"{path.name}: the judge reads something else: {probed(path)}")
        # ffmpeg's own export and ours are the same chapters.
        exported = folder / "exported.txt"
        exported.write_text(run(KRZ, "chapters", "export", path, "--format", "ffmetadata").stdout)
        again = run("ffprobe", "-v", "error", "-f", "ffmetadata", "-show_chapters", "-of", "json", exported)
        titles = [c["tags"]["title"] for c in json.loads(again.stdout)["chapters"]]
        expect(titles == TITLES, f"{name}: ffprobe reads {titles} in what was exported")


def real_movies():
    compared = 0
    for path in sorted(CORPUS.iterdir()):
        if path.suffix not in (".mov", ".mp4", ".m4a", ".m4v", ".m4b"):
            continue
        info = run(KRZ, "chapters", "list", "--json", path)
        if info.returncode != 0 or info.stdout == "[]\n":
            continue
        seen, ours = probed(path), listed(path)
        compared += 1
        same = len(seen) == len(ours) and all(t == u and abs(s - r) < Fraction(1, 100) for (s, _, t), (r, _, u) in zip(seen, ours))
        expect(same != (path.name in EXPLAINED), f"{path.name}: ffprobe {seen}, krz {ours}")
    print(f"{compared} real movies with chapters compared")


def main():
    need("ffmpeg", "ffprobe")
    with folder() as name:
        written_by_krz(pathlib.Path(name))
        written_by_ffmpeg(pathlib.Path(name))
    judge_real_movies(real_movies)
    finish(f"{2 * len(KINDS)} movies with chapters")


if __name__ == "__main__":
    main()
