// krz check: what is wrong with scripts, without running them.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>

#include "command_line_class.h"
#include "commands/actions.h"
#include "commands/script_file.h"
#include "language/script.h"
#include "runtime.h"

namespace cli {

namespace {

nlohmann::ordered_json as_json(const krz::Diagnostic& diagnostic) {
  return {{"file", diagnostic.file},
          {"line", diagnostic.line},
          {"column", diagnostic.column},
          {"message", diagnostic.message}};
}

}  // namespace

int check_scripts(const Invocation& invocation) {
  krz::Runtime runtime(krz::RuntimeOptions{});
  if (const std::string failure = runtime.load_module(krz::Runtime::default_module_path());
      !failure.empty()) {
    report(failure);
    return kFailed;
  }
  register_command_line(runtime, invocation);

  int status = kDone;
  auto document = nlohmann::ordered_json::array();
  for (const std::string& path : invocation.arguments) {
    std::string text;
    if (!read_script(path, text)) {
      report(path + ": " + std::strerror(errno));
      status = kUnreadableInput;
      continue;
    }
    std::vector<krz::Diagnostic> diagnostics;
    krz::Script::compile(runtime, text, script_name(path), diagnostics);
    if (!diagnostics.empty() && status == kDone) status = kFailed;
    for (const krz::Diagnostic& diagnostic : diagnostics) {
      if (invocation.has("json")) {
        document.push_back(as_json(diagnostic));
      } else {
        runtime.write_error(diagnostic.text());
      }
    }
  }
  // A script, and what a message shows of it, need not be UTF-8; JSON must be.
  if (invocation.has("json"))
    std::printf("%s\n",
                document.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
  return status;
}

}  // namespace cli
