#include "script_calls.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "language/script.h"
#include "runtime.h"

namespace bench {

namespace {

constexpr int kCalls = 2'000'000;

double seconds_of(const std::string& movie, const std::string& loop_body) {
  krz::RuntimeOptions options;
  options.arguments = {movie};
  krz::Runtime runtime(std::move(options));
  if (const std::string failure = runtime.load_module(krz::Runtime::default_module_path());
      !failure.empty()) {
    std::fprintf(stderr, "%s\n", failure.c_str());
    std::exit(1);
  }
  const std::string source =
      "Dim m As Movie = OpenMovie(Args(0))\n"
      "Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(1)\n"
      "Dim sum As Integer\n"
      "For i As Integer = 1 To " +
      std::to_string(kCalls) + "\n" + loop_body + "Next\n";
  std::vector<krz::Diagnostic> diagnostics;
  const auto script = krz::Script::compile(runtime, source, "bench", diagnostics);
  for (const krz::Diagnostic& one : diagnostics) std::fprintf(stderr, "%s", one.text().c_str());
  if (!script) std::exit(1);
  const auto begin = std::chrono::steady_clock::now();
  if (script->run() != 0) std::exit(1);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

double nanoseconds_per_getter(const std::string& movie) {
  const double with_call = seconds_of(movie, "sum = sum + t.Layer\n");
  const double without = seconds_of(movie, "sum = sum + i\n");
  return (with_call - without) * 1e9 / kCalls;
}

}  // namespace bench
