#include "movie/short_chapters.h"

#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr FourCC kShortChapters = four_cc("chpl");
constexpr size_t kTitleLengthAt = 8;  // in an entry
constexpr size_t kTitleAt = 9;

// The bytes of one entry at the start of `rest`; 0 when it is not whole.
size_t entry_size(ByteView rest) {
  if (rest.size() < kTitleAt) return 0;
  const size_t size = kTitleAt + rest[kTitleLengthAt];
  return size <= rest.size() ? size : 0;
}

Bytes whole_list(ByteView entries, size_t count) {
  // Version 1, four reserved bytes and the count: read alike by those that take the count for one
  // byte and those that take it for four.
  Bytes list = {1, 0, 0, 0, 0, 0, 0, 0, static_cast<uint8_t>(count)};
  list.insert(list.end(), entries.begin(), entries.end());
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

Result<Bytes> read_short_chapters(Movie& movie) {
  TRY_ASSIGN(Annotations* const lists, movie.annotations());
  if (lists->user_data().count(kShortChapters) == 0) return Bytes();
  TRY_ASSIGN(const Bytes list, lists->user_data().data(kShortChapters, 1));
  constexpr size_t kCountAt = 4;       // version 0
  constexpr size_t kLaterCountAt = 8;  // version 1: the last byte of the count, or all of it
  const bool is_later = !list.empty() && list[0] != 0;
  const size_t count_at = is_later ? kLaterCountAt : kCountAt;
  if (list.size() <= count_at) return Bytes();
  const ByteView all = ByteView(list).subspan(count_at + 1);
  size_t used = 0;
  for (size_t left = list[count_at]; left > 0; --left) {
    const size_t size = entry_size(all.subspan(used));
    if (size == 0) break;
    used += size;
  }
  return Bytes(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(used));
}

Status set_short_chapters(Movie& movie, ByteView entries) {
  TRY_ASSIGN(const size_t count, count_entries(entries));
  TRY_ASSIGN(Annotations* const lists, movie.annotations());
  UserDataList& user_data = lists->user_data();
  const bool has_list = user_data.count(kShortChapters) > 0;
  if (count == 0) return has_list ? user_data.remove(kShortChapters, 1) : Status();
  const Bytes list = whole_list(entries, count);
  return has_list ? user_data.replace(kShortChapters, 1, list)
                  : user_data.add(kShortChapters, list);
}

}  // namespace toolbox
