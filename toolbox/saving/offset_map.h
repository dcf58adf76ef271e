// Where media data that sample tables point to lies after a save.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

namespace toolbox {

/// Maps offsets in a movie's file, and offsets of pending data, to offsets in the file that is
/// written.
class OffsetMap {
 public:
  /// Offsets that a map cannot say anything of.
  static constexpr uint64_t kLost = std::numeric_limits<uint64_t>::max();

  /// Media data in other files, in tables made for a save: their offsets count from these. What is
  /// taken over lies in the new file, one behind the other; what is left stays where it is.
  static constexpr uint64_t kTakenBase = uint64_t{2} << 62;
  static constexpr uint64_t kLeftBase = uint64_t{3} << 62;

  /// Everything in the file stays where it is; pending data begins at `pending_offset`.
  static OffsetMap in_place(uint64_t pending_offset);

  /// Nothing is kept but what keep() says.
  OffsetMap() = default;

  /// Bytes [begin, end) of the old file stand at `new_begin` in the new one. REQUIRES: calls come
  /// in the order of the old file, without overlap.
  void keep(uint64_t begin, uint64_t end, uint64_t new_begin);
  void set_pending_offset(uint64_t offset) { pending_offset_ = offset; }

  /// Marked offsets count from then on: before, they lead nowhere as in the old file.
  void set_taken_offset(uint64_t offset) {
    taken_offset_ = offset;
    knows_marks_ = true;
  }

  /// True when the offsets of a file stay as they are.
  bool keeps_file() const { return keeps_file_; }

  /// The new place of an offset; kLost for one in a part that is not kept. Offsets behind the end
  /// of the old file, which lead nowhere, stay as they are.
  uint64_t at(uint64_t offset) const;

  /// No kept offset is mapped beyond this.
  uint64_t greatest() const { return greatest_; }

 private:
  struct Range {
    uint64_t begin;
    uint64_t end;
    uint64_t new_begin;
  };

  bool keeps_file_ = false;
  std::vector<Range> ranges_;
  uint64_t pending_offset_ = 0;
  bool knows_marks_ = false;
  uint64_t taken_offset_ = 0;
  uint64_t greatest_ = 0;
};

}  // namespace toolbox
