// The calls of QuickTime/Movies.h over the references of a track to others. Entries that name no
// track of the movie are holes: kept in the file, invisible here.
#include "calls/guard.h"
#include "calls/references.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

namespace {

auto names_a_track_of(const toolbox::Movie& movie) {
  return [&movie](uint32_t id) { return movie.find_track(id) != nullptr; };
}

/// How many entries of a type name a track.
SInt32 count(const toolbox::Track& track, OSType type) {
  const auto exists = names_a_track_of(track.movie());
  SInt32 number = 0;
  while (track.references().find(type, number + 1, exists) != nullptr) ++number;
  return number;
}

}  // namespace

TOOLBOX_CALL OSErr AddTrackReference(Track track, Track refTrack, OSType refType,
                                     SInt32* addedIndex) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    TRY_ASSIGN(const toolbox::Track* target, find_track(refTrack));
    if (&found->movie() != &target->movie()) {
      return {trackNotInMovie, "a track can only refer to tracks of its own movie"};
    }
    found->change_references().add(refType, target->id());
    if (addedIndex != nullptr) *addedIndex = count(*found, refType);
    return {};
  });
}

TOOLBOX_CALL OSErr DeleteTrackReference(Track track, OSType refType, SInt32 index) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    const auto exists = names_a_track_of(found->movie());
    const uint32_t* entry = found->references().find(refType, index, exists);
    if (entry == nullptr) {
      return {badTrackIndex, "the track has no such reference number " + std::to_string(index)};
    }
    found->change_references().remove(entry);
    return {};
  });
}

TOOLBOX_CALL Track GetTrackReference(Track track, OSType refType, SInt32 index) {
  return guarded_value<Track>(nullptr, [&]() -> Result<Track> {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    const auto exists = names_a_track_of(found->movie());
    const uint32_t* entry = found->references().find(refType, index, exists);
    if (entry == nullptr) return Track{nullptr};
    return reference_to(*found->movie().find_track(*entry));
  });
}

TOOLBOX_CALL SInt32 GetTrackReferenceCount(Track track, OSType refType) {
  return ask(SInt32{0}, find_track, track, [&](auto& found) { return count(found, refType); });
}

TOOLBOX_CALL OSType GetNextTrackReferenceType(Track track, OSType refType) {
  return ask(OSType{0}, find_track, track, [&](auto& found) -> OSType {
    const auto& lists = found.references().lists;
    bool is_next = refType == 0;
    for (const toolbox::TrackReferenceList& list : lists) {
      if (is_next && list.type != refType && count(found, list.type) > 0) return list.type;
      is_next = is_next || list.type == refType;
    }
    return 0;
  });
}

TOOLBOX_CALL OSErr ToolboxPruneTrackReferences(Track track, SInt32* removed) {
  if (removed != nullptr) *removed = 0;
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    const auto exists = names_a_track_of(found->movie());
    toolbox::TrackReferences pruned = found->references();
    const size_t holes = pruned.remove_holes(exists);
    if (holes > 0) found->change_references() = std::move(pruned);
    if (removed != nullptr) *removed = static_cast<SInt32>(holes);
    return {};
  });
}
