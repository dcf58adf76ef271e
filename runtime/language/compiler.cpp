// The compiler's footing: routines, registers, labels and instructions.
#include "language/compiler.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace krz {
namespace {

constexpr size_t kMostRegisters = 60000;
constexpr size_t kMostEntries = 65000;

bool is_wide_jump(Op op) { return op >= Op::kJump && op <= Op::kJumpNotNil; }

}  // namespace

Compiler::Compiler(Program& program, DiagnosticList& diagnostics, const NameTable& names)
    : program_(program), diagnostics_(diagnostics), names_(names) {}

void Compiler::compile(const ScriptTree& tree) {
  declare_routines(tree);
  code_ = &program_.routines[0];
  begin_routine({});
  place_globals(tree.body);
  for (Variable* variable : tree.hidden_globals) place_variable(*variable);
  compile_main(tree);
  compile_routines(tree);
}

void Compiler::compile_piece(const ScriptTree& tree, SourceOffset start) {
  start_ = start;
  declare_routines(tree);
  variables_apart_ = true;
  for (Stmt* statement = tree.body.first; statement != nullptr; statement = statement->next) {
    if (statement->kind == StmtKind::kDim)
      add_variable(*static_cast<DimStmt*>(statement)->variable);
  }
  for (Variable* variable : tree.hidden_globals) add_variable(*variable);
  code_ = &program_.routines[1];
  *code_ = {};
  begin_routine({});
  compile_main(tree);
  compile_routines(tree);
}

/// Adds a variable to the frame that holds those of the module.
void Compiler::add_variable(Variable& variable) {
  if (std::exchange(variable.placed, true)) return;
  RoutineCode& frame = program_.routines[0];
  if (frame.register_count >= kMostRegisters) return too_much("variables");
  variable.reg = frame.register_count++;
  const Storage storage = storage_of(variable.type.kind);
  if (storage == Storage::kString) frame.string_registers.push_back(variable.reg);
  if (storage == Storage::kObject) frame.object_registers.push_back(variable.reg);
}

/// Callers need to know parameters and results before the routines themselves are compiled.
void Compiler::declare_routines(const ScriptTree& tree) {
  program_.routines.resize(size_t{tree.routine_count} + 1);
  for (const Routine* routine = tree.routines; routine != nullptr; routine = routine->next) {
    declare_code(*routine);
  }
  for (const ClassDecl* one = tree.classes; one != nullptr; one = one->next) {
    declare_code(one->initialiser);
    for (const Routine* method = one->methods; method != nullptr; method = method->next)
      declare_code(*method);
  }
  if (program_.routines.size() > kMostEntries) too_much("routines");
}

void Compiler::compile_routines(const ScriptTree& tree) {
  for (const Routine* routine = tree.routines; routine != nullptr; routine = routine->next)
    compile_routine(*routine);
  for (const ClassDecl* one = tree.classes; one != nullptr; one = one->next) compile_class(*one);
}

void Compiler::begin_routine(std::string_view name) {
  code_->name = name;
  for (auto& list : registers_) list.clear();
  used_ = {};
  labels_.clear();
  jumps_.clear();
  flows_.clear();
  finallies_.clear();
  result_ = {};
}

void Compiler::compile_main(const ScriptTree& tree) {
  routine_ = nullptr;
  for (const ClassDecl* one = tree.classes; one != nullptr; one = one->next)
    compile_shared_fields(*one);
  compile_block(tree.body);
  emit(Op::kReturn);
  finish_routine(start_);
}

/// The module's own variables take the first registers of its frame, where Subs and Functions find
/// them.
void Compiler::place_globals(const Block& body) {
  for (Stmt* statement = body.first; statement != nullptr; statement = statement->next) {
    if (statement->kind != StmtKind::kDim) continue;
    if (static_cast<DimStmt*>(statement)->is_static) continue;  // hidden
    Variable* variable = static_cast<DimStmt*>(statement)->variable;
    variable->reg = allocate(storage_of(variable->type.kind)).reg;
  }
}

void Compiler::compile_routine(const Routine& routine) {
  code_ = &program_.routines[routine.index + 1];
  routine_ = &routine;
  begin_routine(names_.text(routine.name));
  const size_t receivers = routine.self != nullptr ? 1 : 0;
  if (routine.self != nullptr) place_variable(*routine.self);
  for (size_t i = 0; i < routine.parameters.size(); ++i)
    routine.parameters[i].variable.reg = allocate(code_->parameters[i + receivers]).reg;
  if (routine.function) result_ = allocate(code_->result);
  if (routine.super_call != nullptr) discard(routine.super_call);
  compile_block(routine.body);
  if (routine.function) {
    emit(Op::kReturnValue, result_.reg);
  } else {
    emit(Op::kReturn);
  }
  finish_routine(routine.position);
}

