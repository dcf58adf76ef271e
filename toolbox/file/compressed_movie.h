// Unpacking a compressed movie atom.
#pragma once

#include "base/bytes.h"
#include "file/atom_tree.h"

namespace toolbox {

/// The largest movie atom that is unpacked, and how many times longer than its packed form it may
/// be.
inline constexpr uint64_t kLargestUnpackedMovie = 256 * 1024 * 1024;
inline constexpr uint64_t kLargestPackRatio = 1000;

/// The `moov` atom, header included, that the `cmov` atom at `index` of the tree holds.
/// Fails: badPublicMovieAtom (damaged, or beyond the bounds above), featureUnsupported (packed by
/// another method, or no zlib), memFullErr, ioErr, eofErr; the text names path and offset.
Result<Bytes> unpack_movie(const AtomTree& tree, AtomIndex index);

}  // namespace toolbox
