// Atoms as text for people: every field by its name.
#pragma once

#include <string>

#include "file/atom_tree.h"

namespace toolbox {

/// The fields of one atom, a line each ("  time_scale: 600"); lists show at most `most_rows` rows.
/// Empty for an atom without a known layout. Fails: as read_atom().
Result<std::string> dump_atom(const AtomTree& tree, AtomIndex index, size_t most_rows = 8);

/// All atoms of the file, indented, one line each: type, offset, size; with their fields when
/// `with_fields` is set. An atom that cannot be decoded is shown with the reason.
std::string dump_tree(const AtomTree& tree, bool with_fields);

}  // namespace toolbox
