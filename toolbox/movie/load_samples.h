// Finds the sample tables of a media among the atoms of its file.
#pragma once

#include "file/atom_tree.h"
#include "movie/sample_table.h"

namespace toolbox {

/// The tables of an `stbl` atom, still in the file. Only their heads are read.
/// Fails: invalidSampleTable when a table claims more rows than its atom holds, ioErr, eofErr.
Result<SampleTables> load_sample_tables(const AtomTree& tree, AtomIndex stbl);

}  // namespace toolbox
