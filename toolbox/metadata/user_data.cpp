#include "metadata/user_data.h"

#include <algorithm>
#include <atomic>

#include "metadata/child_atoms.h"

namespace toolbox {

namespace {

constexpr FourCC kName = four_cc("name");
constexpr FourCC kDataAtom = four_cc("data");
constexpr size_t kTextHead = 4;  // length and language, 16 bits each

Status not_found(FourCC type, int64_t index) {
  return {userDataItemNotFound,
          "the list has no item " + four_cc_text(type) + " number " + std::to_string(index)};
}

/// Takes texts off the front of a payload as far as they go.
void read_texts(ByteView& rest, std::list<UserDataText>& texts) {
  while (rest.size() >= kTextHead && texts.size() < UserDataList::kMostItems) {
    const size_t length = load_big_endian<uint16_t>(rest.data());
    if (length > rest.size() - kTextHead) return;
    UserDataText& text = texts.emplace_back();
    text.language = load_big_endian<uint16_t>(rest.data() + 2);
    text.bytes = to_bytes(rest.subspan(kTextHead, length));
    rest = rest.subspan(kTextHead + length);
  }
}

/// An atom `data` inside, as metadata has it: some writers put one into a text item.
bool holds_data_atom(ByteView payload) {
  ChildAtom child;
  return take_child(payload, child) && child.type == kDataAtom;
}

UserDataItem item_of(FourCC type, ByteView payload) {
  UserDataItem item;
  item.type = type;
  const auto as_data = [&](UserDataItem::Form form) {
    item.form = form;
    item.values.clear();
    if (form == UserDataItem::Form::kPlainText) {
      item.values.emplace_back().bytes = to_bytes(payload);
    } else {
      item.data = to_bytes(payload);
    }
  };
  if (!is_text_type(type) && type != kName) {
    as_data(UserDataItem::Form::kData);
    return item;
  }
  ByteView rest = payload;
  if (!holds_data_atom(payload)) read_texts(rest, item.values);
  // A name is plain text more often than not, so that its lengths have to be right to the byte.
  if (item.values.empty() || (type == kName && !rest.empty())) {
    as_data(payload.empty() ? UserDataItem::Form::kData : UserDataItem::Form::kPlainText);
  } else {
    item.form = UserDataItem::Form::kTexts;
    item.data = to_bytes(rest);
  }
  return item;
}

}  // namespace

ItemId next_item_id() {
  static std::atomic<ItemId> last{0};
  return ++last;
}

Bytes UserDataItem::payload() const {
  if (form == Form::kData) return data;
  Bytes out;
  for (const UserDataText& text : values) {
    if (form == Form::kTexts) {
      append_number(out, static_cast<uint16_t>(text.bytes.size()));
      append_number(out, text.language);
    }
    append(out, text.bytes);
  }
  append(out, data);
  return out;
}

void UserDataList::enter(UserDataItem item) {
  auto& groups = items_.groups();
  const auto place = groups.insert(groups.end(), std::move(item));
  enter_texts(place);
  by_type_[place->type].push_back(place);
  next_types_.clear();
}

void UserDataList::enter_texts(Items::GroupPlace item) {
  for (auto text = item->values.begin(); text != item->values.end(); ++text) {
    items_.enter(item, text);
  }
}

void UserDataList::read(ByteView payload) {
  ChildAtom child;
  while (items_.groups().size() < kMostItems && take_child(payload, child)) {
    UserDataItem item = item_of(child.type, child.payload);
    item.is_wide = child.is_wide;
    enter(std::move(item));
  }
  tail_ = to_bytes(payload);
}

Status UserDataList::read_flat(ByteView bytes) {
  read(bytes);
  const bool is_ended =
      tail_.empty() || (tail_.size() == 4 && load_big_endian<uint32_t>(tail_.data()) == 0);
  if (is_ended) {
    tail_.clear();
    return {};
  }
  const size_t offset = bytes.size() - tail_.size();
  items_.groups().clear();
  items_ = {};
  by_type_.clear();
  tail_.clear();
  return {paramErr, "no user data item begins at byte " + std::to_string(offset) + " of " +
                        std::to_string(bytes.size())};
}

Bytes UserDataList::flat() const {
  Bytes out;
  for (const UserDataItem& item : items_.groups()) {
    if (item.type == kMetaType) continue;
    const size_t mark = begin_child(out, item.type);
    append(out, item.payload());
    end_child(out, mark);
  }
  append_number<uint32_t>(out, 0);
  return out;
}

const std::deque<UserDataList::Items::GroupPlace>* UserDataList::of_type(FourCC type) {
  const auto found = by_type_.find(type);
  return found == by_type_.end() || type == kMetaType ? nullptr : &found->second;
}

Result<UserDataList::Items::GroupPlace> UserDataList::find(FourCC type, int64_t index) {
  const auto* places = of_type(type);
  if (places == nullptr || index < 1 || static_cast<uint64_t>(index) > places->size()) {
    return not_found(type, index);
  }
  return (*places)[static_cast<size_t>(index) - 1];
}

void UserDataList::erase(Items::GroupPlace item) {
  // Lists are emptied from one of their ends more often than from the middle.
  std::deque<Items::GroupPlace>& places = by_type_[item->type];
  if (places.front() == item) {
    places.pop_front();
  } else {
    const auto found = std::find(places.rbegin(), places.rend(), item);
    places.erase(std::next(found).base());
  }
  if (places.empty()) by_type_.erase(item->type);
  next_types_.clear();
  items_.erase(item);
}

void UserDataList::changed() {
  if (changed_) changed_();
}

Status UserDataList::add(FourCC type, ByteView payload) {
  if (type == 0) return {paramErr, "an item of user data needs a type"};
  if (type == kMetaType) return {paramErr, "metadata is changed through its own calls"};
  if (payload.size() > UINT32_MAX - 8) return {paramErr, "an item of user data can hold 4 GiB"};
  enter(item_of(type, payload));
  changed();
  return {};
}

Result<Bytes> UserDataList::data(FourCC type, int64_t index) {
  TRY_ASSIGN(const auto item, find(type, index));
  return item->payload();
}

Status UserDataList::replace(FourCC type, int64_t index, ByteView payload) {
  TRY_ASSIGN(const auto item, find(type, index));
  UserDataItem replacement = item_of(type, payload);
  for (const UserDataText& text : item->values) items_.forget(text.id);
  *item = std::move(replacement);
  enter_texts(item);
  changed();
  return {};
}

Status UserDataList::remove(FourCC type, int64_t index) {
  TRY_ASSIGN(const auto item, find(type, index));
  erase(item);
  changed();
  return {};
}

size_t UserDataList::count(FourCC type) {
  const auto* places = of_type(type);
  return places == nullptr ? 0 : places->size();
}

FourCC UserDataList::next_type(FourCC type) {
  if (next_types_.empty()) {
    FourCC last = 0;
    for (const UserDataItem& item : items_.groups()) {
      if (item.type == kMetaType || item.type == 0 || item.type == last) continue;
      if (next_types_.contains(item.type)) continue;
      next_types_[last] = item.type;
      next_types_[item.type] = 0;
      last = item.type;
    }
  }
  const auto found = next_types_.find(type);
  return found == next_types_.end() ? 0 : found->second;
}

}  // namespace toolbox
