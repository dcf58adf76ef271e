// How host services are reached: by name, on first use, through the resolver that the host handed
// in.
#pragma once

#include <krz/abi.h>

#include <type_traits>

namespace krz {

/// Set once, before any class is registered.
extern REALResolver gResolver;

/// The host's version, such as 2013.0; 0.0 when the host does not tell. Set once, right after the
/// resolver.
extern double rbversion;

/// From these versions on the host hands out string bytes itself; module code reads the records of
/// older hosts directly.
inline constexpr double kVersionWithTextData = 2012.0;
inline constexpr double kVersionWithByteData = 2013.0;

template <class Signature>
class HostEntry;

/// One named host service. Calling it gives zero, null or false while the host has no entry of that
/// name.
///
/// An answer is kept for good; a missing entry is asked for again at the next call, because a host
/// may offer it later.
template <class Result, class... Arguments>
class HostEntry<Result(Arguments...)> {
 public:
  /// Only the low 8 bits of a host's truth value count.
  using HostResult = std::conditional_t<std::is_same_v<Result, bool>, uint8_t, Result>;
  using Function = HostResult (*)(Arguments...);

  constexpr explicit HostEntry(const char* name) : name_(name) {}
  HostEntry(const HostEntry&) = delete;
  HostEntry& operator=(const HostEntry&) = delete;

  /// The entry itself, null when the host lacks it.
  Function find() {
    if (!function_) function_ = reinterpret_cast<Function>(gResolver(name_));
    return function_;
  }

  Result operator()(Arguments... arguments) {
    if (const Function function = find()) return static_cast<Result>(function(arguments...));
    return Result();
  }

 private:
  const char* name_;
  Function function_ = nullptr;
};

}  // namespace krz
