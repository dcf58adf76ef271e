// The text items of a user data list as items of metadata.
#pragma once

#include "metadata/item_store.h"
#include "metadata/user_data.h"

namespace toolbox {

/// Items are the texts of the list, those of one item in several languages each on its own. There
/// is no copy: what is changed here is changed in the list.
class UserDataItems : public ItemStore {
 public:
  /// The list is borrowed.
  explicit UserDataItems(UserDataList& list) : list_(list) {}

  FourCC storage() const override { return storage_format::kUserData; }
  ItemId next(ItemId id) override;
  bool holds(ItemId id) const override;
  ItemKey key(ItemId id) const override;
  ItemValue value(ItemId id) const override;
  Locale locale(ItemId id) const override;
  Result<ItemId> add(const ItemKey& key, ItemValue value) override;
  Status set_value(ItemId id, ItemValue value) override;
  Status set_locale(ItemId id, Locale locale) override;
  void remove(ItemId id) override { list_.remove_value(id); }

 private:
  UserDataList& list_;
};

}  // namespace toolbox
