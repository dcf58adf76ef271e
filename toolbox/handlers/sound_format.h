// Sound that can be decoded without a codec: plain numbers, the two telephone laws and the simplest
// of the compressed forms.
#pragma once

#include <optional>
#include <vector>

#include "base/bytes.h"

namespace toolbox {

/// How the bytes of sound are to be read.
struct SoundFormat {
  enum class Kind : uint8_t { kInteger, kOffsetBinary, kFloat, kMuLaw, kALaw, kIma4 };

  static constexpr uint32_t kMostChannels = 256;

  Kind kind = Kind::kInteger;
  bool is_big_endian = true;
  uint8_t bytes_per_value = 2;  // of one channel; not of kIma4
  uint8_t bits = 16;            // that count of a whole number
  bool is_aligned_high = true;  // they are the upper bits of its bytes
  uint32_t channels = 1;        // 1 to kMostChannels

  /// The smallest run that can be decoded: its bytes, all channels, and its frames.
  uint32_t packet_bytes() const;
  uint32_t packet_frames() const;
};

/// The format of a sound description (whole entry); nothing for codes that are not decoded, and for
/// descriptions that are cut short or contradict themselves.
std::optional<SoundFormat> sound_format_of(ByteView description);

/// The channels that a sound description states, whatever its format; 0 when it does not say.
uint32_t sound_channels_of(ByteView description);

/// Puts the frames of whole packets behind those in `frames`, the channels of a frame side by side,
/// 1 for full scale; bytes behind the last whole packet are left out. What is no number counts as
/// 0.
void decode_sound(const SoundFormat& format, ByteView packets, std::vector<float>& frames);

}  // namespace toolbox
