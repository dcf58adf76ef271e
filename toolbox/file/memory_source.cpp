#include "file/memory_source.h"

#include <cstring>

namespace toolbox {

Status MemorySource::read(uint64_t offset, std::span<uint8_t> bytes) const {
  if (offset > bytes_.size() || bytes.size() > bytes_.size() - offset) {
    return {eofErr, name_ + ": " + std::to_string(bytes.size()) + " bytes were wanted at byte " +
                        std::to_string(offset) + ", but there are only " +
                        std::to_string(bytes_.size()) + " in all"};
  }
  if (!bytes.empty()) std::memcpy(bytes.data(), bytes_.data() + offset, bytes.size());
  return {};
}

}  // namespace toolbox
