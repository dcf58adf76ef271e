// The samples that the fragments of a movie hold, as tables in memory.
#pragma once

#include <memory>
#include <unordered_map>

#include "movie/growing_tables.h"

namespace toolbox {

class Movie;
class Track;

/// The tables of all tracks that have samples in fragments, made in one walk over the file. The
/// samples of the movie atom's own tables come first in them.
///
/// Decode times follow from the durations. Where a fragment says that it is decoded later than
/// that, the sample in front of the gap is made longer; where it says earlier, it is not believed.
/// Nothing stands in front of a first fragment: its time is where the media begins, and is taken as
/// 0.
class FragmentSamples {
 public:
  /// Reads all fragments of the movie's file, of the media data nothing.
  /// Fails: invalidSampleTable (the text names atom and offset), featureUnsupported (an atom's
  /// version), memFullErr (more samples than TableBudget allows, more than a million fragments),
  /// ioErr, eofErr.
  static Result<std::unique_ptr<FragmentSamples>> read(const Movie& movie);

  FragmentSamples(const FragmentSamples&) = delete;
  FragmentSamples& operator=(const FragmentSamples&) = delete;

  /// Null for a track without samples in fragments. The views borrow this object.
  const SampleTables* find_tables(const Track& track) const;

 private:
  friend class FragmentReader;

  struct TrackSamples {
    std::unique_ptr<GrowingTables> growing;
    SampleTables tables;
  };

  FragmentSamples() = default;

  TableBudget budget_;
  std::unordered_map<const Track*, TrackSamples> tracks_;
};

}  // namespace toolbox
