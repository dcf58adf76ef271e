#include "memory/tokens.h"

#include <deque>
#include <mutex>
#include <vector>

namespace toolbox {

namespace {

constexpr uint32_t kSlotBits = 20;
constexpr uint32_t kSlotCount = 1u << kSlotBits;
constexpr uint32_t kLastGeneration = (1u << (32 - kSlotBits)) - 1;
constexpr size_t kRestingSlots = 4096;

struct Slot {
  void* object = nullptr;
  uint16_t generation = 0;
  Kind kind = Kind::kNone;
};

/// All slots, used and resting.
class Table {
 public:
  Token add(Kind kind, void* object) {
    uint32_t index;
    if (resting_.size() > kRestingSlots || slots_.size() == kSlotCount) {
      if (resting_.empty()) return 0;
      index = resting_.front();
      resting_.pop_front();
    } else {
      index = static_cast<uint32_t>(slots_.size());
      slots_.emplace_back();
    }
    Slot& slot = slots_[index];
    slot.generation =
        slot.generation == kLastGeneration ? 1 : static_cast<uint16_t>(slot.generation + 1);
    slot.object = object;
    slot.kind = kind;
    if (kind != Kind::kFoundation) ++live_;
    return uint32_t{slot.generation} << kSlotBits | index;
  }

  void* find(Kind kind, uint64_t number) const {
    const Slot* slot = live_slot(number);
    return slot != nullptr && slot->kind == kind ? slot->object : nullptr;
  }

  void remove(Token token) {
    const uint32_t index = token % kSlotCount;
    if (live_slot(token) == nullptr) return;
    if (slots_[index].kind != Kind::kFoundation) --live_;
    slots_[index].object = nullptr;
    slots_[index].kind = Kind::kNone;
    resting_.push_back(index);
  }

  uint32_t live() const { return live_; }
  std::mutex mutex;

 private:
  const Slot* live_slot(uint64_t number) const {
    if (number > UINT32_MAX) return nullptr;
    const uint64_t index = number % kSlotCount;
    if (index >= slots_.size()) return nullptr;
    const Slot& slot = slots_[index];
    return slot.kind != Kind::kNone && slot.generation == number >> kSlotBits ? &slot : nullptr;
  }

  std::vector<Slot> slots_;
  std::deque<uint32_t> resting_;  // the longest unused in front
  uint32_t live_ = 0;
};

// Made when first used and never destroyed: objects may die while the process ends.
Table& table() {
  static Table* const kTable = new Table;
  return *kTable;
}

}  // namespace

namespace tokens {

void* find(Kind kind, uint64_t number) {
  const std::lock_guard lock(table().mutex);
  return table().find(kind, number);
}

uint32_t live_count() {
  const std::lock_guard lock(table().mutex);
  return table().live();
}

}  // namespace tokens

Reference::~Reference() {
  if (token_ == 0) return;
  const std::lock_guard lock(table().mutex);
  table().remove(token_);
}

Token Reference::token(Kind kind, void* object) {
  if (token_ == 0) {
    const std::lock_guard lock(table().mutex);
    token_ = table().add(kind, object);
  }
  return token_;
}

}  // namespace toolbox
