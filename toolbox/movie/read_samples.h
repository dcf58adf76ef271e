// Reads the samples shown at a media time, bytes and all.
#pragma once

#include "movie/sample_walk.h"

namespace toolbox {

/// How much is wanted.
struct SampleRequest {
  int64_t time = 0;           // media ticks
  uint32_t most_samples = 0;  // 0: one; of sound whose samples have one size the rest of the chunk
  uint64_t most_bytes = 0;    // 0: no limit
  bool wants_data = true;
};

/// Samples that are alike and follow one another.
struct ReadSamples {
  SamplePiece first;   // the first of them, and what all have in common
  uint32_t count = 0;  // as the table counts them
  uint64_t bytes = 0;
  Bytes data;  // when wanted and within the limit
};

/// Fails: timeNotInMedia, endOfDataReached, couldNotResolveDataRef, invalidSampleTable, ioErr,
/// memFullErr, and as Media::samples(). More bytes than the limit are no failure: the data is then
/// not read.
Result<ReadSamples> read_samples(const Media& media, const SampleRequest& request);

}  // namespace toolbox
