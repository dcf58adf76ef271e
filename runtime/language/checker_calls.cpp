// Which of several declarations a call means, and whether its arguments fit.
#include <algorithm>

#include "language/checker.h"
#include "language/types.h"

namespace krz {
namespace {

constexpr int kImpossible = -1;

bool is_place(const Expr* expr) {
  if (expr->is(ExprKind::kVariable)) return !expr->variable->fixed;
  return expr->is(ExprKind::kIndex) || expr->is(ExprKind::kField);
}

std::string plural(size_t count, std::string_view word) {
  return std::to_string(count) + " " + std::string(word) + (count == 1 ? "" : "s");
}

}  // namespace

size_t Checker::Callable::count() const {
  return routine != nullptr ? routine->parameters.size() : method->signature.parameters.size();
}

size_t Checker::Callable::required() const {
  if (routine == nullptr) return method->signature.required_count();
  size_t result = 0;
  for (const RoutineParameter& parameter : routine->parameters)
    result += parameter.optional ? 0 : 1;
  return result;
}

Type Checker::Callable::type(size_t parameter) const {
  return routine != nullptr ? routine->parameters[parameter].variable.type
                            : method->signature.parameters[parameter].type;
}

bool Checker::Callable::by_ref(size_t parameter) const {
  return routine != nullptr ? routine->parameters[parameter].variable.by_ref
                            : method->signature.parameters[parameter].by_ref;
}

std::string_view Checker::Callable::parameter_name(size_t parameter, const NameTable& names) const {
  if (routine == nullptr) return method->signature.parameters[parameter].name;
  const NameId name = routine->parameters[parameter].variable.name;
  return name == kNoName ? std::string_view() : names.text(name);
}

std::string Checker::declaration_text(const Callable& callable) const {
  if (callable.routine == nullptr) return std::string(callable.method->declaration);
  const Routine& routine = *callable.routine;
  return std::string(diagnostics_.source().slice(routine.header_begin, routine.header_end));
}

std::string Checker::callable_name(const Callable& callable) const {
  if (const Routine* routine = callable.routine)
    return (routine->owner != nullptr ? text(routine->owner->name) + "." : "") +
           text(routine->name);
  const MethodInfo& method = *callable.method;
  return method.owner != nullptr ? method.owner->name() + "." + method.name : method.name;
}

/// Checks the arguments by themselves. False when one of them is in error.
bool Checker::check_arguments(std::span<Expr*> arguments) {
  bool good = true;
  for (Expr*& argument : arguments) {
    argument = check(argument);
    good = good && !argument->is(ExprKind::kError);
  }
  return good;
}

int Checker::argument_cost(const Callable& callable, size_t index, const Expr* argument) const {
  const Type type = callable.type(index);
  if (!callable.by_ref(index)) return conversion_cost(argument, type);
  return is_place(argument) && argument->type == type ? 0 : kImpossible;
}

int Checker::call_cost(const Callable& callable, std::span<Expr*> arguments) const {
  if (arguments.size() > callable.count() || arguments.size() < callable.required())
    return kImpossible;
  int total = 0;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const int cost = argument_cost(callable, i, arguments[i]);
    if (cost == kImpossible) return kImpossible;
    total += cost;
  }
  return total;
}

/// The cheapest candidate; of equal ones that with the fewest defaults, then the first declared.
Expr* Checker::resolve_call(Expr* expr, std::span<const Callable> candidates,
                            std::span<Expr*> arguments) {
  if (!check_arguments(arguments)) return make_error(expr);
  const Callable* best = nullptr;
  int best_cost = 0;
  for (const Callable& candidate : candidates) {
    const int cost = call_cost(candidate, arguments);
    if (cost == kImpossible) continue;
    if (best == nullptr || cost < best_cost ||
        (cost == best_cost && candidate.count() < best->count())) {
      best = &candidate;
      best_cost = cost;
    }
  }
  if (best == nullptr) {
    report_mismatch(expr, candidates, arguments);
    return make_error(expr);
  }
  return finish_call(expr, *best, arguments);
}

