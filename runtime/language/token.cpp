// The reserved words, in a table that the compiler lays out.
#include "language/token.h"

#include <array>

#include "language/names.h"

namespace krz {
namespace {

// In the order of TokenKind, from kAnd.
constexpr std::string_view kWords[] = {
    "And",    "As",       "ByRef", "ByVal",    "Case",   "Catch", "Const", "Continue", "Dim",
    "Do",     "DownTo",   "Each",  "Else",     "ElseIf", "End",   "Exit",  "False",    "Finally",
    "For",    "Function", "If",    "In",       "Is",     "IsA",   "Loop",  "Mod",      "New",
    "Next",   "Nil",      "Not",   "Optional", "Or",     "Print", "Raise", "ReDim",    "Rem",
    "Return", "Select",   "Step",  "Sub",      "Then",   "To",    "True",  "Try",      "Until",
    "Var",    "Wend",     "While", "Xor",
};
constexpr size_t kWordCount = std::size(kWords);
static_assert(kWordCount ==
              static_cast<size_t>(TokenKind::kXor) - static_cast<size_t>(TokenKind::kAnd) + 1);

constexpr std::string_view kSigns[] = {
    "the end of the script",
    "the end of the line",
    "a name",
    "a number",
    "a number",
    "a color",
    "a string",
    "(",
    ")",
    ",",
    ".",
    "=",
    "<>",
    "<",
    "<=",
    ">",
    ">=",
    "+",
    "-",
    "*",
    "/",
    "\\",
    "^",
    "&",
    ":",
    "+=",
    "-=",
    "*=",
    "/=",
    "&=",
};
static_assert(std::size(kSigns) == static_cast<size_t>(TokenKind::kAnd));

struct WordTable {
  static constexpr size_t kSize = 256;
  std::array<uint8_t, kSize> slots{};  // word number + 1

  constexpr WordTable() {
    for (size_t i = 0; i < kWordCount; ++i) {
      size_t slot = hash_name(kWords[i]) % kSize;
      while (slots[slot] != 0) slot = (slot + 1) % kSize;
      slots[slot] = static_cast<uint8_t>(i + 1);
    }
  }
};
constexpr WordTable kTable;

}  // namespace

TokenKind find_reserved_word(std::string_view text, uint32_t hash) {
  for (size_t slot = hash % WordTable::kSize; kTable.slots[slot] != 0;
       slot = (slot + 1) % WordTable::kSize) {
    const size_t word = kTable.slots[slot] - 1u;
    if (equal_names(kWords[word], text))
      return static_cast<TokenKind>(static_cast<size_t>(TokenKind::kAnd) + word);
  }
  return TokenKind::kName;
}

std::span<const std::string_view> reserved_words() { return kWords; }

std::string_view token_description(TokenKind kind) {
  const auto number = static_cast<size_t>(kind);
  if (kind < TokenKind::kAnd) return kSigns[number];
  return kWords[number - static_cast<size_t>(TokenKind::kAnd)];
}

}  // namespace krz
