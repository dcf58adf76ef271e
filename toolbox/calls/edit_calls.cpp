// The calls of QuickTime/Movies.h that change tracks: segments, properties, clones, disposal.
#include <algorithm>

#include "calls/guard.h"
#include "calls/references.h"
#include "movie/clone_track.h"
#include "movie/edit_segments.h"
#include "movie/insert_movie.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

namespace {

/// Finds a track, then runs `change(track)`, which answers a Status.
template <class Change>
OSErr change_track(Track track, Change change) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    return change(*found);
  });
}

template <class Change>
OSErr change_movie(Movie movie, Change change) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    return change(*found);
  });
}

/// For changes of the header that cannot fail.
template <class Change>
void change_header(Track track, Change change) {
  change_track(track, [&](toolbox::Track& found) -> Status {
    change(found.change_header());
    return {};
  });
}

}  // namespace

TOOLBOX_CALL void SetTrackVolume(Track track, SInt16 volume) {
  change_header(track, [&](auto& header) { header.volume = volume; });
}

TOOLBOX_CALL void SetTrackEnabled(Track track, Boolean isEnabled) {
  change_header(track, [&](auto& header) {
    constexpr uint32_t kEnabled = toolbox::TrackHeaderAtom::kEnabled;
    header.flags = isEnabled != 0 ? header.flags | kEnabled : header.flags & ~kEnabled;
  });
}

TOOLBOX_CALL void SetTrackDimensions(Track track, Fixed width, Fixed height) {
  change_header(track, [&](auto& header) {
    header.width = width;
    header.height = height;
  });
}

TOOLBOX_CALL void SetTrackLayer(Track track, SInt16 layer) {
  change_header(track, [&](auto& header) { header.layer = layer; });
}

TOOLBOX_CALL void SetTrackMatrix(Track track, const MatrixRecord* matrix) {
  change_header(track, [&](auto& header) {
    header.matrix = toolbox::kIdentityMatrix;
    if (matrix != nullptr) std::copy_n(&matrix->matrix[0][0], 9, header.matrix.begin());
  });
}

TOOLBOX_CALL void SetTrackOffset(Track track, TimeValue offset) {
  change_track(track, [&](toolbox::Track& found) { return set_offset(found, offset); });
}

TOOLBOX_CALL OSErr ScaleTrackSegment(Track track, TimeValue startTime, TimeValue oldDuration,
                                     TimeValue newDuration) {
  return change_track(track, [&](toolbox::Track& found) {
    return scale_segment(found, startTime, oldDuration, newDuration);
  });
}

TOOLBOX_CALL OSErr InsertTrackSegment(Track srcTrack, Track dstTrack, TimeValue srcIn,
                                      TimeValue srcDuration, TimeValue dstIn) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* source, find_track(srcTrack));
    TRY_ASSIGN(toolbox::Track * target, find_track(dstTrack));
    return insert_segment(*source, srcIn, srcDuration, *target, dstIn);
  });
}

TOOLBOX_CALL OSErr InsertEmptyTrackSegment(Track track, TimeValue dstIn, TimeValue dstDuration) {
  return change_track(track, [&](toolbox::Track& found) {
    return insert_empty_segment(found, dstIn, dstDuration);
  });
}

TOOLBOX_CALL OSErr DeleteTrackSegment(Track track, TimeValue startTime, TimeValue duration) {
  return change_track(
      track, [&](toolbox::Track& found) { return delete_segment(found, startTime, duration); });
}

TOOLBOX_CALL OSErr ScaleMovieSegment(Movie movie, TimeValue startTime, TimeValue oldDuration,
                                     TimeValue newDuration) {
  return change_movie(movie, [&](toolbox::Movie& found) {
    return scale_movie_segment(found, startTime, oldDuration, newDuration);
  });
}

TOOLBOX_CALL OSErr InsertMovieSegment(Movie srcMovie, Movie dstMovie, TimeValue srcIn,
                                      TimeValue srcDuration, TimeValue dstIn) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Movie* source, find_movie(srcMovie));
    TRY_ASSIGN(toolbox::Movie * target, find_movie(dstMovie));
    if (source == target) return repeat_movie_segment(*target, srcIn, srcDuration, dstIn);
    return insert_movie_segment(*source, srcIn, srcDuration, *target, dstIn);
  });
}

TOOLBOX_CALL OSErr InsertEmptyMovieSegment(Movie dstMovie, TimeValue dstIn, TimeValue dstDuration) {
  return change_movie(dstMovie, [&](toolbox::Movie& found) {
    return insert_empty_movie_segment(found, dstIn, dstDuration);
  });
}

TOOLBOX_CALL OSErr DeleteMovieSegment(Movie movie, TimeValue startTime, TimeValue duration) {
  return change_movie(movie, [&](toolbox::Movie& found) {
    return delete_movie_segment(found, startTime, duration);
  });
}

TOOLBOX_CALL OSErr AddClonedTrackToMovie(Track srcTrack, Movie dstMovie, SInt32 flags,
                                         Track* newTrack) {
  if (newTrack != nullptr) *newTrack = nullptr;
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* source, find_track(srcTrack));
    TRY_ASSIGN(const toolbox::Movie* target, find_movie(dstMovie));
    if (target != &source->movie() || (flags & kQTCloneShareSamples) == 0) {
      return {paramErr, "a track is cloned inside its own movie, sharing its samples"};
    }
    const bool without_edits = (flags & kQTCloneDontCopyEdits) != 0;
    TRY_ASSIGN(toolbox::Track * clone,
               clone_track(*source, without_edits ? toolbox::CloneEdits::kNone
                                                  : toolbox::CloneEdits::kCopied));
    if (newTrack == nullptr) return {};
    TRY_ASSIGN(*newTrack, reference_to(*clone));
    return {};
  });
}

TOOLBOX_CALL void DisposeMovieTrack(Track track) {
  change_track(track, [](toolbox::Track& found) -> Status {
    toolbox::Movie& movie = found.movie();
    const uint32_t id = found.id();
    movie.remove_track(found);
    if (movie.find_track(id) != nullptr) return {};
    for (const auto& other : movie.tracks()) {
      const auto& lists = other->references().lists;
      const bool refers = std::any_of(lists.begin(), lists.end(), [&](const auto& list) {
        return std::find(list.track_ids.begin(), list.track_ids.end(), id) != list.track_ids.end();
      });
      if (refers) other->change_references().remove_track(id);
    }
    return {};
  });
}

TOOLBOX_CALL void DisposeTrackMedia(Media media) {
  guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Media * found, find_media(media));
    toolbox::Track& track = found->track();
    track.set_media(nullptr);
    // Edits without a media would show nothing.
    track.set_edits(toolbox::EditList::nothing());
    return {};
  });
}
