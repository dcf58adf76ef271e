// Memory for the syntax tree: handed out front to back, given back all at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace krz {

class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  /// A new object that is never destroyed, so it must not own anything.
  template <class T, class... Arguments>
  T* make(Arguments&&... arguments) {
    static_assert(std::is_trivially_destructible_v<T>);
    return new (allocate(sizeof(T))) T{std::forward<Arguments>(arguments)...};
  }

  /// A copy of `items` that lives as long as the arena.
  template <class T>
  std::span<T> copy(std::span<T const> items) {
    static_assert(std::is_trivially_copyable_v<T>);
    if (items.empty()) return {};
    auto* first = static_cast<T*>(allocate(items.size_bytes()));
    std::memcpy(static_cast<void*>(first), items.data(), items.size_bytes());
    return {first, items.size()};
  }

  std::string_view copy_text(std::string_view text) {
    const std::span<char> chars = copy<char>(std::span<const char>(text.data(), text.size()));
    return {chars.data(), chars.size()};
  }

 private:
  static constexpr size_t kBlockSize = 16 * 1024;

  void* allocate(size_t size) {
    size = (size + 7) & ~size_t{7};
    if (size > static_cast<size_t>(end_ - next_)) {
      const size_t block = size > kBlockSize ? size : kBlockSize;
      blocks_.push_back(std::make_unique_for_overwrite<char[]>(block));
      next_ = blocks_.back().get();
      end_ = next_ + block;
    }
    void* result = next_;
    next_ += size;
    return result;
  }

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* next_ = nullptr;
  char* end_ = nullptr;
};

}  // namespace krz
