// The words and signs a script is made of.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "language/source.h"

namespace krz {

enum class TokenKind : uint8_t {
  kEnd,
  kNewLine,
  kName,
  kInteger,  // digits, &h, &o, &b
  kReal,     // with a point or an exponent
  kColor,    // &c
  kString,   // with its quotes
  kLeftParen,
  kRightParen,
  kComma,
  kDot,
  kEqual,
  kNotEqual,
  kLess,
  kLessEqual,
  kGreater,
  kGreaterEqual,
  kPlus,
  kMinus,
  kStar,
  kSlash,
  kBackslash,
  kCaret,
  kAmpersand,
  kColon,
  kPlusEqual,
  kMinusEqual,
  kStarEqual,
  kSlashEqual,
  kAmpersandEqual,
  // Reserved words. They stay usable as member names, after a dot.
  kAnd,
  kAs,
  kByRef,
  kByVal,
  kCase,
  kCatch,
  kConst,
  kContinue,
  kDim,
  kDo,
  kDownTo,
  kEach,
  kElse,
  kElseIf,
  kEndWord,
  kExit,
  kFalse,
  kFinally,
  kFor,
  kFunction,
  kIf,
  kIn,
  kIs,
  kIsA,
  kLoop,
  kMod,
  kNew,
  kNext,
  kNil,
  kNot,
  kOptional,
  kOr,
  kPrint,
  kRaise,
  kReDim,
  kRem,
  kReturn,
  kSelect,
  kStep,
  kSub,
  kThen,
  kTo,
  kTrue,
  kTry,
  kUntil,
  kVar,
  kWend,
  kWhile,
  kXor,
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  SourceOffset offset = 0;
  uint32_t length = 0;
  uint32_t hash = 0;  // names and reserved words: of the text

  SourceOffset end() const { return offset + length; }
};

inline bool is_word(TokenKind kind) { return kind == TokenKind::kName || kind >= TokenKind::kAnd; }

/// The reserved word of that text, kName when it is none.
TokenKind find_reserved_word(std::string_view text, uint32_t hash);

/// All of them, as they are usually written.
std::span<const std::string_view> reserved_words();

/// How a message calls a token of this kind: "a name", "“Then”".
std::string_view token_description(TokenKind kind);

}  // namespace krz
