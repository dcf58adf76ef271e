// Class … End Class. The words of a class are no reserved words: they mean something only where a
// declaration may stand.
#include "language/parser.h"

namespace krz {
namespace {

constexpr int kMostMembers = 1001;

}  // namespace

/// Whether this word stands here, before a name or a word that begins a declaration.
bool Parser::at_words(std::string_view first) const {
  if (token_.kind != TokenKind::kName || !equal_names(text_of(token_), first)) return false;
  switch (lexer_.peek().kind) {
    case TokenKind::kName:
    case TokenKind::kSub:
    case TokenKind::kFunction:
    case TokenKind::kDim:
    case TokenKind::kVar:
    case TokenKind::kConst:
      return true;
    default:
      return false;
  }
}

bool Parser::accept_word(std::string_view word) {
  if (token_.kind != TokenKind::kName || !equal_names(text_of(token_), word)) return false;
  advance();
  return true;
}

void Parser::parse_class(ScriptTree& tree, ClassDecl**& tail) {
  auto* owner = arena_.make<ClassDecl>();
  const SourceOffset opening = token_.offset;
  advance();
  owner->position = token_.offset;
  owner->name = expect_name("a class");
  if (accept_word("Inherits")) owner->superclass_name = parse_type_name();
  end_statement();

  Routine** method_tail = &owner->methods;
  ClassField** field_tail = &owner->fields;
  ClassConstant** constant_tail = &owner->constants;
  int members = 0;
  while (token_.kind != TokenKind::kEnd && !at_block_end() && !diagnostics_.full()) {
    if (accept(TokenKind::kNewLine)) continue;
    if (++members == kMostMembers) fail(token_, "a class has at most 1000 lines of members");
    parse_member(tree, *owner, method_tail, field_tail, constant_tail);
  }
  owner->end = token_.offset;
  owner->initialiser.name = owner->name;
  owner->initialiser.position = owner->position;
  owner->initialiser.owner = owner;
  owner->initialiser.index = tree.routine_count++;
  *tail = owner;
  tail = &owner->next;

  if (token_.kind == TokenKind::kEnd) return not_closed(opening, "Class", "End Class");
  if (token_.kind == TokenKind::kEndWord) {
    const Token start = token_;
    advance();
    if (accept_word("Class")) return end_statement();
    fail(start, "End Class is expected here, for the Class in line " +
                    std::to_string(diagnostics_.source().line_of(opening)));
  } else {
    unexpected("a property, a method or End Class");
  }
  skip_line();
}

/// One line with properties or constants, or a method down to its End.
void Parser::parse_member(ScriptTree& tree, ClassDecl& owner, Routine**& method_tail,
                          ClassField**& field_tail, ClassConstant**& constant_tail) {
  Access access = Access::kPublic;
  bool shared = false;
  for (;;) {
    if (at_words("Public") || at_words("Protected") || at_words("Private")) {
      access = at_words("Public")      ? Access::kPublic
               : at_words("Protected") ? Access::kProtected
                                       : Access::kPrivate;
    } else if (at_words("Shared")) {
      shared = true;
    } else {
      break;
    }
    advance();
  }
  if (at_routine()) {
    Routine* method = parse_routine(tree, method_tail);
    method->owner = &owner;
    method->access = access;
    method->shared = shared;
    return;
  }
  Stmt* first = nullptr;
  Stmt** tail = &first;
  if (token_.kind == TokenKind::kConst) {
    parse_const(tail);
    for (Stmt* one = first; one != nullptr; one = one->next) {
      auto* constant = arena_.make<ClassConstant>();
      constant->declaration = static_cast<ConstStmt*>(one);
      constant->access = access;
      *constant_tail = constant;
      constant_tail = &constant->next;
    }
    return end_statement();
  }
  if (token_.kind == TokenKind::kDim || token_.kind == TokenKind::kVar || at_words("Property"))
    advance();
  if (token_.kind == TokenKind::kName) {
    parse_variables(tail);
  } else {
    unexpected("a property, a method or End Class");
  }
  for (Stmt* one = first; one != nullptr; one = one->next) {
    auto* field = arena_.make<ClassField>();
    field->declaration = static_cast<DimStmt*>(one);
    field->access = access;
    field->shared = shared;
    *field_tail = field;
    field_tail = &field->next;
  }
  end_statement();
}

}  // namespace krz
