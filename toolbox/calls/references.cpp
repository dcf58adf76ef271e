#include "calls/references.h"

#include <algorithm>
#include <charconv>

namespace toolbox::calls {

namespace {

template <class Object>
Result<Object*> find(Kind kind, const void* reference, OSErr code, const char* what) {
  const auto number = reinterpret_cast<uintptr_t>(reference);
  if (void* object = tokens::find(kind, number)) return static_cast<Object*>(object);
  char digits[17];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number, 16);
  return Status(code, "0x" + std::string(digits, end) + " refers to no " + what +
                          "; perhaps it was disposed");
}

template <class Opaque, class Object>
Result<Opaque> make(Object& object) {
  const Token token = object.token();
  if (token == 0) return Status(memFullErr, "too many references are in use; dispose some movies");
  return reinterpret_cast<Opaque>(uintptr_t{token});
}

}  // namespace

Result<Movie*> find_movie(::Movie reference) {
  return find<Movie>(Kind::kMovie, reference, invalidMovie, "movie");
}
Result<Track*> find_track(::Track reference) {
  return find<Track>(Kind::kTrack, reference, invalidTrack, "track");
}
Result<Media*> find_media(::Media reference) {
  return find<Media>(Kind::kMedia, reference, invalidMedia, "media");
}

Result<UserDataList*> find_user_data(::UserData reference) {
  return find<UserDataList>(Kind::kUserData, reference, paramErr, "user data list");
}
Result<MetaData*> find_metadata(::QTMetaDataRef reference) {
  return find<MetaData>(Kind::kMetaData, reference, kQTMetaDataInvalidMetaDataErr,
                        "metadata container");
}

Result<::Movie> reference_to(Movie& movie) { return make<::Movie>(movie); }
Result<::Track> reference_to(Track& track) { return make<::Track>(track); }
Result<::Media> reference_to(Media& media) { return make<::Media>(media); }
Result<::UserData> reference_to(UserDataList& list) { return make<::UserData>(list); }
Result<::MediaHandler> reference_to(MediaHandler& handler) { return make<::MediaHandler>(handler); }

TimeValue to_time_value(int64_t time) {
  return static_cast<TimeValue>(std::clamp<int64_t>(time, INT32_MIN, INT32_MAX));
}

SInt32 to_count(uint64_t count) {
  return static_cast<SInt32>(std::min<uint64_t>(count, INT32_MAX));
}

}  // namespace toolbox::calls
