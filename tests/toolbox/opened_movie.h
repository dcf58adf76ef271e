// A movie made from a description, written to a file and opened through the C calls, for one test.
#pragma once

#include <Toolbox/Toolbox.h>
#include <gtest/gtest.h>

#include "file/movie_builder.h"
#include "toolbox/scratch_folder.h"

namespace toolbox::testing {

/// A file that goes away with the test.
struct TemporaryFile {
  explicit TemporaryFile(const Bytes& bytes = {}) : path(folder.write("movie.mov", bytes)) {}
  const ScratchFolder folder;
  const std::string path;
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
