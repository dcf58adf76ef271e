// Checks at compile time that a declaration in the host language and the C function behind it
// agree.
//
// A mismatch stops the compiler in one of the functions named below: its name is the message.
#pragma once

#include <krz/abi.h>

#include <string_view>
#include <type_traits>

namespace krz::declaration {

// Reaching one of these while compiling is the error.
void the_declaration_cannot_be_parsed();
void the_declaration_names_an_unknown_type();
void the_default_value_does_not_fit_its_type();
void the_function_has_more_parameters_than_the_declaration();
void the_function_has_fewer_parameters_than_the_declaration();
void a_parameter_type_differs_from_the_declaration();
void the_result_type_differs_from_the_declaration();
void an_assignable_method_has_no_parameter_list();
void the_setter_differs_from_the_declared_type();
void the_field_type_differs_from_the_declared_type();
void the_constant_is_neither_an_integer_nor_a_quoted_text();

enum class Kind : uint8_t {
  kNothing,
  kInteger,
  kBoolean,
  kDouble,
  kString,
  kColor,
  kMemoryBlock,
  kPicture,
  kFolderItem,
  kMovie,
  kObject,
  kArray,
  kNoHostType,
};

struct ValueType {
  Kind kind = Kind::kNothing;
  bool by_reference = false;
  bool operator==(const ValueType&) const = default;
};

template <class T>
constexpr Kind kind_of() {
  if constexpr (std::is_void_v<T>) return Kind::kNothing;
  if constexpr (std::is_same_v<T, int32_t>) return Kind::kInteger;
  if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, Boolean>) return Kind::kBoolean;
  if constexpr (std::is_same_v<T, double>) return Kind::kDouble;
  if constexpr (std::is_same_v<T, REALstring>) return Kind::kString;
  if constexpr (std::is_same_v<T, uint32_t>) return Kind::kColor;
  if constexpr (std::is_same_v<T, REALmemoryBlockStruct*>) return Kind::kMemoryBlock;
  if constexpr (std::is_same_v<T, REALpictureStruct*>) return Kind::kPicture;
  if constexpr (std::is_same_v<T, REALfolderItemStruct*>) return Kind::kFolderItem;
  if constexpr (std::is_same_v<T, REALmovieStruct*>) return Kind::kMovie;
  if constexpr (std::is_same_v<T, REALobject>) return Kind::kObject;
  if constexpr (std::is_same_v<T, REALobjectArrayStruct*>) return Kind::kArray;
  return Kind::kNoHostType;
}

/// What a C type is to the host. A pointer to a host value is a byref parameter.
template <class T>
constexpr ValueType value_type_of() {
  if constexpr (kind_of<T>() != Kind::kNoHostType) return {kind_of<T>()};
  if constexpr (std::is_pointer_v<T>) return {kind_of<std::remove_pointer_t<T>>(), true};
  return {Kind::kNoHostType};
}

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

constexpr bool is_letter(char c) { return lower(c) >= 'a' && lower(c) <= 'z'; }

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

constexpr bool equal(std::string_view text, std::string_view lower_case) {
  if (text.size() != lower_case.size()) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (lower(text[i]) != lower_case[i]) return false;
  }
  return true;
}

constexpr bool is_integer(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  if (text.empty()) return false;
  for (const char c : text) {
    if (!is_digit(c)) return false;
  }
  return true;
}

constexpr Kind kind_named(std::string_view name) {
  if (equal(name, "integer")) return Kind::kInteger;
  if (equal(name, "boolean")) return Kind::kBoolean;
  if (equal(name, "double")) return Kind::kDouble;
  if (equal(name, "string")) return Kind::kString;
  if (equal(name, "color")) return Kind::kColor;
  if (equal(name, "memoryblock")) return Kind::kMemoryBlock;
  if (equal(name, "picture")) return Kind::kPicture;
  if (equal(name, "folderitem")) return Kind::kFolderItem;
  if (equal(name, "movie")) return Kind::kMovie;
  // All other classes that this module mentions are of its own family; anything else is a slip.
  if (!(name.starts_with("QT") && name.ends_with("KRZ"))) the_declaration_names_an_unknown_type();
  return Kind::kObject;
}

/// Walks a declaration from left to right.
class Reader {
 public:
  constexpr explicit Reader(std::string_view text) : rest_(text) {}

  constexpr bool at_end() const { return rest_.empty(); }

  constexpr bool take(std::string_view lower_case) {
    if (!equal(rest_.substr(0, lower_case.size()), lower_case)) return false;
    rest_.remove_prefix(lower_case.size());
    return true;
  }

  constexpr void expect(std::string_view lower_case) {
    if (!take(lower_case)) the_declaration_cannot_be_parsed();
  }

  constexpr std::string_view name() {
    size_t length = 0;
    while (length < rest_.size() && (is_letter(rest_[length]) || is_digit(rest_[length]))) ++length;
    if (length == 0) the_declaration_cannot_be_parsed();
    const std::string_view result = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return result;
  }

