// Reads atoms: a sticky reader that walks an atom's fields and remembers the first thing that went
// wrong, and where.
#pragma once

#include <concepts>
#include <optional>
#include <string>

#include "atoms/atom_probe.h"
#include "atoms/atom_type.h"
#include "base/big_endian.h"
#include "file/table_view.h"

namespace toolbox {

/// The most bytes of an atom that are loaded at once. Tables are not loaded and may be larger.
inline constexpr uint64_t kLargestLoadedAtom = 16 * 1024 * 1024;

/// Why an atom could not be read.
struct AtomFailure {
  OSErr code = noErr;
  std::string field;  // "entries[3].length", counted from 1; empty when it concerns the whole atom
  uint64_t offset = 0;  // in the source
  std::string text;
};

/// Walks the payload of one atom. After the first failure every step does nothing.
class AtomReader {
 public:
  /// `loaded` holds the first bytes of `payload`: all of them, or enough for the fields in front of
  /// a table.
  AtomReader(ByteRange payload, ByteView loaded) : payload_(payload), loaded_(loaded) {}

  bool ok() const { return failure_.code == noErr; }
  AtomFailure& failure() { return failure_; }

  void full_header(uint8_t& version, uint32_t& flags, uint8_t max_version);

  template <std::integral T>
  void operator()(const char* name, T& value) {
    if (const uint8_t* bytes = take(name, sizeof(T))) value = load_big_endian<T>(bytes);
  }
  template <std::integral T, size_t N>
  void operator()(const char* name, std::array<T, N>& values) {
    const uint8_t* bytes = take(name, sizeof(T) * N);
    if (!bytes) return;
    for (size_t i = 0; i < N; ++i) values[i] = load_big_endian<T>(bytes + i * sizeof(T));
  }
  template <std::integral T>
  void wide(const char* name, T& value) {
    using Narrow = std::conditional_t<std::is_signed_v<T>, int32_t, uint32_t>;
    if (version_ > 0) {
      (*this)(name, value);
    } else if (const uint8_t* bytes = take(name, sizeof(Narrow))) {
      value = load_big_endian<Narrow>(bytes);
    }
  }
  template <class T, class Row>
  void counted(const char* name, std::vector<T>& rows, Row row) {
    uint32_t count = 0;
    (*this)(name, count);
    if (ok() && fits(name, count, row_size<T>(version_, row))) read_rows(name, rows, count, row);
  }
  template <class T, class Row>
  void rows(const char* name, std::vector<T>& rows, Row row) {
    if (ok()) read_rows(name, rows, remaining() / row_size<T>(version_, row), row);
  }
  void entries(const char* name, std::vector<Bytes>& list);
  void text(const char* name, std::string& bytes);
  void counted_table(const char* name, TableView& view, uint32_t row_bytes);
  void table(const char* name, TableView& view, uint32_t row_bytes, uint64_t count);
  void rest_table(const char* name, TableView& view, uint32_t row_bytes);
  void require(const char* name, bool condition, const char* text);

  void tail(Bytes& bytes);
  void tail(ByteRange& range);

 private:
  uint64_t remaining() const { return payload_.size - position_; }

  /// The next bytes, or null after a failure.
  const uint8_t* take(const char* name, uint64_t size);

  /// The one bound for all tables: refuses a count of rows that cannot stand in what is left of the
  /// atom.
  bool fits(const char* name, uint64_t count, uint64_t row_bytes);

  template <class T, class Row>
  void read_rows(const char* name, std::vector<T>& rows, uint64_t count, Row row) {
    rows.resize(count);
    list_ = name;
    for (row_ = 0; row_ < count && ok(); ++row_) row(*this, rows[row_]);
    list_ = nullptr;
  }
  void fail(const char* name, std::string text, OSErr code = badPublicMovieAtom);

  ByteRange payload_;
  ByteView loaded_;
  uint64_t position_ = 0;
  uint8_t version_ = 0;
  const char* list_ = nullptr;  // the list whose row is being read
  uint64_t row_ = 0;
  AtomFailure failure_;
};

/// Loads what an atom's fields need of `payload`: the head of an atom with a table, any other atom
/// whole. Fails (false): memFullErr, ioErr, eofErr in `failure`.
bool load_atom(ByteRange payload, bool has_table, Bytes& loaded, AtomFailure& failure);

/// Atoms whose rows stay in the file keep their tail there too.
template <class Atom>
inline constexpr bool kHasTable = requires(Atom& atom) {
  { atom.tail } -> std::same_as<ByteRange&>;
};

/// Decodes the payload of one atom; nullopt with `failure` filled in when it cannot be.
template <class Atom>
std::optional<Atom> decode_atom(ByteRange payload, AtomFailure& failure) {
  Bytes loaded;
  if (!load_atom(payload, kHasTable<Atom>, loaded, failure)) return std::nullopt;
  AtomReader reader(payload, loaded);
  std::optional<Atom> atom(std::in_place);
  if constexpr (Atom::kType.full) {
    reader.full_header(atom->version, atom->flags, Atom::kType.max_version);
  }
  atom->fields(reader);
  reader.tail(atom->tail);
  if (reader.ok()) return atom;
  failure = std::move(reader.failure());
  return std::nullopt;
}

}  // namespace toolbox
