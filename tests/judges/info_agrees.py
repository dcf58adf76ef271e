#!/usr/bin/env python3
"""Compares `krz info --json` with ffprobe and exiftool on a folder of real movies.

usage: info_agrees.py KRZ FOLDER

What is compared, a track at a time: number of tracks, IDs, media types, enabled flags, durations, dimensions, sample
counts and description formats. A difference that is right has its reason in EXPLAINED below; one that is not in the
list fails the test, and so does an entry of the list that no longer applies. Exit status 77 (skipped) without the folder
or the tools.
"""
import json

from judge import CORPUS, KRZ, faults, finish, need, need_corpus, run

# Files that hold no movie: krz must refuse them with exit status 3.
NOT_MOVIES = {
    "droid-skeleton-preview.mov": "a preview atom and nothing else",
    "exiv2-crafted-fgw8.mov": "made by a fuzzer, without a movie atom",
}

# (file, track ID or 0 for the movie, field, judge) -> why the judge says something else.
EDITS_DISAGREE = "the track header's duration is not the sum of the edits, which is what plays"
EXPLAINED = {
    ("androidx-sample-mdat-too-long.mp4", 2, "seconds", "exiftool"): EDITS_DISAGREE,
    ("androidx-sample-missing-stsd.mp4", 2, "seconds", "exiftool"): EDITS_DISAGREE,
    ("androidx-sample-rotate-and-reflect.mp4", 2, "seconds", "exiftool"): EDITS_DISAGREE,
    ("antennapod-nero-chapters.m4a", 2, "seconds", "exiftool"): EDITS_DISAGREE,
    ("jcodec-itunes.mov", 1, "seconds", "exiftool"): EDITS_DISAGREE,
    ("mp4ameta-sample-multi-data.m4a", 1, "seconds", "exiftool"): EDITS_DISAGREE,
    ("atldotnet-fragmented.mp4", 1, "seconds", "exiftool"): "exiftool does not look into fragments",
    ("tika-testmp4-quicktimemetadata.mov", 0, "seconds", "exiftool"): EDITS_DISAGREE,
    ("mdx-with-gps.mp4", 2, "seconds", "exiftool"): "no edits, and the samples last longer than both headers say",
    ("format-parser-test-mov-without-hdlr-atom.mov", 2, "mediaType", "exiftool"):
        "the media has no handler; exiftool shows the data handler, the only one there is",
}

DATA_HANDLERS = ("alis", "url ", "rsrc")
CODEC_TYPES = {"vide": "video", "soun": "audio"}


def judge_ffprobe(path):
    """What ffprobe says of the tracks, in file order. A cover picture in the metadata is a stream, but no track."""
    answer = run("ffprobe", "-v", "quiet", "-show_streams", "-of", "json", path)
    if answer.returncode != 0:
        return None
    tracks = []
    for stream in json.loads(answer.stdout or "{}").get("streams", []):
        cover = stream["disposition"].get("attached_pic") and "nb_frames" not in stream
        if cover:
            continue
        track = {"id": int(stream.get("id", "0"), 16), "enabled": bool(stream["disposition"]["default"])}
        if stream.get("codec_type") in CODEC_TYPES.values():
            track["codecType"] = stream["codec_type"]
        if "nb_frames" in stream:
            track["sampleCount"] = int(stream["nb_frames"])
        tag = stream.get("codec_tag_string", "")
        if tag and not tag.startswith("[0]"):
            track["format"] = tag
        tracks.append(track)
    return {"trackCount": len(tracks), "tracks": tracks}


