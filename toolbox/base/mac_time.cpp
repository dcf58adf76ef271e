#include "base/mac_time.h"

#include <ctime>

namespace toolbox {

uint64_t current_mac_time() {
  return kMacTimeOfUnixZero + static_cast<uint64_t>(std::time(nullptr));
}

}  // namespace toolbox
