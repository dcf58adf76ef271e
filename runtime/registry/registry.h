// All classes and global functions that scripts can name.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"
#include "registry/class_info.h"

namespace krz {

/// A global function of the language, declared as modules declare methods. Its first argument is
/// the first declared one.
struct FunctionEntry {
  REALfunction function;
  const char* declaration;  // "Left(text as string, count as integer) as string"
};

class KRZ_API Registry {
 public:
  Registry();
  ~Registry();
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;

  /// Adds a class. The definition must outlive the registry; its host slot is written. Declarations
  /// are parsed later, when a member is asked for. A class of that name that is defined already is
  /// replaced only in a new registry: a second definition is an error in declaration_errors().
  void register_class(REALclassDefinition& definition);

  /// Adds the members of `definition` to the class of its name.
  void register_extension(REALclassDefinition& definition);

  /// Adds global functions. The table must outlive the registry.
  void register_functions(std::span<const FunctionEntry> functions);

  /// The class of that name without regard to case, null when none is defined.
  const ClassInfo* find_class(std::string_view name) const;

  /// The one object for that class name, defined or not yet.
  const ClassInfo& class_named(std::string_view name);

  /// All overloads of a global function; empty when there is none.
  std::span<const MethodInfo* const> find_functions(std::string_view name) const;

  /// Defined classes in the order they were registered.
  std::vector<const ClassInfo*> classes() const;

  /// Every class and function name, for "did you mean".
  std::vector<std::string> names() const;

  /// What was wrong with declarations parsed so far: class, text, and why.
  const std::vector<std::string>& declaration_errors() const;

  /// Adds to declaration_errors(). `class_name` is empty for global functions.
  void report_declaration(std::string_view class_name, std::string_view text,
                          std::string_view error);

  /// Parses a type name ("integer", "QTTrackKRZ"); class names need not be defined yet.
  Type type_named(std::string_view name);

 private:
  struct State;
  std::string definition_error(const REALclassDefinition& definition) const;
  void forget_members();  // after lookups that a new definition changes
  std::unique_ptr<State> state_;
};

}  // namespace krz
