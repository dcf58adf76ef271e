// Saving where anything may go wrong: whatever stops a save, the file is the old movie or the new
// one, and the next save works.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "saving_test.h"

namespace toolbox {
namespace {

using namespace testing;
using Place = BuiltMovie::MoviePlace;

/// Counts the calls that go through, and does something at one of them.
class FaultyStorage : public Storage {
 public:
  enum class Fault { kFail, kKill };
  static constexpr int kTears = 32;

  /// At call `place`, `tear` 32nds of what is written or copied still go through.
  FaultyStorage(int place, Fault fault, int tear = 0) : place_(place), fault_(fault), tear_(tear) {}
  int calls() const { return calls_; }

  Status write(int file, uint64_t offset, ByteView bytes, const std::string& name) override {
    if (!is_due()) return Storage::write(file, offset, bytes, name);
    // A size is only ever written where it lies in one sector, which is written whole or not at
    // all.
    const bool is_size = bytes.size() == 4 && bytes[0] == 0 && offset / 512 == (offset + 3) / 512;
    if (!is_size) (void)Storage::write(file, offset, bytes.first(torn(bytes.size())), name);
    return strike(name);
  }
  Status copy(int from, uint64_t from_offset, int to, uint64_t to_offset, uint64_t size,
              const std::string& name) override {
    if (!is_due()) return Storage::copy(from, from_offset, to, to_offset, size, name);
    (void)Storage::copy(from, from_offset, to, to_offset, torn(size), name);
    return strike(name);
  }
  Status reserve(int file, uint64_t offset, uint64_t size, const std::string& name) override {
    return is_due() ? strike(name) : Storage::reserve(file, offset, size, name);
  }
  Status set_size(int file, uint64_t size, const std::string& name) override {
    return is_due() ? strike(name) : Storage::set_size(file, size, name);
  }
  Status flush(int, const std::string& name) override { return is_due() ? strike(name) : Status(); }
  Status flush_folder(const std::string& folder) override {
    return is_due() ? strike(folder) : Status();
  }
  Result<int> create(const std::string& path) override {
    if (is_due()) return strike(path);
    return Storage::create(path);
  }
  Status rename(const std::string& from, const std::string& to) override {
    return is_due() ? strike(to) : Storage::rename(from, to);
  }
  Status rename_new(const std::string& from, const std::string& to) override {
    return is_due() ? strike(to) : Storage::rename_new(from, to);
  }

 private:
  bool is_due() { return calls_++ == place_; }
  uint64_t torn(uint64_t size) const { return size * static_cast<uint64_t>(tear_) / kTears; }
  Status strike(const std::string& name) {
    if (fault_ == Fault::kKill) ::raise(SIGKILL);
    return {ioErr, name + ": the test's fault"};
  }

  int place_;
  Fault fault_;
  int tear_;
  int calls_ = 0;
};

/// A way to save, and the file that it starts from.
struct Path {
  const char* name;
  std::function<Bytes()> start;
  std::function<Status(Movie&, const std::string&)> save;

