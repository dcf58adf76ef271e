// Host exceptions: raised by recording an object, seen by the interpreter when the call that raised
// it returns.
#pragma once

#include <krz/abi.h>

#include <string>
#include <string_view>

namespace krz {

/// Raises an instance of the class (or RuntimeException when there is none) with that message and
/// error number. The first of several raised during one call stays.
void raise_exception(std::string_view class_name, std::string_view message,
                     int32_t error_number = 0);

/// Raises an exception object; takes a lock of its own.
void raise_exception(REALobject exception);

bool exception_pending();

/// The pending exception with its lock handed over; null when there is none. None is pending
/// afterwards.
REALobject take_pending_exception();

/// The message of an exception object, UTF-8.
std::string exception_message(REALobject exception);

}  // namespace krz
