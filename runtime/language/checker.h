// Finds out what every name of a script means and what type every expression has, and reports what
// makes no sense.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "language/arena.h"
#include "language/ast.h"
#include "language/names.h"
#include "language/script_class.h"
#include "language/source.h"
#include "object/string.h"
#include "registry/registry.h"

namespace krz {

class Checker {
 public:
  /// What a name stands for.
  struct Symbol {
    enum class Kind : uint8_t { kNone, kVariable, kConstant, kRoutine, kReported };
    Kind kind = Kind::kNone;
    SourceOffset position = 0;
    uint32_t routine_scope = 0;  // 0: module level
    union {
      Variable* variable = nullptr;
      Expr* constant;
      Routine* routine;
    };
  };

  /// What is declared at module level, by NameId. It lives in the arena of the trees.
  struct Declarations {
    std::vector<Symbol> symbols;
    std::vector<ClassDecl*> classes;
  };

  /// The script's classes are added to `script_classes`.
  Checker(Registry& registry, DiagnosticList& diagnostics, Arena& arena, NameTable& names,
          ScriptClassList& script_classes);

  /// Completes the tree in place. The tree is fit for the compiler when there are no diagnostics
  /// afterwards. Of a tree with mistakes of the parser, what parsed whole is checked; names that
  /// may have been lost with the rest are then not missed.
  void check(ScriptTree& tree);

  /// For a piece of a session: what earlier pieces declare is known to it, and it may declare the
  /// same names again. A variable of the same type then stays the same variable; a routine that is
  /// called just like an earlier one is to take its place.
  void know(const Declarations& earlier);

  /// What is known after the piece was checked.
  Declarations declarations() const { return {symbols_, classes_by_name_}; }

  /// Completes a tree that is an expression alone, whose value, if it has one, goes to tree.shown.
  void check_expression_alone(ScriptTree& tree);

  /// What may follow a dot behind a tree that is an expression alone.
  std::vector<std::string> members_of_expression(ScriptTree& tree);

 private:
  struct HiddenSymbol {
    NameId name;
    Symbol symbol;
  };

  /// One of several things that a call may mean.
  struct Callable {
    const MethodInfo* method = nullptr;
    Routine* routine = nullptr;

    size_t count() const;
    size_t required() const;
    Type type(size_t parameter) const;
    bool by_ref(size_t parameter) const;
    std::string_view parameter_name(size_t parameter, const NameTable& names) const;
  };

  /// The scope of what earlier pieces of a session declare.
  static constexpr uint32_t kEarlier = ~uint32_t{0};

  // checker.cpp: scopes and declarations.
  void report(SourceOffset position, std::string message);
  void report(const Expr* expr, std::string message) { report(expr->position, std::move(message)); }
  Symbol& symbol(NameId name);
  void declare(NameId name, SourceOffset position, Symbol what);
  Variable* declare_variable(NameId name, SourceOffset position, const Type& type);
  size_t open_scope() const { return hidden_.size(); }
  void close_scope(size_t mark);
  Type resolve_type(const TypeName& written);
  const ClassInfo* resolve_class(NameId name, SourceOffset position);
  void declare_routines(ScriptTree& tree);
  void check_declarations(const Block& body);
  const Symbol* find_hidden(NameId name) const;
  static void find_replaced(Routine& routine, const Routine* earlier);
  void check_signature(Routine& routine);
  void declare_module_constants(const Block& body);
  void declare_constant(ConstStmt& statement);
  void check_routine(Routine& routine);
  std::string text(NameId name) const { return shown_text(names_.text(name)); }
  std::vector<std::string_view> visible_names();
  std::string suggestion(std::string_view name,
                         const std::vector<std::string_view>& candidates) const;