  /// "[byref] name[()] as type [= value]"
  constexpr ValueType parameter() {
    ValueType type;
    type.by_reference = take("byref ");
    name();
    const bool is_array = take("()");
    expect(" as ");
    type.kind = kind_named(name());
    if (is_array) type.kind = Kind::kArray;
    if (take(" = ")) check_default(type);
    return type;
  }

  /// " as type", or nothing.
  constexpr ValueType result() {
    if (at_end()) return {};
    expect(" as ");
    const ValueType type = {kind_named(name())};
    if (!at_end()) the_declaration_cannot_be_parsed();
    return type;
  }

 private:
  constexpr void check_default(ValueType type) {
    const bool negative = take("-");
    const std::string_view value = name();
    const bool truth = equal(value, "true") || equal(value, "false");
    const bool fits = type.kind == Kind::kBoolean   ? truth && !negative
                      : type.kind == Kind::kInteger ? is_integer(value)
                                                    : false;
    if (!fits || type.by_reference) the_default_value_does_not_fit_its_type();
  }

  std::string_view rest_;
};

template <class Function>
struct FunctionTypes;

/// A function that the host calls with the receiving object first.
template <class R, class Receiver, class... A>
struct FunctionTypes<R (*)(Receiver, A...)> {
  using Result = R;
  static_assert(std::is_same_v<Receiver, REALobject> || std::is_same_v<Receiver, REALmovieStruct*>,
                "the host passes the receiving object first");

  template <class Setter>
  static constexpr bool is_assigned_by() {
    if constexpr (std::is_void_v<R>) {
      return false;
    } else {
      return std::is_same_v<Setter, void (*)(Receiver, R)>;
    }
  }

  static constexpr void check_parameters(Reader& reader) {
    if constexpr (sizeof...(A) > 0) {
      if (!reader.take("(")) the_function_has_more_parameters_than_the_declaration();
      bool first = true;
      (check_parameter<A>(reader, first), ...);
      if (!reader.take(")")) the_function_has_fewer_parameters_than_the_declaration();
    } else if (reader.take("(")) {
      the_function_has_fewer_parameters_than_the_declaration();
    }
  }

 private:
  template <class T>
  static constexpr void check_parameter(Reader& reader, bool& first) {
    if (!first && !reader.take(", ")) the_function_has_more_parameters_than_the_declaration();
    first = false;
    if (reader.parameter() != value_type_of<T>()) a_parameter_type_differs_from_the_declaration();
  }
};

/// A method of the class itself: no receiver, and here no parameters.
template <class R>
struct FunctionTypes<R (*)()> {
  using Result = R;
  static constexpr void check_parameters(Reader&) {}
};

/// The text, when it declares what the function is.
template <class Function>
consteval const char* method(const char* text) {
  using Types = FunctionTypes<Function>;
  Reader reader(text);
  reader.name();
  Types::check_parameters(reader);
  if (reader.result() != value_type_of<typename Types::Result>()) {
    the_result_type_differs_from_the_declaration();
  }
  return text;
}

/// The text, when it declares a readable value that `Setter` takes.
template <class Function, class Setter>
consteval const char* assignable(const char* text) {
  if (std::string_view(text).find('(') != std::string_view::npos) {
    an_assignable_method_has_no_parameter_list();
  }
  if (!FunctionTypes<Function>::template is_assigned_by<Setter>()) {
    the_setter_differs_from_the_declared_type();
  }
  return method<Function>(text);
}

/// The property's type name, when it is what the getter gives and the setter takes.
template <class T>
consteval const char* property_type(T (*)(REALobject, intptr_t), void (*)(REALobject, intptr_t, T),
                                    const char* type) {
  if (ValueType{kind_named(type)} != value_type_of<T>()) {
    the_result_type_differs_from_the_declaration();
  }
  return type;
}

/// The property's type name, when a field of C type `T` is that.
template <class T>
consteval const char* field_type(const char* type) {
  if (ValueType{kind_named(type)} != value_type_of<T>()) {
    the_field_type_differs_from_the_declared_type();
  }
  return type;
}

/// The text of a constant, when it reads `name = value`.
consteval const char* constant(const char* text) {
  std::string_view rest = text;
  while (!rest.empty() && (is_letter(rest[0]) || is_digit(rest[0]) || rest[0] == '_')) {
    rest.remove_prefix(1);
  }
  const size_t equals = rest.find("= ");
  if (equals == std::string_view::npos ||
      rest.substr(0, equals).find_first_not_of(' ') != rest.npos) {
    the_declaration_cannot_be_parsed();
  }
  rest.remove_prefix(equals + 2);
  const bool quoted = rest.size() >= 2 && rest.front() == '"' && rest.back() == '"';
  if (!quoted && !is_integer(rest)) the_constant_is_neither_an_integer_nor_a_quoted_text();
  return text;
}

}  // namespace krz::declaration
