// Composes whole movie files from a description: for tests, benchmarks, fuzz seeds and the
// demonstration movie.
#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "atoms/all_atoms.h"

namespace toolbox {

/// The rows of a table, made one by one while the table is written, so that ten million of them
/// cost no memory.
struct Rows {
  static constexpr size_t kMostColumns = 3;
  using Row = std::array<uint32_t, kMostColumns>;

  uint32_t count = 0;
  std::function<Row(uint32_t row)> make;  // row from 0; columns beyond the table's are ignored

  static Rows of(std::vector<Row> rows);
  static Rows generated(uint32_t count, std::function<Row(uint32_t)> make) {
    return {count, std::move(make)};
  }
};

/// One track and its media. Unset sizes and counts follow from the others.
struct BuiltTrack {
  /// What is written as it stands. build_movie() sets the durations of the two headers unless
  /// keep_durations is set, and the track ID when it is 0 (the track's place, from 1).
  TrackHeaderAtom header;
  MediaHeaderAtom media;
  HandlerAtom handler;
  bool keep_durations = false;

  std::optional<EditListAtom> edits;  // version 1 in the atom forces the wide form
  std::vector<std::pair<FourCC, std::vector<uint32_t>>> references;  // type, track IDs
  std::vector<Bytes> data_references;  // whole entries; empty: one that refers to the file itself
  std::vector<Bytes> descriptions;     // whole entries

  Rows durations;                            // stts: samples, media ticks
  std::optional<Rows> display_offsets;       // ctts: samples, media ticks
  std::optional<Rows> sync_samples;          // stss: sample number from 1
  std::optional<Rows> partial_sync_samples;  // stps: sample number from 1
  std::optional<Bytes> sample_dependencies;  // sdtp

  uint32_t sample_count = 0;
  uint32_t sample_size = 0;                          // bytes; 0: ask size_of
  std::function<uint32_t(uint32_t sample)> size_of;  // bytes of a sample, counted from 0
  std::optional<uint32_t>
      stated_sample_size;         // what stsz says in place of sample_size (old sound says 1)
  uint8_t compact_size_bits = 0;  // 4, 8, 16: stz2 in place of stsz

  uint32_t samples_per_chunk = 1;
  std::vector<Rows::Row>
      chunk_runs;  // stsc rows as they stand; empty: samples_per_chunk for all, description 1
  bool wide_chunk_offsets = false;  // co64

  Bytes data;  // the media data; shorter than the samples: the rest reads as zero and is a hole in
               // a file

  // Whole atoms, written as they stand behind the known children of trak, mdia, minf and stbl.
  Bytes more_in_track, more_in_media, more_in_media_info, more_in_sample_table;
};

struct BuiltMovie {
  enum class Brand { kQuickTime, kIso, kNone };
  enum class MoviePlace { kBeforeMedia, kBehindMedia };

  Brand brand = Brand::kQuickTime;
  MoviePlace place = MoviePlace::kBehindMedia;
  bool wide_media_header = false;  // mdat with a 64-bit size; always when it needs one
  bool compressed = false;         // the movie atom as cmov
  bool keep_duration = false;      // header.duration as it stands; else the longest track

  MovieHeaderAtom header;
  std::vector<BuiltTrack> tracks;
  Bytes more_in_movie;  // whole atoms (udta, meta, ...) behind the tracks
  Bytes behind_movie;   // whole atoms at top level, at the end of the file
};

/// The bytes of the file. Fails: paramErr (a description that contradicts itself), memFullErr,
/// featureUnsupported.
Result<Bytes> build_movie(const BuiltMovie& movie);

/// Writes the file at `path`, replacing what is there; tables are streamed and missing media data
/// is a hole. Fails: as build_movie(), and ioErr.
Status write_movie(const BuiltMovie& movie, const std::string& path);

/// A whole atom around a payload.
Bytes atom_bytes(FourCC type, ByteView payload);

/// A track of uncompressed pictures, `frames` of them, each `frame_ticks` long: 24-bit raw RGB.
BuiltTrack video_track(uint16_t width, uint16_t height, uint32_t frames, uint32_t frame_ticks,
                       uint32_t time_scale = 600);

/// A track of 16-bit big-endian sound of `frames` frames, one sample a frame.
BuiltTrack sound_track(uint16_t channels, uint32_t frames, uint32_t rate = 44100);

/// A track of text samples, one after the other, each text and its length in media ticks.
BuiltTrack text_track(const std::vector<std::pair<std::string, uint32_t>>& texts,
                      uint32_t time_scale = 600);

/// A timecode track: one sample that holds the frame number of the first frame.
BuiltTrack timecode_track(uint32_t first_frame, uint32_t duration, uint32_t time_scale,
                          uint32_t frame_duration, uint8_t frames_per_second, uint32_t flags);

/// A track of any other kind: `samples` of `sample_size` bytes; `description` is a whole entry.
BuiltTrack other_track(FourCC media_type, Bytes description, uint32_t samples, uint32_t sample_size,
                       uint32_t sample_ticks, uint32_t time_scale = 600);

}  // namespace toolbox
