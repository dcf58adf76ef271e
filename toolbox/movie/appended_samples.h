// The sample tables of a media while samples are added to it.
#pragma once

#include <memory>

#include "movie/growing_tables.h"

namespace toolbox {

class Media;

/// The samples that a media had, copied once, and those added behind them, in chunks of about one
/// second or 1 MiB.
class AppendedSamples {
 public:
  /// Copies the tables of the media. Sound that counted frames of a stated size of 1 byte gets the
  /// true size of a frame. Fails: as Media::samples() and Media::descriptions(), memFullErr,
  /// featureUnsupported for such sound whose frames have no size of their own.
  static Result<std::shared_ptr<AppendedSamples>> make(const Media& media);

  AppendedSamples(const AppendedSamples&) = delete;
  AppendedSamples& operator=(const AppendedSamples&) = delete;

  /// As Media::append_samples.
  Status append(const EqualSamples& samples, uint64_t offset, uint32_t description);

  /// Whether so many samples in so many pieces can be appended. Fails: memFullErr.
  Status check_room(uint64_t samples, uint64_t pieces) const;

  /// The tables up to here, whose views borrow this object; they stay as they are when more is
  /// appended.
  Result<SampleTables> tables();

  /// Sum of all sample durations, media ticks.
  int64_t duration() const { return growing_.decode_end(); }

 private:
  AppendedSamples(uint32_t time_scale, std::string name)
      : time_scale_(time_scale), name_(std::move(name)) {}

  bool goes_on(uint64_t offset, uint32_t description) const;
  uint32_t room_in_chunk(const EqualSamples& samples) const;

  TableBudget budget_ = TableBudget::for_edits();
  GrowingTables growing_{budget_};
  uint32_t time_scale_;
  std::string name_;
  uint32_t chunk_description_ = 0;
  uint64_t chunk_bytes_ = 0;
  uint64_t chunk_ticks_ = 0;
  uint64_t chunk_end_ = 0;  // where the next sample would lie
};

}  // namespace toolbox
