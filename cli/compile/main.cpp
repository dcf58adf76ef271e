// Run when krz is built: compiles the built-in commands and writes their bytecode as a C++ source.
#include <cstdio>
#include <string>

#include "command_line_class.h"
#include "commands/scripts.h"
#include "language/script.h"
#include "runtime.h"

namespace cli {

// Declared by command.h for the class CommandLine, of which nothing is called here.
bool Invocation::has(std::string_view) const { return false; }
std::string_view Invocation::value(std::string_view) const { return {}; }
void report(std::string_view message) {
  std::fprintf(stderr, "%.*s\n", static_cast<int>(message.size()), message.data());
}

namespace {

/// Bytes as the characters of a string literal, some on each line.
std::string literal(std::string_view bytes) {
  constexpr size_t kBytesInALine = 64;
  std::string text = "\"";
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (i > 0 && i % kBytesInALine == 0) text += "\"\n\"";
    char escape[5];
    std::snprintf(escape, sizeof escape, "\\%03o", static_cast<unsigned char>(bytes[i]));
    text += escape;
  }
  return text + "\"";
}

/// The source; empty when a script does not compile, which has then been reported.
std::string compiled(krz::Runtime& runtime) {
  std::string constants;
  std::string rows;
  for (const NamedScript& one : scripts()) {
    std::vector<krz::Diagnostic> diagnostics;
    const auto script = krz::Script::compile(runtime, one.text, one.file, diagnostics);
    for (const krz::Diagnostic& diagnostic : diagnostics) report(diagnostic.text());
    if (!script) return {};
    const std::string bytes = script->bytecode();
    const std::string name = "k" + std::to_string(&one - scripts().data());
    constants += "constexpr char " + name + "[] =\n" + literal(bytes) + ";\n";
    rows += "    {" + std::to_string(bytes.size()) + ", " + name + "},  // " + one.file + "\n";
  }
  return "// Made from the scripts in cli/commands; edit those.\n#include "
         "\"commands/scripts.h\"\n\n"
         "namespace cli {\nnamespace {\n" +
         constants + "struct { size_t size; const char* bytes; } constexpr kBytecode[] = {\n" +
         rows +
         "};\n}  // namespace\n\n"
         "std::string_view bytecode_of(const char* script) {\n"
         "  for (size_t i = 0; i < scripts().size(); ++i) {\n"
         "    if (scripts()[i].text == script) return {kBytecode[i].bytes, kBytecode[i].size};\n"
         "  }\n  return {};\n}\n\n}  // namespace cli\n";
}

int compile_scripts(const char* output) {
  krz::Runtime runtime(krz::RuntimeOptions{});
  if (const std::string failure = runtime.load_module(krz::Runtime::default_module_path());
      !failure.empty()) {
    report(failure);
    return 1;
  }
  const Invocation invocation;
  register_command_line(runtime, invocation);
  const std::string source = compiled(runtime);
  if (source.empty()) return 1;
  std::FILE* const file = std::fopen(output, "w");
  if (!file) {
    std::perror(output);
    return 1;
  }
  const bool whole = std::fputs(source.c_str(), file) >= 0;
  if (std::fclose(file) == 0 && whole) return 0;
  std::perror(output);
  return 1;
}

}  // namespace

}  // namespace cli

int main(int argc, char** argv) {
  if (argc == 2) return cli::compile_scripts(argv[1]);
  std::fprintf(stderr, "usage: krz_compile OUTPUT\n");
  return 2;
}
