// Functions about the sound and the sizes of a track beyond what the module's classes say. Tracks
// are named by their handle, as QTTrackKRZ.TrackHandle gives it.
#include <Toolbox/Toolbox.h>

#include <cmath>
#include <cstring>
#include <new>
#include <vector>

#include "language/script.h"
#include "library/memory_block.h"
#include "library/parts.h"
#include "library/progress.h"
#include "object/exceptions.h"
#include "object/string.h"
#include "registry/tables.h"

namespace krz {

namespace {

/// The most levels that are handed to a script at once, and the most intervals, which may have
/// none.
constexpr size_t kMostBytes = 64 << 20;
constexpr uint32_t kMostIntervals = 1 << 23;

Track track_of(int32_t handle) {
  return reinterpret_cast<Track>(static_cast<uintptr_t>(static_cast<uint32_t>(handle)));
}

struct Levels {
  std::vector<float> values;
  uint32_t channels = 0;
  uint32_t intervals = 0;
  Progress progress;
};

OSErr take_levels(int64_t start, uint32_t channels, const float* peaks, const float* means,
                  void* context) {
  try {
    Levels& levels = *static_cast<Levels*>(context);
    levels.channels = channels;
    for (uint32_t i = 0; i < channels; ++i) {
      levels.values.push_back(peaks[i]);
      levels.values.push_back(means[i]);
    }
    const bool is_full = levels.values.size() * sizeof(float) > kMostBytes;
    if (is_full || ++levels.intervals > kMostIntervals) return memFullErr;
    levels.progress.show(start);
  } catch (const std::bad_alloc&) {
    return memFullErr;
  }
  return Script::is_interrupted() ? userCanceledErr : noErr;
}

// For each interval of `every` movie units and each channel two Singles: the peak and the root of
// the mean square, 1 for full scale.
REALmemoryBlockStruct* sound_levels(int32_t track, int32_t from, int32_t until, int32_t every,
                                    int32_t* channels) {
  Levels levels{{}, 0, 0, Progress("time", from, std::max(from, until))};
  const OSErr status =
      ToolboxMeasureTrackSound(track_of(track), from, until, every, take_levels, &levels);
  if (status == memFullErr) {
    raise_exception("IOException", "there are too many levels; ask for longer intervals", status);
  } else if (status != noErr && status != userCanceledErr) {
    raise_exception("IOException", ToolboxErrorDetail(), status);
  }
  if (status != noErr) return nullptr;
  const size_t size = levels.values.size() * sizeof(float);
  *channels = static_cast<int32_t>(levels.channels);
  REALmemoryBlockStruct* const block = new_memory_block(static_cast<int32_t>(size));
  if (block && size > 0) std::memcpy(memory_block_bytes(block), levels.values.data(), size);
  return block;
}

bool can_measure(int32_t track) { return ToolboxCanMeasureSound(track_of(track)) != 0; }

OSType code_of(REALstring text) {
  const std::string_view bytes = string_bytes(text);
  OSType code = 0;
  for (size_t i = 0; i < 4; ++i) {
    code = code << 8 | (i < bytes.size() ? static_cast<uint8_t>(bytes[i]) : uint32_t{' '});
  }
  return code;
}

// False for a track without sizes for the modes "clea", "prod" and "enco".
bool aperture(int32_t track, REALstring mode, double* width, double* height) {
  Fixed found_width = 0;
  Fixed found_height = 0;
  const OSErr status =
      ToolboxGetTrackAperture(track_of(track), code_of(mode), &found_width, &found_height);
  if (status == kQTPropertyNotSupportedErr) return false;
  if (status != noErr) {
    raise_exception("IOException", ToolboxErrorDetail(), status);
    return false;
  }
  *width = found_width / 65536.0;
  *height = found_height / 65536.0;
  return true;
}

void set_aperture(int32_t track, REALstring mode, double width, double height) {
  constexpr double kMost = 32767;
  const bool fits = width >= 0 && width <= kMost && height >= 0 && height <= kMost;
  if (!fits) {
    raise_exception("IOException", "a size lies between 0 and 32767", paramErr);
    return;
  }
  const auto fixed = [](double value) { return static_cast<Fixed>(std::lround(value * 65536)); };
  if (const OSErr status =
          ToolboxSetTrackAperture(track_of(track), code_of(mode), fixed(width), fixed(height));
      status != noErr) {
    raise_exception("IOException", ToolboxErrorDetail(), status);
  }
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(sound_levels,
                 "SoundLevels(trackHandle as integer, from as integer, until as integer, every as "
                 "integer, byref channels as integer) as memoryblock"),
    KRZ_FUNCTION(can_measure, "CanMeasureSound(trackHandle as integer) as boolean"),
    KRZ_FUNCTION(aperture,
                 "TrackAperture(trackHandle as integer, mode as string, byref width as double, "
                 "byref height as double) as boolean"),
    KRZ_FUNCTION(set_aperture,
                 "SetTrackAperture(trackHandle as integer, mode as string, width as double, height "
                 "as double)"),
};

}  // namespace

void register_movie_sound(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
