// Statements: what they need and what they declare.
#include <algorithm>

#include "language/checker.h"
#include "language/types.h"

namespace krz {

void Checker::check_block(const Block& block) {
  const size_t mark = open_scope();
  ++block_depth_;
  check_statements(block);
  --block_depth_;
  close_scope(mark);
}

void Checker::check_statements(const Block& block) {
  for (Stmt* statement = block.first; statement != nullptr && !diagnostics_.full();
       statement = statement->next)
    check_statement(statement);
}

void Checker::check_statement(Stmt* statement) {
  switch (statement->kind) {
    case StmtKind::kDim:
      return check_dim(static_cast<DimStmt&>(*statement));
    case StmtKind::kReDim:
      return check_redim(static_cast<ReDimStmt&>(*statement));
    case StmtKind::kConst:
      return declare_constant(static_cast<ConstStmt&>(*statement));
    case StmtKind::kAssign:
      return check_assign(static_cast<AssignStmt&>(*statement));
    case StmtKind::kExpression: {
      auto& expression = static_cast<ExpressionStmt&>(*statement).expression;
      expression = check_any(expression);
      const bool acts = expression->is(ExprKind::kRoutine) || expression->is(ExprKind::kMethod) ||
                        expression->is(ExprKind::kBuiltin) || expression->is(ExprKind::kNew) ||
                        expression->is(ExprKind::kError);
      if (!acts) report(expression, "this does nothing; is “=” missing?");
      return;
    }
    case StmtKind::kPrint:
      for (Expr*& value : static_cast<PrintStmt&>(*statement).values) {
        value = check(value);
        if (value->type.kind == Kind::kArray)
          report(value->begin, "an array has no text; print its elements");
      }
      return;
    case StmtKind::kIf:
      return check_if(static_cast<IfStmt&>(*statement));
    case StmtKind::kSelect:
      return check_select(static_cast<SelectStmt&>(*statement));
    case StmtKind::kFor:
      return check_for(static_cast<ForStmt&>(*statement));
    case StmtKind::kForEach:
      return check_for_each(static_cast<ForEachStmt&>(*statement));
    case StmtKind::kWhile: {
      auto& loop = static_cast<WhileStmt&>(*statement);
      loop.condition = check_condition(loop.condition);
      return check_body(loop.body, Leaves::kWhile);
    }
    case StmtKind::kDo: {
      auto& loop = static_cast<DoStmt&>(*statement);
      if (loop.condition != nullptr) loop.condition = check_condition(loop.condition);
      return check_body(loop.body, Leaves::kDo);
    }
    case StmtKind::kExit:
    case StmtKind::kContinue:
      return check_leave(static_cast<LeaveStmt&>(*statement));
    case StmtKind::kReturn:
      return check_return(static_cast<ReturnStmt&>(*statement));
    case StmtKind::kTry:
      return check_try(static_cast<TryStmt&>(*statement));
    case StmtKind::kRaise: {
      auto& raise = static_cast<RaiseStmt&>(*statement);
      raise.exception = check(raise.exception);
      const Kind kind = raise.exception->type.kind;
      if (!raise.exception->is(ExprKind::kError) && kind != Kind::kObject)
        report(raise.exception->begin,
               "only an object can be raised, as in Raise New RuntimeException");
      return;
    }
  }
}

void Checker::check_bounds(std::span<Expr*> bounds) {
  for (Expr*& bound : bounds)
    bound = convert(check(bound), simple_type(Kind::kInteger), "the upper bound");
}

void Checker::check_dim(DimStmt& statement) {
  check_bounds(statement.bounds);
  Type type = resolve_type(statement.type_name);
  if (statement.initial != nullptr) {
    if (!statement.bounds.empty()) {
      report(statement.initial->begin, "an array with bounds takes no value here");
    } else {
      Expr* value = check(statement.initial);
      const bool untyped = statement.type_name.name == kNoName;
      if (untyped && statement.type_name.rank == 0) {
        type = value->type.kind == Kind::kNil ? Type{} : value->type;
        if (value->type.kind == Kind::kNil)
          report(value->begin, "Nil has no type of its own; write As and a type");
      }
      if (type.kind != Kind::kVoid)
        value = convert(value, type, "the value of “" + text(statement.name) + "”");
      statement.initial = value;
    }
  }
  if (type.kind == Kind::kVoid) {
    Symbol what;
    what.kind = Symbol::Kind::kReported;
    return declare(statement.name, statement.position, what);
  }
  statement.variable = declare_variable(statement.name, statement.position, type);
  if (!statement.is_static) return;
  statement.variable->global = true;
  statement.reached = arena_.make<Variable>();
  statement.reached->type = simple_type(Kind::kBoolean);
  statement.reached->global = true;
  hidden_globals_.push_back(statement.variable);
  hidden_globals_.push_back(statement.reached);
}

void Checker::check_redim(ReDimStmt& statement) {
  check_bounds(statement.bounds);
  statement.array = check(statement.array);
  const Type& type = statement.array->type;
  if (statement.array->is(ExprKind::kError)) return;
  if (type.kind != Kind::kArray) {
    report(statement.array, "ReDim needs an array, not " + a_type(type));
  } else if (statement.bounds.size() != type.rank) {
    report(statement.array, "this array has " + std::to_string(type.rank) + " dimensions, not " +
                                std::to_string(statement.bounds.size()));
  }
}

void Checker::check_assign(AssignStmt& statement) {
  if (check_assigned_call(statement)) return;
  const Expr* call = statement.target;
  const std::string_view written = diagnostics_.source().slice(call->begin, call->end);
  Expr* target = statement.target = check(statement.target);
  if (statement.reads_target) {
    statement.value->left = target;
    if (!target->is(ExprKind::kError)) hold_parts(statement);
  }
  Expr* value = check(statement.value);
  std::string what;
  switch (target->kind) {
    case ExprKind::kError:
      return;
    case ExprKind::kVariable:
      if (target->variable->fixed) return report(target, "Self cannot be assigned to");
      break;
    case ExprKind::kIndex:
    case ExprKind::kField:
      break;
    case ExprKind::kRoutine:
      return report(target,
                    "“" + text(target->routine->name) + "” is a method and cannot be assigned to");
    case ExprKind::kProperty:
      if (!target->property->read_only()) break;
      return report(target, "“" + target->property->name + "” is read-only");
    case ExprKind::kMethod:
      if (target->method->setter != nullptr) break;
      if (target->method->signature.reads_like_property)
        return report(target, "“" + target->method->name + "” is read-only");
      return report(target, "“" + target->method->name + "” is a method and cannot be assigned to");
    default:
      return report(target, "this cannot be assigned to");
  }
  statement.value =
      convert(value, target->type, "the value for “" + std::string(written.substr(0, 60)) + "”");
}

/// What a target that is also read stands on: its object or array, indices and arguments.
void Checker::hold_parts(AssignStmt& statement) {
  Expr* target = statement.target;
  if (target->is(ExprKind::kVariable)) return;
  std::vector<HeldPart> held;
  const auto hold = [&](Expr*& part) {
    if (part == nullptr || part->is(ExprKind::kLiteral) || part->is(ExprKind::kRegisteredText))
      return;
    auto* variable = arena_.make<Variable>();
    variable->type = part->type;
    held.push_back({variable, part});
    Expr* use = arena_.make<Expr>(*part);
    use->kind = ExprKind::kVariable;
    use->variable = variable;
    use->calls = false;
    part = use;
  };
  const bool has_receiver = target->is(ExprKind::kIndex) || target->is(ExprKind::kProperty) ||
                            target->is(ExprKind::kMethod);
  if (has_receiver) hold(target->left);
  if (target->is(ExprKind::kIndex) || target->is(ExprKind::kMethod)) {
    const std::span<Expr*> arguments = target->arguments();
    for (size_t i = 0; i < arguments.size(); ++i) {
      const bool by_ref =
          target->is(ExprKind::kMethod) && target->method->signature.parameters[i].by_ref;
      if (!by_ref) hold(arguments[i]);
    }
  }
  statement.held = arena_.copy<HeldPart>(held);
}

Expr* Checker::check_condition(Expr* condition) {
  Expr* checked = check(condition);
  if (checked->is(ExprKind::kError) || checked->type.kind == Kind::kBoolean) return checked;
  if (checked->type.kind == Kind::kVariant)
    return convert(checked, simple_type(Kind::kBoolean), "");
  report(checked->begin, "a condition must be a Boolean, not " + a_type(checked->type));
  return make_error(checked);
}

void Checker::check_if(IfStmt& statement) {
  for (IfStmt* part = &statement; part != nullptr; part = part->otherwise) {
    if (part->condition != nullptr) part->condition = check_condition(part->condition);
    check_block(part->body);
  }
}

void Checker::check_select(SelectStmt& statement) {
  statement.subject = check(statement.subject);
  auto* hidden = arena_.make<Variable>();
  hidden->type = statement.subject->type;
  statement.hidden = hidden;
  for (CaseClause* clause = statement.clauses; clause != nullptr; clause = clause->next) {
    for (CaseItem& item : clause->items) {
      for (Expr** value : {&item.value, &item.upper}) {
        if (*value == nullptr) continue;
        *value = check(*value);
        if ((*value)->is(ExprKind::kError) || statement.subject->is(ExprKind::kError)) continue;
        // One comparison is made for each value, of the subject's type or a wider one.
        Expr* subject = arena_.make<Expr>();
        subject->kind = ExprKind::kVariable;
        subject->variable = hidden;
        subject->type = hidden->type;
        subject->position = subject->begin = (*value)->position;
        Expr* test = arena_.make<Expr>();
        test->kind = ExprKind::kBinary;
        Operator op = item.compare;
        if (item.test == CaseTest::kRange)
          op = value == &item.upper ? Operator::kLessEqual : Operator::kGreaterEqual;
        test->op = static_cast<uint8_t>(op);
        test->position = test->begin = (*value)->begin;
        test->end = (*value)->end;
        test->left = subject;
        test->right = *value;
        *value = check_comparison(test);
      }
    }
    loops_.push_back(Leaves::kSelect);
    check_block(clause->body);
    loops_.pop_back();
  }
}

/// A loop's variable: one that exists, or a new one when a type is written or the name is free.
Expr* Checker::check_loop_variable(Expr* target, const TypeName& type_name, const Type& fallback,
                                   Variable*& declared) {
  const bool free_name = target->is(ExprKind::kName) && type_name.name == kNoName &&
                         symbol(target->name).kind == Symbol::Kind::kNone;
  if (target->is(ExprKind::kName) && (type_name.name != kNoName || free_name)) {
    const NameId name = target->name;
    const Type type = free_name ? fallback : resolve_type(type_name);
    if (type.kind == Kind::kVoid) return make_error(target);
    ++block_depth_;  // It belongs to the loop, even at module level.
    declared = declare_variable(name, target->position, type);
    --block_depth_;
    target->kind = ExprKind::kVariable;
    target->variable = declared;
    target->type = type;
    return target;
  }
  Expr* result = check(target);
  if (!result->is(ExprKind::kVariable) && !result->is(ExprKind::kError)) {
    report(result, "a loop needs a variable here");
    return make_error(result);
  }
  return result;
}

void Checker::check_body(const Block& body, Leaves loop) {
  loops_.push_back(loop);
  check_block(body);
  loops_.pop_back();
}

void Checker::check_for(ForStmt& statement) {
  statement.first = check(statement.first);
  statement.last = check(statement.last);
  if (statement.step != nullptr) statement.step = check(statement.step);
  const size_t mark = open_scope();
  statement.target = check_loop_variable(statement.target, statement.type_name,
                                         statement.first->type, statement.declared);
  const Type type = statement.target->type;
  if (!statement.target->is(ExprKind::kError)) {
    if (!type.is_number()) {
      report(statement.target, "a For counts with a number, not with " + a_type(type));
    } else {
      statement.first = convert(statement.first, type, "the first value");
      statement.last = convert(statement.last, type, "the last value");
      if (statement.step != nullptr) statement.step = convert(statement.step, type, "the step");
    }
  }
  check_body(statement.body, Leaves::kFor);
  close_scope(mark);
}

void Checker::check_for_each(ForEachStmt& statement) {
  statement.array = check(statement.array);
  const Type array = statement.array->type;
  const bool good = array.kind == Kind::kArray;
  if (!good && !statement.array->is(ExprKind::kError))
    report(statement.array->begin, "For Each walks an array, not " + a_type(array));
  const size_t mark = open_scope();
  if (good || statement.type_name.name != kNoName) {
    statement.target =
        check_loop_variable(statement.target, statement.type_name,
                            good ? array.element_type() : Type{}, statement.declared);
  }
  if (good && !statement.target->is(ExprKind::kError)) {
    Expr* element = arena_.make<Expr>();
    element->kind = ExprKind::kVariable;
    element->variable = statement.element = arena_.make<Variable>();
    element->type = statement.element->type = array.element_type();
    element->position = element->begin = element->end = statement.target->position;
    if (conversion_cost(element, statement.target->type) < 0) {
      report(statement.target, "the elements are of type " + type_text(array.element_type()) +
                                   ", not " + type_text(statement.target->type));
    } else {
      statement.value = convert(element, statement.target->type, "the element");
    }
  }
  check_body(statement.body, Leaves::kFor);
  close_scope(mark);
}

void Checker::check_leave(LeaveStmt& statement) {
  const bool leaving = statement.kind == StmtKind::kExit;
  const std::string word = leaving ? "Exit" : "Continue";
  if (statement.what == Leaves::kRoutine) {
    if (routine_ == nullptr)
      report(statement.position, "this " + word + " is in no Sub or Function");
    return;
  }
  for (const Leaves around : loops_) {
    if (around == statement.what) return;
    if (statement.what == Leaves::kInnermostLoop && around != Leaves::kSelect) return;
  }
  static constexpr std::string_view kLoops[] = {"loop", "For", "While", "Do", "Select"};
  report(statement.position,
         "this " + word + " is in no " + std::string(kLoops[static_cast<size_t>(statement.what)]));
}

void Checker::check_return(ReturnStmt& statement) {
  if (statement.value != nullptr) statement.value = check(statement.value);
  if (routine_ != nullptr && routine_->function) {
    if (statement.value == nullptr) {
      report(statement.position,
             "this Function returns " + a_type(routine_->result) + "; Return needs a value");
    } else if (routine_->result.kind != Kind::kVoid) {
      statement.value = convert(statement.value, routine_->result, "the result");
    }
  } else if (statement.value != nullptr && !statement.value->is(ExprKind::kError)) {
    report(statement.value->begin,
           routine_ != nullptr
               ? "a Sub returns no value"
               : "the script itself returns no value; Quit(n) sets its exit status");
  }
}

void Checker::check_try(TryStmt& statement) {
  check_block(statement.body);
  for (CatchClause* clause = statement.catches; clause != nullptr; clause = clause->next) {
    const size_t mark = open_scope();
    ++block_depth_;
    if (clause->name != kNoName) {
      TypeName type_name = clause->type_name;
      if (type_name.name == kNoName) {
        type_name.name = names_.intern("RuntimeException");
        type_name.position = clause->position;
      }
      const Type type = resolve_type(type_name);
      if (type.kind == Kind::kObject) {
        clause->class_info = type.class_info;
        clause->variable = declare_variable(clause->name, clause->position, type);
      } else if (type.kind != Kind::kVoid) {
        report(type_name.position, "only objects can be caught, and this is " + a_type(type));
      }
    }
    check_statements(clause->body);
    --block_depth_;
    close_scope(mark);
  }
  if (statement.has_finally) check_block(statement.finally);
}

}  // namespace krz
