// Tokens out of bytes. Every byte sequence is accepted: what means nothing is reported and stepped
// over.
#include "language/lexer.h"

#include <algorithm>

#include "language/includes.h"
#include "language/names.h"

namespace krz {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return (fold_ascii(c) >= 'a' && fold_ascii(c) <= 'z') || c == '_'; }
bool is_name_part(char c) { return is_letter(c) || is_digit(c); }

struct Range {
  char32_t first;
  char32_t last;
};

// Letters of the world's scripts beyond ASCII, and the marks that combine with them; not signs and
// punctuation.
constexpr Range kLetters[] = {
    {0xAA, 0xAA},       {0xB5, 0xB5},       {0xBA, 0xBA},     {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x37D},      {0x37F, 0x1FFF},    {0x2C00, 0x2FEF}, {0x3005, 0x3007}, {0x3021, 0xD7FF},
    {0xF900, 0xFDCF},   {0xFE70, 0xFEFC},   {0xFF21, 0xFF3A}, {0xFF41, 0xFF5A}, {0xFF66, 0xFFDC},
    {0x10000, 0x1EFFF}, {0x20000, 0x3FFFF},
};

/// Bytes of the letter beyond ASCII that the text begins with; 0 for none.
size_t wide_letter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.empty() ? 0 : text[0]);
  if (first < 0xC2 || first > 0xF4) return 0;
  const size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  char32_t letter = first & (0xFFu >> (length + 1));
  for (size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return 0;
    letter = letter << 6 | (next & 0x3F);
  }
  for (const Range& range : kLetters) {
    if (letter >= range.first && letter <= range.last) return length;
  }
  return 0;
}
bool is_line_end(char c) { return c == '\n' || c == '\r'; }

int digit_value(char c) {
  if (is_digit(c)) return c - '0';
  const char folded = fold_ascii(c);
  return folded >= 'a' && folded <= 'f' ? folded - 'a' + 10 : 99;
}

}  // namespace

Lexer::Lexer(DiagnosticList& diagnostics, SourceOffset start)
    : diagnostics_(diagnostics), text_(diagnostics.source().text()), position_(start) {
  if (start > 0) return;
  if (text_.starts_with("\xEF\xBB\xBF")) position_ = 3;
  // A first line "#!/usr/bin/env …" names the program that runs the script.
  if (text_.substr(position_).starts_with("#!")) skip_comment();
}

Token Lexer::make(TokenKind kind, size_t length) {
  const Token token{kind, static_cast<SourceOffset>(position_), static_cast<uint32_t>(length), 0};
  position_ += length;
  return token;
}

void Lexer::skip_comment() {
  while (position_ < text_.size() && !is_line_end(text_[position_])) ++position_;
}

/// A lone underscore, followed by nothing but blanks and a comment, joins the next line to this
/// one.
bool Lexer::skip_continuation() {
  if (at(position_) != '_' || is_name_part(at(position_ + 1))) return false;
  size_t end = position_ + 1;
  while (at(end) == ' ' || at(end) == '\t') ++end;
  if (at(end) == '\'' || (at(end) == '/' && at(end + 1) == '/')) {
    while (end < text_.size() && !is_line_end(text_[end])) ++end;
  }
  if (end < text_.size() && !is_line_end(text_[end])) return false;
  if (at(end) == '\r' && at(end + 1) == '\n') ++end;
  position_ = end < text_.size() ? end + 1 : end;
  continues_ = position_ >= text_.size();
  return true;
}

void Lexer::skip_blanks() {
  for (;;) {
    const char c = at(position_);
    if (position_ < text_.size() && (c == ' ' || c == '\t')) {
      ++position_;
    } else if (c == '\'' || (c == '/' && at(position_ + 1) == '/')) {
      skip_comment();
    } else if (!skip_continuation()) {
      return;
    }
  }
}

