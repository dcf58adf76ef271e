// How tables of functions, methods and properties are written: the declaration text and its C
// function side by side, checked against each other when compiled.
#pragma once

#include <type_traits>

#include "registry/names.h"
#include "registry/registry.h"

namespace krz {

namespace table_check {

// One letter a kind: what a declared type is handed over as.
constexpr char kind_of_name(std::string_view type) {
  if (type.empty()) return 'v';
  if (same_name(type, "boolean")) return 'b';
  if (same_name(type, "integer") || same_name(type, "int32")) return 'i';
  if (same_name(type, "int64")) return 'l';
  if (same_name(type, "single")) return 'f';
  if (same_name(type, "double")) return 'd';
  if (same_name(type, "color")) return 'c';
  if (same_name(type, "string")) return 's';
  return 'o';
}

template <class T>
constexpr char kind_of_type() {
  if constexpr (std::is_void_v<T>)
    return 'v';
  else if constexpr (std::is_same_v<T, bool>)
    return 'b';
  else if constexpr (std::is_same_v<T, int32_t>)
    return 'i';
  else if constexpr (std::is_same_v<T, int64_t>)
    return 'l';
  else if constexpr (std::is_same_v<T, float>)
    return 'f';
  else if constexpr (std::is_same_v<T, double>)
    return 'd';
  else if constexpr (std::is_same_v<T, uint32_t>)
    return 'c';
  else if constexpr (std::is_same_v<T, REALstring>)
    return 's';
  else if constexpr (!std::is_pointer_v<T>)
    return '?';
  else if constexpr (std::is_class_v<std::remove_pointer_t<T>>)
    return 'o';
  else
    return 'r';
}

constexpr bool word_at(std::string_view text, size_t at, std::string_view word) {
  return at + word.size() < text.size() && same_name(text.substr(at, word.size()), word) &&
         text[at + word.size()] == ' ';
}

// The kind letters of a declaration's parameters, in order, then that of its result. REQUIRES:
// `kinds` has room.
constexpr size_t declared_kinds(std::string_view text, char* kinds) {
  size_t count = 0;
  bool quoted = false, by_ref = false, inside = false, array = false;
  char result = 'v';
  for (size_t i = 0; i < text.size(); ++i) {
    const bool at_word = i == 0 || !is_name_character(text[i - 1]);
    if (text[i] == '"') quoted = !quoted;
    if (quoted) continue;
    if (text[i] == '(') {
      if (!inside && count == 0 && result == 'v')
        inside = true;
      else
        array = true;
    } else if (text[i] == ')' && !array) {
      inside = false;
    } else if (text[i] == ')' && array) {
      array = inside ? array : false;
      if (!inside) result = 'o';
    } else if (at_word && word_at(text, i, "byref")) {
      by_ref = true;
    } else if (at_word && word_at(text, i, "as")) {
      const char kind = kind_of_name(declared_name(text.substr(i + 3)));
      if (inside) {
        kinds[count++] = by_ref ? 'r' : array ? 'o' : kind;
        by_ref = array = false;
      } else {
        result = kind;
      }
    }
  }
  kinds[count++] = result;
  return count;
}

}  // namespace table_check

/// The declaration itself, if a function of this type is what it declares; otherwise the program
/// does not compile.
template <class Result, class... Arguments>
consteval const char* declares(Result (*)(Arguments...), const char* text, size_t receivers,
                               bool assigns) {
  char declared[72] = {};
  const size_t declared_count = table_check::declared_kinds(text, declared);
  const char given[] = {table_check::kind_of_type<Arguments>()...,
                        table_check::kind_of_type<Result>()};
  const size_t given_count = sizeof...(Arguments) + 1;
  // A setter takes the value last and answers nothing.
  if (given_count != declared_count + receivers + assigns) throw "the number of parameters differs";
  for (size_t i = 0; i < declared_count; ++i) {
    if (given[i + receivers] != declared[i]) throw "a parameter or the result has another kind";
  }
  if (assigns && given[given_count - 1] != 'v') throw "a setter answers nothing";
  return text;
}

}  // namespace krz

/// A row of a table of global functions.
#define KRZ_FUNCTION(function, text) \
  { reinterpret_cast<REALfunction>(&function), krz::declares(&function, text, 0, false) }

/// Rows of a table of methods: an ordinary one, one that may be assigned to, and one of the class
/// itself.
#define KRZ_METHOD(function, text)                                                                \
  {                                                                                               \
    reinterpret_cast<REALfunction>(&function), nullptr, krz::declares(&function, text, 1, false), \
        0                                                                                         \
  }
#define KRZ_ASSIGNABLE(function, setter, text)                                          \
  {                                                                                     \
    reinterpret_cast<REALfunction>(&function), reinterpret_cast<REALfunction>(&setter), \
        krz::declares(&setter, krz::declares(&function, text, 1, false), 1, true), 0    \
  }
#define KRZ_SHARED(function, text)                                                                \
  {                                                                                               \
    reinterpret_cast<REALfunction>(&function), nullptr, krz::declares(&function, text, 0, false), \
        0                                                                                         \
  }

namespace krz {

/// The type's name itself, if a getter, and a setter where there is one, have it.
template <class Value>
consteval const char* has_type(Value (*)(REALobject, intptr_t), const char* type) {
  if (table_check::kind_of_type<Value>() != table_check::kind_of_name(type)) throw "another type";
  return type;
}
template <class Value>
consteval const char* has_type(Value (*getter)(REALobject, intptr_t),
                               void (*)(REALobject, intptr_t, Value), const char* type) {
  return has_type(getter, type);
}

}  // namespace krz

/// Properties with functions behind them.
#define KRZ_PROPERTY(getter, setter, name, type)                                               \
  {                                                                                            \
    nullptr, name, krz::has_type(&getter, &setter, type), 0,                                   \
        reinterpret_cast<REALfunction>(&getter), reinterpret_cast<REALfunction>(&setter), 0, { \
      0, 0, 0                                                                                  \
    }                                                                                          \
  }
#define KRZ_READ_ONLY(getter, name, type)                                                    \
  {                                                                                          \
    nullptr, name, krz::has_type(&getter, type), 0, reinterpret_cast<REALfunction>(&getter), \
        nullptr, 0, {                                                                        \
      0, 0, 0                                                                                \
    }                                                                                        \
  }

/// A property that is a field of the instance data.
#define KRZ_FIELD(record, field, name, type)                                      \
  {                                                                               \
    nullptr, name, type, 0, reinterpret_cast<REALfunction>(~uintptr_t{0}),        \
        reinterpret_cast<REALfunction>(~uintptr_t{0}), offsetof(record, field), { \
      0, 0, 0                                                                     \
    }                                                                             \
  }
