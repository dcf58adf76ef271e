// What names, members and calls stand for.
#include "language/checker.h"
#include "language/types.h"

namespace krz {
namespace {

/// What parentheses with an index may follow.
bool is_array_place(const Expr* expr) {
  return expr->type.kind == Kind::kArray &&
         (expr->is(ExprKind::kProperty) || expr->is(ExprKind::kField) ||
          expr->is(ExprKind::kVariable));
}

}  // namespace

Expr* Checker::check(Expr* expr) {
  Expr* result = check_any(expr);
  if (!result->is(ExprKind::kError) && result->type.kind == Kind::kVoid) {
    report(result, "this gives no value");
    return make_error(result);
  }
  return result;
}

Expr* Checker::check_any(Expr* expr) {
  switch (expr->kind) {
    case ExprKind::kName:
      return check_name(expr);
    case ExprKind::kMember:
      return check_member(expr);
    case ExprKind::kCall:
      return check_call(expr);
    case ExprKind::kNew:
      return expr->type.kind == Kind::kVoid ? check_new(expr) : expr;
    case ExprKind::kUnary:
      return expr->type.kind == Kind::kVoid ? check_unary(expr) : expr;
    case ExprKind::kBinary:
      return expr->type.kind == Kind::kVoid ? check_binary(expr) : expr;
    case ExprKind::kIsA:
      return expr->type.kind == Kind::kVoid ? check_is_a(expr) : expr;
    default:
      return expr;
  }
}

Expr* Checker::constant_value(Expr* use, const Expr& literal) {
  const Expr place = *use;
  *use = literal;
  use->position = place.position;
  use->begin = place.begin;
  use->end = place.end;
  return use;
}

Expr* Checker::registered_constant(Expr* use, const ConstantInfo& constant) {
  use->type = constant.type;
  use->left = nullptr;
  if (constant.type.kind == Kind::kString) {
    use->kind = ExprKind::kRegisteredText;
    use->constant = &constant;
  } else {
    use->kind = ExprKind::kLiteral;
    use->literal = constant.value;
  }
  return use;
}

Expr* Checker::check_name(Expr* expr) {
  if (names_own_member(expr->name)) return check_own_member(expr, {}, false);
  const Symbol& found = symbol(expr->name);
  switch (found.kind) {
    case Symbol::Kind::kVariable:
      expr->kind = ExprKind::kVariable;
      expr->variable = found.variable;
      expr->type = found.variable->type;
      return expr;
    case Symbol::Kind::kConstant:
      return constant_value(expr, *found.constant);
    case Symbol::Kind::kRoutine:
      return resolve_routines(expr, found.routine, {});
    case Symbol::Kind::kReported:
      return make_error(expr);
    case Symbol::Kind::kNone:
      break;
  }
  const Builtin builtin = find_builtin(expr->name);
  if (builtin != Builtin::kNone) return check_builtin_call(expr, builtin);
  const auto functions = registry_.find_functions(names_.text(expr->name));
  if (!functions.empty()) return resolve_methods(expr, functions, {});
  return unknown_name(expr, false);
}

Expr* Checker::unknown_name(Expr* expr, bool called) {
  if (names_lost_) return make_error(expr);
  const std::string name = text(expr->name);
  if (is_super(expr)) {
    report(expr, "Super is written with a member: Super.Name");
    return make_error(expr);
  }
  if (find_class(expr->name) != nullptr || kind_named(name) != Kind::kVoid) {
    report(expr, "“" + name + "” is a type, not a value");
    return make_error(expr);
  }
  std::vector<std::string_view> candidates = visible_names();
  const std::vector<std::string> registered = registry_.names();
  candidates.insert(candidates.end(), registered.begin(), registered.end());
  report(expr, "there is no " + std::string(called ? "Sub or Function" : "variable or function") +
                   " “" + name + "”" + suggestion(name, candidates));
  // Said once; later uses of the name in this scope are the same mistake.
  Symbol what;
  what.kind = Symbol::Kind::kReported;
  if (!called) declare(expr->name, expr->position, what);
  return make_error(expr);
}

std::vector<std::string> Checker::member_names(const Type& owner) const {
  if (owner.kind == Kind::kColor) return {"Red", "Green", "Blue"};
  if (owner.kind == Kind::kArray)
    return {"Count",  "LastIndex", "Append", "Add",    "Insert",
            "Remove", "RemoveAt",  "Pop",    "IndexOf"};
  std::vector<std::string> members;
  if (owner.kind == Kind::kObject && owner.class_info != nullptr) {
    members = owner.class_info->member_names();
    add_script_members(owner.class_info, members);
  }
  return members;
}

std::vector<std::string> Checker::members_of_expression(ScriptTree& tree) {
  Expr* expr = static_cast<ExpressionStmt*>(tree.body.first)->expression;
  const ClassInfo* named = class_of_name(expr);
  if (named == nullptr) return member_names(check_any(expr)->type);
  // Through its name, a class gives what belongs to no instance.
  std::vector<std::string> members = member_names({Kind::kObject, Kind::kVoid, 0, named});
  if (as_script_class(named) == nullptr) {
    std::erase_if(members, [named](const std::string& name) {
      return named->find_shared_methods(name).empty() && named->find_constant(name) == nullptr;
    });
  }
  return members;
}

Expr* Checker::unknown_member(Expr* expr, const Type& owner) {
  const std::vector<std::string> members = member_names(owner);
  const std::vector<std::string_view> candidates(members.begin(), members.end());
  const std::string name = text(expr->name);
  report(expr, a_type(owner) + " has no member “" + name + "”" + suggestion(name, candidates));
  return make_error(expr);
}

/// The class that an expression names, null when it is none, or when a variable or routine hides
/// the class.
const ClassInfo* Checker::class_of_name(const Expr* expr) {
  if (!expr->is(ExprKind::kName) || symbol(expr->name).kind != Symbol::Kind::kNone) return nullptr;
  return names_own_member(expr->name) ? nullptr : find_class(expr->name);
}

Expr* Checker::check_member(Expr* expr) {
  if (is_super(expr->left)) return check_super_member(expr, {}, false);
  if (const ClassInfo* owner = class_of_name(expr->left)) {
    // A function of that name, called without arguments, comes before the class.
    if (registry_.find_functions(names_.text(expr->left->name)).empty())
      return check_class_member(expr, *owner, {});
  }
  expr->left = check(expr->left);
  return check_object_member(expr, {}, false);
}

/// Shared methods and constants, through the class's name.
Expr* Checker::check_class_member(Expr* expr, const ClassInfo& owner, std::span<Expr*> arguments) {
  if (const ScriptClass* script_class = as_script_class(&owner)) {
    expr->left = nullptr;
    Expr* found =
        check_script_member(expr, *script_class->declaration, arguments, Dispatch::kFixed);
    if (found != nullptr) return found;
  }
  const std::string_view name = names_.text(expr->name);
  const auto methods = owner.find_shared_methods(name);
  if (!methods.empty()) {
    expr->left = nullptr;
    return resolve_methods(expr, methods, arguments);
  }
  if (const ConstantInfo* constant = owner.find_constant(name)) {
    if (arguments.empty()) return registered_constant(expr, *constant);
    report(expr, "“" + std::string(name) + "” is a constant and takes no arguments");
    return make_error(expr);
  }
  if (!owner.find_methods(name).empty() || owner.find_property(name) != nullptr) {
    report(expr, "“" + std::string(name) + "” belongs to an instance of " + owner.name() +
                     ", not to the class");
    return make_error(expr);
  }
  return unknown_member(expr, Type{Kind::kObject, Kind::kVoid, 0, &owner});
}

/// expr->left is checked.
Expr* Checker::check_object_member(Expr* expr, std::span<Expr*> arguments, bool has_parens) {
  const Type owner = expr->left->type;
  absorb(expr, expr->left);
  if (expr->left->is(ExprKind::kError)) return make_error(expr);
  if (owner.kind == Kind::kArray) return check_array_member(expr, arguments);
  if (owner.kind == Kind::kVariant) {
    report(expr, "a Variant has no members; convert it to its class first: ClassName(value)." +
                     text(expr->name));
    return make_error(expr);
  }
  if (owner.kind == Kind::kColor && arguments.empty()) return check_color_member(expr);
  if (owner.kind != Kind::kObject || owner.class_info == nullptr)
    return unknown_member(expr, owner);

  if (const ScriptClass* script_class = as_script_class(owner.class_info)) {
    Expr* found =
        check_script_member(expr, *script_class->declaration, arguments, Dispatch::kVirtual);
    if (found != nullptr) return found;
  }
  const std::string_view name = names_.text(expr->name);
  const auto methods = owner.class_info->find_methods(name);
  if (!methods.empty()) return resolve_methods(expr, methods, arguments);
  if (const PropertyInfo* property = owner.class_info->find_property(name)) {
    if (has_parens && property->type.kind != Kind::kArray) {
      report(expr, "“" + std::string(name) + "” is a property and takes no arguments");
      return make_error(expr);
    }
    expr->kind = ExprKind::kProperty;
    expr->type = property->type;
    expr->property = property;
    return expr;
  }
  // Shared members are also reached through an instance, which is then not looked at.
  const auto shared = owner.class_info->find_shared_methods(name);
  if (!shared.empty()) {
    expr->left = nullptr;
    return resolve_methods(expr, shared, arguments);
  }
  if (const ConstantInfo* constant = owner.class_info->find_constant(name))
    return registered_constant(expr, *constant);
  return unknown_member(expr, owner);
}

/// Red, Green and Blue of a Color, worked out of its bits: expr->left is checked.
Expr* Checker::check_color_member(Expr* expr) {
  struct Part {
    std::string_view name;
    int32_t mask;
    int32_t divisor;
  };
  static constexpr Part kParts[] = {
      {"Red", 0xFF0000, 0x10000}, {"Green", 0xFF00, 0x100}, {"Blue", 0xFF, 1}};
  for (const Part& part : kParts) {
    if (!equal_names(part.name, names_.text(expr->name))) continue;
    const Type integer = simple_type(Kind::kInteger);
    const auto operate = [&](Expr* left, Operator op, int32_t right) {
      Expr* result = arena_.make<Expr>(*expr);
      result->kind = ExprKind::kBinary;
      result->op = static_cast<uint8_t>(op);
      result->left = left;
      result->right = make_integer(right, expr->position);
      result->type = integer;
      return result;
    };
    Expr* bits = make_conversion(expr->left, Conversion::kRetype, integer);
    return operate(operate(bits, Operator::kAnd, part.mask), Operator::kIntegerDivide,
                   part.divisor);
  }
  return unknown_member(expr, expr->left->type);
}

Expr* Checker::check_index(Expr* array, Expr* call) {
  if (array->is(ExprKind::kError)) return make_error(call);
  if (array->type.kind != Kind::kArray) {
    report(call, "only an array has elements, and this is " + a_type(array->type));
    return make_error(call);
  }
  const std::span<Expr*> indices = call->arguments();
  if (indices.empty()) return array;  // "list()" is the whole array.
  if (indices.size() != array->type.rank) {
    report(call, "this array has " + std::to_string(array->type.rank) + " dimension" +
                     (array->type.rank == 1 ? "" : "s") + ", not " +
                     std::to_string(indices.size()));
    return make_error(call);
  }
  for (Expr*& index : indices) {
    index = convert(check(index), simple_type(Kind::kInteger), "the index");
    if (index->is(ExprKind::kError)) return make_error(call);
    absorb(call, index);
  }
  absorb(call, array);
  call->kind = ExprKind::kIndex;
  call->left = array;
  call->type = array->type.element_type();
  return call;
}

Expr* Checker::check_call(Expr* expr) {
  Expr* callee = expr->left;
  if (callee->is(ExprKind::kName)) return check_named_call(expr);
  if (!callee->is(ExprKind::kMember)) return check_index(check(callee), expr);

  if (is_super(callee->left)) {
    Expr* result = check_super_member(callee, expr->arguments(), expr->arg_count > 0);
    return is_array_place(result) ? check_index(result, expr) : result;
  }
  // A member's own name is where a message about the call points.
  const ClassInfo* owner = class_of_name(callee->left);
  if (owner == nullptr || !registry_.find_functions(names_.text(callee->left->name)).empty())
    callee->left = check(callee->left);
  const bool instance = !callee->left->is(ExprKind::kName);
  const bool takes_index =
      instance && callee->left->type.kind == Kind::kObject &&
      callee->left->type.class_info != nullptr && !expr->arguments().empty() &&
      callee->left->type.class_info->find_methods(names_.text(callee->name)).size() == 1 &&
      callee->left->type.class_info->find_methods(names_.text(callee->name))[0]
              ->signature.result.kind == Kind::kArray &&
      callee->left->type.class_info->find_methods(names_.text(callee->name))[0]
          ->signature.reads_like_property;
  const SourceOffset end = expr->end;
  Expr* result;
  if (takes_index) {
    result = check_object_member(callee, {}, false);
  } else if (instance) {
    result = check_object_member(callee, expr->arguments(), !expr->arguments().empty());
  } else {
    result = check_class_member(callee, *owner, expr->arguments());
  }
  if (takes_index || is_array_place(result)) return check_index(result, expr);
  result->end = end;
  return result;
}

Expr* Checker::check_named_call(Expr* expr) {
  Expr* callee = expr->left;
  const NameId name = callee->name;
  if (names_own_member(name)) {
    Expr* result = check_own_member(callee, expr->arguments(), expr->arg_count > 0);
    if (is_array_place(result)) return check_index(result, expr);
    result->end = expr->end;
    return result;
  }
  const Symbol& found = symbol(name);
  switch (found.kind) {
    case Symbol::Kind::kVariable:
      return check_index(check_name(callee), expr);
    case Symbol::Kind::kRoutine:
      return resolve_routines(expr, found.routine, expr->arguments());
    case Symbol::Kind::kReported:
      check_arguments(expr->arguments());
      return make_error(expr);
    case Symbol::Kind::kConstant:
      report(expr, "“" + text(name) + "” is a constant and takes no arguments");
      return make_error(expr);
    case Symbol::Kind::kNone:
      break;
  }
  const std::string_view word = names_.text(name);
  const Builtin builtin = find_builtin(name);
  if (builtin == Builtin::kArgs && expr->arg_count > 0)
    return check_index(check_name(callee), expr);
  if (builtin != Builtin::kNone) return check_builtin_call(expr, builtin);
  const auto functions = registry_.find_functions(word);
  if (!functions.empty()) {
    expr->left = nullptr;
    return resolve_methods(expr, functions, expr->arguments());
  }
  Type target = simple_type(kind_named(word));
  if (target.kind == Kind::kVoid) {
    target.class_info = find_class(name);
    if (target.class_info == nullptr) {
      check_arguments(expr->arguments());
      unknown_name(callee, true);
      return make_error(expr);
    }
    target.kind = Kind::kObject;
  }
  return check_conversion(expr, target);
}

Expr* Checker::check_conversion(Expr* call, const Type& target) {
  if (!check_count(call, 1, 1, type_text(target) + "(value)")) return make_error(call);
  Expr* value = check(call->arguments()[0]);
  const SourceOffset begin = call->begin;
  const SourceOffset end = call->end;
  Expr* result = convert_freely(value, target);
  if (result != value) {
    result->begin = begin;
    result->end = end;
  }
  return result;
}

Expr* Checker::check_new(Expr* expr) {
  const std::span<Expr*> arguments = expr->arguments();
  const ClassInfo* class_info = resolve_class(expr->name, expr->position);
  if (class_info == nullptr) {
    check_arguments(arguments);
    return make_error(expr);
  }
  const std::vector<Callable> constructors = find_constructors(class_info);
  if (constructors.empty()) {
    if (!arguments.empty()) {
      report(expr, class_info->name() + " takes no arguments when it is made");
      return make_error(expr);
    }
  } else {
    // Without arguments, a constructor is called when one takes none.
    bool wanted = !arguments.empty() || constructors[0].routine != nullptr;
    for (const Callable& constructor : constructors) wanted = wanted || constructor.required() == 0;
    if (wanted) {
      Expr* call = arena_.make<Expr>(*expr);
      call->left = nullptr;
      call = resolve_call(call, constructors, arguments);
      if (call->is(ExprKind::kError)) return make_error(expr);
      const Routine* chosen = call->is(ExprKind::kRoutine) ? call->routine : nullptr;
      if (chosen != nullptr && !check_access(expr, chosen->name, chosen->access, *chosen->owner))
        return make_error(expr);
      absorb(expr, call);
      expr->left = call;
    }
  }
  expr->class_info = class_info;
  expr->type = {Kind::kObject, Kind::kVoid, 0, class_info};
  return expr;
}

Expr* Checker::check_is_a(Expr* expr) {
  const NameId name = expr->name;
  expr->left = check(expr->left);
  absorb(expr, expr->left);
  const ClassInfo* class_info = nullptr;
  if (kind_named(names_.text(name)) != Kind::kObject) {
    class_info = resolve_class(name, expr->position);
    if (class_info == nullptr) return make_error(expr);
  }
  if (expr->left->is(ExprKind::kError)) return make_error(expr);
  const Kind kind = expr->left->type.kind;
  if (kind != Kind::kObject && kind != Kind::kVariant && kind != Kind::kNil) {
    report(expr, "IsA asks about objects, and this is " + a_type(expr->left->type));
    return make_error(expr);
  }
  expr->class_info = class_info;
  expr->type = simple_type(Kind::kBoolean);
  return expr;
}

}  // namespace krz
