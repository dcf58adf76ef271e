// Host exceptions: how misuse by a script and exhausted memory are reported.
#include "host/exceptions.h"

#include <cstring>

#include "host/encodings.h"
#include "host/entries.h"
#include "host/strings.h"

namespace krz {

void RaiseException(const char* exceptionClass, const char* message, uint32_t /*encoding*/) {
  REALstring text = nullptr;
  if (message) {
    text = REALBuildUnicodeString(message, static_cast<int64_t>(std::strlen(message)), kASCII);
  }
  REALobject exception = REALnewInstance(exceptionClass);
  if (!exception) exception = REALnewInstance("RuntimeException");
  if (exception) {
    REALSetPropValueString(exception, "Message", text);
    REALRaiseException(exception);
    REALUnlockObject(exception);
  }
  if (text) REALUnlockString(text);
}

}  // namespace krz
