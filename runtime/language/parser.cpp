// The parser's footing: tokens, names, and getting back on the rails after a mistake.
#include "language/parser.h"

namespace krz {

Parser::Parser(DiagnosticList& diagnostics, Arena& arena, NameTable& names, SourceOffset start)
    : diagnostics_(diagnostics), arena_(arena), names_(names), lexer_(diagnostics, start) {
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
  ++failures_;
}

std::string Parser::found() const {
  if (token_.kind == TokenKind::kEnd || token_.kind == TokenKind::kNewLine)
    return std::string(token_description(token_.kind));
  return "“" + shown_text(text_of(token_), 40) + "”";
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
  return token_.kind == TokenKind::kNewLine || token_.kind == TokenKind::kEnd ||
         token_.kind == TokenKind::kColon;
}

void Parser::skip_line() {
  while (token_.kind != TokenKind::kNewLine && token_.kind != TokenKind::kEnd) advance();
  found_before_line_ = diagnostics_.size();
  accept(TokenKind::kNewLine);
  line_failed_ = false;
}

void Parser::end_statement() {
  if (!at_line_end()) unexpected("the end of the line");
  if (!line_failed_ && accept(TokenKind::kColon)) return;
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

Parser::Ending Parser::ending() const {
  if (lexer_.continues()) return Ending::kUnfinished;
  if (not_closed_ == 0) return Ending::kWhole;
  return failures_ == 0 && diagnostics_.size() <= not_closed_ ? Ending::kUnfinished
                                                              : Ending::kDamaged;
}

ScriptTree Parser::parse_expression_alone(uint32_t first_routine) {
  ScriptTree tree;
  tree.routine_count = first_routine;
  while (accept(TokenKind::kNewLine) || accept(TokenKind::kColon)) continue;
  auto* statement = make_stmt<ExpressionStmt>(StmtKind::kExpression, token_.offset);
  statement->expression = parse_expression();
  while (accept(TokenKind::kNewLine) || accept(TokenKind::kColon)) continue;
  if (token_.kind != TokenKind::kEnd) unexpected("the end of the line");
  tree.body.first = statement;
  return tree;
}

ScriptTree Parser::parse(uint32_t first_routine) {
  ScriptTree tree;
  tree.routine_count = first_routine;
  Stmt** tail = &tree.body.first;
  Routine** routine_tail = &tree.routines;
  ClassDecl** class_tail = &tree.classes;
  while (token_.kind != TokenKind::kEnd && !diagnostics_.full()) {
    const size_t mistakes_before = mistakes();
    Stmt** const link = tail;
    if (token_.kind == TokenKind::kSub || token_.kind == TokenKind::kFunction) {
      parse_routine(tree, routine_tail);
      continue;
    }
    if (at_words("Class")) {
      parse_class(tree, class_tail);
      if (mistakes() != mistakes_before) tree.classes_whole = false;
      continue;
    }
    if (at_block_end()) {
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
    if (mistakes() == mistakes_before) continue;
    tree.body_whole = false;
    for (Stmt* made = *link; made != nullptr; made = made->next) made->damaged = true;
  }
  tree.names_lost = tree.names_lost || !tree.body_whole || diagnostics_.full();
  return tree;
}

}  // namespace krz
