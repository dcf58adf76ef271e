#include "file/atom_header.h"
#include "file/atom_tree.h"

namespace toolbox {

Result<std::vector<ByteRange>> find_fragments(const AtomTree& tree, WindowSource& file) {
  constexpr size_t kMostFragments = 1 << 20;
  constexpr uint64_t kHeaderBytes = 8;
  std::vector<ByteRange> fragments;
  uint64_t offset = tree.first_fragment().value_or(file.size());
  while (file.size() - offset >= kHeaderBytes) {
    TRY_ASSIGN(const AtomHeader header, read_atom_header(file, offset, file.size()));
    const uint64_t left = file.size() - offset;
    if (header.form != AtomHeader::Form::kSized || header.size > left) break;
    if (header.type == four_cc("moof")) {
      if (fragments.size() == kMostFragments) {
        return Status(memFullErr, file.name() + ": there are more than " +
                                      std::to_string(kMostFragments) + " movie fragments");
      }
      fragments.push_back({&file, offset, header.size});
    }
    offset += header.size;
  }
  return fragments;
}

}  // namespace toolbox