  friend void PrintTo(const Path& path, std::ostream* out) { *out << path.name; }
};

Bytes built(Place place) { return build_movie(small_movie(place)).take(); }

Bytes with_room() {
  const ScratchFolder folder;
  BuiltMovie movie = small_movie(Place::kBeforeMedia);
  movie.more_in_movie = atom_bytes(four_cc("udta"), Bytes(4000, 1));
  const std::string path = write(folder, "room.mov", movie);
  const auto opened = open(path);
  opened->change_atoms().remove(four_cc("udta"));
  EXPECT_TRUE(save_movie(*opened).ok());
  return read_file(path);
}

Bytes with_loose_end() {
  Bytes bytes = built(Place::kBeforeMedia);
  bytes.resize(bytes.size() + 5);
  return bytes;
}

/// A movie that was saved so often that the next save takes the place of an old movie atom behind
/// the media.
Bytes saved_often() {
  const ScratchFolder folder;
  const std::string path = folder.write("often.mov", built(Place::kBehindMedia));
  const auto movie = open(path);
  do {
    set_volume(*movie, static_cast<int16_t>(movie->tracks()[0]->header().volume + 1));
    if (plan_save(*movie).value().method == SaveMethod::kReuse) break;
    EXPECT_TRUE(save_movie(*movie).ok());
  } while (movie->opened().file->size() < 100'000);
  return read_file(path);
}

/// What a crash between the two whole movies of a reused place leaves.
Bytes with_two_movies() {
  const ScratchFolder folder;
  const std::string path = folder.write("two.mov", with_room());
  const auto movie = open(path);
  set_volume(*movie, 66);
  FaultyStorage storage(1 << 30, FaultyStorage::Fault::kFail);
  {
    ScopedStorage scope(storage);
    const Bytes before = read_file(path);
    EXPECT_TRUE(save_movie(*movie).ok());
    EXPECT_NE(read_file(path), before);
  }
  Bytes bytes = read_file(path);
  // The old movie atom, behind the media, is brought back beside the new one.
  const AtomTree& tree = movie->opened().tree;
  for (AtomIndex i = tree.movie_in_file(); i != kNoAtom; i = tree.node(i).next_sibling) {
    const AtomNode& node = tree.node(i);
    if (node.type != four_cc("free") || node.size < 500 || node.offset < bytes.size() / 2) continue;
    store_big_endian(bytes.data() + node.offset + 4, four_cc("moov"));
  }
  return bytes;
}

const Path kPaths[] = {
    {"append", [] { return built(Place::kBehindMedia); },
     [](Movie& movie, const std::string&) { return save_movie(movie); }},
    {"append to a movie in front", [] { return built(Place::kBeforeMedia); },
     [](Movie& movie, const std::string&) { return save_movie(movie); }},
    {"append media", [] { return built(Place::kBehindMedia); },
     [](Movie& movie, const std::string&) -> Status {
       TRY(movie.pending().append(Bytes(1000, 7)).take_status());
       return save_movie(movie);
     }},
    {"reuse", with_room, [](Movie& movie, const std::string&) { return save_movie(movie); }},
    {"reuse behind the media", saved_often,
     [](Movie& movie, const std::string&) {
       EXPECT_EQ(plan_save(movie).value().method, SaveMethod::kReuse);
       return save_movie(movie);
     }},
    {"two movies", with_two_movies,
     [](Movie& movie, const std::string&) { return save_movie(movie); }},
    {"rewrite", with_loose_end, [](Movie& movie, const std::string&) { return save_movie(movie); }},
    {"save as over itself", [] { return built(Place::kBehindMedia); },
     [](Movie& movie, const std::string& path) {
       return save_movie_as(movie, path, {.overwrite = true});
     }},
};
constexpr ptrdiff_t kNewFilePaths = 2;  // the last of them

class SavingFaults : public ::testing::TestWithParam<Path> {
 protected:
  void start() {
    bytes_ = GetParam().start();
    path_ = folder_.write("a.mov", bytes_);
    old_ = fingerprint(path_);
    new_ = old_;
    new_.volumes[0] = 99;
  }

  Status change_and_save() {
    const auto movie = open(path_);
    set_volume(*movie, 99);
    return GetParam().save(*movie, path_);
  }

  int count_calls() {
    FaultyStorage storage(-1, FaultyStorage::Fault::kFail);
    ScopedStorage scope(storage);
    const Status status = change_and_save();
    EXPECT_TRUE(status.ok()) << status.message();
    EXPECT_EQ(fingerprint(path_), new_);
    return storage.calls();
  }

  void expect_old_or_new(bool failed) {
    const Fingerprint now = fingerprint(path_);
    EXPECT_TRUE(now == old_ || now == new_) << "volume " << now.volumes.at(0);
    if (!failed) {
      EXPECT_EQ(now, new_);
    }
    // The next save, with nothing in its way.
    const auto movie = open(path_);
    set_volume(*movie, 55);
    const Status status = save_movie(*movie);
    EXPECT_TRUE(status.ok()) << status.message();
    Fingerprint next = old_;
    next.volumes[0] = 55;
    EXPECT_EQ(fingerprint(path_), next);
  }

  ScratchFolder folder_;
  Bytes bytes_;
  std::string path_;
  Fingerprint old_;
  Fingerprint new_;
};

TEST_P(SavingFaults, FailingCallsLoseNothing) {
  start();
  const int calls = count_calls();
  int points = 0;
  for (int tear = 0; tear < FaultyStorage::kTears; ++tear) {
    for (int place = 0; place < calls; ++place, ++points) {
      SCOPED_TRACE(place);
      folder_.write("a.mov", bytes_);
      Status status;
      {
        FaultyStorage storage(place, FaultyStorage::Fault::kFail, tear);
        ScopedStorage scope(storage);
        status = change_and_save();
      }
      EXPECT_EQ(files_in(folder_), 1u) << "a temporary file was left";
      expect_old_or_new(!status.ok());
    }
  }
  std::printf("%s: %d failing calls\n", GetParam().name, points);
}

TEST_P(SavingFaults, KilledSavesLoseNothing) {
  start();
  const int calls = count_calls();
  int points = 0;
  for (int tear = 0; tear < FaultyStorage::kTears; ++tear) {
    for (int place = 0; place < calls; ++place, ++points) {
      SCOPED_TRACE(place);
      folder_.write("a.mov", bytes_);
      const pid_t child = ::fork();
      if (child == 0) {
        FaultyStorage storage(place, FaultyStorage::Fault::kKill, tear);
        ScopedStorage scope(storage);
        (void)change_and_save();
        ::_exit(0);
      }
      int status = 0;
      ::waitpid(child, &status, 0);
      EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
      expect_old_or_new(true);
    }
  }
  std::printf("%s: %d kills\n", GetParam().name, points);
}

/// Keeps what is written instead of writing it in order: any part of it may reach the disk before a
/// flush, in any order, and a write torn in the middle.
class RecordingStorage : public Storage {
 public:
  struct Write {
    uint64_t offset;
    Bytes bytes;
  };

  explicit RecordingStorage(std::function<void()> at_flush) : at_flush_(std::move(at_flush)) {}

  Status write(int file, uint64_t offset, ByteView bytes, const std::string& name) override {
    unflushed.push_back({offset, Bytes(bytes.begin(), bytes.end())});
    return Storage::write(file, offset, bytes, name);
  }
  Status copy(int from, uint64_t from_offset, int to, uint64_t to_offset, uint64_t size,
              const std::string& name) override {
    Bytes bytes(size);
    EXPECT_EQ(::pread(from, bytes.data(), size, static_cast<off_t>(from_offset)),
              static_cast<ssize_t>(size));
    return write(to, to_offset, bytes, name);
  }
  Status flush(int, const std::string&) override {
    at_flush_();
    unflushed.clear();
    return {};
  }

  std::vector<Write> unflushed;

 private:
  std::function<void()> at_flush_;
};

/// A new file has no name until it is flushed; only saves into the old one are seen half done.
class InPlaceFaults : public SavingFaults {};

TEST_P(InPlaceFaults, EverySubsetOfUnflushedWritesIsOneOfTheTwoMovies) {
  start();
  Bytes disk = bytes_;  // what has certainly reached it
  int points = 0;
  RecordingStorage* recording = nullptr;
  const auto apply = [](Bytes& file, uint64_t offset, ByteView bytes) {
    file.resize(std::max<size_t>(file.size(), offset + bytes.size()));
    std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<ptrdiff_t>(offset));
  };
  const auto check = [&](const Bytes& file) {
    ++points;
    const ScratchFolder other;
    const Fingerprint now = fingerprint(other.write("crashed.mov", file));
    EXPECT_TRUE(now == old_ || now == new_);
  };
  RecordingStorage storage([&] {
    // Large writes reach the disk in pieces.
    std::vector<RecordingStorage::Write> pieces;
    for (const auto& write : recording->unflushed) {
      const size_t half = write.bytes.size() / 2;
      pieces.push_back({write.offset, Bytes(write.bytes.begin(),
                                            write.bytes.begin() + static_cast<ptrdiff_t>(half))});
      pieces.push_back(
          {write.offset + half,
           Bytes(write.bytes.begin() + static_cast<ptrdiff_t>(half), write.bytes.end())});
    }
    ASSERT_LE(pieces.size(), 12u);
    for (uint32_t subset = 0; subset < (1u << pieces.size()); ++subset) {
      Bytes file = disk;
      for (size_t i = 0; i < pieces.size(); ++i) {
        if (subset >> i & 1) apply(file, pieces[i].offset, pieces[i].bytes);
      }
      check(file);
    }
    for (const auto& write : recording->unflushed) apply(disk, write.offset, write.bytes);
  });
  recording = &storage;
  {
    ScopedStorage scope(storage);
    const Status status = change_and_save();
    ASSERT_TRUE(status.ok()) << status.message();
  }
  EXPECT_TRUE(storage.unflushed.empty()) << "something was never flushed";
  EXPECT_EQ(fingerprint(path_), new_);
  std::printf("%s: %d states of the disk\n", GetParam().name, points);
}

std::string path_name(const ::testing::TestParamInfo<Path>& path) {
  std::string name = path.param.name;
  std::erase(name, ' ');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Paths, SavingFaults, ::testing::ValuesIn(kPaths), path_name);
INSTANTIATE_TEST_SUITE_P(Paths, InPlaceFaults,
                         ::testing::ValuesIn(std::begin(kPaths), std::end(kPaths) - kNewFilePaths),
                         path_name);

TEST(SavingFull, AFullDiskLeavesTheOldMovieAndNothingElse) {
  const ScratchFolder folder;
  const Bytes bytes = built(Place::kBehindMedia);
  for (const bool as_new : {false, true}) {
    const std::string path = folder.write("a.mov", bytes);
    const auto movie = open(path);
    set_volume(*movie, 3);
    ASSERT_TRUE(movie->pending().append(Bytes(100'000, 1)).ok());
    struct rlimit before;
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (rlim_t room = 0; room < 110'000; room += 9973) {
      struct rlimit limit = before;
      limit.rlim_cur = (as_new ? 0 : bytes.size()) + room;
      ::setrlimit(RLIMIT_FSIZE, &limit);
      const Status status =
          as_new ? save_movie_as(*movie, folder.path("b.mov")) : save_movie(*movie);
      ::setrlimit(RLIMIT_FSIZE, &before);
      if (status.ok()) break;
      EXPECT_EQ(status.code(), dskFulErr) << status.message();
      EXPECT_TRUE(movie->is_modified());
      EXPECT_EQ(files_in(folder), 1u);
      EXPECT_EQ(read_file(path), bytes) << "not even a tail";
    }
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(movie->is_modified()) << "there was room in the end";
  }
}

}  // namespace
}  // namespace toolbox
