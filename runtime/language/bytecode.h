// A compiled script as bytes, so that the commands of krz need not be compiled whenever one runs.
//
// The bytes are meant for the libraries they were made with: they are read back by the same build,
// on the same kind of machine. Classes and methods are written by name and by declaration, and are
// looked up in the registry of the runtime that reads them.
#pragma once

#include <string>
#include <string_view>

#include "language/code.h"

namespace krz {

class Registry;

/// The program as bytes.
std::string write_bytecode(const Program& program);

/// Makes `program`, which must be empty, what the bytes say. It views them: they must outlive it.
/// False when they are no bytecode, or name a class that is not registered.
bool read_bytecode(std::string_view bytes, Registry& registry, Program& program);

}  // namespace krz
