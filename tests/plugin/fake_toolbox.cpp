// The toolbox calls that the module makes, scripted.
#include "plugin/fake_toolbox.h"

#include <cstdlib>
#include <cstring>
#include <set>

#include "plugin/fake_calls.h"

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

void fill(Handle handle, const std::string& bytes) {
  check(handle);
  auto* block = reinterpret_cast<Block*>(handle);
  block->size = static_cast<Size>(bytes.size());
  block->bytes = static_cast<Ptr>(std::realloc(block->bytes, bytes.size() + 1));
  std::memcpy(block->bytes, bytes.data(), bytes.size());
}

}  // namespace

Toolbox& toolbox() { return current; }
void start() { current = Toolbox(); }
void fill_handle(Handle handle, const std::string& bytes) { fill(handle, bytes); }
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
void SetTrackVolume(Track track, SInt16 volume) { answer("SetTrackVolume", track, volume); }
void SetTrackEnabled(Track track, Boolean on) { answer("SetTrackEnabled", track, on); }
void SetTrackDimensions(Track track, Fixed width, Fixed height) {
  answer("SetTrackDimensions", track, width, height);
}
void SetTrackLayer(Track track, SInt16 layer) { answer("SetTrackLayer", track, layer); }
void SetTrackOffset(Track track, TimeValue offset) { answer("SetTrackOffset", track, offset); }
void SetTrackMatrix(Track track, const MatrixRecord* matrix) {
  answer("SetTrackMatrix", track);
  current.matrix = *matrix;
}
Fixed Long2Fix(SInt32 value) { return value * 65536; }
OSErr QuadToQuadMatrix(const FixedPoint source[4], const FixedPoint dest[4], MatrixRecord*) {
  return static_cast<OSErr>(answer("QuadToQuadMatrix", source[2].x, source[2].y, dest[0].x,
                                   dest[0].y, dest[2].x, dest[2].y));
}

OSErr ScaleTrackSegment(Track track, TimeValue start, TimeValue old_length, TimeValue new_length) {
  return static_cast<OSErr>(answer("ScaleTrackSegment", track, start, old_length, new_length));
}
OSErr InsertTrackSegment(Track from, Track to, TimeValue in, TimeValue length, TimeValue out) {
  return static_cast<OSErr>(answer("InsertTrackSegment", from, to, in, length, out));
}
OSErr InsertEmptyTrackSegment(Track track, TimeValue start, TimeValue length) {
  return static_cast<OSErr>(answer("InsertEmptyTrackSegment", track, start, length));
}
OSErr DeleteTrackSegment(Track track, TimeValue start, TimeValue length) {
  return static_cast<OSErr>(answer("DeleteTrackSegment", track, start, length));
}
OSErr ScaleMovieSegment(Movie movie, TimeValue start, TimeValue old_length, TimeValue new_length) {
  return static_cast<OSErr>(answer("ScaleMovieSegment", movie, start, old_length, new_length));
}
OSErr InsertMovieSegment(Movie from, Movie to, TimeValue in, TimeValue length, TimeValue out) {
  return static_cast<OSErr>(answer("InsertMovieSegment", from, to, in, length, out));
}
OSErr InsertEmptyMovieSegment(Movie movie, TimeValue start, TimeValue length) {
  return static_cast<OSErr>(answer("InsertEmptyMovieSegment", movie, start, length));
}
OSErr DeleteMovieSegment(Movie movie, TimeValue start, TimeValue length) {
  return static_cast<OSErr>(answer("DeleteMovieSegment", movie, start, length));
}
OSErr AddClonedTrackToMovie(Track track, Movie movie, SInt32 flags, Track* clone) {
  const auto status = static_cast<OSErr>(answer("AddClonedTrackToMovie", track, movie, flags));
  *clone = reference<Track>(current.answers["clone"]);
  return status;
}
OSErr DeleteTrackReference(Track track, OSType type, SInt32 index) {
  return static_cast<OSErr>(answer("DeleteTrackReference", track, type, index));
}
void DisposeTrackMedia(Media media) { answer("DisposeTrackMedia", media); }

