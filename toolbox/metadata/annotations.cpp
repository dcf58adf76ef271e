#include "metadata/annotations.h"

#include <algorithm>

#include "metadata/child_atoms.h"
#include "metadata/metadata.h"

namespace toolbox {

namespace {

constexpr FourCC kUserData = four_cc("udta");
constexpr FourCC kMeta = UserDataList::kMetaType;
constexpr size_t kHeader = 8;  // of an atom that is written here
constexpr uint64_t kLargestList = 64 * 1024 * 1024;

AtomIndex child_number(const Annotations::Source& source, FourCC type, uint32_t number) {
  if (source.parent == kNoAtom) return kNoAtom;
  AtomIndex child = source.tree.find_child(source.parent, type);
  for (; child != kNoAtom && number > 0; --number) child = source.tree.find_next(child, type);
  return child;
}

uint32_t count_children(const Annotations::Source& source, FourCC type) {
  if (source.parent == kNoAtom) return 0;
  uint32_t count = 0;
  for (AtomIndex child = source.tree.find_child(source.parent, type); child != kNoAtom;
       child = source.tree.find_next(child, type)) {
    ++count;
  }
  return count;
}

Result<Bytes> load(const ByteRange& range) {
  Bytes bytes(range.size);
  TRY(range.source->read(range.offset, bytes));
  return bytes;
}

/// The payload of a child as the changes leave it; nothing when there is none.
Result<std::optional<Bytes>> payload_of(const Annotations::Source& source, FourCC type,
                                        uint32_t number) {
  if (const AtomChanges::Change* change = source.changes.find(type, number)) {
    ChildAtom child;
    ByteView rest = change->atom ? ByteView(*change->atom) : ByteView();
    if (!take_child(rest, child)) return std::optional<Bytes>();
    return std::optional<Bytes>(to_bytes(child.payload));
  }
  const AtomIndex index = child_number(source, type, number);
  if (index == kNoAtom) return std::optional<Bytes>();
  const ByteRange range = source.tree.payload(index);
  if (range.size > kLargestList) {
    return source.tree.failure(
        index, memFullErr, "", range.offset,
        "the list has " + std::to_string(range.size) + " bytes; lists of up to 64 MiB are read");
  }
  TRY_ASSIGN(Bytes bytes, load(range));
  return std::optional<Bytes>(std::move(bytes));
}

/// Notes what a child is to be; nothing stands for none.
Status put(const Annotations::Source& source, FourCC type, uint32_t number,
           std::optional<Bytes> atom) {
  if (atom && atom->size() > UINT32_MAX) {
    return {cantPutPublicMovieAtom, four_cc_text(type) + " would have more than 4 GiB"};
  }
  const AtomIndex index = child_number(source, type, number);
  bool is_as_in_file = !atom && index == kNoAtom;
  // The payload is what counts: a header may claim more than there is, or take 16 bytes.
  if (atom && index != kNoAtom && source.tree.payload(index).size == atom->size() - kHeader) {
    TRY_ASSIGN(const Bytes original, load(source.tree.payload(index)));
    is_as_in_file = std::equal(original.begin(), original.end(), atom->begin() + kHeader);
  }
  if (is_as_in_file) {
    source.changes.forget(type, number);
  } else if (atom) {
    source.changes.replace(type, std::move(*atom), number);
  } else {
    source.changes.remove(type, number);
  }
  return {};
}

bool is_ended_plainly(const Bytes& tail) {
  return tail.empty() || (tail.size() == 4 && load_big_endian<uint32_t>(tail.data()) == 0);
}

}  // namespace

Annotations::Annotations()
    : user_data_(UserDataList::Owner::kMovie), user_data_items_(user_data_) {}

Annotations::~Annotations() = default;

MetaData& Annotations::metadata() {
  if (!metadata_) metadata_ = std::make_unique<MetaData>(*this);
  return *metadata_;
}

Result<std::unique_ptr<Annotations>> Annotations::read(const Source& source) {
  std::unique_ptr<Annotations> lists(new Annotations);
  TRY_ASSIGN(const std::optional<Bytes> user_data, payload_of(source, kUserData, 0));
  lists->user_data_in_file_ = lists->user_data_written_ = user_data.has_value();
  if (user_data) lists->user_data_.read(*user_data);
  lists->user_data_was_empty_ = user_data && lists->user_data_.items().groups().empty();

  uint32_t children = count_children(source, kMeta);
  for (const AtomChanges::Change& change : source.changes.list()) {
    if (change.type == kMeta) children = std::max(children, change.number + 1);
  }
  for (uint32_t number = 0; number < children; ++number) {
    TRY_ASSIGN(const std::optional<Bytes> payload, payload_of(source, kMeta, number));
    MetaPlace place;
    if (payload) place.atom = MetaAtom::read(*payload);
    place.number = number;
    if (place.atom) lists->metas_.push_back(std::move(place));
  }
  auto& items = lists->user_data_.items().groups();
  for (auto item = items.begin(); item != items.end(); ++item) {
    if (item->type != kMeta) continue;
    MetaPlace place;
    place.atom = MetaAtom::read(item->data);
    place.is_item = true;
    place.item = item;
    if (place.atom) lists->metas_.push_back(std::move(place));
  }
  lists->list_stores();
  Annotations& self = *lists;
  self.user_data_.on_change([&self] { self.changed(); });
  return lists;
}

void Annotations::list_stores() {
  stores_.clear();
  for (const FourCC storage : {storage_format::kQuickTime, storage_format::kShortList}) {
    for (const MetaPlace& place : metas_) {
      if (place.atom->storage() == storage) stores_.push_back(place.atom.get());
    }
  }
  stores_.push_back(&user_data_items_);
}

ItemStore& Annotations::store_for(FourCC storage) {
  const auto found = std::find_if(stores_.begin(), stores_.end(), [&](const ItemStore* store) {
    return store->storage() == storage;
  });
  if (found != stores_.end()) return **found;
  MetaPlace place;
  place.atom = MetaAtom::create(storage);
  MetaAtom& atom = *place.atom;
  if (storage == storage_format::kShortList) {
    auto& items = user_data_.items().groups();
    place.is_item = true;
    place.item = items.emplace(items.end());
    place.item->type = kMeta;
  }
  metas_.push_back(std::move(place));
  list_stores();
  return atom;
}

void Annotations::changed() {
  changed_since_write_ = true;
  if (changed_) changed_();
}

Status Annotations::write(const Source& source) {
  if (!changed_since_write_) return {};
  for (MetaPlace& place : metas_) {
    if (!place.is_item) TRY(write_meta(source, place));
  }
  write_items();
  TRY(write_user_data(source));
  changed_since_write_ = false;
  return {};
}

Status Annotations::write_meta(const Source& source, MetaPlace& place) {
  const bool is_new = place.number == kNotInFile;
  if (place.atom->is_abandoned()) {
    return is_new ? Status() : put(source, kMeta, place.number, std::nullopt);
  }
  if (is_new) place.number = count_children(source, kMeta);
  Bytes atom;
  const size_t mark = begin_child(atom, kMeta);
  append(atom, place.atom->payload());
  end_child(atom, mark);
  return put(source, kMeta, place.number, std::move(atom));
}

/// Brings the `meta` items of the user data up to date.
void Annotations::write_items() {
  for (MetaPlace& place : metas_) {
    if (place.is_item) place.item->data = place.atom->payload();
  }
}

Status Annotations::write_user_data(const Source& source) {
  const auto is_gone = [&](const UserDataItem& item) {
    if (item.type != kMeta) return false;
    return std::any_of(metas_.begin(), metas_.end(), [&](const MetaPlace& place) {
      return place.is_item && &*place.item == &item && place.atom->is_abandoned();
    });
  };
  Bytes atom;
  const size_t mark = begin_child(atom, kUserData);
  const size_t head = atom.size();
  bool has_items = false;
  for (const UserDataItem& item : user_data_.items().groups()) {
    if (is_gone(item)) continue;
    has_items = has_items || item.type != kMeta;
    const size_t each = begin_child(atom, item.type, item.is_wide);
    append(atom, item.payload());
    end_child(atom, each, item.is_wide);
  }
  const bool is_empty = atom.size() == head && is_ended_plainly(user_data_.tail());
  user_data_written_ = !is_empty || user_data_was_empty_;
  if (!user_data_written_) return put(source, kUserData, 0, std::nullopt);
  // Lists that are made here end as those of the platform do.
  if (!user_data_in_file_ && has_items && user_data_.tail().empty()) user_data_.set_terminator();
  append(atom, user_data_.tail());
  end_child(atom, mark);
  return put(source, kUserData, 0, std::move(atom));
}

void Annotations::saved() {
  user_data_in_file_ = user_data_written_;
  for (MetaPlace& gone : metas_) {
    if (gone.is_item || gone.number == kNotInFile || !gone.atom->is_abandoned()) continue;
    for (MetaPlace& other : metas_) {
      if (other.number != kNotInFile && other.number > gone.number) --other.number;
    }
    gone.number = kNotInFile;
  }
}

}  // namespace toolbox
