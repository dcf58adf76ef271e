#include "movie/channel_layout.h"

#include <algorithm>

#include "base/big_endian.h"

namespace toolbox {

namespace {

constexpr FourCC kLayoutAtom = four_cc("chan");
constexpr size_t kVersionAt = 16;
constexpr size_t kChannelsAt = 24;
constexpr size_t kWideChannelsAt = 48;  // version 2
constexpr size_t kLayoutHeadBytes = 12;
constexpr size_t kDescriptionBytes = 20;
constexpr uint32_t kMono = 0x00640001;
constexpr uint32_t kStereo = 0x00650002;

uint32_t number_at(ByteView bytes, size_t at) { return load_big_endian<uint32_t>(&bytes[at]); }

/// An atom at `at` that lies inside the description; its size, or 0.
size_t atom_size(ByteView description, size_t at) {
  if (at + 8 > description.size()) return 0;
  const uint32_t size = number_at(description, at);
  return size >= 8 && size <= description.size() - at ? size : 0;
}

/// Where the atoms behind the fields of a sound description begin. The fields of version 1 are
/// missing in files where that number means something else.
size_t atoms_begin(ByteView description) {
  const uint16_t version = load_big_endian<uint16_t>(&description[kVersionAt]);
  if (version == 2) return 72;
  if (version != 1) return 36;
  return atom_size(description, 36) != 0 && number_at(description, 40) > 0x20000000 ? 36 : 52;
}

struct Place {
  size_t at = 0;
  size_t size = 0;  // 0: there is none
};

enum class Wave { kLookInside, kSkip };

/// The layout atom, which may stand inside `wave`, but not deeper.
Place find_layout(ByteView description, size_t at, Wave wave = Wave::kLookInside) {
  while (const size_t size = atom_size(description, at)) {
    const FourCC type = number_at(description, at + 4);
    if (type == kLayoutAtom && size >= 12 + kLayoutHeadBytes) return {at, size};
    if (type == four_cc("wave") && wave == Wave::kLookInside) {
      const Place inside = find_layout(description.first(at + size), at + 8, Wave::kSkip);
      if (inside.size != 0) return inside;
    }
    at += size;
  }
  return {};
}

/// Where the last whole atom ends; a terminator and loose bytes may stand behind it.
size_t atoms_end(ByteView description) {
  size_t at = std::min(atoms_begin(description), description.size());
  while (const size_t size = atom_size(description, at)) {
    if (number_at(description, at + 4) == 0) break;  // a terminator
    at += size;
  }
  return at;
}

bool is_sound(ByteView description) { return description.size() >= 36; }

ChannelLayout decoded(ByteView payload) {
  ChannelLayout layout{
      .tag = number_at(payload, 0), .bitmap = number_at(payload, 4), .descriptions = {}};
  const size_t stated = number_at(payload, 8);
  const size_t count = std::min(stated, (payload.size() - kLayoutHeadBytes) / kDescriptionBytes);
  for (size_t i = 0; i < count; ++i) {
    const size_t at = kLayoutHeadBytes + i * kDescriptionBytes;
    layout.descriptions.push_back(
        {.label = number_at(payload, at),
         .flags = number_at(payload, at + 4),
         .coordinates = {number_at(payload, at + 8), number_at(payload, at + 12),
                         number_at(payload, at + 16)}});
  }
  return layout;
}

ChannelLayout by_count(ByteView description) {
  const bool is_wide = load_big_endian<uint16_t>(&description[kVersionAt]) == 2 &&
                       description.size() >= kWideChannelsAt + 4;
  const uint32_t channels = is_wide ? number_at(description, kWideChannelsAt)
                                    : load_big_endian<uint16_t>(&description[kChannelsAt]);
  if (channels == 1) return {.tag = kMono, .bitmap = 0, .descriptions = {}};
  if (channels == 2) return {.tag = kStereo, .bitmap = 0, .descriptions = {}};
  ChannelLayout layout;
  // Left, right, centre, low frequencies, ...: labels count from 1.
  for (uint32_t i = 0; i < std::min<uint32_t>(channels, 64); ++i) {
    layout.descriptions.push_back({.label = i + 1});
  }
  return layout;
}

Bytes encoded(const ChannelLayout& layout) {
  Bytes bytes;
  const auto number = [&](uint32_t value) {
    bytes.resize(bytes.size() + 4);
    store_big_endian(bytes.data() + bytes.size() - 4, value);
  };
  number(static_cast<uint32_t>(12 + kLayoutHeadBytes +
                               layout.descriptions.size() * kDescriptionBytes));
  number(kLayoutAtom);
  number(0);
  number(layout.tag);
  number(layout.bitmap);
  number(static_cast<uint32_t>(layout.descriptions.size()));
  for (const ChannelDescription& each : layout.descriptions) {
    number(each.label);
    number(each.flags);
    for (const uint32_t coordinate : each.coordinates) number(coordinate);
  }
  return bytes;
}

}  // namespace

Result<std::optional<ChannelLayout>> layout_of(const Track& track) {
  const Media* media = track.media();
  if (media == nullptr || media->type() != four_cc("soun")) return std::optional<ChannelLayout>();
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media->descriptions());
  if (descriptions->empty() || !is_sound(descriptions->front())) {
    return std::optional<ChannelLayout>();
  }
  const ByteView description = descriptions->front();
  const Place place = find_layout(description, atoms_begin(description));
  if (place.size == 0) return std::optional<ChannelLayout>(by_count(description));
  return std::optional<ChannelLayout>(decoded(description.subspan(place.at + 12, place.size - 12)));
}

Result<std::optional<ChannelLayout>> layout_of(const Movie& movie) {
  for (const auto& track : movie.tracks()) {
    if (!track->enabled()) continue;
    TRY_ASSIGN(std::optional<ChannelLayout> layout, layout_of(*track));
    if (layout) return layout;
  }
  return std::optional<ChannelLayout>();
}

Status set_layout(Track& track, const ChannelLayout& layout) {
  Media* media = track.media();
  if (media == nullptr) return {paramErr, "the track has no media"};
  TRY_ASSIGN(const std::vector<Bytes>* known, media->descriptions());
  if (known->empty() || !is_sound(known->front())) {
    return {paramErr, "the track has no sound description"};
  }
  Bytes description = known->front();
  const Place place = find_layout(description, atoms_begin(description));
  const Bytes atom = encoded(layout);
  if (place.size != 0) {
    const auto begin = description.begin() + static_cast<ptrdiff_t>(place.at);
    description.erase(begin, begin + static_cast<ptrdiff_t>(place.size));
    // An atom around it would be wrong about its own length: the new one stands outside of it.
    if (place.at != atoms_begin(known->front())) {
      size_t at = atoms_begin(known->front());
      while (const size_t size = atom_size(known->front(), at)) {
        if (at < place.at && place.at < at + size) {
          store_big_endian(description.data() + at, static_cast<uint32_t>(size - place.size));
        }
        at += size;
      }
    }
  }
  description.insert(description.begin() + static_cast<ptrdiff_t>(atoms_end(description)),
                     atom.begin(), atom.end());
  store_big_endian(description.data(), static_cast<uint32_t>(description.size()));
  TRY_ASSIGN(std::vector<Bytes> * descriptions, media->change_descriptions());
  descriptions->front() = std::move(description);
  return {};
}

}  // namespace toolbox
