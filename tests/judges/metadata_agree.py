#!/usr/bin/env python3
"""Lets exiftool, ffprobe, mediainfo and AtomicParsley read the metadata that krz writes, krz what they write, and compares
krz with exiftool over real files. usage: metadata_agree.py KRZ [CORPUS]

Exit status 77 (skipped) without the tools.
"""
import json
import pathlib
import re
import shutil
import struct
import zlib

from judge import CORPUS, KRZ, expect, finish, folder, judge_real_movies, must, need, run


# Five scripts: Latin with accents, Cyrillic, Greek, Hebrew, Chinese.
TITLES = ["Café – Über Ærø", "Война и мир", "Οδύσσεια", "שלום", "紅樓夢"]

NAMES = {
    "title": TITLES[0], "artist": TITLES[1], "albumartist": "Band", "album": TITLES[2], "comment": TITLES[3],
    "copyright": TITLES[4], "date": "2024-05-06", "genre": "Jazz", "description": "What it is about", "synopsis": "Long",
    "composer": "Clara", "writer": "Wim", "director": "Dora", "producer": "Paul", "author": "Anna", "performer": "Pia",
    "publisher": "House", "keywords": "one,two", "information": "Info", "software": "Tool 1", "make": "Maker",
    "model": "Model 5", "location": "+48.2082+016.3738/", "displayname": "Shown", "grouping": "Group", "lyrics": "La la",
    "track": "3/12", "disc": "1/2", "tempo": "120", "compilation": "1", "show": "Show", "season": "2", "episode": "5",
    "network": "Net",
}


def png(path):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = b"".join(b"\0" + bytes([x * 30, y * 30, 90] * 1) * 4 for y in range(4) for x in [y])
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 4, 4, 8, 2, 0, 0, 0))
                     + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def exiftool(path):
    return json.loads(must("exiftool", "-j", "-n", "-a", "-G1:4", path))[0]


def ffprobe(path):
    return json.loads(must("ffprobe", "-v", "error", "-show_format", "-of", "json", path))["format"].get("tags", {})


def has(values, wanted):
    return any(wanted == str(v) or (isinstance(v, list) and wanted in map(str, v)) for v in values)


def exif_form(name, text):
    """What exiftool makes of a value: dates with colons, pairs with a blank, places as numbers."""
    if name == "date":
        return [text, text.replace("-", ":")]
    if name in ("track", "disc"):
        return [text, text.replace("/", " of "), text.replace("/", " ")]
    if name == "location":
        return ["48.2082 16.3738"]
    return [text]


def written_by_krz(folder, made, cover):
    for source in made:
        movie = folder / ("krz" + source.suffix)
        shutil.copy(source, movie)
        must(KRZ, "meta", "set", movie, *[f"{k}={v}" for k, v in NAMES.items()], f"artwork={cover}", "-i")
        own = {(i["storageFormat"], i["key"]): i for i in json.loads(must(KRZ, "meta", "list", movie, "--json"))}
        expect(len(own) == len(NAMES) + 1, f"{movie.name}: {len(own)} items of {len(NAMES) + 1}")
        seen = exiftool(movie)
        for name, text in NAMES.items():
            expect(any(has(seen.values(), form) for form in exif_form(name, text)), f"{movie.name}: exiftool does not show {name} {text}")
        # Those two show the last of several keys that mean nearly the same to them, so that there are few here.
        few = folder / ("few" + source.suffix)
        shutil.copy(source, few)
        usual = ("title", "artist", "album", "comment", "copyright", "genre")
        must(KRZ, "meta", "set", few, *[f"{name}={NAMES[name]}" for name in usual], "-i")
        tags = ffprobe(few)
        for name in usual:
            expect(has(tags.values(), NAMES[name]), f"{movie.name}: ffprobe does not show {name}")
        shown = must("mediainfo", few)
        for name in ("title", "artist", "album", "comment", "copyright"):
            expect(NAMES[name] in shown, f"{movie.name}: mediainfo does not show {name}")
        back = folder / "back.png"
        must(KRZ, "meta", "get", movie, "artwork", "-o", back, "-f")
        expect(back.read_bytes() == cover.read_bytes(), f"{movie.name}: the artwork came back different")
        # The short list is what AtomicParsley knows; everything that has a place there.
        # It does not take QuickTime movies.
        short = folder / ("short" + source.suffix)
        shutil.copy(source, short)
        must(KRZ, "meta", "set", short, *[f"{k}={NAMES[k]}" for k in ("title", "artist", "album", "comment", "copyright", "track")],
            f"artwork={cover}", "--storage", "itms", "-i")
        if source.suffix != ".mov":
            listed = must("AtomicParsley", short, "-t")
            for name in ("title", "artist", "album", "comment", "copyright"):
                expect(NAMES[name] in listed, f"{short.name}: AtomicParsley does not show {name}")
            expect("3 of 12" in listed, f"{short.name}: AtomicParsley does not show the track")
            expect(re.search("covr.*1 piece", listed), f"{short.name}: AtomicParsley shows no artwork")
        must("ffmpeg", "-v", "error", "-i", movie, "-f", "null", "-")
        # User data, in five scripts, where each reader looks for it.
        for text in TITLES:
            classic = folder / ("classic" + source.suffix)
            shutil.copy(source, classic)
            must(KRZ, "meta", "set", classic, f"title={text}", "--storage", "udta", "-i")
            expect(has(exiftool(classic).values(), text), f"{classic.name}: exiftool does not show {text}")
            expect(has(ffprobe(classic).values(), text), f"{classic.name}: ffprobe does not show {text}")
            expect(text in must("mediainfo", classic), f"{classic.name}: mediainfo does not show {text}")
            before = must(KRZ, "info", "--json", source)
            must(KRZ, "meta", "remove", classic, "title", "-i")
            after = must(KRZ, "info", "--json", classic).replace(str(classic), str(source))
            expect(before == after, f"{classic.name}: removing the title did not bring the movie back")


