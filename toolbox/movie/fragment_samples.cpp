#include "movie/fragment_samples.h"

#include <algorithm>

#include "atoms/fragments.h"
#include "atoms/read_atom.h"
#include "file/atom_header.h"
#include "file/fragments.h"
#include "movie/load_samples.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

// Calls visit(type, payload) for the children of an atom until one fails. What is
// damaged ends the walk; a child that reaches beyond its parent is cut.
template <class Visit>
Status for_each_child(const ByteRange& parent_payload, Visit&& visit) {
  constexpr uint64_t kHeaderBytes = 8;
  const ByteSource& source = *parent_payload.source;
  uint64_t offset = parent_payload.offset;
  const uint64_t end = offset + parent_payload.size;
  while (end - offset >= kHeaderBytes) {
    TRY_ASSIGN(const AtomHeader header, read_atom_header(source, offset, end));
    if (header.form != AtomHeader::Form::kSized) break;
    const uint64_t size = std::min(header.size, end - offset);
    const uint64_t header_size = std::min<uint64_t>(header.header_size, size);
    TRY(visit(header.type, ByteRange{&source, offset + header_size, size - header_size}));
    offset += size;
  }
  return {};
}

template <class Atom>
Result<Atom> read_fragment_atom(const ByteRange& payload) {
  AtomFailure failure;
  std::optional<Atom> atom = decode_atom<Atom>(payload, failure);
  if (atom) return std::move(*atom);
  std::string text = payload.source->name() + ": moof/traf/" + four_cc_text(Atom::kType.type);
  if (!failure.field.empty()) text += '.' + failure.field;
  text += " at byte " + std::to_string(failure.offset) + ": " + failure.text;
  return Status(failure.code == badPublicMovieAtom ? OSErr{invalidSampleTable} : failure.code,
                std::move(text));
}

uint64_t advanced_offset(uint64_t offset, uint64_t bytes) {
  return bytes > GrowingTables::kNowhere - offset ? GrowingTables::kNowhere : offset + bytes;
}

// An offset outside of any file is found out by who asks where the sample is.
uint64_t moved_offset(uint64_t base, int32_t by) {
  if (by >= 0) return advanced_offset(base, static_cast<uint32_t>(by));
  const auto back = static_cast<uint64_t>(-int64_t{by});
  return back > base ? GrowingTables::kNowhere : base - back;
}

}  // namespace

/// The walk over all fragments.
class FragmentReader {
 public:
  FragmentReader(const Movie& movie, FragmentSamples& samples)
      : movie_(movie), tree_(movie.opened().tree), samples_(samples) {
    for (const auto& track : movie.tracks()) {
      if (track->id() == 0) continue;
      const auto [place, is_new] = known_.try_emplace(track->id());
      if (is_new) place->second.track = track.get();
    }
  }

  Status read_all() {
    TRY(read_defaults());
    FragmentCursor cursor(tree_, *movie_.opened().file);
    while (true) {
      TRY_ASSIGN(const std::optional<ByteRange> fragment, cursor.next());
      if (!fragment) return {};
      samples_.budget_.earn(fragment->size);
      TRY(read_fragment(*fragment));
    }
  }

 private:
  struct KnownTrack {
    const Track* track = nullptr;
    TrackExtendsAtom defaults;
    GrowingTables* tables = nullptr;  // null before the first samples
    bool is_damaged = false;          // its tables in the movie atom cannot be read
    uint64_t origin = 0;              // the stated decode time at which its media begins
  };

  // The part of a track in one fragment, while its runs are read.
  struct TrackPart {
    KnownTrack* track = nullptr;
    TrackFragmentHeaderAtom header;
    std::optional<uint64_t> decode_time;  // until the first sample has used it
    uint64_t base = 0;                    // what data offsets count from
    uint64_t data_end = 0;                // behind the run before
  };

  Status read_defaults() {
    const AtomIndex mvex = tree_.find_child(tree_.movie(), four_cc("mvex"));
    if (mvex == kNoAtom) return {};
    for (AtomIndex trex = tree_.find_child(mvex, four_cc("trex")); trex != kNoAtom;
         trex = tree_.find_next(trex, four_cc("trex"))) {
      TRY_ASSIGN(TrackExtendsAtom atom, read_atom<TrackExtendsAtom>(tree_, trex));
      const auto found = known_.find(atom.track_id);
      if (found != known_.end()) found->second.defaults = std::move(atom);
    }
    return {};
  }

