// The parser's footing: tokens, names, and getting back on the rails after a mistake.
#include "language/parser.h"

namespace krz {

Parser::Parser(DiagnosticList& diagnostics, Arena& arena, NameTable& names)
    : diagnostics_(diagnostics), arena_(arena), names_(names), lexer_(diagnostics) {
  advance();
}

void Parser::advance() {
  previous_ = token_;
  token_ = lexer_.next();
}

bool Parser::accept(TokenKind kind) {
  if (token_.kind != kind) return false;
  advance();
  return true;
}

std::string_view Parser::text_of(const Token& token) const {
  return diagnostics_.source().slice(token.offset, token.end());
}

void Parser::fail(const Token& token, std::string message) {
  if (!line_failed_ && diagnostics_.size() == found_before_line_)
    diagnostics_.add(token.offset, std::move(message));
  line_failed_ = true;
}

std::string Parser::found() const {
  if (token_.kind == TokenKind::kEnd || token_.kind == TokenKind::kNewLine)
    return std::string(token_description(token_.kind));
  return "“" + std::string(text_of(token_).substr(0, 40)) + "”";
}

void Parser::unexpected(std::string_view wanted) {
  fail(token_, std::string(wanted) + " is expected here, not " + found());
}

bool Parser::expect(TokenKind kind, std::string_view where) {
  if (accept(kind)) return true;
  std::string wanted(token_description(kind));
  if (kind < TokenKind::kAnd && wanted.size() == 1) wanted = "“" + wanted + "”";
  if (!where.empty()) (wanted += ' ') += where;
  unexpected(wanted);
  return false;
}

bool Parser::at_line_end() const {
  return token_.kind == TokenKind::kNewLine || token_.kind == TokenKind::kEnd;
}

void Parser::skip_line() {
  while (!at_line_end()) advance();
  found_before_line_ = diagnostics_.size();
  accept(TokenKind::kNewLine);
  line_failed_ = false;
}

void Parser::end_statement() {
  if (!at_line_end()) unexpected("the end of the line");
  skip_line();
}

NameId Parser::expect_name(std::string_view what) {
  if (token_.kind == TokenKind::kName) {
    const NameId name = names_.intern(text_of(token_), token_.hash);
    advance();
    return name;
  }
  if (is_word(token_.kind)) {
    fail(token_, found() + " is a reserved word and cannot name " + std::string(what));
    advance();
  } else {
    unexpected(what);
  }
  return kNoName;
}

TypeName Parser::parse_type_name() {
  TypeName result;
  result.position = token_.offset;
  result.name = expect_name("a type");
  return result;
}

ScriptTree Parser::parse() {
  ScriptTree tree;
  Stmt** tail = &tree.body.first;
  Routine** routine_tail = &tree.routines;
  while (token_.kind != TokenKind::kEnd && !diagnostics_.full()) {
    if (token_.kind == TokenKind::kSub || token_.kind == TokenKind::kFunction) {
      parse_routine(tree, routine_tail);
    } else if (at_block_end()) {
      std::string word(text_of(token_));
      const Token start = token_;
      advance();
      if (start.kind == TokenKind::kEndWord && is_word(token_.kind))
        (word += ' ') += text_of(token_);
      fail(start, "“" + word + "” closes nothing that is open here");
      skip_line();
    } else {
      parse_statement(tail);
    }
  }
  return tree;
}

}  // namespace krz
