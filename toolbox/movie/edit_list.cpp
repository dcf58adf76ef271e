#include "movie/edit_list.h"

#include <cassert>

namespace toolbox {

void EditList::check_invariants() const {
  for ([[maybe_unused]] const Edit& edit : edits_) {
    assert(edit.duration >= 0 && edit.duration <= kTimeLimit);
    assert(edit.media_start <= kTimeLimit);
  }
}

}  // namespace toolbox
