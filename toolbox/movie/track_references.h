// The tracks that a track names, by type of reference.
#pragma once

#include <cstdint>
#include <vector>

#include "base/four_cc.h"

namespace toolbox {

/// The references of one type. IDs of 0 and of tracks that do not exist are holes: kept in place,
/// skipped in lookups.
struct TrackReferenceList {
  FourCC type = 0;
  std::vector<uint32_t> track_ids;
};

/// All references of a track, types in file order. Two lists of one type are kept as two and read
/// as one.
struct TrackReferences {
  std::vector<TrackReferenceList> lists;

  /// Adds a track behind the last one of a type.
  void add(FourCC type, uint32_t track_id);

  /// Where the entry stands that is number `index`, from 1, among those of a type that `exists`
  /// accepts; null when there is none.
  template <class Exists>
  const uint32_t* find(FourCC type, int64_t index, Exists exists) const;

  /// Takes an entry out, as find() gave it, and its list with the last one.
  void remove(const uint32_t* entry);

  /// Takes the holes out: the entries that `exists` does not accept. Answers how many they were.
  template <class Exists>
  size_t remove_holes(Exists exists);

  /// Takes every reference to a track out.
  void remove_track(uint32_t track_id);
};

template <class Exists>
const uint32_t* TrackReferences::find(FourCC type, int64_t index, Exists exists) const {
  for (const TrackReferenceList& list : lists) {
    if (list.type != type) continue;
    for (const uint32_t& id : list.track_ids) {
      if (exists(id) && --index == 0) return &id;
    }
  }
  return nullptr;
}

template <class Exists>
size_t TrackReferences::remove_holes(Exists exists) {
  size_t removed = 0;
  for (TrackReferenceList& list : lists) {
    removed += std::erase_if(list.track_ids, [&](uint32_t id) { return !exists(id); });
  }
  std::erase_if(lists, [](const TrackReferenceList& list) { return list.track_ids.empty(); });
  return removed;
}

}  // namespace toolbox
