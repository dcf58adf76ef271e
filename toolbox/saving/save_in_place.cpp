// Saves into the movie's own file with an order of writes that leaves the old movie or the new one
// at every moment.
//
//   1. behind the end of the file: a marker for undo, new media data, the new movie atom
//      (or the movie atom inside the payload of a free atom, which first takes in the free atoms
//      behind it if it must; flush)
//   2. flush: all of it is on the disk, and no reader sees it
//   3. reused space only: the free atom's size shrinks to its header; flush. Two whole movies.
//   4. the type of the old movie atom becomes `free`: one write of four bytes; flush
//
// A crash before 4 leaves the old movie, or two whole ones; what it leaves behind the end is cut
// off by the next save.
#include <algorithm>

#include "base/mac_time.h"
#include "saving/compose.h"
#include "saving/file_writer.h"
#include "saving/free_space.h"
#include "saving/saving.h"
#include "saving/undo_marker.h"

namespace toolbox {

namespace {

/// Where everything goes.
struct Layout {
  SaveMethod method = SaveMethod::kAppend;
  uint64_t file_size = 0;      // now
  uint64_t end = 0;            // of what is kept of the file; the marker goes here
  AtomIndex sized = kNoAtom;   // an atom of size 0 that is given its size first
  std::optional<Room> room;    // free space that takes the movie atom
  uint64_t media_payload = 0;  // offset of pending data
  uint64_t movie_offset = 0;
};

AtomIndex last_top_level(const AtomTree& tree) {
  AtomIndex last = tree.first_top_level();
  while (tree.node(last).next_sibling != kNoAtom) last = tree.node(last).next_sibling;
  return last;
}

/// Where an earlier save stopped before its switch: from its marker on, nothing counts.
std::optional<uint64_t> unfinished_tail(const AtomTree& tree) {
  const uint64_t current = tree.node(tree.movie_in_file()).offset;
  for (AtomIndex atom = tree.first_top_level(); atom != kNoAtom;
       atom = tree.node(atom).next_sibling) {
    const std::optional<UndoMarkerAtom> marker = read_undo_marker(tree, atom);
    if (marker && marker->replaced_offset == current) return tree.node(atom).offset;
  }
  return {};
}

Result<bool> has_size_zero(const OpenedMovie& opened, AtomIndex atom) {
  uint8_t size[4];
  TRY(opened.file->read(opened.tree.node(atom).offset, size));
  return load_big_endian<uint32_t>(size) == 0;
}

/// The end of the file that things can be appended to, or kRewrite.
Status lay_out_end(const OpenedMovie& opened, Layout& layout) {
  const AtomTree& tree = opened.tree;
  layout.file_size = layout.end = opened.file->size();
  if (const std::optional<uint64_t> cut = unfinished_tail(tree)) {
    layout.end = *cut;
    return {};
  }
  const AtomIndex last = last_top_level(tree);
  const AtomNode& node = tree.node(last);
  // What is appended would lie inside an atom that claims more than there is, and never be seen.
  if (node.is_clipped || tree.top_level_end() != layout.file_size) {
    layout.method = SaveMethod::kRewrite;
    return {};
  }
  TRY_ASSIGN(const bool open_ended, has_size_zero(opened, last));
  if (!open_ended) return {};
  layout.sized = last;
  if (node.size > UINT32_MAX || straddles(node.offset, 4)) layout.method = SaveMethod::kRewrite;
  return {};
}

uint64_t media_bytes(const Movie& movie) {
  const uint64_t size = movie.pending().size();
  return size == 0 ? 0 : header_bytes(size) + size;
}

/// The layout, and the movie atom for it.
Status lay_out(const Movie& movie, Layout& layout, OffsetMap& map, AtomPieces& pieces) {
  const OpenedMovie& opened = movie.opened();
  TRY(lay_out_end(opened, layout));
  if (layout.method == SaveMethod::kRewrite) return {};
  const uint64_t behind_marker = layout.end + UndoMarkerAtom::kAtomBytes;
  layout.media_payload = behind_marker + header_bytes(movie.pending().size());
  map = OffsetMap::in_place(layout.media_payload);
  TRY_ASSIGN(pieces, compose_movie(movie, {.map = &map}));
  layout.room = find_room(opened.tree, pieces.size());
  // What stands behind an earlier save's stop is cut off.
  if (layout.room && layout.room->end > layout.end) layout.room.reset();
  layout.movie_offset = behind_marker + media_bytes(movie);
  if (layout.room) {
    layout.method = SaveMethod::kReuse;
    layout.movie_offset = layout.room->movie_offset;
  }
  return {};
}

Status check_can_plan(const Movie& movie) {
  const OpenedMovie& opened = movie.opened();
  if (opened.disk == nullptr) {
    return {wrPermErr, "this movie has no file yet; save it under a name first"};
  }
  // Fragments must come behind their movie atom, and the index of fragments at the end of the file.
  if (opened.tree.first_fragment()) {
    return {cantPutPublicMovieAtom,
            opened.file->name() +
                ": this movie is in fragments; save it as a new file, which joins "
                "them"};
  }
  TRY(movie.external_files().check_referred());
  return opened.disk->check_unchanged();
}

Status check_can_save(const Movie& movie) {
  TRY(check_can_plan(movie));
  if (movie.opened().disk->access() == FileAccess::kWriting) return {};
  return {wrPermErr, movie.opened().file->name() +
                         ": the movie is open for reading; open it for writing, or save as a new "
                         "file"};
}

/// The writes of one save.
class InPlaceSave {
 public:
  InPlaceSave(const Movie& movie, const Layout& layout, const AtomPieces& pieces)
      : movie_(movie),
        opened_(movie.opened()),
        layout_(layout),
        pieces_(pieces),
        file_(opened_.disk->descriptor()),
        name_(opened_.file->name()) {}

