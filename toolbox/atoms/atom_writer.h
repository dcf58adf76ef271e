// Writes atoms: encodes structs and containers, one inside the other, into bytes.
#pragma once

#include <concepts>
#include <string>

#include "atoms/atom_probe.h"
#include "atoms/atom_type.h"
#include "base/big_endian.h"
#include "file/table_view.h"

namespace toolbox {

/// Collects bytes. A failure (a table that cannot be read, an atom of 4 GiB) sticks and is answered
/// by status().
///
///   AtomWriter writer;
///   auto trak = writer.begin(four_cc("trak"));
///   writer.atom(track_header);
///   writer.end(trak);
class AtomWriter {
 public:
  /// Where an open container began.
  struct Mark {
    size_t offset;
  };

  /// Opens a container (or any atom whose payload follows) and closes it: its size is then known.
  Mark begin(FourCC type);
  void end(Mark mark);

  /// A whole atom from its struct. The type is the struct's own unless it stands for several.
  template <class Atom>
  void atom(const Atom& atom) {
    static_assert(Atom::kType.type != kAnyType, "say which type to write");
    this->atom(Atom::kType.type, atom);
  }
  template <class Atom>
  void atom(FourCC type, const Atom& atom) {
    const Mark mark = begin(type);
    payload(atom);
    end(mark);
  }

  /// The payload of an atom alone, without its header.
  template <class Atom>
  void payload(const Atom& constant) {
    // fields() names fields for readers and writers alike and is therefore not const; writing
    // changes nothing.
    auto& atom = const_cast<Atom&>(constant);
    version_ = 0;
    if constexpr (Atom::kType.full) {
      VersionProbe probe;
      atom.fields(probe);
      version_ = std::max(atom.version, probe.version());
      append<uint32_t>((uint32_t{version_} << 24) | (atom.flags & 0xFFFFFF));
    }
    atom.fields(*this);
    tail(atom.tail);
  }

  void raw(ByteView bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }

  /// Bytes that still stand in a source.
  void copy(const ByteRange& range);

  const Status& status() const { return status_; }
  const Bytes& bytes() const { return bytes_; }
  Bytes take() { return std::move(bytes_); }

  // The steps of an atom's fields.
  template <std::integral T>
  void operator()(const char*, T& value) {
    append(value);
  }
  template <std::integral T, size_t N>
  void operator()(const char*, std::array<T, N>& values) {
    for (T value : values) append(value);
  }
  template <std::integral T>
  void wide(const char*, T& value) {
    if (version_ > 0) {
      append(value);
    } else {
      append(static_cast<uint32_t>(value));
    }
  }
  template <class T, class Row>
  void counted(const char* name, std::vector<T>& rows, Row row) {
    append(static_cast<uint32_t>(rows.size()));
    this->rows(name, rows, row);
  }
  template <class T, class Row>
  void rows(const char*, std::vector<T>& rows, Row row) {
    for (T& each : rows) row(*this, each);
  }
  void entries(const char*, std::vector<Bytes>& list) {
    append(static_cast<uint32_t>(list.size()));
    for (const Bytes& entry : list) raw(entry);
  }
  void text(const char*, std::string& text) {
    bytes_.insert(bytes_.end(), text.begin(), text.end());
  }
  void counted_table(const char*, TableView& view, uint32_t row_bytes) {
    append(static_cast<uint32_t>(view.row_count()));
    copy_rows(view, row_bytes);
  }
  void table(const char*, TableView& view, uint32_t row_bytes, uint64_t) {
    copy_rows(view, row_bytes);
  }
  void rest_table(const char*, TableView& view, uint32_t row_bytes) { copy_rows(view, row_bytes); }
  void require(const char*, bool, const char*) {}

 private:
  template <std::integral T>
  void append(T value) {
    const size_t at = bytes_.size();
    bytes_.resize(at + sizeof(T));
    store_big_endian(bytes_.data() + at, value);
  }
  void tail(const Bytes& bytes) { raw(bytes); }
  void tail(const ByteRange& range) { copy(range); }
  void copy_rows(const TableView& view, uint32_t row_bytes);

  Bytes bytes_;
  uint8_t version_ = 0;
  Status status_;
};

}  // namespace toolbox
