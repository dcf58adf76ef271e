// Ways to go on with a line of a session.
#include <algorithm>

#include "language/parser.h"
#include "language/session_state.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {
namespace {

/// Words that mean something in places, or always, without being reserved.
constexpr std::string_view kOtherWords[] = {
    "Args",       "Array",    "Assigns",   "Boolean", "Class",   "Color",   "Constructor",
    "Destructor", "Double",   "Inherits",  "Int64",   "Integer", "Me",      "Object",
    "Private",    "Property", "Protected", "Public",  "Quit",    "Self",    "Shared",
    "Single",     "Static",   "String",    "Super",   "UBound",  "Variant",
};

bool is_name_byte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (fold_ascii(c) >= 'a' && fold_ascii(c) <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
         byte >= 0x80;
}

/// Whether a line ends inside a string or a comment.
bool ends_in_text(std::string_view line) {
  bool in_string = false;
  for (size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') in_string = !in_string;
    if (in_string) continue;
    if (line[i] == '\'' || line.substr(i).starts_with("//")) return true;
  }
  return in_string;
}

/// Where the value begins whose member follows at `end`: names, dots and what stands in
/// parentheses.
size_t receiver_begin(std::string_view text, size_t end) {
  size_t begin = end;
  int depth = 0;
  bool in_string = false;
  while (begin > 0) {
    const char c = text[begin - 1];
    if (c == '\n') break;
    if (c == '"') in_string = !in_string;
    if (!in_string && c == ')') ++depth;
    if (!in_string && c == '(' && --depth < 0) break;
    if (!in_string && depth == 0 && c != '(' && c != '.' && c != '"' && !is_name_byte(c)) break;
    --begin;
  }
  return begin;
}

bool less_folded(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char x, char y) { return fold_ascii(x) < fold_ascii(y); });
}

void keep_those_like(std::vector<std::string>& names, std::string_view word) {
  std::erase_if(names, [word](const std::string& name) {
    if (name.size() < word.size()) return true;
    const std::string_view begin = std::string_view(name).substr(0, word.size());
    return !equal_names(begin, word) || name.starts_with("Constructor") ||
           name.starts_with("Destructor");
  });
  std::sort(names.begin(), names.end(), less_folded);
  names.erase(
      std::unique(names.begin(), names.end(),
                  [](const std::string& a, const std::string& b) { return equal_names(a, b); }),
      names.end());
}

std::vector<std::string> members_behind(std::string_view receiver, Registry& registry,
                                        const Checker::Declarations& known, NameTable names) {
  // The names are a copy: what is new in them dies with the text of the receiver.
  const SourceText source(receiver, {});
  DiagnosticList diagnostics(source);
  Arena arena;
  ScriptTree tree = Parser(diagnostics, arena, names).parse_expression_alone();
  if (!diagnostics.empty()) return {};
  ScriptClassList classes;
  Checker checker(registry, diagnostics, arena, names, classes);
  checker.know(known);
  return checker.members_of_expression(tree);
}

}  // namespace

Session::Completion Session::complete(std::string_view text) const {
  Completion result;
  size_t word = text.size();
  while (word > 0 && is_name_byte(text[word - 1])) --word;
  result.word = word;
  const std::string_view line = text.substr(text.rfind('\n', word) + 1);
  if (ends_in_text(line)) return result;
  const std::string_view begun = text.substr(word);

  Registry& registry = state_->runtime.registry();
  if (word > 0 && text[word - 1] == '.') {
    const size_t begin = receiver_begin(text, word - 1);
    result.names = members_behind(text.substr(begin, word - 1 - begin), registry, state_->known,
                                  state_->names);
  } else if (!begun.empty()) {
    result.names = registry.names();
    for (const std::string_view one : reserved_words()) result.names.emplace_back(one);
    for (const std::string_view one : kOtherWords) result.names.emplace_back(one);
    const auto& symbols = state_->known.symbols;
    for (NameId id = 0; id < symbols.size(); ++id) {
      if (symbols[id].kind != Checker::Symbol::Kind::kNone)
        result.names.emplace_back(state_->names.text(id));
    }
    const auto& classes = state_->known.classes;
    for (NameId id = 0; id < classes.size(); ++id) {
      if (classes[id] != nullptr) result.names.emplace_back(state_->names.text(id));
    }
  }
  keep_those_like(result.names, begun);
  return result;
}

}  // namespace krz
