// The child atoms of a container that were replaced, added or removed since its file was read.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "base/bytes.h"
#include "base/four_cc.h"

namespace toolbox {

/// Changes by type of atom, and by number among the children of that type, counted from 0. A
/// container that is written takes a changed child from here, drops it when it was removed, and
/// gets it behind its last child when it had none of that number; all other children are copied as
/// they stand in the file.
class AtomChanges {
 public:
  struct Change {
    FourCC type = 0;
    uint32_t number = 0;
    std::optional<Bytes> atom;  // whole, header included; nothing: removed
  };

  void replace(FourCC type, Bytes atom, uint32_t number = 0) {
    at(type, number).atom = std::move(atom);
  }
  void remove(FourCC type, uint32_t number = 0) { at(type, number).atom.reset(); }

  /// Lets the child be as in the file again.
  void forget(FourCC type, uint32_t number) {
    std::erase_if(list_,
                  [&](const Change& each) { return each.type == type && each.number == number; });
  }

  /// The change of a child; null when it stands as in the file.
  const Change* find(FourCC type, uint32_t number = 0) const {
    const auto found = std::find_if(list_.begin(), list_.end(), [&](const Change& each) {
      return each.type == type && each.number == number;
    });
    return found == list_.end() ? nullptr : &*found;
  }

  /// In the order in which the children were first changed.
  const std::vector<Change>& list() const { return list_; }
  bool empty() const { return list_.empty(); }
  void clear() { list_.clear(); }

 private:
  Change& at(FourCC type, uint32_t number) {
    if (const Change* change = find(type, number)) {
      return list_[static_cast<size_t>(change - list_.data())];
    }
    return list_.emplace_back(Change{type, number, {}});
  }

  std::vector<Change> list_;
};

}  // namespace toolbox
