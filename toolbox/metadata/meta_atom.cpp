#include "metadata/meta_atom.h"

#include <algorithm>

#include "metadata/child_atoms.h"

namespace toolbox {

namespace {

constexpr FourCC kHandler = four_cc("hdlr");
constexpr FourCC kKeys = four_cc("keys");
constexpr FourCC kList = four_cc("ilst");
constexpr FourCC kData = four_cc("data");
constexpr FourCC kMean = four_cc("mean");
constexpr FourCC kName = four_cc("name");
constexpr FourCC kFreeForm = four_cc("----");
constexpr FourCC kCountries = four_cc("ctry");
constexpr FourCC kLanguages = four_cc("lang");
constexpr FourCC kQuickTimeHandler = four_cc("mdta");
constexpr FourCC kShortListHandler = four_cc("mdir");
constexpr std::string_view kUsualMean = "com.apple.iTunes";

constexpr size_t kVersionWord = 4;
constexpr size_t kValueHead = 8;  // of a data atom: type and locale, 32 bits each
constexpr size_t kKeysHead = 8;   // version and flags, and the count
constexpr size_t kMostItems = 1000000;

Status no_such_key(const ItemKey& key, const char* wanted) {
  return {kQTMetaDataInvalidKeyFormatErr,
          "a key of format " + four_cc_text(key.format) + " does not fit here; " + wanted};
}

std::string_view text_of(ByteView bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void append_text(Bytes& out, std::string_view text) {
  out.insert(out.end(), text.begin(), text.end());
}

}  // namespace

FourCC ItemKey::code() const {
  return bytes.size() == 4 ? load_big_endian<FourCC>(bytes.data()) : 0;
}

ItemKey key_of_code(FourCC format, FourCC code) {
  ItemKey key{format, Bytes(4)};
  store_big_endian(key.bytes.data(), code);
  return key;
}

namespace {

/// The handler of a `meta` atom whose children begin `rest`. Some writers leave it out; a list
/// without one has four-letter keys. 0 when these are no such children.
FourCC handler_of(ByteView rest) {
  ChildAtom child;
  if (!take_child(rest, child)) return 0;
  if (child.type == kList) return kShortListHandler;
  if (child.type != kHandler || child.payload.size() < 12) return 0;
  return load_big_endian<FourCC>(child.payload.data() + 8);
}

}  // namespace

std::unique_ptr<MetaAtom> MetaAtom::read(ByteView payload) {
  FourCC handler = handler_of(payload);
  size_t version = 0;
  if (handler == 0 && payload.size() >= kVersionWord) {
    version = kVersionWord;
    handler = handler_of(payload.subspan(version));
  }
  if (handler != kQuickTimeHandler && handler != kShortListHandler) return nullptr;
  std::unique_ptr<MetaAtom> atom(new MetaAtom);
  atom->storage_ =
      handler == kQuickTimeHandler ? storage_format::kQuickTime : storage_format::kShortList;
  atom->version_word_ = to_bytes(payload.first(version));
  atom->read_parts(payload.subspan(version));
  return atom;
}

std::unique_ptr<MetaAtom> MetaAtom::create(FourCC storage) {
  const bool has_keys = storage == storage_format::kQuickTime;
  Bytes payload;
  if (!has_keys) append_number<uint32_t>(payload, 0);
  const size_t handler = begin_child(payload, kHandler);
  for (const uint32_t word :
       {uint32_t{0}, uint32_t{0}, has_keys ? kQuickTimeHandler : kShortListHandler,
        has_keys ? 0 : four_cc("appl"), uint32_t{0}, uint32_t{0}}) {
    append_number(payload, word);
  }
  payload.push_back(0);  // an empty name
  end_child(payload, handler);
  if (has_keys) {
    const size_t keys = begin_child(payload, kKeys);
    append_number<uint64_t>(payload, 0);
    end_child(payload, keys);
  }
  end_child(payload, begin_child(payload, kList));
  std::unique_ptr<MetaAtom> atom = read(payload);
  atom->had_items_ = true;  // it is made for some
  return atom;
}

void MetaAtom::read_parts(ByteView rest) {
  ByteView keys;
  ByteView list;
  ByteView left = rest;
  ChildAtom child;
  while (parts_.size() < kMostItems && take_child(left, child)) {
    const ByteView whole = rest.first(rest.size() - left.size());
    rest = left;
    Part& part = parts_.emplace_back(Part{child.type, {}});
    const auto is_first = [&](const ByteView& seen) {
      return seen.data() == nullptr && !child.is_wide;
    };
    if (child.type == kKeys && storage_ == storage_format::kQuickTime && is_first(keys)) {
      keys = child.payload;
    } else if (child.type == kList && is_first(list)) {
      list = child.payload;
    } else {
      part.bytes = to_bytes(whole);
    }
  }
  tail_ = to_bytes(left);
  read_keys(keys);
  if (keys_damaged_) {
    // Written as it was read.
    Part& part = *std::find_if(parts_.begin(), parts_.end(),
                               [](const Part& each) { return each.type == kKeys; });
    const size_t mark = begin_child(part.bytes, kKeys);
    append(part.bytes, keys);
    end_child(part.bytes, mark);
  }
  read_list(list);
  for (Key& key : keys_) key.stays = key.users == 0;
  had_items_ = next(0) != 0;
}

void MetaAtom::read_keys(ByteView payload) {
  if (payload.data() == nullptr) return;
  if (payload.size() < kKeysHead) {
    keys_damaged_ = true;
    return;
  }
  keys_version_ = load_big_endian<uint32_t>(payload.data());
  const uint32_t count = load_big_endian<uint32_t>(payload.data() + 4);
  ByteView rest = payload.subspan(kKeysHead);
  ChildAtom child;
  while (keys_.size() < count && take_child(rest, child) && !child.is_wide) {
    keys_.push_back({child.type, to_bytes(child.payload), 0, false});
    if (child.type == kQuickTimeHandler) {
      key_numbers_.emplace(text_of(child.payload), static_cast<uint32_t>(keys_.size()));
    }
  }
  keys_damaged_ = keys_.size() < count || !rest.empty();
}

void MetaAtom::read_list(ByteView payload) {
  if (payload.data() == nullptr) return;
  size_t children = 0;
  ChildAtom child;
  while (children < kMostItems && take_child(payload, child)) {
    auto& entries = entries_.groups();
    const auto entry = entries.emplace(entries.end());
    entry->type = child.type;
    ByteView rest = child.payload;
    ChildAtom inner;
    const bool is_known = !child.is_wide;
    while (is_known && ++children < kMostItems && take_child(rest, inner) && !inner.is_wide) {
      const auto value =
          entry->values.insert(entry->values.end(), Child{0, inner.type, to_bytes(inner.payload)});
      if (is_value(*entry, *value)) entries_.enter(entry, value);
    }
    entry->tail = to_bytes(rest);
    entry->is_wide = child.is_wide;
    if (storage_ == storage_format::kShortList) {
      newest_[entry->type] = entry;
    } else if (key_of(*entry) != nullptr) {
      ++keys_[entry->type - 1].users;
    }
  }
  list_tail_ = to_bytes(payload);
}

const MetaAtom::Key* MetaAtom::key_of(const Entry& entry) const {
  if (storage_ != storage_format::kQuickTime || entry.type < 1 || entry.type > keys_.size())
    return nullptr;
  return &keys_[entry.type - 1];
}

bool MetaAtom::is_value(const Entry& entry, const Child& child) const {
  if (child.type != kData || child.payload.size() < kValueHead) return false;
  return storage_ != storage_format::kQuickTime || key_of(entry) != nullptr;
}

Bytes MetaAtom::payload() const {
  Bytes out = version_word_;
  for (const Part& part : parts_) {
    if (!part.bytes.empty()) {
      append(out, part.bytes);
    } else if (part.type == kKeys) {
      if (!part.is_new || !keys_.empty()) write_keys(out);
    } else if (!part.is_new || !entries_.groups().empty()) {
      write_list(out);
    }
  }
  append(out, tail_);
  return out;
}

void MetaAtom::write_keys(Bytes& out) const {
  const size_t mark = begin_child(out, kKeys);
  append_number(out, keys_version_);
  append_number(out, static_cast<uint32_t>(keys_.size()));
  for (const Key& key : keys_) {
    const size_t each = begin_child(out, key.name_space);
    append(out, key.bytes);
    end_child(out, each);
  }
  end_child(out, mark);
}

void MetaAtom::write_list(Bytes& out) const {
  const size_t mark = begin_child(out, kList);
  for (const Entry& entry : entries_.groups()) {
    const size_t each = begin_child(out, entry.type, entry.is_wide);
    for (const Child& child : entry.values) {
      const size_t inner = begin_child(out, child.type);
      append(out, child.payload);
      end_child(out, inner);
    }
    append(out, entry.tail);
    end_child(out, each, entry.is_wide);
  }
  append(out, list_tail_);
  end_child(out, mark);
}

bool MetaAtom::is_abandoned() const {
  return had_items_ && entries_.groups().empty() && payload() == create(storage_)->payload();
}

ItemKey MetaAtom::key(ItemId id) const {
  const Entry& entry = *entries_.find(id)->group;
  if (const Key* key = key_of(entry)) return {key_format::kQuickTime, key->bytes};
  if (entry.type != kFreeForm) return key_of_code(key_format::kShortForm, entry.type);
  Bytes mean;
  Bytes name;
  for (const Child& child : entry.values) {
    if (child.payload.size() < kVersionWord) continue;
    const ByteView text = ByteView(child.payload).subspan(kVersionWord);
    if (child.type == kMean) mean = to_bytes(text);
    if (child.type == kName) name = to_bytes(text);
  }
  mean.push_back(':');
  append(mean, name);
  return {key_format::kLongForm, std::move(mean)};
}

ItemValue MetaAtom::value(ItemId id) const {
  const Bytes& payload = child(id).payload;
  return {load_big_endian<uint32_t>(payload.data()),
          Bytes(payload.begin() + kValueHead, payload.end())};
}

/// The first code of list number `number` in an atom of country or language lists.
uint16_t MetaAtom::listed_code(FourCC list, uint16_t number) const {
  if (number == 0) return 0;
  for (const Part& part : parts_) {
    if (part.type != list || part.bytes.size() < 16) continue;
    ByteView rest = ByteView(part.bytes).subspan(16);  // atom header, version word, count of lists
    for (uint16_t i = 1; rest.size() >= 2; ++i) {
      const size_t bytes = size_t{2} * load_big_endian<uint16_t>(rest.data());
      if (rest.size() - 2 < bytes) return 0;
      if (i == number) return bytes == 0 ? 0 : load_big_endian<uint16_t>(rest.data() + 2);
      rest = rest.subspan(2 + bytes);
    }
  }
  return 0;
}

Locale MetaAtom::locale(ItemId id) const {
  constexpr uint16_t kLastList = 255;
  const uint8_t* bytes = child(id).payload.data() + 4;
  Locale locale{load_big_endian<uint16_t>(bytes), load_big_endian<uint16_t>(bytes + 2)};
  if (locale.country <= kLastList) locale.country = listed_code(kCountries, locale.country);
  if (locale.language <= kLastList) locale.language = listed_code(kLanguages, locale.language);
  return locale;
}

Status MetaAtom::set_value(ItemId id, ItemValue value) {
  Bytes& payload = entries_.find(id)->value->payload;
  payload.resize(kValueHead);
  store_big_endian(payload.data(), value.type);
  append(payload, value.bytes);
  return {};
}

Status MetaAtom::set_locale(ItemId id, Locale locale) {
  uint8_t* bytes = entries_.find(id)->value->payload.data() + 4;
  store_big_endian(bytes, locale.country);
  store_big_endian(bytes + 2, locale.language);
  return {};
}

void MetaAtom::ensure_part(FourCC type, FourCC behind) {
  const auto find = [&](FourCC wanted) {
    return std::find_if(parts_.begin(), parts_.end(), [&](const Part& part) {
      return part.type == wanted && (wanted != type || part.bytes.empty());
    });
  };
  if (find(type) != parts_.end()) return;
  auto place = find(behind);
  if (place == parts_.end()) place = find(kHandler);
  parts_.insert(place == parts_.end() ? place : std::next(place), Part{type, {}, true});
}

Result<uint32_t> MetaAtom::enter_key(const Bytes& key) {
  if (const auto found = key_numbers_.find(std::string(text_of(key)));
      found != key_numbers_.end()) {
    return found->second;
  }
  if (keys_damaged_) {
    return Status(badPublicMovieAtom, "the list of metadata keys is damaged; no key can be added");
  }
  ensure_part(kKeys, kHandler);
  keys_.push_back({kQuickTimeHandler, key, 0, false});
  const auto number = static_cast<uint32_t>(keys_.size());
  key_numbers_.emplace(text_of(key), number);
  return number;
}

/// A key that nothing uses goes when it is the last one: those behind it would get other numbers.
void MetaAtom::leave_key(uint32_t number) {
  Key& key = keys_[number - 1];
  --key.users;
  if (keys_damaged_) return;
  while (!keys_.empty() && keys_.back().users == 0 && !keys_.back().stays) {
    const auto found = key_numbers_.find(std::string(text_of(keys_.back().bytes)));
    if (found != key_numbers_.end() && found->second == keys_.size()) key_numbers_.erase(found);
    keys_.pop_back();
  }
}

Result<ItemId> MetaAtom::add(const ItemKey& key, ItemValue value) {
  constexpr uint64_t kLargestValue = 256 * 1024 * 1024;
  if (value.bytes.size() > kLargestValue)
    return Status(paramErr, "a value of metadata can have 256 MiB");
  Entry entry;
  bool joins = false;
  if (storage_ == storage_format::kQuickTime) {
    if (key.format != key_format::kQuickTime || key.bytes.empty())
      return no_such_key(key, "a text is needed");
    TRY_ASSIGN(entry.type, enter_key(key.bytes));
    ++keys_[entry.type - 1].users;
  } else if (key.format == key_format::kShortForm && key.code() != 0 && key.code() != kFreeForm) {
    entry.type = key.code();
    joins = newest_.contains(entry.type);
  } else if (key.format == key_format::kLongForm && !key.bytes.empty()) {
    entry.type = kFreeForm;
    const std::string_view text = text_of(key.bytes);
    const size_t colon = text.rfind(':');
    const bool has_mean = colon != std::string_view::npos && colon > 0;
    const std::string_view mean = has_mean ? text.substr(0, colon) : kUsualMean;
    const std::string_view name = colon == std::string_view::npos ? text : text.substr(colon + 1);
    for (const auto& [type, part] : {std::pair(kMean, mean), std::pair(kName, name)}) {
      Child& child = entry.values.emplace_back(Child{0, type, Bytes(kVersionWord)});
      append_text(child.payload, part);
    }
  } else {
    return no_such_key(key, "four letters, or a long form are needed");
  }
  ensure_part(kList, kKeys);
  auto& entries = entries_.groups();
  // Readers expect several values of a four-letter key inside one entry.
  const auto place = joins ? newest_[entry.type] : entries.insert(entries.end(), std::move(entry));
  if (storage_ == storage_format::kShortList && place->type != kFreeForm)
    newest_[place->type] = place;
  const auto child = place->values.insert(place->values.end(), Child{0, kData, Bytes(kValueHead)});
  const ItemId id = entries_.enter(place, child);
  TRY(set_value(id, std::move(value)));
  return id;
}

void MetaAtom::remove(ItemId id) {
  const Entries::Place place = *entries_.find(id);
  const auto entry = place.group;
  entries_.erase(place);
  // Names and numbers of an entry without values are of no use to anybody.
  const bool is_empty = std::none_of(entry->values.begin(), entry->values.end(),
                                     [](const Child& child) { return child.id != 0; });
  if (!is_empty) return;
  const FourCC type = entry->type;
  if (const auto found = newest_.find(type); found != newest_.end() && found->second == entry)
    newest_.erase(found);
  entries_.erase(entry);
  if (storage_ == storage_format::kQuickTime) leave_key(type);
}

}  // namespace toolbox
