// Statements other than loops and exits.
#include "language/compiler.h"

namespace krz {

void Compiler::compile_scope(const Block& block) {
  const Level level = used_;
  compile_block(block);
  close_scope(level);
}

void Compiler::compile_block(const Block& block) {
  for (const Stmt* statement = block.first; statement != nullptr; statement = statement->next)
    compile_statement(statement);
}

void Compiler::compile_statement(const Stmt* statement) {
  switch (statement->kind) {
    case StmtKind::kDim:
      return compile_dim(static_cast<const DimStmt&>(*statement));
    case StmtKind::kReDim:
      return compile_redim(static_cast<const ReDimStmt&>(*statement));
    case StmtKind::kConst:
      return;
    case StmtKind::kAssign:
      return compile_assign(static_cast<const AssignStmt&>(*statement));
    case StmtKind::kExpression:
      return discard(static_cast<const ExpressionStmt&>(*statement).expression);
    case StmtKind::kPrint:
      return compile_print(static_cast<const PrintStmt&>(*statement));
    case StmtKind::kIf:
      return compile_if(static_cast<const IfStmt&>(*statement));
    case StmtKind::kSelect:
      return compile_select(static_cast<const SelectStmt&>(*statement));
    case StmtKind::kFor:
      return compile_for(static_cast<const ForStmt&>(*statement));
    case StmtKind::kForEach:
      return compile_for_each(static_cast<const ForEachStmt&>(*statement));
    case StmtKind::kWhile:
      return compile_while(static_cast<const WhileStmt&>(*statement));
    case StmtKind::kDo:
      return compile_do(static_cast<const DoStmt&>(*statement));
    case StmtKind::kExit:
    case StmtKind::kContinue:
      return compile_leave(static_cast<const LeaveStmt&>(*statement));
    case StmtKind::kReturn:
      return compile_return(static_cast<const ReturnStmt&>(*statement));
    case StmtKind::kTry:
      return compile_try(static_cast<const TryStmt&>(*statement));
    case StmtKind::kRaise: {
      const auto& raise = static_cast<const RaiseStmt&>(*statement);
      const Operand exception = value(raise.exception);
      mark_position(raise.position);
      emit(Op::kRaise, exception.reg);
      return release(exception);
    }
  }
}

std::vector<uint16_t> Compiler::bounds(std::span<Expr* const> exprs, std::vector<Operand>& held) {
  std::vector<uint16_t> registers;
  for (const Expr* bound : exprs) {
    held.push_back(stable_value(bound, true));
    registers.push_back(held.back().reg);
  }
  return registers;
}

void Compiler::place_variable(Variable& variable) {
  variable.reg = allocate(storage_of(variable.type.kind)).reg;
}

void Compiler::make_array(const DimStmt& statement, Register target) {
  const Type& type = statement.variable->type;
  std::vector<Operand> held;
  std::vector<uint16_t> registers = bounds(statement.bounds, held);
  while (registers.size() < type.rank) {
    held.push_back(allocate(Storage::kNumber));
    emit_wide(Op::kLoadInteger, held.back().reg, -1);
    registers.push_back(held.back().reg);
  }
  mark_position(statement.position);
  emit(Op::kNewArray, target, index_in(program_.types, type.element_type(), "types"),
       registers.size());
  emit_registers(registers);
  for (size_t i = held.size(); i > 0; --i) release(held[i - 1]);
}

void Compiler::compile_dim(const DimStmt& statement) {
  if (statement.is_static) return compile_static(statement);
  Variable& variable = *statement.variable;
  if (!variable.global) place_variable(variable);
  if (statement.initial != nullptr || variable.type.kind == Kind::kArray)
    return make_first_value(statement);
  // A local may be met again in a loop, and a session may declare a variable again. A script's
  // global is declared once.
  if (!variable.global) {
    emit(with_storage(Op::kClearNumber, storage_of(variable.type.kind)), variable.reg);
  } else if (variables_apart_) {
    const Operand none = allocate(storage_of(variable.type.kind));
    if (none.storage == Storage::kNumber) emit(Op::kClearNumber, none.reg);
    store_variable(variable, none);
    release(none);
  }
}

/// A Static gets its value when it is reached for the first time.
void Compiler::compile_static(const DimStmt& statement) {
  const Variable& variable = *statement.variable;
  if (statement.initial == nullptr && variable.type.kind != Kind::kArray) return;
  const Label done = new_label();
  const Operand flag = allocate(Storage::kNumber);
  load_variable(*statement.reached, flag.reg);
  emit_jump(Op::kJumpTrue, done, flag.reg);
  emit_wide(Op::kLoadInteger, flag.reg, 1);
  store_variable(*statement.reached, flag);
  make_first_value(statement);
  place(done);
  release(flag);
}

void Compiler::compile_redim(const ReDimStmt& statement) {
  const Operand array = stable_value(statement.array, false);
  std::vector<Operand> held;
  const std::vector<uint16_t> registers = bounds(statement.bounds, held);
  mark(statement.array, statement.array);
  emit(Op::kResize, array.reg, registers.size());
  emit_registers(registers);
  for (size_t i = held.size(); i > 0; --i) release(held[i - 1]);
  release(array);
}

void Compiler::compile_assign(const AssignStmt& statement) {
  if (statement.value == nullptr) return discard(statement.target);
  const Expr* target = statement.target;
  const Level level = used_;
  for (const HeldPart& part : statement.held) {
    place_variable(*part.variable);
    into(part.value, part.variable->reg);
  }
  if (target->is(ExprKind::kVariable) && lies_in_register(*target->variable))
    return into(statement.value, target->variable->reg);
  const Operand source = stable_value(statement.value, target->calls);
  store(target, source);
  release(source);
  close_scope(level);
}

void Compiler::compile_print(const PrintStmt& statement) {
  std::vector<Operand> operands;
  std::vector<uint16_t> pairs;
  bool calls = false;
  for (const Expr* one : statement.values) calls = calls || one->calls;
  for (const Expr* one : statement.values) {
    operands.push_back(stable_value(one, calls));
    pairs.push_back(operands.back().reg);
    pairs.push_back(index_in(program_.types, one->type, "types"));
  }
  emit(Op::kPrint, operands.size());
  emit_registers(pairs);
  for (size_t i = operands.size(); i > 0; --i) release(operands[i - 1]);
}

void Compiler::compile_if(const IfStmt& statement) {
  const Label done = new_label();
  for (const IfStmt* part = &statement; part != nullptr; part = part->otherwise) {
    const Label next = new_label();
    if (part->condition != nullptr) branch(part->condition, false, next);
    compile_scope(part->body);
    if (part->otherwise != nullptr) emit_jump(Op::kJump, done);
    place(next);
  }
  place(done);
}

void Compiler::compile_select(const SelectStmt& statement) {
  const Level level = used_;
  place_variable(*statement.hidden);
  into(statement.subject, statement.hidden->reg);
  const Label done = new_label();
  flows_.push_back({Flow::Kind::kSelect, Leaves::kSelect, done, 0, used_, 0});
  for (const CaseClause* clause = statement.clauses; clause != nullptr; clause = clause->next) {
    const Label body = new_label();
    const Label next = new_label();
    for (const CaseItem& item : clause->items) {
      const Label other = new_label();
      if (item.test == CaseTest::kRange) {
        branch(item.value, false, other);
        branch(item.upper, true, body);
      } else {
        branch(item.value, true, body);
      }
      place(other);
    }
    if (!clause->items.empty()) emit_jump(Op::kJump, next);
    place(body);
    compile_scope(clause->body);
    emit_jump(Op::kJump, done);
    place(next);
  }
  flows_.pop_back();
  place(done);
  close_scope(level);
}

}  // namespace krz
