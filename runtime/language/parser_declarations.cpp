// Dim, Const, Sub and Function.
#include "language/parser.h"

namespace krz {

/// "(10)", "(2, 3)" or "()" behind a declared name; sets the rank. Empty bounds declare an array
/// without elements.
std::span<Expr*> Parser::parse_bounds(TypeName& type_name) {
  if (token_.kind != TokenKind::kLeftParen) return {};
  advance();
  if (accept(TokenKind::kRightParen)) {
    type_name.rank = 1;
    return {};
  }
  const std::span<Expr*> bounds = parse_list(TokenKind::kRightParen);
  expect(TokenKind::kRightParen, {});
  if (bounds.size() > 8) fail(previous_, "an array has at most eight dimensions");
  type_name.rank = static_cast<uint8_t>(bounds.size());
  return bounds;
}

/// Dim a, b As Integer, c As String = "x": a type holds for the names before it that have none.
void Parser::parse_dim(Stmt**& tail) {
  advance();
  parse_variables(tail);
}

/// Static x As Integer = 0: declared like a Dim, living as long as the script.
void Parser::parse_static(Stmt**& tail) {
  advance();
  Stmt** first = tail;
  parse_variables(tail);
  for (Stmt* one = *first; one != nullptr; one = one->next)
    static_cast<DimStmt*>(one)->is_static = true;
}

void Parser::parse_variables(Stmt**& tail) {
  DimStmt* first_untyped = nullptr;
  do {
    auto* statement = make_stmt<DimStmt>(StmtKind::kDim, token_.offset);
    statement->name = expect_name("a variable");
    if (statement->name == kNoName) break;
    statement->bounds = parse_bounds(statement->type_name);
    if (first_untyped == nullptr) first_untyped = statement;
    append(tail, statement);
    if (accept(TokenKind::kAs)) {
      if (token_.kind == TokenKind::kNew) {
        statement->as_new = true;
        statement->initial = parse_new();
        statement->type_name.name = statement->initial->name;
        statement->type_name.position = statement->initial->position;
      } else {
        const TypeName written = parse_type_name();
        for (Stmt* one = first_untyped; one != nullptr; one = one->next) {
          auto* dim = static_cast<DimStmt*>(one);
          dim->type_name.name = written.name;
          dim->type_name.position = written.position;
        }
      }
      first_untyped = nullptr;
    }
    if (token_.kind == TokenKind::kEqual) {
      if (statement->as_new) fail(token_, "As New gives the variable its value already");
      advance();
      statement->initial = parse_expression();
      if (statement->type_name.name == kNoName) first_untyped = nullptr;
    }
  } while (accept(TokenKind::kComma));
  if (first_untyped != nullptr) unexpected("As and a type");
}

void Parser::parse_const(Stmt**& tail) {
  advance();
  do {
    auto* statement = make_stmt<ConstStmt>(StmtKind::kConst, token_.offset);
    statement->name = expect_name("a constant");
    if (accept(TokenKind::kAs)) statement->type_name = parse_type_name();
    if (!expect(TokenKind::kEqual, {})) return;
    statement->value = parse_expression();
    append(tail, statement);
  } while (accept(TokenKind::kComma));
}

RoutineParameter Parser::parse_parameter() {
  RoutineParameter parameter;
  parameter.optional = accept(TokenKind::kOptional);
  if (accept(TokenKind::kByRef)) {
    parameter.variable.by_ref = true;
  } else {
    accept(TokenKind::kByVal);
  }
  if (accept(TokenKind::kOptional)) parameter.optional = true;
  if (at_words("Assigns")) {
    advance();
    parameter.assigns = true;
  }
  parameter.variable.position = token_.offset;
  parameter.variable.name = expect_name("a parameter");
  uint8_t rank = 0;
  if (accept(TokenKind::kLeftParen)) {
    rank = 1;
    while (accept(TokenKind::kComma)) ++rank;
    if (rank > 8) fail(previous_, "an array has at most eight dimensions");
    expect(TokenKind::kRightParen, {});
  }
  if (expect(TokenKind::kAs, {})) parameter.type_name = parse_type_name();
  parameter.type_name.rank = rank;
  if (accept(TokenKind::kEqual)) {
    parameter.optional = true;
    parameter.default_value = parse_expression();
  }
  return parameter;
}

Routine* Parser::parse_routine(ScriptTree& tree, Routine**& tail) {
  auto* routine = arena_.make<Routine>();
  const Token header = token_;
  const size_t mistakes_before = mistakes();
  routine->header_begin = header.offset;
  routine->function = header.kind == TokenKind::kFunction;
  advance();
  routine->position = token_.offset;
  routine->name = expect_name(routine->function ? "a Function" : "a Sub");

  std::vector<RoutineParameter> parameters;
  if (accept(TokenKind::kLeftParen)) {
    if (token_.kind != TokenKind::kRightParen) {
      do {
        parameters.push_back(parse_parameter());
      } while (!line_failed_ && accept(TokenKind::kComma));
    }
    if (parameters.size() > 200) fail(token_, "these are too many parameters");
    expect(TokenKind::kRightParen, {});
  }
  routine->parameters = arena_.copy<RoutineParameter>(parameters);
  if (routine->function) {
    if (expect(TokenKind::kAs, "and the type of the result"))
      routine->result_name = parse_type_name();
    if (accept(TokenKind::kLeftParen)) {
      routine->result_name.rank = 1;
      expect(TokenKind::kRightParen, {});
    }
  }
  routine->header_end = previous_.end();
  end_statement();
  routine->header_whole = mistakes() == mistakes_before;
  routine->body = parse_block();
  routine->end = token_.offset;
  close(routine->function ? "Function" : "Sub", header.offset, header.kind);

  routine->whole = mistakes() == mistakes_before;
  tree.names_lost = tree.names_lost || !routine->header_whole;
  routine->index = tree.routine_count++;
  *tail = routine;
  tail = &routine->next;
  return routine;
}

}  // namespace krz
