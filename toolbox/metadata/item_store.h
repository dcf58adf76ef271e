// What the storages of metadata have in common: items with a key, a typed value and a locale.
#pragma once

#include "base/four_cc.h"
#include "base/status.h"
#include "metadata/grouped_values.h"
#include "metadata/locale.h"

namespace toolbox {

namespace storage_format {
inline constexpr FourCC kQuickTime = four_cc("mdta");
inline constexpr FourCC kShortList = four_cc("itms");
inline constexpr FourCC kUserData = four_cc("udta");
}  // namespace storage_format

namespace key_format {
inline constexpr FourCC kCommon = four_cc("comn");
inline constexpr FourCC kQuickTime = four_cc("mdta");
inline constexpr FourCC kShortForm = four_cc("itsk");
inline constexpr FourCC kLongForm = four_cc("itlk");
inline constexpr FourCC kUserData = four_cc("udta");
}  // namespace key_format

/// Types of values that the engine itself tells apart.
namespace value_type {
inline constexpr uint32_t kUtf8 = 1;
inline constexpr uint32_t kUtf16 = 2;
inline constexpr uint32_t kMacText = 3;
}  // namespace value_type

/// A key in its native form. Codes stand as four bytes, the most significant first.
struct ItemKey {
  FourCC format = 0;
  Bytes bytes;

  /// The code of a key that is one; 0 for texts.
  FourCC code() const;
  bool operator==(const ItemKey&) const = default;
};

ItemKey key_of_code(FourCC format, FourCC code);

struct ItemValue {
  uint32_t type = 0;
  Bytes bytes;
};

/// One list of items. IDs given to it are its own.
class ItemStore {
 public:
  virtual ~ItemStore() = default;

  virtual FourCC storage() const = 0;

  /// The item behind `id`, the first for 0; 0 when there is none.
  virtual ItemId next(ItemId id) = 0;
  virtual bool holds(ItemId id) const = 0;
  virtual ItemKey key(ItemId id) const = 0;
  virtual ItemValue value(ItemId id) const = 0;
  virtual Locale locale(ItemId id) const = 0;

  /// Fails: paramErr for a type or size that the storage cannot hold;
  /// kQTMetaDataInvalidKeyFormatErr for a key that does not fit; badPublicMovieAtom where damage
  /// leaves no place for a new key.
  virtual Result<ItemId> add(const ItemKey& key, ItemValue value) = 0;
  virtual Status set_value(ItemId id, ItemValue value) = 0;
  virtual Status set_locale(ItemId id, Locale locale) = 0;
  virtual void remove(ItemId id) = 0;
};

}  // namespace toolbox
