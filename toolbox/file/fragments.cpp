#include "file/fragments.h"

#include "file/atom_header.h"

namespace toolbox {

Result<std::optional<ByteRange>> FragmentCursor::next() {
  constexpr size_t kMostFragments = 1 << 20;
  constexpr uint64_t kHeaderBytes = 8;
  while (file_->size() - offset_ >= kHeaderBytes) {
    TRY_ASSIGN(const AtomHeader header, read_atom_header(*file_, offset_, file_->size()));
    const uint64_t left = file_->size() - offset_;
    if (header.form != AtomHeader::Form::kSized || header.size > left) break;
    const ByteRange atom{file_, offset_, header.size};
    offset_ += header.size;
    if (header.type != four_cc("moof")) continue;
    if (found_ == kMostFragments) {
      return Status(memFullErr, file_->name() + ": there are more than " +
                                    std::to_string(kMostFragments) + " movie fragments");
    }
    ++found_;
    return std::optional<ByteRange>(atom);
  }
  return std::optional<ByteRange>();
}

Result<std::vector<ByteRange>> find_fragments(const AtomTree& tree, WindowSource& file) {
  std::vector<ByteRange> fragments;
  FragmentCursor cursor(tree, file);
  while (true) {
    TRY_ASSIGN(const std::optional<ByteRange> fragment, cursor.next());
    if (!fragment) return fragments;
    fragments.push_back(*fragment);
  }
}

}  // namespace toolbox
