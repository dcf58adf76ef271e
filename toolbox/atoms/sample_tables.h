// The sample tables. Rows stay in the file behind a TableView: a movie may have ten million of
// them.
#pragma once

#include "atoms/atom_type.h"
#include "file/table_view.h"

namespace toolbox {

/// Decode durations in runs. Row: samples u32, duration u32 in media ticks.
struct TimeToSampleAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("stts"), {.parent = four_cc("stbl")});
  static constexpr uint32_t kRowBytes = 8;
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.counted_table("rows", rows, kRowBytes);
  }
};

/// Display time minus decode time in runs. Row: samples u32, offset s32 in media ticks, signed in
/// either version because many writers store negative offsets in version 0.
struct CompositionOffsetAtom : TableAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("ctts"), {.parent = four_cc("stbl"), .max_version = 1});
  static constexpr uint32_t kRowBytes = 8;
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.counted_table("rows", rows, kRowBytes);
  }
};

/// Sync samples, ascending. Row: sample number u32, from 1. No atom: all are sync; no rows: none
/// is.
struct SyncSampleAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("stss"), {.parent = four_cc("stbl")});
  static constexpr uint32_t kRowBytes = 4;
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.counted_table("rows", rows, kRowBytes);
  }
};

/// Partial sync samples (open groups of pictures), ascending. Row: sample number u32, from 1.
struct PartialSyncSampleAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("stps"), {.parent = four_cc("stbl")});
  static constexpr uint32_t kRowBytes = 4;
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.counted_table("rows", rows, kRowBytes);
  }
};

/// Samples in chunks, in runs. Row: first chunk u32, samples a chunk u32, description u32; chunk
/// and description from 1.
struct SampleToChunkAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("stsc"), {.parent = four_cc("stbl")});
  static constexpr uint32_t kRowBytes = 12;
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.counted_table("rows", rows, kRowBytes);
  }
};

/// Sample sizes. Row: bytes u32; no rows when all samples have one size.
struct SampleSizeAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("stsz"), {.parent = four_cc("stbl")});
  static constexpr uint32_t kRowBytes = 4;
  uint32_t uniform_size = 0;  // bytes; 0: see the rows
  uint32_t sample_count = 0;  // not bounded by the file when the size is uniform
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io("uniform_size", uniform_size);
    io("sample_count", sample_count);
    if (uniform_size == 0) io.table("rows", rows, kRowBytes, sample_count);
  }
};

/// Sample sizes of 4, 8 or 16 bits, packed; of two 4-bit sizes in a byte the first is the high one.
struct CompactSampleSizeAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("stz2"), {.parent = four_cc("stbl")});
  std::array<uint8_t, 3> reserved{};
  uint8_t field_size = 8;  // bits
  uint32_t sample_count = 0;
  TableView packed;  // rows of one byte

  template <class Io>
  void fields(Io& io) {
    io("reserved", reserved);
    io("field_size", field_size);
    io.require("field_size", field_size == 4 || field_size == 8 || field_size == 16,
               "sizes of 4, 8 or 16 bits are possible, no others");
    io("sample_count", sample_count);
    io.table("packed", packed, 1, (uint64_t{sample_count} * field_size + 7) / 8);
  }
};

/// Where chunks begin. Row: u32 from the start of the file that holds the media data.
struct ChunkOffsetAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("stco"), {.parent = four_cc("stbl")});
  static constexpr uint32_t kRowBytes = 4;
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.counted_table("rows", rows, kRowBytes);
  }
};

/// Where chunks begin. Row: u64 from the start of the file that holds the media data.
struct WideChunkOffsetAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("co64"), {.parent = four_cc("stbl")});
  static constexpr uint32_t kRowBytes = 8;
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.counted_table("rows", rows, kRowBytes);
  }
};

/// How samples depend on each other. Row: one byte a sample; the atom states no count.
struct SampleDependencyAtom : TableAtom {
  static constexpr AtomType kType = full_atom(four_cc("sdtp"), {.parent = four_cc("stbl")});
  TableView rows;

  template <class Io>
  void fields(Io& io) {
    io.rest_table("rows", rows, 1);
  }
};

/// The bounds of the composition offsets, in media ticks.
struct CompositionShiftAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("cslg"), {.parent = four_cc("stbl"), .max_version = 1});
  int64_t composition_to_decode_shift = 0;
  int64_t least_offset = 0;
  int64_t greatest_offset = 0;
  int64_t display_start = 0;
  int64_t display_end = 0;

  template <class Io>
  void fields(Io& io) {
    io.wide("composition_to_decode_shift", composition_to_decode_shift);
    io.wide("least_offset", least_offset);
    io.wide("greatest_offset", greatest_offset);
    io.wide("display_start", display_start);
    io.wide("display_end", display_end);
  }
};

}  // namespace toolbox
