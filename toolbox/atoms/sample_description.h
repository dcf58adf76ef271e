// Sample descriptions, and the fields at the head of the two kinds that have common ones.
#pragma once

#include "atoms/atom_type.h"

namespace toolbox {

struct SampleDescriptionAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("stsd"), {.parent = four_cc("stbl"), .max_version = 1});

  std::vector<Bytes>
      entries;  // whole, big-endian, 32-bit size first; damaged ones may be shorter than 16 bytes

  template <class Io>
  void fields(Io& io) {
    io.entries("entries", entries);
  }
};

/// What every description begins with, behind its size and data format.
struct DescriptionHeader : PlainAtom {
  static constexpr AtomType kType = plain_atom(kAnyType, {.parent = four_cc("stsd")});

  std::array<uint8_t, 6> reserved{};
  uint16_t data_reference_index = 1;  // counts from 1

  template <class Io>
  void fields(Io& io) {
    io("reserved", reserved);
    io("data_reference_index", data_reference_index);
  }
};

/// The fixed part of a video description; colour table and extension atoms are the tail.
struct VideoDescription : DescriptionHeader {
  uint16_t description_version = 0;
  uint16_t revision = 0;
  FourCC vendor = 0;
  uint32_t temporal_quality = 512;             // 0..1023
  uint32_t spatial_quality = 512;              // 0..1024
  uint16_t width = 0;                          // pixels
  uint16_t height = 0;                         // pixels
  int32_t horizontal_resolution = 0x00480000;  // 16.16, pixels an inch
  int32_t vertical_resolution = 0x00480000;    // 16.16, pixels an inch
  uint32_t data_size = 0;
  uint16_t frames_per_sample = 1;
  std::array<uint8_t, 32> compressor_name{};  // Pascal string
  uint16_t depth = 24;                        // 33 and above are grey
  int16_t color_table_id = -1;                // 0: the table follows

  template <class Io>
  void fields(Io& io) {
    DescriptionHeader::fields(io);
    io("version", description_version);
    io("revision", revision);
    io("vendor", vendor);
    io("temporal_quality", temporal_quality);
    io("spatial_quality", spatial_quality);
    io("width", width);
    io("height", height);
    io("horizontal_resolution", horizontal_resolution);
    io("vertical_resolution", vertical_resolution);
    io("data_size", data_size);
    io("frames_per_sample", frames_per_sample);
    io("compressor_name", compressor_name);
    io("depth", depth);
    io("color_table_id", color_table_id);
  }
};

/// The part that all versions of a sound description share; the rest is the tail.
struct SoundDescription : DescriptionHeader {
  uint16_t description_version = 0;
  uint16_t revision = 0;
  FourCC vendor = 0;
  uint16_t channels = 2;  // always 3 in version 2
  uint16_t bits = 16;
  int16_t compression_id = 0;  // -2: variable bit rate
  uint16_t packet_size = 0;
  uint32_t sample_rate = 0;  // unsigned 16.16; 1.0 in version 2

  template <class Io>
  void fields(Io& io) {
    DescriptionHeader::fields(io);
    io("version", description_version);
    io("revision", revision);
    io("vendor", vendor);
    io("channels", channels);
    io("bits", bits);
    io("compression_id", compression_id);
    io("packet_size", packet_size);
    io("sample_rate", sample_rate);
  }
};

}  // namespace toolbox
