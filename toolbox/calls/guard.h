// The one way from a C call into the engine: runs it, keeps its result for GetMoviesError, lets no
// exception out.
#pragma once

#include <new>

#include "base/status.h"

/// Marks a C call; only these leave the library.
#define TOOLBOX_CALL extern "C" __attribute__((visibility("default")))

namespace toolbox::calls {

/// The result of the most recent call of this thread, and the text of its most recent failure.
OSErr current_error();
const char* error_detail();

/// Makes a result the current one, keeps the text of a failure, and answers the code.
OSErr report(const Status& status);
OSErr report_no_memory();

/// Runs `body`, which answers a Status; answers its code.
template <class Body>
OSErr guarded(Body body) {
  try {
    return report(body());
  } catch (const std::bad_alloc&) {
    return report_no_memory();
  }
}

/// Runs `body`, which answers a Result<T>; answers its value, or `on_failure`.
template <class T, class Body>
T guarded_value(T on_failure, Body body) {
  try {
    Result<T> result = body();
    report(result.status());
    return result.ok() ? result.take() : on_failure;
  } catch (const std::bad_alloc&) {
    report_no_memory();
    return on_failure;
  }
}

/// As guarded_value for what a reference leads to: finds the object with `find(reference)`, then
/// asks `ask(*object)`. For questions that cannot fail.
template <class T, class Find, class Reference, class Ask>
T ask(T on_failure, Find find, Reference reference, Ask question) {
  return guarded_value<T>(on_failure, [&]() -> Result<T> {
    TRY_ASSIGN(auto* object, find(reference));
    return question(*object);
  });
}

}  // namespace toolbox::calls
