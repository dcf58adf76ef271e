// Samples in movie fragments against the same samples written out one by one, and fragments that
// are damaged or made to harm.
#include <gtest/gtest.h>

#include "built_fragments.h"
#include "expanded_samples.h"
#include "movie/movie.h"
#include "test_bytes.h"
#include "test_movies.h"

namespace toolbox::testing {
namespace {

using Header = TrackFragmentHeaderAtom;
using Run = TrackRunAtom;
using Samples = std::vector<ExpandedSample>;

std::unique_ptr<Movie> loaded(std::unique_ptr<ByteSource> source) {
  Result<OpenedMovie> opened = open_movie_source(std::move(source));
  if (!opened.ok()) return nullptr;
  Result<std::unique_ptr<Movie>> movie = Movie::load(opened.take());
  return movie.ok() ? movie.take() : nullptr;
}

std::unique_ptr<Movie> loaded(const Bytes& file) {
  return loaded(std::make_unique<MemorySource>(file, "test.mp4"));
}

Bytes media_data(size_t size) { return atom_bytes(four_cc("mdat"), Bytes(size)); }

/// What the samples of a movie without fragments are.
Samples samples_of(const Media& media) {
  Samples list;
  const SampleTable& table = *media.samples().value();
  for (uint32_t i = 0; i < table.sample_count(); ++i) {
    const SampleTimes times = table.times(i).value();
    const SampleLocation place = table.location(i).value();
    list.push_back({times.delta, static_cast<int32_t>(times.display - times.decode),
                    table.is_sync(i).value(), place.size, times.decode, place.offset, place.chunk,
                    place.description});
  }
  return list;
}

void expect_samples(const Media& media, const Samples& samples) {
  const auto found = media.samples();
  ASSERT_TRUE(found.ok()) << found.status().message();
  const SampleTable& table = *found.value();
  ASSERT_EQ(samples.size(), table.sample_count());
  int64_t end = 0;
  for (uint32_t i = 0; i < samples.size(); ++i) {
    SCOPED_TRACE("sample " + std::to_string(i));
    const SampleTimes times = table.times(i).value();
    EXPECT_EQ(samples[i].decode, times.decode);
    EXPECT_EQ(samples[i].display(), times.display);
    EXPECT_EQ(samples[i].delta, times.delta);
    EXPECT_EQ(samples[i].sync, table.is_sync(i).value());
    const auto place = table.location(i);
    ASSERT_TRUE(place.ok()) << place.status().message();
    EXPECT_EQ(samples[i].file_offset, place.value().offset);
    EXPECT_EQ(samples[i].size, place.value().size);
    EXPECT_EQ(samples[i].description, place.value().description);
    end = samples[i].decode + samples[i].delta;
  }
  EXPECT_EQ(end, media.duration().value());
  EXPECT_EQ(end, media.likely_duration());
}

/// Writes fragments of any form and keeps the list of the samples in them.
class RandomFragments {
 public:
  RandomFragments(uint32_t seed, BuiltMovie movie) : random_(seed) {
    const auto plain = loaded(build_movie(movie).value());
    for (uint32_t id = 1; id <= movie.tracks.size(); ++id) {
      TrackExtendsAtom defaults;
      defaults.track_id = id;
      defaults.description = number(1, 3);
      defaults.sample_duration = number(0, 9);
      defaults.sample_size = number(0, 2);
      defaults.sample_flags = flags();
      defaults_.push_back(defaults);
      samples_.push_back(samples_of(*plain->find_track(id)->media()));
    }
    origins_.resize(defaults_.size());
    movie.more_in_movie = movie_extends_bytes(defaults_);
    file = build_movie(movie).value();
    // The movie atom has grown, and may stand in front of the media data.
    const auto grown = loaded(file);
    for (uint32_t id = 1; id <= movie.tracks.size(); ++id) {
      samples_[id - 1] = samples_of(*grown->find_track(id)->media());
    }
    for (uint32_t fragments = number(1, 6); fragments > 0; --fragments) add_fragment();
  }

  const Samples& samples(uint32_t track_id) const { return samples_[track_id - 1]; }

  Bytes file;

 private:
  uint32_t number(uint32_t low, uint32_t high) {
    return std::uniform_int_distribution<uint32_t>(low, high)(random_);
  }
  bool happens() { return number(0, 1) == 1; }
  uint32_t flags() { return number(0, 3) == 0 ? uint32_t{Run::kIsNotSync} : 0x02000000; }
  uint32_t some_of(std::initializer_list<uint32_t> choices) {
    uint32_t chosen = 0;
    for (uint32_t each : choices) chosen |= happens() ? each : 0;
    return chosen;
  }

