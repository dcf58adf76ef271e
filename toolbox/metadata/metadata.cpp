#include "metadata/metadata.h"

#include <algorithm>
#include <cstring>

#include "metadata/child_atoms.h"
#include "metadata/common_keys.h"

namespace toolbox {

namespace {

constexpr FourCC kDisplayName = four_cc("name");

bool is_code_format(FourCC format) {
  return format == key_format::kCommon || format == key_format::kShortForm ||
         format == key_format::kUserData;
}

bool is_key_format(FourCC format) {
  return is_code_format(format) || format == key_format::kQuickTime ||
         format == key_format::kLongForm;
}

/// A code as callers have it in memory; 0 for other bytes.
FourCC code_in_memory(ByteView bytes) {
  FourCC code = 0;
  if (bytes.size() == sizeof code) std::memcpy(&code, bytes.data(), sizeof code);
  return code;
}

Bytes in_memory(uint32_t number) {
  Bytes bytes(sizeof number);
  std::memcpy(bytes.data(), &number, sizeof number);
  return bytes;
}

Status check(const ItemFilter& filter) {
  const FourCC storage = filter.storage;
  if (storage != 0 && storage != storage_format::kQuickTime &&
      storage != storage_format::kShortList && storage != storage_format::kUserData) {
    return {kQTMetaDataInvalidStorageFormatErr,
            "there is no storage " + four_cc_text(storage) + "; there are mdta, itms, udta"};
  }
  if (filter.key_format != 0 && !is_key_format(filter.key_format)) {
    return {kQTMetaDataInvalidKeyFormatErr, "there is no key format " +
                                                four_cc_text(filter.key_format) +
                                                "; there are comn, mdta, itsk, itlk, udta"};
  }
  return {};
}

/// The key of a new item in its storage.
Result<ItemKey> key_to_add(const ItemFilter& where) {
  const auto misfit = [&](const char* text) {
    return Status(kQTMetaDataInvalidKeyFormatErr, text);
  };
  if (where.storage == 0) {
    return Status(kQTMetaDataInvalidStorageFormatErr,
                  "a new item needs a storage: mdta, itms or udta");
  }
  if (where.key_format == 0 || where.key.empty())
    return misfit("a new item needs a key and its format");
  if (!is_code_format(where.key_format)) return ItemKey{where.key_format, to_bytes(where.key)};
  const FourCC code = code_in_memory(where.key);
  if (code == 0) return misfit("a key of this format has four letters");
  if (where.key_format != key_format::kCommon) return key_of_code(where.key_format, code);
  std::optional<ItemKey> key = native_key(code, where.storage);
  if (key) return std::move(*key);
  return Status(kQTMetaDataInvalidKeyFormatErr, "the storage " + four_cc_text(where.storage) +
                                                    " has no key for " + four_cc_text(code));
}

}  // namespace

Result<ItemStore*> MetaData::find(ItemId id) {
  for (ItemStore* store : lists_.stores()) {
    if (id != 0 && store->holds(id)) return store;
  }
  return Status(kQTMetaDataInvalidItemErr,
                "no item " + std::to_string(id) + " is in the container; perhaps it was removed");
}

bool MetaData::has_display_name() {
  for (ItemStore* store : lists_.stores()) {
    if (store->storage() != storage_format::kQuickTime) continue;
    for (ItemId id = store->next(0); id != 0; id = store->next(id)) {
      if (common_key(store->key(id)) == kDisplayName) return true;
    }
  }
  return false;
}

/// `has_name`: whether there is a display name, worked out at most once a question.
bool MetaData::matches(const ItemStore& store, ItemId id, const ItemFilter& filter,
                       std::optional<bool>& has_name) {
  if (filter.storage != 0 && filter.storage != store.storage()) return false;
  if (filter.key_format == 0 && filter.key.empty()) return true;
  const ItemKey key = store.key(id);
  const FourCC wanted = code_in_memory(filter.key);
  const bool by_common = filter.key_format == key_format::kCommon || filter.key_format == 0;
  if (by_common) {
    const FourCC common = common_key(key);
    if (filter.key.empty()) return common != 0;
    if (wanted != 0 && common == wanted) return true;
    if (wanted == kDisplayName && is_title(key)) {
      if (!has_name) has_name = has_display_name();
      if (!*has_name) return true;
    }
    if (filter.key_format != 0) return false;
  } else if (key.format != filter.key_format) {
    return false;
  }
  if (filter.key.empty()) return true;
  if (is_code_format(key.format)) return wanted != 0 && wanted == key.code();
  return std::equal(key.bytes.begin(), key.bytes.end(), filter.key.begin(), filter.key.end());
}

Result<ItemId> MetaData::next(ItemId current, const ItemFilter& filter) {
  TRY(check(filter));
  std::optional<bool> has_name;
  const auto& stores = lists_.stores();
  auto store = stores.begin();
  if (current != 0) {
    TRY_ASSIGN(ItemStore* const holder, find(current));
    store = std::find(stores.begin(), stores.end(), holder);
  }
  for (; store != stores.end(); ++store, current = 0) {
    for (ItemId id = (*store)->next(current); id != 0; id = (*store)->next(id)) {
      if (matches(**store, id, filter, has_name)) return id;
    }
  }
  return Status(kQTMetaDataNoMoreItemsErr, "the container has no such item behind this one");
}

Result<size_t> MetaData::count(const ItemFilter& filter) {
  TRY(check(filter));
  std::optional<bool> has_name;
  size_t count = 0;
  for (ItemStore* store : lists_.stores()) {
    for (ItemId id = store->next(0); id != 0; id = store->next(id)) {
      if (matches(*store, id, filter, has_name)) ++count;
    }
  }
  return count;
}

Status MetaData::remove_matching(const ItemFilter& filter) {
  TRY(check(filter));
  std::optional<bool> has_name;
  std::vector<ItemId> found;
  for (ItemStore* store : lists_.stores()) {
    for (ItemId id = store->next(0); id != 0; id = store->next(id)) {
      if (matches(*store, id, filter, has_name)) found.push_back(id);
    }
  }
  // From the last on: no list has to close a gap then.
  for (auto id = found.rbegin(); id != found.rend(); ++id) TRY(remove(*id));
  return {};
}

Status MetaData::remove(ItemId id) {
  TRY_ASSIGN(ItemStore* const store, find(id));
  store->remove(id);
  common_keys_.erase(id);
  lists_.changed();
  return {};
}

Result<ItemId> MetaData::add(const ItemFilter& where, ItemValue value) {
  TRY(check(where));
  TRY_ASSIGN(const ItemKey key, key_to_add(where));
  TRY_ASSIGN(const ItemId id, lists_.store_for(where.storage).add(key, std::move(value)));
  if (where.key_format == key_format::kCommon) common_keys_[id] = code_in_memory(where.key);
  lists_.changed();
  return id;
}

Result<ItemValue> MetaData::value(ItemId id) {
  TRY_ASSIGN(const ItemStore* const store, find(id));
  return store->value(id);
}

Status MetaData::set_value(ItemId id, ItemValue value) {
  TRY_ASSIGN(ItemStore* const store, find(id));
  TRY(store->set_value(id, std::move(value)));
  lists_.changed();
  return {};
}

Result<Bytes> MetaData::property(ItemId id, FourCC property) {
  TRY_ASSIGN(const ItemStore* const store, find(id));
  const auto common = common_keys_.find(id);
  switch (property) {
    case kValue:
      return store->value(id).bytes;
    case kDataType:
      return in_memory(store->value(id).type);
    case kStorageFormat:
      return in_memory(store->storage());
    case kKeyFormat:
      return in_memory(common != common_keys_.end() ? key_format::kCommon : store->key(id).format);
    case kKey: {
      if (common != common_keys_.end()) return in_memory(common->second);
      ItemKey key = store->key(id);
      return is_code_format(key.format) ? in_memory(key.code()) : std::move(key.bytes);
    }
    case kLocale: {
      const std::string text = locale_text(store->locale(id));
      return Bytes(text.begin(), text.end());
    }
    default:
      return Status(kQTPropertyNotSupportedErr, "items have no property " + four_cc_text(property));
  }
}

Status MetaData::set_property(ItemId id, FourCC property, ByteView bytes) {
  TRY_ASSIGN(ItemStore* const store, find(id));
  if (property == kValue || property == kDataType) {
    ItemValue value = store->value(id);
    if (property == kValue) {
      value.bytes = to_bytes(bytes);
    } else if (bytes.size() == sizeof value.type) {
      std::memcpy(&value.type, bytes.data(), sizeof value.type);
    } else {
      return {kQTPropertyBadValueSizeErr,
              "a data type has 4 bytes, not " + std::to_string(bytes.size())};
    }
    return set_value(id, std::move(value));
  }
  if (property == kLocale) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::optional<Locale> locale = parse_locale(text);
    if (!locale)
      return {paramErr, "a locale is written as \"en_GB\", with a language that has a code"};
    TRY(store->set_locale(id, *locale));
    lists_.changed();
    return {};
  }
  if (property == kStorageFormat || property == kKey || property == kKeyFormat) {
    return {kQTPropertyReadOnlyErr, "the key of an item and its storage cannot be changed"};
  }
  return {kQTPropertyNotSupportedErr, "items have no property " + four_cc_text(property)};
}

std::vector<FourCC> MetaData::storages() {
  std::vector<FourCC> found;
  for (ItemStore* store : lists_.stores()) {
    const bool is_known = std::find(found.begin(), found.end(), store->storage()) != found.end();
    if (!is_known && store->next(0) != 0) found.push_back(store->storage());
  }
  return found;
}

Token MetaData::retain() {
  if (!reference_) reference_ = std::make_unique<Reference>();
  const Token token = reference_->token(Kind::kMetaData, this);
  if (token != 0) ++references_;
  return token;
}

void MetaData::release() {
  if (references_ > 0 && --references_ == 0) reference_.reset();
}

}  // namespace toolbox
