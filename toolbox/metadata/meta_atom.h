// The atom `meta` of QuickTime keys and of lists with four-letter keys.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "metadata/item_store.h"

namespace toolbox {

/// A `meta` atom. Its items are the `data` atoms of its list: an entry with several has several
/// items under one key. What is not understood stays as it is, in its place.
class MetaAtom : public ItemStore {
 public:
  /// Reads a payload, with or without the word of version and flags. Null for other handlers, whose
  /// atoms are not metadata of this kind.
  static std::unique_ptr<MetaAtom> read(ByteView payload);

  /// A new one without items: of QuickTime keys, or of four-letter keys.
  static std::unique_ptr<MetaAtom> create(FourCC storage);

  /// The payload as it is now; that which was read when nothing changed.
  Bytes payload() const;

  /// Whether it has no content beyond what create() makes, though it was made or read with some:
  /// the items that it was there for have gone.
  bool is_abandoned() const;

  FourCC storage() const override { return storage_; }
  ItemId next(ItemId id) override { return entries_.next(id); }
  bool holds(ItemId id) const override { return entries_.find(id) != nullptr; }
  ItemKey key(ItemId id) const override;
  ItemValue value(ItemId id) const override;
  Locale locale(ItemId id) const override;
  Result<ItemId> add(const ItemKey& key, ItemValue value) override;
  Status set_value(ItemId id, ItemValue value) override;
  Status set_locale(ItemId id, Locale locale) override;
  void remove(ItemId id) override;

 private:
  /// An atom inside an entry; a value when it is a whole `data` atom: type, locale, bytes.
  struct Child {
    ItemId id = 0;
    FourCC type = 0;
    Bytes payload;
  };

  /// An atom of the list. The type is the number of a key, or a four-letter key.
  struct Entry {
    FourCC type = 0;
    bool is_wide = false;  // its size takes 64 bits; what is in it is left alone
    std::list<Child> values;
    Bytes tail;
  };
  using Entries = GroupedValues<Entry>;

  struct Key {
    FourCC name_space = 0;
    Bytes bytes;
    uint32_t users = 0;  // entries of the list
    bool stays = false;  // it was read without users
  };

  /// A child of the atom, whole. The keys and the list have no bytes here: they are written anew.
  struct Part {
    FourCC type = 0;
    Bytes bytes;
    bool is_new = false;  // left out as long as it is empty
  };

  MetaAtom() = default;
  void read_parts(ByteView rest);
  void read_keys(ByteView payload);
  void read_list(ByteView payload);
  void write_keys(Bytes& out) const;
  void write_list(Bytes& out) const;
  Result<uint32_t> enter_key(const Bytes& key);
  void leave_key(uint32_t number);
  const Key* key_of(const Entry& entry) const;
  bool is_value(const Entry& entry, const Child& child) const;
  const Child& child(ItemId id) const { return *entries_.find(id)->value; }
  void ensure_part(FourCC type, FourCC behind);
  uint16_t listed_code(FourCC list, uint16_t number) const;

  FourCC storage_ = 0;
  Bytes version_word_;  // 4 bytes, or none
  std::vector<Part> parts_;
  Bytes tail_;

  uint32_t keys_version_ = 0;  // version and flags
  std::vector<Key> keys_;
  bool keys_damaged_ = false;  // fewer can be read than are counted; then they stay as they are
  std::unordered_map<std::string, uint32_t>
      key_numbers_;  // of namespace `mdta`, the first of equals

  Entries entries_;
  std::unordered_map<FourCC, Entries::GroupPlace> newest_;  // of each four-letter key
  Bytes list_tail_;
  bool had_items_ = false;
};

}  // namespace toolbox
