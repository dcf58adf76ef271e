#include "atoms/media_header.h"

#include <algorithm>

namespace toolbox {

std::string_view HandlerAtom::name() const {
  const std::string_view stored = raw_name;
  if (stored.empty()) return {};
  const auto length = static_cast<uint8_t>(stored[0]);
  const std::string_view behind = stored.substr(1);
  const size_t last = behind.find_last_not_of('\0');
  const size_t text_length = last == std::string_view::npos ? 0 : last + 1;
  if (length == behind.size() || (length > 0 && length == text_length)) {
    return behind.substr(0, length);
  }
  return stored.substr(0, std::min(stored.find('\0'), stored.size()));
}

void HandlerAtom::set_name(std::string_view name) {
  raw_name.clear();
  if (component_type == four_cc("mhlr") || component_type == four_cc("dhlr")) {
    name = name.substr(0, 255);
    raw_name += static_cast<char>(name.size());
    raw_name += name;
  } else {
    raw_name = name;
    raw_name += '\0';
  }
}

}  // namespace toolbox
