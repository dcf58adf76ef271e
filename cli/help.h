// What krz says about itself.
#pragma once

#include "command.h"

namespace cli {

/// The whole of krz on one screen.
void print_help();

/// What somebody types first who typed nothing but krz.
void print_first_steps();

/// One command: its options and worked examples.
void print_command_help(const Command& command);

/// The verbs of a noun, each with its examples.
void print_noun_help(const Noun& noun);

/// krz, the module and the toolbox that it uses, with their versions.
int print_version();

}  // namespace cli
