// The built module in the real runtime over the real toolbox, as scripts meet it.
#pragma once

#include <Toolbox/Toolbox.h>

#include <string>

#include "runtime.h"

namespace krz::test {

/// The built module, as it is installed beside the libraries.
inline const std::string kModulePath = KRZ_BINARY_DIR "/lib/krz/krz-movie.so";

/// Loads the module and gives scripts the functions of the tests:
///   TestMovie(name As String) As String    the path of a movie of script_movies.h, written when
///                                          a runtime first asks, in a folder of its own
///   LiveReferences() As Integer            references of the toolbox that are in use
void prepare(Runtime& runtime, const std::string& module_path = kModulePath);

/// What the toolbox keeps for this process: every test leaves it as it was.
struct ToolboxCounts {
  uint32_t references = ToolboxLiveReferences();
  uint32_t handles = ToolboxLiveHandles();
  bool operator==(const ToolboxCounts&) const = default;
};

}  // namespace krz::test
