#!/usr/bin/env python3
"""Sound that ffmpeg makes is measured by krz; sizes that krz works out are those that other tools' files carry, and other
tools read what krz saves. usage: sound_agree.py KRZ [CORPUS]

Exit status 77 (skipped) without the tools.
"""
import json
import math
import pathlib
import re
import shutil

from judge import CORPUS, KRZ, expect, finish, folder, judge_real_movies, must, need, run


# Codec of ffmpeg -> how far a level may be off, dB. Eight bits and the telephone laws are coarse.
CODECS = ["pcm_s16be", "pcm_s16le", "pcm_u8", "pcm_s8", "pcm_s24be", "pcm_s24le", "pcm_s32be", "pcm_s32le", "pcm_f32be",
          "pcm_f32le", "pcm_f64be", "pcm_f64le", "pcm_mulaw", "pcm_alaw", "adpcm_ima_qt"]
MOST_OFF = 1.0
BANDS = [200, 400, 800, 1600, 3200, 6400, 12800, 21000]

MEASURE = """
Dim m As Movie = OpenMovie(Args(0))
Dim t As QTTrackKRZ = m.GetSoundTrackKRZ(1)
t.SoundLevelMeteringEnabled = True
Dim n As Integer, l As Integer, r As Integer
For i As Integer = 0 To 4
  m.Position = m.Duration * i \\ 4
  t.SoundLevelMeterInfo(n, l, r)
  Dim text As String = Str(n) + " " + Str(l) + " " + Str(r) + " " + Str(t.SoundSetDefaultEqualizerBands)
  Dim levels As MemoryBlock = t.SoundGetEqualizerBandLevels(8)
  For band As Integer = 0 To 7
    text = text + " " + Str(levels.Byte(band))
  Next
  Print text, t.Lasterror
Next
"""

SET_MODE = """
Dim m As Movie = OpenMovie(Args(0), True)
m.GetVideoTrackKRZ(1).MediaSetGraphicsMode(36, &cFF8000)
m.Save
"""


def sound(path, source, codec, *more):
    must("ffmpeg", "-loglevel", "error", "-y", "-f", "lavfi", "-i", source, *more, "-c:a", codec, path)


def decibels(level):
    return 20 * math.log10(level / 255) if level else -math.inf


def measured(folder, movie):
    script = folder / "measure.bas"
    script.write_text(MEASURE)
    return [[int(word) for word in line.split()] for line in must(KRZ, "run", script, movie).splitlines()]


def peak_of(movie):
    answer = run("ffmpeg", "-hide_banner", "-i", movie, "-af", "volumedetect", "-f", "null", "-").stderr
    return float(re.search(r"max_volume: (-?[\d.]+|-inf) dB", answer)[1])


def check_tones(folder):
    """A tone of a kilohertz at two levels, in every format and at several rates."""
    cases = [(codec, 48000, amplitude) for codec in CODECS for amplitude in (0.5, 0.1)]
    cases += [("pcm_s16be", rate, 0.5) for rate in (8000, 22050, 44100, 96000)]
    for codec, rate, amplitude in cases:
        name = f"{codec} {rate} Hz {amplitude}"
        movie = folder / "tone.mov"
        sound(movie, f"aevalsrc={amplitude}*sin(2*PI*1000*t)|{amplitude / 2}*sin(2*PI*1000*t):s={rate}:d=1", codec)
        wanted = 20 * math.log10(amplitude)
        expect(abs(peak_of(movie) - wanted) < MOST_OFF, f"{name}: ffmpeg hears {peak_of(movie)} dB itself")
        nearest = min(range(8), key=lambda band: abs(math.log(BANDS[band] / 1000)))
        for channels, left, right, status, *levels, error in measured(folder, movie):
            expect((channels, status, error) == (2, 0, 0), f"{name}: {channels} channels, errors {status}, {error}")
            expect(abs(decibels(left) - wanted) < MOST_OFF, f"{name}: left {decibels(left):.2f}, not {wanted:.2f} dB")
            expect(abs(decibels(right) - wanted + 6.02) < MOST_OFF, f"{name}: right {decibels(right):.2f} dB")
            expect(abs(decibels(levels[nearest]) - wanted) < MOST_OFF, f"{name}: band {decibels(levels[nearest]):.2f} dB")
            others = max(level for band, level in enumerate(levels) if band != nearest)
            expect(decibels(others) < wanted - 20, f"{name}: another band hears {decibels(others):.2f} dB")


