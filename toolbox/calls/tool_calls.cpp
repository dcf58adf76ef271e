// The calls of Toolbox/Toolbox.h for tools that look movies over: their edits, references, problems
// and samples.
#include <Toolbox/Toolbox.h>

#include <cstring>

#include "calls/guard.h"
#include "calls/references.h"
#include "foundation/frameworks.h"
#include "movie/verify.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

TOOLBOX_CALL SInt32 ToolboxGetTrackEditCount(Track track) {
  return ask(SInt32{0}, find_track, track,
             [](auto& found) { return to_count(found.timeline().spans().size()); });
}

TOOLBOX_CALL OSErr ToolboxGetTrackEdit(Track track, SInt32 index, ToolboxTrackEdit* edit) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    const auto spans = found->timeline().spans();
    if (edit == nullptr || index < 1 || static_cast<size_t>(index) > spans.size()) {
      return {badEditIndex, "the track has no such edit number " + std::to_string(index)};
    }
    const toolbox::EditSpan& span = spans[static_cast<size_t>(index) - 1];
    *edit = {.start = span.start,
             .duration = span.duration,
             .mediaStart = span.is_empty() ? -1 : span.media_start,
             .rate = span.rate};
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxGetTrackReferenceID(Track track, SInt32 index, OSType* type,
                                              SInt32* trackID) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    SInt32 left = index;
    for (const toolbox::TrackReferenceList& list : found->references().lists) {
      for (const uint32_t id : list.track_ids) {
        if (--left != 0) continue;
        if (type != nullptr) *type = list.type;
        if (trackID != nullptr) *trackID = static_cast<SInt32>(id);
        return {};
      }
    }
    return {badTrackIndex, "the track has no such reference number " + std::to_string(index)};
  });
}

TOOLBOX_CALL OSErr ToolboxVerifyMovie(Movie movie, Handle* problems) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    TRY_ASSIGN(const std::vector<std::string> list, toolbox::verify_movie(*found));
    std::string text;
    for (const std::string& problem : list) text += problem + "\n";
    if (problems == nullptr) return {};
    *problems = nullptr;
    const OSErr status = ::PtrToHand(text.data(), problems, static_cast<Size>(text.size()));
    return status == noErr ? Status() : Status(status, "there is no memory for the problems");
  });
}

TOOLBOX_CALL OSErr ToolboxDigestTrackSamples(Track track, char digest[33]) {
  return ToolboxDigestFirstSamples(track, UINT32_MAX, digest);
}

TOOLBOX_CALL OSErr ToolboxDigestFirstSamples(Track track, uint32_t count, char digest[33]) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    TRY_ASSIGN(const std::string text, toolbox::digest_samples(*found, count));
    std::memcpy(digest, text.c_str(), text.size() + 1);
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxCheckFrameworks(void) { return guarded(toolbox::check_frameworks); }
