// What the language offers for every array, and the few functions that no declaration can describe.
#include "language/checker.h"
#include "language/types.h"

namespace krz {
namespace {

struct NamedBuiltin {
  std::string_view name;
  Builtin builtin;
};

constexpr NamedBuiltin kFunctions[] = {
    {"Args", Builtin::kArgs},
    {"Array", Builtin::kArray},
    {"Quit", Builtin::kQuit},
    {"UBound", Builtin::kUBound},
};

constexpr NamedBuiltin kArrayMembers[] = {
    {"Count", Builtin::kCount},      {"LastIndex", Builtin::kLastIndex},
    {"Ubound", Builtin::kLastIndex}, {"Append", Builtin::kAppend},
    {"Add", Builtin::kAppend},       {"Insert", Builtin::kInsert},
    {"Remove", Builtin::kRemoveAt},  {"RemoveAt", Builtin::kRemoveAt},
    {"Pop", Builtin::kPop},          {"IndexOf", Builtin::kIndexOf},
};

}  // namespace

Builtin Checker::find_builtin(NameId name) const {
  const std::string_view word = names_.text(name);
  for (const NamedBuiltin& one : kFunctions) {
    if (equal_names(one.name, word)) return one.builtin;
  }
  return Builtin::kNone;
}

bool Checker::check_count(const Expr* expr, size_t least, size_t most, std::string_view usage) {
  if (expr->arg_count >= least && expr->arg_count <= most) return true;
  report(expr, "this is written " + std::string(usage));
  return false;
}

/// `expr` is list.name with `arguments`, and list is checked.
Expr* Checker::check_array_member(Expr* expr, std::span<Expr*> arguments) {
  Expr* array = expr->left;
  const Type element = array->type.element_type();
  const std::string_view word = names_.text(expr->name);
  Builtin builtin = Builtin::kNone;
  for (const NamedBuiltin& one : kArrayMembers) {
    if (equal_names(one.name, word)) builtin = one.builtin;
  }
  if (builtin == Builtin::kNone) return unknown_member(expr, array->type);
  const bool changes = builtin == Builtin::kAppend || builtin == Builtin::kInsert ||
                       builtin == Builtin::kRemoveAt || builtin == Builtin::kPop;
  if (array->type.rank > 1 && (changes || builtin == Builtin::kIndexOf)) {
    report(expr, "only an array of one dimension has “" + std::string(word) + "”");
    return make_error(expr);
  }
  if (!check_arguments(arguments)) return make_error(expr);
  expr->args = arguments.data();
  expr->arg_count = static_cast<uint16_t>(arguments.size());
  expr->kind = ExprKind::kBuiltin;
  expr->op = static_cast<uint8_t>(builtin);
  absorb(expr, array);
  for (const Expr* argument : arguments) absorb(expr, argument);

  const Type integer = simple_type(Kind::kInteger);
  bool fits = true;
  switch (builtin) {
    case Builtin::kAppend:
      fits = check_count(expr, 1, 1, "list.Append(value)");
      if (fits) arguments[0] = convert(arguments[0], element, "the value");
      break;
    case Builtin::kInsert:
      fits = check_count(expr, 2, 2, "list.Insert(index, value)");
      if (fits) {
        arguments[0] = convert(arguments[0], integer, "the index");
        arguments[1] = convert(arguments[1], element, "the value");
      }
      break;
    case Builtin::kRemoveAt:
      fits = check_count(expr, 1, 1, "list.RemoveAt(index)");
      if (fits) arguments[0] = convert(arguments[0], integer, "the index");
      break;
    case Builtin::kIndexOf:
      fits = check_count(expr, 1, 1, "list.IndexOf(value)");
      if (fits) arguments[0] = convert(arguments[0], element, "the value");
      expr->type = integer;
      break;
    case Builtin::kPop:
      fits = check_count(expr, 0, 0, "list.Pop");
      expr->type = element;
      break;
    default:
      fits = check_count(expr, 0, 0, "list." + std::string(word));
      expr->type = integer;
      break;
  }
  for (const Expr* argument : arguments) fits = fits && !argument->is(ExprKind::kError);
  return fits ? expr : make_error(expr);
}

Expr* Checker::check_array_literal(Expr* call) {
  const std::span<Expr*> values = call->arguments();
  if (!check_count(call, 1, SIZE_MAX, "Array(value, …)")) return make_error(call);
  if (!check_arguments(values)) return make_error(call);
  Type element = values[0]->type;
  for (const Expr* value : values) {
    // The widest number holds them all.
    if (value->type.is_number() && element.is_number() && value->type.kind > element.kind)
      element = value->type;
  }
  // Nothing but a Variant holds what differs.
  for (const Expr* value : values) {
    if (conversion_cost(value, element) < 0 && value->type.kind != Kind::kVoid)
      element = simple_type(Kind::kVariant);
  }
  const bool storable = element.kind != Kind::kNil && element.kind != Kind::kArray;
  if (!storable) {
    report(values[0]->begin, "the elements of an array cannot be " + type_text(element));
    return make_error(call);
  }
  for (Expr*& value : values) {
    value = convert(value, element, "this element");
    if (value->is(ExprKind::kError)) return make_error(call);
  }
  call->type = {Kind::kArray, element.kind, 1, element.class_info};
  return call;
}

Expr* Checker::check_builtin_call(Expr* call, Builtin builtin) {
  call->kind = ExprKind::kBuiltin;
  call->op = static_cast<uint8_t>(builtin);
  call->left = nullptr;
  if (builtin == Builtin::kArray) {
    Expr* result = check_array_literal(call);
    for (const Expr* value : result->arguments()) absorb(result, value);
    return result;
  }
  const std::span<Expr*> arguments = call->arguments();
  if (!check_arguments(arguments)) return make_error(call);
  for (const Expr* argument : arguments) absorb(call, argument);
  const Type integer = simple_type(Kind::kInteger);
  if (builtin == Builtin::kQuit) {
    if (!check_count(call, 0, 1, "Quit or Quit(status)")) return make_error(call);
    if (!arguments.empty()) arguments[0] = convert(arguments[0], integer, "the exit status");
    return call;
  }
  if (builtin == Builtin::kArgs) {
    call->type = {Kind::kArray, Kind::kString, 1, nullptr};
    return call;
  }
  // UBound
  if (!check_count(call, 1, 2, "UBound(list) or UBound(list, dimension)")) return make_error(call);
  if (arguments[0]->type.kind != Kind::kArray) {
    report(arguments[0]->begin, "UBound needs an array, not " + a_type(arguments[0]->type));
    return make_error(call);
  }
  if (arguments.size() == 2) arguments[1] = convert(arguments[1], integer, "the dimension");
  call->type = integer;
  return call;
}

}  // namespace krz
