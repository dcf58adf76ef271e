#include "terminal.h"

#include <unistd.h>

#include <cstdlib>

namespace cli {

bool is_coloured(int descriptor) {
  if (isatty(descriptor) != 1) return false;
  const char* refused = std::getenv("NO_COLOR");
  if (refused && refused[0] != '\0') return false;
  const char* terminal = std::getenv("TERM");
  return terminal && std::string_view(terminal) != "dumb";
}

std::string heading(std::string_view text) {
  const std::string plain(text);
  return is_coloured(STDOUT_FILENO) ? "\x1b[1m" + plain + "\x1b[0m" : plain;
}

}  // namespace cli
