// The walk that fills an AtomTree: one pass over the top level, and one over the movie atom.
#pragma once

#include "file/atom_header.h"
#include "file/atom_tree.h"

namespace toolbox {

class AtomWalk {
 public:
  AtomWalk(WindowSource& file, AtomTree& tree) : file_(file), tree_(tree) {}

  /// Finds the first whole movie atom and everything beside it, up to the first fragment behind the
  /// movie.
  Status walk_file();

  /// Walks the children of the movie atom, unpacked first when it is compressed.
  Status walk_movie();

 private:
  Status add_top_level(uint64_t offset, const AtomHeader& header);
  Status found_movie(AtomIndex index);
  Status no_movie() const;
  Status walk_children(AtomIndex parent);
  Status walk_unpacked(AtomIndex compressed);
  Status check_child(AtomIndex parent, uint64_t offset, const AtomHeader& header) const;
  Result<AtomIndex> add(AtomNode node, AtomIndex previous_sibling);
  void warn_of_overrun(AtomIndex index, uint64_t claimed);

  WindowSource& file_;
  AtomTree& tree_;
  AtomIndex last_top_level_ = kNoAtom;
  AtomIndex cut_movie_ = kNoAtom;  // a movie atom that the end of the file cuts off
};

}  // namespace toolbox