def values_of(path):
    return [str(i["value"]) for i in json.loads(must(KRZ, "info", "--json", path))["metaData"]]


def written_by_others(folder, made):
    mov, mp4, m4a = made
    for source, flags in ((mov, []), (mp4, []), (m4a, []), (mp4, ["-movflags", "use_metadata_tags"]), (mov, ["-movflags", "use_metadata_tags"])):
        out = folder / ("ffmpeg" + source.suffix)
        must("ffmpeg", "-v", "error", "-y", "-i", source, "-c", "copy", "-metadata", f"title={TITLES[1]}",
            "-metadata", f"artist={TITLES[4]}", "-metadata", "comment=plain", *flags, out)
        for wanted in (TITLES[1], TITLES[4], "plain"):
            expect(wanted in values_of(out), f"{out.name} {flags}: krz does not show {wanted} of ffmpeg")
    for source in (mp4, m4a):
        out = folder / ("parsley" + source.suffix)
        must("AtomicParsley", source, "--title", TITLES[2], "--artist", TITLES[3], "--tracknum", "2/9", "--rDNSatom", "calm", "name=MOOD",
            "domain=org.example", "-o", out)
        for wanted in (TITLES[2], TITLES[3], "calm"):
            expect(wanted in values_of(out), f"{out.name}: krz does not show {wanted} of AtomicParsley")
        expect(must(KRZ, "meta", "get", out, "track").strip() == "2/9", f"{out.name}: the track of AtomicParsley")
        expect(must(KRZ, "meta", "get", out, "itms:org.example:MOOD").strip() == "calm", f"{out.name}: the long key of AtomicParsley")
    for source in made:
        for group in ("Keys", "ItemList", "UserData"):
            out = folder / ("exif" + source.suffix)
            shutil.copy(source, out)
            must("exiftool", "-q", "-overwrite_original", f"-{group}:Title={TITLES[0]}", f"-{group}:Artist={TITLES[4]}", out)
            for wanted in (TITLES[0], TITLES[4]):
                expect(wanted in values_of(out), f"{out.name} {group}: krz does not show {wanted} of exiftool")


# What exiftool computes from a value rather than showing it.
COMPUTED = re.compile(r":(GPSCoordinates|LocationInformation|LocationAccuracyHorizontal|CreationDate|ContentCreateDate|ChapterList|TrackNumber|"
                      r"DiskNumber|CoverArt|PlayMode|WindowLocation|LoopStyle|Genre|Android\w+)(-|$)")


def real_files():
    explained = compared = 0
    for path in sorted(CORPUS.iterdir()):
        answer = run(KRZ, "info", "--json", path)
        if answer.returncode != 0:
            continue
        movie = json.loads(answer.stdout)
        ours = []
        for place in [movie] + movie["tracks"]:
            for item in place["metaData"]:
                if item["value"] is None and item["dataType"] == 0:
                    # Text of type 0, which is not said to be text: by its bytes.
                    ours.append(item["bytes"])
                ours.append(str(item["value"]))
            ours += [item.get("text", "") for item in place["userData"]]
        for tag, value in exiftool(path).items():
            if tag.split(":")[0] not in ("ItemList", "Keys", "UserData"):
                continue
            if COMPUTED.search(tag):
                explained += 1
                continue
            compared += 1
            size = re.match(r"\(Binary data (\d+) bytes", str(value))
            found = has(ours, str(value)) or (size and int(size[1]) in ours)
            expect(found, f"{path.name}: exiftool shows {tag} {str(value)[:60]!r}, krz does not")
    print(f"{compared} items of real files compared; {explained} that exiftool computes from values not")
    expect(compared > 50, "too few items to compare")


def main():
    need("exiftool", "ffprobe", "ffmpeg", "mediainfo", "AtomicParsley")
    with folder() as name:
        place = pathlib.Path(name)
        made = [place / n for n in ("made.mov", "made.mp4", "made.m4a")]
        for path in made:
            video = [] if path.suffix == ".m4a" else ["-f", "lavfi", "-i", "testsrc=size=64x48:rate=5:duration=1"]
            must("ffmpeg", "-v", "error", *video, "-f", "lavfi", "-i", "sine=duration=1", "-fflags", "+bitexact", path)
        cover = place / "cover.png"
        png(cover)
        written_by_krz(place, made, cover)
        written_by_others(place, made)
    judge_real_movies(real_files)
    finish("metadata of made and real files compared")


if __name__ == "__main__":
    main()
