// Text encodings as scripts see them: numbers with names, and functions that state or change a
// text's encoding.
#include "library/parts.h"
#include "object/string.h"
#include "registry/tables.h"

namespace krz {

namespace {

// The same bytes, said to be in that encoding.
REALstring define_encoding(REALstring text, int32_t text_encoding) {
  return make_string(string_bytes(text), static_cast<uint32_t>(text_encoding));
}

REALstring change_encoding(REALstring text, int32_t text_encoding) {
  return convert_string(text, static_cast<uint32_t>(text_encoding));
}

int32_t encoding_of(REALstring text) {
  return static_cast<int32_t>(text ? text->encoding : encoding::kUtf8);
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(define_encoding, "DefineEncoding(text as string, encoding as integer) as string"),
    KRZ_FUNCTION(change_encoding, "ConvertEncoding(text as string, encoding as integer) as string"),
    KRZ_FUNCTION(encoding_of, "Encoding(text as string) as integer"),
};

ConstantEntry g_constants[] = {
    {"UTF8 = &h08000100", {0, 0}}, {"UTF16 = &h100", {0, 0}}, {"UTF32 = &h0C000100", {0, 0}},
    {"ASCII = &h600", {0, 0}},     {"MacRoman = 0", {0, 0}},  {"ISOLatin1 = &h201", {0, 0}},
    {"Unknown = &hFFFF", {0, 0}},
};

REALclassDefinition g_class;

}  // namespace

void register_encodings(Registry& registry) {
  g_class = class_without_data("Encodings");
  g_class.constants = g_constants;
  g_class.constant_count = std::size(g_constants);
  registry.register_class(g_class);
  registry.register_functions(kFunctions);
}

}  // namespace krz
