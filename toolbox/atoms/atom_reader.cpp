#include "atoms/atom_reader.h"

#include <algorithm>
#include <cassert>

namespace toolbox {

namespace {
// More than any atom has in front of its table.
constexpr uint64_t kTableHeadBytes = 64;
}  // namespace

bool load_atom(ByteRange payload, bool has_table, Bytes& loaded, AtomFailure& failure) {
  const uint64_t wanted = has_table ? std::min(payload.size, kTableHeadBytes) : payload.size;
  if (wanted > kLargestLoadedAtom) {
    failure = {memFullErr,
               {},
               payload.offset,
               "holds " + std::to_string(wanted) + " bytes; at most " +
                   std::to_string(kLargestLoadedAtom) + " are read"};
    return false;
  }
  loaded.resize(wanted);
  if (wanted == 0) return true;
  if (Status status = payload.source->read(payload.offset, loaded); !status.ok()) {
    failure = {status.code(), {}, payload.offset, status.message()};
    return false;
  }
  return true;
}

void AtomReader::full_header(uint8_t& version, uint32_t& flags, uint8_t max_version) {
  uint32_t word = 0;
  (*this)("version", word);
  version_ = version = static_cast<uint8_t>(word >> 24);
  flags = word & 0xFFFFFF;
  if (version > max_version) {
    position_ = 0;
    fail("version", "version " + std::to_string(version) + " is not known", featureUnsupported);
  }
}

const uint8_t* AtomReader::take(const char* name, uint64_t size) {
  if (!ok()) return nullptr;
  if (size > remaining()) {
    fail(name, "needs " + std::to_string(size) + " bytes, but the atom has only " +
                   std::to_string(remaining()) + " left");
    return nullptr;
  }
  assert(position_ + size <= loaded_.size());
  const uint8_t* bytes = loaded_.data() + position_;
  position_ += size;
  return bytes;
}

bool AtomReader::fits(const char* name, uint64_t count, uint64_t row_bytes) {
  if (!ok()) return false;
  if (count <= remaining() / row_bytes) return true;
  fail(name, "counts " + std::to_string(count) + " rows of " + std::to_string(row_bytes) +
                 " bytes, but only " + std::to_string(remaining()) + " bytes are left");
  return false;
}

void AtomReader::entries(const char* name, std::vector<Bytes>& list) {
  constexpr uint64_t kSmallestEntry = 8;
  uint32_t count = 0;
  (*this)(name, count);
  if (!fits(name, count, kSmallestEntry)) return;
  list_ = name;
  for (row_ = 0; row_ < count && ok(); ++row_) {
    const uint8_t* bytes = take("size", 4);
    if (!bytes) break;
    const auto size = load_big_endian<uint32_t>(bytes);
    position_ -= 4;
    if (size < kSmallestEntry || size > remaining()) {
      fail("size", "claims " + std::to_string(size) + " bytes, but an entry has at least " +
                       std::to_string(kSmallestEntry) + " and " + std::to_string(remaining()) +
                       " are left");
      break;
    }
    if (take("bytes", size)) list.emplace_back(bytes, bytes + size);
  }
  list_ = nullptr;
}

void AtomReader::text(const char* name, std::string& bytes) {
  const uint64_t size = remaining();
  if (const uint8_t* text = take(name, size)) bytes.assign(text, text + size);
}

void AtomReader::counted_table(const char* name, TableView& view, uint32_t row_bytes) {
  uint32_t count = 0;
  (*this)(name, count);
  table(name, view, row_bytes, count);
}

void AtomReader::table(const char* name, TableView& view, uint32_t row_bytes, uint64_t count) {
  if (!fits(name, count, row_bytes)) return;
  const uint64_t size = count * row_bytes;
  view = TableView({payload_.source, payload_.offset + position_, size}, row_bytes, count);
  position_ += size;
}

void AtomReader::rest_table(const char* name, TableView& view, uint32_t row_bytes) {
  if (ok()) table(name, view, row_bytes, remaining() / row_bytes);
}

void AtomReader::require(const char* name, bool condition, const char* text) {
  if (ok() && !condition) fail(name, text);
}

void AtomReader::tail(Bytes& bytes) {
  const uint64_t size = remaining();
  if (const uint8_t* rest = take("tail", size)) bytes.assign(rest, rest + size);
}

void AtomReader::tail(ByteRange& range) {
  if (ok()) range = {payload_.source, payload_.offset + position_, remaining()};
}

void AtomReader::fail(const char* name, std::string text, OSErr code) {
  std::string field;
  if (list_) {
    field = list_;
    field += '[' + std::to_string(row_ + 1) + "].";
  }
  field += name;
  failure_ = {code, std::move(field), payload_.offset + position_, std::move(text)};
}

}  // namespace toolbox
