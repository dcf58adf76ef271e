// From source text to a program that runs.
#include "language/script.h"

#include "language/bytecode.h"
#include "language/checker.h"
#include "language/compiler.h"
#include "language/includes.h"
#include "language/machine.h"
#include "language/parser.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {

struct Script::State {
  State(Runtime& host, std::string_view text, std::string file)
      : runtime(host), source(text, std::move(file)) {}

  Runtime& runtime;
  SourceText source;
  Arena arena;  // holds texts of the program
  Program program;
};

Script::Script(std::unique_ptr<State> state) : state_(std::move(state)) {}
Script::~Script() = default;

std::unique_ptr<Script> Script::compile(Runtime& runtime, std::string_view source, std::string file,
                                        std::vector<Diagnostic>& diagnostics) {
  const bool fits = source.size() <= kMaxSourceSize;
  auto state =
      std::make_unique<State>(runtime, fits ? source : std::string_view(), std::move(file));
  DiagnosticList list(state->source);
  if (!fits) {
    list.add(0, "this script is larger than 16 MiB");
  } else {
    read_includes(state->source, list);
    NameTable names;
    Parser parser(list, state->arena, names);
    ScriptTree tree = parser.parse();
    // What members a damaged class has cannot be said; the rest would be called wrong for it.
    if (!list.full() && tree.classes_whole) {
      Checker(runtime.registry(), list, state->arena, names, state->program.script_classes)
          .check(tree);
    }
    if (list.empty()) Compiler(state->program, list, names).compile(tree);
  }
  diagnostics = list.take();
  if (!diagnostics.empty()) return nullptr;
  return std::unique_ptr<Script>(new Script(std::move(state)));
}

std::string Script::bytecode() const { return write_bytecode(state_->program); }

std::unique_ptr<Script> Script::load(Runtime& runtime, std::string_view bytecode,
                                     std::string_view source, std::string file) {
  auto state = std::make_unique<State>(runtime, source, std::move(file));
  DiagnosticList list(state->source);
  read_includes(state->source, list);
  if (!read_bytecode(bytecode, runtime.registry(), state->program)) return nullptr;
  return std::unique_ptr<Script>(new Script(std::move(state)));
}

int Script::run() { return Machine(state_->runtime, state_->program, state_->source).run(); }

void Script::interrupt() { Machine::interrupt(); }

bool Script::is_interrupted() { return Machine::interrupted(); }

}  // namespace krz
