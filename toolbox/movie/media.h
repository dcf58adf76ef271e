// The media of a track: its time scale and language, its handler, its samples, their descriptions
// and their files.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "atoms/media_header.h"
#include "base/bytes.h"
#include "file/atom_tree.h"
#include "handlers/media_handler.h"
#include "memory/tokens.h"
#include "movie/atom_changes.h"
#include "movie/sample_table.h"

namespace toolbox {

class AppendedSamples;
class Track;
struct EqualSamples;

class Media {
 public:
  /// Reads the headers of an `mdia` atom. Without `hdlr` the media type is 0, without `mdhd` the
  /// time scale is 600. Fails: as Movie::load.
  static Result<std::unique_ptr<Media>> load(Track& track, const AtomTree& tree, AtomIndex mdia);

  /// A new media without samples. REQUIRES: time_scale > 0.
  static std::unique_ptr<Media> create(Track& track, FourCC type, uint32_t time_scale);

  ~Media();
  /// A media for another track of the same movie that shares samples and all else with this one.
  /// Fails: as samples().
  Result<std::unique_ptr<Media>> clone_for(Track& track) const;

  Media(const Media&) = delete;
  Media& operator=(const Media&) = delete;

  Track& track() const { return *track_; }
  const MediaHeaderAtom& header() const { return header_; }

  /// The `mdia` atom that gives what is not changed; kNoAtom for a new media.
  AtomIndex atom() const { return atom_; }

  /// Units a second, never 0.
  uint32_t time_scale() const { return header_.time_scale; }

  /// What the media is: `vide`, `soun`, ...; 0 when the file does not say.
  FourCC type() const { return handler_atom_.subtype; }
  const HandlerAtom& handler_description() const { return handler_atom_; }
  MediaHandler& handler() { return handler_; }

  /// The sample tables, found when first asked; empty when the media has none. The samples in
  /// fragments of the file are among them.
  /// Fails: invalidSampleTable (the text names atom path and offset), featureUnsupported, ioErr,
  /// eofErr, memFullErr; each time again.
  Result<const SampleTable*> samples() const;

  /// Sum of the sample durations, media ticks. Fails: as samples().
  Result<int64_t> duration() const;

  /// The duration as well as it is known without a walk over a large table: the sum of a short one,
  /// else what the header states if it can be true, else the sum. Media ticks.
  int64_t likely_duration() const;

  /// Sample descriptions, whole and big-endian, their 32-bit size first. Read when first asked.
  /// Fails: invalidSampleDescription when the atom is damaged, ioErr, eofErr, memFullErr.
  Result<const std::vector<Bytes>*> descriptions() const;

  /// Data references, whole atoms. Fails: invalidDataRef when the atom is damaged, and as
  /// descriptions().
  Result<const std::vector<Bytes>*> data_references() const;

  /// Whether samples(), descriptions() and data_references() can all be had; the first failure if
  /// not.
  Status check() const;

  /// The headers, about to be changed.
  MediaHeaderAtom& change_header();
  HandlerAtom& change_handler();
  bool header_changed() const { return header_changed_; }
  bool handler_changed() const { return handler_changed_; }

  /// Takes other sample tables in place of the old ones. `owner` holds the memory that the tables
  /// view. Places of samples that are not in a file yet: see PendingData.
  void set_samples(SampleTables tables, std::shared_ptr<const void> owner);
  bool samples_changed() const { return samples_changed_; }

  /// Adds samples behind the last one, whose bytes lie one behind the other from `offset` on:
  /// pending data, or a place in the file of the description (from 1). Costs what is added, save
  /// for the first time, when the tables of the file are copied. A SampleTable asked for before is
  /// gone. Fails: as samples(), memFullErr; nothing is added then.
  Status append_samples(const EqualSamples& samples, uint64_t offset, uint32_t description);

  /// Whether so many samples in so many pieces can be appended. Nothing changes but that the tables
  /// of the file are copied. Fails: as append_samples().
  Status prepare_for_samples(uint64_t samples, uint64_t pieces);

  /// What holds the memory that the tables view; null while they are the file's.
  const std::shared_ptr<const void>& samples_owner() const { return samples_owner_; }

  /// Whether somebody is adding samples: between BeginMediaEdits and EndMediaEdits.
  bool is_open_for_edits() const { return is_open_for_edits_; }
  void set_open_for_edits(bool is_open) { is_open_for_edits_ = is_open; }

  /// Fail: as the questions of the same names.
  Result<std::vector<Bytes>*> change_descriptions();
  Result<std::vector<Bytes>*> change_data_references();
  bool descriptions_changed() const { return descriptions_changed_; }
  bool data_references_changed() const { return data_references_changed_; }

  /// Children of the `minf` atom other than `dinf` and `stbl`: the media's own header.
  AtomChanges& change_info_atoms();
  const AtomChanges& info_atom_changes() const { return info_atom_changes_; }

  /// Notes that the media and its track changed; the modification time is set.
  void touch();

  /// Whether anything of the media differs from its atom.
  bool is_modified() const { return modified_; }

  Token token() { return reference_.token(Kind::kMedia, this); }

  void check_invariants() const;

 private:
  friend class Track;

  /// Takes the state of the same media as read from a saved file, whose atoms are now in `tree`.
  void rebase(Media& saved, const AtomTree& tree);

  Media(Track& track, const AtomTree* tree, AtomIndex atom);

  Track* track_;
  const AtomTree* tree_;  // null for a new media
  AtomIndex atom_;
  MediaHeaderAtom header_;
  HandlerAtom handler_atom_;
  MediaHandler handler_;
  mutable std::unique_ptr<SampleTable> samples_;
  mutable std::optional<std::vector<Bytes>> descriptions_;
  mutable std::optional<std::vector<Bytes>> data_references_;
  std::shared_ptr<const void> samples_owner_;
  std::shared_ptr<AppendedSamples> appended_;  // while samples are added; then the tables are here
  AtomChanges info_atom_changes_;
  bool header_changed_ = false;
  bool handler_changed_ = false;
  bool samples_changed_ = false;
  bool descriptions_changed_ = false;
  bool data_references_changed_ = false;
  bool modified_ = false;
  bool is_open_for_edits_ = false;
  Reference reference_;
};

}  // namespace toolbox
