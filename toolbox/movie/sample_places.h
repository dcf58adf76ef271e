// Where the bytes of samples lie that one media takes from another: where they are, or copied.
#pragma once

#include <map>

#include "file/file_source.h"
#include "movie/sample_walk.h"

namespace toolbox {

/// Where samples lie that a media has taken.
struct SamplePlace {
  uint64_t offset = 0;       // in the file that the description's data reference names, or pending
  uint32_t description = 0;  // from 1, of the media that took them
};

/// Every piece is surveyed first; then what must be copied is copied once, however often samples
/// share bytes; then the places are asked for. Copied is what goes into a media that is open for
/// edits, and of another movie what that movie has not saved yet, or all when the movie asks for
/// copies. All else is referred to.
class SamplePlaces {
 public:
  /// Borrows both, which must not change meanwhile but through this object.
  SamplePlaces(const Media& source, Media& target);

  /// Fails: as Media::data_references().
  Status survey(const SamplePiece& piece);

  /// Copies into the pending data of the target's movie. Fails: as read_media_data(),
  /// PendingData::append(); nothing is copied then.
  Status copy();

  /// REQUIRES: the piece was surveyed, and copy() went well. Fails: invalidSampleDescription when
  /// the samples have none, as find_or_add_data_reference(), ExternalFiles::open() and refer_to().
  Result<SamplePlace> place_of(const SamplePiece& piece);

 private:
  /// Bytes that are copied.
  struct Stretch {
    uint32_t file = 0;  // which file of the source's: see file_of()
    uint64_t begin = 0;
    uint64_t end = 0;
    uint32_t description = 0;  // any of the samples in it
    uint64_t copied_to = 0;
    bool operator<(const Stretch& other) const {
      return file != other.file ? file < other.file : begin < other.begin;
    }
  };

  bool is_copied(const SamplePiece& piece) const;
  Result<uint32_t> file_of(const SamplePiece& piece) const;
  void merge();
  Status copy_stretch(Stretch& stretch);
  Result<uint32_t> description_for(uint32_t description, bool is_copied);
  Result<uint16_t> reference_for(uint32_t description, bool is_copied);
  Result<uint16_t> reference_to_file(const FileSource& file);

  const Media& source_;
  Media& target_;
  bool within_movie_;
  bool copies_all_;
  std::vector<Stretch> stretches_;
  std::map<std::pair<uint32_t, bool>, uint32_t> descriptions_;  // what was found once
};

}  // namespace toolbox
