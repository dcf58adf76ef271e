#include "atoms/atom_writer.h"

#include <cassert>

namespace toolbox {

AtomWriter::Mark AtomWriter::begin(FourCC type) {
  const Mark mark{bytes_.size()};
  append<uint32_t>(0);
  append(type);
  return mark;
}

void AtomWriter::end(Mark mark) {
  const uint64_t size = bytes_.size() - mark.offset;
  if (size > UINT32_MAX) {
    if (status_.ok()) {
      const auto type = load_big_endian<FourCC>(bytes_.data() + mark.offset + 4);
      status_ = {paramErr, four_cc_text(type) + " would hold " + std::to_string(size) +
                               " bytes; an atom can hold 4 GiB"};
    }
    return;
  }
  store_big_endian(bytes_.data() + mark.offset, static_cast<uint32_t>(size));
}

void AtomWriter::copy(const ByteRange& range) {
  if (range.size == 0 || !status_.ok()) return;
  const size_t at = bytes_.size();
  bytes_.resize(at + range.size);
  status_ = range.source->read(range.offset, std::span(bytes_).subspan(at));
  if (!status_.ok()) bytes_.resize(at);
}

void AtomWriter::copy_rows([[maybe_unused]] const TableView& view,
                           [[maybe_unused]] uint32_t row_bytes) {
  assert(view.row_count() == 0 || view.row_size() == row_bytes);
  copy({view.range().source, view.range().offset, view.row_count() * view.row_size()});
}

}  // namespace toolbox
