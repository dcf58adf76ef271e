// Statements and the blocks they form.
#include "language/parser.h"

namespace krz {
namespace {

constexpr int kDeepestBlocks = 60;

}  // namespace

bool Parser::at_block_end() const {
  switch (token_.kind) {
    case TokenKind::kElse:
    case TokenKind::kElseIf:
    case TokenKind::kEndWord:
    case TokenKind::kNext:
    case TokenKind::kWend:
    case TokenKind::kLoop:
    case TokenKind::kCase:
    case TokenKind::kCatch:
    case TokenKind::kFinally:
      return true;
    default:
      return false;
  }
}

/// Statements up to a word that ends or divides a block, which is left for the caller.
Block Parser::parse_block() {
  Block block;
  Stmt** tail = &block.first;
  if (++block_depth_ > kDeepestBlocks) {
    fail(token_, "blocks are nested too deeply here");
    while (token_.kind != TokenKind::kEnd) skip_line();
  }
  while (token_.kind != TokenKind::kEnd && !at_block_end() && !diagnostics_.full()) {
    if (at_routine()) break;
    parse_statement(tail);
  }
  --block_depth_;
  return block;
}

/// The text ends inside a block.
void Parser::not_closed(SourceOffset opening, std::string_view opener, std::string_view missing) {
  ++not_closed_;
  if (diagnostics_.full()) return;
  diagnostics_.add(opening, "this " + std::string(opener) + " is not closed; " +
                                std::string(missing) + " is missing");
}

/// The "End If", "End Sub", … of a block.
void Parser::close(std::string_view opener, SourceOffset opening, TokenKind second) {
  const std::string wanted = "End " + std::string(opener);
  const Token start = token_;
  if (start.kind == TokenKind::kEndWord) {
    const TokenKind closed = lexer_.peek().kind;
    if (closed == second) {
      advance();
      advance();
      return end_statement();
    }
  }
  if (start.kind == TokenKind::kEnd) return not_closed(opening, opener, wanted);
  fail(start, wanted + " is expected here, for the " + std::string(opener) + " in " +
                  diagnostics_.source().line_text(opening, start.offset));
  recover_from_missing_end();
}

/// A word that ends something else is left for what it ends; anything else is stepped over.
void Parser::recover_from_missing_end() {
  if (!at_block_end() && !at_routine()) skip_line();
  found_before_line_ = diagnostics_.size();
  line_failed_ = false;
}

void Parser::parse_statement(Stmt**& tail) {
  if (accept(TokenKind::kNewLine) || accept(TokenKind::kColon)) return;
  const SourceOffset position = token_.offset;
  Stmt* statement = nullptr;
  switch (token_.kind) {
    case TokenKind::kIf:
      statement = parse_if(position);
      break;
    case TokenKind::kSelect:
      statement = parse_select(position);
      break;
    case TokenKind::kFor:
      statement = parse_for(position);
      break;
    case TokenKind::kWhile:
      statement = parse_while(position);
      break;
    case TokenKind::kDo:
      statement = parse_do(position);
      break;
    case TokenKind::kTry:
      statement = parse_try(position);
      break;
    default:
      parse_simple_statement(tail);
      end_statement();
      return;
  }
  if (statement != nullptr) append(tail, statement);
}

/// A statement that fits on one line, up to but without the end of the line.
void Parser::parse_simple_statement(Stmt**& tail) {
  const SourceOffset position = token_.offset;
  switch (token_.kind) {
    case TokenKind::kDim:
    case TokenKind::kVar:
      return parse_dim(tail);
    case TokenKind::kConst:
      return parse_const(tail);
    case TokenKind::kReDim:
      return append(tail, parse_redim(position));
    case TokenKind::kPrint:
      return append(tail, parse_print(position));
    case TokenKind::kExit:
      return append(tail, parse_leave(position, StmtKind::kExit));
    case TokenKind::kContinue:
      return append(tail, parse_leave(position, StmtKind::kContinue));
    case TokenKind::kReturn: {
      auto* statement = make_stmt<ReturnStmt>(StmtKind::kReturn, position);
      advance();
      if (!at_line_end() && token_.kind != TokenKind::kElse) statement->value = parse_expression();
      return append(tail, statement);
    }
    case TokenKind::kRaise: {
      auto* statement = make_stmt<RaiseStmt>(StmtKind::kRaise, position);
      advance();
      statement->exception = parse_expression();
      return append(tail, statement);
    }
    case TokenKind::kName:
      if (at_words("Static")) return parse_static(tail);
      break;
    default:
      // A conversion may be the receiver of a call: Integer is no reserved word, so a name or "("
      // begins every one.
      if (token_.kind == TokenKind::kLeftParen || token_.kind == TokenKind::kNew) break;
      unexpected("a statement");
      return;
  }

  spaced_paren_.reset();
  Expr* target = parse_postfix();
  if (at_argument_in_parens()) target = return_to_spaced_paren();
  if (const std::optional<Operator> op = accept_assigning_operator()) {
    auto* statement = make_stmt<AssignStmt>(StmtKind::kAssign, position);
    statement->target = target;
    Expr* value = make_expr(ExprKind::kBinary, previous_.offset);
    value->op = static_cast<uint8_t>(*op);
    value->left = target;
    value->right = parse_expression();
    statement->value = finish(value, target->begin, std::max(target->depth, value->right->depth));
    statement->reads_target = true;
    return append(tail, statement);
  }
  if (accept(TokenKind::kEqual)) {
    auto* statement = make_stmt<AssignStmt>(StmtKind::kAssign, position);
    statement->target = target;
    statement->value = parse_expression();
    return append(tail, statement);
  }
  auto* statement = make_stmt<ExpressionStmt>(StmtKind::kExpression, position);
  if (!at_line_end() && token_.kind != TokenKind::kElse && !line_failed_ &&
      (target->is(ExprKind::kName) || target->is(ExprKind::kMember))) {
    // A call without parentheses: DoThis 1, 2
    Expr* call = make_expr(ExprKind::kCall, target->position);
    const std::span<Expr*> arguments = parse_list(TokenKind::kNewLine);
    call->left = target;
    call->args = arguments.data();
    call->arg_count = static_cast<uint16_t>(arguments.size());
    call->has_parens = true;
    size_t depth = target->depth;
    for (const Expr* argument : arguments) depth = std::max<size_t>(depth, argument->depth);
    target = finish(call, target->begin, depth);
  }
  statement->expression = target;
  append(tail, statement);
}

std::optional<Operator> Parser::accept_assigning_operator() {
  std::optional<Operator> op;
  switch (token_.kind) {
    case TokenKind::kPlusEqual:
      op = Operator::kAdd;
      break;
    case TokenKind::kMinusEqual:
      op = Operator::kSubtract;
      break;
    case TokenKind::kStarEqual:
      op = Operator::kMultiply;
      break;
    case TokenKind::kSlashEqual:
      op = Operator::kDivide;
      break;
    case TokenKind::kAmpersandEqual:
      op = Operator::kConcatenate;
      break;
    default:
      return op;
  }
  advance();
  return op;
}

/// Whether the parentheses of "Check (a) < b, c", apart from the name, belong to the first argument
/// of a call without parentheses of its own: more of it, or another argument, follows.
bool Parser::at_argument_in_parens() const {
  if (!spaced_paren_.has_value() || line_failed_) return false;
  return token_.kind == TokenKind::kComma || token_.kind == TokenKind::kIsA ||
         (token_.kind != TokenKind::kEqual && is_binary_operator(token_.kind));
}

/// Goes back to where the parentheses begin; what they were taken for is dropped.
Expr* Parser::return_to_spaced_paren() {
  const SpacedParen back = *spaced_paren_;
  spaced_paren_.reset();
  lexer_.return_to(back.lexer_position);
  token_ = back.token;
  previous_ = back.previous;
  return back.callee;
}

Stmt* Parser::parse_print(SourceOffset position) {
  auto* statement = make_stmt<PrintStmt>(StmtKind::kPrint, position);
  advance();
  if (token_.kind != TokenKind::kElse) statement->values = parse_list(TokenKind::kNewLine);
  return statement;
}

Stmt* Parser::parse_redim(SourceOffset position) {
  auto* statement = make_stmt<ReDimStmt>(StmtKind::kReDim, position);
  advance();
  // The bounds are read as an element of the array: ReDim list(10)
  Expr* element = parse_postfix();
  if (element->is(ExprKind::kCall) && element->arg_count > 0) {
    statement->array = element->left;
    statement->bounds = element->arguments();
  } else {
    fail(token_, "ReDim needs an array and its new bounds: ReDim list(10)");
    statement->array = error_expr();
  }
  return statement;
}

Stmt* Parser::parse_leave(SourceOffset position, StmtKind kind) {
  auto* statement = make_stmt<LeaveStmt>(kind, position);
  advance();
  const bool leaving = kind == StmtKind::kExit;
  switch (token_.kind) {
    case TokenKind::kFor:
      statement->what = Leaves::kFor;
      break;
    case TokenKind::kWhile:
      statement->what = Leaves::kWhile;
      break;
    case TokenKind::kDo:
      statement->what = Leaves::kDo;
      break;
    case TokenKind::kSelect:
    case TokenKind::kSub:
    case TokenKind::kFunction:
      if (leaving) {
        statement->what = token_.kind == TokenKind::kSelect ? Leaves::kSelect : Leaves::kRoutine;
        break;
      }
      [[fallthrough]];
    default:
      return statement;
  }
  advance();
  return statement;
}

Stmt* Parser::parse_if(SourceOffset position) {
  auto* statement = make_stmt<IfStmt>(StmtKind::kIf, position);
  advance();
  statement->condition = parse_expression();
  expect(TokenKind::kThen, {});
  if (!at_line_end() && !line_failed_) return parse_single_line_if(statement);
  end_statement();
  statement->body = parse_block();
  statement->otherwise = parse_if_tail(position);
  return statement;
}

/// What follows the first block of an If, down to End If.
IfStmt* Parser::parse_if_tail(SourceOffset opening) {
  IfStmt* first = nullptr;
  IfStmt** link = &first;
  bool had_else = false;
  while (token_.kind == TokenKind::kElseIf || token_.kind == TokenKind::kElse) {
    const Token word = token_;
    if (had_else) fail(word, "Else is the last part of an If");
    auto* part = make_stmt<IfStmt>(StmtKind::kIf, word.offset);
    advance();
    if (word.kind == TokenKind::kElse && token_.kind == TokenKind::kIf) {
      fail(word, "ElseIf is one word");
      skip_line();
    } else if (word.kind == TokenKind::kElseIf) {
      part->condition = parse_expression();
      expect(TokenKind::kThen, {});
      end_statement();
    } else {
      had_else = true;
      end_statement();
    }
    part->body = parse_block();
    *link = part;
    link = &part->otherwise;
  }
  close("If", opening, TokenKind::kIf);
  return first;
}

/// Statements with colons between them, up to what ends the branch of a single-line If.
void Parser::parse_simple_statements(Stmt**& tail) {
  parse_simple_statement(tail);
  while (token_.kind == TokenKind::kColon && !line_failed_) {
    const TokenKind following = lexer_.peek().kind;
    if (following == TokenKind::kNewLine || following == TokenKind::kEnd) return;
    advance();
    if (token_.kind != TokenKind::kColon) parse_simple_statement(tail);
  }
}

Stmt* Parser::parse_single_line_if(IfStmt* statement) {
  Stmt** tail = &statement->body.first;
  parse_simple_statements(tail);
  if (token_.kind == TokenKind::kElse && !line_failed_) {
    auto* otherwise = make_stmt<IfStmt>(StmtKind::kIf, token_.offset);
    advance();
    tail = &otherwise->body.first;
    parse_simple_statements(tail);
    statement->otherwise = otherwise;
  }
  end_statement();
  return statement;
}

CaseItem Parser::parse_case_item() {
  CaseItem item{CaseTest::kValue, Operator::kEqual, nullptr, nullptr};
  if (accept(TokenKind::kIs)) {
    item.test = CaseTest::kCompare;
    switch (token_.kind) {
      case TokenKind::kEqual:
        item.compare = Operator::kEqual;
        break;
      case TokenKind::kNotEqual:
        item.compare = Operator::kNotEqual;
        break;
      case TokenKind::kLess:
        item.compare = Operator::kLess;
        break;
      case TokenKind::kLessEqual:
        item.compare = Operator::kLessEqual;
        break;
      case TokenKind::kGreater:
        item.compare = Operator::kGreater;
        break;
      case TokenKind::kGreaterEqual:
        item.compare = Operator::kGreaterEqual;
        break;
      default:
        unexpected("a comparison, as in Is > 5,");
        break;
    }
    if (!line_failed_) advance();
  }
  item.value = parse_expression();
  if (item.test == CaseTest::kValue && accept(TokenKind::kTo)) {
    item.test = CaseTest::kRange;
    item.upper = parse_expression();
  }
  return item;
}

Stmt* Parser::parse_select(SourceOffset position) {
  auto* statement = make_stmt<SelectStmt>(StmtKind::kSelect, position);
  advance();
  expect(TokenKind::kCase, {});
  statement->subject = parse_expression();
  end_statement();
  while (accept(TokenKind::kNewLine) || accept(TokenKind::kColon)) continue;

  CaseClause** link = &statement->clauses;
  bool had_else = false;
  while (token_.kind == TokenKind::kCase || token_.kind == TokenKind::kElse) {
    auto* clause = arena_.make<CaseClause>();
    clause->position = token_.offset;
    if (had_else) fail(token_, "Case Else is the last case");
    const bool case_word = accept(TokenKind::kCase);
    if (accept(TokenKind::kElse)) {
      had_else = true;
    } else if (case_word) {
      std::vector<CaseItem> items;
      do {
        items.push_back(parse_case_item());
      } while (!line_failed_ && accept(TokenKind::kComma));
      clause->items = arena_.copy<CaseItem>(items);
    }
    end_statement();
    clause->body = parse_block();
    *link = clause;
    link = &clause->next;
  }
  close("Select", position, TokenKind::kSelect);
  return statement;
}

Stmt* Parser::parse_try(SourceOffset position) {
  auto* statement = make_stmt<TryStmt>(StmtKind::kTry, position);
  advance();
  end_statement();
  statement->body = parse_block();
  CatchClause** link = &statement->catches;
  while (token_.kind == TokenKind::kCatch) {
    auto* clause = arena_.make<CatchClause>();
    advance();
    clause->position = token_.offset;
    if (!at_line_end()) {
      clause->name = expect_name("a variable");
      if (accept(TokenKind::kAs)) clause->type_name = parse_type_name();
    }
    end_statement();
    clause->body = parse_block();
    *link = clause;
    link = &clause->next;
  }
  if (token_.kind == TokenKind::kFinally) {
    advance();
    end_statement();
    statement->has_finally = true;
    statement->finally = parse_block();
  }
  if (statement->catches == nullptr && !statement->has_finally &&
      token_.kind == TokenKind::kEndWord)
    fail(token_, "a Try needs Catch or Finally");
  close("Try", position, TokenKind::kTry);
  return statement;
}

}  // namespace krz
