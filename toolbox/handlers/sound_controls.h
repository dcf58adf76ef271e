// What is set at a sound media while its movie is open, and at media headers so that it is saved.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/status.h"

namespace toolbox {

class Media;

/// Forgotten when the movie is closed: files have no place for it.
struct SoundControls {
  std::vector<uint32_t> bands;  // centre frequencies, Hz, unsigned 16.16
  bool is_metered = false;
  int16_t bass = 0;
  int16_t treble = 0;
  uintptr_t output_component = 0;
};

/// From -128, left, to 128, right. What a file holds beyond counts as the nearest of these; without
/// a header it is 0. Fails: as read_atom().
Result<int16_t> sound_balance(const Media& media);
Status set_sound_balance(Media& media, int16_t balance);

/// 8.8: the track's volume times the movie's, 0 when either is muted.
int16_t effective_volume(const Media& media);

struct GraphicsMode {
  uint16_t mode = 0;
  std::array<uint16_t, 3> color{};  // red, green, blue
};

/// As the media's header has it; nothing but zeros without one. Fails: as read_atom().
Result<GraphicsMode> graphics_mode(const Media& media);

/// A header that is missing is made. Fails: featureUnsupported for a media whose header has another
/// form, as read_atom().
Status set_graphics_mode(Media& media, const GraphicsMode& mode);

}  // namespace toolbox
