// Reads, checks, compiles and runs the pieces of a session.
#include "language/session.h"

#include <utility>

#include "language/compiler.h"
#include "language/includes.h"
#include "language/parser.h"
#include "language/session_state.h"
#include "language/shown_value.h"
#include "object/exceptions.h"
#include "object/memory_budget.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {
namespace {

/// Whether a tree may as well be read as an expression: it is one statement that only calls.
bool is_one_call(const ScriptTree& tree) {
  const Stmt* first = tree.body.first;
  return first != nullptr && first->next == nullptr && first->kind == StmtKind::kExpression &&
         tree.routines == nullptr && tree.classes == nullptr;
}

bool is_empty(const ScriptTree& tree) {
  return tree.body.first == nullptr && tree.routines == nullptr && tree.classes == nullptr;
}

}  // namespace

Session::State::State(Runtime& host, std::string name)
    : runtime(host), source({}, std::move(name)), machine(host, program, source) {
  source.prepare_for(kMaxSourceSize);
  // The frame of the variables, and the code of the piece that runs.
  program.routines.resize(2);
  started = machine.start();
}

Session::State::~State() {
  if (started) machine.finish();
}

Session::Result Session::State::report(DiagnosticList& diagnostics) {
  for (const Diagnostic& one : diagnostics.take()) runtime.write_error(one.text());
  return Result::kFailed;
}

/// Adds a piece, with what it includes, to the session's text and says where it begins there.
/// Nothing when that is not possible, which has then been reported.
std::optional<SourceOffset> Session::State::take_in(std::string_view text, std::string_view file) {
  std::string lines(text.size() <= kMaxSourceSize ? text : std::string_view());
  if (!lines.ends_with('\n')) lines += '\n';
  SourceText piece(lines, file.empty() ? source.file() : std::string(file));
  DiagnosticList diagnostics(piece);
  read_includes(piece, diagnostics);
  const size_t start = source.text().size();
  if (text.size() > kMaxSourceSize || piece.text().size() > kMaxSourceSize - start) {
    runtime.write_error("this session is longer than 16 MiB; begin a new one\n");
    return std::nullopt;
  }
  source.append(piece);
  const int lines_before = source.line_of(static_cast<SourceOffset>(start)) - 1;
  if (diagnostics.empty()) return static_cast<SourceOffset>(start);
  for (Diagnostic& one : diagnostics.take()) {
    if (one.file == piece.file()) one.line += lines_before;
    runtime.write_error(one.text());
  }
  return std::nullopt;
}

void Session::State::parse(Reading& reading, SourceOffset start, bool expression) {
  Parser parser(reading.diagnostics, arena, names, start);
  const auto first_routine = static_cast<uint32_t>(program.routines.size() - 1);
  reading.tree =
      expression ? parser.parse_expression_alone(first_routine) : parser.parse(first_routine);
}

void Session::State::check(Reading& reading, bool expression) {
  if (reading.diagnostics.full() || !reading.tree.classes_whole) return;
  const size_t classes = program.script_classes.size();
  Checker checker(runtime.registry(), reading.diagnostics, arena, names, program.script_classes);
  checker.know(known);
  if (expression) {
    checker.check_expression_alone(reading.tree);
  } else {
    checker.check(reading.tree);
  }
  if (reading.diagnostics.empty()) {
    reading.declarations = checker.declarations();
  } else {
    program.script_classes.resize(classes);
  }
}