def check_silence(folder):
    for codec in CODECS:
        movie = folder / "silence.mov"
        sound(movie, "anullsrc=r=48000:cl=stereo", codec, "-t", "0.5")
        for _, left, right, _, *levels, _ in measured(folder, movie):
            # The finest step of these two does not reach zero in every sample.
            floor = 1 if codec in ("pcm_alaw", "pcm_u8") else 0
            expect(max(left, right, *levels) <= floor, f"{codec}: silence is {left}, {right}, {levels}")
    compressed = folder / "compressed.mov"
    sound(compressed, "sine=frequency=1000:duration=1", "aac")
    expect(all(row == [1, 0, 0, 0] + [0] * 9 for row in measured(folder, compressed)), "compressed sound is not silent")


def check_levels_over_time(folder):
    """Each second another level: the list, the table and ffmpeg's own peaks say the same."""
    movie = folder / "steps.mov"
    sound(movie, "aevalsrc=pow(0.5\\,floor(t))*sin(2*PI*500*t):s=48000:d=4", "pcm_s16le")
    levels = json.loads(must(KRZ, "sound", "levels", movie, "--every", "1", "--json"))[0]["channels"][0]
    expect(len(levels["peak"]) == 4, f"{len(levels['peak'])} intervals")
    for second, (peak, mean) in enumerate(zip(levels["peak"], levels["rms"])):
        expect(abs(peak - 0.5 ** second) < 0.002, f"second {second}: peak {peak}")
        expect(abs(mean - 0.5 ** second / math.sqrt(2)) < 0.002, f"second {second}: mean {mean}")
    must(KRZ, "edit", "cut", movie, "0-1", "-i", "-q")
    cut = json.loads(must(KRZ, "sound", "levels", movie, "--every", "1", "--json"))[0]["channels"][0]["peak"]
    expect([round(p, 2) for p in cut] == [0.5, 0.25, 0.12], f"after an edit the peaks are {cut}")


def apertures(movie):
    tracks = json.loads(must(KRZ, "aperture", "show", movie, "--json"))
    return {t["id"]: t["apertures"] for t in tracks if t["apertures"]}


def check_corpus(folder):
    compared = 0
    for movie in sorted(CORPUS.iterdir()):
        answer = run(KRZ, "aperture", "show", movie, "--json")
        if answer.returncode or '"clean"' not in answer.stdout:
            continue
        carried = apertures(movie)
        copy = folder / ("copy" + movie.suffix)
        shutil.copy(movie, copy)
        copy.chmod(0o644)
        must(KRZ, "aperture", "remove", copy, "-i", "-q")
        expect(apertures(copy) == {}, f"{movie.name}: sizes are left")
        if "without-hdlr" in movie.name:
            continue  # nothing says that its tracks are pictures
        must(KRZ, "aperture", "generate", copy, "-i", "-q")
        expect(apertures(copy) == carried, f"{movie.name}: {apertures(copy)}, the file has {carried}")
        compared += 1
    expect(compared > 3, f"only {compared} files with aperture dimensions")
    print(f"{compared} files carry the sizes that krz works out")


def check_anamorphic(folder):
    """ffmpeg's own shapes of pixels, and a clean aperture put into its file by hand."""
    for size, aspect, shape in (("720x480", "4:3", 8 / 9), ("720x576", "16:9", 64 / 45), ("1440x1080", "16:9", 4 / 3)):
        movie = folder / "anamorphic.mov"
        must("ffmpeg", "-loglevel", "error", "-y", "-f", "lavfi", "-i", f"testsrc=s={size}:d=0.2:r=25", "-aspect", aspect,
            "-c:v", "mpeg4", movie)
        must(KRZ, "aperture", "generate", movie, "-i", "-q")
        width, height = (int(x) for x in size.split("x"))
        found = apertures(movie)[1]
        expected = {"width": round(width * shape * 65536) / 65536, "height": height}
        expect(found["production"] == expected and found["clean"] == expected, f"{size} {aspect}: {found}")
        expect(found["encoded"] == {"width": width, "height": height}, f"{size} {aspect}: {found}")
        seen = json.loads(must("exiftool", "-j", movie))[0]
        text = f"{expected['width']:g}x{height}"
        expect(seen["ProductionApertureDimensions"].startswith(text[:7]), f"exiftool: {seen['ProductionApertureDimensions']}, not {text}")
        expect(seen["EncodedPixelsDimensions"] == size, f"exiftool: {seen['EncodedPixelsDimensions']}")
        stream = json.loads(must("ffprobe", "-v", "error", "-of", "json", "-show_streams", movie))["streams"][0]
        expect((stream["width"], stream["height"]) == (width, height), "ffprobe sees another size")


