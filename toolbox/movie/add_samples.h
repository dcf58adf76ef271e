// Adds new samples to a media: their description, their bytes and their rows in the tables.
#pragma once

#include "base/bytes.h"
#include "base/status.h"

namespace toolbox {

class Media;

/// Lets samples be added. Fails: dataAlreadyOpenForWrite, wrPermErr when the movie's file may not
/// be written, couldNotResolveDataRef when all data of the media is in other files.
Status begin_media_edits(Media& media);

/// Ends it; also when it was not begun.
void end_media_edits(Media& media);

/// Samples that are alike, their bytes one behind the other.
struct NewSamples {
  ByteView data;
  uint32_t count = 1;
  uint32_t duration = 0;  // of each, media ticks
  bool is_sync = true;
};

/// Puts samples behind the last one of the media; their bytes wait for the next save. `description`
/// is a whole entry, big-endian, or for timecode in the machine's own order; an equal one of the
/// media is used, else it is added. Answers when the first of them begins, media ticks.
/// Fails: dataNotOpenForWrite outside of edits, paramErr when the bytes cannot be divided into the
/// samples, invalidSampleDescription, memFullErr, dskFulErr, ioErr, as Media::append_samples; no
/// sample is added then.
Result<int64_t> add_samples(Media& media, const NewSamples& samples, ByteView description);

/// The number (from 1) of a description (whole entry, big-endian) in a media; it is added when no
/// equal one is there. Fails: as Media::change_descriptions.
Result<uint32_t> find_or_add_description(Media& media, const Bytes& description);

/// The number (from 1) of a data reference (whole entry) in a media; it is added when no equal one
/// is there. Fails: as Media::change_data_references, paramErr for more of them than a description
/// can count.
Result<uint16_t> find_or_add_data_reference(Media& media, const Bytes& reference);

/// The same for the data reference to the movie's own file.
Result<uint16_t> own_data_reference(Media& media);

/// Sets which data reference (from 1) a description names. REQUIRES: at least 16 bytes.
void set_data_reference_index(Bytes& description, uint16_t index);

}  // namespace toolbox
