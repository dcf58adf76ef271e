// The chunks of a media, with the file each lies in.
#pragma once

#include "movie/media.h"
#include "movie/media_data.h"

namespace toolbox {

/// Bytes of a chunk's samples. Fails: as Media::samples().
Result<uint64_t> chunk_bytes(const Media& media, const SampleTable& table,
                             const SampleChunk& chunk);

/// Calls visit(table, chunk, reference) for every chunk that has samples; it answers a Status.
/// `reference` is the data reference (from 1) that leads to another file, 0 for the own one.
/// Fails: as Media::samples() and external_reference_of().
template <class Visit>
Status for_each_chunk(const Media& media, Visit visit) {
  TRY_ASSIGN(const SampleTable* table, media.samples());
  uint32_t description = 0;
  uint16_t reference = 0;
  for (uint32_t sample = 0; sample < table->sample_count();) {
    TRY_ASSIGN(const SampleChunk chunk, table->chunk_of(sample));
    sample = chunk.end_sample;
    if (chunk.description != description) {
      TRY_ASSIGN(reference, external_reference_of(media, chunk.description));
      description = chunk.description;
    }
    TRY(visit(*table, chunk, reference));
  }
  return {};
}

}  // namespace toolbox
