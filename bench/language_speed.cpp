#include "language_speed.h"

#include <fcntl.h>
#include <krz/abi.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "language/script.h"
#include "registry/registry.h"
#include "runtime.h"

extern char** environ;

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kCalls = 5'000'000;

int32_t successor(int32_t number) { return number + 1; }

MethodEntry kProbeMethods[] = {
    {reinterpret_cast<REALfunction>(successor), nullptr, "After(number as integer) as integer", 0},
};
REALclassDefinition g_probe = {.version = kPluginInterfaceVersion,
                               .name = "Probe",
                               .shared_methods = kProbeMethods,
                               .shared_method_count = 1};

double nanoseconds_since(Clock::time_point begin, int rounds) {
  return std::chrono::duration<double, std::nano>(Clock::now() - begin).count() / rounds;
}

/// Nanoseconds of one round of a loop in a script.
double round_in_script(krz::Runtime& runtime, const std::string& body) {
  const std::string source = "Dim n As Integer\nFor i As Integer = 1 To " + std::to_string(kCalls) +
                             "\n" + body + "\nNext\n";
  std::vector<krz::Diagnostic> diagnostics;
  const auto script = krz::Script::compile(runtime, source, "bench", diagnostics);
  for (const krz::Diagnostic& one : diagnostics) std::fprintf(stderr, "%s", one.text().c_str());
  if (!script) std::exit(1);
  const auto begin = Clock::now();
  if (script->run() != 0) std::exit(1);
  return nanoseconds_since(begin, kCalls);
}

std::string write_script(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path) << text;
  return path.string();
}

double interrupt_once(const std::string& krz, const std::string& script) {
  const char* const words[] = {krz.c_str(), "run", script.c_str(), nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, krz.c_str(), nullptr, nullptr, const_cast<char* const*>(words),
                  environ) != 0)
    return -1;
  usleep(200'000);
  const auto begin = Clock::now();
  kill(child, SIGINT);
  int status = 0;
  waitpid(child, &status, 0);
  const double ms = nanoseconds_since(begin, 1) / 1e6;
  return WIFEXITED(status) && WEXITSTATUS(status) == 130 ? ms : -1;
}

}  // namespace

std::vector<Command> counting_loops(const std::string& krz, const std::filesystem::path& folder) {
  const std::string basic = write_script(folder / "count.bas",
                                         "Dim n As Integer, hits As Integer\n"
                                         "While n < 10000000\n"
                                         "  n = n + 1\n"
                                         "  If n > 5000000 Then hits = hits + 1\n"
                                         "Wend\n"
                                         "Print hits\n");
  const std::string python = write_script(folder / "count.py",
                                          "def count():\n"
                                          "    n = hits = 0\n"
                                          "    while n < 10000000:\n"
                                          "        n = n + 1\n"
                                          "        if n > 5000000:\n"
                                          "            hits = hits + 1\n"
                                          "    print(hits)\n"
                                          "count()\n");
  return {{"krz run, ten million rounds", {krz, "run", basic}},
          {"python3, ten million rounds", {"python3", python}}};
}

CallCost cost_of_a_call() {
  krz::Runtime runtime(krz::RuntimeOptions{});
  runtime.registry().register_class(g_probe);
  CallCost cost;
  // The best of a few: what disturbs only ever adds.
  cost.from_script = cost.from_c = 1e9;
  for (int attempt = 0; attempt < 3; ++attempt) {
    const double with_call = round_in_script(runtime, "n = Probe.After(n)");
    const double without = round_in_script(runtime, "n = n + i");
    cost.from_script = std::min(cost.from_script, with_call - without);

    int32_t (*volatile function)(int32_t) = successor;
    int32_t number = 0;
    const auto begin = Clock::now();
    for (int i = 0; i < kCalls; ++i) number = function(number);
    cost.from_c = std::min(cost.from_c, nanoseconds_since(begin, kCalls));
    if (number != kCalls) std::exit(1);
  }
  return cost;
}

double interrupt_ms(const std::string& krz, const std::filesystem::path& folder) {
  const char* const loops[] = {
      "While True : Wend\n",
      "Do\nLoop\n",
      "Dim n As Integer\nFor i As Integer = 1 To 2 Step 0\nn = n + i\nNext\n",
      "Sub Inner()\nWhile True\nWend\nEnd Sub\nSub Outer()\nInner\nEnd Sub\nOuter\n",
      "Function F(n As Integer) As Integer\nIf n = 0 Then Return 0\nReturn F(n - 1)\nEnd Function\n"
      "While True\nTry\nDim n As Integer = F(1000)\nFinally\nEnd Try\nWend\n",
  };
  double longest = 0;
  for (const char* const loop : loops) {
    const double ms = interrupt_once(krz, write_script(folder / "endless.bas", loop));
    if (ms < 0) return ms;
    longest = std::max(longest, ms);
  }
  return longest;
}

}  // namespace bench
