// User data: a list of typed items, text or bytes, that belongs to a movie, a track or a caller.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "base/four_cc.h"
#include "base/status.h"
#include "memory/tokens.h"
#include "metadata/grouped_values.h"

namespace toolbox {

/// A text of an item, in one language.
struct UserDataText {
  /// What the metadata calls were given for this text: it is answered until the list is read anew.
  struct Given {
    uint32_t type;
    Bytes bytes;
  };

  ItemId id = 0;
  uint16_t language = 0;  // see metadata/locale.h
  Bytes bytes;
  std::optional<Given> given;
};

/// An item. Its bytes are those that were read, as long as it is not changed.
struct UserDataItem {
  enum class Form : uint8_t {
    kTexts,      // length, language, text; again for each language
    kPlainText,  // a text alone; its language is not said
    kData,       // bytes that are nobody's business here
  };

  FourCC type = 0;
  Form form = Form::kData;
  bool is_wide = false;            // its size takes 64 bits
  std::list<UserDataText> values;  // one in a plain text, none in data
  Bytes data;                      // all of data; what stands loose behind texts

  Bytes payload() const;
};

/// A list. Opening and writing one back gives the same bytes, whatever it holds: unknown items,
/// damage and loose bytes are kept in their places. Indexes count from 1 among items of a type.
class UserDataList {
 public:
  /// The most items, and texts in one item, that are told apart; what is behind is kept as bytes.
  static constexpr size_t kMostItems = 1000000;

  /// What GetUserData callers never see: its content belongs to the metadata.
  static constexpr FourCC kMetaType = four_cc("meta");

  enum class Owner : uint8_t { kCaller, kMovie };

  explicit UserDataList(Owner owner) : owner_(owner) {}
  UserDataList(const UserDataList&) = delete;
  UserDataList& operator=(const UserDataList&) = delete;

  /// Reads the payload of a `udta` atom: leniently, nothing fails.
  void read(ByteView payload);

  /// Reads the flattened form. Fails: paramErr for what is not one; the list is then empty.
  Status read_flat(ByteView bytes);

  /// The flattened form: items, without metadata and damage, and the terminator.
  Bytes flat() const;

  Owner owner() const { return owner_; }
  GroupedValues<UserDataItem>& items() { return items_; }
  const GroupedValues<UserDataItem>& items() const { return items_; }

  /// What stood behind the last item: the terminator, loose bytes, damage.
  const Bytes& tail() const { return tail_; }
  void set_terminator() { tail_.assign(4, 0); }

  // Items as bytes; what replaces an item stands in its place. Fail: userDataItemNotFound; add:
  // paramErr for type 0 and for metadata.
  Status add(FourCC type, ByteView payload);
  Result<Bytes> data(FourCC type, int64_t index);
  Status replace(FourCC type, int64_t index, ByteView payload);
  Status remove(FourCC type, int64_t index);
  size_t count(FourCC type);

  /// The next type in order of first appearance, the first for 0; 0 when there is none.
  FourCC next_type(FourCC type);

  // Texts. `region` is the language as the item has it. Asked for 0, a text in English or of no
  // particular language will do, and the only one of an item. What is read is in MacRoman.
  // Fail: userDataItemNotFound; set_text: paramErr for more than 65535 bytes.
  Status set_text(FourCC type, int64_t index, uint16_t region, ByteView text);
  Result<Bytes> text(FourCC type, int64_t index, uint16_t region);
  Status remove_text(FourCC type, int64_t index, uint16_t region);

  /// A new item behind the last with one text. Fails: paramErr for more than 65535 bytes.
  Result<ItemId> add_text_item(FourCC type, UserDataText text);

  /// Takes a text out, and its item when it was the last one.
  void remove_value(ItemId id);

  /// Called behind every change.
  void on_change(std::function<void()> changed) { changed_ = std::move(changed); }
  void changed();

  Token token() { return reference_.token(Kind::kUserData, this); }

 private:
  using Items = GroupedValues<UserDataItem>;

  void enter(UserDataItem item);
  void enter_texts(Items::GroupPlace item);
  Result<Items::GroupPlace> find(FourCC type, int64_t index);
  void erase(Items::GroupPlace item);
  const std::deque<Items::GroupPlace>* of_type(FourCC type);

  Owner owner_;
  Items items_;
  Bytes tail_;
  std::unordered_map<FourCC, std::deque<Items::GroupPlace>> by_type_;
  std::unordered_map<FourCC, FourCC> next_types_;  // worked out when asked; empty when not
  std::function<void()> changed_;
  Reference reference_;
};

/// Whether items of this type are texts by their name: they begin with the sign 0xA9.
constexpr bool is_text_type(FourCC type) { return type >> 24 == 0xA9; }

/// The text of an item that is text, ready to be shown: UTF-8.
Bytes shown_text(const UserDataItem& item, const UserDataText& text);

}  // namespace toolbox
