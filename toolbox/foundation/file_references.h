// File records of the classic file system: small numbers that stand for paths of any length.
#pragma once

#include <Carbon/Carbon.h>

#include <string>

#include "base/status.h"

namespace toolbox::file_references {

/// The absolute form of `path` (UTF-8): the working directory in front of a relative one; nothing
/// is resolved. Fails: bdNamErr for an empty path, ioErr without a working directory.
Result<std::string> absolute_path(const std::string& path);

/// Records for an absolute path; equal paths give equal records, for as long as the process lives.
FSSpec spec_of(const std::string& path);
FSRef ref_of(const std::string& path);

/// The path behind a record, valid as long as the process; null for a record that was not made
/// here.
const char* path_of(const FSSpec& spec);
const char* path_of(const FSRef& ref);

}  // namespace toolbox::file_references
