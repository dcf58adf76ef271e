// How much memory scripts may hold in strings, arrays, objects and blocks. Asking costs an addition
// and a comparison.
#pragma once

#include <cstddef>

#include "export.h"

namespace krz::memory_budget {

/// The most that may be held, in bytes; 0 for three quarters of what the machine, the process's
/// limits and its control group leave, which is worked out only when it comes near.
void set_limit(size_t bytes);

/// Counts memory that is about to be held. False when that is more than there may be; nothing is
/// counted then.
[[nodiscard]] bool take(size_t bytes);
void give_back(size_t bytes);

/// The same for a block of malloc, by its real size. Takes null, and frees and gives null when the
/// block is refused.
[[nodiscard]] void* take_block(void* block);
void free_block(void* block);

/// Whether memory was refused since this was asked last: those who got none may have answered
/// "nothing" instead.
bool take_refusal();
void note_refusal();

/// While one lives nothing is refused: telling that there is no memory needs a little.
class Reserve {
 public:
  Reserve();
  ~Reserve();
  Reserve(const Reserve&) = delete;
  Reserve& operator=(const Reserve&) = delete;
};

}  // namespace krz::memory_budget
