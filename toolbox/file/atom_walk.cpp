#include "file/atom_walk.h"

#include <algorithm>

#include "file/compressed_movie.h"

namespace toolbox {

namespace {

constexpr uint64_t kHeaderBytes = 8;
constexpr FourCC kTopLevel = 0;

std::string number(uint64_t value) { return std::to_string(value); }

/// The atoms whose children are nodes. The list is short, so nothing can nest without end.
bool is_container(FourCC type, FourCC parent) {
  switch (parent) {
    case kTopLevel:
      return type == four_cc("moov");
    case four_cc("moov"):
      return type == four_cc("trak") || type == four_cc("mvex") || type == four_cc("cmov") ||
             type == four_cc("clip");
    case four_cc("trak"):
      return type == four_cc("edts") || type == four_cc("tapt") || type == four_cc("tref") ||
             type == four_cc("mdia") || type == four_cc("clip") || type == four_cc("matt");
    case four_cc("mdia"):
      return type == four_cc("minf");
    case four_cc("minf"):
      return type == four_cc("gmhd") || type == four_cc("dinf") || type == four_cc("stbl");
    case four_cc("gmhd"):
      return type == four_cc("tmcd");
    default:
      return false;
  }
}

/// Containers in which damage hides what a movie needs. In all others the damaged rest is kept as
/// loose bytes.
bool must_be_whole(FourCC container) {
  switch (container) {
    case four_cc("moov"):
    case four_cc("trak"):
    case four_cc("edts"):
    case four_cc("mdia"):
    case four_cc("minf"):
    case four_cc("dinf"):
    case four_cc("stbl"):
      return true;
    default:
      return false;
  }
}

/// Atoms that a movie cannot be played without, or is played wrong without.
bool is_needed(FourCC type) {
  switch (type) {
    case four_cc("mvhd"):
    case four_cc("trak"):
    case four_cc("tkhd"):
    case four_cc("edts"):
    case four_cc("elst"):
    case four_cc("mdia"):
    case four_cc("mdhd"):
    case four_cc("hdlr"):
    case four_cc("minf"):
    case four_cc("vmhd"):
    case four_cc("smhd"):
    case four_cc("gmhd"):
    case four_cc("dinf"):
    case four_cc("dref"):
    case four_cc("stbl"):
    case four_cc("stsd"):
    case four_cc("stts"):
    case four_cc("ctts"):
    case four_cc("stss"):
    case four_cc("stps"):
    case four_cc("stsc"):
    case four_cc("stsz"):
    case four_cc("stz2"):
    case four_cc("stco"):
    case four_cc("co64"):
    case four_cc("cmov"):
      return true;
    default:
      return false;
  }
}

}  // namespace

Result<AtomIndex> AtomWalk::add(AtomNode node, AtomIndex previous_sibling) {
  if (tree_.nodes_.size() >= AtomTree::kMostAtoms) {
    return Status(memFullErr, file_.name() + ": the atom at byte " + number(node.offset) +
                                  " is one too many; a movie may have " +
                                  number(AtomTree::kMostAtoms));
  }
  const auto index = static_cast<AtomIndex>(tree_.nodes_.size());
  if (previous_sibling != kNoAtom) {
    tree_.nodes_[previous_sibling].next_sibling = index;
  } else if (node.parent != kNoAtom) {
    tree_.nodes_[node.parent].first_child = index;
  }
  tree_.nodes_.push_back(node);
  return index;
}

void AtomWalk::warn_of_overrun(AtomIndex index, uint64_t claimed) {
  constexpr size_t kMostWarnings = 16;  // a file made to annoy could earn thousands
  if (tree_.warnings_.size() == kMostWarnings) return;
  const AtomNode& atom = tree_.nodes_[index];
  tree_.warnings_.push_back(tree_.path(index) + " at byte " + number(atom.offset) + " claims " +
                            number(claimed) + " bytes, but there are only " + number(atom.size));
}

Status AtomWalk::walk_file() {
  const uint64_t size = file_.size();
  uint64_t offset = 0;
  while (size - offset >= kHeaderBytes) {
    // What is left behind the media data is most likely the movie atom: get it in one read.
    const bool is_far = offset > 0 && !file_.holds(offset, kHeaderBytes);
    if (is_far && tree_.movie_in_file_ == kNoAtom && size - offset <= AtomTree::kSmallMovieAtom) {
      TRY(file_.pin(offset, size - offset));
    }
    TRY_ASSIGN(AtomHeader header, read_atom_header(file_, offset, size));
    if (header.form == AtomHeader::Form::kDamaged) break;
    if (header.type == four_cc("moof") && !tree_.first_fragment_) {
      tree_.first_fragment_ = offset;
      // A long recording has fragments by the thousand; whoever needs them asks for them.
      if (tree_.movie_in_file_ != kNoAtom) {
        tree_.top_level_end_ = offset;
        return {};
      }
    }
    TRY(add_top_level(offset, header));
    offset = tree_.nodes_[last_top_level_].end();
  }
  tree_.top_level_end_ = offset;
  if (tree_.movie_in_file_ == kNoAtom) return no_movie();
  if (offset < size) {
    tree_.warnings_.push_back(number(size - offset) +
                              " loose bytes follow the last atom, from byte " + number(offset));
  }
  return {};
}

Status AtomWalk::add_top_level(uint64_t offset, const AtomHeader& header) {
  AtomNode node;
  node.type = header.type;
  node.header_size = header.header_size;
  node.offset = offset;
  const uint64_t available = file_.size() - offset;
  const bool to_the_end = header.form == AtomHeader::Form::kToTheEnd;
  node.is_clipped = !to_the_end && header.size > available;
  node.size = to_the_end || node.is_clipped ? available : header.size;
  node.header_size = static_cast<uint8_t>(std::min<uint64_t>(node.header_size, node.size));
  const bool is_movie = is_container(node.type, kTopLevel);
  node.is_container = is_movie;
  TRY_ASSIGN(last_top_level_, add(node, last_top_level_));

  if (node.is_clipped && !is_movie) warn_of_overrun(last_top_level_, header.size);
  if (!is_movie || tree_.movie_in_file_ != kNoAtom) return {};
  if (!node.is_clipped) return found_movie(last_top_level_);
  if (cut_movie_ == kNoAtom) cut_movie_ = last_top_level_;
  return {};
}

Status AtomWalk::found_movie(AtomIndex index) {
  tree_.movie_ = tree_.movie_in_file_ = index;
  const AtomNode& movie = tree_.nodes_[index];
  if (movie.size > AtomTree::kSmallMovieAtom || file_.holds(movie.offset, movie.size)) return {};
  // A little more, so that the header of what follows is there too.
  constexpr uint64_t kBehind = 64;
  return file_.pin(movie.offset, std::min(movie.size + kBehind, file_.size() - movie.offset));
}

Status AtomWalk::no_movie() const {
  const std::string name = file_.name() + ": ";
  if (file_.size() == 0) return {noMovieFound, name + "the file is empty; copy it again"};
  if (cut_movie_ != kNoAtom) {
    const AtomNode& movie = tree_.nodes_[cut_movie_];
    return tree_.failure(cut_movie_, badPublicMovieAtom, "", movie.offset,
                         "the file ends inside the movie atom, after " + number(movie.size) +
                             " of its bytes; the file was cut short");
  }
  std::string text = name + "there is no movie atom (moov) in this file";
  if (tree_.first_fragment_) {
    text += "; it holds fragments only: join it with the start of its recording";
  } else if (!tree_.warnings_.empty()) {
    text += "; " + tree_.warnings_.front() + ": the file was cut short, or is not a movie";
  } else if (tree_.top_level_end_ < file_.size()) {
    text += "; no atom can begin at byte " + number(tree_.top_level_end_) +
            ": the file is damaged, or not a movie";
  }
  return {noMovieFound, text};
}

Status AtomWalk::walk_movie() {
  TRY(walk_children(tree_.movie_));
  const AtomIndex compressed = tree_.find_child(tree_.movie_, four_cc("cmov"));
  return compressed == kNoAtom ? Status() : walk_unpacked(compressed);
}

Status AtomWalk::walk_unpacked(AtomIndex compressed) {
  TRY_ASSIGN(Bytes bytes, unpack_movie(tree_, compressed));
  tree_.unpacked_ =
      std::make_unique<MemorySource>(std::move(bytes), file_.name() + " (unpacked movie atom)");
  const MemorySource& source = *tree_.unpacked_;
  const auto fail = [&](const std::string& text) {
    return tree_.failure(compressed, badPublicMovieAtom, "", tree_.nodes_[compressed].offset, text);
  };
  if (source.size() < kHeaderBytes) return fail("unpacks to less than a movie atom");
  TRY_ASSIGN(AtomHeader header, read_atom_header(source, 0, source.size()));
  if (header.form != AtomHeader::Form::kSized || header.type != four_cc("moov") ||
      header.size > source.size()) {
    return fail("does not unpack to one whole movie atom");
  }
  AtomNode node;
  node.type = header.type;
  node.header_size = header.header_size;
  node.size = header.size;
  node.is_container = true;
  node.is_unpacked = true;
  TRY_ASSIGN(tree_.movie_, add(node, kNoAtom));
  TRY(walk_children(tree_.movie_));
  if (tree_.find_child(tree_.movie_, four_cc("cmov")) != kNoAtom) {
    return fail("holds another compressed movie atom");
  }
  return {};
}

// Recursion is bounded by is_container(): no atom can hold itself.
Status AtomWalk::walk_children(AtomIndex parent) {
  const AtomNode container = tree_.nodes_[parent];  // a copy: adding nodes moves them
  const ByteSource& source = *tree_.source(container);
  const uint64_t end = container.end();
  uint64_t offset = container.payload_offset();
  AtomIndex previous = kNoAtom;
  while (end - offset >= kHeaderBytes) {
    TRY_ASSIGN(AtomHeader header, read_atom_header(source, offset, end));
    if (header.form == AtomHeader::Form::kToTheEnd) break;  // a terminator; the rest is loose
    if (must_be_whole(container.type)) TRY(check_child(parent, offset, header));
    if (header.form == AtomHeader::Form::kDamaged) break;

    AtomNode child;
    child.type = header.type;
    child.offset = offset;
    child.parent = parent;
    child.is_unpacked = container.is_unpacked;
    child.is_clipped = header.size > end - offset;
    child.size = std::min(header.size, end - offset);
    child.header_size = static_cast<uint8_t>(std::min<uint64_t>(header.header_size, child.size));
    child.is_container = is_container(child.type, container.type);
    TRY_ASSIGN(previous, add(child, previous));
    if (child.is_clipped) warn_of_overrun(previous, header.size);
    if (child.is_container) TRY(walk_children(previous));
    offset = child.end();
  }
  return {};
}

Status AtomWalk::check_child(AtomIndex parent, uint64_t offset, const AtomHeader& header) const {
  const uint64_t left = tree_.nodes_[parent].end() - offset;
  const auto fail = [&](const std::string& text) {
    return tree_.failure(parent, badPublicMovieAtom, "", offset,
                         "the atom \"" + four_cc_text(header.type) + "\" " + text);
  };
  if (header.form == AtomHeader::Form::kDamaged) {
    return fail("claims " + number(header.size) + " bytes, fewer than its header has");
  }
  if (header.size > left && is_needed(header.type)) {
    return fail("claims " + number(header.size) + " bytes, but only " + number(left) + " are left");
  }
  return {};
}

Result<AtomTree> AtomTree::read(WindowSource& file) {
  AtomTree tree;
  tree.file_ = &file;
  tree.nodes_.reserve(64);
  AtomWalk walk(file, tree);
  TRY(walk.walk_file());
  TRY(walk.walk_movie());
  return tree;
}

}  // namespace toolbox
