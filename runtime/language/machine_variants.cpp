// Operators on Variants: what they mean is found out from the values when they meet.
#include <cmath>

#include "language/ast.h"
#include "language/machine.h"
#include "language/text.h"

namespace krz {
namespace {

/// What a Variant register holds.
struct Held {
  Type type{Kind::kNil};
  Slot value;

  explicit Held(REALobject variant) {
    if (const VariantObject* held = as_variant(variant)) {
      type = held->value_type;
      value = held->value;
    }
  }
  bool is(Kind kind) const { return type.kind == kind; }
  bool is_object() const { return type.kind == Kind::kObject || type.kind == Kind::kArray; }
  bool is_whole() const { return is_integral(type); }
  int64_t whole() const { return is(Kind::kInteger) ? value.integer : value.int64; }
  double real() const {
    if (is(Kind::kSingle)) return static_cast<double>(value.single);
    return is(Kind::kDouble) ? value.real : static_cast<double>(whole());
  }
};

/// Integer with Integer stays Integer, with Int64 all is Int64.
Type whole_type(const Held& left, const Held& right) {
  return simple_type(left.is(Kind::kInteger) && right.is(Kind::kInteger) ? Kind::kInteger
                                                                         : Kind::kInt64);
}

bool is_bitwise(Operator op) {
  return op == Operator::kAnd || op == Operator::kOr || op == Operator::kXor;
}

/// REQUIRES: a divisor is not 0. 64 bits hold what 32 bits would; the low ones are the wrapped
/// result.
int64_t whole_result(Operator op, int64_t a, int64_t b) {
  const auto x = static_cast<uint64_t>(a);
  const auto y = static_cast<uint64_t>(b);
  switch (op) {
    case Operator::kAdd:
      return static_cast<int64_t>(x + y);
    case Operator::kSubtract:
      return static_cast<int64_t>(x - y);
    case Operator::kMultiply:
      return static_cast<int64_t>(x * y);
    case Operator::kIntegerDivide:
      return b == -1 ? static_cast<int64_t>(0 - x) : a / b;
    case Operator::kModulo:
      return b == -1 ? 0 : a % b;
    case Operator::kAnd:
      return a & b;
    case Operator::kOr:
      return a | b;
    default:
      return a ^ b;
  }
}

double real_result(Operator op, double a, double b) {
  switch (op) {
    case Operator::kAdd:
      return a + b;
    case Operator::kSubtract:
      return a - b;
    case Operator::kMultiply:
      return a * b;
    case Operator::kDivide:
      return a / b;
    case Operator::kIntegerDivide:
      return std::trunc(a / b);
    case Operator::kModulo:
      return std::fmod(a, b);
    default:
      return std::pow(a, b);
  }
}

bool logic_result(Operator op, bool a, bool b) {
  if (op == Operator::kAnd) return a && b;
  return op == Operator::kOr ? a || b : a != b;
}

/// Below, equal to or above zero; 2 for numbers of which one is none.
template <class T>
int order(T a, T b) {
  if (a == b) return 0;
  if (a < b) return -1;
  return a > b ? 1 : 2;
}

/// Whether values that have no order are the same. Values of different kinds are not.
bool same(const Held& left, const Held& right) {
  if (left.is_object() && right.is_object()) return left.value.object == right.value.object;
  if (left.type.kind != right.type.kind) return false;
  if (left.is(Kind::kBoolean)) return (left.value.boolean != 0) == (right.value.boolean != 0);
  if (left.is(Kind::kColor)) return left.value.color == right.value.color;
  return left.is(Kind::kNil);
}

bool holds(Operator op, int order) {
  switch (op) {
    case Operator::kNotEqual:
      return order != 0;
    case Operator::kLess:
      return order == -1;
    case Operator::kLessEqual:
      return order == -1 || order == 0;
    case Operator::kGreater:
      return order == 1;
    case Operator::kGreaterEqual:
      return order == 1 || order == 0;
    default:
      return order == 0;
  }
}

}  // namespace

bool Machine::raise_operands(Operator op, const Type& left, const Type& right) {
  raise("TypeMismatchException", "“" + std::string(operator_text(op)) +
                                     "” has no meaning between " + a_type(left) + " and " +
                                     a_type(right));
  return false;
}

bool Machine::variant_operate(Operator op, REALobject a, REALobject b, Slot& target) {
  const Held left(a);
  const Held right(b);
  if (left.is(Kind::kString) && right.is(Kind::kString) && op == Operator::kAdd) {
    const REALstring parts[] = {left.value.string, right.value.string};
    Slot joined;
    joined.string = join_strings(parts);
    const bool made = box(joined, simple_type(Kind::kString), target);
    unlock_string(joined.string);
    return made;
  }
  Slot result;
  if (left.is(Kind::kBoolean) && right.is(Kind::kBoolean) && is_bitwise(op)) {
    result.boolean = logic_result(op, left.value.boolean != 0, right.value.boolean != 0);
    return box(result, left.type, target);
  }
  if (left.is_whole() && right.is_whole() && op != Operator::kDivide && op != Operator::kPower) {
    if ((op == Operator::kIntegerDivide || op == Operator::kModulo) && right.whole() == 0) {
      raise("DivisionByZeroException", "the divisor is 0");
      return false;
    }
    const int64_t number = whole_result(op, left.whole(), right.whole());
    const Type type = whole_type(left, right);
    if (type.kind == Kind::kInteger) {
      result.integer = static_cast<int32_t>(number);
    } else {
      result.int64 = number;
    }
    return box(result, type, target);
  }
  if (!left.type.is_number() || !right.type.is_number() || is_bitwise(op))
    return raise_operands(op, left.type, right.type);
  result.real = real_result(op, left.real(), right.real());
  return box(result, simple_type(Kind::kDouble), target);
}

bool Machine::variant_compare(Operator op, REALobject a, REALobject b, Slot& target) {
  const Held left(a);
  const Held right(b);
  bool outcome = false;
  if (left.is(Kind::kString) && right.is(Kind::kString)) {
    outcome = holds(op, order(compare_strings(left.value.string, right.value.string), 0));
  } else if (left.is_whole() && right.is_whole()) {
    outcome = holds(op, order(left.whole(), right.whole()));
  } else if (left.type.is_number() && right.type.is_number()) {
    outcome = holds(op, order(left.real(), right.real()));
  } else if (op == Operator::kEqual || op == Operator::kNotEqual) {
    outcome = same(left, right) == (op == Operator::kEqual);
  } else {
    return raise_operands(op, left.type, right.type);
  }
  target.bits = 0;
  target.boolean = static_cast<uint8_t>(outcome);
  return true;
}

/// A sign, or Not.
bool Machine::variant_unary(Operator op, REALobject a, Slot& target) {
  const Held operand(a);
  Slot result;
  const bool negate = op == Operator::kNegate;
  if (operand.is(Kind::kBoolean) && !negate) {
    result.boolean = operand.value.boolean == 0;
    return box(result, operand.type, target);
  }
  if (operand.is_whole()) {
    const auto bits = static_cast<uint64_t>(operand.whole());
    const auto number = static_cast<int64_t>(negate ? 0 - bits : ~bits);
    if (operand.is(Kind::kInteger)) {
      result.integer = static_cast<int32_t>(number);
    } else {
      result.int64 = number;
    }
    return box(result, operand.type, target);
  }
  if (!negate || !operand.type.is_number()) {
    raise("TypeMismatchException",
          "“" + std::string(operator_text(op)) + "” has no meaning before " + a_type(operand.type));
    return false;
  }
  result.real = -operand.real();
  return box(result, simple_type(Kind::kDouble), target);
}

}  // namespace krz