Token Lexer::next() {
  for (;;) {
    skip_blanks();
    if (position_ >= text_.size() || diagnostics_.full()) return make(TokenKind::kEnd, 0);
    const char c = text_[position_];
    if (is_letter(c) || wide_letter(text_.substr(position_)) > 0) {
      const Token token = word();
      if (token.kind != TokenKind::kRem) return token;
      skip_comment();
      continue;
    }
    if (is_digit(c) || (c == '.' && is_digit(at(position_ + 1)))) return number();
    const char following = at(position_ + 1);
    switch (c) {
      case '\r':
        return make(TokenKind::kNewLine, following == '\n' ? 2 : 1);
      case '\n':
        return make(TokenKind::kNewLine, 1);
      case '"':
        return string();
      case '(':
        return make(TokenKind::kLeftParen, 1);
      case ')':
        return make(TokenKind::kRightParen, 1);
      case ',':
        return make(TokenKind::kComma, 1);
      case '.':
        return make(TokenKind::kDot, 1);
      case '=':
        return make(TokenKind::kEqual, 1);
      case ':':
        return make(TokenKind::kColon, 1);
      case '+':
        return sign(TokenKind::kPlus, TokenKind::kPlusEqual);
      case '-':
        return sign(TokenKind::kMinus, TokenKind::kMinusEqual);
      case '*':
        return sign(TokenKind::kStar, TokenKind::kStarEqual);
      case '/':
        return sign(TokenKind::kSlash, TokenKind::kSlashEqual);
      case '\\':
        return make(TokenKind::kBackslash, 1);
      case '^':
        return make(TokenKind::kCaret, 1);
      case '<':
        if (following == '>') return make(TokenKind::kNotEqual, 2);
        if (following == '=') return make(TokenKind::kLessEqual, 2);
        return make(TokenKind::kLess, 1);
      case '>':
        if (following == '=') return make(TokenKind::kGreaterEqual, 2);
        return make(TokenKind::kGreater, 1);
      case '&': {
        Token token;
        if (based_number(token)) return token;
        return sign(TokenKind::kAmpersand, TokenKind::kAmpersandEqual);
      }
      case '#':
        // What the file holds stands behind this line.
        if (is_include_line(text_, position_)) {
          skip_comment();
          continue;
        }
        [[fallthrough]];
      default:
        complain_about_character();
    }
  }
}

/// A sign by itself, or with "=" behind it.
Token Lexer::sign(TokenKind alone, TokenKind assigning) {
  if (at(position_ + 1) == '=') return make(assigning, 2);
  return make(alone, 1);
}

Token Lexer::word() {
  size_t end = position_;
  for (;;) {
    const size_t length =
        is_name_part(at(end)) ? 1 : wide_letter(text_.substr(std::min(end, text_.size())));
    if (length == 0) break;
    end += length;
  }
  const std::string_view text = text_.substr(position_, end - position_);
  const uint32_t hash = hash_name(text);
  Token token = make(find_reserved_word(text, hash), text.size());
  token.hash = hash;
  return token;
}

Token Lexer::number() {
  size_t end = position_;
  while (is_digit(at(end))) ++end;
  bool real = false;
  if (at(end) == '.' && is_digit(at(end + 1))) {
    real = true;
    for (++end; is_digit(at(end));) ++end;
  }
  if (fold_ascii(at(end)) == 'e') {
    const size_t digits = at(end + 1) == '+' || at(end + 1) == '-' ? end + 2 : end + 1;
    if (is_digit(at(digits))) {
      real = true;
      for (end = digits; is_digit(at(end));) ++end;
    }
  }
  if (is_letter(at(end))) {
    diagnostics_.add(static_cast<SourceOffset>(end),
                     "a number and a name need a blank between them");
    while (is_name_part(at(end))) ++end;
  }
  return make(real ? TokenKind::kReal : TokenKind::kInteger, end - position_);
}

/// &h, &o, &b and &c with their digits. Without a digit, or with a letter behind the digits, the
/// sign is the operator.
bool Lexer::based_number(Token& token) {
  int base = 0;
  TokenKind kind = TokenKind::kInteger;
  switch (fold_ascii(at(position_ + 1))) {
    case 'h':
      base = 16;
      break;
    case 'o':
      base = 8;
      break;
    case 'b':
      base = 2;
      break;
    case 'c':
      base = 16;
      kind = TokenKind::kColor;
      break;
    default:
      return false;
  }
  size_t end = position_ + 2;
  while (digit_value(at(end)) < base) ++end;
  if (end == position_ + 2 || is_name_part(at(end))) return false;
  token = make(kind, end - position_);
  return true;
}

Token Lexer::string() {
  size_t end = position_ + 1;
  for (;;) {
    if (end >= text_.size() || is_line_end(text_[end])) {
      diagnostics_.add(static_cast<SourceOffset>(position_), "this string has no closing quote");
      return make(TokenKind::kString, end - position_);
    }
    if (text_[end] != '"') {
      ++end;
    } else if (at(end + 1) == '"') {
      end += 2;
    } else {
      return make(TokenKind::kString, end + 1 - position_);
    }
  }
}

void Lexer::complain_about_character() {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  const size_t start = position_++;
  const auto byte = static_cast<unsigned char>(text_[start]);
  while (byte >= 0x80 && (static_cast<unsigned char>(at(position_)) & 0xC0) == 0x80 &&
         position_ - start < 4)
    ++position_;
  const std::string_view shown = text_.substr(start, position_ - start);
  std::string message;
  if (shown == "\xE2\x80\x9C" || shown == "\xE2\x80\x9D" || shown == "\xE2\x80\x9E") {
    message = "strings stand in straight quotes (\")";
  } else if (byte > 0x20 && byte != 0x7F && (byte < 0x80 || shown.size() > 1)) {
    message = "the character " + std::string(shown) + " has no meaning here";
  } else {
    message =
        std::string("a byte &h") + kDigits[byte >> 4] + kDigits[byte & 15] + " has no meaning here";
  }
  diagnostics_.add(static_cast<SourceOffset>(start), std::move(message));
}

}  // namespace krz
