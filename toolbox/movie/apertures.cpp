#include "movie/apertures.h"

#include "atoms/atom_writer.h"
#include "atoms/sample_description.h"
#include "atoms/track_header.h"
#include "handlers/characteristics.h"
#include "metadata/child_atoms.h"
#include "movie/current_atom.h"
#include "movie/movie.h"
#include "movie/time_math.h"

namespace toolbox {

namespace {

constexpr FourCC kApertures = four_cc("tapt");
constexpr FourCC kClean = four_cc("clef");
constexpr FourCC kProduction = four_cc("prof");
constexpr FourCC kEncoded = four_cc("enof");

// Places in a description of pictures, from its start.
constexpr size_t kWidthAt = 32;
constexpr size_t kDepthAt = 82;
constexpr size_t kColorTableAt = 84;
constexpr size_t kFixedBytes = 86;

constexpr size_t kLeafPayloadBytes = 12;

Status bad_description(const std::string& text) {
  return {invalidSampleDescription, "the sample description " + text};
}

// Extensions stand behind the colour table, which the id 0 announces for few colours.
size_t extensions_at(ByteView description) {
  const auto depth = load_big_endian<uint16_t>(&description[kDepthAt]);
  const auto table = load_big_endian<int16_t>(&description[kColorTableAt]);
  const size_t palette_depth = depth > 32 ? depth - 32u : depth;
  if (table != 0 || palette_depth > 8 || description.size() < kFixedBytes + 8) return kFixedBytes;
  const size_t colors = size_t{load_big_endian<uint16_t>(&description[kFixedBytes + 6])} + 1;
  const size_t end = kFixedBytes + 8 + colors * 8;
  // Not every writer that says 0 has written a table.
  return end <= description.size() ? end : kFixedBytes;
}

std::optional<ByteView> find_extension(ByteView description, FourCC type) {
  ByteView rest = description.subspan(extensions_at(description));
  for (ChildAtom child; take_child(rest, child);) {
    if (child.type == type) return child.payload;
  }
  return {};
}

/// A length as a fraction; the numbers of a file have 32 bits, so that products need 128.
struct Length {
  Int128 numerator;
  Int128 denominator;
};

Result<int32_t> fixed(const Length& length) {
  const Int128 value = (length.numerator * 65536 + length.denominator / 2) / length.denominator;
  if (value > INT32_MAX) return bad_description("states a size beyond 32767");
  return static_cast<int32_t>(value);
}

struct PixelShape {
  uint32_t horizontal = 1;
  uint32_t vertical = 1;
};

Result<PixelShape> pixel_shape_of(ByteView description) {
  const std::optional<ByteView> shape = find_extension(description, four_cc("pasp"));
  if (!shape) return PixelShape();
  if (shape->size() < 8) return bad_description("has a shape of pixels (pasp) that is cut short");
  const PixelShape found{load_big_endian<uint32_t>(shape->data()),
                         load_big_endian<uint32_t>(shape->data() + 4)};
  return found.horizontal == 0 || found.vertical == 0 ? PixelShape() : found;
}

struct CleanAperture {
  Length width;
  Length height;
};

Result<std::optional<CleanAperture>> clean_aperture_of(ByteView description, uint16_t width,
                                                       uint16_t height) {
  const std::optional<ByteView> found = find_extension(description, four_cc("clap"));
  if (!found) return std::optional<CleanAperture>();
  if (found->size() < 32) return bad_description("has a clean aperture (clap) that is cut short");
  int64_t numbers[4];
  for (size_t i = 0; i < 4; ++i) numbers[i] = load_big_endian<int32_t>(found->data() + i * 4);
  for (const int64_t number : numbers) {
    if (number <= 0) return bad_description("has a clean aperture (clap) with a number below 1");
  }
  if (numbers[0] > width * numbers[1] || numbers[2] > height * numbers[3]) {
    return bad_description("has a clean aperture (clap) larger than the picture");
  }
  const auto part = [&](size_t at) { return Length{numbers[at], numbers[at + 1]}; };
  return std::optional<CleanAperture>({part(0), part(2)});
}

Result<ApertureSize> scaled(const Length& width, const Length& height, const PixelShape& shape) {
  ApertureSize size;
  // Only the width is ever scaled, also where pixels are higher than wide.
  TRY_ASSIGN(size.width,
             fixed({width.numerator * shape.horizontal, width.denominator * shape.vertical}));
  TRY_ASSIGN(size.height, fixed(height));
  return size;
}

Bytes encoded(const Apertures& apertures) {
  AtomWriter writer;
  const auto tapt = writer.begin(kApertures);
  const auto leaf = [&](FourCC type, const ApertureSize& size) {
    ApertureAtom atom;
    atom.width = size.width;
    atom.height = size.height;
    writer.atom(type, atom);
  };
  leaf(kClean, apertures.clean);
  leaf(kProduction, apertures.production);
  leaf(kEncoded, apertures.encoded);
  writer.end(tapt);
  return writer.take();
}

ApertureSize own_size(const Track& track) { return {track.header().width, track.header().height}; }

bool has_picture_descriptions(const Track& track, const std::vector<Bytes>& descriptions) {
  return track.media()->type() == four_cc("vide") && !descriptions.empty();
}

// What generating gives a track; nothing for one that is left alone by the call for movies.
Result<std::optional<Apertures>> generated(const Track& track) {
  if (track.media() == nullptr) return std::optional<Apertures>();
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, track.media()->descriptions());
  if (!has_picture_descriptions(track, *descriptions)) return std::optional<Apertures>();
  Result<Apertures> apertures = apertures_from(descriptions->front());
  if (!apertures.ok()) {
    return apertures.take_status().in_context("track " + std::to_string(track.id()) + ": ");
  }
  return std::optional<Apertures>(apertures.take());
}

}  // namespace

