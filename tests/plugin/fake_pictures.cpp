#include "plugin/fake_pictures.h"

#include <map>
#include <memory>

#include "plugin/fake_host.h"
#include "plugin/fake_toolbox.h"

namespace fake_pictures {
namespace {

Picture prototype;
std::map<const void*, std::unique_ptr<Picture>> pictures;

}  // namespace

uint32_t Picture::word(int32_t x, int32_t y) const {
  return words[static_cast<size_t>(y * (width + kSpare) + x)];
}

Picture& next() { return prototype; }

REALpictureStruct* make(int32_t width, int32_t height) {
  auto made = std::make_unique<Picture>(prototype);
  made->width = width;
  made->height = height;
  const auto stride = static_cast<size_t>(width + kSpare);
  made->words.assign(stride * static_cast<size_t>(height), 0xEEEEEEEE);
  for (int32_t y = 0; y < height; ++y)
    made->rows.push_back(&made->words[static_cast<size_t>(y) * stride]);
  made->context.width = static_cast<size_t>(width);
  made->context.height = static_cast<size_t>(height);
  made->context.row_bytes = stride * 4;
  made->context.data = made->words.data();
  made->buffer.rows = made->rows.data();
  const REALobject object = fake_host::make_object("a picture");
  pictures[object] = std::move(made);
  return reinterpret_cast<REALpictureStruct*>(object);
}

Picture& of(REALpictureStruct* picture) { return *pictures.at(picture); }
bool is_picture(const void* object) { return pictures.count(object) != 0; }

void forget(const void* object) {
  const auto found = pictures.find(object);
  if (found == pictures.end()) return;
  if (found->second->locks != 0) fake_host::broken_contract("a picture dies while it is described");
  pictures.erase(found);
}

void start() {
  prototype = Picture();
  pictures.clear();
}

bool lock(REALpictureStruct* picture, REALpictureDescription* description, int32_t kind) {
  Picture& one = of(picture);
  *description = {};
  if (one.kind != kind) return false;
  ++one.locks;
  description->type = one.stated_kind != 0 ? one.stated_kind : kind;
  if (!one.has_no_data) {
    description->data = kind == 8 ? static_cast<void*>(&one.context) : &one.buffer;
  }
  description->width = one.width;
  description->height = one.height;
  return true;
}

void unlock(REALpictureStruct* picture) {
  // Hosts before 2012 are unlocked behind a failed lock, too.
  if (of(picture).locks == 0 && fake_host::host().version >= 2012)
    fake_host::broken_contract("unlocking a description that is not locked");
  if (of(picture).locks > 0) --of(picture).locks;
}

}  // namespace fake_pictures

// Bitmap contexts, which are those of pictures, and images, which are numbers.

using namespace fake_toolbox;

namespace {

const fake_pictures::Context& context_of(CGContextRef context) {
  return *reinterpret_cast<const fake_pictures::Context*>(context);
}

}  // namespace

extern "C" {

void* CGBitmapContextGetData(CGContextRef context) { return context_of(context).data; }
size_t CGBitmapContextGetWidth(CGContextRef context) { return context_of(context).width; }
size_t CGBitmapContextGetHeight(CGContextRef context) { return context_of(context).height; }
size_t CGBitmapContextGetBitsPerPixel(CGContextRef context) {
  return context_of(context).bits_per_pixel;
}
size_t CGBitmapContextGetBytesPerRow(CGContextRef context) { return context_of(context).row_bytes; }
CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef context) {
  return context_of(context).alpha_info;
}
CGImageRef CGBitmapContextCreateImage(CGContextRef) {
  return reference<CGImageRef>(answer("CGBitmapContextCreateImage"));
}
void CGImageRelease(CGImageRef image) { answer("CGImageRelease", image); }
OSStatus QDBeginCGContext(CGrafPtr port, CGContextRef* context) {
  *context = nullptr;
  const auto error = static_cast<OSStatus>(answer("QDBeginCGContext", port));
  if (error != noErr || port == reference<CGrafPtr>(toolbox().answers["undrawable port"]))
    return paramErr;
  *context = reference<CGContextRef>(77);
  return noErr;
}
OSStatus QDEndCGContext(CGrafPtr port, CGContextRef* context) {
  *context = nullptr;
  return static_cast<OSStatus>(answer("QDEndCGContext", port));
}
void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
  answer("CGContextDrawImage", context, static_cast<int64_t>(rect.x), static_cast<int64_t>(rect.y),
         static_cast<int64_t>(rect.width), static_cast<int64_t>(rect.height), image);
}
void CGContextFlush(CGContextRef context) { answer("CGContextFlush", context); }

RgnHandle GetTrackClipRgn(Track track) {
  return reference<RgnHandle>(answer("GetTrackClipRgn", track));
}
void SetTrackClipRgn(Track track, RgnHandle region) { answer("SetTrackClipRgn", track, region); }

}  // extern "C"