  void add_fragment() {
    const uint64_t fragment_offset = file.size();
    uint64_t data_end = fragment_offset;
    std::vector<BuiltPart> parts;
    for (uint32_t count = number(0, 3); count > 0; --count) {
      parts.push_back(add_part(fragment_offset, data_end));
    }
    file = file + fragment_bytes(1, parts) + media_data(number(0, 20));
  }

  BuiltPart add_part(uint64_t fragment_offset, uint64_t& data_end) {
    BuiltPart part;
    Header& header = part.header;
    header.track_id = number(1, static_cast<uint32_t>(defaults_.size()));
    const TrackExtendsAtom& defaults = defaults_[header.track_id - 1];
    header.flags =
        some_of({Header::kBaseDataOffset, Header::kDefaultBaseIsFragment, Header::kDescription,
                 Header::kSampleDuration, Header::kSampleSize, Header::kSampleFlags});
    header.base_data_offset = (uint64_t{number(0, 3)} << 32) + 5000;
    header.description = number(1, 3);
    header.sample_duration = number(0, 9);
    header.sample_size = number(0, 9);
    header.sample_flags = flags();
    const uint64_t base = header.has(Header::kBaseDataOffset)          ? header.base_data_offset
                          : header.has(Header::kDefaultBaseIsFragment) ? fragment_offset
                                                                       : data_end;
    ExpandedSample usual;
    usual.description =
        header.has(Header::kDescription) ? header.description : defaults.description;
    usual.delta =
        header.has(Header::kSampleDuration) ? header.sample_duration : defaults.sample_duration;
    usual.size = header.has(Header::kSampleSize) ? header.sample_size : defaults.sample_size;
    const uint32_t usual_flags =
        header.has(Header::kSampleFlags) ? header.sample_flags : defaults.sample_flags;
    if (happens()) part.decode_time = 0;
    bool uses_time = part.decode_time.has_value();
    data_end = base;
    for (uint32_t runs = number(0, 3); runs > 0; --runs) {
      BuiltRun run;
      run.sample_count = number(0, 6);
      if (uses_time && run.sample_count > 0) {
        part.decode_time = state_time(header.track_id);
        uses_time = false;
      }
      run.flags = some_of({Run::kDataOffset, Run::kFirstSampleFlags, Run::kDurations, Run::kSizes,
                           Run::kSampleFlags, Run::kDisplayOffsets});
      run.data_offset = static_cast<int32_t>(number(0, 200)) - 20;
      run.first_sample_flags = flags();
      if ((run.flags & Run::kDataOffset) != 0) {
        data_end = base + static_cast<uint64_t>(int64_t{run.data_offset});
      }
      for (uint32_t i = 0; i < run.sample_count; ++i) {
        add_sample(run, i == 0, usual, usual_flags, header.track_id, data_end);
      }
      part.runs.push_back(run);
    }
    return part;
  }

