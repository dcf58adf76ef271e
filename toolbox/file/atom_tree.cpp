#include "file/atom_tree.h"

namespace toolbox {

AtomIndex AtomTree::find_child(AtomIndex parent, FourCC type) const {
  const AtomIndex first = nodes_[parent].first_child;
  if (first == kNoAtom || nodes_[first].type == type) return first;
  return find_next(first, type);
}

AtomIndex AtomTree::find_next(AtomIndex after, FourCC type) const {
  AtomIndex index = nodes_[after].next_sibling;
  while (index != kNoAtom && nodes_[index].type != type) index = nodes_[index].next_sibling;
  return index;
}

AtomIndex AtomTree::find_path(AtomIndex from, std::initializer_list<FourCC> types) const {
  for (FourCC type : types) {
    if (from == kNoAtom) break;
    from = find_child(from, type);
  }
  return from;
}

ByteRange AtomTree::payload(AtomIndex index) const {
  const AtomNode& atom = nodes_[index];
  return {source(atom), atom.payload_offset(), atom.payload_size()};
}

ByteRange AtomTree::whole(AtomIndex index) const {
  const AtomNode& atom = nodes_[index];
  return {source(atom), atom.offset, atom.size};
}

ByteRange AtomTree::loose_tail(AtomIndex index) const {
  const AtomNode& atom = nodes_[index];
  uint64_t begin = atom.is_container ? atom.payload_offset() : atom.end();
  for (AtomIndex child = atom.first_child; child != kNoAtom; child = nodes_[child].next_sibling) {
    begin = nodes_[child].end();
  }
  return {source(atom), begin, atom.end() - begin};
}

const ByteSource* AtomTree::source(const AtomNode& atom) const {
  return atom.is_unpacked ? unpacked_.get() : file_;
}

std::string AtomTree::path(AtomIndex index) const {
  const AtomNode& atom = nodes_[index];
  std::string text = atom.parent == kNoAtom ? std::string() : path(atom.parent) + '/';
  text += four_cc_text(atom.type);
  if (atom.parent == kNoAtom && atom.is_unpacked) return text;  // the root of its own source

  size_t place = 0;
  size_t total = 0;
  AtomIndex sibling = atom.parent == kNoAtom ? first_top_level() : nodes_[atom.parent].first_child;
  for (; sibling != kNoAtom; sibling = nodes_[sibling].next_sibling) {
    if (nodes_[sibling].type == atom.type) ++total;
    if (sibling == index) place = total;
  }
  if (total > 1 || atom.type == four_cc("trak")) text += '[' + std::to_string(place) + ']';
  return text;
}

Status AtomTree::failure(AtomIndex index, OSErr code, const std::string& field, uint64_t offset,
                         const std::string& text) const {
  std::string message = source(nodes_[index])->name() + ": " + path(index);
  if (!field.empty()) message += '.' + field;
  message += " at byte " + std::to_string(offset) + ": " + text;
  return {code, std::move(message)};
}

bool AtomTree::is_fragmented() const {
  return first_fragment_.has_value() || find_child(movie_, four_cc("mvex")) != kNoAtom;
}

}  // namespace toolbox
