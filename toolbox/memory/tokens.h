// References that callers hold: numbers below 2^32 that are checked whenever they come back.
#pragma once

#include <cstdint>

namespace toolbox {

/// What a token refers to. A token of one kind is never taken for another.
enum class Kind : uint8_t {
  kNone,
  kMovie,
  kTrack,
  kMedia,
  kMediaHandler,
  kUserData,
  kMetaData,
  kMetaDataItem,
  kRegion,
  kGraphicsWorld,
  kPixMap,
  kGraphicsDevice,
  kColorSpace,
  kBitmapContext,
  kBitmapImage,
  kFoundation,
};

/// A token: 20 bits of slot under 12 bits of generation. The generation counts how often the slot
/// was used and is never 0, so that small numbers are no tokens. Slots rest after use, the longest
/// unused is used next, and none is used again before thousands rest: a stale token comes back to
/// life after some sixteen million others at the earliest.
using Token = uint32_t;

namespace tokens {

/// The live object behind a token; null for 0, stale, made-up and wrong-kind numbers. Numbers of
/// 2^32 and above, which a caller can only have made up, are no tokens either.
void* find(Kind kind, uint64_t number);

/// Number of live tokens of all kinds but the foundation's: a framework stays loaded, and its
/// bundle is kept, as long as the process lives.
uint32_t live_count();

}  // namespace tokens

/// The token of one object, made when it is first asked for and stale from the moment the owner
/// dies. Lives inside the object it refers to, which therefore must not move.
class Reference {
 public:
  Reference() = default;
  ~Reference();
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;

  /// The token for `object`; the same at every call.
  /// Fails: 0 when all slots are taken.
  Token token(Kind kind, void* object);

 private:
  Token token_ = 0;
};

}  // namespace toolbox
