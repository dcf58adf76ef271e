#include "memory/handles.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace toolbox::handles {

namespace {

// A handle is the address of the first member of one of these, so that `*handle` is the block.
struct MasterPointer {
  Ptr block = nullptr;
  Size size = 0;
  bool live = false;
  MasterPointer* next_free = nullptr;
};

constexpr size_t kPageLength = 256;
struct Page {
  MasterPointer entries[kPageLength];
};

/// All master pointers, in pages that never move. A handle is looked up by its address alone,
/// without touching memory that is not ours.
class Table {
 public:
  MasterPointer* find(Handle handle) {
    const auto address = reinterpret_cast<uintptr_t>(handle);
    const auto above = std::upper_bound(
        pages_.begin(), pages_.end(), address,
        [](uintptr_t a, const auto& page) { return a < reinterpret_cast<uintptr_t>(page.get()); });
    if (above == pages_.begin()) return nullptr;
    const uintptr_t distance = address - reinterpret_cast<uintptr_t>(above[-1].get());
    if (distance >= sizeof(Page) || distance % sizeof(MasterPointer) != 0) return nullptr;
    MasterPointer* found = above[-1]->entries + distance / sizeof(MasterPointer);
    return found->live ? found : nullptr;
  }

  MasterPointer* take() {
    if (first_free_ == nullptr) add_page();
    MasterPointer* taken = first_free_;
    first_free_ = taken->next_free;
    if (first_free_ == nullptr) last_free_ = nullptr;
    *taken = MasterPointer{.live = true};
    ++live_;
    return taken;
  }

  // The longest unused master pointer is used next, so that a disposed handle stays unknown for a
  // while.
  void give_back(MasterPointer* entry) {
    *entry = MasterPointer{};
    append_free(entry);
    --live_;
  }

  uint32_t live() const { return live_; }
  std::mutex mutex;

 private:
  void add_page() {
    auto page = std::make_unique<Page>();
    for (MasterPointer& entry : page->entries) append_free(&entry);
    const auto place = std::lower_bound(pages_.begin(), pages_.end(), page);
    pages_.insert(place, std::move(page));
  }

  void append_free(MasterPointer* entry) {
    (last_free_ != nullptr ? last_free_->next_free : first_free_) = entry;
    last_free_ = entry;
  }

  std::vector<std::unique_ptr<Page>> pages_;  // by ascending address
  MasterPointer* first_free_ = nullptr;
  MasterPointer* last_free_ = nullptr;
  uint32_t live_ = 0;
};

// Made when first used and never destroyed: handles may be disposed while the process ends.
Table& table() {
  static Table* const kTable = new Table;
  return *kTable;
}

// One byte more than asked, so that an empty block has an address.
size_t allocation(Size size) { return static_cast<size_t>(size) + 1; }

Handle make_around(Ptr block, Size size) {
  const std::lock_guard lock(table().mutex);
  try {
    MasterPointer* entry = table().take();
    entry->block = block;
    entry->size = size;
    return &entry->block;
  } catch (const std::bad_alloc&) {
    std::free(block);
    return nullptr;
  }
}

}  // namespace

Handle make(Size size, Contents contents) {
  if (size < 0) return nullptr;
  void* block = contents == Contents::kZero ? std::calloc(allocation(size), 1)
                                            : std::malloc(allocation(size));
  return block == nullptr ? nullptr : make_around(static_cast<Ptr>(block), size);
}

Handle make_empty() { return make_around(nullptr, 0); }

bool is_live(Handle handle) {
  const std::lock_guard lock(table().mutex);
  return table().find(handle) != nullptr;
}

Size size(Handle handle) {
  const std::lock_guard lock(table().mutex);
  const MasterPointer* entry = table().find(handle);
  return entry == nullptr ? 0 : entry->size;
}

OSErr resize(Handle handle, Size size) {
  if (handle == nullptr) return nilHandleErr;
  const std::lock_guard lock(table().mutex);
  MasterPointer* entry = table().find(handle);
  if (entry == nullptr) return memWZErr;
  if (size < 0) return memFullErr;
  if (size == entry->size && entry->block != nullptr) return noErr;
  void* block = std::realloc(entry->block, allocation(size));
  if (block == nullptr) return memFullErr;
  entry->block = static_cast<Ptr>(block);
  entry->size = size;
  return noErr;
}

OSErr assign(Handle handle, std::span<const uint8_t> bytes) {
  if (bytes.size() > INT32_MAX) return memFullErr;
  if (const OSErr error = resize(handle, static_cast<Size>(bytes.size())); error != noErr)
    return error;
  if (!bytes.empty()) std::memmove(*handle, bytes.data(), bytes.size());
  return noErr;
}

void dispose(Handle handle) {
  const std::lock_guard lock(table().mutex);
  MasterPointer* entry = table().find(handle);
  if (entry == nullptr) return;
  std::free(entry->block);
  table().give_back(entry);
}

uint32_t live_count() {
  const std::lock_guard lock(table().mutex);
  return table().live();
}

}  // namespace toolbox::handles
