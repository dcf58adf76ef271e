// The texts of user data items, one in each language.
#include <algorithm>

#include "foundation/mac_roman.h"
#include "metadata/child_atoms.h"
#include "metadata/locale.h"
#include "metadata/user_data.h"

namespace toolbox {

namespace {

constexpr size_t kLongestText = 65535;  // bytes

Status check_length(ByteView text) {
  if (text.size() <= kLongestText) return {};
  return {paramErr, "a text of user data can have " + std::to_string(kLongestText) +
                        " bytes, this one has " + std::to_string(text.size())};
}

bool has_utf16_mark(ByteView text) {
  return text.size() >= 2 && text[0] == 0xFE && text[1] == 0xFF;
}

std::list<UserDataText>::iterator find_exact(UserDataItem& item, uint16_t region) {
  return std::find_if(item.values.begin(), item.values.end(),
                      [&](const UserDataText& text) { return text.language == region; });
}

/// The text of a region, and for region 0 one of no particular language; the end when there is
/// none.
std::list<UserDataText>::iterator find_region(UserDataItem& item, uint16_t region) {
  const auto none = item.values.end();
  if (item.form == UserDataItem::Form::kPlainText) return item.values.begin();
  auto found = find_exact(item, region);
  if (region != 0) return found;
  for (const uint16_t other : {kUnspecifiedLanguage, kPackedEnglish, kUndeterminedLanguage}) {
    if (found == none) found = find_exact(item, other);
  }
  return found == none && item.values.size() == 1 ? item.values.begin() : found;
}

Status no_text(FourCC type, uint16_t region) {
  return {userDataItemNotFound,
          "the item " + four_cc_text(type) + " has no text of region " + std::to_string(region)};
}

}  // namespace

Bytes shown_text(const UserDataItem& item, const UserDataText& text) {
  if (has_utf16_mark(text.bytes)) return utf8_of_utf16(text.bytes);
  const bool may_be_utf8 =
      item.form == UserDataItem::Form::kPlainText || is_packed_language(text.language);
  if (may_be_utf8 && is_utf8(text.bytes)) return text.bytes;
  return utf8_of_mac_roman(text.bytes);
}

Result<Bytes> UserDataList::text(FourCC type, int64_t index, uint16_t region) {
  TRY_ASSIGN(const auto item, find(type, index));
  if (item->form == UserDataItem::Form::kData) return item->data;
  const auto text = find_region(*item, region);
  if (text == item->values.end()) return no_text(type, region);
  // Callers take what they get as MacRoman. A text that is not said to be anything else is that.
  const bool is_known = item->form == UserDataItem::Form::kTexts &&
                        (has_utf16_mark(text->bytes) || is_packed_language(text->language));
  return is_known ? mac_roman_of_utf8(shown_text(*item, *text)) : text->bytes;
}

Status UserDataList::set_text(FourCC type, int64_t index, uint16_t region, ByteView bytes) {
  TRY(check_length(bytes));
  if (index == 1 && count(type) == 0) {
    if (type == 0 || type == kMetaType) return {paramErr, "an item of text needs a type"};
    UserDataText text;
    text.language = region;
    text.bytes = to_bytes(bytes);
    return add_text_item(type, std::move(text)).take_status();
  }
  TRY_ASSIGN(const auto item, find(type, index));
  if (item->form != UserDataItem::Form::kTexts) {
    // What had no language gives way to the text that has one.
    while (!item->values.empty()) items_.erase({item, item->values.begin()});
    item->data.clear();
    item->form = UserDataItem::Form::kTexts;
  }
  auto text = find_exact(*item, region);
  if (text == item->values.end()) {
    text = item->values.emplace(item->values.end());
    text->language = region;
    items_.enter(item, text);
  }
  text->bytes = to_bytes(bytes);
  text->given.reset();
  changed();
  return {};
}

Status UserDataList::remove_text(FourCC type, int64_t index, uint16_t region) {
  TRY_ASSIGN(const auto item, find(type, index));
  const auto text = find_region(*item, region);
  if (text == item->values.end()) return no_text(type, region);
  remove_value(text->id);
  return {};
}

Result<ItemId> UserDataList::add_text_item(FourCC type, UserDataText text) {
  TRY(check_length(text.bytes));
  UserDataItem item;
  item.type = type;
  item.form = UserDataItem::Form::kTexts;
  item.values.push_back(std::move(text));
  enter(std::move(item));
  changed();
  return items_.groups().back().values.front().id;
}

void UserDataList::remove_value(ItemId id) {
  const auto* place = items_.find(id);
  if (place == nullptr) return;
  const auto item = place->group;
  if (item->values.size() == 1) {
    erase(item);
  } else {
    items_.erase(*place);
  }
  changed();
}

}  // namespace toolbox