  // checker_classes.cpp: declarations of classes.
  void declare_classes(ScriptTree& tree);
  void settle_class(ClassDecl& lowest);
  void settle_below(ClassDecl& owner, const ClassInfo* superclass);
  void declare_members(ClassDecl& owner);
  Variable* make_self_variable(const ClassDecl& owner);
  void check_member_name(const ClassDecl& owner, NameId name, SourceOffset position,
                         const void* member);
  void declare_class_constants(ClassDecl& owner);
  void declare_field(ClassDecl& owner, ClassField& field, size_t& number);
  void declare_method(ClassDecl& owner, Routine& method);
  void place_method(ClassDecl& owner, Routine& method);
  void check_class(ClassDecl& owner);
  void check_field(DimStmt& field);
  void declare_self(Routine& routine);

  // checker_members.cpp: using the members of the script's classes.
  struct Member {
    const ClassDecl* owner = nullptr;
    ClassField* field = nullptr;
    ClassConstant* constant = nullptr;
    std::vector<Callable> methods;
  };
  const ClassInfo* find_class(NameId name);
  bool may_use(Access access, const ClassDecl& owner) const;
  bool check_access(const Expr* expr, NameId name, Access access, const ClassDecl& owner);
  static void add_candidate(std::vector<Callable>& methods, const Callable& candidate);
  const Member& find_member(const ClassDecl& owner, NameId name);
  Member look_up_member(const ClassDecl& owner, NameId name) const;
  void add_script_members(const ClassInfo* class_info, std::vector<std::string>& names) const;
  std::vector<Callable> find_constructors(const ClassInfo* class_info);
  bool names_own_member(NameId name);
  Expr* make_self(const Expr* place);
  bool is_super(const Expr* expr);
  Expr* check_own_member(Expr* expr, std::span<Expr*> arguments, bool has_parens);
  Expr* check_super_member(Expr* expr, std::span<Expr*> arguments, bool has_parens);
  Expr* check_script_member(Expr* expr, const ClassDecl& owner, std::span<Expr*> arguments,
                            Dispatch dispatch);
  Expr* check_script_field(Expr* expr, const Member& member, std::span<Expr*> arguments);
  Expr* resolve_script_methods(Expr* expr, const Member& member, std::span<Expr*> arguments,
                               Dispatch dispatch);
  void make_super_call(Routine& constructor);
  bool check_assigned_call(AssignStmt& statement);

  // checker_returns.cpp
  void check_end(const Routine& routine);

  // checker_statements.cpp
  void check_block(const Block& block);
  void check_statements(const Block& block);
  void check_statement(Stmt* statement);
  void check_dim(DimStmt& statement);
  void check_redim(ReDimStmt& statement);
  void check_assign(AssignStmt& statement);
  void hold_parts(AssignStmt& statement);
  void check_if(IfStmt& statement);
  void check_select(SelectStmt& statement);
  void check_for(ForStmt& statement);
  void check_for_each(ForEachStmt& statement);
  void check_leave(LeaveStmt& statement);
  void check_return(ReturnStmt& statement);
  void check_try(TryStmt& statement);
  void check_bounds(std::span<Expr*> bounds);
  Expr* check_condition(Expr* condition);
  Expr* check_loop_variable(Expr* target, const TypeName& type_name, const Type& fallback,
                            Variable*& declared);
  void check_body(const Block& body, Leaves loop);

  // checker_names.cpp: what names and members mean.
  Expr* check(Expr* expr);      // a value
  Expr* check_any(Expr* expr);  // a value or a call without one
  Expr* check_name(Expr* expr);
  Expr* check_member(Expr* expr);
  Expr* check_class_member(Expr* expr, const ClassInfo& owner, std::span<Expr*> arguments);
  Expr* check_object_member(Expr* expr, std::span<Expr*> arguments, bool has_parens);
  Expr* check_color_member(Expr* expr);
  Expr* check_index(Expr* array, Expr* call);
  Expr* check_call(Expr* expr);
  Expr* check_named_call(Expr* expr);
  Expr* check_new(Expr* expr);
  Expr* check_is_a(Expr* expr);
  Expr* check_conversion(Expr* call, const Type& target);
  const ClassInfo* class_of_name(const Expr* expr);
  Expr* unknown_name(Expr* expr, bool called);
  std::vector<std::string> member_names(const Type& owner) const;
  Expr* unknown_member(Expr* expr, const Type& owner);
  Expr* constant_value(Expr* use, const Expr& literal);
  Expr* registered_constant(Expr* use, const ConstantInfo& constant);

