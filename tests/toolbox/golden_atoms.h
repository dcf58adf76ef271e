// One or more known payloads of every atom, written by hand from the format.
#pragma once

#include "atoms/all_atoms.h"
#include "test_bytes.h"

namespace toolbox {

struct Golden {
  Bytes payload;
  size_t needed;  // a shorter payload must be refused; what follows is optional or a tail
};

/// Every atom of the list needs its own; a missing one does not link.
template <class Atom>
std::vector<Golden> golden_atoms();

}  // namespace toolbox
