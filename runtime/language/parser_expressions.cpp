// Expressions, by precedence climbing. Recursion and the depth of the trees are bounded.
#include <charconv>
#include <limits>

#include "language/parser.h"

namespace krz {
namespace {

constexpr int kDeepestNesting = 100;
constexpr size_t kDeepestTree = 400;
constexpr size_t kMostArguments = 1000;

constexpr int kNotLevel = 4;
constexpr int kUnaryLevel = 10;
constexpr int kPowerLevel = 11;

struct BinaryOperator {
  Operator op;
  int level;  // binds tighter when higher; 0 is no operator
};

BinaryOperator binary_operator(TokenKind kind) {
  switch (kind) {
    case TokenKind::kXor:
      return {Operator::kXor, 1};
    case TokenKind::kOr:
      return {Operator::kOr, 2};
    case TokenKind::kAnd:
      return {Operator::kAnd, 3};
    case TokenKind::kEqual:
      return {Operator::kEqual, 5};
    case TokenKind::kNotEqual:
      return {Operator::kNotEqual, 5};
    case TokenKind::kLess:
      return {Operator::kLess, 5};
    case TokenKind::kLessEqual:
      return {Operator::kLessEqual, 5};
    case TokenKind::kGreater:
      return {Operator::kGreater, 5};
    case TokenKind::kGreaterEqual:
      return {Operator::kGreaterEqual, 5};
    case TokenKind::kIs:
      return {Operator::kIs, 5};
    case TokenKind::kAmpersand:
      return {Operator::kConcatenate, 6};
    case TokenKind::kPlus:
      return {Operator::kAdd, 7};
    case TokenKind::kMinus:
      return {Operator::kSubtract, 7};
    case TokenKind::kMod:
      return {Operator::kModulo, 8};
    case TokenKind::kBackslash:
      return {Operator::kIntegerDivide, 9};
    case TokenKind::kStar:
      return {Operator::kMultiply, 9};
    case TokenKind::kSlash:
      return {Operator::kDivide, 9};
    case TokenKind::kCaret:
      return {Operator::kPower, kPowerLevel};
    default:
      return {Operator::kNot, 0};
  }
}

}  // namespace

bool Parser::is_binary_operator(TokenKind kind) { return binary_operator(kind).level > 0; }

Expr* Parser::make_expr(ExprKind kind, SourceOffset position) {
  Expr* expr = arena_.make<Expr>();
  expr->kind = kind;
  expr->position = position;
  expr->begin = position;
  expr->end = token_.end();
  return expr;
}

Expr* Parser::error_expr() { return make_expr(ExprKind::kError, token_.offset); }

Expr* Parser::finish(Expr* expr, SourceOffset begin, size_t depth_below) {
  expr->begin = begin;
  expr->end = previous_.end();
  if (depth_below >= kDeepestTree) {
    if (!line_failed_)
      diagnostics_.add(expr->position,
                       "this expression is too long; use a variable for a part of it");
    line_failed_ = true;
    expr->kind = ExprKind::kError;
    depth_below = 0;
  }
  expr->depth = static_cast<uint16_t>(depth_below + 1);
  return expr;
}

Expr* Parser::parse_expression(int lowest) {
  if (expression_depth_ >= kDeepestNesting) {
    fail(token_, "this expression is nested too deeply");
    while (!at_line_end()) advance();
    return error_expr();
  }
  ++expression_depth_;
  Expr* left = parse_operand();
  for (;;) {
    if (token_.kind == TokenKind::kIsA && lowest <= 5) {
      Expr* test = make_expr(ExprKind::kIsA, token_.offset);
      advance();
      test->left = left;
      test->name = expect_name("a class");
      left = finish(test, left->begin, left->depth);
      continue;
    }
    const BinaryOperator found_operator = binary_operator(token_.kind);
    if (found_operator.level == 0 || found_operator.level < lowest) break;
    Expr* binary = make_expr(ExprKind::kBinary, token_.offset);
    advance();
    binary->op = static_cast<uint8_t>(found_operator.op);
    binary->left = left;
    binary->right = parse_expression(found_operator.level + 1);
    left = finish(binary, left->begin, std::max(left->depth, binary->right->depth));
  }
  --expression_depth_;
  return left;
}

/// What stands between binary operators, signs and Not included. A sign binds less than "^": -2 ^ 2
/// is -4.
Expr* Parser::parse_operand() {
  switch (token_.kind) {
    case TokenKind::kNot:
      return parse_prefix(Operator::kNot, kNotLevel);
    case TokenKind::kMinus:
      return parse_prefix(Operator::kNegate, kUnaryLevel);
    case TokenKind::kPlus:
      advance();
      return parse_expression(kUnaryLevel);
    default:
      return parse_postfix();
  }
}

Expr* Parser::parse_prefix(Operator op, int level) {
  Expr* unary = make_expr(ExprKind::kUnary, token_.offset);
  advance();
  unary->op = static_cast<uint8_t>(op);
  unary->left = parse_expression(level);
  return finish(unary, unary->position, unary->left->depth);
}

Expr* Parser::parse_postfix() {
  Expr* expr = parse_primary();
  for (;;) {
    if (token_.kind == TokenKind::kDot) {
      advance();
      Expr* member = make_expr(ExprKind::kMember, token_.offset);
      if (!is_word(token_.kind)) {
        unexpected("a member's name");
        return error_expr();
      }
      // After a dot every word is a name.
      member->name = names_.intern(text_of(token_), token_.hash);
      advance();
      member->left = expr;
      expr = finish(member, expr->begin, expr->depth);
    } else if (token_.kind == TokenKind::kLeftParen) {
      const bool apart = token_.offset > previous_.end();
      if (apart && expression_depth_ == 0 && !spaced_paren_.has_value() &&
          (expr->is(ExprKind::kName) || expr->is(ExprKind::kMember)))
        spaced_paren_ = SpacedParen{lexer_.position(), token_, previous_, expr};
      Expr* call = make_expr(ExprKind::kCall, expr->position);
      const std::span<Expr*> arguments = parse_arguments_in_parens();
      call->left = expr;
      call->args = arguments.data();
      call->arg_count = static_cast<uint16_t>(arguments.size());
      call->has_parens = true;
      size_t depth = expr->depth;
      for (const Expr* argument : arguments) depth = std::max<size_t>(depth, argument->depth);
      expr = finish(call, expr->begin, depth);
    } else {
      return expr;
    }
  }
}

std::span<Expr*> Parser::take_scratch(size_t first) {
  const std::span<Expr* const> items(scratch_.data() + first, scratch_.size() - first);
  const std::span<Expr*> result = arena_.copy<Expr*>(items);
  scratch_.resize(first);
  return result;
}

/// Expressions with commas between them. An empty list when the terminator comes at once.
std::span<Expr*> Parser::parse_list(TokenKind terminator) {
  const size_t first = scratch_.size();
  if (token_.kind != terminator && !at_line_end()) {
    do {
      Expr* item = parse_expression();
      scratch_.push_back(item);
      if (scratch_.size() - first > kMostArguments) {
        fail(token_, "these are too many values");
        scratch_.resize(first);
        break;
      }
    } while (accept(TokenKind::kComma));
  }
  return take_scratch(first);
}

std::span<Expr*> Parser::parse_arguments_in_parens() {
  advance();
  const std::span<Expr*> arguments = parse_list(TokenKind::kRightParen);
  expect(TokenKind::kRightParen, {});
  return arguments;
}

Expr* Parser::parse_primary() {
  switch (token_.kind) {
    case TokenKind::kName: {
      Expr* name = make_expr(ExprKind::kName, token_.offset);
      name->name = names_.intern(text_of(token_), token_.hash);
      advance();
      return name;
    }
    case TokenKind::kLeftParen: {
      const SourceOffset begin = token_.offset;
      advance();
      Expr* inner = parse_expression();
      expect(TokenKind::kRightParen, {});
      inner->begin = begin;
      inner->end = previous_.end();
      return inner;
    }
    case TokenKind::kNew:
      return parse_new();
    case TokenKind::kInteger:
    case TokenKind::kReal:
    case TokenKind::kColor:
    case TokenKind::kString:
    case TokenKind::kTrue:
    case TokenKind::kFalse:
    case TokenKind::kNil:
      return parse_literal();
    default: {
      unexpected("a value");
      // Step over what cannot be one, unless it may belong to what surrounds the value.
      Expr* result = error_expr();
      if (!at_line_end() && token_.kind != TokenKind::kRightParen &&
          token_.kind != TokenKind::kComma && token_.kind != TokenKind::kThen)
        advance();
      return result;
    }
  }
}

Expr* Parser::parse_new() {
  Expr* expr = make_expr(ExprKind::kNew, token_.offset);
  advance();
  expr->position = token_.offset;
  expr->name = expect_name("a class");
  size_t depth = 0;
  if (token_.kind == TokenKind::kLeftParen) {
    const std::span<Expr*> arguments = parse_arguments_in_parens();
    expr->args = arguments.data();
    expr->arg_count = static_cast<uint16_t>(arguments.size());
    for (const Expr* argument : arguments) depth = std::max<size_t>(depth, argument->depth);
  }
  return finish(expr, expr->begin, depth);
}

Expr* Parser::parse_literal() {
  const Token token = token_;
  const std::string_view text = text_of(token);
  Expr* literal = make_expr(ExprKind::kLiteral, token.offset);
  switch (token.kind) {
    case TokenKind::kString:
      return parse_string();
    case TokenKind::kInteger: {
      if (text[0] != '&') return parse_integer(text, 10);
      const char base = fold_ascii(text[1]);
      return parse_integer(text.substr(2), base == 'h' ? 16 : base == 'o' ? 8 : 2);
    }
    case TokenKind::kColor:
      literal->type.kind = Kind::kColor;
      if (text.size() != 8) fail(token, "a color is &c and six hexadecimal digits: &cRRGGBB");
      std::from_chars(text.data() + 2, text.data() + text.size(), literal->literal.color, 16);
      break;
    case TokenKind::kReal: {
      literal->type.kind = Kind::kDouble;
      const auto parsed =
          std::from_chars(text.data(), text.data() + text.size(), literal->literal.real);
      if (parsed.ec == std::errc::result_out_of_range)
        fail(token, "this number does not fit in a Double");
      break;
    }
    case TokenKind::kNil:
      literal->type.kind = Kind::kNil;
      break;
    default:
      literal->type.kind = Kind::kBoolean;
      literal->literal.boolean = token.kind == TokenKind::kTrue;
      break;
  }
  advance();
  return literal;
}

/// Integer when 32 bits hold the value, else Int64. Based numbers of up to 32 bits are Integers of
/// that bit pattern.
Expr* Parser::parse_integer(std::string_view digits, int base) {
  Expr* literal = make_expr(ExprKind::kLiteral, token_.offset);
  uint64_t value = 0;
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
  const bool fits = parsed.ec == std::errc() &&
                    (base != 10 || value <= uint64_t{std::numeric_limits<int64_t>::max()} + 1);
  if (!fits) fail(token_, "this number does not fit in 64 bits");
  const uint64_t integer_limit =
      base == 10 ? std::numeric_limits<int32_t>::max() : std::numeric_limits<uint32_t>::max();
  if (value <= integer_limit) {
    literal->type.kind = Kind::kInteger;
    literal->literal.integer = static_cast<int32_t>(static_cast<uint32_t>(value));
  } else {
    literal->type.kind = Kind::kInt64;
    literal->literal.int64 = static_cast<int64_t>(value);
  }
  advance();
  return literal;
}

Expr* Parser::parse_string() {
  Expr* literal = make_expr(ExprKind::kLiteral, token_.offset);
  literal->type.kind = Kind::kString;
  std::string_view inner = text_of(token_).substr(1);
  if (inner.ends_with('"')) inner.remove_suffix(1);
  if (inner.find('"') != std::string_view::npos) {
    std::string unquoted;
    for (size_t i = 0; i < inner.size(); ++i) {
      unquoted += inner[i];
      if (inner[i] == '"') ++i;
    }
    inner = arena_.copy_text(unquoted);
  }
  literal->text = inner.data();
  literal->text_length = inner.size();
  advance();
  return literal;
}

}  // namespace krz
