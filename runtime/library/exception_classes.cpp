// The exception classes of the language.
#include <cstddef>

#include "library/parts.h"
#include "object/string.h"
#include "registry/tables.h"

namespace krz {

namespace {

struct ExceptionData {
  REALstring message;
  int32_t error_number;
};

REALclassDefinition g_base;

ExceptionData& data_of(REALobject exception) { return data_in<ExceptionData>(exception, g_base); }

void destroy(REALobject exception) { unlock_string(data_of(exception).message); }

void construct(REALobject exception, REALstring message) {
  lock_string(message);
  unlock_string(data_of(exception).message);
  data_of(exception).message = message;
}

void construct_numbered(REALobject exception, REALstring message, int32_t error_number) {
  construct(exception, message);
  data_of(exception).error_number = error_number;
}

PropertyEntry g_properties[] = {
    KRZ_FIELD(ExceptionData, message, "Message", "String"),
    KRZ_FIELD(ExceptionData, error_number, "ErrorNumber", "Integer"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(construct, "Constructor(message as string)"),
    KRZ_METHOD(construct_numbered, "Constructor(message as string, errorNumber as integer)"),
};

struct DerivedClass {
  const char* name;
  const char* superclass;
};

constexpr DerivedClass kDerivedClasses[] = {
    {"NilObjectException", "RuntimeException"},
    {"OutOfMemoryException", "RuntimeException"},
    {"OutOfBoundsException", "RuntimeException"},
    {"TypeMismatchException", "RuntimeException"},
    {"IllegalCastException", "RuntimeException"},
    {"KeyNotFoundException", "RuntimeException"},
    {"UnsupportedFormatException", "RuntimeException"},
    {"IOException", "RuntimeException"},
    {"StackOverflowException", "RuntimeException"},
    {"DivisionByZeroException", "RuntimeException"},
    {"InvalidArgumentException", "RuntimeException"},
    {"JSONException", "RuntimeException"},
    {"RegExException", "RuntimeException"},
};

REALclassDefinition g_derived[std::size(kDerivedClasses)];

}  // namespace

void register_exception_classes(Registry& registry) {
  g_base = class_of<ExceptionData>("RuntimeException");
  g_base.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_properties(g_base, g_properties);
  set_methods(g_base, g_methods);
  registry.register_class(g_base);
  for (size_t i = 0; i < std::size(kDerivedClasses); ++i) {
    g_derived[i] = class_without_data(kDerivedClasses[i].name, kDerivedClasses[i].superclass);
    registry.register_class(g_derived[i]);
  }
}

}  // namespace krz