  Status read_fragment(const ByteRange& moof) {
    TRY_ASSIGN(const AtomHeader header,
               read_atom_header(*moof.source, moof.offset, moof.offset + moof.size));
    const ByteRange payload{moof.source, moof.offset + header.header_size,
                            moof.size - header.header_size};
    // Without a base of its own, the first part counts from the fragment, each other from where the
    // data of the part before it ends.
    uint64_t data_end = moof.offset;
    return for_each_child(payload, [&](FourCC type, const ByteRange& traf) {
      if (type != four_cc("traf")) return Status();
      return read_track_part(traf, moof.offset, data_end);
    });
  }

  Status read_track_part(const ByteRange& traf, uint64_t fragment_offset, uint64_t& data_end) {
    TrackPart part;
    bool has_header = false;
    TRY(for_each_child(traf, [&](FourCC type, const ByteRange& payload) -> Status {
      if (type == four_cc("tfhd") && !has_header) {
        TRY_ASSIGN(part.header, read_fragment_atom<TrackFragmentHeaderAtom>(payload));
        has_header = true;
      } else if (type == four_cc("tfdt") && !part.decode_time) {
        TRY_ASSIGN(const auto time, read_fragment_atom<TrackFragmentTimeAtom>(payload));
        part.decode_time = time.decode_time;
      }
      return {};
    }));
    if (!has_header) return {};
    const auto found = known_.find(part.header.track_id);
    if (found != known_.end()) part.track = &found->second;
    if (part.header.has(TrackFragmentHeaderAtom::kBaseDataOffset)) {
      part.base = part.header.base_data_offset;
    } else if (part.header.has(TrackFragmentHeaderAtom::kDefaultBaseIsFragment)) {
      part.base = fragment_offset;
    } else {
      part.base = data_end;
    }
    part.data_end = part.base;
    TRY(for_each_child(traf, [&](FourCC type, const ByteRange& payload) {
      return type == four_cc("trun") ? read_run(payload, part) : Status();
    }));
    data_end = part.data_end;
    return {};
  }

  Status read_run(const ByteRange& payload, TrackPart& part) {
    TRY_ASSIGN(const TrackRunAtom run, read_fragment_atom<TrackRunAtom>(payload));
    if (run.has(TrackRunAtom::kDataOffset))
      part.data_end = moved_offset(part.base, run.data_offset);
    // A part of no known track still moves those behind it, so its sizes count.
    TRY(open_tables(part));
    GrowingTables* tables = part.track == nullptr ? nullptr : part.track->tables;
    if (tables != nullptr && run.sample_count > 0) {
      TRY(keep_time(part));
      TRY(tables->begin_chunk(part.data_end, description(part)));
    }
    return append_samples(run, part, tables);
  }

  uint32_t description(const TrackPart& part) const {
    return part.header.has(TrackFragmentHeaderAtom::kDescription)
               ? part.header.description
               : part.track->defaults.description;
  }

  // What holds for samples whose run does not say otherwise.
  void default_values(const TrackPart& part, EqualSamples& samples, uint32_t& flags) const {
    using Header = TrackFragmentHeaderAtom;
    const Header& header = part.header;
    const TrackExtendsAtom& defaults = part.track == nullptr ? no_defaults_ : part.track->defaults;
    samples.delta =
        header.has(Header::kSampleDuration) ? header.sample_duration : defaults.sample_duration;
    samples.size = header.has(Header::kSampleSize) ? header.sample_size : defaults.sample_size;
    flags = header.has(Header::kSampleFlags) ? header.sample_flags : defaults.sample_flags;
  }

