// Segments that go to a track of another media, in the same movie and in another one.
#include <random>

#include "base/big_endian.h"
#include "movie/add_samples.h"
#include "movie/edit_segments.h"
#include "movie/insert_movie.h"
#include "movie/keep_shown.h"
#include "movie/media_data.h"
#include "movie/read_samples.h"
#include "movie/verify.h"
#include "saving_test.h"

namespace toolbox {
namespace {

using namespace testing;

/// The bytes that a track shows at a tick; none in empty time.
Bytes shown(const Track& track, int64_t tick) {
  const int64_t time = track.timeline().media_time(tick);
  if (time < 0) return {};
  Result<ReadSamples> read = read_samples(*track.media(), {.time = time, .most_samples = 1});
  EXPECT_TRUE(read.ok()) << read.status().message() << " at tick " << tick;
  return read.ok() ? read.take().data : Bytes();
}

std::vector<Bytes> all_shown(const Track& track) {
  std::vector<Bytes> all;
  for (int64_t tick = 0; tick < track.duration(); ++tick) all.push_back(shown(track, tick));
  // Empty time at the end is not saved.
  while (!all.empty() && all.back().empty()) all.pop_back();
  return all;
}

/// Pictures of random bytes, some sizes of their own, in groups with reordering or without.
BuiltTrack random_video(std::mt19937& random, uint32_t time_scale) {
  const auto frames = static_cast<uint32_t>(4 + random() % 30);
  const auto ticks = static_cast<uint32_t>(1 + random() % (time_scale / 10));
  BuiltTrack track = video_track(4, 4, frames, ticks, time_scale);
  const bool varies = random() % 2 != 0;
  track.sample_size = 0;
  track.size_of = [varies](uint32_t sample) { return 20 + (varies ? sample * 7 % 5 : 0); };
  if (random() % 2 != 0) {
    // I P B: displayed I B P, everything one picture late.
    std::vector<Rows::Row> offsets;
    for (uint32_t i = 0; i < frames; ++i) {
      const uint32_t late = i % 3 == 0 ? 1 : i % 3 == 1 ? 2 : 0;
      offsets.push_back({1, (i - i % 3 + 2 < frames ? late : 1) * ticks, 0});
    }
    track.display_offsets = Rows::of(offsets);
  }
  if (random() % 2 != 0) {
    std::vector<Rows::Row> sync;
    for (uint32_t i = 0; i < frames; i += 6) sync.push_back({i + 1});
    track.sync_samples = Rows::of(sync);
  }
  track.samples_per_chunk = static_cast<uint32_t>(1 + random() % 4);
  for (uint32_t i = 0; i < frames; ++i) {
    for (uint32_t byte = 0; byte < track.size_of(i); ++byte) {
      track.data.push_back(static_cast<uint8_t>(random()));
    }
  }
  return track;
}

void edit_at_random(std::mt19937& random, Track& track, bool scales) {
  const auto any = [&] { return static_cast<int64_t>(random() % track.duration()); };
  for (int i = 0; i < 3 && track.duration() > 0; ++i) {
    switch (random() % (scales ? 4 : 3)) {
      case 0:
        EXPECT_TRUE(delete_segment(track, any(), 20).ok());
        break;
      case 1:
        EXPECT_TRUE(insert_empty_segment(track, any(), 15).ok());
        break;
      case 2:
        EXPECT_TRUE(insert_segment(track, any(), 40, track, any()).ok());
        break;
      default:
        EXPECT_TRUE(scale_segment(track, any(), 30, 45).ok());
    }
  }
}

/// Checks what the target shows: the old with the segment in it. Where times had to be rounded, a
/// picture may change a little earlier or later.
void expect_inserted(const Track& track, const std::vector<Bytes>& old, const Track& source,
                     int64_t start, int64_t length, int64_t at, bool is_exact) {
  const uint32_t from = source.movie().time_scale();
  const uint32_t to = track.movie().time_scale();
  const int64_t inserted = rescale(length, from, to);
  const int64_t slack = is_exact ? 0 : 3 + from / to;
  const auto shown_before = [&](int64_t tick) {
    const auto size = static_cast<int64_t>(old.size());
    return tick < 0 || tick >= size ? Bytes() : old[static_cast<size_t>(tick)];
  };
  for (int64_t tick = 0; tick < track.duration(); ++tick) {
    const Bytes now = shown(track, tick);
    bool is_right = false;
    for (int64_t by = -slack; by <= slack && !is_right; ++by) {
      if (tick < at || tick >= at + inserted) {
        is_right = now == shown_before((tick < at ? tick : tick - inserted) + by);
      } else {
        const int64_t near = start + rescale(tick - at, to, from) + by;
        is_right = now == shown(source, std::clamp(near, start, start + length - 1));
      }
    }
    ASSERT_TRUE(is_right) << "tick " << tick << " of " << track.duration() << ", the segment is at "
                          << at << ", " << inserted << " long";
  }
}

enum class How { kSameMovie, kReferred, kCopied };

std::string name_of(How how) {
  return how == How::kSameMovie ? "SameMovie" : how == How::kReferred ? "Referred" : "Copied";
}

class RandomSharing : public ::testing::TestWithParam<How> {};

TEST_P(RandomSharing, EveryShownSampleIsThatOfTheSource) {
  for (uint32_t seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    // In every second movie no time has to be rounded.
    const bool is_exact = seed % 2 == 0;
    const uint32_t kScales[] = {600, 30000, 1000};
    const uint32_t source_scale = kScales[random() % (is_exact ? 2 : 3)];
    const uint32_t target_scale = is_exact ? source_scale : kScales[random() % 3];
    const ScratchFolder folder;
    BuiltMovie built;
    built.brand = seed % 3 == 0 ? BuiltMovie::Brand::kIso : BuiltMovie::Brand::kQuickTime;
    built.tracks = {random_video(random, target_scale)};
    BuiltMovie other;
    other.tracks = {random_video(random, source_scale)};
    if (GetParam() == How::kSameMovie) {
      built.tracks.push_back(other.tracks[0]);
    } else if (seed % 4 == 1) {
      other.header.time_scale = 1000;
    }
    const std::string path = write(folder, "target.mov", built);
    auto movie = open(path);
    const std::unique_ptr<Movie> other_movie =
        GetParam() == How::kSameMovie ? nullptr : open(write(folder, "other.mov", other));
    movie->session().copies_samples = GetParam() == How::kCopied;
    Track& source = *(other_movie ? other_movie->tracks()[0] : movie->tracks()[1]);
    edit_at_random(random, *movie->tracks()[0], !is_exact);
    edit_at_random(random, source, !is_exact);
    for (int round = 0; round < 2; ++round) {
      Track& target = *movie->tracks()[0];
      const std::vector<Bytes> old = all_shown(target);
      const int64_t old_length = target.duration();
      const auto start = static_cast<int64_t>(random() % source.duration());
      const auto length = static_cast<int64_t>(1 + random() % (source.duration() - start));
      const auto at = static_cast<int64_t>(random() % (old.size() + 30));
      const Status status = insert_segment(source, start, length, target, at);
      if (status.code() == featureUnsupported) break;  // one scale is too coarse for the other
      ASSERT_TRUE(status.ok()) << status.message();
      ASSERT_EQ(target.duration(),
                std::max(old_length, at) + rescale(length, source.movie().time_scale(), 600));
      expect_inserted(target, old, source, start, length, at, is_exact);
      const std::vector<Bytes> now = all_shown(target);
      if (round == 0) {
        ASSERT_TRUE(save_movie(*movie).ok());
        EXPECT_TRUE(all_shown(*movie->tracks()[0]) == now);
        EXPECT_TRUE(all_shown(*open(path, FileAccess::kReading)->tracks()[0]) == now);
        continue;
      }
      const std::string whole = folder.path("whole.mov");
      const Status saved = save_movie_as(*movie, whole);
      ASSERT_TRUE(saved.ok()) << saved.message();
      movie.reset();
      std::filesystem::remove(path);
      if (other_movie) std::filesystem::remove(folder.path("other.mov"));
      const auto alone = open(whole, FileAccess::kReading);
      EXPECT_TRUE(all_shown(*alone->tracks()[0]) == now);
      EXPECT_EQ(verify_movie(*alone).take(), std::vector<std::string>());
      break;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Ways, RandomSharing,
                         ::testing::Values(How::kSameMovie, How::kReferred, How::kCopied),
                         [](const auto& way) { return name_of(way.param); });

BuiltMovie pictures(uint8_t first_byte, BuiltMovie::Brand brand = BuiltMovie::Brand::kQuickTime) {
  BuiltMovie movie;
  movie.brand = brand;
  movie.tracks = {video_track(2, 2, 5, 60)};
  for (size_t i = 0; i < size_t{5} * 12; ++i) {
    movie.tracks[0].data.push_back(static_cast<uint8_t>(first_byte + i / 12));
  }
  return movie;
}

TEST(Sharing, SamplesAreReferredToWhereTheyAreAndDescribedOnce) {
  const ScratchFolder folder;
  std::filesystem::create_directory(folder.path("a b"));
  const std::string other_path = write(folder, "a b/öther%1.mov", pictures(50));
  for (const auto brand : {BuiltMovie::Brand::kQuickTime, BuiltMovie::Brand::kIso}) {
    const std::string path = write(folder, "target.mov", pictures(1, brand));
    auto movie = open(path);
    const auto other = open(other_path, FileAccess::kReading);
    Track& target = *movie->tracks()[0];
    ASSERT_TRUE(insert_segment(*other->tracks()[0], 0, 120, target, 0).ok());
    ASSERT_TRUE(insert_segment(*other->tracks()[0], 60, 60, target, 0).ok());
    EXPECT_EQ(movie->pending().size(), 0u);
    EXPECT_EQ(target.media()->descriptions().value()->size(), 2u);
    const std::vector<Bytes> references = *target.media()->data_references().value();
    ASSERT_EQ(references.size(), 2u);
    const std::string text(references[1].begin() + 4, references[1].end());
    if (brand == BuiltMovie::Brand::kIso) {
      EXPECT_EQ(text.substr(0, 4), "url ");
      EXPECT_EQ(text.substr(8), std::string("a%20b/%C3%B6ther%251.mov") + '\0');
    } else {
      EXPECT_EQ(text.substr(0, 4), "alis");
    }
    ASSERT_TRUE(save_movie(*movie).ok());
    EXPECT_LT(std::filesystem::file_size(path), 6000u);
    movie.reset();
    movie = open(path);
    EXPECT_EQ(shown(*movie->tracks()[0], 0), Bytes(12, 51));
    EXPECT_EQ(shown(*movie->tracks()[0], 60), Bytes(12, 50));
    EXPECT_EQ(shown(*movie->tracks()[0], 180), Bytes(12, 1));
    EXPECT_EQ(verify_movie(*movie).take(), std::vector<std::string>());
  }
}

TEST(Sharing, WhatDecodingNeedsComesAlongAndIsNotShown) {
  const ScratchFolder folder;
  BuiltMovie grouped = pictures(50);
  grouped.tracks[0].sync_samples = Rows::of({{1}, {3}});
  const auto movie = open(write(folder, "target.mov", pictures(1)));
  const auto other = open(write(folder, "other.mov", grouped), FileAccess::kReading);
  Track& target = *movie->tracks()[0];
  ASSERT_TRUE(insert_segment(*other->tracks()[0], 250, 20, target, 300).ok());
  const SampleTable& table = *target.media()->samples().value();
  ASSERT_EQ(table.sample_count(), 8u) << "pictures 3 to 5";
  EXPECT_TRUE(table.is_sync(4).value()) << "without a table of them all were";
  EXPECT_TRUE(table.is_sync(5).value());
  EXPECT_FALSE(table.is_sync(6).value());
  EXPECT_FALSE(table.is_sync(7).value());
  EXPECT_EQ(target.duration(), 320);
  EXPECT_EQ(shown(target, 299), Bytes(12, 5));
  EXPECT_EQ(shown(target, 300), Bytes(12, 54));
}

TEST(KeepingShown, RandomMoviesShowTheSameAndHoldNothingElse) {
  size_t smaller = 0;
  for (uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const ScratchFolder folder;
    BuiltMovie built;
    built.tracks = {random_video(random, 600), random_video(random, 600)};
    const std::string path = write(folder, "whole.mov", built);
    const std::unique_ptr<Movie> movie = open(path);
    for (const auto& track : movie->tracks()) edit_at_random(random, *track, true);
    std::vector<std::vector<Bytes>> before;
    for (const auto& track : movie->tracks()) before.push_back(all_shown(*track));
    ASSERT_TRUE(keep_shown_samples(*movie).ok());
    const Status saved =
        save_movie_as(*movie, folder.path("used.mov"), {.media_data = MediaDataKept::kUsed});
    ASSERT_TRUE(saved.ok()) << saved.message();
    const std::unique_ptr<Movie> used = open(folder.path("used.mov"), FileAccess::kReading);
    EXPECT_EQ(verify_movie(*used).take(), std::vector<std::string>());
    uint64_t needed = 0;
    for (size_t i = 0; i < before.size(); ++i) {
      EXPECT_EQ(all_shown(*used->tracks()[i]), before[i]);
      const SampleTable& samples = *used->tracks()[i]->media()->samples().value();
      needed += samples.bytes_between(0, samples.sample_count()).value();
      smaller += samples.sample_count() < built.tracks[i].durations.make(0)[0];
    }
    const AtomTree& tree = used->opened().tree;
    const uint64_t rest = tree.node(tree.movie()).end();
    EXPECT_LE(used->opened().file->size(), rest + 8 + needed);
  }
  EXPECT_GT(smaller, 20u) << "most edits leave something out";
}

TEST(Sharing, AMissingFileIsNamedAndNothingIsWritten) {
  const ScratchFolder folder;
  const std::string path = write(folder, "target.mov", pictures(1));
  const std::string other_path = write(folder, "other.mov", pictures(50));
  auto movie = open(path);
  {
    const auto other = open(other_path, FileAccess::kReading);
    ASSERT_TRUE(insert_segment(*other->tracks()[0], 0, 120, *movie->tracks()[0], 0).ok());
  }
  std::filesystem::rename(other_path, folder.path("elsewhere.mov"));
  EXPECT_EQ(save_movie(*movie).code(), fBsyErr) << "the reference would lead nowhere";
  std::filesystem::rename(folder.path("elsewhere.mov"), other_path);
  ASSERT_TRUE(save_movie(*movie).ok());
  movie.reset();
  movie = open(path);
  std::filesystem::remove(other_path);
  const size_t files = files_in(folder);
  for (const Status& status :
       {save_movie_as(*movie, folder.path("new.mov")), plan_save_as(*movie).take_status(),
        read_samples(*movie->tracks()[0]->media(), {.time = 300}).take_status()}) {
    EXPECT_EQ(status.code(), couldNotResolveDataRef);
    EXPECT_NE(status.message().find(other_path), std::string::npos) << status.message();
  }
  EXPECT_EQ(files_in(folder), files);
  EXPECT_EQ(verify_movie(*movie).take().size(), 1u);
  // The movie's own samples and its own changes do not need the other file.
  EXPECT_EQ(shown(*movie->tracks()[0], 120), Bytes(12, 1));
  set_volume(*movie, 5);
  EXPECT_TRUE(save_movie(*movie).ok());
  // A file that is too short is another one than the movie was made with.
  folder.write("other.mov", Bytes(20));
  EXPECT_EQ(save_movie_as(*movie, folder.path("new.mov")).code(), endOfDataReached);
  EXPECT_EQ(files_in(folder), files + 1);
}

TEST(Sharing, ReferencesOutOfTheMoviesFolderAreNotFollowed) {
  const ScratchFolder folder;
  const ScratchFolder secrets;
  const std::string path = write(folder, "target.mov", pictures(1));
  auto movie = open(path);
  {
    const auto other = open(write(secrets, "other.mov", pictures(50)), FileAccess::kReading);
    ASSERT_TRUE(insert_segment(*other->tracks()[0], 0, 60, *movie->tracks()[0], 0).ok());
    EXPECT_EQ(shown(*movie->tracks()[0], 0), Bytes(12, 50)) << "made in this session";
  }
  ASSERT_TRUE(save_movie(*movie).ok());
  EXPECT_EQ(shown(*movie->tracks()[0], 0), Bytes(12, 50));
  movie.reset();
  movie = open(path);
  const auto read = [&] { return read_samples(*movie->tracks()[0]->media(), {.time = 300}); };
  EXPECT_EQ(read().status().code(), couldNotResolveDataRef);
  std::filesystem::create_symlink(secrets.path("other.mov"), folder.path("other.mov"));
  EXPECT_EQ(read().status().code(), couldNotResolveDataRef) << "a link leads out as well";
  movie->external_files().follow_anywhere(true);
  EXPECT_TRUE(read().ok());
  // What lies beside the movie under the same name is taken for the file.
  movie.reset();
  movie = open(path);
  std::filesystem::remove(folder.path("other.mov"));
  std::filesystem::copy_file(secrets.path("other.mov"), folder.path("other.mov"));
  EXPECT_TRUE(read().ok());
}

TEST(Sharing, SamplesThatAreInNoFileYetAreCopied) {
  const ScratchFolder folder;
  auto movie = open(write(folder, "target.mov", pictures(1)));
  const std::unique_ptr<Movie> made = Movie::create(600).take();
  {
    const auto first = open(write(folder, "other.mov", pictures(50)));
    first->session().copies_samples = true;
    ASSERT_TRUE(insert_movie_segment(*first, 0, 300, *made, 0).ok());
    EXPECT_EQ(made->pending().size(), 0u) << "only the target decides";
    made->session().copies_samples = true;
    ASSERT_TRUE(insert_movie_segment(*first, 0, 60, *made, 0).ok());
    EXPECT_EQ(made->pending().size(), 12u);
  }
  ASSERT_TRUE(insert_segment(*made->tracks()[0], 0, 120, *movie->tracks()[0], 0).ok());
  EXPECT_EQ(movie->pending().size(), 24u) << "of a movie without a file everything is copied";
  // Within a movie, what waits is referred to like all else, but for a media that is being edited.
  ASSERT_TRUE(save_movie_as(*movie, folder.path("new.mov")).ok());
  movie.reset();
  movie = open(folder.path("new.mov"));
  ASSERT_TRUE(insert_movie_segment(*made, 0, 60, *movie, 0).ok());
  ASSERT_TRUE(
      insert_movie_segment(*open(folder.path("other.mov"), FileAccess::kReading), 0, 60, *movie, 0)
          .ok());
  const uint64_t waiting = movie->pending().size();
  Track& target = *movie->tracks()[0];
  ASSERT_TRUE(begin_media_edits(*target.media()).ok());
  ASSERT_TRUE(
      insert_movie_segment(*open(folder.path("other.mov"), FileAccess::kReading), 0, 60, *movie, 0)
          .ok());
  end_media_edits(*target.media());
  EXPECT_EQ(movie->pending().size(), waiting + 12);
  EXPECT_EQ(shown(target, 0), Bytes(12, 50));
}

TEST(Sharing, SoundCountedInFramesKeepsItsFrames) {
  const ScratchFolder folder;
  BuiltMovie built;
  built.tracks = {sound_track(2, 3000, 1000)};
  BuiltMovie other;
  other.tracks = {sound_track(2, 2000, 1000)};
  other.tracks[0].stated_sample_size = 1;
  for (size_t i = 0; i < 8000; ++i)
    other.tracks[0].data.push_back(static_cast<uint8_t>(i * 7 % 251));
  const auto movie = open(write(folder, "target.mov", built));
  const auto other_movie = open(write(folder, "other.mov", other));
  Track& target = *movie->tracks()[0];
  ASSERT_TRUE(insert_segment(*other_movie->tracks()[0], 300, 600, target, 600).ok());
  EXPECT_EQ(target.media()->samples().value()->sample_count(), 4000u);
  const Result<ReadSamples> read =
      read_samples(*target.media(), {.time = 3000, .most_samples = 1000});
  ASSERT_TRUE(read.ok()) << read.status().message();
  const Bytes& data = other.tracks[0].data;
  EXPECT_EQ(read.value().data, Bytes(data.begin() + 500 * 4, data.begin() + 1500 * 4));
  // Sound of another rate would lose frames in this media.
  BuiltMovie faster;
  faster.tracks = {sound_track(2, 2000, 1001)};
  const auto faster_movie = open(write(folder, "faster.mov", faster));
  const int64_t before = target.duration();
  EXPECT_EQ(insert_segment(*faster_movie->tracks()[0], 0, 600, target, 0).code(),
            featureUnsupported);
  EXPECT_EQ(target.duration(), before);
  ASSERT_TRUE(insert_movie_segment(*faster_movie, 0, 600, *movie, 0).ok());
  EXPECT_EQ(movie->tracks().size(), 2u) << "it gets a track of its own";
}

TEST(Sharing, TracksOfAnotherMovieFindTheirPartnersOrAreMade) {
  const ScratchFolder folder;
  BuiltMovie built = test_movie("chapters");  // video and text
  built.header.time_scale = 1000;
  BuiltMovie other = test_movie("timecode");  // video of the same size, timecode
  other.tracks.push_back(video_track(32, 16, 100, 60));
  BuiltTrack& second = other.tracks.back();
  second.header.layer = 3;
  second.header.volume = 0x80;
  second.header.matrix[6] = 0x00050000;
  second.header.alternate_group = 2;
  second.references = {{four_cc("tmcd"), {2}}};
  second.more_in_track = atom_bytes(four_cc("udta"), Bytes(8));
  second.media.language = 0x15C7;
  const auto movie = open(write(folder, "target.mov", built));
  const auto other_movie = open(write(folder, "other.mov", other), FileAccess::kReading);
  const int64_t length = movie->duration();
  const int64_t text_length = movie->tracks()[1]->duration();
  const Status status = insert_movie_segment(*other_movie, 600, 1200, *movie, 2000);
  ASSERT_TRUE(status.ok()) << status.message();
  ASSERT_EQ(movie->tracks().size(), 4u);
  EXPECT_EQ(movie->tracks()[0]->duration(), length + 2000);
  EXPECT_EQ(movie->tracks()[1]->duration(), text_length + 2000);
  EXPECT_EQ(movie->tracks()[1]->timeline().media_time(3999), -1);
  EXPECT_NE(movie->tracks()[1]->timeline().media_time(4000), -1);
  EXPECT_EQ(movie->tracks()[2]->media()->type(), four_cc("tmcd"));
  const Track& made = *movie->tracks()[3];
  EXPECT_EQ(made.duration(), 4000);
  EXPECT_EQ(made.timeline().leading_empty(), 2000);
  EXPECT_EQ(made.header().layer, 3);
  EXPECT_EQ(made.header().volume, 0x80);
  EXPECT_EQ(made.header().matrix, second.header.matrix);
  EXPECT_EQ(made.header().width, other_movie->tracks()[2]->header().width);
  EXPECT_EQ(made.header().alternate_group, 0);
  EXPECT_EQ(made.media()->header().language, 0x15C7);
  EXPECT_TRUE(made.references().lists.empty());
  EXPECT_NE(made.atom_changes().find(four_cc("udta")), nullptr);
  EXPECT_EQ(made.media()->samples().value()->sample_count(), 20u);

  EXPECT_EQ(insert_movie_segment(*other_movie, -1, 1, *movie, 0).code(), invalidTime);
  EXPECT_EQ(insert_movie_segment(*other_movie, 0, -1, *movie, 0).code(), invalidDuration);
  EXPECT_EQ(insert_movie_segment(*other_movie, 0, 1, *movie, -1).code(), invalidTime);
  EXPECT_EQ(insert_segment(*movie->tracks()[0], 0, 1, *movie->tracks()[1], 0).code(),
            mediaTypesDontMatch);
  EXPECT_TRUE(insert_movie_segment(*Movie::create(600).take(), 0, 0, *movie, 0).ok());
  ASSERT_TRUE(save_movie_as(*movie, folder.path("new.mov")).ok());
  const auto saved = open(folder.path("new.mov"), FileAccess::kReading);
  EXPECT_EQ(verify_movie(*saved).take(), std::vector<std::string>());
  EXPECT_EQ(saved->tracks()[3]->duration(), 4000);
}

TEST(Sharing, ARewriteInPlaceLeavesOtherFilesWhereTheyAre) {
  const ScratchFolder folder;
  Bytes bytes = build_movie(pictures(1)).take();
  bytes.resize(bytes.size() + 5, 0xEE);  // loose bytes: nothing can be appended
  const std::string path = folder.write("target.mov", bytes);
  const std::string other_path = write(folder, "other.mov", pictures(50));
  auto movie = open(path);
  {
    const auto other = open(other_path, FileAccess::kReading);
    ASSERT_TRUE(insert_segment(*other->tracks()[0], 60, 60, *movie->tracks()[0], 0).ok());
  }
  EXPECT_EQ(plan_save(*movie).take().method, SaveMethod::kRewrite);
  ASSERT_TRUE(save_movie(*movie).ok());
  movie.reset();
  movie = open(path, FileAccess::kReading);
  EXPECT_EQ(shown(*movie->tracks()[0], 0), Bytes(12, 51));
  EXPECT_EQ(shown(*movie->tracks()[0], 60), Bytes(12, 1));
  std::filesystem::remove(other_path);
  movie.reset();
  movie = open(path, FileAccess::kReading);
  EXPECT_EQ(read_samples(*movie->tracks()[0]->media(), {.time = 300}).status().code(),
            couldNotResolveDataRef);
}

}  // namespace
}  // namespace toolbox
