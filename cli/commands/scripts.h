// The built-in commands' programs, made from the scripts of this folder when krz is built.
#pragma once

namespace cli {

extern const char kInfoScript[];
extern const char kInfoJSONScript[];

}  // namespace cli
