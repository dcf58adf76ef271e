// The class RegExMatch: what a regular expression found, and where.
#include <algorithm>
#include <memory>

#include "library/parts.h"
#include "library/regex.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct MatchData {
  REALstring text;
  Match* match;  // null in an object that a script made itself
};

REALclassDefinition g_class;

MatchData& data_of(REALobject match) { return data_in<MatchData>(match, g_class); }

void destroy(REALobject match) {
  unlock_string(data_of(match).text);
  delete data_of(match).match;
}

int32_t count(REALobject match) {
  return data_of(match).match ? static_cast<int32_t>(data_of(match).match->size()) : 0;
}

// Null, with the exception raised, when there is no such group.
const Span* find_span(REALobject match, int32_t index) {
  if (index >= 0 && index < count(match))
    return &(*data_of(match).match)[static_cast<size_t>(index)];
  raise_exception("OutOfBoundsException", "there is no subexpression " + std::to_string(index) +
                                              "; give 0 for the whole match, or a number below "
                                              "SubExpressionCount, which is " +
                                              std::to_string(count(match)));
  return nullptr;
}

REALstring sub_expression(REALobject match, int32_t index) {
  const Span* const span = find_span(match, index);
  if (!span || span->begin < 0) return nullptr;
  const std::string_view text = string_bytes(data_of(match).text);
  return make_string(
      text.substr(static_cast<size_t>(span->begin), static_cast<size_t>(span->end - span->begin)));
}

// In characters from 1, as Mid counts; 0 when the group took no part.
int32_t sub_expression_start(REALobject match, int32_t index) {
  const Span* const span = find_span(match, index);
  if (!span || span->begin < 0) return 0;
  const std::string_view before =
      string_bytes(data_of(match).text).substr(0, static_cast<size_t>(span->begin));
  const auto begins_character = [](char c) { return (static_cast<uint8_t>(c) & 0xC0) != 0x80; };
  return static_cast<int32_t>(std::count_if(before.begin(), before.end(), begins_character)) + 1;
}

MethodEntry g_methods[] = {
    KRZ_METHOD(count, "SubExpressionCount as integer"),
    KRZ_METHOD(sub_expression, "SubExpression(index as integer) as string"),
    KRZ_METHOD(sub_expression_start, "SubExpressionStart(index as integer) as integer"),
};

}  // namespace

REALobject new_regex_match(REALstring text, Match match) {
  const ClassInfo* const class_info = Runtime::current().registry().find_class(g_class.name);
  auto owned = std::make_unique<Match>(std::move(match));
  const REALobject object = class_info ? new_instance(*class_info) : nullptr;
  if (!object) return nullptr;
  lock_string(text);
  data_of(object) = {text, owned.release()};
  return object;
}

void register_regex_match(Registry& registry) {
  g_class = class_of<MatchData>("RegExMatch");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
