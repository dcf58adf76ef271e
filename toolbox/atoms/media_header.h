// The headers of a media: its time scale and language, its handler, and how it is presented.
#pragma once

#include <string>
#include <string_view>

#include "atoms/atom_type.h"

namespace toolbox {

struct MediaHeaderAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("mdhd"), {.parent = four_cc("mdia"), .max_version = 1});

  uint64_t creation_time = 0;      // seconds since 1904-01-01
  uint64_t modification_time = 0;  // seconds since 1904-01-01
  uint32_t time_scale = 600;       // media ticks a second; 0 is damage
  uint64_t duration = 0;           // media ticks
  uint16_t language =
      0;  // below 0x400 a classic code, 0x7FFF unspecified, else three packed letters
  uint16_t quality = 0;

  /// All ones, in the width of the version read: the length is only known from the fragments.
  bool duration_unknown() const { return duration == (version == 0 ? UINT32_MAX : UINT64_MAX); }

  template <class Io>
  void fields(Io& io) {
    io.wide("creation_time", creation_time);
    io.wide("modification_time", modification_time);
    io("time_scale", time_scale);
    io.wide("duration", duration);
    io("language", language);
    io("quality", quality);
  }
};

/// Says which handler a media, its data or a metadata container belongs to.
struct HandlerAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("hdlr"));

  FourCC component_type = 0;  // `mhlr` or `dhlr` in QuickTime files, 0 in ISO files
  FourCC subtype = 0;         // the media type under `mdia`
  FourCC manufacturer = 0;
  uint32_t component_flags = 0;
  uint32_t component_flags_mask = 0;
  std::string raw_name;  // as stored: a Pascal string, a C string, or nothing

  /// The name without its length byte or terminator, in the file's own encoding. Files do not say
  /// which form they use: it is a Pascal string when the first byte counts exactly what follows,
  /// trailing zeros aside.
  std::string_view name() const;

  /// Stores `name` as a Pascal string (`mhlr`, `dhlr`; cut after 255 bytes) or as a C string (any
  /// other type).
  void set_name(std::string_view name);

  template <class Io>
  void fields(Io& io) {
    io("component_type", component_type);
    io("subtype", subtype);
    io("manufacturer", manufacturer);
    io("component_flags", component_flags);
    io("component_flags_mask", component_flags_mask);
    io.text("name", raw_name);
  }
};

struct VideoMediaHeaderAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("vmhd"), {.parent = four_cc("minf")});

  uint16_t graphics_mode = 0;
  std::array<uint16_t, 3> op_color{};  // red, green, blue

  template <class Io>
  void fields(Io& io) {
    io("graphics_mode", graphics_mode);
    io("op_color", op_color);
  }
};

struct SoundMediaHeaderAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("smhd"), {.parent = four_cc("minf")});

  int16_t balance = 0;
  uint16_t reserved = 0;

  template <class Io>
  void fields(Io& io) {
    io("balance", balance);
    io("reserved", reserved);
  }
};

/// The media header of everything that is neither plain video nor plain sound.
struct GenericMediaInfoAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("gmin"), {.parent = four_cc("gmhd")});

  uint16_t graphics_mode = 0x0040;                              // dither copy
  std::array<uint16_t, 3> op_color = {0x8000, 0x8000, 0x8000};  // red, green, blue
  int16_t balance = 0;
  uint16_t reserved = 0;

  template <class Io>
  void fields(Io& io) {
    io("graphics_mode", graphics_mode);
    io("op_color", op_color);
    io("balance", balance);
    io("reserved", reserved);
  }
};

}  // namespace toolbox
