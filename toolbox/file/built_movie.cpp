#include "file/built_movie.h"

#include <algorithm>

#include "atoms/atom_writer.h"

namespace toolbox {

namespace {

uint32_t size_of_sample(const BuiltTrack& track, uint32_t sample) {
  return track.sample_size > 0 ? track.sample_size : track.size_of ? track.size_of(sample) : 0;
}

/// Calls visit(samples in the chunk) for each chunk of a track, in order.
template <class Visit>
void for_each_chunk(const BuiltTrack& track, Visit&& visit) {
  uint32_t left = track.sample_count;
  size_t run = 0;
  for (uint32_t chunk = 1; left > 0; ++chunk) {
    uint32_t samples = track.samples_per_chunk;
    if (!track.chunk_runs.empty()) {
      while (run + 1 < track.chunk_runs.size() && track.chunk_runs[run + 1][0] <= chunk) ++run;
      samples = track.chunk_runs[run][1];
    }
    samples = std::min(samples, left);
    visit(samples);
    left -= samples;
  }
}

/// Writes the movie atom; containers get their size when they are closed.
class MovieAtomComposer {
 public:
  MovieAtomComposer(const BuiltMovie& movie, const MovieLayout& layout, uint64_t media_offset,
                    ByteSink& sink)
      : movie_(movie), layout_(layout), media_offset_(media_offset), sink_(sink) {}

  Status compose() {
    nest(four_cc("moov"), [&] {
      MovieHeaderAtom header = movie_.header;
      uint32_t largest_id = 0;
      for (size_t i = 0; i < movie_.tracks.size(); ++i) {
        if (!movie_.keep_duration) {
          header.duration = std::max(header.duration, layout_.tracks[i].movie_ticks);
        }
        largest_id = std::max(largest_id, track_id(i));
      }
      if (header.next_track_id <= largest_id) header.next_track_id = largest_id + 1;
      atom(header);
      for (size_t i = 0; i < movie_.tracks.size(); ++i) track(i);
      sink_.write(movie_.more_in_movie);
    });
    return std::move(status_);
  }

 private:
  template <class Inside>
  void nest(FourCC type, Inside&& inside) {
    const uint64_t begin = sink_.position();
    sink_.number(uint32_t{0});
    sink_.number(type);
    inside();
    const uint64_t size = sink_.position() - begin;
    if (size > UINT32_MAX) fail(four_cc_text(type) + " would be longer than 4 GiB");
    uint8_t bytes[4];
    store_big_endian(bytes, static_cast<uint32_t>(size));
    sink_.patch(begin, bytes);
  }

  template <class Atom>
  void atom(const Atom& each, FourCC type = Atom::kType.type) {
    AtomWriter writer;
    writer.atom(type, each);
    sink_.write(writer.bytes());
  }

  void fail(std::string text) {
    if (status_.ok()) status_ = {paramErr, std::move(text)};
  }

  uint32_t track_id(size_t place) const {
    const uint32_t id = movie_.tracks[place].header.track_id;
    return id != 0 ? id : static_cast<uint32_t>(place + 1);
  }

  void track(size_t place) {
    const BuiltTrack& track = movie_.tracks[place];
    nest(four_cc("trak"), [&] {
      TrackHeaderAtom header = track.header;
      header.track_id = track_id(place);
      if (!track.keep_durations) header.duration = layout_.tracks[place].movie_ticks;
      atom(header);
      if (track.edits) nest(four_cc("edts"), [&] { atom(*track.edits); });
      if (!track.references.empty()) {
        nest(four_cc("tref"), [&] {
          for (const auto& [type, ids] : track.references) {
            TrackReferenceAtom reference;
            reference.track_ids = ids;
            atom(reference, type);
          }
        });
      }
      media(place);
      sink_.write(track.more_in_track);
    });
  }

