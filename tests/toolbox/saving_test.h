// What the tests of saving share: movies that were changed, and what tells one movie from another.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "movie/movie.h"
#include "saving/saving.h"
#include "saving/storage.h"
#include "scratch_folder.h"
#include "test_movies.h"

namespace toolbox::testing {

inline Bytes read_file(const std::string& path) {
  Bytes bytes(std::filesystem::file_size(path));
  std::ifstream(path, std::ios::binary)
      .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

inline std::unique_ptr<Movie> open(const std::string& path,
                                   FileAccess access = FileAccess::kWriting) {
  Result<OpenedMovie> opened = open_movie_file(path, access);
  EXPECT_TRUE(opened.ok()) << opened.status().message();
  if (!opened.ok()) return nullptr;
  Result<std::unique_ptr<Movie>> movie = Movie::load(opened.take());
  EXPECT_TRUE(movie.ok()) << movie.status().message();
  return movie.ok() ? movie.take() : nullptr;
}

/// For tests that save often: disks are slow, and nothing there can crash.
class UnflushedStorage : public Storage {
 public:
  Status flush(int, const std::string&) override { return {}; }
  Status flush_folder(const std::string&) override { return {}; }
};

/// The bytes of every sample of every track, and what a change in these tests changes.
struct Fingerprint {
  std::vector<int> volumes;
  std::vector<std::vector<uint64_t>> samples;  // checksum of each
  bool operator==(const Fingerprint&) const = default;
};

inline uint64_t sum_of(const Bytes& bytes) {
  uint64_t sum = bytes.size();
  for (const uint8_t byte : bytes) sum = sum * 1099511628211u + byte;
  return sum;
}

inline Fingerprint fingerprint(const Movie& movie) {
  Fingerprint print;
  for (const auto& track : movie.tracks()) {
    print.volumes.push_back(track->header().volume);
    auto& sums = print.samples.emplace_back();
    if (track->media() == nullptr) continue;
    const Result<const SampleTable*> table = track->media()->samples();
    EXPECT_TRUE(table.ok()) << table.status().message();
    for (uint32_t i = 0; table.ok() && i < table.value()->sample_count(); ++i) {
      const Result<SampleLocation> place = table.value()->location(i);
      EXPECT_TRUE(place.ok()) << place.status().message();
      if (!place.ok()) break;
      Bytes bytes(place.value().size);
      const uint64_t offset = place.value().offset;
      const Status read = PendingData::is_pending(offset)
                              ? movie.pending().read(offset, bytes)
                              : movie.opened().file->read(offset, bytes);
      EXPECT_TRUE(read.ok()) << read.message();
      sums.push_back(sum_of(bytes));
    }
  }
  return print;
}

inline Fingerprint fingerprint(const std::string& path) {
  const std::unique_ptr<Movie> movie = open(path, FileAccess::kReading);
  return movie == nullptr ? Fingerprint() : fingerprint(*movie);
}

inline void set_volume(Movie& movie, int16_t volume) {
  movie.tracks()[0]->change_header().volume = volume;
}

/// Two tracks of few bytes, some of them random, behind the movie atom or in front of it.
inline BuiltMovie small_movie(BuiltMovie::MoviePlace place) {
  BuiltMovie movie;
  movie.place = place;
  movie.tracks = {video_track(4, 4, 6, 100), text_track({{"one", 300}, {"two", 300}})};
  movie.tracks[0].data.resize(6 * 4 * 4 * 3);
  for (size_t i = 0; i < movie.tracks[0].data.size(); ++i) {
    movie.tracks[0].data[i] = static_cast<uint8_t>(i * 37);
  }
  return movie;
}

inline std::string write(const ScratchFolder& folder, const std::string& name,
                         const BuiltMovie& movie) {
  Result<Bytes> bytes = build_movie(movie);
  EXPECT_TRUE(bytes.ok()) << bytes.status().message();
  return folder.write(name, bytes.value());
}

inline size_t files_in(const ScratchFolder& folder) {
  const std::filesystem::path place = std::filesystem::path(folder.path("x")).parent_path();
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(place),
                                           std::filesystem::directory_iterator()));
}

}  // namespace toolbox::testing