/// Adds a piece to the program, which stays what it was when that is not possible.
bool Session::State::compile(Reading& reading, SourceOffset start) {
  const RoutineCode frame = program.routines[0];
  const size_t routines = program.routines.size();
  std::vector<std::pair<size_t, RoutineCode>> replaced;
  for (Routine* one = reading.tree.routines; one != nullptr; one = one->next) {
    if (one->replaced == nullptr) continue;
    // Callers know a routine by its number, which the new one takes over.
    one->index = one->replaced->index;
    RoutineCode& code = program.routines[size_t{one->index} + 1];
    replaced.emplace_back(one->index + 1, std::exchange(code, {}));
  }
  Variable* value = reading.tree.shown;
  std::optional<uint16_t>* place = nullptr;
  if (value != nullptr) {
    place = &shown[static_cast<size_t>(storage_of(value->type.kind))];
    value->placed = place->has_value();
    value->reg = place->value_or(0);
  }
  Compiler(program, reading.diagnostics, names).compile_piece(reading.tree, start);
  if (reading.diagnostics.empty()) {
    if (place != nullptr) *place = value->reg;
    return true;
  }
  program.routines[0] = frame;
  for (size_t i = replaced.size(); i > 0; --i)
    program.routines[replaced[i - 1].first] = std::move(replaced[i - 1].second);
  program.routines.resize(routines);
  return false;
}

Session::Result Session::State::run(std::string_view text, std::string_view file) {
  const std::optional<SourceOffset> start = take_in(text, file);
  if (!start || !started) return Result::kFailed;

  // An expression is no statement of the language, but many statements are expressions: "x - 1"
  // may be x less 1 or a call of x with -1. The meaning that makes sense is taken.
  Reading statements(source);
  parse(statements, *start, false);
  Reading* chosen = &statements;
  Reading expression(source);
  const bool parses = statements.diagnostics.empty();
  if (!parses || is_one_call(statements.tree)) {
    parse(expression, *start, true);
    if (expression.diagnostics.empty()) {
      check(expression, true);
      chosen = &expression;
    } else if (!parses && expression.diagnostics.first() > statements.diagnostics.first()) {
      chosen = &expression;  // It made sense for longer.
    }
  }
  if (chosen == &statements) check(statements, false);
  if (chosen == &expression && parses && !expression.diagnostics.empty()) {
    check(statements, false);
    if (statements.diagnostics.empty()) chosen = &statements;
  }
  if (!chosen->diagnostics.empty()) return report(chosen->diagnostics);
  if (is_empty(chosen->tree)) return Result::kDone;
  if (!compile(*chosen, *start)) return report(chosen->diagnostics);
  known = std::move(chosen->declarations);
  return execute(chosen->tree);
}

Session::Result Session::State::execute(const ScriptTree& tree) {
  Machine::forget_interrupt();
  Machine::Outcome outcome = machine.run_piece();
  if (tree.shown != nullptr) {
    if (outcome == Machine::Outcome::kFinished) show(*tree.shown);
    set_owned(machine.variable(tree.shown->reg), storage_of(tree.shown->type.kind), {});
    outcome = machine.real_outcome(outcome);
  }
  runtime.flush_output();
  switch (outcome) {
    case Machine::Outcome::kFinished:
      return Result::kDone;
    case Machine::Outcome::kQuit:
      return Result::kQuit;
    case Machine::Outcome::kInterrupted:
      return Result::kInterrupted;
    case Machine::Outcome::kUncaught:
      break;
  }
  return Result::kFailed;
}

void Session::State::show(const Variable& value) {
  const Machine::Undisturbed undisturbed(machine);
  runtime.write_output(shown_value(value.type, machine.variable(value.reg), names) + "\n");
  // What getters raise is no business of whoever looks at an object.
  unlock_object(take_pending_exception());
  memory_budget::take_refusal();
}

Session::Session(Runtime& runtime, std::string name)
    : state_(std::make_unique<State>(runtime, std::move(name))) {}
Session::~Session() = default;

Session::Result Session::run(std::string_view text, std::string_view file) {
  return state_->run(text, file);
}
int Session::exit_status() const { return state_->machine.exit_status(); }

Session::Completeness Session::completeness(std::string_view text) {
  const SourceText source(text, {});
  DiagnosticList diagnostics(source);
  Arena arena;
  NameTable names;
  Parser parser(diagnostics, arena, names);
  parser.parse();
  switch (parser.ending()) {
    case Parser::Ending::kUnfinished:
      return Completeness::kUnfinished;
    case Parser::Ending::kDamaged:
      return Completeness::kDamaged;
    case Parser::Ending::kWhole:
      break;
  }
  return Completeness::kWhole;
}

}  // namespace krz
