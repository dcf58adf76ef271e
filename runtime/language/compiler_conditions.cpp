// Conditions: jumps instead of Booleans wherever only a jump is wanted.
#include "language/compiler.h"

namespace krz {
namespace {

bool fits_in_16_bits(const Expr* expr) {
  return expr->is(ExprKind::kLiteral) && expr->literal.integer >= INT16_MIN &&
         expr->literal.integer <= INT16_MAX;
}

Operator opposite(Operator op) {
  switch (op) {
    case Operator::kEqual:
      return Operator::kNotEqual;
    case Operator::kNotEqual:
      return Operator::kEqual;
    case Operator::kLess:
      return Operator::kGreaterEqual;
    case Operator::kLessEqual:
      return Operator::kGreater;
    case Operator::kGreater:
      return Operator::kLessEqual;
    default:
      return Operator::kLess;
  }
}

/// The comparison with its sides exchanged.
Operator mirrored(Operator op) {
  switch (op) {
    case Operator::kLess:
      return Operator::kGreater;
    case Operator::kLessEqual:
      return Operator::kGreaterEqual;
    case Operator::kGreater:
      return Operator::kLess;
    case Operator::kGreaterEqual:
      return Operator::kLessEqual;
    default:
      return op;
  }
}

Op constant_jump(Operator op) {
  switch (op) {
    case Operator::kEqual:
      return Op::kJumpEqualConstantI;
    case Operator::kNotEqual:
      return Op::kJumpNotEqualConstantI;
    case Operator::kLess:
      return Op::kJumpLessConstantI;
    case Operator::kLessEqual:
      return Op::kJumpLessEqualConstantI;
    case Operator::kGreater:
      return Op::kJumpGreaterConstantI;
    default:
      return Op::kJumpGreaterEqualConstantI;
  }
}

bool is_comparison(const Expr* expr) {
  return expr->is(ExprKind::kBinary) && expr->operator_kind() >= Operator::kEqual &&
         expr->operator_kind() <= Operator::kGreaterEqual;
}

bool is_nil(const Expr* expr) {
  return expr->type.kind == Kind::kNil && expr->is(ExprKind::kLiteral);
}

}  // namespace

/// Jumps to the label when the condition is `when`, else goes on.
void Compiler::branch(const Expr* condition, bool when, Label label) {
  if (condition->is(ExprKind::kUnary)) return branch(condition->left, !when, label);
  if (condition->is(ExprKind::kBinary)) {
    const Operator op = condition->operator_kind();
    if (op == Operator::kAnd || op == Operator::kOr) {
      const bool decides = op == Operator::kOr;  // the outcome of the left side that settles it
      if (decides == when) {
        branch(condition->left, when, label);
        return branch(condition->right, when, label);
      }
      const Label past = new_label();
      branch(condition->left, decides, past);
      branch(condition->right, when, label);
      return place(past);
    }
    if (branch_on_comparison(condition, when, label)) return;
  }
  const Operand operand = value(condition);
  release(operand);
  emit_jump(when ? Op::kJumpTrue : Op::kJumpFalse, label, operand.reg);
}

bool Compiler::branch_on_comparison(const Expr* condition, bool when, Label label) {
  if (!is_comparison(condition)) return false;
  const Expr* left = condition->left;
  const Expr* right = condition->right;
  Operator op = condition->operator_kind();
  const Kind kind = left->type.kind;
  if (is_nil(left) || is_nil(right)) {
    const Expr* object = is_nil(left) ? right : left;
    // Only a variable: a temporary has to be let go of between the test and the jump.
    if (!object->is(ExprKind::kVariable) || !lies_in_register(*object->variable)) return false;
    const bool nil = (op == Operator::kEqual) == when;
    emit_jump(nil ? Op::kJumpNil : Op::kJumpNotNil, label, object->variable->reg);
    return true;
  }
  if (kind == Kind::kInteger)
    return branch_on_integers(when ? op : opposite(op), left, right, label);
  if (kind != Kind::kDouble) return false;

  // A comparison with a number that is none is false, so its opposite is not the opposite
  // comparison.
  const Operand a = stable_value(left, right->calls);
  const Operand b = value(right);
  Register first = a.reg;
  Register second = b.reg;
  if (op == Operator::kGreater || op == Operator::kGreaterEqual) {
    std::swap(first, second);
    op = mirrored(op);
  }
  Op jump = Op::kJumpEqualD;
  switch (op) {
    case Operator::kEqual:
      jump = when ? Op::kJumpEqualD : Op::kJumpNotEqualD;
      break;
    case Operator::kNotEqual:
      jump = when ? Op::kJumpNotEqualD : Op::kJumpEqualD;
      break;
    case Operator::kLess:
      jump = when ? Op::kJumpLessD : Op::kJumpNotLessD;
      break;
    default:
      jump = when ? Op::kJumpLessEqualD : Op::kJumpNotLessEqualD;
      break;
  }
  release(b);
  release(a);
  emit_jump(jump, label, first, second);
  return true;
}

bool Compiler::branch_on_integers(Operator op, const Expr* left, const Expr* right, Label label) {
  if (fits_in_16_bits(left)) {
    std::swap(left, right);
    op = mirrored(op);
  }
  if (fits_in_16_bits(right)) {
    const Operand a = value(left);
    release(a);
    emit_jump(constant_jump(op), label, a.reg, static_cast<uint16_t>(right->literal.integer));
    return true;
  }
  const Operand a = stable_value(left, right->calls);
  const Operand b = value(right);
  release(b);
  release(a);
  Register first = a.reg;
  Register second = b.reg;
  if (op == Operator::kGreater || op == Operator::kGreaterEqual) {
    std::swap(first, second);
    op = mirrored(op);
  }
  Op jump = Op::kJumpEqualI;
  if (op == Operator::kNotEqual) jump = Op::kJumpNotEqualI;
  if (op == Operator::kLess) jump = Op::kJumpLessI;
  if (op == Operator::kLessEqual) jump = Op::kJumpLessEqualI;
  emit_jump(jump, label, first, second);
  return true;
}

/// A Boolean operator's outcome as a value.
void Compiler::condition_into(const Expr* expr, Register target) {
  if (is_comparison(expr)) return comparison(expr, target);
  if (expr->is(ExprKind::kUnary)) {
    const Operand operand = value(expr->left);
    emit(Op::kNotB, target, operand.reg);
    return release(operand);
  }
  if (expr->operator_kind() == Operator::kXor) {
    const Operand left = stable_value(expr->left, expr->right->calls);
    const Operand right = value(expr->right);
    emit(Op::kNotEqualB, target, left.reg, right.reg);
    release(right);
    return release(left);
  }
  const Label no = new_label();
  const Label done = new_label();
  branch(expr, false, no);
  emit_wide(Op::kLoadInteger, target, 1);
  emit_jump(Op::kJump, done);
  place(no);
  emit_wide(Op::kLoadInteger, target, 0);
  place(done);
}

}  // namespace krz
