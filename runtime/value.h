// Values of the script language in the hands of a C++ program: numbers, texts, objects with their
// methods and properties, arrays.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "export.h"

namespace krz {

class Runtime;

/// A value, or the reason why there is none. What is asked of a failed value fails with the same
/// reason, so that a chain of calls needs one look at its end.
///
/// Copies share an object, as variables of a script do; the object dies with the last of them.
/// Values belong to the runtime that made them and must be gone before it.
///
/// Where a parameter, a property or a reading function below has another type, the value is
/// converted as the language converts a Variant: 2.5 as an integer is 2, "12" as a number is 12.
class KRZ_API Value {
 public:
  /// Nil.
  Value() noexcept = default;

  Value(bool value);
  Value(int32_t value);
  Value(int64_t value);
  Value(double value);
  Value(std::string_view utf8);
  Value(const std::string& utf8) : Value(std::string_view(utf8)) {}
  Value(const char* utf8) : Value(std::string_view(utf8 ? utf8 : "")) {}

  /// Whether this is a value and not a failure. Nil is a value.
  bool ok() const;

  /// Why there is none, in UTF-8: "IOException: …" for what a script could have caught, else what
  /// was wrong with the call. Empty for a value.
  std::string error() const;

  bool is_nil() const;

  /// "Integer", "String", "QTTrackKRZ" and so on, an array's with "()" behind it; "Nil", or "" for
  /// a failure.
  std::string type_name() const;

  /// The value as one of these; 0, false or "" where there is no such value (objects, Nil,
  /// failures). Numbers are cut toward zero and wrap. Texts are UTF-8.
  bool boolean() const;
  int32_t integer() const;
  int64_t int64() const;
  double real() const;
  std::string text() const;

  /// Calls a method of an object. Names are compared without regard to case; parameters may be left
  /// out where the declaration gives their value. A Sub answers Nil.
  /// Fails: no such method, other arguments than any of that name takes, and what it raises.
  Value call(std::string_view method, std::initializer_list<Value> arguments = {}) const;

  /// The same; the arguments of `byref` parameters are replaced by what the method leaves in them.
  Value call(std::string_view method, std::vector<Value>& arguments) const;

  /// A property, or a method without parameters. Fails: no such member, and what it raises.
  Value get(std::string_view property) const;

  /// Sets a property or an assignable method. The result is Nil.
  /// Fails: no such member, one that is read only, a value of another kind, and what it raises.
  Value set(std::string_view property, const Value& value) const;

  /// Elements of an array of one dimension; 0 for anything else.
  size_t size() const;

  /// One of them, counted from 0. Fails: no array of one dimension, no such element.
  Value at(size_t index) const;

 private:
  struct Held;
  friend struct ValueAccess;
  explicit Value(std::shared_ptr<const Held> held) noexcept : held_(std::move(held)) {}
  std::shared_ptr<const Held> held_;  // null is Nil
};

/// Calls a function of the language ("OpenMovie"), a shared method ("Class.Method"), or reads a
/// class constant ("QTMetaDataKRZ.kUserDataTextAlbum"). Fails: as Value::call.
KRZ_API Value call(Runtime& runtime, std::string_view name,
                   std::initializer_list<Value> arguments = {});
KRZ_API Value call(Runtime& runtime, std::string_view name, std::vector<Value>& arguments);

/// A new object: `New Class(arguments…)`. Fails: no such class, and as Value::call for its
/// Constructor.
KRZ_API Value create(Runtime& runtime, std::string_view class_name,
                     std::initializer_list<Value> arguments = {});

}  // namespace krz