def check_settings(folder):
    movie = folder / "settings.mov"
    must("ffmpeg", "-loglevel", "error", "-y", "-f", "lavfi", "-i", "testsrc=s=64x48:d=1", "-f", "lavfi", "-i",
        "anoisesrc=d=1:r=48000", "-filter_complex", "[1:a]pan=5.1|c0=c0|c1=c0|c2=c0|c3=c0|c4=c0|c5=c0[a]", "-map", "0:v",
        "-map", "[a]", "-c:v", "mpeg4", "-c:a", "pcm_s16le", movie)
    must(KRZ, "sound", "set", movie, "sound", "--volume", "0.5", "--balance", "-64", "--movie-volume", "0.75",
        "--layout", "L,R,Ls,Rs,C,LFE", "-i", "-q")
    script = folder / "mode.bas"
    script.write_text(SET_MODE)
    must(KRZ, "run", script, movie)
    seen = json.loads(must("exiftool", "-j", "-G1", "-n", movie))[0]
    expect(seen.get("Track2:TrackVolume") == 0.5, f"exiftool: volume {seen.get('Track2:TrackVolume')}")
    expect(seen.get("Track2:Balance") == -0.25, f"exiftool: balance {seen.get('Track2:Balance')}, -64/256")
    expect(seen.get("QuickTime:PreferredVolume") == 0.75, f"exiftool: {seen.get('QuickTime:PreferredVolume')}")
    expect(seen.get("Track1:GraphicsMode") == 36, f"exiftool: mode {seen.get('Track1:GraphicsMode')}")
    expect(seen.get("Track1:OpColor") == "65535 32896 0", f"exiftool: colour {seen.get('Track1:OpColor')}")
    probed = json.loads(must("ffprobe", "-v", "error", "-of", "json", "-show_streams", movie))["streams"]
    channels = next(s for s in probed if s["codec_type"] == "audio")
    expect(channels["channels"] == 6, f"ffprobe: {channels['channels']} channels")
    told = json.loads(must(KRZ, "sound", "show", movie, "--json"))[0]
    expect((told["volume"], told["balance"], told["effectiveVolume"]) == (128, -64, 96), f"krz: {told}")
    expect(told["layout"]["text"] == "L R Ls Rs C LFE", f"krz: {told['layout']}")
    must(KRZ, "sound", "set", movie, "--layout", "5.1", "-i", "-q")
    layout = json.loads(must("ffprobe", "-v", "error", "-of", "json", "-show_streams", movie))["streams"][1].get("channel_layout")
    expect(layout in ("5.1", "5.1(side)"), f"ffprobe: layout {layout}")
    heard = must("mediainfo", "--Inform=Audio;%ChannelLayout%|%Channels%", movie).strip()
    expect(heard.endswith("|6") and "C" in heard, f"mediainfo: {heard}")
    expect("error" not in run("ffmpeg", "-v", "error", "-i", movie, "-f", "null", "-").stderr.lower(), "ffmpeg cannot play it")


def check_cut_file(folder):
    """Sound that ends early: an error, at the place where it is missing and no earlier."""
    movie = folder / "cut.mov"
    must("ffmpeg", "-loglevel", "error", "-y", "-f", "lavfi", "-i", "sine=frequency=1000:duration=4", "-c:a", "pcm_s16le",
        "-movflags", "+faststart", movie)
    content = movie.read_bytes()
    movie.write_bytes(content[:len(content) * 5 // 8])
    rows = measured_or_errors(folder, movie)
    expect([row[-1] for row in rows] == [0, 0, 0, -2046, -2046], f"errors of a cut file: {rows}")
    answer = run(KRZ, "sound", "levels", movie)
    expect(answer.returncode == 3 and answer.stderr.count("\n") == 1, f"krz sound levels: {answer.stderr}")


def measured_or_errors(folder, movie):
    script = folder / "errors.bas"
    script.write_text(MEASURE.split("  Dim text")[0] + "  Print l, t.Lasterror\nNext\n")
    return [[int(word) for word in line.split()] for line in must(KRZ, "run", script, movie).splitlines()]


def main():
    need("ffmpeg", "ffprobe", "exiftool", "mediainfo")
    with folder() as name:
        place = pathlib.Path(name)
        for check in (check_tones, check_silence, check_levels_over_time, check_anamorphic, check_settings, check_cut_file):
            check(place)
        judge_real_movies(lambda: check_corpus(place))
    finish("sounds and sizes compared")


if __name__ == "__main__":
    main()
