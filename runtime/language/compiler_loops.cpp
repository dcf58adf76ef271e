// For, For Each, While and Do.
#include "language/compiler.h"

namespace krz {

void Compiler::compile_loop_body(const Block& body, Leaves kind, Label leave, Label again) {
  flows_.push_back({Flow::Kind::kLoop, kind, leave, again, used_, 0});
  compile_scope(body);
  flows_.pop_back();
}

void Compiler::compile_while(const WhileStmt& statement) {
  const Label again = new_label();
  const Label leave = new_label();
  place(again);
  branch(statement.condition, false, leave);
  compile_loop_body(statement.body, Leaves::kWhile, leave, again);
  emit_jump(Op::kLoop, again);
  place(leave);
}

void Compiler::compile_do(const DoStmt& statement) {
  const Label start = new_label();
  const Label again = statement.at_end ? new_label() : start;
  const Label leave = new_label();
  place(start);
  if (statement.condition != nullptr && !statement.at_end)
    branch(statement.condition, statement.until, leave);
  compile_loop_body(statement.body, Leaves::kDo, leave, again);
  if (statement.at_end) {
    place(again);
    branch(statement.condition, statement.until, leave);
  }
  emit_jump(Op::kLoop, start);
  place(leave);
}

/// The step with its sign; DownTo turns it round.
Compiler::Operand Compiler::for_step(const ForStmt& statement, Kind kind) {
  const Operand step = allocate(Storage::kNumber);
  if (statement.step != nullptr) {
    into(statement.step, step.reg);
  } else {
    emit_wide(Op::kLoadInteger, step.reg, 1);
    if (kind == Kind::kDouble || kind == Kind::kSingle)
      emit(Op::kIntegerToDouble, step.reg, step.reg);
    if (kind == Kind::kSingle) emit(Op::kDoubleToSingle, step.reg, step.reg);
  }
  if (!statement.down) return step;
  Op negate = Op::kNegateI;
  if (kind == Kind::kInt64) negate = Op::kNegateL;
  if (kind == Kind::kDouble || kind == Kind::kSingle) negate = Op::kNegateD;
  if (kind == Kind::kSingle) emit(Op::kSingleToDouble, step.reg, step.reg);
  emit(negate, step.reg, step.reg);
  if (kind == Kind::kSingle) emit(Op::kDoubleToSingle, step.reg, step.reg);
  return step;
}

/// Bounds and step are evaluated once, before the first round. A variable that is no register is
/// counted in one and stored before each round.
void Compiler::compile_for(const ForStmt& statement) {
  const Level level = used_;
  if (statement.declared != nullptr) place_variable(*statement.declared);
  const Variable& variable = *statement.target->variable;
  const Kind kind = variable.type.kind;
  const bool direct = lies_in_register(variable);
  Operand counter{variable.reg, Storage::kNumber, false};
  if (!direct) counter = allocate(Storage::kNumber);
  into(statement.first, counter.reg);
  if (!direct) store_variable(variable, counter);
  const Operand last = stable_value(statement.last, true);

  const Label body = new_label();
  const Label again = new_label();
  const Label leave = new_label();
  const bool plain =
      direct && statement.step == nullptr && !statement.down && kind == Kind::kInteger;
  if (plain) {
    emit_jump(Op::kJumpLessI, leave, last.reg, counter.reg);
    place(body);
    compile_loop_body(statement.body, Leaves::kFor, leave, again);
    place(again);
    emit_jump(Op::kForNextI, body, counter.reg, last.reg);
  } else {
    const Operand step = for_step(statement, kind);
    uint16_t width = 0;
    if (kind == Kind::kInt64) width = 1;
    if (kind == Kind::kDouble) width = 2;
    if (kind == Kind::kSingle) width = 3;
    const auto test = static_cast<Op>(static_cast<uint16_t>(Op::kForTestI) + width);
    const auto advance = static_cast<Op>(static_cast<uint16_t>(Op::kForStepI) + width);
    emit(test, counter.reg, last.reg, step.reg);
    emit_jump(Op::kJump, body);
    emit_jump(Op::kJump, leave);
    place(body);
    compile_loop_body(statement.body, Leaves::kFor, leave, again);
    place(again);
    if (!direct) load_variable(variable, counter.reg);
    emit(advance, counter.reg, last.reg, step.reg);
    if (direct) {
      emit_jump(Op::kLoop, body);
    } else {
      const Label more = new_label();
      emit_jump(Op::kJump, more);
      store_variable(variable, counter);
      emit_jump(Op::kJump, leave);
      place(more);
      store_variable(variable, counter);
      emit_jump(Op::kLoop, body);
    }
  }
  place(leave);
  close_scope(level);
}

/// Walks the array that there was at the start, also when the body puts another one in its place;
/// elements that the body appends are walked too.
void Compiler::compile_for_each(const ForEachStmt& statement) {
  const Level level = used_;
  if (statement.declared != nullptr) place_variable(*statement.declared);
  const Variable& variable = *statement.target->variable;
  const Operand array = stable_value(statement.array, true);
  const Operand index = allocate(Storage::kNumber);
  const Operand length = allocate(Storage::kNumber);
  emit_wide(Op::kLoadInteger, index.reg, 0);
  const Label start = new_label();
  const Label again = new_label();
  const Label leave = new_label();
  place(start);
  mark(statement.array, statement.array);
  emit(Op::kArrayLength, length.reg, array.reg);
  emit_jump(Op::kJumpLessEqualI, leave, length.reg, index.reg);
  const Storage storage = storage_of(statement.element->type.kind);
  const Op get = with_storage(Op::kGetElementNumber, storage);
  const bool as_it_is = statement.value->is(ExprKind::kVariable);
  if (as_it_is && lies_in_register(variable)) {
    emit(get, variable.reg, array.reg, index.reg);
  } else {
    const Operand element = allocate(storage);
    statement.element->reg = element.reg;
    emit(get, element.reg, array.reg, index.reg);
    const Operand taken = value(statement.value);
    store_variable(variable, taken);
    release(taken);
    release(element);
  }
  compile_loop_body(statement.body, Leaves::kFor, leave, again);
  place(again);
  emit(Op::kAddImmediateI, index.reg, index.reg, 1);
  emit_jump(Op::kLoop, start);
  place(leave);
  close_scope(level);
}

}  // namespace krz
