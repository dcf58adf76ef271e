// Movie fragments made from descriptions, for tests and fuzz seeds.
#pragma once

#include <optional>
#include <vector>

#include "atoms/atom_writer.h"
#include "atoms/fragments.h"

namespace toolbox {

/// A run of samples; `flags` say which of the values are written.
struct BuiltRun {
  uint32_t flags = 0;
  uint32_t sample_count = 0;
  int32_t data_offset = 0;
  uint32_t first_sample_flags = 0;
  Bytes rows = {};  // as they stand, whatever the count and the flags say

  void add(uint32_t value) {
    rows.resize(rows.size() + sizeof value);
    store_big_endian(rows.data() + rows.size() - sizeof value, value);
  }
};

/// The part of one track in a fragment.
struct BuiltPart {
  TrackFragmentHeaderAtom header;
  std::optional<uint64_t> decode_time;
  std::vector<BuiltRun> runs;
};

inline Bytes run_bytes(const BuiltRun& run) {
  AtomWriter writer;
  const auto trun = writer.begin(four_cc("trun"));
  uint32_t version_and_flags = 0x01000000 | run.flags;
  uint32_t count = run.sample_count;
  int32_t data_offset = run.data_offset;
  uint32_t first_sample_flags = run.first_sample_flags;
  writer(nullptr, version_and_flags);
  writer(nullptr, count);
  if ((run.flags & TrackRunAtom::kDataOffset) != 0) writer(nullptr, data_offset);
  if ((run.flags & TrackRunAtom::kFirstSampleFlags) != 0) writer(nullptr, first_sample_flags);
  writer.raw(run.rows);
  writer.end(trun);
  return writer.take();
}

/// A whole `moof` atom.
inline Bytes fragment_bytes(uint32_t sequence_number, const std::vector<BuiltPart>& parts) {
  AtomWriter writer;
  const auto moof = writer.begin(four_cc("moof"));
  FragmentHeaderAtom header;
  header.sequence_number = sequence_number;
  writer.atom(header);
  for (const BuiltPart& part : parts) {
    const auto traf = writer.begin(four_cc("traf"));
    writer.atom(part.header);
    if (part.decode_time) {
      TrackFragmentTimeAtom time;
      time.decode_time = *part.decode_time;
      writer.atom(time);
    }
    for (const BuiltRun& run : part.runs) writer.raw(run_bytes(run));
    writer.end(traf);
  }
  writer.end(moof);
  return writer.take();
}

/// A whole `mvex` atom.
inline Bytes movie_extends_bytes(const std::vector<TrackExtendsAtom>& defaults) {
  AtomWriter writer;
  const auto mvex = writer.begin(four_cc("mvex"));
  for (const TrackExtendsAtom& track : defaults) writer.atom(track);
  writer.end(mvex);
  return writer.take();
}

}  // namespace toolbox
