// Times how a 32-bit world of 4096 by 4096 pixels becomes a host picture, and how memcpy takes the
// same pixels into new memory of the same kind, in turn; prints the least of both in milliseconds.
// The module's own code, in a host that has nothing but pictures.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "host/resolver.h"
#include "picture/picture.h"

struct REALpictureStruct {
  CGContextRef context;
  int locks;
};

namespace {

constexpr SInt16 kSide = 4096;
constexpr int kRounds = 9;
using Clock = std::chrono::steady_clock;

CGContextRef new_context() {
  return CGBitmapContextCreate(nullptr, kSide, kSide, 8, 0, nullptr,
                               kCGImageAlphaPremultipliedLast);
}

REALpictureStruct* new_picture(int32_t, int32_t, int32_t) {
  return new REALpictureStruct{new_context(), 1};
}
void lock_object(REALpictureStruct* picture) { ++picture->locks; }
void unlock_object(REALpictureStruct* picture) {
  if (--picture->locks > 0) return;
  CGContextRelease(picture->context);
  delete picture;
}
uint8_t lock_description(REALpictureStruct* picture, REALpictureDescription* description,
                         int32_t kind) {
  *description = {kind, picture->context, kSide, kSide};
  return kind == kPictureBitmapContext;
}

void* resolve(const char* name) {
  const struct {
    const char* name;
    void* function;
  } entries[] = {{"newPicture", reinterpret_cast<void*>(&new_picture)},
                 {"REALLockObject", reinterpret_cast<void*>(&lock_object)},
                 {"REALUnlockObject", reinterpret_cast<void*>(&unlock_object)},
                 {"REALLockPictureDescription", reinterpret_cast<void*>(&lock_description)}};
  for (const auto& entry : entries) {
    if (std::strcmp(entry.name, name) == 0) return entry.function;
  }
  return nullptr;
}

template <class Work>
void time_least(double& least, Work work) {
  const auto begin = Clock::now();
  work();
  const std::chrono::duration<double, std::milli> taken = Clock::now() - begin;
  if (taken.count() < least) least = taken.count();
}

}  // namespace

int main() {
  krz::gResolver = resolve;
  krz::rbversion = 2015;
  const Rect all = {0, 0, kSide, kSide};
  GWorldPtr world = nullptr;
  if (NewGWorld(&world, 32, &all, nullptr, nullptr, 0) != noErr) return 1;
  const Ptr pixels = GetPixBaseAddr(GetGWorldPixMap(world));
  const auto bytes = size_t{4} * kSide * kSide;
  for (size_t i = 0; i < bytes; ++i) pixels[i] = static_cast<char>(i * 31 >> 3);
  double build = 1e9, copy = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    REALpictureStruct* picture = nullptr;
    time_least(build, [&] { picture = krz::REALBuildPictureFromGWorld(world, false); });
    if (picture == nullptr) return 1;
    CGContextRef context = nullptr;
    time_least(copy, [&] {
      context = new_context();
      std::memcpy(CGBitmapContextGetData(context), pixels, bytes);
    });
    // The pixels of both are looked at: a copy that nobody reads might be none.
    const auto* built = static_cast<const uint8_t*>(CGBitmapContextGetData(picture->context));
    const auto* copied = static_cast<const uint8_t*>(CGBitmapContextGetData(context));
    if (built[bytes - 4] != copied[bytes - 3]) return 1;
    unlock_object(picture);
    CGContextRelease(context);
  }
  std::printf("%f %f\n", build, copy);
  return 0;
}
