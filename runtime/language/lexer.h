// Cuts a script into tokens, one at a time.
#pragma once

#include "language/source.h"
#include "language/token.h"

namespace krz {

class Lexer {
 public:
  /// Begins at `start`; what only the head of a file may hold is looked for at 0 alone.
  explicit Lexer(DiagnosticList& diagnostics, SourceOffset start = 0);

  /// The next token; kEnd for ever at the end, or when so much was wrong that going on makes no
  /// sense. Bytes that belong to no token are reported and skipped.
  Token next();

  /// Where the next token is looked for.
  size_t position() const { return position_; }
  void return_to(size_t position) { position_ = position; }

  /// The text has ended behind an underscore that joins a next line to the last one.
  bool continues() const { return continues_; }

  /// What next() will answer.
  Token peek() const { return Lexer(*this).next(); }

 private:
  Token make(TokenKind kind, size_t length);
  Token word();
  Token sign(TokenKind alone, TokenKind assigning);
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
  size_t position_;
  bool continues_ = false;
};

}  // namespace krz
