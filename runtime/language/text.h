// What operators do with strings: joining and comparing.
#pragma once

#include <cstdint>
#include <span>

#include "object/string.h"

namespace krz {

/// The strings one after another, locked once for the caller. They keep their encoding when all
/// that are not empty share one, or differ only from ASCII; else the result is UTF-8. Null without
/// memory, and for an empty result.
REALstring join_strings(std::span<const REALstring> strings);

/// Below, equal to or above zero, as `left` sorts before, with or after `right`. Letters match
/// without regard to case: those of ASCII, Latin, Greek and Cyrillic.
int compare_strings(REALstring left, REALstring right);

}  // namespace krz
