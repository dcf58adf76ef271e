#include "movie/track_references.h"

#include <algorithm>

namespace toolbox {

void TrackReferences::add(FourCC type, uint32_t track_id) {
  for (auto list = lists.rbegin(); list != lists.rend(); ++list) {
    if (list->type != type) continue;
    list->track_ids.push_back(track_id);
    return;
  }
  lists.push_back({type, {track_id}});
}

void TrackReferences::remove(const uint32_t* entry) {
  for (TrackReferenceList& list : lists) {
    const auto found = std::find_if(list.track_ids.begin(), list.track_ids.end(),
                                    [&](const uint32_t& id) { return &id == entry; });
    if (found != list.track_ids.end()) {
      list.track_ids.erase(found);
      break;
    }
  }
  std::erase_if(lists, [](const TrackReferenceList& list) { return list.track_ids.empty(); });
}

void TrackReferences::remove_track(uint32_t track_id) {
  for (TrackReferenceList& list : lists) std::erase(list.track_ids, track_id);
  std::erase_if(lists, [](const TrackReferenceList& list) { return list.track_ids.empty(); });
}

}  // namespace toolbox
