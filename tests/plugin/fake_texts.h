// The fake host's texts in the encodings that strings have.
#pragma once

#include <cstdint>
#include <string>

namespace fake_host {

/// The same text in another encoding; what is neither UTF-8 nor UTF-16 is taken for MacRoman.
std::string converted(const std::string& bytes, uint32_t from, uint32_t to);

}  // namespace fake_host
