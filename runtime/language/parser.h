// Builds the syntax tree of a script. Goes on after mistakes, so that one look shows all of them.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "language/arena.h"
#include "language/ast.h"
#include "language/lexer.h"
#include "language/names.h"

namespace krz {

class Parser {
 public:
  /// Reads the source from `start` on.
  Parser(DiagnosticList& diagnostics, Arena& arena, NameTable& names, SourceOffset start = 0);

  /// A script. Its routines are numbered from `first_routine` on.
  ScriptTree parse(uint32_t first_routine = 0);

  /// An expression and nothing else, as the tree's only statement.
  ScriptTree parse_expression_alone(uint32_t first_routine = 0);

  /// How the text ended. Unfinished: more lines might make it whole. Damaged: the same, but
  /// something else is wrong already.
  enum class Ending : uint8_t { kWhole, kUnfinished, kDamaged };
  Ending ending() const;

 private:
  // parser.cpp: tokens and names.
  void advance();
  bool accept(TokenKind kind);
  bool expect(TokenKind kind, std::string_view where);
  void fail(const Token& token, std::string message);
  void unexpected(std::string_view wanted);
  std::string found() const;
  /// Grows with everything that is wrong, whether it is reported or not.
  size_t mistakes() const { return failures_ + diagnostics_.size(); }
  void skip_line();
  void end_statement();
  std::string_view text_of(const Token& token) const;
  NameId expect_name(std::string_view what);
  TypeName parse_type_name();
  bool at_line_end() const;

  // parser_declarations.cpp
  void parse_dim(Stmt**& tail);
  void parse_static(Stmt**& tail);
  void parse_variables(Stmt**& tail);
  void parse_const(Stmt**& tail);
  Routine* parse_routine(ScriptTree& tree, Routine**& tail);
  RoutineParameter parse_parameter();
  std::span<Expr*> parse_bounds(TypeName& type_name);

  // parser_classes.cpp
  bool at_words(std::string_view first) const;
  bool accept_word(std::string_view word);
  void parse_class(ScriptTree& tree, ClassDecl**& tail);
  void parse_member(ScriptTree& tree, ClassDecl& owner, Routine**& method_tail,
                    ClassField**& field_tail, ClassConstant**& constant_tail);

  // parser_statements.cpp
  Block parse_block();
  void parse_statement(Stmt**& tail);
  void parse_simple_statement(Stmt**& tail);
  void parse_simple_statements(Stmt**& tail);
  std::optional<Operator> accept_assigning_operator();
  bool at_argument_in_parens() const;
  Expr* return_to_spaced_paren();
  Stmt* parse_if(SourceOffset position);
  IfStmt* parse_if_tail(SourceOffset opening);
  Stmt* parse_single_line_if(IfStmt* statement);
  Stmt* parse_select(SourceOffset position);
  CaseItem parse_case_item();
  Stmt* parse_try(SourceOffset position);
  Stmt* parse_leave(SourceOffset position, StmtKind kind);
  Stmt* parse_redim(SourceOffset position);
  Stmt* parse_print(SourceOffset position);
  bool at_block_end() const;
  bool at_routine() const {
    return token_.kind == TokenKind::kSub || token_.kind == TokenKind::kFunction;
  }
  void recover_from_missing_end();
  void not_closed(SourceOffset opening, std::string_view opener, std::string_view missing);
  void close(std::string_view opener, SourceOffset opening, TokenKind second);

  // parser_loops.cpp
  Stmt* parse_for(SourceOffset position);
  Stmt* parse_for_each(SourceOffset position);
  void close_for(SourceOffset opening, const Expr* target);
  Expr* parse_loop_variable(TypeName& type_name);
  Stmt* parse_while(SourceOffset position);
  Stmt* parse_do(SourceOffset position);
  bool parse_loop_condition(DoStmt* statement);

  // parser_expressions.cpp
  Expr* parse_expression(int lowest = 0);
  Expr* parse_operand();
  Expr* parse_prefix(Operator op, int level);
  Expr* parse_postfix();
  Expr* parse_primary();
  Expr* parse_new();
  Expr* parse_literal();
  Expr* parse_integer(std::string_view digits, int base);
  Expr* parse_string();
  std::span<Expr*> parse_arguments_in_parens();
  std::span<Expr*> parse_list(TokenKind terminator);
  Expr* make_expr(ExprKind kind, SourceOffset position);
  Expr* error_expr();
  Expr* finish(Expr* expr, SourceOffset begin, size_t depth_below);

  template <class T>
  T* make_stmt(StmtKind kind, SourceOffset position) {
    T* statement = arena_.make<T>();
    statement->kind = kind;
    statement->position = position;
    return statement;
  }
  static void append(Stmt**& tail, Stmt* statement) {
    *tail = statement;
    tail = &statement->next;
  }
  std::span<Expr*> take_scratch(size_t first);
  static bool is_binary_operator(TokenKind kind);

  /// A "(" with a blank before it, behind the name that a statement begins with.
  struct SpacedParen {
    size_t lexer_position;
    Token token;
    Token previous;
    Expr* callee;
  };

  DiagnosticList& diagnostics_;
  Arena& arena_;
  NameTable& names_;
  Lexer lexer_;
  Token token_;
  Token previous_;
  std::vector<Expr*> scratch_;
  std::optional<SpacedParen> spaced_paren_;
  int expression_depth_ = 0;
  int block_depth_ = 0;
  size_t failures_ = 0;
  size_t not_closed_ = 0;         // blocks that the end of the text cuts off
  size_t found_before_line_ = 0;  // diagnostics; what the lexer says of a line is enough for it
  bool line_failed_ = false;      // something on this line was reported already
};

}  // namespace krz