  void media(size_t place) {
    const BuiltTrack& track = movie_.tracks[place];
    nest(four_cc("mdia"), [&] {
      MediaHeaderAtom header = track.media;
      if (!track.keep_durations) header.duration = layout_.tracks[place].media_ticks;
      atom(header);
      HandlerAtom handler = track.handler;
      if (movie_.brand == BuiltMovie::Brand::kIso) handler.component_type = 0;
      if (handler.raw_name.empty()) handler.set_name("");
      atom(handler);
      nest(four_cc("minf"), [&] {
        media_information_header(track.handler.subtype);
        nest(four_cc("dinf"), [&] { data_references(track); });
        nest(four_cc("stbl"), [&] { sample_table(place); });
        sink_.write(track.more_in_media_info);
      });
      sink_.write(track.more_in_media);
    });
  }

  void media_information_header(FourCC media_type) {
    if (media_type == four_cc("vide")) {
      VideoMediaHeaderAtom header;
      header.flags = 1;
      atom(header);
    } else if (media_type == four_cc("soun")) {
      atom(SoundMediaHeaderAtom());
    } else {
      nest(four_cc("gmhd"), [&] { atom(GenericMediaInfoAtom()); });
    }
  }

  void data_references(const BuiltTrack& track) {
    DataReferenceAtom list;
    list.entries = track.data_references;
    if (list.entries.empty()) {
      DataReferenceEntry self;
      self.flags = DataReferenceEntry::kSelfReference;
      AtomWriter writer;
      writer.atom(movie_.brand == BuiltMovie::Brand::kIso ? four_cc("url ") : four_cc("alis"),
                  self);
      list.entries.push_back(writer.take());
    }
    atom(list);
  }

  void sample_table(size_t place) {
    const BuiltTrack& track = movie_.tracks[place];
    SampleDescriptionAtom descriptions;
    descriptions.entries = track.descriptions;
    atom(descriptions);
    table(four_cc("stts"), track.durations, 2);
    if (track.display_offsets) table(four_cc("ctts"), *track.display_offsets, 2);
    if (track.sync_samples) table(four_cc("stss"), *track.sync_samples, 1);
    if (track.partial_sync_samples) table(four_cc("stps"), *track.partial_sync_samples, 1);
    if (track.sample_dependencies) {
      full(four_cc("sdtp"), [&] { sink_.write(*track.sample_dependencies); });
    }
    Rows runs = Rows::of(track.chunk_runs);
    if (track.chunk_runs.empty() && track.sample_count > 0) runs = chunk_runs(track);
    table(four_cc("stsc"), runs, 3);
    sample_sizes(track);
    chunk_offsets(track, media_offset_ + layout_.tracks[place].media_start);
    sink_.write(track.more_in_sample_table);
  }

  static Rows chunk_runs(const BuiltTrack& track) {
    const uint32_t whole = track.sample_count / track.samples_per_chunk;
    const uint32_t rest = track.sample_count % track.samples_per_chunk;
    std::vector<Rows::Row> rows;
    if (whole > 0) rows.push_back({1, track.samples_per_chunk, 1});
    if (rest > 0) rows.push_back({whole + 1, rest, 1});
    return Rows::of(std::move(rows));
  }

  /// An atom with version and flags 0.
  template <class Inside>
  void full(FourCC type, Inside&& inside) {
    nest(type, [&] {
      sink_.number(uint32_t{0});
      inside();
    });
  }

  void table(FourCC type, const Rows& rows, size_t columns) {
    full(type, [&] {
      sink_.number(rows.count);
      for (uint32_t i = 0; i < rows.count; ++i) {
        const Rows::Row row = rows.make(i);
        uint8_t bytes[Rows::kMostColumns * 4];
        for (size_t column = 0; column < columns; ++column) {
          store_big_endian(bytes + column * 4, row[column]);
        }
        sink_.write({bytes, columns * 4});
      }
    });
  }

  void sample_sizes(const BuiltTrack& track) {
    if (track.compact_size_bits > 0) return compact_sample_sizes(track);
    full(four_cc("stsz"), [&] {
      const uint32_t uniform = track.stated_sample_size.value_or(track.sample_size);
      sink_.number(uniform);
      sink_.number(track.sample_count);
      if (uniform > 0) return;
      for (uint32_t i = 0; i < track.sample_count; ++i) sink_.number(size_of_sample(track, i));
    });
  }

