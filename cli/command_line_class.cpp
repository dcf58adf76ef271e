#include "command_line_class.h"

#include "object/string.h"
#include "registry/registry.h"
#include "runtime.h"
#include "terminal.h"

namespace cli {

namespace {

const Invocation* g_invocation = nullptr;

uint8_t has_option(REALstring name) { return g_invocation->has(krz::string_bytes(name)); }

REALstring option_value(REALstring name) {
  return krz::make_string(g_invocation->value(krz::string_bytes(name)));
}

REALstring heading_of(REALstring text) {
  return krz::make_string(heading(krz::string_bytes(text)));
}

void report_text(REALstring text) {
  // What was printed comes first, as it was written first.
  krz::Runtime::current().flush_output();
  report(krz::string_bytes(text));
}

MethodEntry kSharedMethods[] = {
    {reinterpret_cast<REALfunction>(has_option), nullptr, "Has(optionName as string) as boolean",
     0},
    {reinterpret_cast<REALfunction>(option_value), nullptr, "Value(optionName as string) as string",
     0},
    {reinterpret_cast<REALfunction>(heading_of), nullptr, "Heading(text as string) as string", 0},
    {reinterpret_cast<REALfunction>(report_text), nullptr, "Report(text as string)", 0},
};

REALclassDefinition g_class = {.version = kPluginInterfaceVersion,
                               .name = "CommandLine",
                               .shared_methods = kSharedMethods,
                               .shared_method_count = 4};

}  // namespace

void register_command_line(krz::Runtime& runtime, const Invocation& invocation) {
  g_invocation = &invocation;
  runtime.registry().register_class(g_class);
}

}  // namespace cli
