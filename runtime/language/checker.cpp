// Scopes, and what is declared in them.
#include "language/checker.h"

#include "language/types.h"

namespace krz {

Checker::Checker(Registry& registry, DiagnosticList& diagnostics, Arena& arena, NameTable& names,
                 ScriptClassList& script_classes)
    : registry_(registry),
      diagnostics_(diagnostics),
      arena_(arena),
      names_(names),
      script_classes_(script_classes) {
  symbols_.resize(names_.size());
}

void Checker::check(ScriptTree& tree) {
  names_lost_ = tree.names_lost;
  declare_classes(tree);
  declare_module_constants(tree.body);
  for (ClassDecl* one : ordered_classes_) declare_members(*one);
  members_declared_ = true;
  declare_routines(tree);
  if (tree.body_whole) {
    check_statements(tree.body);
  } else {
    check_declarations(tree.body);
  }
  for (Routine* routine = tree.routines; routine != nullptr; routine = routine->next) {
    if (routine->whole) check_routine(*routine);
  }
  for (ClassDecl* one : ordered_classes_) check_class(*one);
  tree.hidden_globals = arena_.copy<Variable*>(hidden_globals_);
}

void Checker::know(const Declarations& earlier) {
  symbols_ = earlier.symbols;
  symbols_.resize(names_.size());
  for (Symbol& one : symbols_) one.routine_scope = kEarlier;
  classes_by_name_ = earlier.classes;
}

void Checker::check_expression_alone(ScriptTree& tree) {
  auto* statement = static_cast<ExpressionStmt*>(tree.body.first);
  Expr* value = statement->expression = check_any(statement->expression);
  if (value->is(ExprKind::kError) || value->type.kind == Kind::kVoid) return;
  tree.shown = arena_.make<Variable>();
  tree.shown->type = value->type;
  tree.shown->global = true;
  hidden_globals_.push_back(tree.shown);
  tree.hidden_globals = arena_.copy<Variable*>(hidden_globals_);

  Expr* target = arena_.make<Expr>();
  target->kind = ExprKind::kVariable;
  target->variable = tree.shown;
  target->type = value->type;
  target->position = target->begin = target->end = value->begin;
  auto* assignment = arena_.make<AssignStmt>();
  assignment->kind = StmtKind::kAssign;
  assignment->position = statement->position;
  assignment->target = target;
  assignment->value = value;
  tree.body.first = assignment;
}

/// The variables that routines see, of code that is not checked as a whole.
void Checker::check_declarations(const Block& body) {
  for (Stmt* statement = body.first; statement != nullptr; statement = statement->next) {
    if (statement->kind == StmtKind::kDim && !statement->damaged)
      check_dim(static_cast<DimStmt&>(*statement));
  }
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
    report(position, "“" + text(name) + "” is declared already, in " +
                         diagnostics_.source().line_text(now.position, position));
    return;
  }
  what.position = position;
  what.routine_scope = routine_scope_;
  hidden_.push_back({name, now});
  now = what;
}

Variable* Checker::declare_variable(NameId name, SourceOffset position, const Type& type) {
  const bool global = routine_ == nullptr && block_depth_ == 0;
  const Symbol known = name != kNoName ? symbol(name) : Symbol();
  Variable* variable;
  if (global && known.kind == Symbol::Kind::kVariable && known.routine_scope == kEarlier &&
      known.variable->type == type) {
    variable = known.variable;
  } else {
    variable = arena_.make<Variable>();
    variable->name = name;
    variable->position = position;
    variable->type = type;
    variable->global = global;
  }
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
  const ClassInfo* found = find_class(name);
  if (found != nullptr || names_lost_) return found;
  std::vector<std::string_view> candidates = {"Integer", "String", "Boolean", "Double", "Int64",
                                              "Single",  "Color",  "Variant", "Object"};
  for (const ClassInfo* one : registry_.classes()) candidates.push_back(one->name());
  for (const auto& one : script_classes_) candidates.push_back(one->name());
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
    if (statement->kind == StmtKind::kConst && !statement->damaged)
      declare_constant(static_cast<ConstStmt&>(*statement));
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
  // Calls of what is not wholly known cannot be judged, those of its overloads neither.
  for (Routine* routine = tree.routines; routine != nullptr; routine = routine->next) {
    if (!routine->header_whole && routine->name != kNoName)
      symbol(routine->name).kind = Symbol::Kind::kReported;
  }
  for (Routine* routine = tree.routines; routine != nullptr; routine = routine->next) {
    if (!routine->header_whole) continue;
    check_signature(*routine);
    if (routine->name == kNoName || symbol(routine->name).kind == Symbol::Kind::kReported) continue;
    if (routine->name < classes_by_name_.size() && classes_by_name_[routine->name] != nullptr)
      report(routine->position, "“" + text(routine->name) + "” is the name of a class");
    Symbol& known = symbol(routine->name);
    if (known.kind == Symbol::Kind::kRoutine && known.routine_scope == kEarlier) {
      find_replaced(*routine, known.routine);
    } else if (known.kind == Symbol::Kind::kRoutine) {
      if (const Symbol* earlier = find_hidden(routine->name))
        find_replaced(*routine, earlier->routine);
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

/// The routine of an earlier piece of a session that is hidden now.
const Checker::Symbol* Checker::find_hidden(NameId name) const {
  for (const HiddenSymbol& one : hidden_) {
    if (one.name == name && one.symbol.kind == Symbol::Kind::kRoutine &&
        one.symbol.routine_scope == kEarlier)
      return &one.symbol;
  }
  return nullptr;
}

/// What has been compiled with an earlier routine calls the new one when it is called alike.
void Checker::find_replaced(Routine& routine, const Routine* earlier) {
  for (; earlier != nullptr; earlier = earlier->next_overload) {
    if (routine.function == earlier->function && routine.result == earlier->result &&
        same_parameters(routine, *earlier))
      routine.replaced = earlier;
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
    if (parameter.assigns &&
        (routine.owner == nullptr || routine.function || &parameter != &routine.parameters.back()))
      report(parameter.variable.position,
             "Assigns belongs to the last parameter of a Sub of a class");
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
  class_ = routine.owner;
  ++routine_scope_;
  if (routine.self != nullptr) declare_self(routine);
  for (RoutineParameter& parameter : routine.parameters) {
    Symbol what;
    what.kind = parameter.variable.type.kind == Kind::kVoid ? Symbol::Kind::kReported
                                                            : Symbol::Kind::kVariable;
    what.variable = &parameter.variable;
    declare(parameter.variable.name, parameter.variable.position, what);
  }
  check_statements(routine.body);
  if (routine.constructor && !routine.calls_super) make_super_call(routine);
  close_scope(mark);
  if (routine.function) check_end(routine);
  routine_ = nullptr;
  class_ = nullptr;
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
