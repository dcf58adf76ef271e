// Any bytes as a script: lexer, parser, checker and compiler. The script never runs. What is
// refused is refused with places that lie in the source; nothing is left behind.
#include <algorithm>
#include <cstdlib>

#include "language/script.h"
#include "object/object.h"
#include "object/string.h"
#include "runtime.h"

namespace krz {
namespace {

constexpr size_t kMostDiagnostics = 20;

void require(bool condition) {
  if (!condition) std::abort();
}

void check_diagnostics(const std::vector<Diagnostic>& diagnostics, std::string_view source) {
  // A line ends with a line feed, a carriage return or both.
  const auto is_end = [](char c) { return c == '\n' || c == '\r'; };
  const auto lines = 1 + std::count_if(source.begin(), source.end(), is_end);
  require(diagnostics.size() <= kMostDiagnostics);
  for (const Diagnostic& diagnostic : diagnostics) {
    require(!diagnostic.message.empty());
    require(diagnostic.line >= 1 && diagnostic.line <= lines);
    require(diagnostic.column >= 1);
    require(static_cast<size_t>(diagnostic.column) <= source.size() + 1);
    require(diagnostic.text().ends_with('\n'));
  }
}

void compile(std::string_view source) {
  static Runtime* const runtime = new Runtime({});  // for the life of the process
  const int64_t strings = live_strings();
  const int64_t objects = live_objects();
  std::vector<Diagnostic> diagnostics;
  const bool compiled = Script::compile(*runtime, source, "fuzz.bas", diagnostics) != nullptr;
  require(compiled == diagnostics.empty());
  check_diagnostics(diagnostics, source);
  require(live_strings() == strings && live_objects() == objects);
}

}  // namespace
}  // namespace krz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  krz::compile({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
