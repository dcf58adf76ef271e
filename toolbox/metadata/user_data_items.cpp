#include "metadata/user_data_items.h"

#include "foundation/mac_roman.h"
#include "metadata/child_atoms.h"

namespace toolbox {

namespace {

constexpr FourCC kName = four_cc("name");
constexpr FourCC kDataAtom = four_cc("data");
constexpr size_t kDataHead = 8;  // of such an atom: type and locale

bool may_hold(FourCC type) { return is_text_type(type) || type == kName; }

/// The atom `data` that some writers put into a text item; its payload, or nothing.
ByteView data_atom_in(const UserDataItem& item, const UserDataText& text) {
  ByteView rest = text.bytes;
  ChildAtom child;
  const bool found = item.form == UserDataItem::Form::kPlainText && take_child(rest, child) &&
                     child.type == kDataAtom && child.payload.size() >= kDataHead;
  return found ? child.payload : ByteView();
}

uint32_t type_of(const UserDataItem& item, const UserDataText& text) {
  if (text.bytes.size() >= 2 && text.bytes[0] == 0xFE && text.bytes[1] == 0xFF) {
    return value_type::kUtf16;
  }
  if (item.form == UserDataItem::Form::kPlainText) {
    return is_utf8_beyond_ascii(text.bytes) ? value_type::kUtf8 : value_type::kMacText;
  }
  return is_packed_language(text.language) ? value_type::kUtf8 : value_type::kMacText;
}

/// What a value becomes in a list. A text that is not MacRoman is stored as UTF-8 of no particular
/// language, the one form that other readers agree on.
Result<UserDataText> text_of(ItemValue value) {
  UserDataText text;
  switch (value.type) {
    case value_type::kUtf8:
      text.language = kUndeterminedLanguage;
      text.bytes = value.bytes;
      break;
    case value_type::kUtf16:
      text.language = kUndeterminedLanguage;
      text.bytes = utf8_of_utf16(value.bytes);
      break;
    case value_type::kMacText:
      text.language = kClassicEnglish;
      text.bytes = value.bytes;
      break;
    default:
      return Status(paramErr, "user data holds text, of types 1, 2 and 3, not a value of type " +
                                  std::to_string(value.type));
  }
  if (text.bytes.size() > UINT16_MAX) {
    return Status(paramErr, "a text of user data can have 65535 bytes, this one has " +
                                std::to_string(text.bytes.size()));
  }
  text.given = {value.type, std::move(value.bytes)};
  return text;
}

}  // namespace

ItemId UserDataItems::next(ItemId id) {
  // Only texts have IDs; callers may have given an item of any type a text.
  do {
    id = list_.items().next(id);
  } while (id != 0 && !may_hold(list_.items().find(id)->group->type));
  return id;
}

bool UserDataItems::holds(ItemId id) const {
  const auto* place = list_.items().find(id);
  return place != nullptr && may_hold(place->group->type);
}

ItemKey UserDataItems::key(ItemId id) const {
  return key_of_code(key_format::kUserData, list_.items().find(id)->group->type);
}

ItemValue UserDataItems::value(ItemId id) const {
  const auto& [item, text] = *list_.items().find(id);
  if (text->given) return {text->given->type, text->given->bytes};
  if (const ByteView data = data_atom_in(*item, *text); !data.empty()) {
    return {load_big_endian<uint32_t>(data.data()), to_bytes(data.subspan(kDataHead))};
  }
  return {type_of(*item, *text), text->bytes};
}

Locale UserDataItems::locale(ItemId id) const {
  const auto& [item, text] = *list_.items().find(id);
  if (const ByteView data = data_atom_in(*item, *text); !data.empty()) {
    return {load_big_endian<uint16_t>(data.data() + 4), load_big_endian<uint16_t>(data.data() + 6)};
  }
  const bool is_said =
      item->form == UserDataItem::Form::kTexts && is_packed_language(text->language);
  return {0, is_said ? text->language : uint16_t{0}};
}

Result<ItemId> UserDataItems::add(const ItemKey& key, ItemValue value) {
  if (key.format != key_format::kUserData || !may_hold(key.code())) {
    return Status(kQTMetaDataInvalidKeyFormatErr,
                  "metadata in user data has keys that begin with \xC2\xA9, or \"name\"");
  }
  TRY_ASSIGN(UserDataText text, text_of(std::move(value)));
  return list_.add_text_item(key.code(), std::move(text));
}

Status UserDataItems::set_value(ItemId id, ItemValue value) {
  TRY_ASSIGN(UserDataText text, text_of(std::move(value)));
  const auto& [item, place] = *list_.items().find(id);
  const bool keeps_language =
      text.language == kUndeterminedLanguage && is_packed_language(place->language);
  text.id = id;
  if (keeps_language) text.language = place->language;
  *place = std::move(text);
  // A name that had no language stays so: others read it as it was.
  if (item->type != kName) item->form = UserDataItem::Form::kTexts;
  list_.changed();
  return {};
}

Status UserDataItems::set_locale(ItemId id, Locale locale) {
  const auto& [item, text] = *list_.items().find(id);
  const uint16_t language = locale.language == 0 ? kUndeterminedLanguage : locale.language;
  if (!is_packed_language(text->language) || item->form != UserDataItem::Form::kTexts) {
    // Only UTF-8 goes with a language of three letters.
    text->bytes = shown_text(*item, *text);
    text->given.reset();
    item->form = UserDataItem::Form::kTexts;
  }
  text->language = language;
  list_.changed();
  return {};
}

}  // namespace toolbox
