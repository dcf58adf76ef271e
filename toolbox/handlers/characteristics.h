// What kinds of media have in common: to be seen, to be heard, to be read.
#pragma once

#include "base/four_cc.h"

namespace toolbox {

/// Whether media of `media_type` has a characteristic: `eyes` visual, `ears` audible, `text`
/// readable, `vfrr` made of frames. Unknown types and characteristics: no.
bool has_characteristic(FourCC media_type, FourCC characteristic);

}  // namespace toolbox
