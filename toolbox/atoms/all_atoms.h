// The one list of all atoms. Add a struct and its name here, and reader, dump, tests and fuzz seeds
// have it.
#pragma once

#include "atoms/data_references.h"
#include "atoms/edit_list.h"
#include "atoms/file_atoms.h"
#include "atoms/fragments.h"
#include "atoms/media_header.h"
#include "atoms/movie_header.h"
#include "atoms/sample_description.h"
#include "atoms/sample_tables.h"
#include "atoms/timecode.h"
#include "atoms/track_header.h"

namespace toolbox {

template <class... Atoms>
struct AtomList {
  /// Calls visit.template operator()<Atom>() for each atom until one call answers true.
  template <class Visit>
  static bool any(Visit&& visit) {
    return (visit.template operator()<Atoms>() || ...);
  }
};

using AllAtoms =
    AtomList<MovieHeaderAtom, TrackHeaderAtom, ApertureAtom, TrackReferenceAtom, EditListAtom,
             MediaHeaderAtom, HandlerAtom, VideoMediaHeaderAtom, SoundMediaHeaderAtom,
             GenericMediaInfoAtom, TimecodeInfoAtom, DataReferenceAtom, DataReferenceEntry,
             SampleDescriptionAtom, VideoDescription, SoundDescription, DescriptionHeader,
             TimeToSampleAtom, CompositionOffsetAtom, SyncSampleAtom, PartialSyncSampleAtom,
             SampleToChunkAtom, SampleSizeAtom, CompactSampleSizeAtom, ChunkOffsetAtom,
             WideChunkOffsetAtom, SampleDependencyAtom, CompositionShiftAtom, FileTypeAtom,
             DataCompressionAtom, CompressedMovieAtom, TrackExtendsAtom, MovieExtendsHeaderAtom,
             FragmentHeaderAtom, TrackFragmentHeaderAtom, TrackFragmentTimeAtom, TrackRunAtom>;

/// True when an atom of type `type` inside `parent` has the layout that `row` states.
constexpr bool matches(const AtomType& row, FourCC type, FourCC parent) {
  return (row.type == kAnyType || row.type == type) &&
         (row.parent == kAnyType || row.parent == parent);
}

}  // namespace toolbox
