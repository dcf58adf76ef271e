#include "object/exceptions.h"

#include "object/memory_budget.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/invoke.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {

namespace {

REALobject g_pending = nullptr;

const PropertyInfo* message_property(REALobject exception) {
  if (!exception || !exception->class_info) return nullptr;
  const PropertyInfo* property = exception->class_info->find_property("Message");
  return property && property->type.kind == Kind::kString ? property : nullptr;
}

}  // namespace

void raise_exception(std::string_view class_name, std::string_view message, int32_t error_number) {
  if (g_pending) return;
  const memory_budget::Reserve reserve;
  const Registry& registry = Runtime::current().registry();
  const ClassInfo* class_info = registry.find_class(class_name);
  if (!class_info) class_info = registry.find_class("RuntimeException");
  const REALobject exception = class_info ? new_instance(*class_info) : nullptr;
  if (!exception) return;
  if (const PropertyInfo* property = message_property(exception);
      property && !property->read_only()) {
    Slot text;
    text.string = make_string(message);
    set_property(*property, exception, text);
    unlock_string(text.string);
  }
  if (const PropertyInfo* property = class_info->find_property("ErrorNumber");
      property && property->type.kind == Kind::kInteger && !property->read_only()) {
    Slot number;
    number.integer = error_number;
    set_property(*property, exception, number);
  }
  raise_exception(exception);
  unlock_object(exception);
}

void raise_exception(REALobject exception) {
  if (g_pending || !exception) return;
  lock_object(exception);
  g_pending = exception;
}

bool exception_pending() { return g_pending != nullptr; }

REALobject take_pending_exception() {
  const REALobject exception = g_pending;
  g_pending = nullptr;
  return exception;
}

std::string exception_message(REALobject exception) {
  const PropertyInfo* property = message_property(exception);
  if (!property) return {};
  Slot text;
  get_property(*property, exception, &text);
  std::string message = string_utf8(text.string);
  unlock_string(text.string);
  return message;
}

}  // namespace krz
