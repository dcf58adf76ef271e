// The atoms of a movie file and where they stand: the top level, and all that is needed of the
// movie atom.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "base/four_cc.h"
#include "file/byte_source.h"
#include "file/memory_source.h"
#include "file/window_source.h"

namespace toolbox {

/// The place of a node in its tree.
using AtomIndex = uint32_t;
inline constexpr AtomIndex kNoAtom = UINT32_MAX;

/// One atom. Offsets count from the start of the source that the atom stands in: the file, or the
/// unpacked movie atom.
struct AtomNode {
  FourCC type = 0;
  uint8_t header_size = 8;    // 8 or 16, and 16 more for the extended type of `uuid`
  bool is_container = false;  // children are nodes of their own
  bool is_clipped =
      false;  // claims more bytes than its parent (or the file) holds; `size` is what there is
  bool is_unpacked = false;  // stands in the unpacked movie atom
  uint64_t offset = 0;       // of the header
  uint64_t size = 0;         // header included
  AtomIndex parent = kNoAtom;
  AtomIndex first_child = kNoAtom;
  AtomIndex next_sibling = kNoAtom;

  uint64_t payload_offset() const { return offset + header_size; }
  uint64_t payload_size() const { return size - header_size; }
  uint64_t end() const { return offset + size; }
};

/// The atoms of one movie file, found in one pass that reads headers only and never a table or the
/// media data.
///
/// Nodes exist for every atom at top level, and inside the movie atom for the children of moov,
/// trak, edts, tapt, tref, clip, matt, mdia, minf, gmhd, gmhd/tmcd, dinf, stbl, mvex and cmov. All
/// other atoms are leaves, kept as their bytes: user data and metadata have layouts of their own.
class AtomTree {
 public:
  /// The most atoms that a tree holds, and the largest movie atom that is kept in memory whole.
  static constexpr size_t kMostAtoms = 16384;
  static constexpr uint64_t kSmallMovieAtom = 256 * 1024;

  /// Walks `file`, which must outlive the tree.
  /// Fails: noMovieFound, badPublicMovieAtom (damage where a movie needs its atoms; the text names
  /// path and offset), featureUnsupported or memFullErr for a compressed movie atom, ioErr, eofErr.
  static Result<AtomTree> read(WindowSource& file);

  const AtomNode& node(AtomIndex index) const { return nodes_[index]; }
  size_t size() const { return nodes_.size(); }

  /// The first atom of the file; kNoAtom never, as a tree always has a movie.
  AtomIndex first_top_level() const { return 0; }

  /// The movie atom whose children are the movie: unpacked if it was compressed.
  AtomIndex movie() const { return movie_; }

  /// The movie atom as it stands at top level of the file.
  AtomIndex movie_in_file() const { return movie_in_file_; }
  bool is_compressed() const { return movie_ != movie_in_file_; }

  /// The first child of `parent`, or the next sibling behind `after`, that has that type; kNoAtom
  /// when there is none.
  AtomIndex find_child(AtomIndex parent, FourCC type) const;
  AtomIndex find_next(AtomIndex after, FourCC type) const;

  /// find_child() step by step, each time the first: find_path(trak, {four_cc("mdia"),
  /// four_cc("mdhd")}).
  AtomIndex find_path(AtomIndex from, std::initializer_list<FourCC> types) const;

  /// What stands behind the header; the whole atom; and in a container the loose bytes behind its
  /// last child.
  ByteRange payload(AtomIndex index) const;
  ByteRange whole(AtomIndex index) const;
  ByteRange loose_tail(AtomIndex index) const;

  /// The place as people read it, "moov/trak[2]/mdia"; tracks and repeated types are counted
  /// from 1.
  std::string path(AtomIndex index) const;

  /// A failure at a byte of an atom: "clip.mov: moov/trak[2]/edts/elst.entries[3] at byte 4012:
  /// text". `field` may be empty; `offset` counts from the start of the atom's source.
  Status failure(AtomIndex index, OSErr code, const std::string& field, uint64_t offset,
                 const std::string& text) const;

  /// What is odd about the file without keeping the movie from being read; one sentence each.
  const std::vector<std::string>& warnings() const { return warnings_; }

  /// Where the first movie fragment stands, when the file is fragmented. The walk of the top level
  /// stops there: see find_fragments().
  std::optional<uint64_t> first_fragment() const { return first_fragment_; }

  /// True when `moov` announces fragments (`mvex`), or one was met.
  bool is_fragmented() const;

  /// The end of the last top-level atom that was walked; bytes behind it are fragments or loose.
  uint64_t top_level_end() const { return top_level_end_; }

 private:
  friend class AtomWalk;

  const ByteSource* source(const AtomNode& atom) const;

  const ByteSource* file_ = nullptr;
  std::unique_ptr<MemorySource> unpacked_;
  std::vector<AtomNode> nodes_;
  std::vector<std::string> warnings_;
  std::optional<uint64_t> first_fragment_;
  uint64_t top_level_end_ = 0;
  AtomIndex movie_ = kNoAtom;
  AtomIndex movie_in_file_ = kNoAtom;
};

/// The movie fragments (`moof` atoms, headers included) from tree.first_fragment() on, in file
/// order; empty for a file without them. Stops quietly where the file is cut. Fails: memFullErr for
/// more than a million of them, ioErr, eofErr.
Result<std::vector<ByteRange>> find_fragments(const AtomTree& tree, WindowSource& file);

}  // namespace toolbox
