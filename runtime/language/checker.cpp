// Scopes, and what is declared in them.
#include "language/checker.h"

#include "language/types.h"

namespace krz {

Checker::Checker(Registry& registry, DiagnosticList& diagnostics, Arena& arena, NameTable& names)
    : registry_(registry), diagnostics_(diagnostics), arena_(arena), names_(names) {
  symbols_.resize(names_.size());
}

void Checker::check(ScriptTree& tree) {
  declare_module_constants(tree.body);
  declare_routines(tree);
  check_statements(tree.body);
  for (Routine* routine = tree.routines; routine != nullptr; routine = routine->next)
    check_routine(*routine);
}

void Checker::report(SourceOffset position, std::string message) {
  diagnostics_.add(position, std::move(message));
}

Checker::Symbol& Checker::symbol(NameId name) {
  if (name >= symbols_.size()) symbols_.resize(names_.size());
  return symbols_[name];
}

/// Makes a name mean something until the scope closes. A local may take the name of something at
/// module level, not of another local of the same routine.
void Checker::declare(NameId name, SourceOffset position, Symbol what) {
  if (name == kNoName) return;
  Symbol& now = symbol(name);
  const bool taken = now.kind == Symbol::Kind::kVariable || now.kind == Symbol::Kind::kConstant ||
                     now.kind == Symbol::Kind::kRoutine;
  if (taken && now.routine_scope == routine_scope_) {
    report(position, "“" + text(name) + "” is declared already, in line " +
                         std::to_string(diagnostics_.source().line_of(now.position)));
    return;
  }
  what.position = position;
  what.routine_scope = routine_scope_;
  hidden_.push_back({name, now});
  now = what;
}

Variable* Checker::declare_variable(NameId name, SourceOffset position, const Type& type) {
  auto* variable = arena_.make<Variable>();
  variable->name = name;
  variable->position = position;
  variable->type = type;
  variable->global = routine_ == nullptr && block_depth_ == 0;
  Symbol what;
  what.kind = Symbol::Kind::kVariable;
  what.variable = variable;
  declare(name, position, what);
  return variable;
}

void Checker::close_scope(size_t mark) {
  while (hidden_.size() > mark) {
    symbols_[hidden_.back().name] = hidden_.back().symbol;
    hidden_.pop_back();
  }
}

Type Checker::resolve_type(const TypeName& written) {
  Type type;
  if (written.name == kNoName) return type;
  const std::string_view name = names_.text(written.name);
  type.kind = kind_named(name);
  if (type.kind == Kind::kVoid) {
    type.class_info = resolve_class(written.name, written.position);
    if (type.class_info == nullptr) return type;
    type.kind = Kind::kObject;
  }
  if (written.rank > 0) return {Kind::kArray, type.kind, written.rank, type.class_info};
  return type;
}

const ClassInfo* Checker::resolve_class(NameId name, SourceOffset position) {
  if (name == kNoName) return nullptr;
  const ClassInfo* found = registry_.find_class(names_.text(name));
  if (found != nullptr) return found;
  std::vector<std::string_view> candidates = {"Integer", "String", "Boolean", "Double", "Int64",
                                              "Single",  "Color",  "Variant", "Object"};
  for (const ClassInfo* one : registry_.classes()) candidates.push_back(one->name());
  report(position,
         "there is no type “" + text(name) + "”" + suggestion(names_.text(name), candidates));
  return nullptr;
}

std::string Checker::suggestion(std::string_view name,
                                const std::vector<std::string_view>& candidates) const {
  const std::string_view nearest = nearest_name(name, candidates);
  return nearest.empty() ? "" : "; did you mean “" + std::string(nearest) + "”?";
}

/// Constants at module level are known everywhere, so that parameters may default to them.
void Checker::declare_module_constants(const Block& body) {
  for (Stmt* statement = body.first; statement != nullptr; statement = statement->next) {
    if (statement->kind == StmtKind::kConst) declare_constant(static_cast<ConstStmt&>(*statement));
  }
}

void Checker::declare_constant(ConstStmt& statement) {
  if (statement.declared) return;
  statement.declared = true;
  Expr* value = check(statement.value);
  const Type type = resolve_type(statement.type_name);
  if (type.kind != Kind::kVoid) value = convert(value, type, "the constant");
  Symbol what;
  if (value->is(ExprKind::kError)) {
    what.kind = Symbol::Kind::kReported;
  } else if (!value->is(ExprKind::kLiteral) && !value->is(ExprKind::kRegisteredText)) {
    report(value, "a constant's value must be known before the script runs");
    what.kind = Symbol::Kind::kReported;
  } else {
    what.kind = Symbol::Kind::kConstant;
    what.constant = value;
  }
  declare(statement.name, statement.position, what);
}

void Checker::declare_routines(ScriptTree& tree) {
  for (Routine* routine = tree.routines; routine != nullptr; routine = routine->next) {
    check_signature(*routine);
    if (routine->name == kNoName) continue;
    Symbol& known = symbol(routine->name);
    if (known.kind == Symbol::Kind::kRoutine) {
      Routine* last = known.routine;
      while (last->next_overload != nullptr) last = last->next_overload;
      last->next_overload = routine;
      continue;
    }
    Symbol what;
    what.kind = Symbol::Kind::kRoutine;
    what.routine = routine;
    declare(routine->name, routine->position, what);
  }
}

void Checker::check_signature(Routine& routine) {
  bool optional = false;
  for (RoutineParameter& parameter : routine.parameters) {
    parameter.variable.type = resolve_type(parameter.type_name);
    if (optional && !parameter.optional)
      report(parameter.variable.position,
             "a parameter behind an optional one must be optional too");
    optional = parameter.optional;
    if (parameter.default_value == nullptr) continue;
    Expr* value = check(parameter.default_value);
    if (parameter.variable.type.kind != Kind::kVoid)
      value = convert(value, parameter.variable.type, "the default value");
    if (!value->is(ExprKind::kError) && !value->is(ExprKind::kLiteral) &&
        !value->is(ExprKind::kRegisteredText) && value->type.kind != Kind::kNil &&
        !(value->is(ExprKind::kConvert) && value->left->type.kind == Kind::kNil))
      report(value, "a default value must be known before the script runs");
    parameter.default_value = value;
  }
  routine.result = resolve_type(routine.result_name);
}

void Checker::check_routine(Routine& routine) {
  const size_t mark = open_scope();
  routine_ = &routine;
  ++routine_scope_;
  for (RoutineParameter& parameter : routine.parameters) {
    Symbol what;
    what.kind = parameter.variable.type.kind == Kind::kVoid ? Symbol::Kind::kReported
                                                            : Symbol::Kind::kVariable;
    what.variable = &parameter.variable;
    declare(parameter.variable.name, parameter.variable.position, what);
  }
  check_statements(routine.body);
  close_scope(mark);
  routine_ = nullptr;
}

std::vector<std::string_view> Checker::visible_names() {
  std::vector<std::string_view> result = {"Args", "Array", "Quit", "UBound"};
  for (NameId name = 0; name < symbols_.size(); ++name) {
    const Symbol::Kind kind = symbols_[name].kind;
    if (kind != Symbol::Kind::kNone && kind != Symbol::Kind::kReported)
      result.push_back(names_.text(name));
  }
  return result;
}

Expr* Checker::make_error(Expr* expr) {
  expr->kind = ExprKind::kError;
  expr->type = {};
  return expr;
}

Expr* Checker::make_integer(int32_t value, SourceOffset position) {
  Expr* literal = arena_.make<Expr>();
  literal->kind = ExprKind::kLiteral;
  literal->position = literal->begin = literal->end = position;
  literal->type.kind = Kind::kInteger;
  literal->literal.integer = value;
  return literal;
}

}  // namespace krz
