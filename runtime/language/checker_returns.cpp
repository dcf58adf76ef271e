// Whether the end of a Function can be reached, where it would have no value to give.
#include "language/checker.h"
#include "language/types.h"

namespace krz {
namespace {

class EndFinder {
 public:
  /// Whether control can leave the block at its end, or the routine without a Return.
  bool reaches_end(const Block& block) { return passes(block) || leaves_routine_; }

 private:
  /// A loop or Select around the current statement.
  struct Around {
    Leaves kind;
    bool left = false;       // by an Exit
    bool continued = false;  // by a Continue
  };

  bool passes(const Block& block) {
    for (const Stmt* one = block.first; one != nullptr; one = one->next) {
      if (!passes(*one)) return false;
    }
    return true;
  }

  static bool is_true(const Expr* condition) {
    return condition->is(ExprKind::kLiteral) && condition->type.kind == Kind::kBoolean &&
           condition->literal.boolean != 0;
  }
  static bool is_false(const Expr* condition) {
    return condition->is(ExprKind::kLiteral) && condition->type.kind == Kind::kBoolean &&
           condition->literal.boolean == 0;
  }

  Around loop(const Block& body, Leaves kind, bool& body_passes) {
    around_.push_back({kind});
    body_passes = passes(body);
    const Around result = around_.back();
    around_.pop_back();
    return result;
  }

  void leave(const LeaveStmt& statement) {
    if (statement.what == Leaves::kRoutine) {
      leaves_routine_ = true;
      return;
    }
    for (size_t i = around_.size(); i > 0; --i) {
      Around& one = around_[i - 1];
      const bool meant = one.kind == statement.what ||
                         (statement.what == Leaves::kInnermostLoop && one.kind != Leaves::kSelect);
      if (!meant) continue;
      (statement.kind == StmtKind::kExit ? one.left : one.continued) = true;
      return;
    }
  }

  bool passes(const Stmt& statement) {
    switch (statement.kind) {
      case StmtKind::kReturn:
      case StmtKind::kRaise:
        return false;
      case StmtKind::kExit:
      case StmtKind::kContinue:
        leave(static_cast<const LeaveStmt&>(statement));
        return false;
      case StmtKind::kExpression: {
        const Expr* expression = static_cast<const ExpressionStmt&>(statement).expression;
        return !expression->is(ExprKind::kBuiltin) || expression->builtin() != Builtin::kQuit;
      }
      case StmtKind::kIf:
        return passes_if(static_cast<const IfStmt&>(statement));
      case StmtKind::kSelect:
        return passes_select(static_cast<const SelectStmt&>(statement));
      case StmtKind::kTry:
        return passes_try(static_cast<const TryStmt&>(statement));
      default:
        return passes_loop(statement);
    }
  }

  bool passes_if(const IfStmt& statement) {
    bool any = false;
    for (const IfStmt* part = &statement; part != nullptr; part = part->otherwise) {
      any = passes(part->body) || any;
      if (part->condition != nullptr && part->otherwise == nullptr) any = true;
    }
    return any;
  }

  bool passes_select(const SelectStmt& statement) {
    bool any = false;
    bool has_else = false;
    around_.push_back({Leaves::kSelect});
    for (const CaseClause* one = statement.clauses; one != nullptr; one = one->next) {
      any = passes(one->body) || any;
      has_else = has_else || one->items.empty();
    }
    any = any || around_.back().left;
    around_.pop_back();
    return any || !has_else;
  }

  bool passes_try(const TryStmt& statement) {
    bool any = passes(statement.body);
    for (const CatchClause* one = statement.catches; one != nullptr; one = one->next)
      any = passes(one->body) || any;
    return (!statement.has_finally || passes(statement.finally)) && any;
  }

  bool passes_loop(const Stmt& statement) {
    bool body_passes = false;
    switch (statement.kind) {
      case StmtKind::kFor:
        loop(static_cast<const ForStmt&>(statement).body, Leaves::kFor, body_passes);
        return true;
      case StmtKind::kForEach:
        loop(static_cast<const ForEachStmt&>(statement).body, Leaves::kFor, body_passes);
        return true;
      case StmtKind::kWhile: {
        const auto& one = static_cast<const WhileStmt&>(statement);
        return loop(one.body, Leaves::kWhile, body_passes).left || !is_true(one.condition);
      }
      case StmtKind::kDo: {
        const auto& one = static_cast<const DoStmt&>(statement);
        const Around around = loop(one.body, Leaves::kDo, body_passes);
        if (around.left) return true;
        if (one.condition == nullptr) return false;
        const bool endless = one.until ? is_false(one.condition) : is_true(one.condition);
        if (endless) return false;
        return !one.at_end || body_passes || around.continued;
      }
      default:
        return true;
    }
  }

  std::vector<Around> around_;
  bool leaves_routine_ = false;
};

}  // namespace

void Checker::check_end(const Routine& routine) {
  if (!EndFinder().reaches_end(routine.body)) return;
  report(routine.end, "this Function can end without Return; it gives " +
                          (routine.result.kind == Kind::kVoid ? std::string("a value")
                                                              : a_type(routine.result)));
}

}  // namespace krz