  Status run() {
    if (Status status = write_invisible(); !status.ok()) {
      // Nothing of it counts yet. Should this fail as well, the next save cuts it off.
      (void)storage().set_size(file_, std::min(layout_.end, layout_.file_size), name_);
      opened_.disk->note_own_writes();
      return status;
    }
    return switch_over();
  }

 private:
  static Storage& storage() { return Storage::current(); }

  Status write_invisible() {
    TRY(retire_stale_movies());
    if (layout_.end < layout_.file_size) TRY(storage().set_size(file_, layout_.end, name_));
    const bool appends = layout_.method == SaveMethod::kAppend;
    const uint64_t appended =
        UndoMarkerAtom::kAtomBytes + media_bytes(movie_) + (appends ? pieces_.size() : 0);
    TRY(storage().reserve(file_, layout_.end, appended, name_));
    if (layout_.sized != kNoAtom) TRY(give_size());
    if (layout_.room && layout_.room->is_joined) TRY(set_room(layout_.room->end));
    PassingChecksum replaced(opened_.tree.payload(opened_.tree.movie_in_file()));
    FileWriter writer(file_, layout_.end + UndoMarkerAtom::kAtomBytes, name_);
    writer.show(&replaced);
    TRY(write_media(writer));
    if (appends) TRY(writer.write(pieces_, opened_));
    TRY(writer.finish());
    if (!appends) TRY(write_into_free_space(replaced));
    TRY(write_marker(replaced));
    return storage().flush(file_, name_);
  }

  /// A crash can leave a second movie atom, behind the one that counts. It must not come to count.
  Status retire_stale_movies() {
    const AtomTree& tree = opened_.tree;
    for (AtomIndex atom = tree.first_top_level(); atom != kNoAtom;
         atom = tree.node(atom).next_sibling) {
      const AtomNode& node = tree.node(atom);
      if (node.type != four_cc("moov") || atom == tree.movie_in_file()) continue;
      if (node.offset >= layout_.end) continue;
      TRY(write_type(node.offset, four_cc("free")));
      TRY(storage().flush(file_, name_));
    }
    return {};
  }

  Status give_size() {
    const AtomNode& node = opened_.tree.node(layout_.sized);
    uint8_t size[4];
    store_big_endian(size, static_cast<uint32_t>(node.size));
    TRY(storage().write(file_, node.offset, size, name_));
    return storage().flush(file_, name_);
  }

