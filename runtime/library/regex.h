// The classes RegEx and RegExMatch.
#pragma once

#include "library/pattern.h"
#include "registry/registry.h"

namespace krz {

/// A new object for a match in a text of UTF-8, locked once; takes a lock on the text. Null without
/// memory.
REALobject new_regex_match(REALstring text, Match match);

void register_regex(Registry& registry);
void register_regex_match(Registry& registry);

}  // namespace krz