void Checker::report_mismatch(const Expr* expr, std::span<const Callable> candidates,
                              std::span<Expr*> arguments) {
  if (candidates.size() > 1) {
    std::string message = "no “" + callable_name(candidates[0]) + "” takes (";
    for (size_t i = 0; i < arguments.size(); ++i)
      message += (i > 0 ? ", " : "") + type_text(arguments[i]->type);
    message += "); there are: ";
    for (size_t i = 0; i < candidates.size() && i < 6; ++i)
      message += (i > 0 ? "; " : "") + declaration_text(candidates[i]);
    return report(expr, message);
  }
  const Callable& only = candidates[0];
  if (arguments.size() > only.count() || arguments.size() < only.required()) {
    std::string takes;
    if (only.count() == 0) {
      takes = "no arguments";
    } else if (only.required() == only.count()) {
      takes = plural(only.count(), "argument");
    } else {
      takes = std::to_string(only.required()) + " to " + plural(only.count(), "argument");
    }
    return report(expr, callable_name(only) + " takes " + takes + ", not " +
                            std::to_string(arguments.size()) + ": " + declaration_text(only));
  }
  for (size_t i = 0; i < arguments.size(); ++i) {
    Expr* argument = arguments[i];
    if (argument_cost(only, i, argument) != kImpossible) continue;
    const std::string name = "the argument “" + std::string(only.parameter_name(i, names_)) + "”";
    const Type type = only.type(i);
    if (type.kind == Kind::kVoid) return;  // The declaration is in error and reported.
    if (!only.by_ref(i)) {
      convert(argument, type, name);
    } else if (!is_place(argument)) {
      report(argument->begin, name + " is ByRef and needs a variable or an element of an array");
    } else {
      report(argument->begin, name + " is ByRef and needs a variable of type " + type_text(type) +
                                  ", not " + type_text(argument->type));
    }
    return;
  }
}

Expr* Checker::default_argument(const Callable& callable, size_t index, SourceOffset position) {
  Expr* value = arena_.make<Expr>();
  value->kind = ExprKind::kLiteral;
  if (callable.routine != nullptr) {
    const RoutineParameter& parameter = callable.routine->parameters[index];
    if (parameter.default_value != nullptr) {
      *value = *parameter.default_value;
    } else {
      value->type = parameter.variable.type;
    }
  } else {
    const Parameter& parameter = callable.method->signature.parameters[index];
    value->type = parameter.type;
    if (parameter.type.kind == Kind::kString) {
      const std::string_view kept = arena_.copy_text(string_utf8(parameter.default_value.string));
      value->text = kept.data();
      value->text_length = kept.size();
    } else if (!parameter.type.is_reference()) {
      value->literal = parameter.default_value;
    }
  }
  value->position = value->begin = value->end = position;
  return value;
}

Expr* Checker::finish_call(Expr* expr, const Callable& chosen, std::span<Expr*> arguments) {
  std::vector<Expr*> complete(arguments.begin(), arguments.end());
  bool calls = chosen.routine != nullptr;
  for (size_t i = 0; i < arguments.size(); ++i) {
    if (chosen.by_ref(i)) {
      calls = true;
    } else {
      complete[i] = convert(arguments[i], chosen.type(i), "the argument");
    }
    calls = calls || complete[i]->calls;
  }
  for (size_t i = arguments.size(); i < chosen.count(); ++i)
    complete.push_back(default_argument(chosen, i, expr->end));
  const std::span<Expr*> kept = arena_.copy<Expr*>(complete);
  expr->args = kept.data();
  expr->arg_count = static_cast<uint16_t>(kept.size());
  expr->calls = expr->calls || calls;
  if (chosen.routine != nullptr) {
    expr->kind = ExprKind::kRoutine;
    expr->routine = chosen.routine;
    expr->type = chosen.routine->result;
  } else {
    expr->kind = ExprKind::kMethod;
    expr->method = chosen.method;
    expr->type = chosen.method->signature.result;
  }
  return expr;
}

Expr* Checker::resolve_methods(Expr* expr, std::span<const MethodInfo* const> methods,
                               std::span<Expr*> arguments) {
  std::vector<Callable> candidates;
  candidates.reserve(methods.size());
  for (const MethodInfo* method : methods) candidates.push_back({method, nullptr});
  return resolve_call(expr, candidates, arguments);
}

Expr* Checker::resolve_routines(Expr* expr, Routine* first, std::span<Expr*> arguments) {
  std::vector<Callable> candidates;
  for (Routine* routine = first; routine != nullptr; routine = routine->next_overload)
    candidates.push_back({nullptr, routine});
  expr->left = nullptr;
  return resolve_call(expr, candidates, arguments);
}

}  // namespace krz
