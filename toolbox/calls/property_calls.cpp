// The calls of QuickTime/Movies.h over properties that are named by class and ID.
#include <cstring>

#include "calls/guard.h"
#include "calls/references.h"
#include "movie/apertures.h"
#include "movie/channel_layout.h"

using namespace toolbox::calls;
using toolbox::Bytes;
using toolbox::ChannelLayout;
using toolbox::Result;
using toolbox::Status;

namespace {

constexpr ByteCount kLayoutHeadBytes = 12;
constexpr ByteCount kDescriptionBytes = 20;

Status not_supported() { return {kQTPropertyNotSupportedErr, "there is no such property here"}; }

Status bad_size(ByteCount size, ByteCount wanted) {
  return {kQTPropertyBadValueSizeErr,
          "the property has " + std::to_string(wanted) + " bytes, not " + std::to_string(size)};
}

/// The value of a property as callers have it in memory, or not_supported().
Result<Bytes> value_of(std::optional<ChannelLayout> layout) {
  if (!layout) return not_supported();
  Bytes bytes;
  const auto number = [&](uint32_t value) {
    const auto* begin = reinterpret_cast<const uint8_t*>(&value);
    bytes.insert(bytes.end(), begin, begin + sizeof value);
  };
  number(layout->tag);
  number(layout->bitmap);
  number(static_cast<uint32_t>(layout->descriptions.size()));
  for (const toolbox::ChannelDescription& each : layout->descriptions) {
    number(each.label);
    number(each.flags);
    for (const uint32_t coordinate : each.coordinates) number(coordinate);
  }
  return bytes;
}

template <class T>
Bytes bytes_of(const T& value) {
  const auto* begin = reinterpret_cast<const uint8_t*>(&value);
  return Bytes(begin, begin + sizeof value);
}

/// The properties of pictures, which movies and tracks answer alike but for the mode.
template <class Owner>
Result<Bytes> visual_property(const Owner& owner, OSType id) {
  if (id != kQTVisualPropertyID_HasApertureModeDimensions) return not_supported();
  return bytes_of(static_cast<uint8_t>(has_apertures(owner)));
}

Result<Bytes> movie_property(const toolbox::Movie& movie, OSType property_class, OSType id) {
  if (property_class == kQTPropertyClass_Visual) {
    if (id == kQTVisualPropertyID_ApertureMode) return bytes_of(movie.session().aperture_mode);
    return visual_property(movie, id);
  }
  if (property_class != kQTPropertyClass_Audio) return not_supported();
  if (id == kQTAudioPropertyID_RateChangesPreservePitch) {
    return bytes_of(static_cast<uint8_t>(movie.session().preserves_pitch));
  }
  if (id == kQTAudioPropertyID_Pitch) return bytes_of(movie.session().pitch_cents);
  if (id != kQTAudioPropertyID_SummaryChannelLayout) return not_supported();
  TRY_ASSIGN(std::optional<ChannelLayout> layout, layout_of(movie));
  return value_of(std::move(layout));
}

Result<Bytes> track_property(const toolbox::Track& track, OSType property_class, OSType id) {
  if (property_class == kQTPropertyClass_Visual) return visual_property(track, id);
  if (property_class != kQTPropertyClass_Audio || id != kQTAudioPropertyID_TrackChannelLayout) {
    return not_supported();
  }
  TRY_ASSIGN(std::optional<ChannelLayout> layout, layout_of(track));
  return value_of(std::move(layout));
}

/// The kind of value, as its four-character code.
OSType type_of(OSType id) {
  switch (id) {
    case kQTAudioPropertyID_RateChangesPreservePitch:
    case kQTVisualPropertyID_HasApertureModeDimensions:
      return 0x626F6F6C;  // 'bool'
    case kQTVisualPropertyID_ApertureMode:
      return 0x6F737479;  // 'osty'
    case kQTAudioPropertyID_Pitch:
      return 0x66333220;  // 'f32 '
    default:
      return 0x6163686C;  // 'achl'
  }
}

bool is_settable(OSType id) {
  return id != kQTAudioPropertyID_SummaryChannelLayout &&
         id != kQTVisualPropertyID_HasApertureModeDimensions;
}

Status answer_info(const Result<Bytes>& value, OSType id, OSType* type, ByteCount* size,
                   UInt32* flags) {
  if (!value.ok()) return Status(value.status().code(), value.status().message());
  if (type != nullptr) *type = type_of(id);
  if (size != nullptr) *size = value.value().size();
  if (flags != nullptr) *flags = is_settable(id) ? 1 : 0;
  return {};
}

Status answer_value(const Result<Bytes>& value, ByteCount size, void* buffer, ByteCount* used) {
  if (!value.ok()) return Status(value.status().code(), value.status().message());
  const Bytes& bytes = value.value();
  if (buffer == nullptr) return {paramErr, "a place for the value is needed"};
  if (size != bytes.size()) return bad_size(size, bytes.size());
  std::memcpy(buffer, bytes.data(), bytes.size());
  if (used != nullptr) *used = bytes.size();
  return {};
}

Status read_only() {
  return {kQTPropertyReadOnlyErr, "whether there are aperture dimensions cannot be set"};
}

Status set_visual_property(toolbox::Movie& movie, OSType id, ByteCount size, const void* value) {
  if (id == kQTVisualPropertyID_HasApertureModeDimensions) return read_only();
  if (id != kQTVisualPropertyID_ApertureMode) return not_supported();
  OSType mode = 0;
  if (value == nullptr) return {paramErr, "a value is needed"};
  if (size != sizeof mode) return bad_size(size, sizeof mode);
  std::memcpy(&mode, value, sizeof mode);
  if (mode != kQTApertureMode_Classic && toolbox::Apertures().find(mode) == nullptr) {
    return {paramErr, toolbox::four_cc_text(mode) +
                          " is no aperture mode; they are clas, clea, prod and enco"};
  }
  movie.session().aperture_mode = mode;
  return {};
}

Status set_movie_property(toolbox::Movie& movie, OSType property_class, OSType id, ByteCount size,
                          const void* value) {
  if (property_class == kQTPropertyClass_Visual) return set_visual_property(movie, id, size, value);
  if (property_class != kQTPropertyClass_Audio) return not_supported();
  if (id == kQTAudioPropertyID_SummaryChannelLayout) {
    return {kQTPropertyReadOnlyErr, "the summary of the channels cannot be set"};
  }
  if (value == nullptr) return {paramErr, "a value is needed"};
  toolbox::SessionProperties& session = movie.session();
  if (id == kQTAudioPropertyID_RateChangesPreservePitch) {
    if (size != 1) return bad_size(size, 1);
    session.preserves_pitch = *static_cast<const uint8_t*>(value) != 0;
    return {};
  }
  if (id != kQTAudioPropertyID_Pitch) return not_supported();
  if (size != sizeof session.pitch_cents) return bad_size(size, sizeof session.pitch_cents);
  std::memcpy(&session.pitch_cents, value, size);
  return {};
}

Status set_track_property(toolbox::Track& track, OSType property_class, OSType id, ByteCount size,
                          const void* value) {
  if (property_class == kQTPropertyClass_Visual &&
      id == kQTVisualPropertyID_HasApertureModeDimensions) {
    return read_only();
  }
  if (property_class != kQTPropertyClass_Audio || id != kQTAudioPropertyID_TrackChannelLayout ||
      track.media() == nullptr || track.media()->type() != SoundMediaType) {
    return not_supported();
  }
  if (value == nullptr) return {paramErr, "a value is needed"};
  if (size < kLayoutHeadBytes) return bad_size(size, kLayoutHeadBytes);
  const auto* bytes = static_cast<const uint8_t*>(value);
  const auto number = [&](ByteCount at) {
    uint32_t found = 0;
    std::memcpy(&found, bytes + at, sizeof found);
    return found;
  };
  const uint32_t count = number(8);
  if (count > (size - kLayoutHeadBytes) / kDescriptionBytes) {
    return bad_size(size, kLayoutHeadBytes + ByteCount{count} * kDescriptionBytes);
  }
  ChannelLayout layout{.tag = number(0), .bitmap = number(4), .descriptions = {}};
  for (uint32_t i = 0; i < count; ++i) {
    const ByteCount at = kLayoutHeadBytes + i * kDescriptionBytes;
    layout.descriptions.push_back(
        {.label = number(at),
         .flags = number(at + 4),
         .coordinates = {number(at + 8), number(at + 12), number(at + 16)}});
  }
  return set_layout(track, layout);
}

}  // namespace

