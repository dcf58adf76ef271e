#include "calls/guard.h"

namespace toolbox::calls {

namespace {
// Every call touches them. The few bytes lie in every thread's own block from its start, so that a
// library that is loaded late reaches them without asking the loader.
[[gnu::tls_model("initial-exec")]] thread_local OSErr error = noErr;
[[gnu::tls_model("initial-exec")]] thread_local std::string detail;
}  // namespace

OSErr current_error() { return error; }
const char* error_detail() { return detail.c_str(); }

OSErr report(const Status& status) {
  error = status.code();
  if (!status.ok()) detail = status.message();
  return error;
}

OSErr report_no_memory() {
  error = memFullErr;
  detail = "out of memory";  // short enough to need none
  return error;
}

}  // namespace toolbox::calls