  /// What a fragment says its decode time is: in time, too late or too early.
  uint64_t state_time(uint32_t track_id) {
    Samples& list = samples_[track_id - 1];
    if (list.empty()) return origins_[track_id - 1] = number(0, 1) * uint64_t{7'000'000'000};
    const int64_t expected = list.back().decode + list.back().delta;
    const uint32_t gap = number(0, 2) == 0 ? number(1, 50) : 0;
    list.back().delta += gap;
    const uint64_t time = origins_[track_id - 1] + static_cast<uint64_t>(expected) + gap;
    return gap == 0 && happens() ? time - std::min<uint64_t>(time, 3) : time;
  }

  void add_sample(BuiltRun& run, bool is_first, const ExpandedSample& usual, uint32_t usual_flags,
                  uint32_t track_id, uint64_t& data_end) {
    const auto value = [&](uint32_t field, uint32_t given, uint32_t otherwise) {
      if ((run.flags & field) == 0) return otherwise;
      run.add(given);
      return given;
    };
    Samples& list = samples_[track_id - 1];
    ExpandedSample sample = usual;
    sample.decode = list.empty() ? 0 : list.back().decode + list.back().delta;
    sample.delta = value(Run::kDurations, number(0, 3), usual.delta);
    sample.size = value(Run::kSizes, number(0, 3), usual.size);
    uint32_t sample_flags = value(Run::kSampleFlags, flags(), usual_flags);
    if (is_first && (run.flags & Run::kFirstSampleFlags) != 0) {
      sample_flags = run.first_sample_flags;
    }
    sample.sync = (sample_flags & Run::kIsNotSync) == 0;
    sample.offset =
        static_cast<int32_t>(value(Run::kDisplayOffsets, number(0, 4) - uint32_t{2}, 0));
    sample.file_offset = data_end;
    data_end += sample.size;
    list.push_back(sample);
  }

  std::mt19937 random_;
  std::vector<TrackExtendsAtom> defaults_;
  std::vector<uint64_t> origins_;
  std::vector<Samples> samples_;
};

BuiltMovie empty_tracks() {
  BuiltMovie movie;
  movie.tracks = {video_track(16, 16, 0, 20), sound_track(1, 0)};
  return movie;
}

TEST(FragmentSamples, AgreeWithExpandedSamples) {
  for (uint32_t seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const RandomFragments made(seed, seed % 3 == 0 ? test_movie("tables") : empty_tracks());
    const auto movie = loaded(made.file);
    ASSERT_NE(nullptr, movie);
    for (const auto& track : movie->tracks()) {
      SCOPED_TRACE("track " + std::to_string(track->id()));
      expect_samples(*track->media(), made.samples(track->id()));
    }
    if (HasFailure()) return;
  }
}

/// One fragment of the first track, in front of its media data.
BuiltPart part_of_track(uint32_t track_id, BuiltRun run) {
  BuiltPart part;
  part.header.track_id = track_id;
  part.header.flags = Header::kDefaultBaseIsFragment;
  part.runs = {std::move(run)};
  return part;
}

TrackExtendsAtom defaults_of(uint32_t track_id, uint32_t duration, uint32_t size) {
  TrackExtendsAtom defaults;
  defaults.track_id = track_id;
  defaults.sample_duration = duration;
  defaults.sample_size = size;
  return defaults;
}

Bytes fragmented(const Bytes& fragments, uint32_t duration = 10, uint32_t size = 4) {
  BuiltMovie movie = empty_tracks();
  movie.more_in_movie =
      movie_extends_bytes({defaults_of(1, duration, size), defaults_of(2, duration, size)});
  return build_movie(movie).value() + fragments;
}

TEST(FragmentSamples, MakeTheDurationsOfMediaTrackAndMovie) {
  BuiltMovie built = empty_tracks();
  built.more_in_movie = movie_extends_bytes({defaults_of(1, 20, 4)});
  built.tracks[0].edits.emplace();
  built.tracks[0].edits->entries = {{100, -1, kFixedOne}, {0, 40, kFixedOne}};
  const Bytes fragment =
      fragment_bytes(1, {part_of_track(1, {.sample_count = 30}), part_of_track(9, {})});
  const auto movie = loaded(build_movie(built).value() + fragment);
  ASSERT_NE(nullptr, movie);
  EXPECT_EQ(600, movie->find_track(1)->media()->duration().value());
  EXPECT_EQ(100 + 600 - 40, movie->find_track(1)->duration());
  EXPECT_EQ(0, movie->find_track(2)->duration());
  EXPECT_EQ(660, movie->duration());
}

TEST(FragmentSamples, OfATrackWithoutPlacesAreStillCounted) {
  BuiltMovie built = test_movie("tables");
  built.tracks[0].chunk_runs = {{1, 5, 1}};
  Bytes plain = build_movie(built).value();
  // One chunk of the three is taken away, so that the last two samples lie nowhere.
  const FourCC type = four_cc("co64");
  uint8_t name[4];
  store_big_endian(name, type);
  const auto at = std::search(plain.begin(), plain.end(), name, name + 4);
  ASSERT_NE(plain.end(), at);
  store_big_endian(&*at + 8, uint32_t{2});
  const auto movie = loaded(plain + fragment_bytes(1, {part_of_track(1, {.sample_count = 2})}));
  ASSERT_NE(nullptr, movie);
  const SampleTable& table = *movie->find_track(1)->media()->samples().value();
  ASSERT_EQ(14u, table.sample_count());
  EXPECT_TRUE(table.location(9).ok());
  EXPECT_EQ(invalidSampleTable, table.location(10).status().code());
  EXPECT_EQ(plain.size(), table.location(12).value().offset);
}

TEST(FragmentSamples, HostileRunsAreRefusedWithoutCost) {
  BuiltRun counts_rows{.flags = Run::kSizes, .sample_count = UINT32_MAX};
  counts_rows.add(4);
  BuiltPart no_sizes = part_of_track(1, {.sample_count = 90'000'000});
  no_sizes.header.flags |= Header::kSampleSize;
  no_sizes.header.sample_size = 0;
  BuiltPart sync_at_the_end = part_of_track(1, {.sample_count = 90'000'000});
  sync_at_the_end.runs.push_back(
      {.flags = Run::kFirstSampleFlags, .sample_count = 1, .first_sample_flags = Run::kIsNotSync});
  Bytes unknown_version = fragment_bytes(1, {part_of_track(1, {.sample_count = 1})});
  unknown_version[unknown_version.size() - 8] = 9;
  const struct {
    Bytes fragments;
    OSErr code;
    const char* text;
  } cases[] = {
      {fragment_bytes(1, {part_of_track(1, counts_rows)}), invalidSampleTable, "trun.rows at byte"},
      {fragment_bytes(1, {part_of_track(1, {.sample_count = UINT32_MAX})}), memFullErr,
       "more than 100000000 samples"},
      {fragment_bytes(1, {part_of_track(1, {.sample_count = 60'000'000}),
                          part_of_track(2, {.sample_count = 60'000'000})}),
       memFullErr, "more than 100000000 samples"},
      {fragment_bytes(1, {no_sizes}), memFullErr, "more than 12 MiB"},
      {fragment_bytes(1, {sync_at_the_end}), memFullErr, "more than 12 MiB"},
      {unknown_version, featureUnsupported, "version 9"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.text);
    ReadCount count;
    const auto movie = loaded(std::make_unique<CountedSource>(
        std::make_unique<MemorySource>(fragmented(each.fragments), "test.mp4"), count));
    ASSERT_NE(nullptr, movie);
    const Media& media = *movie->find_track(1)->media();
    const auto samples = media.samples();
    ASSERT_FALSE(samples.ok());
    EXPECT_EQ(each.code, samples.status().code());
    EXPECT_NE(std::string::npos, samples.status().message().find(each.text))
        << samples.status().message();
    EXPECT_EQ(0, media.likely_duration());
    // Asked again, the answer stands and costs no read.
    const uint64_t reads = count.reads;
    EXPECT_FALSE(media.samples().ok());
    EXPECT_EQ(reads, count.reads);
  }
  // The largest uniform run that is allowed costs nothing either.
  const auto movie =
      loaded(fragmented(fragment_bytes(1, {part_of_track(1, {.sample_count = 100'000'000})})));
  EXPECT_EQ(1'000'000'000, movie->find_track(1)->media()->duration().value());
}

TEST(FragmentSamples, OffsetsOutsideOfAnyFileFailWhenAsked) {
  const auto movie = loaded(fragmented(fragment_bytes(
      1,
      {part_of_track(1, {.flags = Run::kDataOffset, .sample_count = 1, .data_offset = INT32_MIN}),
       part_of_track(1, {.sample_count = 1})})));
  const SampleTable& table = *movie->find_track(1)->media()->samples().value();
  ASSERT_EQ(2u, table.sample_count());
  EXPECT_EQ(invalidSampleTable, table.location(0).status().code());
  EXPECT_TRUE(table.location(1).ok());
}

TEST(FragmentSamples, OfAFileThatIsCutAreThoseOfItsWholeFragments) {
  BuiltRun run{.flags = Run::kSizes | Run::kDurations, .sample_count = 2};
  for (uint32_t value : {10, 4, 11, 5}) run.add(value);
  Bytes file = fragmented({});
  std::vector<size_t> ends;
  const size_t begin = file.size();
  for (uint32_t i = 1; i <= 3; ++i) {
    file = file + fragment_bytes(i, {part_of_track(1, run), part_of_track(2, run)});
    ends.push_back(file.size());
    file = file + media_data(18);
  }
  for (size_t size = begin; size <= file.size(); ++size) {
    SCOPED_TRACE(size);
    const auto movie = loaded(Bytes(file.begin(), file.begin() + static_cast<ptrdiff_t>(size)));
    ASSERT_NE(nullptr, movie);
    const auto whole = std::count_if(ends.begin(), ends.end(), [&](size_t e) { return e <= size; });
    for (const auto& track : movie->tracks()) {
      const auto samples = track->media()->samples();
      ASSERT_TRUE(samples.ok()) << samples.status().message();
      EXPECT_EQ(static_cast<uint32_t>(whole) * 2, samples.value()->sample_count());
    }
  }
}

TEST(FragmentSamples, AreReadOnceForAllTracksAndNotWhenOpening) {
  constexpr uint32_t kFragments = 500;
  BuiltRun run{.flags = Run::kSizes, .sample_count = 25};
  for (uint32_t i = 0; i < run.sample_count; ++i) run.add(1000 + i);
  Bytes fragments;
  for (uint32_t i = 1; i <= kFragments; ++i) {
    fragments = std::move(fragments) +
                fragment_bytes(i, {part_of_track(1, run), part_of_track(2, run)}) +
                media_data(200'000);
  }
  ReadCount count;
  const auto movie = loaded(std::make_unique<CountedSource>(
      std::make_unique<MemorySource>(fragmented(fragments), "test.mp4"), count));
  ASSERT_NE(nullptr, movie);
  EXPECT_LE(count.reads, 4u);
  count = {};
  EXPECT_EQ(kFragments * 25 * 10, movie->find_track(1)->media()->duration().value());
  EXPECT_EQ(kFragments * 25, movie->find_track(2)->media()->samples().value()->sample_count());
  EXPECT_LE(count.reads, kFragments + 2);
  EXPECT_LE(count.bytes, (kFragments + 2) * WindowSource::kSmallestWindow);
}

}  // namespace
}  // namespace toolbox::testing
