#include "file/compressed_movie.h"

#include "atoms/file_atoms.h"
#include "atoms/read_atom.h"
#include "file/zlib.h"

namespace toolbox {

Result<Bytes> unpack_movie(const AtomTree& tree, AtomIndex index) {
  const auto fail = [&](AtomIndex where, OSErr code, const std::string& text) {
    return tree.failure(where, code, "", tree.node(where).offset, text);
  };
  const AtomIndex data = tree.find_child(index, four_cc("cmvd"));
  TRY_ASSIGN(auto method, read_child<DataCompressionAtom>(tree, index));
  if (!method || data == kNoAtom) {
    return fail(index, badPublicMovieAtom, "lacks the packed movie (dcom and cmvd)");
  }
  if (method->method != four_cc("zlib")) {
    return fail(
        index, featureUnsupported,
        "is packed by the method \"" + four_cc_text(method->method) + "\"; only zlib is known");
  }
  TRY_ASSIGN(CompressedMovieAtom compressed, read_atom<CompressedMovieAtom>(tree, data));
  const uint64_t packed_size = compressed.packed.row_count();
  if (compressed.unpacked_size > kLargestUnpackedMovie ||
      compressed.unpacked_size / kLargestPackRatio > packed_size) {
    return fail(data, badPublicMovieAtom,
                "states an unpacked length of " + std::to_string(compressed.unpacked_size) +
                    " bytes for " + std::to_string(packed_size) +
                    " packed ones; that is not plausible");
  }
  Result<Bytes> unpacked = zlib_unpack(compressed.packed.range(), compressed.unpacked_size);
  if (!unpacked.ok()) return fail(data, unpacked.status().code(), unpacked.status().message());
  return unpacked;
}

}  // namespace toolbox
