// The atoms of fragmented movies: what the movie atom says of its fragments, and the runs of
// samples in them.
#pragma once

#include "atoms/atom_type.h"
#include "file/table_view.h"

namespace toolbox {

/// What holds for the samples of a track in all fragments that do not say otherwise.
struct TrackExtendsAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("trex"), {.parent = four_cc("mvex")});

  uint32_t track_id = 0;
  uint32_t description = 1;      // sample description, from 1
  uint32_t sample_duration = 0;  // media ticks
  uint32_t sample_size = 0;      // bytes
  uint32_t sample_flags = 0;     // as TrackRunAtom::SampleFlags

  template <class Io>
  void fields(Io& io) {
    io("track_id", track_id);
    io("description", description);
    io("sample_duration", sample_duration);
    io("sample_size", sample_size);
    io("sample_flags", sample_flags);
  }
};

/// How long the movie is with its fragments, as its writer expected.
struct MovieExtendsHeaderAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("mehd"), {.parent = four_cc("mvex"), .max_version = 1});

  uint64_t duration = 0;  // movie ticks

  template <class Io>
  void fields(Io& io) {
    io.wide("duration", duration);
  }
};

/// The header of one fragment.
struct FragmentHeaderAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("mfhd"), {.parent = four_cc("moof")});

  uint32_t sequence_number = 0;  // rises from fragment to fragment

  template <class Io>
  void fields(Io& io) {
    io("sequence_number", sequence_number);
  }
};

/// The header of one track's part in a fragment. The flags say which of the fields are there.
struct TrackFragmentHeaderAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("tfhd"), {.parent = four_cc("traf")});
  enum Flags : uint32_t {
    kBaseDataOffset = 0x000001,
    kDescription = 0x000002,
    kSampleDuration = 0x000008,
    kSampleSize = 0x000010,
    kSampleFlags = 0x000020,
    kDefaultBaseIsFragment = 0x020000,  // data offsets count from the `moof` atom
  };

  uint32_t track_id = 0;
  uint64_t base_data_offset = 0;  // in the file
  uint32_t description = 1;       // sample description, from 1
  uint32_t sample_duration = 0;   // media ticks
  uint32_t sample_size = 0;       // bytes
  uint32_t sample_flags = 0;      // as TrackRunAtom::SampleFlags

  bool has(Flags flag) const { return (flags & flag) != 0; }

  template <class Io>
  void fields(Io& io) {
    io("track_id", track_id);
    if (has(kBaseDataOffset)) io("base_data_offset", base_data_offset);
    if (has(kDescription)) io("description", description);
    if (has(kSampleDuration)) io("sample_duration", sample_duration);
    if (has(kSampleSize)) io("sample_size", sample_size);
    if (has(kSampleFlags)) io("sample_flags", sample_flags);
  }
};

/// When the first sample of a track in a fragment is decoded.
struct TrackFragmentTimeAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("tfdt"), {.parent = four_cc("traf"), .max_version = 1});

  uint64_t decode_time = 0;  // media ticks

  template <class Io>
  void fields(Io& io) {
    io.wide("decode_time", decode_time);
  }
};

/// Samples that lie one behind the other in the file. The flags say which of the fields are there,
/// and what a row holds, in this order: duration u32, size u32, flags u32, display offset s32
/// (signed in either version, as in `ctts`).
struct TrackRunAtom : TableAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("trun"), {.parent = four_cc("traf"), .max_version = 1});
  enum Flags : uint32_t {
    kDataOffset = 0x000001,
    kFirstSampleFlags = 0x000004,
    kDurations = 0x000100,
    kSizes = 0x000200,
    kSampleFlags = 0x000400,
    kDisplayOffsets = 0x000800,
  };
  enum SampleFlags : uint32_t { kIsNotSync = 0x00010000 };

  uint32_t sample_count = 0;  // not bounded by the file when rows hold nothing
  int32_t data_offset = 0;    // of the first sample; what it counts from depends on the `tfhd`
  uint32_t first_sample_flags = 0;  // as SampleFlags; in place of all others, for the first sample
  TableView rows;

  bool has(Flags flag) const { return (flags & flag) != 0; }
  uint32_t row_bytes() const {
    return 4u * (has(kDurations) + has(kSizes) + has(kSampleFlags) + has(kDisplayOffsets));
  }

  template <class Io>
  void fields(Io& io) {
    io("sample_count", sample_count);
    if (has(kDataOffset)) io("data_offset", data_offset);
    if (has(kFirstSampleFlags)) io("first_sample_flags", first_sample_flags);
    if (row_bytes() > 0) io.table("rows", rows, row_bytes(), sample_count);
  }
};

}  // namespace toolbox
