// Values in groups (texts of an item, values of a key), each under an ID that is never used again.
#pragma once

#include <list>
#include <unordered_map>

#include "base/bytes.h"

namespace toolbox {

/// Identifies one value of any list in this process; 0 is none.
using ItemId = uint64_t;

/// An ID that nothing had before.
ItemId next_item_id();

/// Groups in order, and in each its values in order. A group has a `std::list` named `values`,
/// whose elements have an `ItemId id`, 0 for what is no value. Walking a step, finding, adding and
/// removing take the same time however many there are.
template <class Group>
class GroupedValues {
 public:
  using Groups = std::list<Group>;
  using GroupPlace = typename Groups::iterator;
  using Value = typename decltype(Group::values)::value_type;
  using ValuePlace = typename decltype(Group::values)::iterator;
  struct Place {
    GroupPlace group;
    ValuePlace value;
  };

  GroupedValues() = default;
  GroupedValues(const GroupedValues&) = delete;  // the places of a copy would be those of this
  GroupedValues& operator=(const GroupedValues&) = delete;
  GroupedValues(GroupedValues&&) noexcept = default;
  GroupedValues& operator=(GroupedValues&&) noexcept = default;

  Groups& groups() { return groups_; }
  const Groups& groups() const { return groups_; }

  /// Gives a value that was put into a group its ID.
  ItemId enter(GroupPlace group, ValuePlace value) {
    value->id = next_item_id();
    places_.emplace(value->id, Place{group, value});
    return value->id;
  }

  /// Null for an ID that is not, or no longer, in here.
  const Place* find(ItemId id) const {
    const auto found = places_.find(id);
    return found == places_.end() ? nullptr : &found->second;
  }

  void forget(ItemId id) { places_.erase(id); }

  void erase(Place place) {  // a copy: the one in here goes first
    places_.erase(place.value->id);
    place.group->values.erase(place.value);
  }

  void erase(GroupPlace group) {
    for (const Value& value : group->values) places_.erase(value.id);
    groups_.erase(group);
  }

  /// The value behind `id`, the first for 0; 0 when there is none. REQUIRES: id is 0 or in here.
  ItemId next(ItemId id) {
    GroupPlace group = groups_.begin();
    if (id != 0) {
      const Place& place = places_.at(id);
      if (const ItemId found = first_of(std::next(place.value), place.group->values.end())) {
        return found;
      }
      group = std::next(place.group);
    }
    for (; group != groups_.end(); ++group) {
      if (const ItemId found = first_of(group->values.begin(), group->values.end())) return found;
    }
    return 0;
  }

 private:
  static ItemId first_of(ValuePlace from, ValuePlace end) {
    while (from != end && from->id == 0) ++from;
    return from == end ? 0 : from->id;
  }

  Groups groups_;
  std::unordered_map<ItemId, Place> places_;
};

}  // namespace toolbox
