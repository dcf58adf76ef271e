// What the language itself costs: loops, calls of C functions, and the way to the end after Ctrl-C.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "process.h"

namespace bench {

/// Whole processes that add and compare whole numbers ten million times: krz, and python3 on the
/// same loop. Writes the two scripts into the folder.
std::vector<Command> counting_loops(const std::string& krz, const std::filesystem::path& folder);

/// Nanoseconds of one call of a C function that takes and returns a number.
struct CallCost {
  double from_script = 0;  // through its declaration, the loop around it taken off
  double from_c = 0;       // through a pointer
};
CallCost cost_of_a_call();

/// The longest time in milliseconds from SIGINT to the end of a script that loops for ever, over
/// several kinds of loop; below 0 when one did not end with status 130.
double interrupt_ms(const std::string& krz, const std::filesystem::path& folder);

}  // namespace bench
