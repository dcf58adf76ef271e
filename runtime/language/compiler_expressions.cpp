// Values: where they lie, and the instructions that make them.
#include "language/compiler.h"
#include "object/string.h"

namespace krz {
namespace {

/// The operations of a group that begins with `first`, in the order of the Operators.
Op integer_operation(Operator op, Op add) {
  uint16_t distance = 0;
  switch (op) {
    case Operator::kAdd:
      distance = 0;
      break;
    case Operator::kSubtract:
      distance = 1;
      break;
    case Operator::kMultiply:
      distance = 2;
      break;
    case Operator::kIntegerDivide:
      distance = 3;
      break;
    case Operator::kModulo:
      distance = 4;
      break;
    case Operator::kAnd:
      distance = 5;
      break;
    case Operator::kOr:
      distance = 6;
      break;
    default:
      distance = 7;
      break;
  }
  return static_cast<Op>(static_cast<uint16_t>(add) + distance);
}

Op double_operation(Operator op) {
  switch (op) {
    case Operator::kAdd:
      return Op::kAddD;
    case Operator::kSubtract:
      return Op::kSubtractD;
    case Operator::kMultiply:
      return Op::kMultiplyD;
    case Operator::kDivide:
      return Op::kDivideD;
    case Operator::kIntegerDivide:
      return Op::kIntegerDivideD;
    case Operator::kModulo:
      return Op::kModuloD;
    default:
      return Op::kPowerD;
  }
}

Op first_comparison(Kind kind) {
  switch (kind) {
    case Kind::kInteger:
    case Kind::kColor:
      return Op::kEqualI;
    case Kind::kInt64:
      return Op::kEqualL;
    case Kind::kDouble:
      return Op::kEqualD;
    case Kind::kString:
      return Op::kEqualS;
    case Kind::kBoolean:
      return Op::kEqualB;
    default:
      return Op::kEqualO;
  }
}

Op conversion_operation(Conversion conversion) {
  switch (conversion) {
    case Conversion::kBooleanToInteger:
      return Op::kBooleanToInteger;
    case Conversion::kIntegerToInt64:
      return Op::kIntegerToInt64;
    case Conversion::kIntegerToDouble:
      return Op::kIntegerToDouble;
    case Conversion::kInt64ToInteger:
      return Op::kInt64ToInteger;
    case Conversion::kInt64ToDouble:
      return Op::kInt64ToDouble;
    case Conversion::kSingleToDouble:
      return Op::kSingleToDouble;
    case Conversion::kDoubleToInteger:
      return Op::kDoubleToInteger;
    case Conversion::kDoubleToInt64:
      return Op::kDoubleToInt64;
    case Conversion::kDoubleToSingle:
      return Op::kDoubleToSingle;
    case Conversion::kToBoolean:
      return Op::kToBoolean;
    case Conversion::kTextToInt64:
      return Op::kTextToInt64;
    default:
      return Op::kTextToDouble;
  }
}

}  // namespace

/// A local, or a variable of the module seen from its own code.
bool Compiler::lies_in_register(const Variable& variable) const {
  if (variable.by_ref) return false;
  return !variable.global || (routine_ == nullptr && !variables_apart_);
}

Compiler::Operand Compiler::value(const Expr* expr) {
  if (expr->is(ExprKind::kVariable) && lies_in_register(*expr->variable))
    return {expr->variable->reg, storage_of(expr->type.kind), false};
  const bool same_bits = expr->is(ExprKind::kConvert) && expr->conversion() == Conversion::kRetype;
  if (same_bits && storage_of(expr->left->type.kind) == storage_of(expr->type.kind))
    return value(expr->left);
  const Operand result = allocate(storage_of(expr->type.kind));
  into(expr, result.reg);
  return result;
}

/// A value that stays what it is while other code runs: a variable is copied.
Compiler::Operand Compiler::stable_value(const Expr* expr, bool must_copy) {
  if (!must_copy) return value(expr);
  const Operand result = allocate(storage_of(expr->type.kind));
  into(expr, result.reg);
  return result;
}

/// Evaluates into a register, which is written last: the expression may read it.
void Compiler::into(const Expr* expr, Register target) {
  switch (expr->kind) {
    case ExprKind::kLiteral:
      return load_literal(expr, target);
    case ExprKind::kRegisteredText: {
      program_.texts.push_back({{}, expr->constant->value.string});
      lock_string(expr->constant->value.string);
      return emit_wide(Op::kLoadText, target, static_cast<int32_t>(program_.texts.size() - 1));
    }
    case ExprKind::kVariable:
      return load_variable(*expr->variable, target);
    case ExprKind::kUnary: {
      if (expr->type.kind == Kind::kBoolean) return condition_into(expr, target);
      const Operand operand = value(expr->left);
      if (expr->type.kind == Kind::kVariant) {
        mark(expr);
        emit(Op::kVariantUnary, target, operand.reg, expr->op);
        return release(operand);
      }
      const bool negate = expr->operator_kind() == Operator::kNegate;
      Op op = negate ? Op::kNegateI : Op::kNotI;
      if (expr->type.kind == Kind::kInt64) op = negate ? Op::kNegateL : Op::kNotL;
      if (expr->type.kind == Kind::kDouble) op = Op::kNegateD;
      emit(op, target, operand.reg);
      return release(operand);
    }
    case ExprKind::kBinary:
      return binary_into(expr, target);
    case ExprKind::kIsA:
    case ExprKind::kCast: {
      const Operand operand = value(expr->left);
      mark(expr);
      const bool test = expr->is(ExprKind::kIsA);
      const ClassInfo* class_info = test ? expr->class_info : expr->type.class_info;
      emit(test ? Op::kIsA : Op::kCast, target, operand.reg,
           index_in(program_.classes, class_info, "classes"));
      return release(operand);
    }
    case ExprKind::kConvert:
      return convert_into(expr, target);
    case ExprKind::kIndex:
      return element_into(expr, target);
    case ExprKind::kField:
      return field_into(expr, target);
    case ExprKind::kProperty:
      return property_into(expr, target);
    case ExprKind::kNew:
      return new_into(expr, target);
    case ExprKind::kBuiltin:
      return builtin_into(expr, target);
    default:
      return call_into(expr, target);
  }
}

void Compiler::load_text(std::string_view text, Register target) {
  if (text.empty()) {
    emit(Op::kClearString, target);
    return;
  }
  program_.texts.push_back({text, nullptr});
  emit_wide(Op::kLoadText, target, static_cast<int32_t>(program_.texts.size() - 1));
}

void Compiler::load_literal(const Expr* expr, Register target) {
  switch (expr->type.kind) {
    case Kind::kString:
      return load_text(expr->text_value(), target);
    case Kind::kBoolean:
      return emit_wide(Op::kLoadInteger, target, expr->literal.boolean);
    case Kind::kInteger:
    case Kind::kColor:
      return emit_wide(Op::kLoadInteger, target, expr->literal.integer);
    case Kind::kInt64:
    case Kind::kSingle:
    case Kind::kDouble: {
      const uint16_t index = index_in(program_.numbers, expr->literal.bits, "numbers");
      emit(Op::kLoadNumber, target, index);
      return;
    }
    default:
      emit(Op::kClearObject, target);
  }
}

void Compiler::load_variable(const Variable& variable, Register target) {
  const Storage storage = storage_of(variable.type.kind);
  if (variable.by_ref) {
    emit(with_storage(Op::kGetThroughNumber, storage), target, variable.reg);
  } else if (lies_in_register(variable)) {
    if (variable.reg != target) emit(with_storage(Op::kMoveNumber, storage), target, variable.reg);
  } else {
    emit(with_storage(Op::kGetGlobalNumber, storage), target, variable.reg);
  }
}

void Compiler::binary_into(const Expr* expr, Register target) {
  if (expr->type.kind == Kind::kBoolean) return condition_into(expr, target);
  if (expr->operator_kind() == Operator::kConcatenate) return concatenate(expr, target);
  arithmetic(expr, target);
}

/// Between two Variants. A comparison gives a Boolean, everything else a Variant.
void Compiler::variant_operation(const Expr* expr, Register target) {
  const Operand left = stable_value(expr->left, expr->right->calls);
  const Operand right = value(expr->right);
  mark(expr);
  const bool compares = expr->type.kind == Kind::kBoolean;
  emit(compares ? Op::kVariantCompare : Op::kVariantOperate, target, left.reg, right.reg);
  emit_registers({expr->op});
  release(right);
  release(left);
}

void Compiler::arithmetic(const Expr* expr, Register target) {
  if (expr->type.kind == Kind::kVariant) return variant_operation(expr, target);
  const Operator op = expr->operator_kind();
  const Operand left = stable_value(expr->left, expr->right->calls);
  const Expr* right_expr = expr->right;
  const bool small_step = expr->type.kind == Kind::kInteger && right_expr->is(ExprKind::kLiteral) &&
                          right_expr->literal.integer >= -1000 &&
                          right_expr->literal.integer <= 1000;
  if (small_step && (op == Operator::kAdd || op == Operator::kSubtract)) {
    const int32_t step = right_expr->literal.integer;
    emit(Op::kAddImmediateI, target, left.reg,
         static_cast<uint16_t>(op == Operator::kAdd ? step : -step));
    return release(left);
  }
  const Operand right = value(right_expr);
  mark(expr);
  switch (expr->type.kind) {
    case Kind::kInteger:
      emit(integer_operation(op, Op::kAddI), target, left.reg, right.reg);
      break;
    case Kind::kInt64:
      emit(integer_operation(op, Op::kAddL), target, left.reg, right.reg);
      break;
    default:
      emit(double_operation(op), target, left.reg, right.reg);
      break;
  }
  release(right);
  release(left);
}

/// A comparison as a Boolean in a register.
void Compiler::comparison(const Expr* expr, Register target) {
  Operator op = expr->operator_kind();
  if (expr->left->type.kind == Kind::kVariant && expr->right->type.kind == Kind::kVariant)
    return variant_operation(expr, target);
  const Operand left = stable_value(expr->left, expr->right->calls);
  const Operand right = value(expr->right);
  Register a = left.reg;
  Register b = right.reg;
  if (op == Operator::kGreater || op == Operator::kGreaterEqual) {
    std::swap(a, b);
    op = op == Operator::kGreater ? Operator::kLess : Operator::kLessEqual;
  }
  const auto distance =
      static_cast<uint16_t>(static_cast<uint16_t>(op) - static_cast<uint16_t>(Operator::kEqual));
  const auto first = static_cast<uint16_t>(first_comparison(expr->left->type.kind));
  emit(static_cast<Op>(first + distance), target, a, b);
  release(right);
  release(left);
}

/// A chain of strings is joined at once.
void Compiler::concatenate(const Expr* expr, Register target) {
  std::vector<const Expr*> parts;
  const Expr* left = expr;
  while (left->is(ExprKind::kBinary) && left->operator_kind() == Operator::kConcatenate) {
    parts.push_back(left->right);
    left = left->left;
  }
  parts.push_back(left);
  std::vector<Operand> operands;
  std::vector<uint16_t> registers;
  bool later_calls = false;
  for (size_t i = 0; i + 1 < parts.size(); ++i) later_calls = later_calls || parts[i]->calls;
  for (size_t i = parts.size(); i > 0; --i) {
    operands.push_back(stable_value(parts[i - 1], later_calls));
    registers.push_back(operands.back().reg);
  }
  mark(expr);
  emit(Op::kConcatenate, target, registers.size());
  emit_registers(registers);
  for (size_t i = operands.size(); i > 0; --i) release(operands[i - 1]);
}

void Compiler::convert_into(const Expr* expr, Register target) {
  const Expr* inner = expr->left;
  const Conversion conversion = expr->conversion();
  if (conversion == Conversion::kRetype) return into(inner, target);
  const Operand operand = value(inner);
  mark(expr);
  switch (conversion) {
    case Conversion::kToText:
    case Conversion::kBox:
      emit(conversion == Conversion::kBox ? Op::kBox : Op::kToText, target, operand.reg,
           index_in(program_.types, inner->type, "types"));
      break;
    case Conversion::kUnbox:
      emit(Op::kUnbox, target, operand.reg, index_in(program_.types, expr->type, "types"));
      break;
    default:
      emit(conversion_operation(conversion), target, operand.reg);
      break;
  }
  release(operand);
}

}  // namespace krz
