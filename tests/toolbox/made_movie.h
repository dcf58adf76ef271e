// A movie made by the C calls, and samples added to it and read back, for one test.
#pragma once

#include <Toolbox/Toolbox.h>
#include <gtest/gtest.h>

#include <cstring>

#include "base/bytes.h"

namespace toolbox::testing {

class MadeMovie {
 public:
  explicit MadeMovie(TimeScale scale) {
    EXPECT_EQ(noErr, ToolboxNewMovie(scale, &movie_)) << ToolboxErrorDetail();
  }
  ~MadeMovie() { ::DisposeMovie(movie_); }
  MadeMovie(const MadeMovie&) = delete;
  MadeMovie& operator=(const MadeMovie&) = delete;
  operator ::Movie() const { return movie_; }  // NOLINT(google-explicit-constructor)

  ::Media add_media(OSType type, TimeScale scale) const {
    const ::Media media = NewTrackMedia(NewMovieTrack(movie_, 0, 0, 0), type, scale, nullptr, 0);
    EXPECT_NE(nullptr, media) << ToolboxErrorDetail();
    return media;
  }

 private:
  ::Movie movie_ = nullptr;
};

/// A handle that goes away with the test.
class TestHandle {
 public:
  explicit TestHandle(const Bytes& bytes = {})
      : handle_(NewHandle(static_cast<Size>(bytes.size()))) {
    if (!bytes.empty()) std::memcpy(*handle_, bytes.data(), bytes.size());
  }
  ~TestHandle() { DisposeHandle(handle_); }
  TestHandle(const TestHandle&) = delete;
  TestHandle& operator=(const TestHandle&) = delete;
  operator Handle() const { return handle_; }  // NOLINT(google-explicit-constructor)
  Bytes bytes() const {
    const auto* begin = reinterpret_cast<const uint8_t*>(*handle_);
    return {begin, begin + GetHandleSize(handle_)};
  }

 private:
  Handle handle_;
};

/// Adds a whole handle.
inline OSErr add_sample(::Media media, const Bytes& data, TimeValue duration,
                        const Bytes& description, SInt32 count = 1, SInt16 flags = 0,
                        TimeValue* time = nullptr) {
  const TestHandle data_handle(data);
  const TestHandle description_handle(description);
  return AddMediaSample(media, data_handle, 0, static_cast<UInt32>(data.size()), duration,
                        description_handle, count, flags, time);
}

/// All that GetMediaSample says.
struct ReadBack {
  OSErr error = noErr;
  Bytes data;
  SInt32 size = -1;
  TimeValue time = -1;
  TimeValue duration = -1;
  Bytes description;
  SInt32 description_index = -1;
  SInt32 count = -1;
  SInt16 flags = -1;
};

inline ReadBack read_sample(::Media media, TimeValue time, SInt32 most = 1) {
  ReadBack read;
  const TestHandle data;
  const TestHandle description;
  read.error = GetMediaSample(media, data, 0, &read.size, time, &read.time, &read.duration,
                              description, &read.description_index, most, &read.count, &read.flags);
  EXPECT_EQ(noErr, read.error) << ToolboxErrorDetail();
  read.data = data.bytes();
  read.description = description.bytes();
  EXPECT_EQ(static_cast<size_t>(read.size), read.data.size());
  return read;
}

/// The smallest descriptions that hold what matters; whole entries.
inline Bytes text_description() {
  Bytes description(59);
  description[3] = 59;
  std::memcpy(&description[4], "text", 4);
  description[15] = 1;
  return description;
}

/// 16 bits, big-endian, stereo.
inline Bytes sound_description() {
  Bytes description(36);
  description[3] = 36;
  std::memcpy(&description[4], "twos", 4);
  description[15] = 1;
  description[25] = 2;
  description[27] = 16;
  description[32] = 0xAC;
  description[33] = 0x44;
  return description;
}

}  // namespace toolbox::testing
