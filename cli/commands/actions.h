// The commands that are not scripts: running scripts, and looking at the runtime itself.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "command.h"

namespace cli {

int run_script(const Invocation& invocation);
int check_scripts(const Invocation& invocation);
int run_session(const Invocation& invocation);
int list_classes(const Invocation& invocation);
int make_demonstration(const Invocation& invocation);

/// Prints docs/classes.md. Fails, and says on standard error what is missing, unless each member
/// has its sentence and each sentence a member.
int print_class_reference();

/// What builds and packages call: krz.1, or the page of a noun; the completions of a shell; all of
/// them into DIR/man and DIR/completions.
int print_man_page(std::span<char*> words);
int print_completion(std::span<char*> words);
int write_manual(std::span<char*> words);

/// Runs a program in the host language with the module loaded; `file` is what its diagnostics call
/// it.
int run_program(std::string_view program, const std::string& file, const Invocation& invocation,
                std::vector<std::string> arguments);

}  // namespace cli
