// krz run, and every built-in command that is a script: one runtime, the module loaded, one
// program.
#include <signal.h>

#include <cerrno>
#include <cstring>

#include "command_line_class.h"
#include "commands/actions.h"
#include "commands/script_file.h"
#include "commands/scripts.h"
#include "language/script.h"
#include "runtime.h"

namespace cli {

namespace {

/// A built-in command is compiled already. It is compiled again when the module that is there lacks
/// a class that it names, which then gives the messages.
std::unique_ptr<krz::Script> make_script(krz::Runtime& runtime, std::string_view program,
                                         const std::string& file) {
  if (const std::string_view bytecode = bytecode_of(program.data()); !bytecode.empty()) {
    if (auto script = krz::Script::load(runtime, bytecode, program, file)) return script;
  }
  std::vector<krz::Diagnostic> diagnostics;
  auto script = krz::Script::compile(runtime, program, file, diagnostics);
  for (const krz::Diagnostic& diagnostic : diagnostics) runtime.write_error(diagnostic.text());
  return script;
}

/// Ctrl-C ends the script, not the process: its objects still die in order.
void end_script_on_interrupt() {
  struct sigaction action {};
  action.sa_handler = [](int) { krz::Script::interrupt(); };
  sigaction(SIGINT, &action, nullptr);
}

}  // namespace

int run_program(std::string_view program, const std::string& file, const Invocation& invocation,
                std::vector<std::string> arguments) {
  krz::RuntimeOptions options;
  options.arguments = std::move(arguments);
  options.allow_external_files = invocation.has("allow-external");
  // The process ends with this program, and takes the runtime with it faster than it could be
  // taken apart. Scripts do not notice: their objects die with the script.
  static krz::Runtime& runtime = *new krz::Runtime(std::move(options));
  if (const std::string failure = runtime.load_module(krz::Runtime::default_module_path());
      !failure.empty()) {
    report(failure);
    return kFailed;
  }
  register_command_line(runtime, invocation);

  const auto script = make_script(runtime, program, file);
  if (!script) return kFailed;
  end_script_on_interrupt();
  const int status = script->run();
  runtime.flush_output();
  return status;
}

int run_script(const Invocation& invocation) {
  const std::string& path = invocation.arguments.front();
  std::string text;
  if (!read_script(path, text)) {
    report(path + ": " + std::strerror(errno));
    return kUnreadableInput;
  }
  return run_program(text, script_name(path), invocation,
                     {invocation.arguments.begin() + 1, invocation.arguments.end()});
}

}  // namespace cli
