// Any bytes as a movie file: the walk over its atoms, the decoding of every atom that is found, and
// the encoding of what was decoded, which must give the same bytes again.
#include <cstdlib>

#include "atoms/all_atoms.h"
#include "atoms/atom_dump.h"
#include "atoms/atom_writer.h"
#include "atoms/read_atom.h"
#include "file/movie_file.h"

namespace toolbox {
namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

template <class Atom>
void read_and_write(const AtomTree& tree, AtomIndex index) {
  const Result<Atom> atom = read_atom<Atom>(tree, index);
  if (!atom.ok()) {
    require(atom.status().code() != noErr && !atom.status().message().empty());
    return;
  }
  AtomWriter writer;
  writer.payload(atom.value());
  require(writer.status().ok());
  const ByteRange range = tree.payload(index);
  Bytes bytes(range.size);
  require(range.source->read(range.offset, bytes).ok());
  require(writer.bytes() == bytes);
}

// Damaged files hold atoms under wrong names, so every layout is tried on every atom.
void try_every_layout(const AtomTree& tree, AtomIndex index) {
  AllAtoms::any([&]<class Atom>() {
    read_and_write<Atom>(tree, index);
    return false;
  });
}

void open_and_read(ByteView bytes) {
  auto source = std::make_unique<MemorySource>(Bytes(bytes.begin(), bytes.end()), "fuzz.mov");
  Result<OpenedMovie> opened = open_movie_source(std::move(source));
  if (!opened.ok()) {
    require(!opened.status().message().empty());
    return;
  }
  const AtomTree& tree = opened.value().tree;
  constexpr AtomIndex kMostDecoded = 200;  // more of the same teaches nothing and is slow
  for (AtomIndex index = 0; index < std::min<size_t>(tree.size(), kMostDecoded); ++index) {
    const AtomNode& node = tree.node(index);
    if (node.parent != kNoAtom) {
      const AtomNode& parent = tree.node(node.parent);
      require(node.offset >= parent.payload_offset() && node.end() <= parent.end());
    }
    require(!tree.path(index).empty());
    require(tree.loose_tail(index).size <= node.size);
    if (node.payload_size() < 64 * 1024) try_every_layout(tree, index);
  }
  if (tree.size() < kMostDecoded) require(!dump_tree(tree, true).empty());
  require(find_fragments(tree, *opened.value().file).ok());
}

}  // namespace
}  // namespace toolbox

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  toolbox::open_and_read({bytes, size});
  return 0;
}