  Status append_samples(const TrackRunAtom& run, TrackPart& part, GrowingTables* tables) {
    EqualSamples samples;
    uint32_t default_flags = 0;
    default_values(part, samples, default_flags);
    const auto append = [&](uint32_t count, uint32_t flags) {
      samples.count = count;
      samples.is_sync = (flags & TrackRunAtom::kIsNotSync) == 0;
      part.data_end = advanced_offset(part.data_end, uint64_t{count} * samples.size);
      return tables == nullptr ? Status() : tables->append(samples);
    };
    const bool first_differs = run.has(TrackRunAtom::kFirstSampleFlags);
    if (run.row_bytes() == 0) {
      const uint32_t first = first_differs && run.sample_count > 0 ? 1 : 0;
      TRY(append(first, run.first_sample_flags));
      return append(run.sample_count - first, default_flags);
    }
    const uint8_t* bytes = nullptr;
    uint64_t rows_ahead = 0;
    for (uint32_t row = 0; row < run.sample_count; ++row, --rows_ahead) {
      if (rows_ahead == 0) {
        TRY_ASSIGN(bytes, run.rows.row(row));
        rows_ahead = run.rows.rows_in_window(row);
      }
      const auto next = [&](TrackRunAtom::Flags field, uint32_t otherwise) {
        if (!run.has(field)) return otherwise;
        const auto value = load_big_endian<uint32_t>(bytes);
        bytes += sizeof value;
        return value;
      };
      samples.delta = next(TrackRunAtom::kDurations, samples.delta);
      samples.size = next(TrackRunAtom::kSizes, samples.size);
      const uint32_t flags = next(TrackRunAtom::kSampleFlags, default_flags);
      samples.offset = static_cast<int32_t>(next(TrackRunAtom::kDisplayOffsets, 0));
      TRY(append(1, row == 0 && first_differs ? run.first_sample_flags : flags));
    }
    return {};
  }

  // Makes the tables of a track when its first run is met; those of the movie atom come first.
  Status open_tables(TrackPart& part) {
    KnownTrack* known = part.track;
    if (known == nullptr || known->tables != nullptr || known->is_damaged) return {};
    const Media* media = known->track->media();
    const AtomIndex stbl = media == nullptr || media->atom() == kNoAtom
                               ? kNoAtom
                               : tree_.find_path(media->atom(), {four_cc("minf"), four_cc("stbl")});
    auto tables = std::make_unique<GrowingTables>(samples_.budget_);
    if (stbl != kNoAtom) {
      Result<SampleTables> in_movie = load_sample_tables(tree_, stbl);
      // The media itself reports the damage; other tracks keep their samples.
      known->is_damaged = !in_movie.ok();
      if (known->is_damaged) return {};
      TRY(tables->append_all(SampleTable(in_movie.take())));
    }
    known->tables = tables.get();
    samples_.tracks_[known->track].growing = std::move(tables);
    return {};
  }

  Status keep_time(TrackPart& part) {
    if (!part.decode_time) return {};
    KnownTrack& known = *part.track;
    const uint64_t stated = *part.decode_time;
    part.decode_time.reset();
    if (known.tables->sample_count() == 0) {
      known.origin = stated;
      return {};
    }
    if (stated < known.origin) return {};
    const uint64_t time = stated - known.origin;
    const auto expected = static_cast<uint64_t>(known.tables->decode_end());
    return time > expected ? known.tables->lengthen_last(time - expected) : Status();
  }

  const Movie& movie_;
  const AtomTree& tree_;
  FragmentSamples& samples_;
  TrackExtendsAtom no_defaults_;
  std::unordered_map<uint32_t, KnownTrack> known_;  // by track ID; of equal IDs the first track
};

Result<std::unique_ptr<FragmentSamples>> FragmentSamples::read(const Movie& movie) {
  std::unique_ptr<FragmentSamples> samples(new FragmentSamples);
  TRY(FragmentReader(movie, *samples).read_all());
  const std::string name = movie.opened().file->name() + " (samples in fragments)";
  for (auto& [track, each] : samples->tracks_) {
    TRY_ASSIGN(each.tables, each.growing->tables(name));
  }
  return samples;
}

const SampleTables* FragmentSamples::find_tables(const Track& track) const {
  const auto found = tracks_.find(&track);
  return found == tracks_.end() ? nullptr : &found->second.tables;
}

}  // namespace toolbox
