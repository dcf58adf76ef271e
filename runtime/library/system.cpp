// What scripts see of the process: the clock, the environment and the standard streams.
#include <Toolbox/Toolbox.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "library/parts.h"
#include "object/exceptions.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

double microseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

// Sixtieths of a second since the machine started.
int32_t ticks() { return static_cast<int32_t>(static_cast<int64_t>(microseconds() * 60 / 1e6)); }

REALstring environment_variable(REALstring name) {
  const char* const value = std::getenv(string_utf8(name).c_str());
  return make_string(value ? value : "");
}

REALstring version() { return make_string(KRZ_VERSION); }

// A line of standard input, without its end.
REALstring input(REALstring prompt) {
  constexpr size_t kMaxLine = size_t{64} << 20;
  Runtime& runtime = Runtime::current();
  runtime.write_output(string_utf8(prompt));
  runtime.flush_output();
  std::string line;
  for (int c = std::getc(stdin); c != EOF && c != '\n'; c = std::getc(stdin)) {
    if (line.size() == kMaxLine) {
      raise_exception("OutOfMemoryException",
                      "a line of standard input is longer than 64 MiB; read it from a file");
      return nullptr;
    }
    line.push_back(static_cast<char>(c));
  }
  if (line.ends_with('\r')) line.pop_back();
  return make_string(line);
}

bool end_of_input() {
  const int next = std::getc(stdin);
  if (next != EOF) std::ungetc(next, stdin);
  return next == EOF;
}

void write_output(REALstring text) { Runtime::current().write_output(string_utf8(text)); }
void write_error(REALstring text) { Runtime::current().write_error(string_utf8(text)); }
void write_output_line(REALstring text) {
  Runtime::current().write_output(string_utf8(text) + "\n");
}
void write_error_line(REALstring text) { Runtime::current().write_error(string_utf8(text) + "\n"); }
void flush_output() { Runtime::current().flush_output(); }

// What keeps scripts from drawing and from knowing fonts; empty when nothing does.
REALstring drawing_problem() {
  return make_string(ToolboxCheckFrameworks() == noErr ? "" : ToolboxErrorDetail());
}

MethodEntry g_system_methods[] = {
    KRZ_SHARED(environment_variable, "EnvironmentVariable(name as string) as string"),
    KRZ_SHARED(version, "Version as string"),
    KRZ_SHARED(drawing_problem, "DrawingProblem as string"),
};

MethodEntry g_output_methods[] = {
    KRZ_SHARED(write_output, "Write(text as string)"),
    KRZ_SHARED(write_output_line, "WriteLine(text as string = \"\")"),
    KRZ_SHARED(flush_output, "Flush()"),
};

MethodEntry g_error_methods[] = {
    KRZ_SHARED(write_error, "Write(text as string)"),
    KRZ_SHARED(write_error_line, "WriteLine(text as string = \"\")"),
};

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(microseconds, "Microseconds as double"),
    KRZ_FUNCTION(ticks, "Ticks as integer"),
    KRZ_FUNCTION(input, "Input(prompt as string = \"\") as string"),
    KRZ_FUNCTION(end_of_input, "EndOfInput as boolean"),
};

REALclassDefinition g_system_class;
REALclassDefinition g_output_class;
REALclassDefinition g_error_class;

}  // namespace

void register_system(Registry& registry) {
  g_system_class = class_without_data("System");
  set_shared_methods(g_system_class, g_system_methods);
  registry.register_class(g_system_class);
  g_output_class = class_without_data("StdOut");
  set_shared_methods(g_output_class, g_output_methods);
  registry.register_class(g_output_class);
  g_error_class = class_without_data("StdErr");
  set_shared_methods(g_error_class, g_error_methods);
  registry.register_class(g_error_class);
  registry.register_functions(kFunctions);
}

}  // namespace krz
