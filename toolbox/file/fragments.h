// Finds the movie fragments of a file one after the other.
#pragma once

#include "file/atom_tree.h"

namespace toolbox {

/// Walks the fragments (`moof` atoms) of a file in file order, by headers only. Whoever reads a
/// fragment before asking for the next one reads the file forward, through its window.
class FragmentCursor {
 public:
  /// Borrows `file`, the file that `tree` was read from.
  FragmentCursor(const AtomTree& tree, WindowSource& file)
      : file_(&file), offset_(tree.first_fragment().value_or(file.size())) {}

  /// The next fragment, its header included; nothing behind the last one that is whole. Stops
  /// quietly where the file is cut. Fails: memFullErr for more than a million fragments, ioErr,
  /// eofErr.
  Result<std::optional<ByteRange>> next();

 private:
  WindowSource* file_;
  uint64_t offset_;
  size_t found_ = 0;
};

}  // namespace toolbox
