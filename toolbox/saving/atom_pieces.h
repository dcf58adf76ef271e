// Atoms that are being composed, as the pieces they will be written from.
#pragma once

#include <vector>

#include "atoms/atom_writer.h"
#include "saving/offset_map.h"

namespace toolbox {

/// Bytes of its own, ranges of sources that are only copied when the atom is written, and offset
/// tables that are mapped while they are written: a movie atom of 200 MB takes some KiB of memory.
/// Sources, views and the map must outlive the pieces.
class AtomPieces {
 public:
  struct Piece {
    enum class Kind : uint8_t { kBytes, kRange, kOffsets };
    Kind kind = Kind::kBytes;
    Bytes bytes;
    ByteRange range;
    const TableView* offsets = nullptr;  // rows of 4 or 8 bytes
    const OffsetMap* map = nullptr;
    uint8_t offset_bytes = 4;  // of a row that is written
    uint64_t size = 0;
  };

  /// Where an open container began.
  struct Mark {
    size_t piece;
    size_t offset;
    uint64_t begin;
  };

  /// Opens a container and closes it: its size is then known.
  Mark begin(FourCC type);
  void end(Mark mark);

  void raw(ByteView bytes);
  void copy(const ByteRange& range);
  void copy_rows(const TableView& view);
  void offsets(const TableView& view, const OffsetMap& map, uint8_t offset_bytes);

  /// A whole atom from its struct.
  template <class Atom>
  void atom(const Atom& atom) {
    this->atom(Atom::kType.type, atom);
  }
  template <class Atom>
  void atom(FourCC type, const Atom& atom) {
    AtomWriter writer;
    writer.atom(type, atom);
    if (status_.ok() && !writer.status().ok()) {
      status_ = Status(writer.status().code(), writer.status().message());
    }
    raw(writer.bytes());
  }

  /// The head of a table atom whose rows follow: size, type, version and flags are the caller's.
  void number(uint32_t value);

  uint64_t size() const { return size_; }
  const std::vector<Piece>& pieces() const { return pieces_; }

  /// Fails: cantPutPublicMovieAtom when an atom would not fit in its size field.
  Status take_status() { return std::move(status_); }

  /// Writes all pieces in order through `write(ByteView)`, which answers a Status; ranges go
  /// through `copy(const ByteRange&)`.
  template <class Write, class Copy>
  Status write(Write write, Copy copy) const;

  /// Everything in memory, for comparisons and small atoms. Fails: as ByteSource::read.
  Result<Bytes> to_bytes() const;

 private:
  Bytes& open_bytes();
  static Status map_rows(const Piece& piece, uint64_t first, uint64_t count, Bytes& out);

  std::vector<Piece> pieces_;
  uint64_t size_ = 0;
  Status status_;
};

template <class Write, class Copy>
Status AtomPieces::write(Write write, Copy copy) const {
  constexpr uint64_t kRowsAtOnce = 8192;
  Bytes buffer;
  for (const Piece& piece : pieces_) {
    if (piece.kind == Piece::Kind::kBytes) {
      TRY(write(ByteView(piece.bytes)));
    } else if (piece.kind == Piece::Kind::kRange) {
      TRY(copy(piece.range));
    } else {
      const uint64_t rows = piece.offsets->row_count();
      for (uint64_t row = 0; row < rows; row += kRowsAtOnce) {
        TRY(map_rows(piece, row, std::min(kRowsAtOnce, rows - row), buffer));
        TRY(write(ByteView(buffer)));
      }
    }
  }
  return {};
}

}  // namespace toolbox