  Status write_marker(PassingChecksum& replaced) {
    const AtomTree& tree = opened_.tree;
    const AtomNode& old = tree.node(tree.movie_in_file());
    UndoMarkerAtom marker;
    marker.replaced_offset = old.offset;
    marker.replaced_size = old.size;
    TRY_ASSIGN(marker.replaced_checksum, replaced.finish());
    marker.time = current_mac_time();
    marker.checksum = marker.own_checksum();
    AtomWriter atom;
    atom.atom(marker);
    return storage().write(file_, layout_.end, atom.bytes(), name_);
  }

  Status write_media(FileWriter& writer) {
    const PendingData& pending = movie_.pending();
    if (pending.size() == 0) return {};
    TRY(writer.write_header(four_cc("mdat"), pending.size()));
    return write_pending(writer, pending);
  }

  /// Inside the payload of the free atom, so that no reader sees it.
  Status write_into_free_space(PassingChecksum& replaced) {
    const Room& room = *layout_.room;
    FileWriter writer(file_, layout_.movie_offset, name_);
    writer.show(&replaced);
    TRY(writer.write(pieces_, opened_));
    const uint64_t rest = room.end - writer.position();
    if (rest > 0) TRY(writer.write_header(four_cc("free"), rest - 8));
    // What is left of a movie atom must not outlive the markers that commit finds it by.
    if (rest > 0 && room.was_ours) TRY(writer.write_zeros(rest - 8));
    return writer.finish();
  }

  /// The free atom that takes the movie atom reaches up to `end` from now on.
  Status set_room(uint64_t end) {
    uint8_t size[4];
    store_big_endian(size, static_cast<uint32_t>(end - layout_.room->begin));
    TRY(storage().write(file_, layout_.room->begin, size, name_));
    return storage().flush(file_, name_);
  }

  Status switch_over() {
    if (layout_.room) TRY(set_room(layout_.movie_offset));
    TRY(write_type(opened_.tree.node(opened_.tree.movie_in_file()).offset, four_cc("free")));
    return storage().flush(file_, name_);
  }

  Status write_type(uint64_t atom_offset, FourCC type) {
    uint8_t bytes[4];
    store_big_endian(bytes, type);
    return storage().write(file_, atom_offset + 4, bytes, name_);
  }

  const Movie& movie_;
  const OpenedMovie& opened_;
  const Layout& layout_;
  const AtomPieces& pieces_;
  int file_;
  std::string name_;
};

}  // namespace

Result<SavePlan> plan_save(const Movie& movie) {
  SavePlan plan;
  if (!movie.is_modified()) return plan;
  TRY(check_can_plan(movie));
  Layout layout;
  OffsetMap map;
  AtomPieces pieces;
  TRY(lay_out(movie, layout, map, pieces));
  plan.method = layout.method;
  if (layout.method == SaveMethod::kRewrite) {
    plan.bytes_written = movie.opened().file->size() + movie.pending().size();
    return plan;
  }
  plan.movie_atom_bytes = pieces.size();
  plan.bytes_written = UndoMarkerAtom::kAtomBytes + media_bytes(movie) + pieces.size() + 4;
  return plan;
}

Status save_movie(Movie& movie) {
  if (!movie.is_modified()) return {};
  TRY(check_can_save(movie));
  Layout layout;
  OffsetMap map;
  AtomPieces pieces;
  TRY(lay_out(movie, layout, map, pieces));
  if (layout.method == SaveMethod::kRewrite) {
    return save_movie_as(movie, movie.opened().file->name(),
                         {.overwrite = true, .other_files = OtherFiles::kLeft});
  }
  TRY(InPlaceSave(movie, layout, pieces).run());
  TRY_ASSIGN(std::unique_ptr<FileSource> source, movie.opened().disk->reopen());
  TRY_ASSIGN(OpenedMovie saved, open_movie_file(std::move(source)));
  return movie.rebase(std::move(saved));
}

}  // namespace toolbox