TOOLBOX_CALL OSStatus QTGetMoviePropertyInfo(Movie movie, OSType propertyClass, OSType propertyID,
                                             OSType* propertyType, ByteCount* size, UInt32* flags) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    return answer_info(movie_property(*found, propertyClass, propertyID), propertyID, propertyType,
                       size, flags);
  });
}

TOOLBOX_CALL OSStatus QTGetMovieProperty(Movie movie, OSType propertyClass, OSType propertyID,
                                         ByteCount size, void* value, ByteCount* used) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    return answer_value(movie_property(*found, propertyClass, propertyID), size, value, used);
  });
}

TOOLBOX_CALL OSStatus QTSetMovieProperty(Movie movie, OSType propertyClass, OSType propertyID,
                                         ByteCount size, const void* value) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    return set_movie_property(*found, propertyClass, propertyID, size, value);
  });
}

TOOLBOX_CALL OSStatus QTGetTrackPropertyInfo(Track track, OSType propertyClass, OSType propertyID,
                                             OSType* propertyType, ByteCount* size, UInt32* flags) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    return answer_info(track_property(*found, propertyClass, propertyID), propertyID, propertyType,
                       size, flags);
  });
}

TOOLBOX_CALL OSStatus QTGetTrackProperty(Track track, OSType propertyClass, OSType propertyID,
                                         ByteCount size, void* value, ByteCount* used) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    return answer_value(track_property(*found, propertyClass, propertyID), size, value, used);
  });
}

TOOLBOX_CALL OSStatus QTSetTrackProperty(Track track, OSType propertyClass, OSType propertyID,
                                         ByteCount size, const void* value) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    return set_track_property(*found, propertyClass, propertyID, size, value);
  });
}
