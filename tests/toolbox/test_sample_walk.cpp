// Walks over samples, held against the same samples as plain lists; lists of samples and their
// bytes.
#include <gtest/gtest.h>

#include "expanded_samples.h"
#include "file/memory_source.h"
#include "file/movie_builder.h"
#include "movie/list_samples.h"
#include "movie/movie.h"

namespace toolbox::testing {
namespace {

/// A movie with one media over tables that a test has made.
class WalkedMedia {
 public:
  explicit WalkedMedia(TestTables& tables) : movie_(Movie::create(600).take()) {
    Track& track = movie_->add_track(Track::create(*movie_));
    track.set_media(Media::create(track, four_cc("vide"), 600));
    track.media()->set_samples(tables.make(), nullptr);
  }
  const Media& media() const { return *movie_->tracks().front()->media(); }

 private:
  std::unique_ptr<Movie> movie_;
};

void expect_walk_agrees(const Media& media, const std::vector<ExpandedSample>& samples,
                        uint32_t first, std::mt19937& random) {
  SCOPED_TRACE("from sample " + std::to_string(first));
  Result<SampleWalk> walk = SampleWalk::make(media, first);
  ASSERT_TRUE(walk.ok()) << walk.status().message();
  uint32_t at = first;
  while (at < samples.size()) {
    const auto most = static_cast<uint32_t>(random() % 7);
    const auto next = walk.value().next(most);
    ASSERT_TRUE(next.ok()) << next.status().message();
    ASSERT_TRUE(next.value().has_value());
    const SamplePiece& piece = *next.value();
    ASSERT_EQ(at, piece.first);
    ASSERT_GE(piece.count, 1u);
    ASSERT_LE(piece.count, std::max(most, 1u));
    for (uint32_t i = 0; i < piece.count; ++i) {
      const ExpandedSample& sample = samples[at + i];
      ASSERT_EQ(sample.decode, piece.times.decode + int64_t{i} * piece.times.delta);
      ASSERT_EQ(sample.display(), piece.times.display + int64_t{i} * piece.times.delta);
      ASSERT_EQ(sample.delta, piece.times.delta);
      ASSERT_EQ(sample.sync, piece.is_sync) << "sample " << at + i;
      ASSERT_EQ(sample.size, piece.packet.bytes);
      ASSERT_EQ(sample.description, piece.description);
      ASSERT_EQ(sample.file_offset, piece.offset + uint64_t{i} * piece.packet.bytes);
    }
    at += piece.count;
    // Other questions move the windows of the tables.
    const auto other = static_cast<uint32_t>(random() % samples.size());
    ASSERT_EQ(samples[other].decode, media.samples().value()->times(other).value().decode);
  }
  EXPECT_FALSE(walk.value().next(1).value().has_value());
}

TEST(SampleWalks, AgreeWithExpandedSamplesFromWhereverTheyBegin) {
  for (uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    TestTables tables;
    tables.wide_chunk_offsets = seed % 2 == 0;
    tables.size_bits = std::array<uint8_t, 4>{4, 8, 16, 32}[seed % 4];
    if (seed % 5 == 0) tables.uniform_size = 7;
    fill_randomly(tables,
                  {.samples = 1 + seed,
                   .largest_offset = seed % 3 == 0 ? 0 : static_cast<int32_t>(seed % 13),
                   .sync = seed % 4 != 1,
                   .change = seed % 2 == 0 ? 0.1 : 0.7},
                  random);
    const WalkedMedia walked(tables);
    for (uint32_t first = 0; first < tables.samples.size(); ++first) {
      expect_walk_agrees(walked.media(), tables.samples, first, random);
      if (::testing::Test::HasFatalFailure()) return;
    }
  }
  // Tables of several windows and blocks.
  std::mt19937 random(99);
  TestTables tables;
  fill_randomly(tables, {.samples = 90'000, .largest_offset = 50, .sync = true, .change = 0.9},
                random);
  const WalkedMedia walked(tables);
  for (const uint32_t first : {0u, 1u, 40'001u, 89'999u}) {
    expect_walk_agrees(walked.media(), tables.samples, first, random);
  }
}

std::unique_ptr<Movie> built(const BuiltMovie& movie) {
  auto bytes = build_movie(movie);
  EXPECT_TRUE(bytes.ok()) << bytes.status().message();
  auto opened = open_movie_source(std::make_unique<MemorySource>(bytes.take(), "built.mov"));
  EXPECT_TRUE(opened.ok()) << opened.status().message();
  return Movie::load(opened.take()).take();
}

TEST(ListedSamples, AreThoseThatTheEditsShow) {
  BuiltMovie movie;
  movie.tracks = {video_track(16, 16, 10, 60)};
  movie.tracks[0].edits.emplace();
  // The last two frames, nothing, the third and fourth at half speed, the fourth held.
  movie.tracks[0].edits->entries = {
      {120, 480, kFixedOne}, {100, -1, kFixedOne}, {240, 120, kFixedOne / 2}, {50, 200, 0}};
  const auto loaded = built(movie);
  const Track& track = *loaded->tracks().front();
  const auto spans = [&](int64_t from, int64_t until) {
    std::vector<std::pair<int64_t, int64_t>> pairs;
    for (const MediaSpan& span : shown_spans(track, from, until)) {
      pairs.emplace_back(span.begin, span.end);
    }
    return pairs;
  };
  using Pairs = std::vector<std::pair<int64_t, int64_t>>;
  EXPECT_EQ((Pairs{{120, 240}, {480, 600}}), spans(0, 1000)) << "the held frame is shown already";
  EXPECT_EQ((Pairs{{510, 600}}), spans(30, 220));
  EXPECT_EQ((Pairs{{200, 201}}), spans(460, 470));
  EXPECT_EQ(Pairs{}, spans(130, 200));
  EXPECT_EQ(Pairs{}, spans(50, 50));
}

TEST(SampleBytes, ComeInOrderInPiecesOfAMebibyte) {
  constexpr uint32_t kLarge = 3'000'000;
  BuiltMovie movie;
  movie.tracks = {video_track(16, 16, 4, 60)};
  BuiltTrack& built_track = movie.tracks[0];
  built_track.sample_size = 0;
  built_track.size_of = [](uint32_t sample) { return std::array{5u, kLarge, 0u, 2u}[sample]; };
  built_track.samples_per_chunk = 3;
  built_track.data.resize(kLarge + 7);
  for (size_t i = 0; i < built_track.data.size(); ++i) {
    built_track.data[i] = static_cast<uint8_t>(i * 31 >> 3);
  }
  const auto loaded = built(movie);
  const Media& media = *loaded->tracks().front()->media();
  const auto read = [&](uint32_t first, uint32_t last, Bytes& bytes) {
    return read_sample_bytes(media, first, last, [&](ByteView piece, uint32_t number) -> Status {
      EXPECT_LE(piece.size(), size_t{1} << 20);
      EXPECT_TRUE(number >= first && number <= last);
      bytes.insert(bytes.end(), piece.begin(), piece.end());
      return {};
    });
  };
  Bytes all;
  EXPECT_TRUE(read(1, 4, all).ok());
  EXPECT_EQ(built_track.data, all);
  Bytes some;
  EXPECT_TRUE(read(3, 4, some).ok());
  EXPECT_EQ(Bytes(built_track.data.end() - 2, built_track.data.end()), some);
  for (const auto& [first, last] : {std::pair{0u, 1u}, {3u, 2u}, {4u, 5u}}) {
    EXPECT_EQ(invalidSampleNum, read(first, last, some).code());
  }
  int calls = 0;
  const Status stopped = read_sample_bytes(media, 1, 4, [&](ByteView, uint32_t) -> Status {
    return ++calls == 2 ? Status(userCanceledErr, "enough") : Status();
  });
  EXPECT_EQ(userCanceledErr, stopped.code());
  EXPECT_EQ(2, calls);
}

TEST(SampleBytes, OfFrameCountedSoundAreWholePackets) {
  BuiltMovie movie;
  movie.tracks = {sound_track(1, 640)};
  BuiltTrack& sound = movie.tracks[0];
  store_big_endian(sound.descriptions[0].data() + 4, four_cc("ima4"));
  sound.sample_size = 1;
  sound.samples_per_chunk = 192;
  const auto loaded = built(movie);
  const Media& media = *loaded->tracks().front()->media();
  std::vector<ListedSample> listed;
  ASSERT_TRUE(visit_samples(media, [&](const ListedSample& sample) -> Status {
                listed.push_back(sample);
                return {};
              }).ok());
  ASSERT_EQ(10u, listed.size());
  EXPECT_EQ(65u, listed[1].number);
  EXPECT_EQ(64, listed[1].time);
  EXPECT_EQ(64, listed[1].duration);
  EXPECT_EQ(34u, listed[1].size);
  EXPECT_EQ(listed[0].offset + 34, listed[1].offset);
  size_t bytes = 0;
  EXPECT_TRUE(read_sample_bytes(media, 100, 200, [&](ByteView piece, uint32_t) -> Status {
                bytes += piece.size();
                return {};
              }).ok());
  EXPECT_EQ(3 * 34u, bytes) << "the packets that hold frames 99 to 199";
}

}  // namespace
}  // namespace toolbox::testing
