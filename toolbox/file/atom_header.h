// The header of one atom: the four forms that a size can take.
#pragma once

#include "base/four_cc.h"
#include "file/byte_source.h"

namespace toolbox {

struct AtomHeader {
  enum class Form {
    kSized,     ///< `size` is stated, and at least as long as the header.
    kToTheEnd,  ///< Size 0: to the end of the file at top level, a terminator elsewhere.
    kDamaged,   ///< Shorter than a header can be, or cut off; `size` is what it states.
  };
  Form form = Form::kDamaged;
  uint8_t header_size = 8;
  FourCC type = 0;
  uint64_t size = 0;  // as stated, header included; may reach beyond the file
};

/// Reads the header at `offset` of an atom that must end by `end`. REQUIRES: at least 8 bytes from
/// `offset` to `end`. Fails: ioErr, eofErr.
Result<AtomHeader> read_atom_header(const ByteSource& source, uint64_t offset, uint64_t end);

}  // namespace toolbox
