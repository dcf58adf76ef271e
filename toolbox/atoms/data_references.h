// Data references: the files that hold the media data of a track.
#pragma once

#include <string>

#include "atoms/atom_type.h"

namespace toolbox {

/// The list of files, counted from 1 by the sample descriptions.
struct DataReferenceAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("dref"), {.parent = four_cc("dinf")});

  std::vector<Bytes> entries;  // whole atoms: size, type, version and flags, data

  template <class Io>
  void fields(Io& io) {
    io.entries("entries", entries);
  }
};

/// One entry of a DataReferenceAtom. Its type says what the data is: `alis` an alias record, `url `
/// a C string.
struct DataReferenceEntry : FullAtom {
  static constexpr AtomType kType = full_atom(kAnyType, {.parent = four_cc("dref")});
  enum Flags : uint32_t { kSelfReference = 1 };

  std::string data;

  template <class Io>
  void fields(Io& io) {
    io.text("data", data);
  }
};

}  // namespace toolbox
