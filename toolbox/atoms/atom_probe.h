// Two walks over an atom's fields that neither read nor write: how wide it must be, and how long a
// row is.
#pragma once

#include <array>
#include <limits>
#include <string>
#include <type_traits>

#include "atoms/atom_type.h"
#include "file/table_view.h"

namespace toolbox {

/// Finds the lowest version in which every wide field fits.
class VersionProbe {
 public:
  uint8_t version() const { return version_; }

  template <class T>
  void operator()(const char*, T&) {}
  template <class T>
  void wide(const char*, T& value) {
    using Narrow = std::conditional_t<std::is_signed_v<T>, int32_t, uint32_t>;
    if (value < std::numeric_limits<Narrow>::min() || value > std::numeric_limits<Narrow>::max()) {
      version_ = 1;
    }
  }
  template <class T, class Row>
  void counted(const char*, std::vector<T>& rows, Row row) {
    for (T& each : rows) row(*this, each);
  }
  template <class T, class Row>
  void rows(const char*, std::vector<T>&, Row) {}
  void entries(const char*, std::vector<Bytes>&) {}
  void text(const char*, std::string&) {}
  void counted_table(const char*, TableView&, uint32_t) {}
  void table(const char*, TableView&, uint32_t, uint64_t) {}
  void rest_table(const char*, TableView&, uint32_t) {}
  void require(const char*, bool, const char*) {}

 private:
  uint8_t version_ = 0;
};

/// Adds up the bytes of one row.
class RowSizeProbe {
 public:
  explicit RowSizeProbe(uint8_t version) : version_(version) {}
  uint64_t size() const { return size_; }

  template <class T>
  void operator()(const char*, T&) {
    size_ += sizeof(T);
  }
  template <class T>
  void wide(const char*, T&) {
    size_ += version_ == 0 ? 4 : 8;
  }

 private:
  uint8_t version_;
  uint64_t size_ = 0;
};

/// Bytes of one row of type `T` in a file.
template <class T, class Row>
uint64_t row_size(uint8_t version, Row row) {
  RowSizeProbe probe(version);
  T example{};
  row(probe, example);
  return probe.size();
}

}  // namespace toolbox
