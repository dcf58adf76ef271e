// A container of metadata: the items of all storages of an owner, as callers see them.
#pragma once

#include <memory>
#include <unordered_map>

#include "memory/tokens.h"
#include "metadata/annotations.h"

namespace toolbox {

/// Which items are meant. 0 stands for all storages and for any format of keys.
struct ItemFilter {
  FourCC storage = 0;
  FourCC key_format = 0;
  ByteView key;  // as callers have it: codes in the machine's own order; empty for any
};

/// The items in order: QuickTime keys, short list, user data. Stays valid while it is changed.
class MetaData {
 public:
  explicit MetaData(Annotations& lists) : lists_(lists) {}

  // Items. Fail: kQTMetaDataInvalidItemErr for an ID that is not in here (any more),
  // kQTMetaDataInvalidStorageFormatErr, kQTMetaDataInvalidKeyFormatErr.

  /// The first match behind `current`, from the start for 0. Fails: kQTMetaDataNoMoreItemsErr.
  Result<ItemId> next(ItemId current, const ItemFilter& filter);
  Result<size_t> count(const ItemFilter& filter);
  Status remove_matching(const ItemFilter& filter);
  Status remove(ItemId id);

  /// Adds an item, whether or not there is one with that key. Fails: as ItemStore::add.
  Result<ItemId> add(const ItemFilter& where, ItemValue value);
  Result<ItemValue> value(ItemId id);
  Status set_value(ItemId id, ItemValue value);

  // Properties of an item, numbers and codes in the machine's own order. Fail:
  // kQTPropertyNotSupportedErr, kQTPropertyReadOnlyErr, kQTPropertyBadValueSizeErr, paramErr for a
  // locale that is none.
  Result<Bytes> property(ItemId id, FourCC property);
  Status set_property(ItemId id, FourCC property, ByteView value);

  /// The storages that have items.
  std::vector<FourCC> storages();

  /// Whose container it is, as callers are told: 'moov' or 'trak', and its reference.
  struct OwnerReference {
    FourCC type = 0;
    Token token = 0;
  };
  OwnerReference owner;

  /// References that callers hold: the token is good as long as there are some.
  /// Fails: 0 when all tokens are taken.
  Token retain();
  void release();

  static constexpr FourCC kValue = four_cc("valu");
  static constexpr FourCC kDataType = four_cc("dtyp");
  static constexpr FourCC kStorageFormat = four_cc("sfmt");
  static constexpr FourCC kKey = four_cc("key ");
  static constexpr FourCC kKeyFormat = four_cc("keyf");
  static constexpr FourCC kLocale = four_cc("loc ");

 private:
  Result<ItemStore*> find(ItemId id);
  bool matches(const ItemStore& store, ItemId id, const ItemFilter& filter,
               std::optional<bool>& has_display_name);
  bool has_display_name();

  Annotations& lists_;
  std::unordered_map<ItemId, FourCC> common_keys_;  // of items that were added by one
  std::unique_ptr<Reference> reference_;
  uint32_t references_ = 0;
};

}  // namespace toolbox
