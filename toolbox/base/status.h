// How the engine reports failure: a result code for callers, and a text for people made where the
// failure is known.
#pragma once

#include <Carbon/Carbon.h>

#include <cassert>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace toolbox {

/// Success, or a result code with a text for people. One pointer wide; success allocates nothing.
class [[nodiscard]] Status {
 public:
  Status() = default;
  Status(OSErr code, std::string message)
      : failure_(std::make_unique<Failure>(Failure{code, std::move(message)})) {
    assert(code != noErr);
  }

  bool ok() const { return failure_ == nullptr; }
  OSErr code() const { return failure_ ? failure_->code : OSErr{noErr}; }

  /// What went wrong, where, and what to try next; empty on success.
  const std::string& message() const {
    static const std::string kNone;
    return failure_ ? failure_->message : kNone;
  }

  /// The same failure with `prefix` in front of its text; success stays success.
  Status in_context(const std::string& prefix) && {
    if (failure_) failure_->message.insert(0, prefix);
    return std::move(*this);
  }

 private:
  struct Failure {
    OSErr code;
    std::string message;
  };
  std::unique_ptr<Failure> failure_;
};

/// A value, or the failure that kept it from being made.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}         // NOLINT(google-explicit-constructor)
  Result(Status status) : status_(std::move(status)) {  // NOLINT(google-explicit-constructor)
    assert(!status_.ok());
  }

  bool ok() const { return value_.has_value(); }
  const Status& status() const { return status_; }
  Status take_status() { return std::move(status_); }

  /// REQUIRES: ok().
  T& value() { return *value_; }
  const T& value() const { return *value_; }
  T take() { return std::move(*value_); }

 private:
  std::optional<T> value_;
  Status status_;
};

}  // namespace toolbox

#define TOOLBOX_CONCAT_(a, b) a##b
#define TOOLBOX_CONCAT(a, b) TOOLBOX_CONCAT_(a, b)

/// Leaves the function with the failure of `expression` (a Status), if it failed.
#define TRY(expression)                                                                      \
  do {                                                                                       \
    if (::toolbox::Status try_status_ = (expression); !try_status_.ok()) return try_status_; \
  } while (false)

/// Declares `declaration` from the value of `expression` (a Result), or leaves the function with
/// its failure.
#define TRY_ASSIGN(declaration, expression) \
  TRY_ASSIGN_(TOOLBOX_CONCAT(try_result_, __LINE__), declaration, expression)
#define TRY_ASSIGN_(result, declaration, expression) \
  auto result = (expression);                        \
  if (!result.ok()) return result.take_status();     \
  declaration = result.take()
