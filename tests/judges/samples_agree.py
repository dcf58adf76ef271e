#!/usr/bin/env python3
"""Compares the samples of every track with ffprobe's packets on a folder of real movies.

usage: samples_agree.py KRZ FOLDER

What is compared, for each track: the number of samples, and of each its time, duration, size, sync flag and bytes (as
an MD5 sum). ffprobe leaves edit lists aside here, so that its times are those of the media. A difference that is right
has its reason in EXPLAINED below; one that is not in the list fails the test, and so does an entry of the list that no
longer applies. Exit status 77 (skipped) without the folder or the tools.
"""
import collections
import concurrent.futures
import csv
import hashlib
import io
import json
import os

from judge import CORPUS, KRZ, faults, finish, need, need_corpus, run

# Sound of single frames: ffprobe hands out many at once, which must begin and end where frames do.
FRAMES = ("twos", "sowt", "raw ", "lpcm", "in24")

# The same of tracks whose description does not say that they hold frames.
GATHERED = {("mp4parser-mov00006.3gp", 2): "one size and one duration for all: ffprobe hands out a chunk at a time"}

# Files that end inside their media data. ffprobe lets a track end at its first sample that is not whole, whose packet is
# cut; krz lists what the tables say, and reports the sample when its bytes are asked for.
CUT_SHORT = ("atldotnet-fragmented.mp4", "go-mp4-sample-qt.mp4", "mutagen-truncated-64bit.mp4")

# (file, track ID or, when several have the same, its place, field) -> why ffprobe says something else.
RATE = "where display times differ from decode times ffprobe works out durations from the frame rate, krz gives the table's"
LAST = "ffprobe lets the last packet last to the end that the headers state, krz gives the table's duration"
CHAPTERS = "ffprobe shows the samples of chapter tracks as chapters, not as packets"
NO_CHUNKS = "the tables do not say where the samples are: krz reports it, ffprobe has no packets"
EXPLAINED = {
    ("androidx-bt601.mov", 2, "duration"): RATE,
    ("androidx-sample-sef-slow-motion.mp4", 2, "duration"): RATE,
    ("streamio-awesome-movie.mov", 2, "duration"): RATE,
    ("swift-timecode-videotrack-25-vfr-1sec.mov", 1, "duration"): RATE,
    ("dss-sample-100kbit.mov", 4, "duration"): LAST,
    ("format-parser-test-circular-ipad-720p.mov", 2, "duration"): LAST,
    ("mdx-with-gps.mp4", 2, "duration"): LAST,
    ("subtitleedit-sample-mp4-chapter-track.mp4", 2, "duration"): LAST,
    ("subtitleedit-sample-mp4-srt.mp4", 3, "duration"): LAST,
    ("swift-timecode-timecodetrack-23-976-start-00-00-00-00.mov", 1, "duration"): LAST,
    ("taglib-nonprintable-atom-type.m4a", 5, "duration"): LAST,
    ("taglib-nonprintable-atom-type.m4a", 6, "duration"): LAST,
    ("androidx-sample-with-chapters.mp4", 3, "count"): CHAPTERS,
    ("antennapod-nero-chapters.m4a", 3, "count"): CHAPTERS,
    ("atldotnet-chapters-qt.m4v", 2, "count"): CHAPTERS,
    ("mp4parser-test-pod.m4a", 1, "count"): CHAPTERS,
    ("mp4parser-test-pod.m4a", 2, "count"): CHAPTERS,
    ("subtitleedit-sample-mp4-chapter-track.mp4", 3, "count"): CHAPTERS,
    ("mp4parser-test-pod.m4a", 4, "count"): "the picture of a chapter is given twice, once as a cover picture",
    ("dss-sample-100kbit.mov", 3, "sync"): "ffprobe calls every packet that is neither sound nor picture a key frame",
    ("format-corpus-xdcam-ex-720p24.mov", 1, "sync"): "ffprobe counts partial sync samples as key frames",
    ("mp4ameta-sample-64.mp4", 1, "sync"): "ffprobe looks into the pictures and finds recovery points",
    ("exiftool-quicktime.mov", 1, "error"): NO_CHUNKS,
    ("exiftool-quicktime.mov", 2, "error"): NO_CHUNKS,
    ("tika-testmp4-quicktimemetadata.mov", 1, "error"): NO_CHUNKS,
    ("tika-testmp4-quicktimemetadata.mov", 2, "error"): NO_CHUNKS,
    ("tika-testmp4-quicktimemetadata.mov", 3, "error"): NO_CHUNKS,
    ("tika-testmp4-quicktimemetadata.mov", 4, "error"): NO_CHUNKS,
    ("photoprism-quicktime-jpeg.mov", 1, "error"): "the samples are in another file, which is not there",
    ("photoprism-quicktime-jpeg.mov", 1, "count"): "the same: ffprobe has no packets, krz has what the tables say",
}

Sample = collections.namedtuple("Sample", "time duration size sync digest")


def number(packet, key):
    return int(packet[key]) if key in packet else None


