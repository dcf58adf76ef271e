// Turns a checked syntax tree into instructions.
#pragma once

#include <array>
#include <vector>

#include "language/ast.h"
#include "language/code.h"

namespace krz {

class Compiler {
 public:
  Compiler(Program& program, DiagnosticList& diagnostics, const NameTable& names);

  /// REQUIRES: the checker found nothing wrong. What does not fit in the instructions' fields is
  /// reported.
  void compile(const ScriptTree& tree);

  /// The same for a piece of a session. Routine 0 of the program only lays out the variables of the
  /// module, to which those of this piece are added; the code outside of Subs and Functions becomes
  /// routine 1 and sees them as a Sub does.
  /// `start` is where the piece begins.
  void compile_piece(const ScriptTree& tree, SourceOffset start);

 private:
  using Register = uint16_t;
  using Label = uint16_t;

  /// Where a value lies. A temporary is given back by release().
  struct Operand {
    Register reg = kNoRegister;
    Storage storage = Storage::kNumber;
    bool temporary = false;
  };

  /// How many registers of each storage are in use.
  using Level = std::array<uint16_t, 3>;

  /// Something around the current statement that Exit, Continue and Return have to get out of.
  struct Flow {
    enum class Kind : uint8_t { kLoop, kSelect, kFinally } kind;
    Leaves loop = Leaves::kInnermostLoop;
    Label leave = 0;
    Label again = 0;  // of a loop: where Continue goes
    Level level{};
    size_t finally = 0;  // of kFinally: index in finallies_
  };

  /// Where control goes after the Finally blocks on the way.
  struct Destination {
    enum class Kind : uint8_t { kLabel, kReturn } kind;
    Label label = 0;
    size_t flow_depth = 0;  // entries of flows_ that stay
    Level level{};
  };

  /// A Finally block that is entered from several places. `state` tells which, so that its end
  /// knows where to go on.
  struct Finally {
    Register state;
    Label start;
    std::vector<Destination> exits;  // for the states from kFirstExit
  };

  // compiler.cpp: routines, registers, labels, instructions.
  void declare_routines(const ScriptTree& tree);
  void compile_main(const ScriptTree& tree);
  void compile_routines(const ScriptTree& tree);
  void add_variable(Variable& variable);
  void compile_routine(const Routine& routine);
  void begin_routine(std::string_view name);
  void finish_routine(SourceOffset position);
  void place_globals(const Block& body);
  Operand allocate(Storage storage);
  void release(Operand operand);
  void clear(Register reg, Storage storage);
  void close_scope(const Level& level);
  void clear_above(const Level& level);
  Label new_label();
  void place(Label label);
  size_t emit(Op op, size_t a = 0, size_t b = 0, size_t c = 0);
  void emit_wide(Op op, Register a, int32_t value);
  void emit_jump(Op op, Label label, Register a = 0, Register b = 0);
  void emit_registers(const std::vector<uint16_t>& registers);
  void mark(const Expr* expr, const Expr* receiver = nullptr);
  void mark_position(SourceOffset position);
  void too_much(std::string_view what);
  RoutineCode& code() { return *code_; }
  size_t here() const { return code_->code.size(); }
  static Op with_storage(Op first, Storage storage);
  template <class T>
  uint16_t index_in(std::vector<T>& table, const T& item, std::string_view what);

  // compiler_expressions.cpp
  Operand value(const Expr* expr);
  Operand stable_value(const Expr* expr, bool must_copy);
  void into(const Expr* expr, Register target);
  void load_literal(const Expr* expr, Register target);
  void load_text(std::string_view text, Register target);
  void load_variable(const Variable& variable, Register target);
  void binary_into(const Expr* expr, Register target);
  void arithmetic(const Expr* expr, Register target);
  void comparison(const Expr* expr, Register target);
  void variant_operation(const Expr* expr, Register target);
  void concatenate(const Expr* expr, Register target);
  void convert_into(const Expr* expr, Register target);
  bool lies_in_register(const Variable& variable) const;

