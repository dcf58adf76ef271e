// Atoms about the file rather than the movie: its brand, and how a compressed movie atom is packed.
#pragma once

#include "atoms/atom_type.h"
#include "file/table_view.h"

namespace toolbox {

struct FileTypeAtom : PlainAtom {
  static constexpr AtomType kType = plain_atom(four_cc("ftyp"));

  FourCC major_brand = four_cc("qt  ");
  uint32_t minor_version = 0x20050300;
  std::vector<FourCC> compatible_brands;

  template <class Io>
  void fields(Io& io) {
    io("major_brand", major_brand);
    io("minor_version", minor_version);
    io.rows("compatible_brands", compatible_brands,
            [](auto& row, FourCC& brand) { row("brand", brand); });
  }
};

/// The method that a compressed movie atom is packed with; `zlib` in practice.
struct DataCompressionAtom : PlainAtom {
  static constexpr AtomType kType = plain_atom(four_cc("dcom"), {.parent = four_cc("cmov")});
  FourCC method = four_cc("zlib");

  template <class Io>
  void fields(Io& io) {
    io("method", method);
  }
};

/// The packed movie atom. Unpacked it is one whole `moov`, header included.
struct CompressedMovieAtom {
  static constexpr AtomType kType = plain_atom(four_cc("cmvd"), {.parent = four_cc("cmov")});
  uint32_t unpacked_size = 0;  // bytes, as the file claims
  TableView packed;            // rows of one byte, to the end of the atom; stays in the file
  ByteRange tail;              // always empty

  template <class Io>
  void fields(Io& io) {
    io("unpacked_size", unpacked_size);
    io.rest_table("packed", packed, 1);
  }
};

}  // namespace toolbox
