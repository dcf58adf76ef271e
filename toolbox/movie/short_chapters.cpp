#include "movie/short_chapters.h"

#include <algorithm>
#include <optional>

#include "atoms/atom_reader.h"
#include "base/big_endian.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr FourCC kUserData = four_cc("udta");
constexpr FourCC kShortChapters = four_cc("chpl");
constexpr size_t kHeaderBytes = 8;
constexpr size_t kMostItems = 65536;  // of user data that are looked through
constexpr size_t kTitleLengthAt = 8;  // in an entry
constexpr size_t kTitleAt = 9;

/// The user data as it now is: the atom of the file, or the bytes that took its place.
class UserDataBytes {
 public:
  explicit UserDataBytes(const Movie& movie) {
    if (const AtomChanges::Change* change = movie.atom_changes().find(kUserData)) {
      if (change->atom) memory_ = ByteView(*change->atom).subspan(kHeaderBytes);
      return;
    }
    const AtomTree& tree = movie.opened().tree;
    const AtomIndex atom = tree.find_child(tree.movie(), kUserData);
    if (atom != kNoAtom) file_ = tree.payload(atom);
  }

  uint64_t size() const { return file_ ? file_->size : memory_.size(); }

  Result<Bytes> read(uint64_t offset, uint64_t count) const {
    if (!file_) {
      const ByteView part = memory_.subspan(offset, count);
      return Bytes(part.begin(), part.end());
    }
    if (count > kLargestLoadedAtom)
      return Status(memFullErr, "the movie's user data is too large to be changed");
    Bytes bytes(count);
    TRY(file_->source->read(file_->offset + offset, bytes));
    return bytes;
  }

 private:
  ByteView memory_;
  std::optional<ByteRange> file_;
};

struct Place {
  uint64_t offset = 0;  // of the header, in the payload of the user data
  uint64_t size = 0;    // header included
};

/// Where the list stands. `end` is where the items end: at the terminator, or at loose bytes.
Result<std::optional<Place>> find_list(const UserDataBytes& user_data, uint64_t& end) {
  std::optional<Place> found;
  uint64_t at = 0;
  for (size_t i = 0; i < kMostItems && user_data.size() - at >= kHeaderBytes; ++i) {
    TRY_ASSIGN(const Bytes header, user_data.read(at, kHeaderBytes));
    const uint64_t size = load_big_endian<uint32_t>(header.data());
    if (size < kHeaderBytes || size > user_data.size() - at) break;
    if (!found && load_big_endian<FourCC>(&header[4]) == kShortChapters) found = Place{at, size};
    at += size;
  }
  end = at;
  return found;
}

// The bytes of one entry at the start of `rest`; 0 when it is not whole.
size_t entry_size(ByteView rest) {
  if (rest.size() < kTitleAt) return 0;
  const size_t size = kTitleAt + rest[kTitleLengthAt];
  return size <= rest.size() ? size : 0;
}

Bytes whole_list(ByteView entries, size_t count) {
  // Version 1, four reserved bytes and the count: read alike by those that take the count for one
  // byte and those that take it for four.
  Bytes list = {
      0, 0, 0, 0, 'c', 'h', 'p', 'l', 1, 0, 0, 0, 0, 0, 0, 0, static_cast<uint8_t>(count)};
  list.insert(list.end(), entries.begin(), entries.end());
  store_big_endian(list.data(), static_cast<uint32_t>(list.size()));
  return list;
}

Result<size_t> count_entries(ByteView entries) {
  size_t count = 0;
  while (!entries.empty()) {
    const size_t size = entry_size(entries);
    if (size == 0) return Status(paramErr, "an entry of the short chapter list is not whole");
    if (++count > kMostShortChapters) {
      return Status(paramErr, "the short chapter list holds 255 chapters and no more");
    }
    entries = entries.subspan(size);
  }
  return count;
}

}  // namespace

Result<Bytes> read_short_chapters(const Movie& movie) {
  const UserDataBytes user_data(movie);
  uint64_t end = 0;
  TRY_ASSIGN(const std::optional<Place> place, find_list(user_data, end));
  if (!place) return Bytes();
  constexpr uint64_t kMostBytes = 32 + kMostShortChapters * (kTitleAt + 255);
  TRY_ASSIGN(const Bytes atom,
             user_data.read(place->offset, std::min<uint64_t>(place->size, kMostBytes)));
  constexpr size_t kVersionAt = kHeaderBytes;
  constexpr size_t kCountAt = 12;       // version 0
  constexpr size_t kLaterCountAt = 16;  // version 1: the last byte of the count, or all of it
  const bool is_later = atom.size() > kVersionAt && atom[kVersionAt] != 0;
  const size_t count_at = is_later ? kLaterCountAt : kCountAt;
  if (atom.size() <= count_at) return Bytes();
  const ByteView all = ByteView(atom).subspan(count_at + 1);
  size_t used = 0;
  for (size_t left = atom[count_at]; left > 0; --left) {
    const size_t size = entry_size(all.subspan(used));
    if (size == 0) break;
    used += size;
  }
  return Bytes(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(used));
}

Status set_short_chapters(Movie& movie, ByteView entries) {
  TRY_ASSIGN(const size_t count, count_entries(entries));
  const UserDataBytes user_data(movie);
  uint64_t end = 0;
  TRY_ASSIGN(const std::optional<Place> place, find_list(user_data, end));
  if (!place && count == 0) return {};
  TRY_ASSIGN(const Bytes old, user_data.read(0, user_data.size()));
  const Place cut = place.value_or(Place{end, 0});
  const ByteView head = ByteView(old).first(cut.offset);
  ByteView tail = ByteView(old).subspan(cut.offset + cut.size);
  const Bytes list = count == 0 ? Bytes() : whole_list(entries, count);
  // User data of our own ends in the four zeros that lists of items end in.
  constexpr uint8_t kTerminator[4] = {};
  if (old.empty()) tail = kTerminator;
  Bytes atom = {0, 0, 0, 0, 'u', 'd', 't', 'a'};
  for (const ByteView part : {head, ByteView(list), tail})
    atom.insert(atom.end(), part.begin(), part.end());
  store_big_endian(atom.data(), static_cast<uint32_t>(atom.size()));
  movie.change_atoms().replace(kUserData, std::move(atom));
  return {};
}

}  // namespace toolbox
