// Cuts a script into tokens, one at a time.
#pragma once

#include "language/source.h"
#include "language/token.h"

namespace krz {

class Lexer {
 public:
  explicit Lexer(DiagnosticList& diagnostics);

  /// The next token; kEnd for ever at the end, or when so much was wrong that going on makes no
  /// sense. Bytes that belong to no token are reported and skipped.
  Token next();

  /// What next() will answer.
  Token peek() const { return Lexer(*this).next(); }

 private:
  Token make(TokenKind kind, size_t length);
  Token word();
  Token number();
  Token string();
  bool based_number(Token& token);
  void skip_blanks();
  bool skip_continuation();
  void skip_comment();
  void complain_about_character();
  char at(size_t position) const { return position < text_.size() ? text_[position] : '\0'; }

  DiagnosticList& diagnostics_;
  std::string_view text_;
  size_t position_ = 0;
};

}  // namespace krz
