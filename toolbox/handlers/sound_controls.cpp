#include "handlers/sound_controls.h"

#include <algorithm>

#include "atoms/atom_writer.h"
#include "atoms/media_header.h"
#include "file/memory_source.h"
#include "metadata/child_atoms.h"
#include "movie/current_atom.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr int16_t kAllRight = 128;
constexpr FourCC kGenericHeader = four_cc("gmhd");

Result<std::optional<Bytes>> info_atom(const Media& media, FourCC type) {
  const AtomTree& tree = media.track().movie().opened().tree;
  const AtomIndex minf =
      media.atom() == kNoAtom ? kNoAtom : tree.find_child(media.atom(), four_cc("minf"));
  return current_atom(tree, minf, media.info_atom_changes(), type);
}

// The first atom in `bytes`, decoded; its defaults when nothing stands there.
template <class Atom>
Result<Atom> decoded(ByteView bytes) {
  ChildAtom child;
  if (!take_child(bytes, child)) return Atom();
  const MemorySource source(to_bytes(child.payload), "media header");
  AtomFailure failure;
  std::optional<Atom> atom = decode_atom<Atom>(source.whole(), failure);
  if (atom) return std::move(*atom);
  return Status(failure.code, "the media header: " + failure.text);
}

template <class Atom>
Bytes encoded(const Atom& atom) {
  AtomWriter writer;
  writer.atom(atom);
  return writer.take();
}

template <class Atom>
Result<Atom> header_of(const Media& media) {
  TRY_ASSIGN(const std::optional<Bytes> bytes, info_atom(media, Atom::kType.type));
  if (!bytes) return Atom();
  return decoded<Atom>(*bytes);
}

/// Where the `gmin` atom lies in a `gmhd` atom; nothing when there is none.
std::optional<ByteView> find_generic_info(ByteView gmhd) {
  ChildAtom whole;
  if (!take_child(gmhd, whole)) return {};
  for (ByteView rest = whole.payload; !rest.empty();) {
    const ByteView begin = rest;
    ChildAtom child;
    if (!take_child(rest, child)) break;
    if (child.type == GenericMediaInfoAtom::kType.type) {
      return begin.first(begin.size() - rest.size());
    }
  }
  return {};
}

// The whole header with another `gmin` in place of the old one, or in front when it had none.
Bytes with_generic_info(const Bytes& gmhd, const GenericMediaInfoAtom& info) {
  ByteView rest = gmhd;
  ChildAtom whole;
  Bytes bytes;
  const size_t mark = begin_child(bytes, kGenericHeader);
  append(bytes, encoded(info));
  if (take_child(rest, whole)) {
    const std::optional<ByteView> old = find_generic_info(gmhd);
    const auto payload = whole.payload;
    const size_t cut = old ? static_cast<size_t>(old->data() - payload.data()) : 0;
    append(bytes, payload.first(cut));
    append(bytes, payload.subspan(cut + (old ? old->size() : 0)));
  }
  end_child(bytes, mark);
  return bytes;
}

bool has_other_header(const Media& media) {
  for (const FourCC type : {four_cc("nmhd"), four_cc("sthd"), four_cc("hmhd"), four_cc("smhd")}) {
    const Result<std::optional<Bytes>> found = info_atom(media, type);
    if (found.ok() && found.value()) return true;
  }
  return false;
}

}  // namespace

Result<int16_t> sound_balance(const Media& media) {
  TRY_ASSIGN(const SoundMediaHeaderAtom header, header_of<SoundMediaHeaderAtom>(media));
  return std::clamp<int16_t>(header.balance, -kAllRight, kAllRight);
}

Status set_sound_balance(Media& media, int16_t balance) {
  TRY_ASSIGN(SoundMediaHeaderAtom header, header_of<SoundMediaHeaderAtom>(media));
  header.balance = std::clamp<int16_t>(balance, -kAllRight, kAllRight);
  media.change_info_atoms().replace(SoundMediaHeaderAtom::kType.type, encoded(header));
  return {};
}

int16_t effective_volume(const Media& media) {
  const int32_t track = media.track().header().volume;
  const int32_t movie = media.track().movie().header().preferred_volume;
  if (track < 0 || movie < 0) return 0;
  return static_cast<int16_t>(std::min(track * movie / 256, INT16_MAX + 0));
}

Result<GraphicsMode> graphics_mode(const Media& media) {
  if (media.type() == four_cc("vide")) {
    TRY_ASSIGN(const VideoMediaHeaderAtom header, header_of<VideoMediaHeaderAtom>(media));
    return GraphicsMode{header.graphics_mode, header.op_color};
  }
  TRY_ASSIGN(const std::optional<Bytes> gmhd, info_atom(media, kGenericHeader));
  const std::optional<ByteView> info = gmhd ? find_generic_info(*gmhd) : std::nullopt;
  if (!info) return GraphicsMode();
  TRY_ASSIGN(const GenericMediaInfoAtom header, decoded<GenericMediaInfoAtom>(*info));
  return GraphicsMode{header.graphics_mode, header.op_color};
}

Status set_graphics_mode(Media& media, const GraphicsMode& mode) {
  if (media.type() == four_cc("vide")) {
    TRY_ASSIGN(VideoMediaHeaderAtom header, header_of<VideoMediaHeaderAtom>(media));
    header.flags = 1;
    header.graphics_mode = mode.mode;
    header.op_color = mode.color;
    media.change_info_atoms().replace(VideoMediaHeaderAtom::kType.type, encoded(header));
    return {};
  }
  TRY_ASSIGN(const std::optional<Bytes> gmhd, info_atom(media, kGenericHeader));
  if (!gmhd && has_other_header(media)) {
    return {featureUnsupported, "the header of this media has no place for a graphics mode"};
  }
  const std::optional<ByteView> info = gmhd ? find_generic_info(*gmhd) : std::nullopt;
  TRY_ASSIGN(GenericMediaInfoAtom header, decoded<GenericMediaInfoAtom>(info.value_or(ByteView())));
  header.graphics_mode = mode.mode;
  header.op_color = mode.color;
  media.change_info_atoms().replace(kGenericHeader,
                                    with_generic_info(gmhd.value_or(Bytes()), header));
  return {};
}

}  // namespace toolbox
