// Timecode media: which time code it has at a time, and how that is drawn.
#pragma once

#include "atoms/timecode.h"
#include "handlers/timecode.h"

namespace toolbox {

class Media;
class Track;

/// The definition of a description (whole entry, big-endian). Of a file that counts one frame a
/// second too few for its rate, the number that the rate asks for. Fails: invalidSampleDescription
/// when the entry ends early.
Result<TimecodeDefinition> timecode_definition(ByteView description);

/// The items of a description's source reference; empty for none. Some files have it two bytes
/// further on.
ByteView timecode_source(ByteView description);

/// A time code of a media.
struct MediaTimecode {
  int64_t frame = 0;  // as the sample and the time in it say, before the day wraps
  TimecodeDefinition definition;
  TimecodeRecord record;
  ByteView
      source;  // of its description, see timecode_source(); lives as long as the media is as is
};

/// The time code at a media time. Fails: timeNotInMedia, paramErr for a definition that cannot be
/// counted with, invalidSampleDescription, invalidSampleDescIndex, invalidSampleTable for a sample
/// that is no frame number, and as read_samples().
Result<MediaTimecode> timecode_at(const Media& media, int64_t media_time);

/// The first movie tick at which a track shows a time code, written as people do. Fails: paramErr,
/// timeNotInTrack when it never shows that, featureUnsupported for a track of a million samples,
/// and as timecode_at().
Result<int64_t> find_timecode(const Track& track, std::string_view text);

/// How a media's time code is drawn; the defaults where nothing says. Fails: ioErr, eofErr,
/// memFullErr.
Result<TimecodeInfoAtom> timecode_display(const Media& media);

/// Sets it. Fails: as timecode_display(); nothing is changed then.
Status set_timecode_display(Media& media, const TimecodeInfoAtom& display);

}  // namespace toolbox
