#include "saving/atom_pieces.h"

namespace toolbox {

Bytes& AtomPieces::open_bytes() {
  if (pieces_.empty() || pieces_.back().kind != Piece::Kind::kBytes) pieces_.emplace_back();
  return pieces_.back().bytes;
}

AtomPieces::Mark AtomPieces::begin(FourCC type) {
  Bytes& bytes = open_bytes();
  const Mark mark{pieces_.size() - 1, bytes.size(), size_};
  number(0);
  number(type);
  return mark;
}

void AtomPieces::end(Mark mark) {
  const uint64_t size = size_ - mark.begin;
  uint8_t* const header = pieces_[mark.piece].bytes.data() + mark.offset;
  if (size > UINT32_MAX) {
    if (status_.ok()) {
      status_ = {cantPutPublicMovieAtom, four_cc_text(load_big_endian<FourCC>(header + 4)) +
                                             " would hold " + std::to_string(size) +
                                             " bytes; an atom can hold 4 GiB"};
    }
    return;
  }
  store_big_endian(header, static_cast<uint32_t>(size));
}

void AtomPieces::raw(ByteView added) {
  if (added.empty()) return;
  Bytes& bytes = open_bytes();
  bytes.insert(bytes.end(), added.begin(), added.end());
  pieces_.back().size = bytes.size();
  size_ += added.size();
}

void AtomPieces::number(uint32_t value) {
  uint8_t bytes[4];
  store_big_endian(bytes, value);
  raw(bytes);
}

void AtomPieces::copy(const ByteRange& range) {
  if (range.size == 0) return;
  size_ += range.size;
  if (!pieces_.empty() && pieces_.back().kind == Piece::Kind::kRange) {
    ByteRange& last = pieces_.back().range;
    if (last.source == range.source && last.offset + last.size == range.offset) {
      last.size += range.size;
      pieces_.back().size = last.size;
      return;
    }
  }
  Piece& piece = pieces_.emplace_back();
  piece.kind = Piece::Kind::kRange;
  piece.range = range;
  piece.size = range.size;
}

void AtomPieces::copy_rows(const TableView& view) {
  if (view.row_count() == 0) return;
  copy({view.range().source, view.range().offset, view.row_count() * view.row_size()});
}

void AtomPieces::offsets(const TableView& view, const OffsetMap& map, uint8_t offset_bytes) {
  if (view.row_count() == 0) return;
  Piece& piece = pieces_.emplace_back();
  piece.kind = Piece::Kind::kOffsets;
  piece.offsets = &view;
  piece.map = &map;
  piece.offset_bytes = offset_bytes;
  piece.size = view.row_count() * offset_bytes;
  size_ += piece.size;
}

Status AtomPieces::map_rows(const Piece& piece, uint64_t first, uint64_t count, Bytes& out) {
  out.resize(count * piece.offset_bytes);
  for (uint64_t i = 0; i < count; ++i) {
    TRY_ASSIGN(const uint8_t* row, piece.offsets->row(first + i));
    const uint64_t offset =
        piece.map->at(piece.offsets->row_size() == 8 ? load_big_endian<uint64_t>(row)
                                                     : load_big_endian<uint32_t>(row));
    uint8_t* const to = out.data() + i * piece.offset_bytes;
    if (piece.offset_bytes == 8) {
      store_big_endian(to, offset);
    } else {
      store_big_endian(to, static_cast<uint32_t>(offset));
    }
  }
  return {};
}

Result<Bytes> AtomPieces::to_bytes() const {
  Bytes all;
  all.reserve(size_);
  TRY(write(
      [&](ByteView bytes) -> Status {
        all.insert(all.end(), bytes.begin(), bytes.end());
        return {};
      },
      [&](const ByteRange& range) -> Status {
        const size_t at = all.size();
        all.resize(at + range.size);
        return range.source->read(range.offset, std::span(all).subspan(at));
      }));
  return all;
}

}  // namespace toolbox
