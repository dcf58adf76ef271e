// The rows of a class's tables: a declaration text and the C function behind it, checked against
// each other.
//
// The rows are macros because a table of functions of many types is initialised without start-up
// code only where the conversion of each function stands in the table's own initialiser.
#pragma once

#include <krz/abi.h>

#include <cstddef>
#include <iterator>

#include "host/declaration.h"

namespace krz {

/// How a value crosses to the host: a truth value is one byte, and any byte but zero is true.
template <class T>
using HostValue = std::conditional_t<std::is_same_v<T, bool>, Boolean, T>;

/// The form of a function that the host calls: no C++ exception leaves it. A call that runs out of
/// memory gives zero, nil or false.
template <auto Function>
struct Shield;

template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Shield<Function> {
  static HostValue<Result> call(HostValue<Arguments>... arguments) noexcept {
    try {
      return Function(static_cast<Arguments>(arguments)...);
    } catch (...) {
      return HostValue<Result>();
    }
  }
};

}  // namespace krz

/// A C function as the host stores it.
#define HOST_FUNCTION(function) reinterpret_cast<REALfunction>(&::krz::Shield<&function>::call)

/// A method: METHOD(TrackDuration, "Duration as integer").
#define METHOD(function, text) \
  { HOST_FUNCTION(function), nullptr, ::krz::declaration::method<decltype(&function)>(text), 0 }

/// A method that reads like a property and may be assigned to.
#define ASSIGNABLE(function, setter, text)                                                \
  {                                                                                       \
    HOST_FUNCTION(function), HOST_FUNCTION(setter),                                       \
        (::krz::declaration::assignable<decltype(&function), decltype(&setter)>(text)), 0 \
  }

/// A property that the host reads and writes through functions, with property flags for the host.
#define FLAGGED_PROPERTY(getter, setter, name, type, flags)                          \
  {                                                                                  \
    nullptr, name, ::krz::declaration::property_type(&getter, &setter, type), flags, \
        HOST_FUNCTION(getter), HOST_FUNCTION(setter), 0, {}                          \
  }
#define PROPERTY(getter, setter, name, type) FLAGGED_PROPERTY(getter, setter, name, type, 0)

/// The value of kDirectField, in a form that needs no start-up code in a table.
#define DIRECT_ACCESS reinterpret_cast<REALfunction>(~std::uintptr_t{0})

/// A property that the host reads and writes in the instance data itself, with property flags for
/// the host.
#define FLAGGED_DIRECT_FIELD(Record, field, name, type, flags)                           \
  {                                                                                      \
    nullptr, name, ::krz::declaration::field_type<decltype(Record::field)>(type), flags, \
        DIRECT_ACCESS, DIRECT_ACCESS, offsetof(Record, field), {}                        \
  }
#define DIRECT_FIELD(Record, field, name, type) FLAGGED_DIRECT_FIELD(Record, field, name, type, 0)

/// A constant: CONSTANT("dfScrollIn = 32").
#define CONSTANT(text)                     \
  {                                        \
    ::krz::declaration::constant(text), {} \
  }
