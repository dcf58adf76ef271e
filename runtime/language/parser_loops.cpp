// For, For Each, While and Do.
#include "language/parser.h"

namespace krz {

Expr* Parser::parse_loop_variable(TypeName& type_name) {
  Expr* target = parse_postfix();
  if (accept(TokenKind::kAs)) {
    type_name = parse_type_name();
    if (!target->is(ExprKind::kName) && !target->is(ExprKind::kError))
      fail(previous_, "only a new name can be declared here");
  }
  return target;
}

Stmt* Parser::parse_for(SourceOffset position) {
  advance();
  if (accept(TokenKind::kEach)) return parse_for_each(position);
  auto* statement = make_stmt<ForStmt>(StmtKind::kFor, position);
  statement->target = parse_loop_variable(statement->type_name);
  expect(TokenKind::kEqual, {});
  statement->first = parse_expression();
  statement->down = accept(TokenKind::kDownTo);
  if (!statement->down) expect(TokenKind::kTo, "or DownTo");
  statement->last = parse_expression();
  if (accept(TokenKind::kStep)) statement->step = parse_expression();
  end_statement();
  statement->body = parse_block();
  close_for(position, statement->target);
  return statement;
}

Stmt* Parser::parse_for_each(SourceOffset position) {
  auto* statement = make_stmt<ForEachStmt>(StmtKind::kForEach, position);
  statement->target = parse_loop_variable(statement->type_name);
  expect(TokenKind::kIn, {});
  statement->array = parse_expression();
  end_statement();
  statement->body = parse_block();
  close_for(position, statement->target);
  return statement;
}

/// "Next", with the loop's variable or without.
void Parser::close_for(SourceOffset opening, const Expr* target) {
  if (!accept(TokenKind::kNext)) {
    if (token_.kind == TokenKind::kEnd) return not_closed(opening, "For", "Next");
    fail(token_, "Next is expected here, for the For in " +
                     diagnostics_.source().line_text(opening, token_.offset));
    recover_from_missing_end();
    return;
  }
  if (token_.kind == TokenKind::kName) {
    const NameId name = names_.intern(text_of(token_), token_.hash);
    if (target->is(ExprKind::kName) && target->name != name)
      fail(token_, "this Next closes the loop of “" + std::string(names_.text(target->name)) + "”");
    advance();
  }
  end_statement();
}

Stmt* Parser::parse_while(SourceOffset position) {
  auto* statement = make_stmt<WhileStmt>(StmtKind::kWhile, position);
  advance();
  statement->condition = parse_expression();
  end_statement();
  statement->body = parse_block();
  if (accept(TokenKind::kWend)) {
    end_statement();
  } else if (token_.kind == TokenKind::kEnd) {
    not_closed(position, "While", "Wend");
  } else {
    fail(token_, "Wend is expected here, for the While in " +
                     diagnostics_.source().line_text(position, token_.offset));
    recover_from_missing_end();
  }
  return statement;
}

bool Parser::parse_loop_condition(DoStmt* statement) {
  if (token_.kind != TokenKind::kWhile && token_.kind != TokenKind::kUntil) return false;
  const Token word = token_;
  if (statement->condition != nullptr) fail(word, "this Do has a condition already");
  statement->until = word.kind == TokenKind::kUntil;
  advance();
  statement->condition = parse_expression();
  return true;
}

Stmt* Parser::parse_do(SourceOffset position) {
  auto* statement = make_stmt<DoStmt>(StmtKind::kDo, position);
  advance();
  parse_loop_condition(statement);
  end_statement();
  statement->body = parse_block();
  if (accept(TokenKind::kLoop)) {
    if (parse_loop_condition(statement)) statement->at_end = true;
    end_statement();
  } else if (token_.kind == TokenKind::kEnd) {
    not_closed(position, "Do", "Loop");
  } else {
    fail(token_, "Loop is expected here, for the Do in " +
                     diagnostics_.source().line_text(position, token_.offset));
    recover_from_missing_end();
  }
  return statement;
}

}  // namespace krz
