// Using the members of the script's classes: with a dot, by name alone inside their methods, and
// those of the superclass through Super.
#include "language/checker.h"
#include "language/types.h"

namespace krz {

/// A class of the script or a registered one.
const ClassInfo* Checker::find_class(NameId name) {
  if (name < classes_by_name_.size() && classes_by_name_[name] != nullptr)
    return classes_by_name_[name]->info;
  return registry_.find_class(names_.text(name));
}

bool Checker::may_use(Access access, const ClassDecl& owner) const {
  if (access == Access::kPublic || class_ == &owner) return true;
  return access == Access::kProtected && class_ != nullptr && class_->info->is_a(owner.info);
}

bool Checker::check_access(const Expr* expr, NameId name, Access access, const ClassDecl& owner) {
  if (may_use(access, owner)) return true;
  report(expr, "“" + text(name) + "” is " +
                   (access == Access::kPrivate ? "private to " : "protected in ") +
                   text(owner.name));
  return false;
}

/// A method of a superclass is left out when a method found before has the same parameters.
void Checker::add_candidate(std::vector<Callable>& methods, const Callable& candidate) {
  for (const Callable& known : methods) {
    bool same = known.count() == candidate.count();
    for (size_t i = 0; same && i < known.count(); ++i)
      same = known.type(i) == candidate.type(i) && known.by_ref(i) == candidate.by_ref(i);
    if (same) return;
  }
  methods.push_back(candidate);
}

const Checker::Member& Checker::find_member(const ClassDecl& owner, NameId name) {
  const auto [place, is_new] = members_.try_emplace({&owner, name});
  if (is_new || !members_declared_) place->second = look_up_member(owner, name);
  return place->second;
}

Checker::Member Checker::look_up_member(const ClassDecl& lowest, NameId name) const {
  Member member;
  const ClassInfo* registered = nullptr;
  for (const ClassDecl* owner = &lowest; owner != nullptr; owner = owner->superclass) {
    registered = owner->info->superclass();
    for (Routine* one = owner->methods; one != nullptr; one = one->next) {
      if (one->name == name) add_candidate(member.methods, {nullptr, one});
    }
    if (!member.methods.empty()) continue;
    member.owner = owner;
    for (ClassField* one = owner->fields; one != nullptr; one = one->next) {
      if (one->declaration->name != name) continue;
      member.field = one;
      return member;
    }
    for (ClassConstant* one = owner->constants; one != nullptr; one = one->next) {
      if (one->declaration->name != name) continue;
      member.constant = one;
      return member;
    }
  }
  if (member.methods.empty() || registered == nullptr) return member;
  for (const MethodInfo* one : registered->find_methods(names_.text(name)))
    add_candidate(member.methods, {one, nullptr});
  return member;
}

/// Those of the class itself, or of the nearest class above that has any.
std::vector<Checker::Callable> Checker::find_constructors(const ClassInfo* class_info) {
  std::vector<Callable> found;
  while (const ScriptClass* script_class = as_script_class(class_info)) {
    for (Routine* one = script_class->declaration->methods; one != nullptr; one = one->next) {
      if (one->constructor) found.push_back({nullptr, one});
    }
    if (!found.empty()) return found;
    class_info = script_class->superclass();
  }
  if (class_info == nullptr) return found;
  for (const MethodInfo* one : class_info->find_methods("Constructor"))
    found.push_back({one, nullptr});
  return found;
}

void Checker::add_script_members(const ClassInfo* class_info,
                                 std::vector<std::string>& names) const {
  while (const ScriptClass* script_class = as_script_class(class_info)) {
    const ClassDecl& owner = *script_class->declaration;
    for (const Routine* one = owner.methods; one != nullptr; one = one->next) {
      if (one->name != kNoName) names.push_back(text(one->name));
    }
    for (const ClassField* one = owner.fields; one != nullptr; one = one->next)
      names.push_back(text(one->declaration->name));
    for (const ClassConstant* one = owner.constants; one != nullptr; one = one->next) {
      if (one->declaration->name != kNoName) names.push_back(text(one->declaration->name));
    }
    class_info = script_class->superclass();
  }
}

/// Whether a name alone means a member of the class whose code is being checked.
bool Checker::names_own_member(NameId name) {
  if (class_ == nullptr || name == kNoName) return false;
  const Symbol& found = symbol(name);
  const bool local = found.kind != Symbol::Kind::kNone && routine_ != nullptr &&
                     found.routine_scope == routine_scope_;
  if (local) return false;
  const Member& member = find_member(*class_, name);
  if (member.field != nullptr || member.constant != nullptr || !member.methods.empty()) return true;
  const std::string_view word = names_.text(name);
  const ClassInfo& info = *class_->info;
  if (equal_names(word, "Constructor")) return false;
  return !info.find_methods(word).empty() || info.find_property(word) != nullptr ||
         !info.find_shared_methods(word).empty() || info.find_constant(word) != nullptr;
}

Expr* Checker::make_self(const Expr* place) {
  Expr* self = arena_.make<Expr>();
  self->kind = ExprKind::kVariable;
  self->variable = routine_->self;
  self->type = routine_->self->type;
  self->position = self->begin = self->end = place->position;
  return self;
}

bool Checker::is_super(const Expr* expr) {
  return class_ != nullptr && expr->is(ExprKind::kName) &&
         equal_names(names_.text(expr->name), "Super") &&
         symbol(expr->name).kind == Symbol::Kind::kNone;
}

/// `expr` is a name alone.
Expr* Checker::check_own_member(Expr* expr, std::span<Expr*> arguments, bool has_parens) {
  if (routine_ == nullptr || routine_->self == nullptr)
    return check_class_member(expr, *class_->info, arguments);
  expr->left = make_self(expr);
  return check_object_member(expr, arguments, has_parens);
}

/// `expr` is Super.Name.
Expr* Checker::check_super_member(Expr* expr, std::span<Expr*> arguments, bool has_parens) {
  const ClassInfo* superclass = class_->info->superclass();
  if (routine_ == nullptr || routine_->self == nullptr || superclass == nullptr) {
    report(expr->left, superclass == nullptr ? "“" + text(class_->name) + "” has no superclass"
                                             : "Super belongs to the methods of an instance");
    return make_error(expr);
  }
  expr->left = make_self(expr->left);
  expr->left->type.class_info = superclass;
  if (!equal_names(names_.text(expr->name), "Constructor")) {
    const ScriptClass* script_class = as_script_class(superclass);
    Expr* found = script_class == nullptr ? nullptr
                                          : check_script_member(expr, *script_class->declaration,
                                                                arguments, Dispatch::kFixed);
    return found != nullptr ? found : check_object_member(expr, arguments, has_parens);
  }
  if (!routine_->constructor) {
    report(expr, "only a Constructor calls that of the superclass");
    return make_error(expr);
  }
  routine_->calls_super = true;
  const std::vector<Callable> constructors = find_constructors(superclass);
  if (constructors.empty()) {
    report(expr, superclass->name() + " has no Constructor");
    return make_error(expr);
  }
  return resolve_call(expr, constructors, arguments);
}

/// A member of a class of the script: of an instance in expr->left, or of the class itself when
/// that is null. Null when only a registered superclass may have the member.
Expr* Checker::check_script_member(Expr* expr, const ClassDecl& owner, std::span<Expr*> arguments,
                                   Dispatch dispatch) {
  const Member& member = find_member(owner, expr->name);
  if (!member.methods.empty()) return resolve_script_methods(expr, member, arguments, dispatch);
  if (member.field != nullptr) return check_script_field(expr, member, arguments);
  if (member.constant == nullptr) return nullptr;
  const NameId name = expr->name;
  if (!check_access(expr, name, member.constant->access, *member.owner)) return make_error(expr);
  if (!arguments.empty()) {
    report(expr, "“" + text(name) + "” is a constant and takes no arguments");
    return make_error(expr);
  }
  if (member.constant->value == nullptr) return make_error(expr);
  return constant_value(expr, *member.constant->value);
}

Expr* Checker::check_script_field(Expr* expr, const Member& member, std::span<Expr*> arguments) {
  const NameId name = expr->name;
  if (!check_access(expr, name, member.field->access, *member.owner)) return make_error(expr);
  Variable* variable = member.field->declaration->variable;
  if (variable == nullptr) {  // Its type is in error and reported, or about to be found out.
    if (!members_declared_)
      report(expr, "the type of “" + text(name) + "” is not known here yet; write it with As");
    return make_error(expr);
  }
  if (!arguments.empty() && variable->type.kind != Kind::kArray) {
    report(expr, "“" + text(name) + "” is a property and takes no arguments");
    return make_error(expr);
  }
  if (!member.field->shared && expr->left == nullptr) {
    report(expr, "“" + text(name) + "” belongs to an instance of " + text(member.owner->name) +
                     ", not to the class");
    return make_error(expr);
  }
  expr->kind = member.field->shared ? ExprKind::kVariable : ExprKind::kField;
  if (member.field->shared) expr->left = nullptr;
  expr->variable = variable;
  expr->type = variable->type;
  return expr;
}

Expr* Checker::resolve_script_methods(Expr* expr, const Member& member, std::span<Expr*> arguments,
                                      Dispatch dispatch) {
  const NameId name = expr->name;
  const bool has_receiver = expr->left != nullptr;
  // The arguments may look the same name up, which makes it anew while members are being declared.
  const std::vector<Callable> candidates = member.methods;
  Expr* result = resolve_call(expr, candidates, arguments);
  if (result->is(ExprKind::kError)) return result;
  if (!result->is(ExprKind::kRoutine)) {
    if (has_receiver) return result;
    report(result, "“" + text(name) + "” belongs to an instance, not to the class");
    return make_error(result);
  }
  const Routine& chosen = *result->routine;
  if (!check_access(result, name, chosen.access, *chosen.owner)) return make_error(result);
  if (chosen.constructor || chosen.destructor) {
    report(result, chosen.constructor ? "a Constructor is called by New and Super.Constructor alone"
                                      : "a Destructor is called when the last variable lets go");
    return make_error(result);
  }
  if (chosen.shared) {
    result->left = nullptr;
    return result;
  }
  if (!has_receiver) {
    report(result, "“" + text(name) + "” belongs to an instance of " + text(chosen.owner->name) +
                       ", not to the class");
    return make_error(result);
  }
  result->op = static_cast<uint8_t>(dispatch);
  return result;
}

/// What a Constructor that does not call the superclass's calls before its body.
void Checker::make_super_call(Routine& constructor) {
  const ClassInfo* superclass = class_->info->superclass();
  const std::vector<Callable> candidates = find_constructors(superclass);
  for (const Callable& candidate : candidates) {
    if (candidate.required() > 0) continue;
    Expr* call = arena_.make<Expr>();
    call->position = call->begin = call->end = constructor.position;
    call->left = make_self(call);
    constructor.super_call = finish_call(call, candidate, {});
    return;
  }
  if (!candidates.empty() && candidates[0].routine != nullptr)
    report(constructor.position, "the Constructor of " + superclass->name() +
                                     " needs arguments; call Super.Constructor(…) here");
}

/// object.Name = value, where Name is a Sub whose last parameter is declared with Assigns.
bool Checker::check_assigned_call(AssignStmt& statement) {
  Expr* call = statement.target->is(ExprKind::kCall) ? statement.target : nullptr;
  Expr* callee = call != nullptr ? call->left : statement.target;
  const bool own = callee->is(ExprKind::kName) && names_own_member(callee->name);
  if (!own && !callee->is(ExprKind::kMember)) return false;
  const ClassInfo* owner = nullptr;
  if (own) {
    owner = class_->info;
  } else if (is_super(callee->left)) {
    owner = class_->info->superclass();
  } else if (const ClassInfo* named = class_of_name(callee->left)) {
    owner = named;
  } else {
    callee->left = check(callee->left);
    if (callee->left->type.kind == Kind::kObject) owner = callee->left->type.class_info;
  }
  const ScriptClass* script_class = as_script_class(owner);
  if (script_class == nullptr) return false;
  bool assigns = false;
  for (const Callable& one : find_member(*script_class->declaration, callee->name).methods) {
    assigns = assigns || (one.routine != nullptr && !one.routine->parameters.empty() &&
                          one.routine->parameters.back().assigns);
  }
  if (!assigns) return false;
  std::vector<Expr*> arguments;
  if (call != nullptr) arguments.assign(call->arguments().begin(), call->arguments().end());
  arguments.push_back(statement.value);
  const std::span<Expr*> kept = arena_.copy<Expr*>(arguments);
  Expr* whole = arena_.make<Expr>();
  whole->kind = ExprKind::kCall;
  whole->position = callee->position;
  whole->begin = callee->begin;
  whole->end = statement.target->end;
  whole->left = callee;
  whole->args = kept.data();
  whole->arg_count = static_cast<uint16_t>(kept.size());
  statement.value = nullptr;
  statement.target = check_any(whole);
  return true;
}

}  // namespace krz
