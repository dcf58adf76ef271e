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
#include "movie/sample_table.h"

namespace toolbox {

class Track;

class Media {
 public:
  /// Reads the headers of an `mdia` atom. Without `hdlr` the media type is 0, without `mdhd` the
  /// time scale is 600. Fails: as Movie::load.
  static Result<std::unique_ptr<Media>> load(Track& track, const AtomTree& tree, AtomIndex mdia);

  Media(const Media&) = delete;
  Media& operator=(const Media&) = delete;

  Track& track() const { return *track_; }
  const MediaHeaderAtom& header() const { return header_; }
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

  Token token() { return reference_.token(Kind::kMedia, this); }

  void check_invariants() const;

 private:
  Media(Track& track, const AtomTree& tree, AtomIndex atom)
      : track_(&track), tree_(&tree), atom_(atom), handler_(*this) {}

  Track* track_;
  const AtomTree* tree_;
  AtomIndex atom_;
  MediaHeaderAtom header_;
  HandlerAtom handler_atom_;
  MediaHandler handler_;
  mutable std::unique_ptr<SampleTable> samples_;
  mutable std::optional<std::vector<Bytes>> descriptions_;
  mutable std::optional<std::vector<Bytes>> data_references_;
  Reference reference_;
};

}  // namespace toolbox
