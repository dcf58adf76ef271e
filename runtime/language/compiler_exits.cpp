// Leaving blocks in other ways than at their end: Exit, Continue, Return, and exceptions.
//
// A Finally block is compiled once. Whoever enters it says in a register where to go on afterwards:
// state 0 falls through, 1 raises the exception again, and each Exit, Continue or Return that
// passes through has a state of its own.
#include "language/compiler.h"

namespace krz {
namespace {

constexpr int32_t kRaiseAgain = 1;
constexpr int32_t kFirstExit = 2;

}  // namespace

/// Goes to a label or out of the routine, through the Finally blocks between here and there.
void Compiler::leave_to(Destination destination) {
  for (size_t i = flows_.size(); i > destination.flow_depth; --i) {
    const Flow& flow = flows_[i - 1];
    if (flow.kind != Flow::Kind::kFinally) continue;
    Finally& finally = finallies_[flow.finally];
    clear_above(flow.level);
    emit_wide(Op::kLoadInteger, finally.state,
              kFirstExit + static_cast<int32_t>(finally.exits.size()));
    if (finally.exits.size() > 30000) return too_much("exits from one Try");
    finally.exits.push_back(destination);
    return emit_jump(Op::kJump, finally.start);
  }
  if (destination.kind == Destination::Kind::kLabel) {
    clear_above(destination.level);
    return emit_jump(Op::kJump, destination.label);
  }
  if (routine_ != nullptr && routine_->function) {
    emit(Op::kReturnValue, result_.reg);
  } else {
    emit(Op::kReturn);
  }
}

void Compiler::compile_leave(const LeaveStmt& statement) {
  if (statement.what == Leaves::kRoutine) return leave_to({Destination::Kind::kReturn, 0, 0, {}});
  for (size_t i = flows_.size(); i > 0; --i) {
    const Flow& flow = flows_[i - 1];
    if (flow.kind == Flow::Kind::kFinally) continue;
    const bool meant = flow.loop == statement.what ||
                       (statement.what == Leaves::kInnermostLoop && flow.kind == Flow::Kind::kLoop);
    if (!meant) continue;
    const Label label = statement.kind == StmtKind::kExit ? flow.leave : flow.again;
    return leave_to({Destination::Kind::kLabel, label, i, flow.level});
  }
}

void Compiler::compile_return(const ReturnStmt& statement) {
  if (statement.value != nullptr) into(statement.value, result_.reg);
  leave_to({Destination::Kind::kReturn, 0, 0, {}});
}

void Compiler::add_handler(size_t begin, size_t end, Operand exception, Operand position,
                           const Level& level) {
  if (begin == end) return;
  Handler handler;
  handler.begin = static_cast<uint32_t>(begin);
  handler.end = static_cast<uint32_t>(end);
  handler.target = static_cast<uint32_t>(here());
  handler.exception = exception.reg;
  handler.position = position.reg;
  handler.string_level = level[static_cast<size_t>(Storage::kString)];
  handler.object_level = level[static_cast<size_t>(Storage::kObject)];
  code_->handlers.push_back(handler);
}

void Compiler::compile_catches(const TryStmt& statement) {
  const Level outer = used_;
  const Operand exception = allocate(Storage::kObject);
  const Operand position = allocate(Storage::kNumber);
  const size_t begin = here();
  const Level level = used_;
  compile_scope(statement.body);
  const size_t end = here();
  const Label done = new_label();
  emit_jump(Op::kJump, done);
  add_handler(begin, end, exception, position, level);
  bool catches_all = false;
  for (const CatchClause* clause = statement.catches; clause != nullptr; clause = clause->next) {
    const Label next = new_label();
    if (clause->class_info != nullptr) {
      const Operand fits = allocate(Storage::kNumber);
      emit(Op::kIsA, fits.reg, exception.reg,
           index_in(program_.classes, clause->class_info, "classes"));
      release(fits);
      emit_jump(Op::kJumpFalse, next, fits.reg);
    } else {
      catches_all = true;
    }
    const Level scope = used_;
    if (clause->variable != nullptr) {
      place_variable(*clause->variable);
      emit(Op::kMoveObject, clause->variable->reg, exception.reg);
    }
    clear(exception.reg, Storage::kObject);
    compile_block(clause->body);
    close_scope(scope);
    emit_jump(Op::kJump, done);
    place(next);
  }
  if (!catches_all) emit(Op::kRethrow, exception.reg, position.reg);
  place(done);
  close_scope(outer);
}

void Compiler::compile_try(const TryStmt& statement) {
  if (!statement.has_finally) return compile_catches(statement);
  const Level outer = used_;
  const Operand exception = allocate(Storage::kObject);
  const Operand position = allocate(Storage::kNumber);
  const Operand state = allocate(Storage::kNumber);
  const Level level = used_;
  const Label start = new_label();
  const size_t index = finallies_.size();
  finallies_.push_back({state.reg, start, {}});
  flows_.push_back({Flow::Kind::kFinally, Leaves::kInnermostLoop, 0, 0, level, index});
  const size_t begin = here();
  if (statement.catches != nullptr) {
    compile_catches(statement);
  } else {
    compile_scope(statement.body);
  }
  const size_t end = here();
  flows_.pop_back();
  emit_wide(Op::kLoadInteger, state.reg, 0);
  emit_jump(Op::kJump, start);
  add_handler(begin, end, exception, position, level);
  emit_wide(Op::kLoadInteger, state.reg, kRaiseAgain);

  place(start);
  compile_scope(statement.finally);
  const Label done = new_label();
  emit_jump(Op::kJumpEqualConstantI, done, state.reg, 0);
  const Label not_raised = new_label();
  emit_jump(Op::kJumpNotEqualConstantI, not_raised, state.reg, static_cast<Register>(kRaiseAgain));
  emit(Op::kRethrow, exception.reg, position.reg);
  place(not_raised);
  const std::vector<Destination> exits = finallies_[index].exits;
  for (size_t i = 0; i < exits.size(); ++i) {
    const Label other = new_label();
    emit_jump(Op::kJumpNotEqualConstantI, other, state.reg,
              static_cast<Register>(kFirstExit + static_cast<int32_t>(i)));
    leave_to(exits[i]);
    place(other);
  }
  place(done);
  close_scope(outer);
}

}  // namespace krz
