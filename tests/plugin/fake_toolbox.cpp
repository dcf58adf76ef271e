// The toolbox calls that the module makes, scripted.
#include "plugin/fake_toolbox.h"

#include <cstdlib>
#include <cstring>
#include <set>

namespace fake_toolbox {
namespace {

Toolbox current;
int locks = 0;

struct Block {
  Ptr bytes;
  Size size;
};
std::set<Handle> handles;

Handle new_block(Ptr bytes, Size size) {
  auto* block = new Block{bytes, size};
  handles.insert(&block->bytes);
  return &block->bytes;
}

void check(Handle handle) {
  if (!handles.count(handle)) std::abort();
}

std::string text(const void* reference) {
  return std::to_string(reinterpret_cast<uintptr_t>(reference));
}
std::string text(int64_t number) { return std::to_string(number); }

template <class... Arguments>
int64_t answer(const char* name, Arguments... arguments) {
  std::string call = std::string(name) + "(";
  const char* comma = "";
  ((call += comma + text(arguments), comma = ", "), ...);
  current.calls.push_back(call + ")");
  return current.answers[name];
}

template <class Reference>
Reference reference(int64_t token) {
  return reinterpret_cast<Reference>(static_cast<uintptr_t>(token));
}

}  // namespace

Toolbox& toolbox() { return current; }
void start() { current = Toolbox(); }
int live_handles() { return static_cast<int>(handles.size()); }
int handle_locks() { return locks; }

}  // namespace fake_toolbox

using namespace fake_toolbox;

extern "C" {

OSErr GetMoviesError() { return current.error; }

SInt32 GetMovieTrackCount(Movie movie) {
  return static_cast<SInt32>(answer("GetMovieTrackCount", movie));
}
Track GetMovieIndTrack(Movie movie, SInt32 index) {
  return reference<Track>(answer("GetMovieIndTrack", movie, index));
}
Track GetMovieTrack(Movie movie, SInt32 id) {
  return reference<Track>(answer("GetMovieTrack", movie, id));
}
Track GetMovieIndTrackType(Movie movie, SInt32 index, OSType type, SInt32 flags) {
  return reference<Track>(answer("GetMovieIndTrackType", movie, index, type, flags));
}

Media GetTrackMedia(Track track) { return reference<Media>(answer("GetTrackMedia", track)); }
SInt32 GetTrackID(Track track) { return static_cast<SInt32>(answer("GetTrackID", track)); }
SInt16 GetTrackVolume(Track track) { return static_cast<SInt16>(answer("GetTrackVolume", track)); }
Boolean GetTrackEnabled(Track track) {
  return static_cast<Boolean>(answer("GetTrackEnabled", track));
}
void GetTrackDimensions(Track track, Fixed* width, Fixed* height) {
  answer("GetTrackDimensions", track);
  *width = static_cast<Fixed>(current.answers["width"]);
  *height = static_cast<Fixed>(current.answers["height"]);
}
TimeValue GetTrackDuration(Track track) {
  return static_cast<TimeValue>(answer("GetTrackDuration", track));
}
TimeValue GetTrackOffset(Track track) {
  return static_cast<TimeValue>(answer("GetTrackOffset", track));
}
SInt16 GetTrackLayer(Track track) { return static_cast<SInt16>(answer("GetTrackLayer", track)); }
UInt32 GetTrackCreationTime(Track track) {
  return static_cast<UInt32>(answer("GetTrackCreationTime", track));
}
UInt32 GetTrackModificationTime(Track track) {
  return static_cast<UInt32>(answer("GetTrackModificationTime", track));
}
void GetTrackMatrix(Track track, MatrixRecord* matrix) {
  answer("GetTrackMatrix", track);
  *matrix = current.matrix;
}
void GetTrackNextInterestingTime(Track track, SInt16 flags, TimeValue time, Fixed rate,
                                 TimeValue* found_time, TimeValue* found_duration) {
  answer("GetTrackNextInterestingTime", track, flags, time, rate, *found_time, *found_duration);
  *found_time = current.found_time;
  *found_duration = current.found_duration;
}

MediaHandler GetMediaHandler(Media media) {
  return reference<MediaHandler>(answer("GetMediaHandler", media));
}
void GetMediaHandlerDescription(Media media, OSType* type, Str255 name, OSType* manufacturer) {
  *type = static_cast<OSType>(answer("GetMediaHandlerDescription", media, name, manufacturer));
}
SInt32 GetMediaSampleCount(Media media) {
  return static_cast<SInt32>(answer("GetMediaSampleCount", media));
}
SInt32 GetMediaSampleDescriptionCount(Media media) {
  return static_cast<SInt32>(answer("GetMediaSampleDescriptionCount", media));
}
void GetMediaSampleDescription(Media media, SInt32 index, Handle handle) {
  answer("GetMediaSampleDescription", media, index);
  check(handle);
  auto* block = reinterpret_cast<Block*>(handle);
  block->size = static_cast<Size>(current.sample_description.size());
  block->bytes =
      static_cast<Ptr>(std::realloc(block->bytes, current.sample_description.size() + 1));
  std::memcpy(block->bytes, current.sample_description.data(), current.sample_description.size());
}
OSErr GetMediaDataRefCount(Media media, SInt16* count) {
  *count = static_cast<SInt16>(current.answers["count"]);
  return static_cast<OSErr>(answer("GetMediaDataRefCount", media));
}

Handle NewHandle(Size size) {
  return new_block(static_cast<Ptr>(std::malloc(size ? static_cast<size_t>(size) : 1)), size);
}
Handle NewEmptyHandle() { return new_block(nullptr, 0); }
Size GetHandleSize(Handle handle) {
  check(handle);
  return reinterpret_cast<Block*>(handle)->size;
}
void HLock(Handle handle) {
  check(handle);
  ++locks;
}
void HUnlock(Handle handle) {
  check(handle);
  --locks;
}
void DisposeHandle(Handle handle) {
  check(handle);
  handles.erase(handle);
  std::free(*handle);
  delete reinterpret_cast<Block*>(handle);
}

}  // extern "C"
