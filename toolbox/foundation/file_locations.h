// Files as data references name them: URLs and alias records, written for a path and turned back
// into the paths they may mean.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"

namespace toolbox::file_locations {

/// The folder of a path, links followed; empty when it cannot be followed.
std::string folder_of(const std::string& path);

/// Whether a file lies in a folder or below it. Both absolute with links followed.
bool is_within(const std::string& path, const std::string& folder);

/// The data of a `url ` reference to an absolute path, its terminator included: relative to
/// `folder` (absolute) for what lies in it or below, else a whole one.
std::string url_to(const std::string& path, const std::string& folder);

/// The data of an `alis` reference to an absolute path: a record of version 2 that old readers
/// find the name in and newer ones the path.
std::string alias_to(const std::string& path);

/// The absolute paths that the data of a reference may mean, the likeliest first; none for a type
/// or a scheme that names no file here. What is relative is looked for in `folder`; without a
/// folder (empty) it means nothing. Nothing is looked up.
std::vector<std::string> paths_of_url(std::string_view url, const std::string& folder);
std::vector<std::string> paths_of_alias(ByteView record, const std::string& folder);

}  // namespace toolbox::file_locations