def judge_exiftool(path):
    """What exiftool says of the tracks, in file order."""
    answer = run("exiftool", "-j", "-n", "-G1:4", "-a", "-charset", "utf8", path)
    if not answer.stdout:
        return None
    fields = json.loads(answer.stdout)[0]
    # Keys are "Track1:TrackID" or, where the same tag came before, "Track2:Copy1:TrackID".
    tracks = {}
    for key, value in fields.items():
        group, tag = key.split(":")[0], key.split(":")[-1]
        if group.startswith("Track") and group[5:].isdigit():
            tracks.setdefault(int(group[5:]), {}).setdefault(tag, []).append(value)
    found = []
    for _, track in sorted(tracks.items()):
        one = {"id": track.get("TrackID", [0])[0]}
        # The data handler of a media is a HandlerType too.
        handlers = [str(handler) for handler in track.get("HandlerType", [])]
        if handlers:
            one["mediaType"] = ([h for h in handlers if h not in DATA_HANDLERS] or handlers)[0]
        if "TrackDuration" in track:
            one["seconds"] = float(track["TrackDuration"][0])
        for name, field in (("ImageWidth", "width"), ("ImageHeight", "height")):
            if name in track:
                one[field] = int(track[name][0])
        for name in ("CompressorID", "AudioFormat", "OtherFormat", "MetaFormat", "TextFormat"):
            if name in track:
                one["format"] = str(track[name][0])
                break
        if "TrackLayer" in track:
            # exiftool reads the layer without its sign.
            layer = int(track["TrackLayer"][0])
            one["layer"] = layer - 65536 if layer > 32767 else layer
        found.append(one)
    return {"trackCount": len(found), "tracks": found}


def ours(document):
    """The same fields as krz tells them."""
    scale = document["timeScale"]
    tracks = []
    for track in document["tracks"]:
        one = {
            "id": track["id"],
            "enabled": track["enabled"],
            "mediaType": track["mediaType"],
            "width": track["width"],
            "height": track["height"],
            "sampleCount": track["sampleCount"],
            "seconds": track["duration"] / scale,
            "layer": track["layer"],
            "codecType": CODEC_TYPES.get(track["mediaType"]),
        }
        if track["sampleDescriptions"]:
            one["format"] = track["sampleDescriptions"][0]["codecType"]
        tracks.append(one)
    return {"trackCount": document["trackCount"], "tracks": tracks, "tick": 1 / scale}


def same(field, mine, theirs, tick):
    if field == "seconds":
        return abs(mine - theirs) <= tick + 1e-6
    if field == "format":
        return mine.strip() == theirs.strip()
    return mine == theirs


def differences(name, mine, judge, verdict):
    """Every field that judge and krz both have and see differently."""
    if mine["trackCount"] != verdict["trackCount"]:
        yield (name, 0, "trackCount", judge), mine["trackCount"], verdict["trackCount"]
    for index, track in enumerate(verdict["tracks"]):
        if index >= len(mine["tracks"]):
            break
        own = mine["tracks"][index]
        for field, value in track.items():
            if own.get(field) is None and field in ("codecType", "format"):
                continue
            if not same(field, own.get(field), value, mine["tick"]):
                yield (name, own["id"], field, judge), own.get(field), value


def main():
    need_corpus()
    need("ffprobe", "exiftool")
    used, compared, movies = set(), 0, 0
    for path in sorted(CORPUS.iterdir()):
        if path.suffix in (".tsv", ".md"):
            continue
        answer = run(KRZ, "info", "--json", path)
        if path.name in NOT_MOVIES:
            if answer.returncode != 3 or str(path) not in answer.stderr:
                faults.append(f"{path.name}: not refused as it should be: {answer.returncode} {answer.stderr}")
            continue
        if answer.returncode != 0:
            faults.append(f"{path.name}: exit status {answer.returncode}: {answer.stderr.strip()}")
            continue
        movies += 1
        mine = ours(json.loads(answer.stdout))
        for judge, ask in (("ffprobe", judge_ffprobe), ("exiftool", judge_exiftool)):
            verdict = ask(path)
            if verdict is None:
                faults.append(f"{path.name}: {judge} cannot read it, krz can")
                continue
            compared += sum(len(track) for track in verdict["tracks"]) + 1
            for key, own, theirs in differences(path.name, mine, judge, verdict):
                if key in EXPLAINED:
                    used.add(key)
                else:
                    faults.append(f"{key}: krz says {own!r}, {judge} says {theirs!r}")
    faults.extend(f"no longer a difference: {key}" for key in EXPLAINED if key not in used)
    if compared == 0:
        faults.append("nothing was compared")
    finish(f"{movies} movies, {compared} answers compared, {len(used)} explained differences")


if __name__ == "__main__":
    main()
