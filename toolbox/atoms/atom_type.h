// What every atom struct states about itself, and the parts that all of them share.
//
// An atom is one struct with one `fields(io)`, which names its fields in file order. The reader,
// the writer, the version probe, the row-size probe and the dumper all walk that one list, so a
// layout is stated once. The steps of a list:
//
//   io("name", field)                    an integer, or a std::array of integers
//   io.wide("name", field)               32 bits in version 0, 64 bits in version 1
//   io.counted("name", rows, row)        a 32-bit count, then rows of one size; row(r) names the
//   fields of a row io.rows("name", rows, row)           rows of one size to the end of the atom
//   io.entries("name", list)             a 32-bit count, then whole atoms, kept as bytes with their
//   headers io.text("name", string)              bytes to the end of the atom
//   io.counted_table("name", view, n)    a 32-bit count, then rows of n bytes that stay in the file
//   io.table("name", view, n, count)     `count` rows of n bytes that stay in the file
//   io.rest_table("name", view, n)       rows of n bytes to the end of the atom that stay in the
//   file io.require("name", condition, text)  what a reader must refuse to go on with
#pragma once

#include <array>

#include "base/bytes.h"
#include "base/four_cc.h"
#include "file/byte_source.h"

namespace toolbox {

/// Row by row: a b u, c d v, x y w; u, v, w are 2.30 fixed point, the others 16.16.
using AtomMatrix = std::array<int32_t, 9>;

inline constexpr int32_t kFixedOne = 0x00010000;
inline constexpr AtomMatrix kIdentityMatrix = {kFixedOne, 0, 0, 0, kFixedOne, 0, 0, 0, 0x40000000};

/// Stands for any type in AtomType::type: the parent decides which struct reads its children.
inline constexpr FourCC kAnyType = 0;

/// Where an atom is found and which versions its struct knows.
struct AtomType {
  FourCC type = kAnyType;
  FourCC parent = kAnyType;  ///< The containing atom; kAnyType when it occurs in several.
  bool full = false;         ///< Begins with a version byte and 24 bits of flags.
  uint8_t max_version = 0;
};

struct AtomTraits {
  FourCC parent = kAnyType;
  uint8_t max_version = 0;
};

consteval AtomType full_atom(FourCC type, AtomTraits traits = {}) {
  return {type, traits.parent, true, traits.max_version};
}

consteval AtomType plain_atom(FourCC type, AtomTraits traits = {}) {
  return {type, traits.parent, false, 0};
}

/// Bytes behind the last known field, written back as they were.
struct PlainAtom {
  Bytes tail;
};

/// An atom that begins with a version and flags. `version` is the one it was read with; the writer
/// raises it when a value needs more room, and never lowers it.
struct FullAtom {
  uint8_t version = 0;
  uint32_t flags = 0;  // 24 bits
  Bytes tail;
};

/// A full atom that holds a large table. The table and the bytes behind it stay in the file; both
/// borrow the source.
struct TableAtom {
  uint8_t version = 0;
  uint32_t flags = 0;  // 24 bits
  ByteRange tail;
};

}  // namespace toolbox