  // checker_arrays.cpp: what every array offers.
  Expr* check_array_member(Expr* expr, std::span<Expr*> arguments);
  Expr* check_builtin_call(Expr* call, Builtin builtin);
  Builtin find_builtin(NameId name) const;
  Expr* check_array_literal(Expr* call);
  bool check_count(const Expr* expr, size_t least, size_t most, std::string_view usage);

  // checker_calls.cpp: overloads and arguments.
  bool check_arguments(std::span<Expr*> arguments);
  Expr* resolve_call(Expr* expr, std::span<const Callable> candidates, std::span<Expr*> arguments);
  Expr* resolve_methods(Expr* expr, std::span<const MethodInfo* const> methods,
                        std::span<Expr*> arguments);
  Expr* resolve_routines(Expr* expr, Routine* first, std::span<Expr*> arguments);
  int call_cost(const Callable& callable, std::span<Expr*> arguments) const;
  int argument_cost(const Callable& callable, size_t index, const Expr* argument) const;
  void report_mismatch(const Expr* expr, std::span<const Callable> candidates,
                       std::span<Expr*> arguments);
  Expr* finish_call(Expr* expr, const Callable& chosen, std::span<Expr*> arguments);
  Expr* default_argument(const Callable& callable, size_t index, SourceOffset position);
  std::string declaration_text(const Callable& callable) const;
  std::string callable_name(const Callable& callable) const;

  // checker_operators.cpp
  Expr* check_unary(Expr* expr);
  Expr* check_binary(Expr* expr);
  Expr* check_arithmetic(Expr* expr);
  Expr* check_comparison(Expr* expr);
  Expr* check_logic(Expr* expr);
  Expr* check_concatenation(Expr* expr);
  bool compare_types(Expr*& left, Expr*& right, Operator op);
  bool make_variant_operands(Expr* expr);
  Expr* bad_operands(Expr* expr);

  // checker_conversions.cpp
  int conversion_cost(const Expr* expr, const Type& target) const;
  Expr* convert(Expr* expr, const Type& target, std::string_view purpose);
  Expr* convert_freely(Expr* expr, const Type& target);
  Expr* make_conversion(Expr* expr, Conversion conversion, const Type& target);
  Expr* widen(Expr* expr, Kind target);
  Expr* through_variant(Expr* expr, const Type& target);
  Expr* to_text(Expr* expr);
  std::string conversion_advice(const Expr* expr, const Type& target) const;

  Expr* make_error(Expr* expr);
  Expr* make_integer(int32_t value, SourceOffset position);
  static void absorb(Expr* expr, const Expr* child) { expr->calls = expr->calls || child->calls; }

  Registry& registry_;
  DiagnosticList& diagnostics_;
  Arena& arena_;
  NameTable& names_;
  ScriptClassList& script_classes_;
  std::vector<ClassDecl*> classes_by_name_;  // by NameId
  std::vector<ClassDecl*> ordered_classes_;  // superclasses first
  std::vector<Variable*> hidden_globals_;
  bool members_declared_ = false;  // the map below holds what it will hold
  std::map<std::pair<const ClassDecl*, NameId>, Member> members_;
  ClassDecl* class_ = nullptr;        // whose member is being checked
  std::vector<Symbol> symbols_;       // by NameId
  std::vector<HiddenSymbol> hidden_;  // what the symbols of open scopes hide, to be restored
  std::vector<Leaves> loops_;         // around the statement being checked
  Routine* routine_ = nullptr;        // being checked; null at module level
  uint32_t routine_scope_ = 0;
  int block_depth_ = 0;
  bool names_lost_ = false;
};

/// Whether calls of the one fit the other.
bool same_parameters(const Routine& a, const Routine& b);

/// Folds an operator over literals; null when it cannot be folded. The operands have one type.
Expr* fold_binary(Expr* expr, Arena& arena);

}  // namespace krz
