#include "saving/undo.h"

#include <algorithm>

#include "base/big_endian.h"
#include "saving/checksum.h"
#include "saving/storage.h"
#include "saving/undo_marker.h"

namespace toolbox {

namespace {

constexpr FourCC kFree = four_cc("free");
constexpr FourCC kMovie = four_cc("moov");

AtomIndex atom_at(const AtomTree& tree, uint64_t offset) {
  for (AtomIndex atom = tree.first_top_level(); atom != kNoAtom;
       atom = tree.node(atom).next_sibling) {
    if (tree.node(atom).offset == offset) return atom;
  }
  return kNoAtom;
}

/// Whether what a marker speaks of stands in the file as it was.
Result<bool> still_stands(const AtomTree& tree, const UndoMarkerAtom& marker) {
  const AtomIndex atom = atom_at(tree, marker.replaced_offset);
  if (atom == kNoAtom) return false;
  const AtomNode& node = tree.node(atom);
  if (node.type != kFree || node.size != marker.replaced_size) return false;
  TRY_ASSIGN(const uint64_t checksum, checksum_of(tree.payload(atom)));
  return checksum == marker.replaced_checksum;
}

Status write_type(const FileSource& file, uint64_t atom_offset, FourCC type) {
  uint8_t bytes[4];
  store_big_endian(bytes, type);
  TRY(Storage::current().write(file.descriptor(), atom_offset + 4, bytes, file.name()));
  return Storage::current().flush(file.descriptor(), file.name());
}

Status overwrite(const FileSource& file, uint64_t offset, uint64_t size) {
  const Bytes zeros(std::min<uint64_t>(size, 256 * 1024));
  for (uint64_t done = 0; done < size;) {
    const uint64_t count = std::min<uint64_t>(size - done, zeros.size());
    TRY(Storage::current().write(file.descriptor(), offset + done, ByteView(zeros).first(count),
                                 file.name()));
    done += count;
  }
  return {};
}

}  // namespace

Result<std::vector<UndoStep>> undo_steps(const OpenedMovie& opened) {
  std::vector<UndoStep> steps;
  const std::vector<PlacedUndoMarker> markers = undo_markers(opened.tree);
  // Markers stand in the order of the saves; one that speaks of the movie atom in use was undone,
  // or its save never came to its end.
  const uint64_t current = opened.tree.node(opened.tree.movie_in_file()).offset;
  size_t valid = markers.size();
  for (size_t i = 0; i < markers.size(); ++i) {
    if (markers[i].marker.replaced_offset == current) valid = std::min(valid, i);
  }
  for (size_t i = valid; i-- > 0;) {
    const UndoMarkerAtom& marker = markers[i].marker;
    TRY_ASSIGN(const bool stands, still_stands(opened.tree, marker));
    if (!stands) break;
    steps.push_back({marker.time, marker.replaced_offset, marker.replaced_size});
  }
  return steps;
}

Status undo_save(const std::string& path) {
  TRY_ASSIGN(const OpenedMovie opened, open_movie_file(path, FileAccess::kWriting));
  TRY_ASSIGN(const std::vector<UndoStep> steps, undo_steps(opened));
  if (steps.empty()) {
    return {paramErr, path + ": there is no save that could be taken back"};
  }
  // First both count: which of the two is taken then is whole either way.
  TRY(write_type(*opened.disk, steps.front().replaced_offset, kMovie));
  return write_type(*opened.disk, opened.tree.node(opened.tree.movie_in_file()).offset, kFree);
}

Result<uint64_t> commit_saves(const std::string& path) {
  TRY_ASSIGN(const OpenedMovie opened, open_movie_file(path, FileAccess::kWriting));
  const AtomTree& tree = opened.tree;
  const std::vector<PlacedUndoMarker> markers = undo_markers(tree);
  uint64_t overwritten = 0;
  const auto wipe = [&](uint64_t begin, uint64_t end) -> Status {
    if (begin >= end) return {};
    overwritten += end - begin;
    return overwrite(*opened.disk, begin, end - begin);
  };
  bool behind_marker = false;
  for (AtomIndex atom = tree.first_top_level(); atom != kNoAtom;
       atom = tree.node(atom).next_sibling) {
    const AtomNode& node = tree.node(atom);
    if (read_undo_marker(tree, atom)) {
      behind_marker = true;
      TRY(wipe(node.payload_offset(), node.end()));
    } else if (node.type == kFree && behind_marker) {
      // Behind a marker stands what its save appended: a movie atom that was replaced, or undone.
      TRY(wipe(node.payload_offset(), node.end()));
    } else if (node.type == kFree) {
      // Space may have been used again since; what is left of an old movie atom lies inside its
      // bounds.
      for (const auto& [place, marker] : markers) {
        TRY(wipe(std::max(node.payload_offset(), marker.replaced_offset),
                 std::min(node.end(), marker.replaced_offset + marker.replaced_size)));
      }
    }
  }
  if (overwritten > 0) TRY(Storage::current().flush(opened.disk->descriptor(), path));
  return overwritten;
}

}  // namespace toolbox
