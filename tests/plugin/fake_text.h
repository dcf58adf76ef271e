// Text conversion for the fake host: enough of MacRoman to tell it from other encodings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fake_text {

/// The same text in another encoding; characters that it lacks become "?".
std::string convert(std::string_view bytes, uint32_t from, uint32_t to);

}  // namespace fake_text
