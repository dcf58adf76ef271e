#include "file/atom_header.h"

#include <algorithm>

#include "base/big_endian.h"

namespace toolbox {

Result<AtomHeader> read_atom_header(const ByteSource& source, uint64_t offset, uint64_t end) {
  uint8_t bytes[16];
  const uint64_t available = std::min<uint64_t>(end - offset, sizeof bytes);
  TRY(source.read(offset, std::span(bytes, available)));

  AtomHeader header;
  const auto size = load_big_endian<uint32_t>(bytes);
  header.type = load_big_endian<FourCC>(bytes + 4);
  header.size = size;
  if (size == 0) {
    header.form = AtomHeader::Form::kToTheEnd;
  } else if (size == 1 && available == sizeof bytes) {
    header.header_size = 16;
    header.size = load_big_endian<uint64_t>(bytes + 8);
  }
  if (header.size >= header.header_size) header.form = AtomHeader::Form::kSized;

  constexpr uint8_t kExtendedType = 16;
  if (header.type == four_cc("uuid") &&
      header.size >= uint64_t{header.header_size} + kExtendedType) {
    header.header_size += kExtendedType;
  }
  return header;
}

}  // namespace toolbox
