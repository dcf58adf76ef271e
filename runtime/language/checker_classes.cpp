// The classes of a script: what they inherit, where their properties lie, and which methods take
// the place of others.
#include "language/checker.h"
#include "language/types.h"

namespace krz {
namespace {

/// The instance method of a superclass in whose place `method` is called.
const Routine* find_overridden(const ClassDecl& owner, const Routine& method) {
  for (const ClassDecl* above = owner.superclass; above != nullptr; above = above->superclass) {
    for (const Routine* one = above->methods; one != nullptr; one = one->next) {
      if (one->name == method.name && one->self != nullptr && same_parameters(*one, method))
        return one;
    }
  }
  return nullptr;
}

}  // namespace

bool same_parameters(const Routine& a, const Routine& b) {
  if (a.parameters.size() != b.parameters.size()) return false;
  for (size_t i = 0; i < a.parameters.size(); ++i) {
    const Variable& x = a.parameters[i].variable;
    const Variable& y = b.parameters[i].variable;
    if (!(x.type == y.type) || x.by_ref != y.by_ref) return false;
  }
  return true;
}

void Checker::declare_classes(ScriptTree& tree) {
  for (ClassDecl* one = tree.classes; one != nullptr; one = one->next) {
    if (one->name == kNoName) continue;
    if (one->name >= classes_by_name_.size()) classes_by_name_.resize(names_.size());
    const ClassDecl* known = classes_by_name_[one->name];
    // Only a class of an earlier piece of a session is settled by now; it may be replaced.
    const bool replaces = known != nullptr && known->state == ClassDecl::State::kDone;
    const bool taken = find_class(one->name) != nullptr && !replaces;
    if (kind_named(names_.text(one->name)) != Kind::kVoid || taken) {
      report(one->position, "there is a type “" + text(one->name) + "” already");
      continue;
    }
    script_classes_.push_back(std::make_unique<ScriptClass>(registry_, text(one->name), one));
    one->info = script_classes_.back().get();
    classes_by_name_[one->name] = one;
  }
  for (ClassDecl* one = tree.classes; one != nullptr; one = one->next) settle_class(*one);
}

/// Finds the superclasses of a class and lays out its instances, after theirs.
void Checker::settle_class(ClassDecl& lowest) {
  std::vector<std::pair<ClassDecl*, const ClassInfo*>> chain;
  for (ClassDecl* one = &lowest; one != nullptr && one->info != nullptr;) {
    if (one->state == ClassDecl::State::kDone) break;
    one->state = ClassDecl::State::kInProgress;
    const ClassInfo* superclass = nullptr;
    const TypeName& written = one->superclass_name;
    if (written.name != kNoName && kind_named(names_.text(written.name)) != Kind::kObject)
      superclass = resolve_class(written.name, written.position);
    ClassDecl* above = nullptr;
    if (const ScriptClass* script_class = as_script_class(superclass))
      above = script_class->declaration;
    if (above != nullptr && above->state == ClassDecl::State::kInProgress) {
      report(written.position, "“" + text(one->name) + "” inherits from itself");
      above = nullptr;
      superclass = nullptr;
    }
    one->superclass = above;
    chain.emplace_back(one, superclass);
    one = above;
  }
  for (size_t i = chain.size(); i > 0; --i) settle_below(*chain[i - 1].first, chain[i - 1].second);
}

void Checker::settle_below(ClassDecl& owner, const ClassInfo* superclass) {
  constexpr int kDeepestInheritance = 100;
  owner.depth = owner.superclass != nullptr ? owner.superclass->depth + 1 : 0;
  if (owner.depth > kDeepestInheritance) {
    report(owner.superclass_name.position, "there are too many classes above this one");
    superclass = nullptr;
    owner.superclass = nullptr;
    owner.depth = 0;
  }
  size_t fields = 0;
  for (const ClassField* field = owner.fields; field != nullptr; field = field->next)
    fields += field->shared ? 0 : 1;
  if (!owner.info->lay_out(superclass, fields))
    report(owner.position, "“" + text(owner.name) + "” has too many properties");
  owner.state = ClassDecl::State::kDone;
  ordered_classes_.push_back(&owner);
}

/// What other code may use of a class, before any code is looked at.
void Checker::declare_members(ClassDecl& owner) {
  class_ = &owner;
  ScriptClass& info = *owner.info;
  if (const ScriptClass* above = info.script_superclass) {
    info.methods = above->methods;
    info.string_slots = above->string_slots;
    info.object_slots = above->object_slots;
    info.initialiser = above->initialiser;
  }
  declare_class_constants(owner);
  for (Routine* method = owner.methods; method != nullptr; method = method->next)
    declare_method(owner, *method);
  owner.initialiser.self = make_self_variable(owner);
  size_t number = 0;
  for (ClassField* field = owner.fields; field != nullptr; field = field->next)
    declare_field(owner, *field, number);
  class_ = nullptr;
}

void Checker::declare_class_constants(ClassDecl& owner) {
  for (ClassConstant* one = owner.constants; one != nullptr; one = one->next) {
    ConstStmt& statement = *one->declaration;
    check_member_name(owner, statement.name, statement.position, one);
    Expr* value = check(statement.value);
    const Type type = resolve_type(statement.type_name);
    if (type.kind != Kind::kVoid) value = convert(value, type, "the constant");
    if (value->is(ExprKind::kError)) continue;
    if (value->is(ExprKind::kLiteral) || value->is(ExprKind::kRegisteredText)) {
      one->value = value;
    } else {
      report(value, "a constant's value must be known before the script runs");
    }
  }
}

/// A class has one member of a name, or several methods.
void Checker::check_member_name(const ClassDecl& owner, NameId name, SourceOffset position,
                                const void* member) {
  const auto complain = [&] {
    report(position, "“" + text(name) + "” is a member of " + text(owner.name) + " already");
  };
  for (const ClassConstant* one = owner.constants; one != nullptr && one != member;
       one = one->next) {
    if (one->declaration->name == name) return complain();
  }
  for (const ClassField* one = owner.fields; one != nullptr && one != member; one = one->next) {
    const bool earlier = one->declaration->position < position;
    if (one->declaration->name == name && earlier) return complain();
  }
  for (const Routine* one = owner.methods; one != nullptr && one != member; one = one->next) {
    if (one->name == name && one->position < position) return complain();
  }
}

void Checker::declare_field(ClassDecl& owner, ClassField& field, size_t& number) {
  DimStmt& statement = *field.declaration;
  check_member_name(owner, statement.name, statement.position, &field);
  const size_t place = field.shared ? 0 : number++;
  Type type = resolve_type(statement.type_name);
  if (statement.type_name.name == kNoName && statement.initial != nullptr) {
    routine_ = field.shared ? nullptr : &owner.initialiser;
    statement.initial = check(statement.initial);
    routine_ = nullptr;
    type = statement.initial->type;
    if (type.kind == Kind::kNil) {
      report(statement.initial->begin, "Nil has no type of its own; write As and a type");
      type = {};
    }
  }
  if (type.kind == Kind::kVoid) return;
  auto* variable = arena_.make<Variable>();
  variable->name = statement.name;
  variable->position = statement.position;
  variable->type = type;
  statement.variable = variable;
  if (field.shared) {
    variable->global = true;
    hidden_globals_.push_back(variable);
    return;
  }
  ScriptClass& info = *owner.info;
  variable->reg = info.slot_of(place);
  const Storage storage = storage_of(type.kind);
  if (storage == Storage::kString) info.string_slots.push_back(variable->reg);
  if (storage == Storage::kObject) info.object_slots.push_back(variable->reg);
  if (statement.initial != nullptr || type.kind == Kind::kArray)
    info.initialiser = static_cast<uint16_t>(owner.initialiser.index + 1);
}

Variable* Checker::make_self_variable(const ClassDecl& owner) {
  auto* self = arena_.make<Variable>();
  self->name = names_.intern("Self");
  self->position = owner.position;
  self->type = {Kind::kObject, Kind::kVoid, 0, owner.info};
  self->fixed = true;
  return self;
}

void Checker::declare_method(ClassDecl& owner, Routine& method) {
  if (method.name == kNoName) return;
  check_member_name(owner, method.name, method.position, owner.methods);  // overloads are fine
  check_signature(method);
  const std::string_view name = names_.text(method.name);
  method.constructor = equal_names(name, "Constructor");
  method.destructor = equal_names(name, "Destructor");
  const bool special = method.constructor || method.destructor;
  if (special && (method.function || method.shared))
    report(method.position, "a " + std::string(name) + " is a Sub of each instance");
  if (method.destructor && !method.parameters.empty())
    report(method.position, "a Destructor takes no arguments");
  for (const Routine* other = owner.methods; other != &method; other = other->next) {
    if (other->name == method.name && same_parameters(*other, method))
      return report(method.position,
                    "“" + text(method.name) + "” is declared already, in line " +
                        std::to_string(diagnostics_.source().line_of(other->position)));
  }
  if (!method.shared) method.self = make_self_variable(owner);
  if (method.destructor) owner.info->destructor = static_cast<uint16_t>(method.index + 1);
  if (!special && !method.shared) place_method(owner, method);
}

/// Gives an instance method its number: that of the one it overrides, or a new one.
void Checker::place_method(ClassDecl& owner, Routine& method) {
  std::vector<uint16_t>& methods = owner.info->methods;
  const auto code = static_cast<uint16_t>(method.index + 1);
  if (const Routine* overridden = find_overridden(owner, method)) {
    if (overridden->function != method.function || !(overridden->result == method.result))
      report(method.position, "“" + text(method.name) + "” overrides the one of " +
                                  text(overridden->owner->name) + " and must have the same result");
    method.method_number = overridden->method_number;
    methods[method.method_number] = code;
    return;
  }
  method.method_number = static_cast<uint16_t>(methods.size());
  methods.push_back(code);
}

void Checker::declare_self(Routine& routine) {
  Symbol what;
  what.kind = Symbol::Kind::kVariable;
  what.variable = routine.self;
  declare(names_.intern("Self"), routine.position, what);
  declare(names_.intern("Me"), routine.position, what);
}

/// The value or the bounds of a property.
void Checker::check_field(DimStmt& field) {
  check_bounds(field.bounds);
  if (field.initial == nullptr || field.variable == nullptr) return;
  if (!field.bounds.empty())
    return report(field.initial->begin, "an array with bounds takes no value here");
  field.initial = convert(check(field.initial), field.variable->type,
                          "the value of “" + text(field.name) + "”");
}

void Checker::check_class(ClassDecl& owner) {
  class_ = &owner;
  for (ClassField* field = owner.fields; field != nullptr; field = field->next) {
    if (field->shared) check_field(*field->declaration);
  }
  const size_t mark = open_scope();
  routine_ = &owner.initialiser;
  ++routine_scope_;
  declare_self(owner.initialiser);
  for (ClassField* field = owner.fields; field != nullptr; field = field->next) {
    if (!field->shared) check_field(*field->declaration);
  }
  close_scope(mark);
  routine_ = nullptr;
  class_ = nullptr;
  for (Routine* method = owner.methods; method != nullptr; method = method->next)
    check_routine(*method);
}

}  // namespace krz
