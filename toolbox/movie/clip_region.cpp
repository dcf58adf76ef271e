#include "movie/clip_region.h"

#include <algorithm>

#include "base/big_endian.h"

namespace toolbox {

namespace {

constexpr FourCC kClip = four_cc("clip");
constexpr FourCC kClipRegion = four_cc("crgn");
constexpr size_t kHeader = 8;

/// Far more than a region needs: a larger atom is damaged.
constexpr uint64_t kMostClipBytes = 1 << 20;

AtomIndex clip_in_file(const ClipOwner& owner) {
  return owner.atom == kNoAtom ? kNoAtom : owner.tree.find_child(owner.atom, kClip);
}

Status damaged(const ClipOwner& owner, const std::string& text) {
  const AtomIndex clip = clip_in_file(owner);
  if (clip == kNoAtom) return {badPublicMovieAtom, text};
  return owner.tree.failure(clip, badPublicMovieAtom, "crgn", owner.tree.node(clip).offset, text);
}

/// The bytes of the atoms inside `clip`; none when there is no such atom.
Result<Bytes> clip_payload(const ClipOwner& owner) {
  if (const AtomChanges::Change* const change = owner.changes.find(kClip)) {
    if (!change->atom) return Bytes();
    return Bytes(change->atom->begin() + kHeader, change->atom->end());
  }
  const AtomIndex clip = clip_in_file(owner);
  if (clip == kNoAtom) return Bytes();
  const ByteRange payload = owner.tree.payload(clip);
  if (payload.size > kMostClipBytes) {
    return damaged(owner, std::to_string(payload.size) + " bytes are too many for a region");
  }
  Bytes bytes(payload.size);
  TRY(payload.source->read(payload.offset, bytes));
  return bytes;
}

/// Where the region's atom stands among the bytes of the clip's; of no length where there is none.
struct Place {
  size_t offset = 0;
  size_t size = 0;
};

Place find_region(const Bytes& atoms) {
  size_t offset = 0;
  while (atoms.size() - offset >= kHeader) {
    const size_t left = atoms.size() - offset;
    size_t size = load_big_endian<uint32_t>(atoms.data() + offset);
    const bool is_region = load_big_endian<FourCC>(atoms.data() + offset + 4) == kClipRegion;
    // A region that claims more than there is, or to go on to the end, has what there is.
    if (is_region && (size > left || size == 0)) size = left;
    if (size < kHeader || size > left) break;
    if (is_region) return {offset, size};
    offset += size;
  }
  return {offset, 0};
}

Bytes atom_of(FourCC type, ByteView payload) {
  Bytes atom(kHeader + payload.size());
  store_big_endian(atom.data(), static_cast<uint32_t>(atom.size()));
  store_big_endian(atom.data() + 4, type);
  std::copy(payload.begin(), payload.end(), atom.begin() + kHeader);
  return atom;
}

Result<std::optional<Region>> read_region(const ClipOwner& owner, const Bytes& atoms) {
  const Place place = find_region(atoms);
  if (place.size == 0) return std::optional<Region>();
  const ByteView record = ByteView(atoms).subspan(place.offset + kHeader, place.size - kHeader);
  std::optional<Region> region = Region::from_record(record);
  if (!region) region = Region::bounds_of_record(record);
  if (!region) {
    return damaged(owner, std::to_string(record.size()) +
                              " bytes are too few for a region; set or clear the clip anew");
  }
  return region;
}

}  // namespace

Result<std::optional<Region>> read_clip(const ClipOwner& owner) {
  TRY_ASSIGN(const Bytes atoms, clip_payload(owner));
  return read_region(owner, atoms);
}

Result<bool> write_clip(const ClipOwner& owner, AtomChanges& changes,
                        const std::optional<Region>& region) {
  std::optional<Bytes> record;
  if (region && !(record = region->record())) {
    return Status(rgnTooBigErr,
                  "the region has more edges than 64 KiB can hold; take a simpler one");
  }
  // A clip that cannot be read is no reason not to replace it.
  Result<Bytes> old = clip_payload(owner);
  Bytes atoms = old.ok() ? old.take() : Bytes();
  const Result<std::optional<Region>> now = read_region(owner, atoms);
  if (old.status().ok() && now.ok() && now.value() == region) return false;
  const Place place = find_region(atoms);
  const auto at = atoms.begin() + static_cast<ptrdiff_t>(place.offset);
  const auto behind = atoms.erase(at, at + static_cast<ptrdiff_t>(place.size));
  if (record) {
    const Bytes atom = atom_of(kClipRegion, *record);
    atoms.insert(behind, atom.begin(), atom.end());
  }
  if (atoms.empty()) {
    changes.remove(kClip);
  } else {
    changes.replace(kClip, atom_of(kClip, atoms));
  }
  return true;
}

}  // namespace toolbox
