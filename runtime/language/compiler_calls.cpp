// Calls, members, elements, and storing into them.
#include "language/compiler.h"

namespace krz {
namespace {

bool is_by_ref(const Expr* call, size_t index) {
  return call->is(ExprKind::kRoutine) ? call->routine->parameters[index].variable.by_ref
                                      : call->method->signature.parameters[index].by_ref;
}

}  // namespace

/// The address of a variable. An element of an array is handed as a copy, which is written back
/// after the call: the array may be resized meanwhile.
Compiler::Operand Compiler::address_of(const Expr* expr, Arguments& arguments) {
  if (expr->is(ExprKind::kVariable)) {
    const Variable& variable = *expr->variable;
    if (variable.by_ref) return {variable.reg, Storage::kNumber, false};
    const Operand address = allocate(Storage::kNumber);
    emit(lies_in_register(variable) ? Op::kAddressOfLocal : Op::kAddressOfGlobal, address.reg,
         variable.reg);
    return address;
  }
  if (expr->is(ExprKind::kField)) return field_address(expr, arguments);
  const Storage storage = storage_of(expr->type.kind);
  Operand copy;
  if (expr->is(ExprKind::kIndex)) {
    const Place place = element_place(expr, true);
    arguments.held.push_back(place.array);
    arguments.held.push_back(place.index);
    copy = allocate(storage);
    mark(expr, expr->left);
    emit(with_storage(Op::kGetElementNumber, storage), copy.reg, place.array.reg, place.index.reg);
    arguments.written_back.emplace_back(place, copy);
  } else {
    copy = allocate(storage);  // The default value of an optional ByRef parameter.
    into(expr, copy.reg);
  }
  arguments.held.push_back(copy);
  const Operand address = allocate(Storage::kNumber);
  emit(Op::kAddressOfLocal, address.reg, copy.reg);
  return address;
}

void Compiler::evaluate_arguments(const Expr* expr, Arguments& arguments) {
  const std::span<Expr*> exprs = expr->arguments();
  bool replaces_references = false;
  for (size_t i = 0; i < exprs.size(); ++i)
    replaces_references =
        replaces_references || (is_by_ref(expr, i) && exprs[i]->type.is_reference());
  for (size_t i = 0; i < exprs.size(); ++i) {
    Operand operand;
    if (is_by_ref(expr, i)) {
      operand = address_of(exprs[i], arguments);
    } else {
      // What is lent by value must outlive what a ByRef argument may let go of.
      bool must_copy = replaces_references && exprs[i]->type.is_reference();
      for (size_t later = i + 1; later < exprs.size(); ++later)
        must_copy = must_copy || exprs[later]->calls;
      operand = stable_value(exprs[i], must_copy);
    }
    arguments.held.push_back(operand);
    arguments.registers.push_back(operand.reg);
  }
}

void Compiler::finish_arguments(Arguments& arguments) {
  for (const auto& [place, copy] : arguments.written_back) {
    if (place.slot != kNoRegister) {
      emit(with_storage(Op::kSetFieldNumber, copy.storage), copy.reg, place.array.reg, place.slot);
      continue;
    }
    emit(with_storage(Op::kSetElementNumber, copy.storage), copy.reg, place.array.reg,
         place.index.reg);
  }
  for (size_t i = arguments.held.size(); i > 0; --i) release(arguments.held[i - 1]);
}

void Compiler::call_into(const Expr* expr, Register target) {
  if (expr->is(ExprKind::kMethod)) return method_into(expr, target, kNoRegister);
  routine_into(expr, target, kNoRegister);
}

/// `receiver` is that of a constructor; other calls bring their own.
void Compiler::method_into(const Expr* expr, Register target, Register receiver) {
  Operand object;
  if (expr->left != nullptr) {
    bool must_copy = expr->calls;
    for (size_t i = 0; i < expr->arg_count; ++i) must_copy = must_copy || is_by_ref(expr, i);
    object = stable_value(expr->left, must_copy);
    receiver = object.reg;
  }
  Arguments arguments;
  evaluate_arguments(expr, arguments);
  mark(expr, expr->left);
  emit(Op::kCallMethod, target, index_in(program_.methods, expr->method, "methods"), receiver);
  emit_registers(arguments.registers);
  finish_arguments(arguments);
  release(object);
}

void Compiler::new_into(const Expr* expr, Register target) {
  const uint16_t class_index = index_in(program_.classes, expr->class_info, "classes");
  mark(expr);
  const ScriptClass* script_class = as_script_class(expr->class_info);
  const bool plain = script_class == nullptr || script_class->initialiser == 0;
  if (expr->left == nullptr && plain) {
    emit(Op::kNew, target, class_index);
    return;
  }
  // The target may be read by the constructor's arguments.
  const Operand made = allocate(Storage::kObject);
  emit(Op::kNew, made.reg, class_index);
  if (!plain) initialise(*script_class, made.reg);
  if (expr->left != nullptr && expr->left->is(ExprKind::kRoutine)) {
    routine_into(expr->left, kNoRegister, made.reg);
  } else if (expr->left != nullptr) {
    method_into(expr->left, kNoRegister, made.reg);
  }
  emit(Op::kMoveObject, target, made.reg);
  release(made);
}

void Compiler::property_into(const Expr* expr, Register target) {
  const Operand object = value(expr->left);
  mark(expr, expr->left);
  emit(Op::kGetProperty, target, index_in(program_.properties, expr->property, "properties"),
       object.reg);
  release(object);
}

void Compiler::make_array_into(const Expr* expr, Register target) {
  std::vector<Operand> operands;
  std::vector<uint16_t> registers;
  bool calls = false;
  for (const Expr* element : expr->arguments()) calls = calls || element->calls;
  for (const Expr* element : expr->arguments()) {
    operands.push_back(stable_value(element, calls));
    registers.push_back(operands.back().reg);
  }
  mark(expr);
  emit(Op::kMakeArray, target, index_in(program_.types, expr->type.element_type(), "types"),
       registers.size());
  emit_registers(registers);
  for (size_t i = operands.size(); i > 0; --i) release(operands[i - 1]);
}

void Compiler::builtin_into(const Expr* expr, Register target) {
  const std::span<Expr*> exprs = expr->arguments();
  switch (expr->builtin()) {
    case Builtin::kArray:
      return make_array_into(expr, target);
    case Builtin::kArgs:
      emit(Op::kArguments, target);
      return;
    case Builtin::kQuit: {
      const Operand status = exprs.empty() ? Operand{} : value(exprs[0]);
      emit(Op::kQuit, status.reg);
      return release(status);
    }
    default:
      break;
  }
  const bool upper = expr->builtin() == Builtin::kUBound;
  const Expr* array_expr = upper ? exprs[0] : expr->left;
  const std::span<Expr*> rest = upper ? exprs.subspan(1) : exprs;
  bool calls = false;
  for (const Expr* one : rest) calls = calls || one->calls;
  const Operand array = stable_value(array_expr, calls);
  Operand first;
  Operand second;
  if (!rest.empty()) first = stable_value(rest[0], calls);
  if (rest.size() > 1) second = value(rest[1]);
  mark(expr, array_expr);
  switch (expr->builtin()) {
    case Builtin::kUBound:
      emit(Op::kArrayUpper, target, array.reg, first.reg);
      break;
    case Builtin::kLastIndex:
      emit(Op::kArrayUpper, target, array.reg, kNoRegister);
      break;
    case Builtin::kCount:
      emit(Op::kArrayLength, target, array.reg);
      break;
    case Builtin::kAppend:
      emit(Op::kArrayAppend, array.reg, first.reg);
      break;
    case Builtin::kInsert:
      emit(Op::kArrayInsert, array.reg, first.reg, second.reg);
      break;
    case Builtin::kRemoveAt:
      emit(Op::kArrayRemove, array.reg, first.reg);
      break;
    case Builtin::kPop:
      emit(Op::kArrayPop, target, array.reg);
      break;
    default:
      emit(Op::kArrayIndexOf, target, array.reg, first.reg);
      break;
  }
  release(second);
  release(first);
  release(array);
}

/// The array and the index of an element; of several indices, the place they stand for.
Compiler::Place Compiler::element_place(const Expr* expr, bool must_copy) {
  const std::span<Expr*> exprs = expr->arguments();
  bool calls = must_copy;
  for (const Expr* index : exprs) calls = calls || index->calls;
  const Operand array = stable_value(expr->left, calls);
  if (exprs.size() == 1) return {array, stable_value(exprs[0], must_copy)};
  const Operand flat = allocate(Storage::kNumber);
  std::vector<Operand> operands;
  std::vector<uint16_t> registers;
  for (const Expr* index : exprs) {
    operands.push_back(stable_value(index, calls));
    registers.push_back(operands.back().reg);
  }
  mark(expr, expr->left);
  emit(Op::kFlatIndex, flat.reg, array.reg, registers.size());
  emit_registers(registers);
  for (size_t i = operands.size(); i > 0; --i) release(operands[i - 1]);
  return {array, flat};
}

void Compiler::release(const Place& place) {
  release(place.index);
  release(place.array);
}

void Compiler::element_into(const Expr* expr, Register target) {
  const Place place = element_place(expr, false);
  mark(expr, expr->left);
  emit(with_storage(Op::kGetElementNumber, storage_of(expr->type.kind)), target, place.array.reg,
       place.index.reg);
  release(place);
}

void Compiler::store_variable(const Variable& variable, const Operand& source) {
  const Storage storage = storage_of(variable.type.kind);
  if (variable.by_ref) {
    emit(with_storage(Op::kSetThroughNumber, storage), source.reg, variable.reg);
  } else if (lies_in_register(variable)) {
    if (variable.reg != source.reg)
      emit(with_storage(Op::kMoveNumber, storage), variable.reg, source.reg);
  } else {
    emit(with_storage(Op::kSetGlobalNumber, storage), source.reg, variable.reg);
  }
}

void Compiler::store(const Expr* target, const Operand& source) {
  switch (target->kind) {
    case ExprKind::kVariable:
      return store_variable(*target->variable, source);
    case ExprKind::kIndex: {
      const Place place = element_place(target, false);
      mark(target, target->left);
      emit(with_storage(Op::kSetElementNumber, source.storage), source.reg, place.array.reg,
           place.index.reg);
      return release(place);
    }
    case ExprKind::kField: {
      const Operand object = value(target->left);
      mark(target, target->left);
      emit(with_storage(Op::kSetFieldNumber, source.storage), source.reg, object.reg,
           target->variable->reg);
      return release(object);
    }
    case ExprKind::kProperty: {
      const Operand object = value(target->left);
      mark(target, target->left);
      emit(Op::kSetProperty, source.reg,
           index_in(program_.properties, target->property, "properties"), object.reg);
      return release(object);
    }
    default: {
      Operand object;
      if (target->left != nullptr) object = stable_value(target->left, target->calls);
      Arguments arguments;
      evaluate_arguments(target, arguments);
      mark(target, target->left);
      emit(Op::kCallSetter, source.reg, index_in(program_.methods, target->method, "methods"),
           object.reg);
      emit_registers(arguments.registers);
      finish_arguments(arguments);
      return release(object);
    }
  }
}

/// Evaluates for the effect alone.
void Compiler::discard(const Expr* expr) {
  if (expr->type.kind == Kind::kVoid) return into(expr, kNoRegister);
  const Operand result = allocate(storage_of(expr->type.kind));
  into(expr, result.reg);
  release(result);
}

}  // namespace krz
