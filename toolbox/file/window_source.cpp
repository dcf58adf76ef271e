#include "file/window_source.h"

#include <algorithm>

namespace toolbox {

Status WindowSource::read(uint64_t offset, std::span<uint8_t> bytes) const {
  if (pinned_.holds(offset, bytes.size())) {
    pinned_.copy(offset, bytes);
    return {};
  }
  const bool reaches_beyond = offset > size() || bytes.size() > size() - offset;
  if (bytes.size() > kSmallestWindow || reaches_beyond) return source_->read(offset, bytes);
  if (!window_.holds(offset, bytes.size())) TRY(move_window(offset, bytes.size()));
  window_.copy(offset, bytes);
  return {};
}

Status WindowSource::pin(uint64_t offset, uint64_t size) {
  Window fresh{offset, Bytes(size)};
  TRY(source_->read(offset, fresh.bytes));
  pinned_ = std::move(fresh);
  return {};
}

// A walk that goes forward in small steps gets a longer window each time; one that jumps over large
// tables reads little.
Status WindowSource::move_window(uint64_t offset, uint64_t size) const {
  const uint64_t window_end = window_.offset + window_.bytes.size();
  const bool steps_forward =
      !window_.bytes.empty() && offset >= window_.offset && offset < window_end + reach_;
  reach_ = steps_forward ? std::min(reach_ * 2, kLargestWindow) : kSmallestWindow;
  window_.offset = offset;
  window_.bytes.resize(std::min(std::max(reach_, size), this->size() - offset));
  Status status = source_->read(offset, window_.bytes);
  if (!status.ok()) window_.bytes.clear();
  return status;
}

}  // namespace toolbox