  void compact_sample_sizes(const BuiltTrack& track) {
    const unsigned bits = track.compact_size_bits;
    full(four_cc("stz2"), [&] {
      sink_.number(uint32_t{bits});
      sink_.number(track.sample_count);
      for (uint32_t i = 0; i < track.sample_count; ++i) {
        const uint32_t size = size_of_sample(track, i);
        if (size >> bits != 0)
          fail("a sample of " + std::to_string(size) + " bytes does not fit stz2");
        if (bits == 16) {
          sink_.number(static_cast<uint16_t>(size));
        } else if (bits == 8) {
          sink_.number(static_cast<uint8_t>(size));
        } else {
          const uint32_t next = i + 1 < track.sample_count ? size_of_sample(track, i + 1) : 0;
          if (next > 15) fail("a sample of " + std::to_string(next) + " bytes does not fit stz2");
          sink_.number(static_cast<uint8_t>((size << 4) | (next & 15)));
          ++i;
        }
      }
    });
  }

  void chunk_offsets(const BuiltTrack& track, uint64_t offset) {
    uint32_t chunks = 0;
    for_each_chunk(track, [&](uint32_t) { ++chunks; });
    full(track.wide_chunk_offsets ? four_cc("co64") : four_cc("stco"), [&] {
      sink_.number(chunks);
      uint32_t sample = 0;
      for_each_chunk(track, [&](uint32_t samples) {
        if (track.wide_chunk_offsets) {
          sink_.number(offset);
        } else {
          if (offset > UINT32_MAX) fail("a chunk beyond 4 GiB needs wide_chunk_offsets");
          sink_.number(static_cast<uint32_t>(offset));
        }
        if (track.sample_size > 0) {
          offset += uint64_t{samples} * track.sample_size;
        } else {
          for (uint32_t i = 0; i < samples; ++i) offset += size_of_sample(track, sample + i);
        }
        sample += samples;
      });
    });
  }

  const BuiltMovie& movie_;
  const MovieLayout& layout_;
  const uint64_t media_offset_;
  ByteSink& sink_;
  Status status_;
};

}  // namespace

Status check_description(const BuiltMovie& movie) {
  for (size_t i = 0; i < movie.tracks.size(); ++i) {
    const BuiltTrack& track = movie.tracks[i];
    const auto fail = [&](const char* text) {
      return Status(paramErr, "track " + std::to_string(i + 1) + ": " + text);
    };
    const auto empty_run = [](const Rows::Row& run) { return run[1] == 0; };
    if (track.samples_per_chunk == 0 ||
        std::any_of(track.chunk_runs.begin(), track.chunk_runs.end(), empty_run)) {
      return fail("a chunk needs samples");
    }
    const uint8_t bits = track.compact_size_bits;
    if (bits != 0 && bits != 4 && bits != 8 && bits != 16) return fail("stz2 has 4, 8 or 16 bits");
    if (track.media.time_scale == 0 && !track.keep_durations) return fail("time scale 0");
  }
  return {};
}

MovieLayout lay_out(const BuiltMovie& movie) {
  MovieLayout layout;
  for (const BuiltTrack& track : movie.tracks) {
    TrackLayout place;
    place.media_start = layout.media_bytes;
    if (track.sample_size > 0) {
      place.media_bytes = uint64_t{track.sample_count} * track.sample_size;
    } else {
      for (uint32_t i = 0; i < track.sample_count; ++i)
        place.media_bytes += size_of_sample(track, i);
    }
    for (uint32_t i = 0; i < track.durations.count; ++i) {
      const Rows::Row run = track.durations.make(i);
      place.media_ticks += uint64_t{run[0]} * run[1];
    }
    if (track.edits) {
      for (const auto& edit : track.edits->entries) place.movie_ticks += edit.length;
    } else if (track.media.time_scale > 0) {
      const long double seconds =
          static_cast<long double>(place.media_ticks) / track.media.time_scale;
      place.movie_ticks = static_cast<uint64_t>(seconds * movie.header.time_scale + 0.5L);
    }
    layout.media_bytes += place.media_bytes;
    layout.tracks.push_back(place);
  }
  return layout;
}

Status compose_movie_atom(const BuiltMovie& movie, const MovieLayout& layout, uint64_t media_offset,
                          ByteSink& sink) {
  return MovieAtomComposer(movie, layout, media_offset, sink).compose();
}

}  // namespace toolbox