  // compiler_conditions.cpp
  void branch(const Expr* condition, bool when, Label label);
  bool branch_on_comparison(const Expr* condition, bool when, Label label);
  bool branch_on_integers(Operator op, const Expr* left, const Expr* right, Label label);
  void condition_into(const Expr* expr, Register target);

  // compiler_calls.cpp
  /// An element of an array, its array and index evaluated.
  struct Place {
    Operand array;
    Operand index;
    uint16_t slot = kNoRegister;  // of a property, whose instance is in `array`
  };
  struct Arguments {
    std::vector<uint16_t> registers;
    std::vector<Operand> held;                            // given back after the call, last first
    std::vector<std::pair<Place, Operand>> written_back;  // elements handed by reference
  };
  void call_into(const Expr* expr, Register target);
  void method_into(const Expr* expr, Register target, Register receiver);
  void new_into(const Expr* expr, Register target);
  void property_into(const Expr* expr, Register target);
  void builtin_into(const Expr* expr, Register target);
  void make_array_into(const Expr* expr, Register target);
  void evaluate_arguments(const Expr* expr, Arguments& arguments);
  Operand address_of(const Expr* expr, Arguments& arguments);
  void finish_arguments(Arguments& arguments);
  Place element_place(const Expr* expr, bool must_copy);
  void release(const Place& place);
  void element_into(const Expr* expr, Register target);
  void store(const Expr* target, const Operand& source);
  void store_variable(const Variable& variable, const Operand& source);
  void discard(const Expr* expr);

  // compiler_classes.cpp
  void declare_code(const Routine& routine);
  void compile_class(const ClassDecl& owner);
  void compile_shared_fields(const ClassDecl& owner);
  void make_first_value(const DimStmt& statement);
  void make_field_value(const DimStmt& field, Register target);
  void routine_into(const Expr* expr, Register target, Register receiver);
  void field_into(const Expr* expr, Register target);
  Operand field_address(const Expr* expr, Arguments& arguments);
  void initialise(const ScriptClass& info, Register made);

  // compiler_statements.cpp
  void compile_scope(const Block& block);
  void compile_block(const Block& block);
  void compile_statement(const Stmt* statement);
  void compile_dim(const DimStmt& statement);
  void compile_static(const DimStmt& statement);
  void make_array(const DimStmt& statement, Register target);
  void compile_redim(const ReDimStmt& statement);
  void compile_assign(const AssignStmt& statement);
  void compile_print(const PrintStmt& statement);
  void compile_if(const IfStmt& statement);
  void compile_select(const SelectStmt& statement);
  std::vector<uint16_t> bounds(std::span<Expr* const> exprs, std::vector<Operand>& held);

  // compiler_loops.cpp
  void compile_for(const ForStmt& statement);
  Operand for_step(const ForStmt& statement, Kind kind);
  void compile_for_each(const ForEachStmt& statement);
  void compile_while(const WhileStmt& statement);
  void compile_do(const DoStmt& statement);
  void compile_loop_body(const Block& body, Leaves kind, Label leave, Label again);
  void place_variable(Variable& variable);

  // compiler_exits.cpp: Exit, Continue, Return, Try.
  void compile_leave(const LeaveStmt& statement);
  void compile_return(const ReturnStmt& statement);
  void compile_try(const TryStmt& statement);
  void compile_catches(const TryStmt& statement);
  void leave_to(Destination destination);
  void add_handler(size_t begin, size_t end, Operand exception, Operand position,
                   const Level& level);

  Program& program_;
  DiagnosticList& diagnostics_;
  const NameTable& names_;
  RoutineCode* code_ = nullptr;
  const Routine* routine_ = nullptr;
  std::array<std::vector<Register>, 3>
      registers_;  // of each storage, in the order they were first needed
  Level used_{};
  std::vector<int64_t> labels_;  // places, -1 while unknown
  std::vector<uint32_t> jumps_;  // instructions whose distance is still a label
  std::vector<Flow> flows_;
  std::vector<Finally> finallies_;
  SourceOffset start_ = 0;
  bool variables_apart_ = false;  // the module's variables are not in the frame of its own code
  Operand result_;                // of a Function: what Return hands over
  bool overflowed_ = false;
};

}  // namespace krz