def packets_of(path):
    """ffprobe's packets by stream, in file order of the streams; None when it cannot read the file."""
    answer = run("ffprobe", "-v", "quiet", "-ignore_editlist", "1", "-show_packets", "-show_streams", "-show_data_hash",
                 "md5", "-show_entries", "stream=index,id,nb_frames,codec_type:stream_disposition=attached_pic"
                 ":packet=stream_index,pts,dts,duration,size,flags,data_hash", "-of", "json", path)
    if answer.returncode != 0:
        return None
    document = json.loads(answer.stdout or "{}")
    streams = {}
    for stream in document.get("streams", []):
        cover = stream["disposition"].get("attached_pic") and "nb_frames" not in stream
        if not cover:
            streams[stream["index"]] = []
    for packet in document.get("packets", []):
        if packet["stream_index"] not in streams:
            continue
        time = number(packet, "pts")
        streams[packet["stream_index"]].append(Sample(
            number(packet, "dts") if time is None else time, number(packet, "duration"), int(packet["size"]),
            "K" in packet["flags"], packet.get("data_hash", "MD5:").split(":")[1]))
    return [packets for _, packets in sorted(streams.items())]


def samples_of(path, place):
    """krz's samples of the track at that place, and their bytes; an error as text."""
    listed = run(KRZ, "samples", "list", str(path), str(place), "--csv")
    if listed.returncode != 0:
        return [], b"", listed.stderr.strip()
    rows = list(csv.DictReader(io.StringIO(listed.stdout)))
    data, error = b"", ""
    if rows:
        answer = run(KRZ, "samples", "extract", str(path), str(place), "-o", "-", text=False)
        data = answer.stdout
        error = answer.stderr.decode().strip()
    samples, at = [], 0
    for row in rows:
        size = int(row["size"])
        samples.append(Sample(int(row["time"]), int(row["duration"]), size, row["sync"] == "1",
                              hashlib.md5(data[at:at + size]).hexdigest() if at + size <= len(data) else None))
        at += size
    return samples, data, error


def gathered(samples, data, packets):
    """Samples put together to the sizes of the packets, as far as packets begin and end where samples do."""
    whole, place, at = [], 0, 0
    for packet in packets:
        first, size, duration = place, 0, 0
        while place < len(samples) and size < packet.size:
            size += samples[place].size
            duration += samples[place].duration
            place += 1
        if first == place:
            break
        digest = hashlib.md5(data[at:at + size]).hexdigest() if at + size <= len(data) else None
        whole.append(Sample(samples[first].time, duration, size, samples[first].sync, digest))
        at += size
    return whole + samples[place:]


def differences(name, track, mine, packets):
    """What differs, once for each field."""
    if len(mine) != len(packets):
        yield (name, track, "count"), len(mine), len(packets)
    for field in Sample._fields:
        wrong = [i for i, (own, other) in enumerate(zip(mine, packets))
                 if getattr(other, field) is not None and getattr(own, field) != getattr(other, field)]
        if wrong:
            first = wrong[0]
            yield ((name, track, field), f"{getattr(mine[first], field)} ({len(wrong)} differ, the first is {first + 1})",
                   getattr(packets[first], field))


def judge(path):
    """All differences of a movie, and how many tracks and samples were compared."""
    found, compared = [], [0, 0]
    answer = run(KRZ, "info", "--json", path)
    if answer.returncode != 0:
        return found, compared
    tracks = json.loads(answer.stdout)["tracks"]
    streams = packets_of(path)
    if streams is None or len(streams) != len(tracks):
        found.append(((path.name, 0, "streams"), len(tracks), "none" if streams is None else len(streams)))
        return found, compared
    ids = [track["id"] for track in tracks]
    for place, (track, packets) in enumerate(zip(tracks, streams), 1):
        key = track["id"] if ids.count(track["id"]) == 1 else place
        samples, data, error = samples_of(path, place)
        if path.name in CUT_SHORT and len(packets) < len(samples):
            if not error or str(path) not in error:
                found.append(((path.name, key, "error"), error or "nothing", "less than all samples"))
            samples, packets = samples[:max(len(packets) - 1, 0)], packets[:-1]
        elif error:
            found.append(((path.name, key, "error"), error, f"{len(packets)} packets"))
        codec = track["sampleDescriptions"][0]["codecType"] if track["sampleDescriptions"] else ""
        if codec in FRAMES or (path.name, key) in GATHERED:
            samples = gathered(samples, data, packets)
        found += differences(path.name, key, samples, packets)
        compared[0] += 1
        compared[1] += min(len(samples), len(packets))
    return found, compared


def main():
    need_corpus()
    need("ffprobe")
    paths = [path for path in sorted(CORPUS.iterdir()) if path.suffix not in (".tsv", ".md")]
    used, tracks, samples = set(), 0, 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for found, compared in pool.map(judge, paths):
            tracks += compared[0]
            samples += compared[1]
            for key, own, theirs in found:
                if key in EXPLAINED:
                    used.add(key)
                else:
                    faults.append(f"{key}: krz says {own}, ffprobe says {theirs}")
    faults.extend(f"no longer a difference: {key}" for key in EXPLAINED if key not in used)
    if samples == 0:
        faults.append("nothing was compared")
    finish(f"{tracks} tracks with {samples} samples compared, {len(used)} explained differences")


if __name__ == "__main__":
    main()
