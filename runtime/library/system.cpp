// What scripts see of the process: the clock and the standard streams.
#include <ctime>

#include "library/parts.h"
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

void write_output(REALstring text) { Runtime::current().write_output(string_utf8(text)); }
void write_error(REALstring text) { Runtime::current().write_error(string_utf8(text)); }
void write_output_line(REALstring text) {
  Runtime::current().write_output(string_utf8(text) + "\n");
}
void write_error_line(REALstring text) { Runtime::current().write_error(string_utf8(text) + "\n"); }
void flush_output() { Runtime::current().flush_output(); }

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
};

REALclassDefinition g_output_class;
REALclassDefinition g_error_class;

}  // namespace

void register_system(Registry& registry) {
  g_output_class = class_without_data("StdOut");
  set_shared_methods(g_output_class, g_output_methods);
  registry.register_class(g_output_class);
  g_error_class = class_without_data("StdErr");
  set_shared_methods(g_error_class, g_error_methods);
  registry.register_class(g_error_class);
  registry.register_functions(kFunctions);
}

}  // namespace krz
