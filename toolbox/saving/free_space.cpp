#include "saving/free_space.h"

#include <algorithm>

#include "saving/undo_marker.h"

namespace toolbox {

namespace {

constexpr uint64_t kSector = 512;  // a write inside one is never torn
constexpr uint64_t kHeader = 8;

class RoomSearch {
 public:
  RoomSearch(const AtomTree& tree, uint64_t movie_bytes)
      : tree_(tree), movie_bytes_(movie_bytes), markers_(undo_markers(tree)) {}

  std::optional<Room> find() {
    for (AtomIndex atom = tree_.first_top_level(); atom != kNoAtom;
         atom = tree_.node(atom).next_sibling) {
      if (!is_free(atom) || is_kept(atom)) {
        run_.first = kNoAtom;
        behind_media_ = behind_media_ || tree_.node(atom).type == four_cc("mdat");
        continue;
      }
      add(atom);
      if (fits()) return run_;
    }
    return {};
  }

 private:
  bool is_free(AtomIndex atom) const {
    const AtomNode& node = tree_.node(atom);
    return node.type == four_cc("free") && node.header_size == kHeader && !node.is_clipped;
  }

  /// Whether undo needs the atom. In front of the media nothing is kept: that the movie atom comes
  /// first is worth more than a step back.
  bool is_kept(AtomIndex atom) const {
    if (!behind_media_) return false;
    const AtomNode& node = tree_.node(atom);
    const size_t kept = std::min(markers_.size(), kKeptUndoSteps);
    return std::any_of(markers_.end() - static_cast<ptrdiff_t>(kept), markers_.end(),
                       [&](const PlacedUndoMarker& step) {
                         return step.offset == node.offset ||
                                step.marker.replaced_offset == node.offset;
                       });
  }

  void add(AtomIndex atom) {
    const AtomNode& node = tree_.node(atom);
    // The size of the first is written twice; only what cannot be torn may be.
    const bool begins =
        run_.first == kNoAtom || node.end() - run_.begin > UINT32_MAX || straddles(run_.begin, 4);
    if (begins) {
      run_ = {.first = atom, .begin = node.offset, .movie_offset = node.payload_offset()};
      while (has_stood_at(run_.movie_offset)) run_.movie_offset += kHeader;
    }
    run_.is_joined = !begins;
    run_.end = node.end();
    run_.was_ours = run_.was_ours ||
                    (!markers_.empty() && markers_.front().offset <= node.offset) ||
                    has_stood_at(node.offset);
  }

  /// A movie atom at a place that a marker names would pass for the one that was there before.
  bool has_stood_at(uint64_t offset) const {
    return std::any_of(markers_.begin(), markers_.end(), [&](const PlacedUndoMarker& step) {
      return step.marker.replaced_offset == offset;
    });
  }

  bool fits() const {
    if (straddles(run_.begin, 4) || run_.movie_offset > run_.end) return false;
    const uint64_t room = run_.end - run_.movie_offset;
    return room == movie_bytes_ || room >= movie_bytes_ + kHeader;
  }

  const AtomTree& tree_;
  uint64_t movie_bytes_;
  std::vector<PlacedUndoMarker> markers_;
  Room run_;
  bool behind_media_ = false;
};

}  // namespace

std::optional<Room> find_room(const AtomTree& tree, uint64_t movie_bytes) {
  return RoomSearch(tree, movie_bytes).find();
}

bool straddles(uint64_t offset, uint64_t size) {
  return offset / kSector != (offset + size - 1) / kSector;
}

}  // namespace toolbox
