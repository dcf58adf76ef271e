// What a session knows between its pieces.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "language/arena.h"
#include "language/checker.h"
#include "language/code.h"
#include "language/machine.h"
#include "language/session.h"

namespace krz {

struct Session::State {
  State(Runtime& host, std::string name);
  ~State();

  Result run(std::string_view text, std::string_view file);

  Runtime& runtime;
  SourceText source;  // every piece so far; names and texts are views of it
  Arena arena;
  NameTable names;
  Program program;
  Checker::Declarations known;
  Machine machine;
  bool started = false;
  // Registers for the values of expressions alone, one of each storage.
  std::array<std::optional<uint16_t>, 3> shown;

 private:
  /// A piece as far as it has been understood.
  struct Reading {
    explicit Reading(const SourceText& source) : diagnostics(source) {}
    DiagnosticList diagnostics;
    ScriptTree tree;
    Checker::Declarations declarations;
  };
  std::optional<SourceOffset> take_in(std::string_view text, std::string_view file);
  void parse(Reading& reading, SourceOffset start, bool expression);
  void check(Reading& reading, bool expression);
  bool compile(Reading& reading, SourceOffset start);
  Result execute(const ScriptTree& tree);
  void show(const Variable& value);
  Result report(DiagnosticList& diagnostics);
};

}  // namespace krz
