// Classes of the script: the code that fills new instances, and calls and properties of instances.
#include "language/compiler.h"

namespace krz {

void Compiler::declare_code(const Routine& routine) {
  RoutineCode& code = program_.routines[routine.index + 1];
  code.result = storage_of(routine.result.kind);
  if (routine.self != nullptr) code.parameters.push_back(Storage::kObject);
  for (const RoutineParameter& parameter : routine.parameters)
    code.parameters.push_back(parameter.variable.by_ref ? Storage::kNumber
                                                        : storage_of(parameter.variable.type.kind));
}

/// The first value of a property or of a Static: what is written, or an empty array.
void Compiler::make_field_value(const DimStmt& field, Register target) {
  if (field.initial != nullptr) return into(field.initial, target);
  make_array(field, target);
}

void Compiler::make_first_value(const DimStmt& statement) {
  const Variable& variable = *statement.variable;
  if (lies_in_register(variable)) return make_field_value(statement, variable.reg);
  const Operand first = allocate(storage_of(variable.type.kind));
  make_field_value(statement, first.reg);
  store_variable(variable, first);
  release(first);
}

void Compiler::compile_class(const ClassDecl& owner) {
  for (const Routine* method = owner.methods; method != nullptr; method = method->next)
    compile_routine(*method);
  if (owner.info->initialiser != owner.initialiser.index + 1) return;

  code_ = &program_.routines[owner.info->initialiser];
  routine_ = &owner.initialiser;
  begin_routine(names_.text(owner.name));
  place_variable(*owner.initialiser.self);
  const Register self = owner.initialiser.self->reg;
  const ScriptClass* above = owner.info->script_superclass;
  if (above != nullptr && above->initialiser != 0) initialise(*above, self);
  for (const ClassField* field = owner.fields; field != nullptr; field = field->next) {
    const DimStmt& statement = *field->declaration;
    const Type& type = statement.variable->type;
    if (field->shared || (statement.initial == nullptr && type.kind != Kind::kArray)) continue;
    const Operand first = allocate(storage_of(type.kind));
    make_field_value(statement, first.reg);
    emit(with_storage(Op::kSetFieldNumber, first.storage), first.reg, self,
         statement.variable->reg);
    release(first);
  }
  emit(Op::kReturn);
  finish_routine(owner.position);
}

/// Shared properties get their values before the script's first line.
void Compiler::compile_shared_fields(const ClassDecl& owner) {
  for (const ClassField* field = owner.fields; field != nullptr; field = field->next) {
    const DimStmt& statement = *field->declaration;
    if (!field->shared) continue;
    if (statement.initial != nullptr || statement.variable->type.kind == Kind::kArray)
      make_first_value(statement);
  }
}

/// Runs what gives the properties of an instance their first values.
void Compiler::initialise(const ScriptClass& info, Register made) {
  emit(Op::kCallRoutine, kNoRegister, info.initialiser, 1);
  emit_registers({made});
}

/// `receiver` is that of a constructor; other methods bring their own.
void Compiler::routine_into(const Expr* expr, Register target, Register receiver) {
  Operand object;
  if (expr->left != nullptr) {
    bool must_copy = false;
    for (size_t i = 0; i < expr->arg_count; ++i)
      must_copy = must_copy || expr->args[i]->calls || expr->routine->parameters[i].variable.by_ref;
    object = stable_value(expr->left, must_copy);
    receiver = object.reg;
  }
  Arguments arguments;
  if (receiver != kNoRegister) arguments.registers.push_back(receiver);
  evaluate_arguments(expr, arguments);
  mark(expr, expr->left);
  if (expr->left != nullptr && static_cast<Dispatch>(expr->op) == Dispatch::kVirtual) {
    emit(Op::kCallVirtual, target, expr->routine->method_number, arguments.registers.size());
  } else {
    emit(Op::kCallRoutine, target, expr->routine->index + 1, arguments.registers.size());
  }
  emit_registers(arguments.registers);
  finish_arguments(arguments);
  release(object);
}

void Compiler::field_into(const Expr* expr, Register target) {
  const Operand object = value(expr->left);
  mark(expr, expr->left);
  emit(with_storage(Op::kGetFieldNumber, storage_of(expr->type.kind)), target, object.reg,
       expr->variable->reg);
  release(object);
}

/// A property handed by reference is a copy that is written back, like an element of an array.
Compiler::Operand Compiler::field_address(const Expr* expr, Arguments& arguments) {
  const Storage storage = storage_of(expr->type.kind);
  Place place;
  place.array = stable_value(expr->left, true);
  place.slot = expr->variable->reg;
  arguments.held.push_back(place.array);
  const Operand copy = allocate(storage);
  mark(expr, expr->left);
  emit(with_storage(Op::kGetFieldNumber, storage), copy.reg, place.array.reg, place.slot);
  arguments.written_back.emplace_back(place, copy);
  arguments.held.push_back(copy);
  const Operand address = allocate(Storage::kNumber);
  emit(Op::kAddressOfLocal, address.reg, copy.reg);
  return address;
}

}  // namespace krz
