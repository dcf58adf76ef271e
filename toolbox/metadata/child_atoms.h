// Atoms one behind the other in memory, as user data and metadata have them.
#pragma once

#include "base/big_endian.h"
#include "base/bytes.h"
#include "base/four_cc.h"

namespace toolbox {

/// One atom of a run.
struct ChildAtom {
  FourCC type = 0;
  ByteView payload;
  bool is_wide = false;  // its size takes 64 bits
};

/// Takes the first atom off `rest`; false, and `rest` as it was, where no whole atom stands: at the
/// end, at a terminator, at damage.
inline bool take_child(ByteView& rest, ChildAtom& child) {
  if (rest.size() < 8) return false;
  uint64_t size = load_big_endian<uint32_t>(rest.data());
  size_t header = 8;
  if (size == 1 && rest.size() >= 16) {
    size = load_big_endian<uint64_t>(rest.data() + 8);
    header = 16;
  }
  if (size < header || size > rest.size()) return false;
  child = {load_big_endian<FourCC>(rest.data() + 4), rest.subspan(header, size - header),
           header == 16};
  rest = rest.subspan(size);
  return true;
}

inline void append(Bytes& out, ByteView bytes) {
  out.insert(out.end(), bytes.begin(), bytes.end());
}

template <std::integral T>
void append_number(Bytes& out, T value) {
  out.resize(out.size() + sizeof(T));
  store_big_endian(out.data() + out.size() - sizeof(T), value);
}

/// Opens an atom at the end of `out`; answers what end_child() wants.
inline size_t begin_child(Bytes& out, FourCC type, bool is_wide = false) {
  const size_t mark = out.size();
  append_number<uint32_t>(out, is_wide ? 1 : 0);
  append_number(out, type);
  if (is_wide) append_number<uint64_t>(out, 0);
  return mark;
}

/// Writes the atom's size. REQUIRES: below 4 GiB unless it is wide.
inline void end_child(Bytes& out, size_t mark, bool is_wide = false) {
  const uint64_t size = out.size() - mark;
  if (is_wide) {
    store_big_endian(out.data() + mark + 8, size);
  } else {
    store_big_endian(out.data() + mark, static_cast<uint32_t>(size));
  }
}

inline Bytes to_bytes(ByteView view) { return Bytes(view.begin(), view.end()); }

}  // namespace toolbox