void Compiler::finish_routine(SourceOffset position) {
  for (const uint32_t jump : jumps_) {
    Instruction& instruction = code_->code[jump];
    const bool wide = is_wide_jump(instruction.op);
    const auto label = wide ? static_cast<size_t>(instruction.wide()) : instruction.c;
    const int64_t distance = labels_[label] - (int64_t{jump} + 1);
    if (wide) {
      instruction.set_wide(static_cast<int32_t>(distance));
    } else if (distance < std::numeric_limits<int16_t>::min() ||
               distance > std::numeric_limits<int16_t>::max()) {
      diagnostics_.add(
          position, "a loop or condition in this routine is too long; make a Sub of a part of it");
    } else {
      instruction.c = static_cast<uint16_t>(distance);
    }
  }
  code_->string_registers = registers_[static_cast<size_t>(Storage::kString)];
  code_->object_registers = registers_[static_cast<size_t>(Storage::kObject)];
}

void Compiler::too_much(std::string_view what) {
  if (!overflowed_)
    diagnostics_.add(routine_ != nullptr ? routine_->position : start_,
                     "this script has too many " + std::string(what));
  overflowed_ = true;
}

Compiler::Operand Compiler::allocate(Storage storage) {
  const auto number = static_cast<size_t>(storage);
  std::vector<Register>& list = registers_[number];
  if (used_[number] == list.size()) {
    if (code_->register_count >= kMostRegisters) {
      too_much("variables in one routine");
      return {list.empty() ? Register{0} : list.back(), storage, true};
    }
    list.push_back(code_->register_count++);
  }
  return {list[used_[number]++], storage, true};
}

/// Gives a temporary back: the last one allocated of its storage.
void Compiler::release(Operand operand) {
  if (!operand.temporary || overflowed_) return;
  clear(operand.reg, operand.storage);
  --used_[static_cast<size_t>(operand.storage)];
}

void Compiler::clear(Register reg, Storage storage) {
  if (storage == Storage::kString) emit(Op::kClearString, reg);
  if (storage == Storage::kObject) emit(Op::kClearObject, reg);
}

/// Lets go of what the registers hold that were taken since `level`, without giving them back: for
/// a jump out.
void Compiler::clear_above(const Level& level) {
  for (const Storage storage : {Storage::kString, Storage::kObject}) {
    const auto number = static_cast<size_t>(storage);
    for (size_t i = used_[number]; i > level[number]; --i)
      clear(registers_[number][i - 1], storage);
  }
}

void Compiler::close_scope(const Level& level) {
  clear_above(level);
  used_ = level;
}

Compiler::Label Compiler::new_label() {
  if (labels_.size() >= kMostEntries) {
    too_much("branches in one routine");
    return 0;
  }
  labels_.push_back(-1);
  return static_cast<Label>(labels_.size() - 1);
}

void Compiler::place(Label label) { labels_[label] = static_cast<int64_t>(here()); }

size_t Compiler::emit(Op op, size_t a, size_t b, size_t c) {
  code_->code.push_back(
      {op, static_cast<uint16_t>(a), static_cast<uint16_t>(b), static_cast<uint16_t>(c)});
  return here() - 1;
}

void Compiler::emit_wide(Op op, Register a, int32_t value) {
  code_->code[emit(op, a)].set_wide(value);
}

void Compiler::emit_jump(Op op, Label label, Register a, Register b) {
  jumps_.push_back(static_cast<uint32_t>(here()));
  if (is_wide_jump(op)) {
    emit_wide(op, a, label);
  } else {
    emit(op, a, b, label);
  }
}

void Compiler::emit_registers(const std::vector<uint16_t>& registers) {
  for (size_t i = 0; i < registers.size(); i += 4) {
    Instruction word;
    for (size_t k = 0; k < 4 && i + k < registers.size(); ++k)
      word.set_register_at(k, registers[i + k]);
    code_->code.push_back(word);
  }
}

/// Says where the next instruction comes from.
void Compiler::mark(const Expr* expr, const Expr* receiver) {
  Mark entry{static_cast<uint32_t>(here()), expr->position, 0, 0};
  if (receiver != nullptr) {
    entry.receiver_begin = receiver->begin;
    entry.receiver_end = receiver->end;
  }
  code_->marks.push_back(entry);
}

void Compiler::mark_position(SourceOffset position) {
  code_->marks.push_back({static_cast<uint32_t>(here()), position, 0, 0});
}

Op Compiler::with_storage(Op first, Storage storage) {
  return static_cast<Op>(static_cast<uint16_t>(first) + static_cast<uint16_t>(storage));
}

template <class T>
uint16_t Compiler::index_in(std::vector<T>& table, const T& item, std::string_view what) {
  // Tables are short, and what was used last is what is used again.
  for (size_t i = table.size(); i > 0; --i) {
    if (table[i - 1] == item) return static_cast<uint16_t>(i - 1);
  }
  if (table.size() >= kMostEntries) {
    too_much(what);
    return 0;
  }
  table.push_back(item);
  return static_cast<uint16_t>(table.size() - 1);
}

template uint16_t Compiler::index_in(std::vector<Type>&, const Type&, std::string_view);
template uint16_t Compiler::index_in(std::vector<uint64_t>&, const uint64_t&, std::string_view);
template uint16_t Compiler::index_in(std::vector<const ClassInfo*>&, const ClassInfo* const&,
                                     std::string_view);
template uint16_t Compiler::index_in(std::vector<const MethodInfo*>&, const MethodInfo* const&,
                                     std::string_view);
template uint16_t Compiler::index_in(std::vector<const PropertyInfo*>&, const PropertyInfo* const&,
                                     std::string_view);

}  // namespace krz
