// Where the framework bundles are, and one function out of one of them.
#pragma once

#include <optional>
#include <string>

#include "base/status.h"

namespace toolbox {

/// The folder of the framework bundles: the one that the environment variable KRZ_FRAMEWORKS names,
/// else `krz/Frameworks` beside this library. Nothing when there is no such folder.
std::optional<std::string> frameworks_folder();

/// Whether everything that draws or knows fonts can be had. Loads the frameworks. Fails: fnfErr;
/// the message names the file or folder and says what to do.
Status check_frameworks();

/// A function of a framework, which is loaded for it; null when either is missing.
void* find_framework_function(const char* framework, const char* name);

}  // namespace toolbox
