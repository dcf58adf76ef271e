// Pictures of the fake host, of either kind, with pixels that tests can look at; and the bitmap
// contexts that they are.
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <krz/abi.h>

#include <cstdint>
#include <vector>

namespace fake_pictures {

struct Context {
  size_t width = 0;
  size_t height = 0;
  size_t row_bytes = 0;
  size_t bits_per_pixel = 32;
  CGImageAlphaInfo alpha_info = kCGImageAlphaPremultipliedLast;
  void* data = nullptr;
};

struct Picture {
  int32_t width = 0;
  int32_t height = 0;
  bool has_alpha = false;
  int32_t kind = 8;         // 8, 10, or 0 for a host that describes none
  int32_t stated_kind = 0;  // what a lock says, if not the kind
  bool has_no_data = false;
  Context context;
  REALpixelBuffer buffer = {};
  std::vector<uint32_t> words;  // rows of width + kSpare
  std::vector<void*> rows;
  int locks = 0;  // of the description

  uint32_t word(int32_t x, int32_t y) const;
};
/// Words behind each row, which nobody may touch; 0xEEEEEEEE.
inline constexpr int32_t kSpare = 2;

/// What the next new pictures are like.
Picture& next();

/// A new picture, locked once; of `next()` but for its size.
REALpictureStruct* make(int32_t width, int32_t height);
Picture& of(REALpictureStruct* picture);
bool is_picture(const void* object);
void forget(const void* object);

/// Starts with pictures of bitmap contexts and none alive.
void start();

/// Counts one lock; the process ends when a description is unlocked that is not locked.
bool lock(REALpictureStruct* picture, REALpictureDescription* description, int32_t kind);
void unlock(REALpictureStruct* picture);

}  // namespace fake_pictures
