// The zlib library, loaded only when a compressed movie atom is met: most movies have none and
// should not pay for it.
#pragma once

#include "base/bytes.h"
#include "file/byte_source.h"

namespace toolbox {

/// Unpacks a zlib stream. Memory grows with the bytes that really arrive, up to `unpacked_size`.
/// Fails: badPublicMovieAtom (not a zlib stream, or not of that length), featureUnsupported (no
/// zlib on this machine), memFullErr, and as ByteSource::read.
Result<Bytes> zlib_unpack(ByteRange packed, uint64_t unpacked_size);

/// Packs bytes into a zlib stream. Fails: featureUnsupported, memFullErr.
Result<Bytes> zlib_pack(ByteView bytes);

}  // namespace toolbox