ApertureSize* Apertures::find(FourCC mode) {
  switch (mode) {
    case four_cc("clea"):
      return &clean;
    case four_cc("prod"):
      return &production;
    case four_cc("enco"):
      return &encoded;
    default:
      return nullptr;
  }
}

Result<Apertures> apertures_from(ByteView description) {
  if (description.size() < kFixedBytes) return bad_description("is too short for pictures");
  const auto width = load_big_endian<uint16_t>(&description[kWidthAt]);
  const auto height = load_big_endian<uint16_t>(&description[kWidthAt + 2]);
  TRY_ASSIGN(const PixelShape shape, pixel_shape_of(description));
  TRY_ASSIGN(const std::optional<CleanAperture> clean,
             clean_aperture_of(description, width, height));
  const Length whole_width{width, 1};
  const Length whole_height{height, 1};
  Apertures apertures;
  TRY_ASSIGN(apertures.encoded, scaled(whole_width, whole_height, PixelShape()));
  TRY_ASSIGN(apertures.production, scaled(whole_width, whole_height, shape));
  apertures.clean = apertures.production;
  if (clean) {
    TRY_ASSIGN(apertures.clean, scaled(clean->width, clean->height, shape));
  }
  return apertures;
}

Result<std::optional<Apertures>> apertures_of(const Track& track) {
  TRY_ASSIGN(
      const std::optional<Bytes> atom,
      current_atom(track.movie().opened().tree, track.atom(), track.atom_changes(), kApertures));
  if (!atom) return std::optional<Apertures>();
  Apertures apertures{own_size(track), own_size(track), own_size(track)};
  ByteView rest = ByteView(*atom);
  ChildAtom tapt;
  if (!take_child(rest, tapt))
    tapt.payload = ByteView(*atom).subspan(8);  // claims more than there is
  rest = tapt.payload;
  for (ChildAtom leaf; take_child(rest, leaf);) {
    ApertureSize* const size = leaf.type == kClean        ? &apertures.clean
                               : leaf.type == kProduction ? &apertures.production
                               : leaf.type == kEncoded    ? &apertures.encoded
                                                          : nullptr;
    if (size == nullptr) continue;
    if (leaf.payload.size() < kLeafPayloadBytes) {
      return Status(badPublicMovieAtom, "track " + std::to_string(track.id()) +
                                            ": its aperture dimensions (tapt) are cut short; "
                                            "generate or remove them");
    }
    *size = {load_big_endian<int32_t>(leaf.payload.data() + 4),
             load_big_endian<int32_t>(leaf.payload.data() + 8)};
  }
  return std::optional<Apertures>(apertures);
}

bool has_apertures(const Track& track) {
  if (const AtomChanges::Change* change = track.atom_changes().find(kApertures)) {
    return change->atom.has_value();
  }
  return track.atom() != kNoAtom &&
         track.movie().opened().tree.find_child(track.atom(), kApertures) != kNoAtom;
}

bool has_apertures(const Movie& movie) {
  for (const auto& track : movie.tracks()) {
    if (has_apertures(*track)) return true;
  }
  return false;
}

void set_apertures(Track& track, const Apertures& apertures) {
  track.change_atoms().replace(kApertures, encoded(apertures));
}

Status generate_apertures(Track& track, std::optional<ByteView> description) {
  if (track.media() == nullptr || !has_characteristic(track.media()->type(), four_cc("eyes"))) {
    return {invalidTrack, "the track has no pictures, and so no aperture dimensions"};
  }
  if (description) {
    TRY_ASSIGN(const Apertures apertures, apertures_from(*description));
    set_apertures(track, apertures);
    return {};
  }
  TRY_ASSIGN(const std::optional<Apertures> apertures, generated(track));
  set_apertures(track,
                apertures.value_or(Apertures{own_size(track), own_size(track), own_size(track)}));
  return {};
}

Status generate_apertures(Movie& movie) {
  std::vector<std::pair<Track*, Apertures>> due;
  for (const auto& track : movie.tracks()) {
    TRY_ASSIGN(const std::optional<Apertures> apertures, generated(*track));
    if (apertures) due.emplace_back(track.get(), *apertures);
  }
  for (const auto& [track, apertures] : due) set_apertures(*track, apertures);
  return {};
}

void remove_apertures(Track& track) {
  if (!has_apertures(track)) return;
  AtomChanges& changes = track.change_atoms();
  // One that the file never had is no change any more.
  if (track.atom() == kNoAtom ||
      track.movie().opened().tree.find_child(track.atom(), kApertures) == kNoAtom) {
    changes.forget(kApertures, 0);
  } else {
    changes.remove(kApertures);
  }
}

void remove_apertures(Movie& movie) {
  for (const auto& track : movie.tracks()) remove_apertures(*track);
  movie.session().aperture_mode = four_cc("clas");
}

ApertureSize shown_size(const Track& track) {
  const FourCC mode = track.movie().session().aperture_mode;
  if (mode == four_cc("clas")) return own_size(track);
  Result<std::optional<Apertures>> apertures = apertures_of(track);
  if (!apertures.ok() || !apertures.value()) return own_size(track);
  const ApertureSize* const size = apertures.value()->find(mode);
  return size == nullptr ? own_size(track) : *size;
}

}  // namespace toolbox
