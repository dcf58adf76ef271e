// Saving where nothing goes wrong: what changes in a file, and what must not.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <random>

#include "atoms/atom_dump.h"
#include "base/work_watcher.h"
#include "saving/compose.h"
#include "saving/free_space.h"
#include "saving/undo.h"
#include "saving/undo_marker.h"
#include "saving_test.h"

namespace toolbox {
namespace {

using namespace testing;
using Place = BuiltMovie::MoviePlace;

/// The bytes of every leaf of the movie atom but the headers that bear the time of a change.
std::vector<std::pair<std::string, Bytes>> leaves(const Movie& movie) {
  std::vector<std::pair<std::string, Bytes>> all;
  const AtomTree& tree = movie.opened().tree;
  for (AtomIndex i = 0; i < tree.size(); ++i) {
    const AtomNode& node = tree.node(i);
    if (node.is_container || tree.path(i).rfind("moov", 0) != 0) continue;
    if (node.type == four_cc("mvhd") || node.type == four_cc("tkhd")) continue;
    Bytes bytes(node.size);
    EXPECT_TRUE(tree.whole(i).source->read(node.offset, bytes).ok());
    all.emplace_back(tree.path(i), std::move(bytes));
  }
  return all;
}

/// The made movies and, where it is there, the corpus, as files that may be written.
std::vector<std::string> every_movie(const ScratchFolder& folder) {
  std::vector<std::string> paths;
  for (const char* name : kTestMovies) {
    paths.push_back(write(folder, std::string(name) + ".mov", test_movie(name)));
  }
  const size_t made = paths.size();
  for (const auto& file : corpus()) {
    paths.push_back(folder.path(file.filename().string()));
    std::filesystem::copy_file(file, paths.back());
    std::filesystem::permissions(paths.back(), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
  }
  if (paths.size() == made) std::puts("no corpus: only made movies are tried");
  return paths;
}

TEST(Saving, AnUnmodifiedMovieIsNotTouched) {
  const ScratchFolder folder;
  size_t composed = 0;
  for (const std::string& path : every_movie(folder)) {
    SCOPED_TRACE(path);
    const Bytes before = read_file(path);
    Result<OpenedMovie> opened = open_movie_file(path, FileAccess::kWriting);
    if (!opened.ok()) continue;
    const std::unique_ptr<Movie> movie = Movie::load(opened.take()).take();
    EXPECT_TRUE(save_movie(*movie).ok());
    EXPECT_EQ(read_file(path), before);
    const OffsetMap map = OffsetMap::in_place(0);
    Result<AtomPieces> pieces = compose_movie(*movie, {.map = &map});
    if (!pieces.ok()) continue;  // damage that no change can be built on
    const AtomTree& tree = movie->opened().tree;
    Bytes atom(tree.node(tree.movie()).size);
    const ByteRange whole = tree.whole(tree.movie());
    ASSERT_TRUE(whole.source->read(whole.offset, atom).ok());
    EXPECT_EQ(pieces.value().to_bytes().value(), atom);
    ++composed;
  }
  std::printf("%zu movie atoms composed byte for byte\n", composed);
  EXPECT_GE(composed, std::size(kTestMovies));
}

TEST(Saving, AChangeAndItsReversalLeaveEveryOtherAtomAlone) {
  const ScratchFolder folder;
  size_t saved = 0;
  for (const std::string& path : every_movie(folder)) {
    SCOPED_TRACE(path);
    Result<OpenedMovie> opened = open_movie_file(path, FileAccess::kWriting);
    if (!opened.ok()) continue;
    const std::unique_ptr<Movie> movie = Movie::load(opened.take()).take();
    if (movie->tracks().empty()) continue;
    const int16_t volume = movie->tracks()[0]->header().volume;
    const auto before = leaves(*movie);
    set_volume(*movie, 77);
    if (Status status = save_movie(*movie); !status.ok()) {
      EXPECT_TRUE(movie->opened().tree.first_fragment()) << status.message();
      continue;
    }
    EXPECT_FALSE(movie->is_modified());
    EXPECT_EQ(open(path, FileAccess::kReading)->tracks()[0]->header().volume, 77);
    set_volume(*movie, volume);
    const Status status = save_movie(*movie);
    ASSERT_TRUE(status.ok()) << status.message();
    const auto after = leaves(*movie);
    ASSERT_EQ(before.size(), after.size());
    for (size_t i = 0; i < before.size(); ++i) {
      EXPECT_EQ(before[i].first, after[i].first);
      // A file that had to be written anew has its media data elsewhere.
      const bool is_offsets = before[i].first.find("stco") != std::string::npos ||
                              before[i].first.find("co64") != std::string::npos;
      if (!is_offsets) {
        EXPECT_EQ(before[i].second, after[i].second) << before[i].first;
      }
    }
    ++saved;
  }
  std::printf("%zu movies saved twice\n", saved);
  EXPECT_GE(saved, 5u);
}

TEST(Saving, AppendingLeavesTheOldBytesAndUndoBringsThemBack) {
  const ScratchFolder folder;
  for (const Place place : {Place::kBeforeMedia, Place::kBehindMedia}) {
    const std::string path = write(folder, "a.mov", small_movie(place));
    const Bytes original = read_file(path);
    const Fingerprint old = fingerprint(path);
    auto movie = open(path);
    for (int16_t volume = 1; volume <= 3; ++volume) {
      set_volume(*movie, volume);
      ASSERT_TRUE(save_movie(*movie).ok());
      EXPECT_EQ(movie->tracks()[0]->header().volume, volume);
      EXPECT_EQ(fingerprint(*movie).samples, old.samples);
    }
    movie.reset();
    const Bytes saved = read_file(path);
    size_t changed = 0;
    for (size_t i = 0; i < original.size(); ++i) changed += original[i] != saved[i];
    EXPECT_LE(changed, 4u);
    const auto steps = undo_steps(open_movie_file(path).take()).take();
    EXPECT_EQ(steps.size(), 3u);
    for (size_t i = 0; i < steps.size(); ++i) {
      const Status undone = undo_save(path);
      ASSERT_TRUE(undone.ok()) << undone.message();
      EXPECT_EQ(fingerprint(path).volumes[0], i == 2 ? old.volumes[0] : 2 - static_cast<int>(i));
    }
    EXPECT_EQ(undo_save(path).code(), paramErr);
    EXPECT_EQ(fingerprint(path), old);
    // What was undone is cut off by the next save.
    movie = open(path);
    set_volume(*movie, 9);
    ASSERT_TRUE(save_movie(*movie).ok());
    movie.reset();
    EXPECT_EQ(fingerprint(path).volumes[0], 9);
    EXPECT_EQ(fingerprint(path).samples, old.samples);
  }
}

/// A movie whose movie atom comes first and has shrunk by a save: its old place has room for it.
std::string write_movie_with_room(const ScratchFolder& folder) {
  BuiltMovie built = small_movie(Place::kBeforeMedia);
  built.more_in_movie = atom_bytes(four_cc("udta"), Bytes(4000, 1));
  const std::string path = write(folder, "room.mov", built);
  const auto movie = open(path);
  movie->change_atoms().remove(four_cc("udta"));
  EXPECT_TRUE(save_movie(*movie).ok());
  return path;
}

TEST(Saving, FreeSpaceInFrontOfTheMediaIsUsedAgain) {
  const ScratchFolder folder;
  const std::string path = write_movie_with_room(folder);
  const Fingerprint old = fingerprint(path);
  auto movie = open(path);
  const uint64_t size = movie->opened().file->size();
  for (int16_t volume = 1; volume <= 3; ++volume) {
    set_volume(*movie, volume);
    EXPECT_EQ(plan_save(*movie).take().method, SaveMethod::kReuse);
    const Status status = save_movie(*movie);
    ASSERT_TRUE(status.ok()) << status.message();
    EXPECT_LT(movie->opened().tree.node(movie->opened().tree.movie()).offset, size / 2);
  }
  movie.reset();
  EXPECT_EQ(fingerprint(path).samples, old.samples);
  ASSERT_TRUE(undo_save(path).ok());
  EXPECT_EQ(fingerprint(path).volumes[0], 2);
}

TEST(Saving, ManySavesDoNotLetTheFileGrowForEver) {
  const ScratchFolder folder;
  UnflushedStorage storage;
  const ScopedStorage scoped(storage);
  const std::string path = write(folder, "a.mov", small_movie(Place::kBehindMedia));
  const Fingerprint old = fingerprint(path);
  const auto movie = open(path);
  const uint64_t atom = movie->opened().tree.node(movie->opened().tree.movie()).size;
  const uint64_t begin = movie->opened().file->size();
  for (int16_t volume = 1; volume <= 200; ++volume) {
    SCOPED_TRACE(volume);
    // Media data is added now and then; what undo cuts off must never hold any.
    if (volume % 50 == 0) {
      ASSERT_TRUE(movie->pending().append(Bytes(100, 7)).ok());
    }
    set_volume(*movie, volume);
    const Status status = save_movie(*movie);
    ASSERT_TRUE(status.ok()) << status.message();
    const size_t steps = undo_steps(open_movie_file(path).take()).take().size();
    EXPECT_GE(steps, std::min<size_t>(volume, kKeptUndoSteps));
  }
  EXPECT_LT(movie->opened().file->size(), begin + 14 * atom + 200 * UndoMarkerAtom::kAtomBytes);
  EXPECT_EQ(fingerprint(path).samples, old.samples);
}

TEST(Saving, SavesAndUndosInAnyOrderFollowAStack) {
  const ScratchFolder folder;
  UnflushedStorage storage;
  const ScopedStorage scoped(storage);
  for (const Place place : {Place::kBeforeMedia, Place::kBehindMedia}) {
    const std::string path = write(folder, "a.mov", small_movie(place));
    const Fingerprint old = fingerprint(path);
    std::vector<int> volumes = {old.volumes[0]};
    std::mt19937 random(place == Place::kBeforeMedia ? 1 : 2);
    for (int16_t step = 1; step <= 250; ++step) {
      SCOPED_TRACE(step);
      if (random() % 3 > 0) {
        const auto movie = open(path);
        set_volume(*movie, step);
        const Status status = save_movie(*movie);
        ASSERT_TRUE(status.ok()) << status.message();
        volumes.push_back(step);
      } else if (undo_steps(open_movie_file(path).take()).take().empty()) {
        volumes = {volumes.back()};
        EXPECT_EQ(undo_save(path).code(), paramErr);
      } else {
        ASSERT_TRUE(undo_save(path).ok());
        ASSERT_GT(volumes.size(), 1u);
        volumes.pop_back();
      }
      const Fingerprint now = fingerprint(path);
      EXPECT_EQ(now.volumes[0], volumes.back());
      ASSERT_EQ(now.samples, old.samples);
    }
  }
}

TEST(Saving, CommitLeavesNothingOfWhatWasReplaced) {
  const ScratchFolder folder;
  for (const Place place : {Place::kBeforeMedia, Place::kBehindMedia}) {
    BuiltMovie built = small_movie(place);
    const std::string secret = "do not keep this";
    built.more_in_movie = atom_bytes(
        four_cc("udta"), ByteView(reinterpret_cast<const uint8_t*>(secret.data()), secret.size()));
    const std::string path = write(folder, "a.mov", built);
    const Fingerprint old = fingerprint(path);
    auto movie = open(path);
    movie->change_atoms().remove(four_cc("udta"));
    ASSERT_TRUE(save_movie(*movie).ok());
    set_volume(*movie, 5);
    ASSERT_TRUE(save_movie(*movie).ok());
    movie.reset();
    const auto holds_secret = [&] {
      const Bytes bytes = read_file(path);
      return std::search(bytes.begin(), bytes.end(), secret.begin(), secret.end()) != bytes.end();
    };
    EXPECT_EQ(holds_secret(), place == Place::kBehindMedia);
    EXPECT_GT(commit_saves(path).take(), 0u);
    EXPECT_FALSE(holds_secret());
    EXPECT_EQ(fingerprint(path).samples, old.samples);
    EXPECT_EQ(undo_steps(open_movie_file(path).take()).take().size(), 0u);
  }
}

TEST(Saving, ANewFileHasTheMovieFirstAndEverySample) {
  const ScratchFolder folder;
  for (const char* name : kTestMovies) {
    SCOPED_TRACE(name);
    const std::string path = write(folder, "a.mov", test_movie(name));
    const Fingerprint old = fingerprint(path);
    const auto movie = open(path, FileAccess::kReading);
    const std::string target = folder.path("b.mov");
    const Status status = save_movie_as(*movie, target, {.overwrite = true});
    ASSERT_TRUE(status.ok()) << status.message();
    EXPECT_EQ(fingerprint(target), old);
    EXPECT_EQ(fingerprint(*movie), old);
    const AtomTree& tree = movie->opened().tree;
    for (AtomIndex i = tree.first_top_level(); i != tree.movie_in_file();
         i = tree.node(i).next_sibling) {
      EXPECT_NE(tree.node(i).type, four_cc("mdat"));
      EXPECT_NE(tree.node(i).next_sibling, kNoAtom);
    }
    EXPECT_FALSE(tree.is_fragmented());
    EXPECT_EQ(files_in(folder), 2u);
    EXPECT_EQ(save_movie_as(*movie, target).code(), dupFNErr);
  }
}

TEST(Saving, WhoWatchesHearsHowFarALongSaveIs) {
  const ScratchFolder folder;
  const std::string path = write(folder, "a.mov", test_movie(kTestMovies[0]));
  // Much media data, in a file with a hole.
  constexpr uint32_t kMuch = 150 * 1024 * 1024;
  Bytes header(8);
  store_big_endian(header.data(), kMuch);
  std::copy_n("mdat", 4, header.begin() + 4);
  std::ofstream(path, std::ios::binary | std::ios::app)
      .write(reinterpret_cast<const char*>(header.data()), 8);
  std::filesystem::resize_file(path, std::filesystem::file_size(path) - 8 + kMuch);

  struct Heard {
    std::vector<uint64_t> written;
    uint64_t total = 0;
  } heard;
  WorkWatcher::current() = {[](uint64_t written, uint64_t total, void* context) {
                              static_cast<Heard*>(context)->written.push_back(written);
                              static_cast<Heard*>(context)->total = total;
                            },
                            &heard};
  const auto movie = open(path, FileAccess::kReading);
  const Status status = save_movie_as(*movie, folder.path("b.mov"));
  WorkWatcher::current() = {};
  ASSERT_TRUE(status.ok()) << status.message();
  EXPECT_EQ(heard.total, std::filesystem::file_size(folder.path("b.mov")));
  EXPECT_GE(heard.written.size(), 3u);
  EXPECT_TRUE(std::is_sorted(heard.written.begin(), heard.written.end()));
  EXPECT_EQ(heard.written.back(), heard.total);
  const size_t count = heard.written.size();
  ASSERT_TRUE(save_movie_as(*movie, folder.path("c.mov")).ok());
  EXPECT_EQ(heard.written.size(), count) << "nobody watches any more";
}

TEST(Saving, ATailThatWouldHideWhatIsAppendedMakesANewFile) {
  const ScratchFolder folder;
  Bytes bytes = build_movie(small_movie(Place::kBeforeMedia)).take();
  const Fingerprint old = fingerprint(folder.write("whole.mov", bytes));
  const size_t media = static_cast<size_t>(
      std::search(bytes.begin(), bytes.end(), "mdat", "mdat" + 4) - bytes.begin() - 4);
  struct Case {
    const char* what;
    uint32_t size;
    size_t loose;
  };
  for (const Case& each : {Case{"to the end", 0, 0}, Case{"claims more", 0x7000000, 0},
                           Case{"loose bytes", 0xFFFFFFFF, 5}}) {
    SCOPED_TRACE(each.what);
    Bytes odd = bytes;
    if (each.size != 0xFFFFFFFF) store_big_endian(odd.data() + media, each.size);
    odd.resize(odd.size() + each.loose, 0xEE);
    const std::string path = folder.write("odd.mov", odd);
    for (int16_t volume = 7; volume <= 8; ++volume) {
      const auto movie = open(path);
      set_volume(*movie, volume);
      const Status status = save_movie(*movie);
      ASSERT_TRUE(status.ok()) << status.message();
    }
    EXPECT_EQ(fingerprint(path).volumes[0], 8);
    EXPECT_EQ(fingerprint(path).samples, old.samples);
  }
}

TEST(Saving, WritersKeepOutOfEachOthersWay) {
  const ScratchFolder folder;
  const std::string path = write(folder, "a.mov", small_movie(Place::kBehindMedia));
  auto movie = open(path);
  EXPECT_EQ(open_movie_file(path, FileAccess::kWriting).status().code(), fBsyErr);
  EXPECT_TRUE(open_movie_file(path).ok()) << "readers need not wait";
  set_volume(*movie, 3);
  {
    std::ofstream other(path, std::ios::binary | std::ios::app);
    other << "x";
  }
  const Bytes before = read_file(path);
  EXPECT_EQ(save_movie(*movie).code(), fBsyErr);
  EXPECT_EQ(read_file(path), before);
  EXPECT_TRUE(movie->is_modified());
  movie.reset();
  movie = open(path);
  set_volume(*movie, 3);
  std::filesystem::rename(path, folder.path("moved.mov"));
  EXPECT_EQ(save_movie(*movie).code(), fBsyErr);
  const auto reading = open(folder.path("moved.mov"), FileAccess::kReading);
  set_volume(*reading, 3);
  EXPECT_EQ(save_movie(*reading).code(), wrPermErr);
}

TEST(Saving, LinksAndPermissionsStay) {
  const ScratchFolder folder;
  const std::string path = write(folder, "a.mov", small_movie(Place::kBehindMedia));
  std::filesystem::permissions(path, std::filesystem::perms(0640));
  std::filesystem::create_symlink("a.mov", folder.path("link.mov"));
  const auto movie = open(folder.path("link.mov"));
  set_volume(*movie, 4);
  ASSERT_TRUE(save_movie(*movie).ok());
  const Status status = save_movie_as(*movie, folder.path("link.mov"), {.overwrite = true});
  ASSERT_TRUE(status.ok()) << status.message();
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.mov")));
  EXPECT_EQ(fingerprint(path).volumes[0], 4);
  EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0640));
  std::filesystem::create_hard_link(path, folder.path("second.mov"));
  EXPECT_EQ(save_movie_as(*movie, path, {.overwrite = true}).code(), wrPermErr);
  set_volume(*movie, 5);
  ASSERT_TRUE(save_movie(*movie).ok());
  EXPECT_EQ(fingerprint(folder.path("second.mov")).volumes[0], 5);
}

}  // namespace
}  // namespace toolbox
