// A movie made from a description, written to a file and opened through the C calls, for one test.
#pragma once

#include <Toolbox/Toolbox.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "file/movie_builder.h"

namespace toolbox::testing {

/// A file that goes away with the test.
class TemporaryFile {
 public:
  TemporaryFile() {
    std::string name = ::testing::TempDir() + "movieXXXXXX";
    close(mkstemp(name.data()));
    path = name;
  }
  explicit TemporaryFile(const Bytes& bytes) : TemporaryFile() {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  ~TemporaryFile() { std::remove(path.c_str()); }
  std::string path;
};

class OpenedTestMovie {
 public:
  explicit OpenedTestMovie(const BuiltMovie& movie) {
    const Status written = write_movie(movie, file_.path);
    EXPECT_TRUE(written.ok()) << written.message();
    EXPECT_EQ(noErr, ToolboxOpenMovie(file_.path.c_str(), &movie_)) << ToolboxErrorDetail();
  }
  ~OpenedTestMovie() {
    if (movie_ != nullptr) ::DisposeMovie(movie_);
  }
  operator ::Movie() const { return movie_; }  // NOLINT(google-explicit-constructor)
  ::Track track(SInt32 index) const { return GetMovieIndTrack(movie_, index); }
  ::Media media(SInt32 index) const { return GetTrackMedia(track(index)); }

 private:
  TemporaryFile file_;
  ::Movie movie_ = nullptr;
};

}  // namespace toolbox::testing
