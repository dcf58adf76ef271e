// What operators mean for the types of their operands.
#include <cmath>
#include <limits>

#include "language/checker.h"
#include "language/types.h"

namespace krz {
namespace {

constexpr std::string_view kOperatorTexts[] = {
    "-", "Not", "^", "*",  "/", "\\", "Mod", "+",   "-",  "&",
    "=", "<>",  "<", "<=", ">", ">=", "Is",  "And", "Or", "Xor",
};

bool is_equality(Operator op) { return op == Operator::kEqual || op == Operator::kNotEqual; }

bool holds_object(const Type& type) {
  return type.kind == Kind::kObject || type.kind == Kind::kArray || type.kind == Kind::kNil;
}

int64_t wrapped(Operator op, int64_t a, int64_t b) {
  const auto x = static_cast<uint64_t>(a);
  const auto y = static_cast<uint64_t>(b);
  switch (op) {
    case Operator::kAdd:
      return static_cast<int64_t>(x + y);
    case Operator::kSubtract:
      return static_cast<int64_t>(x - y);
    case Operator::kMultiply:
      return static_cast<int64_t>(x * y);
    case Operator::kAnd:
      return a & b;
    case Operator::kOr:
      return a | b;
    default:
      return a ^ b;
  }
}

}  // namespace

std::string_view operator_text(Operator op) { return kOperatorTexts[static_cast<size_t>(op)]; }

Expr* fold_binary(Expr* expr, Arena& arena) {
  const Expr* left = expr->left;
  const Expr* right = expr->right;
  if (!left->is(ExprKind::kLiteral) || !right->is(ExprKind::kLiteral)) return nullptr;
  const Operator op = expr->operator_kind();
  Expr result = *expr;
  result.kind = ExprKind::kLiteral;
  result.literal = {};
  result.left = nullptr;
  const bool wraps = op == Operator::kAdd || op == Operator::kSubtract ||
                     op == Operator::kMultiply || op == Operator::kAnd || op == Operator::kOr ||
                     op == Operator::kXor;
  switch (left->type.kind) {
    case Kind::kInteger:
      if (!wraps || expr->type.kind != Kind::kInteger) return nullptr;
      result.literal.integer =
          static_cast<int32_t>(wrapped(op, left->literal.integer, right->literal.integer));
      break;
    case Kind::kInt64:
      if (!wraps || expr->type.kind != Kind::kInt64) return nullptr;
      result.literal.int64 = wrapped(op, left->literal.int64, right->literal.int64);
      break;
    case Kind::kDouble:
      if (expr->type.kind != Kind::kDouble) return nullptr;
      switch (op) {
        case Operator::kAdd:
          result.literal.real = left->literal.real + right->literal.real;
          break;
        case Operator::kSubtract:
          result.literal.real = left->literal.real - right->literal.real;
          break;
        case Operator::kMultiply:
          result.literal.real = left->literal.real * right->literal.real;
          break;
        case Operator::kDivide:
          result.literal.real = left->literal.real / right->literal.real;
          break;
        default:
          return nullptr;
      }
      break;
    case Kind::kString: {
      if (op != Operator::kConcatenate) return nullptr;
      std::string joined(left->text_value());
      joined += right->text_value();
      const std::string_view kept = arena.copy_text(joined);
      result.text = kept.data();
      result.text_length = kept.size();
      break;
    }
    default:
      return nullptr;
  }
  return arena.make<Expr>(result);
}

Expr* Checker::bad_operands(Expr* expr) {
  if (!expr->left->is(ExprKind::kError) && !expr->right->is(ExprKind::kError)) {
    report(expr, "“" + std::string(operator_text(expr->operator_kind())) +
                     "” has no meaning between " + a_type(expr->left->type) + " and " +
                     a_type(expr->right->type));
  }
  return make_error(expr);
}

Expr* Checker::check_unary(Expr* expr) {
  expr->left = check(expr->left);
  Expr* operand = expr->left;
  absorb(expr, operand);
  if (operand->is(ExprKind::kError)) return make_error(expr);
  if (operand->type.kind == Kind::kVariant) {
    expr->type = operand->type;
    return expr;
  }
  const bool negate = expr->operator_kind() == Operator::kNegate;
  const bool fits = negate ? operand->type.is_number()
                           : is_integral(operand->type) || operand->type.kind == Kind::kBoolean;
  if (!fits) {
    report(expr, "“" + std::string(operator_text(expr->operator_kind())) +
                     "” has no meaning before " + a_type(operand->type));
    return make_error(expr);
  }
  if (operand->type.kind == Kind::kSingle) expr->left = operand = widen(operand, Kind::kDouble);
  expr->type = operand->type;
  if (!negate || !operand->is(ExprKind::kLiteral)) return expr;

  Expr* folded = arena_.make<Expr>(*operand);
  folded->begin = expr->begin;
  folded->position = expr->position;
  if (operand->type.kind == Kind::kDouble) {
    folded->literal.real = -operand->literal.real;
  } else if (operand->type.kind == Kind::kInteger) {
    folded->literal.integer =
        static_cast<int32_t>(0u - static_cast<uint32_t>(operand->literal.integer));
  } else {
    const auto value = static_cast<int64_t>(0 - static_cast<uint64_t>(operand->literal.int64));
    folded->literal.int64 = value;
    if (value == std::numeric_limits<int32_t>::min()) {
      folded->literal = {};
      folded->literal.integer = static_cast<int32_t>(value);
      folded->type.kind = Kind::kInteger;
    }
  }
  return folded;
}

Expr* Checker::check_binary(Expr* expr) {
  expr->left = check(expr->left);
  expr->right = check(expr->right);
  absorb(expr, expr->left);
  absorb(expr, expr->right);
  if (expr->left->is(ExprKind::kError) || expr->right->is(ExprKind::kError))
    return make_error(expr);
  switch (expr->operator_kind()) {
    case Operator::kConcatenate:
      return check_concatenation(expr);
    case Operator::kAnd:
    case Operator::kOr:
    case Operator::kXor:
      return check_logic(expr);
    case Operator::kEqual:
    case Operator::kNotEqual:
    case Operator::kLess:
    case Operator::kLessEqual:
    case Operator::kGreater:
    case Operator::kGreaterEqual:
    case Operator::kIs:
      return check_comparison(expr);
    default:
      return check_arithmetic(expr);
  }
}

Expr* Checker::check_concatenation(Expr* expr) {
  expr->left = to_text(expr->left);
  expr->right = to_text(expr->right);
  if (expr->left->is(ExprKind::kError) || expr->right->is(ExprKind::kError))
    return make_error(expr);
  expr->type = simple_type(Kind::kString);
  Expr* folded = fold_binary(expr, arena_);
  return folded != nullptr ? folded : expr;
}

/// An operator of which one side is a Variant is worked out when it runs, between two Variants.
bool Checker::make_variant_operands(Expr* expr) {
  for (Expr** side : {&expr->left, &expr->right}) {
    const Kind kind = (*side)->type.kind;
    if (kind == Kind::kNil) return false;
    if (kind != Kind::kVariant) *side = convert(*side, simple_type(Kind::kVariant), "this");
  }
  return true;
}

/// Integers stay integers, except for "/" and "^"; with a Single or a Double all becomes Double.
/// "+" also joins strings.
Expr* Checker::check_arithmetic(Expr* expr) {
  const Operator op = expr->operator_kind();
  const Type& left = expr->left->type;
  const Type& right = expr->right->type;
  if (op == Operator::kAdd && left.kind == Kind::kString && right.kind == Kind::kString) {
    expr->op = static_cast<uint8_t>(Operator::kConcatenate);
    return check_concatenation(expr);
  }
  if (left.kind == Kind::kVariant || right.kind == Kind::kVariant) {
    if (!make_variant_operands(expr)) return bad_operands(expr);
    expr->type = simple_type(Kind::kVariant);
    return expr;
  }
  if (!left.is_number() || !right.is_number()) {
    if (op == Operator::kAdd && (left.kind == Kind::kString || right.kind == Kind::kString)) {
      report(expr, "“+” joins strings or adds numbers; use “&” to join " + a_type(left) + " and " +
                       a_type(right));
      return make_error(expr);
    }
    return bad_operands(expr);
  }
  Kind kind = Kind::kDouble;
  if (is_integral(left) && is_integral(right) && op != Operator::kDivide &&
      op != Operator::kPower) {
    kind =
        left.kind == Kind::kInteger && right.kind == Kind::kInteger ? Kind::kInteger : Kind::kInt64;
  }
  expr->left = widen(expr->left, kind);
  expr->right = widen(expr->right, kind);
  expr->type = simple_type(kind);
  Expr* folded = fold_binary(expr, arena_);
  return folded != nullptr ? folded : expr;
}

Expr* Checker::check_logic(Expr* expr) {
  const Type& left = expr->left->type;
  const Type& right = expr->right->type;
  if (left.kind == Kind::kBoolean && right.kind == Kind::kBoolean) {
    expr->type = left;
    return expr;
  }
  const bool variant = left.kind == Kind::kVariant || right.kind == Kind::kVariant;
  if (!variant && (!is_integral(left) || !is_integral(right))) return bad_operands(expr);
  return check_arithmetic(expr);
}

/// Brings two values to one type in which they can be compared.
bool Checker::compare_types(Expr*& left, Expr*& right, Operator op) {
  const bool equality = is_equality(op) || op == Operator::kIs;
  const Kind a = left->type.kind;
  const Kind b = right->type.kind;
  if (left->type.is_number() && right->type.is_number() && op != Operator::kIs) {
    Kind kind = Kind::kDouble;
    if (is_integral(left->type) && is_integral(right->type))
      kind = a == Kind::kInteger && b == Kind::kInteger ? Kind::kInteger : Kind::kInt64;
    left = widen(left, kind);
    right = widen(right, kind);
    return true;
  }
  if (a == Kind::kString && b == Kind::kString) return op != Operator::kIs;
  if (a == b && (a == Kind::kBoolean || a == Kind::kColor)) return is_equality(op);
  if (holds_object(left->type) && holds_object(right->type)) return equality;
  const bool variant_and_nil =
      (a == Kind::kVariant && b == Kind::kNil) || (a == Kind::kNil && b == Kind::kVariant);
  return variant_and_nil && equality;
}

Expr* Checker::check_comparison(Expr* expr) {
  const bool variant =
      expr->left->type.kind == Kind::kVariant || expr->right->type.kind == Kind::kVariant;
  if (variant && make_variant_operands(expr)) {
    if (expr->operator_kind() == Operator::kIs) expr->op = static_cast<uint8_t>(Operator::kEqual);
    expr->type = simple_type(Kind::kBoolean);
    return expr;
  }
  if (!compare_types(expr->left, expr->right, expr->operator_kind())) {
    const bool text_and_nil =
        (expr->left->type.kind == Kind::kString && expr->right->type.kind == Kind::kNil) ||
        (expr->left->type.kind == Kind::kNil && expr->right->type.kind == Kind::kString);
    if (text_and_nil) {
      report(expr, "a String is never Nil; compare it with \"\"");
      return make_error(expr);
    }
    return bad_operands(expr);
  }
  if (expr->operator_kind() == Operator::kIs) expr->op = static_cast<uint8_t>(Operator::kEqual);
  expr->type = simple_type(Kind::kBoolean);
  return expr;
}

}  // namespace krz