OSStatus QTGetMoviePropertyInfo(Movie movie, OSType kind, OSType id, OSType*, ByteCount* size,
                                UInt32*) {
  *size = static_cast<ByteCount>(current.answers["property size"]);
  return static_cast<OSStatus>(answer("QTGetMoviePropertyInfo", movie, kind, id));
}
OSStatus QTGetMovieProperty(Movie movie, OSType kind, OSType id, ByteCount size, void* value,
                            ByteCount*) {
  std::memcpy(value, &current.answers["property"], size);
  return static_cast<OSStatus>(answer("QTGetMovieProperty", movie, kind, id, size));
}
OSStatus QTSetMovieProperty(Movie movie, OSType kind, OSType id, ByteCount size, const void*) {
  return static_cast<OSStatus>(answer("QTSetMovieProperty", movie, kind, id, size));
}
OSStatus QTGetTrackPropertyInfo(Track track, OSType kind, OSType id, OSType*, ByteCount* size,
                                UInt32*) {
  *size = static_cast<ByteCount>(current.answers["property size"]);
  return static_cast<OSStatus>(answer("QTGetTrackPropertyInfo", track, kind, id));
}
OSStatus QTSetTrackProperty(Track track, OSType kind, OSType id, ByteCount size, const void*) {
  return static_cast<OSStatus>(answer("QTSetTrackProperty", track, kind, id, size));
}

void GetTrackNextInterestingTime(Track track, SInt16 flags, TimeValue time, Fixed rate,
                                 TimeValue* found_time, TimeValue* found_duration) {
  answer("GetTrackNextInterestingTime", track, flags, time, rate, *found_time,
         found_duration ? *found_duration : -1);
  *found_time = current.found_time;
  if (!current.sample_times.empty()) {
    const bool edge_counts = (flags & nextTimeEdgeOK) != 0;
    *found_time = -1;
    for (const TimeValue each : current.sample_times) {
      if (*found_time < 0 && (each > time || (edge_counts && each == time))) *found_time = each;
    }
  }
  if (found_duration) *found_duration = current.found_duration;
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
  fill(handle, current.sample_description);
}
OSErr GetMediaSample(Media media, Handle data, SInt32 limit, SInt32* size, TimeValue time,
                     TimeValue* sample_time, TimeValue* duration, Handle description,
                     SInt32* description_index, SInt32 most, SInt32* count, SInt16* flags) {
  const auto at = [](const auto* output) { return output ? int64_t{*output} : -1; };
  const auto error =
      static_cast<OSErr>(answer("GetMediaSample", media, limit, size, time, at(sample_time),
                                at(duration), at(description_index), most, at(count), at(flags)));
  fill(data, current.sample);
  if (description) fill(description, current.sample_description);
  if (error != noErr || !sample_time) return error;
  *sample_time = current.found_time;
  *duration = current.found_duration;
  *description_index = 2;
  *count = 3;
  *flags = -4;
  return noErr;
}
OSErr BeginMediaEdits(Media media) { return static_cast<OSErr>(answer("BeginMediaEdits", media)); }
OSErr EndMediaEdits(Media media) { return static_cast<OSErr>(answer("EndMediaEdits", media)); }
OSErr GetMediaDataRefCount(Media media, SInt16* count) {
  *count = static_cast<SInt16>(current.answers["count"]);
  return static_cast<OSErr>(answer("GetMediaDataRefCount", media));
}

OSErr GetMediaDataRef(Media media, SInt16 index, Handle* reference, OSType* type,
                      SInt32* attributes) {
  *reference = NewHandle(0);
  *type = static_cast<OSType>(current.answers["reference type"]);
  *attributes = 0;
  return static_cast<OSErr>(answer("GetMediaDataRef", media, index));
}
OSErr SetMediaDataRef(Media media, SInt16 index, Handle, OSType type) {
  return static_cast<OSErr>(answer("SetMediaDataRef", media, index, type));
}
OSErr QTNewDataReferenceFromFSRef(const FSRef*, UInt32 flags, Handle*, OSType*) {
  return static_cast<OSErr>(answer("QTNewDataReferenceFromFSRef", flags));
}
OSErr ResolveAlias(const FSSpec*, AliasHandle, FSSpec*, Boolean*) {
  return static_cast<OSErr>(answer("ResolveAlias"));
}

Handle NewHandle(Size size) {
  return new_block(static_cast<Ptr>(std::malloc(size ? static_cast<size_t>(size) : 1)), size);
}
Handle NewHandleClear(Size size) {
  return new_block(static_cast<Ptr>(std::calloc(1, size ? static_cast<size_t>(size) : 1)), size);
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
