#include "library/regex.h"

#include <algorithm>
#include <utility>

#include "library/parts.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

constexpr size_t kMaxResultBytes = size_t{64} << 20;

struct RegExData {
  REALstring pattern_text;
  bool case_sensitive;
  bool multi_line;
  bool dot_matches_all;
  Pattern* pattern;  // what was searched with last, null at first
};

REALclassDefinition g_class;

RegExData& data_of(REALobject regex) { return data_in<RegExData>(regex, g_class); }

void destroy(REALobject regex) {
  unlock_string(data_of(regex).pattern_text);
  delete data_of(regex).pattern;
}

void construct(REALobject regex, REALstring pattern) {
  lock_string(pattern);
  unlock_string(std::exchange(data_of(regex).pattern_text, pattern));
}

// Null, with the exception raised, when the pattern is wrong.
const Pattern* current_pattern(REALobject regex) {
  RegExData& data = data_of(regex);
  const PatternOptions options{data.case_sensitive, data.multi_line, data.dot_matches_all};
  const std::string text = string_utf8(data.pattern_text);
  if (!data.pattern || data.pattern->text() != text || data.pattern->options() != options) {
    delete std::exchange(data.pattern, nullptr);
    data.pattern = Pattern::compile(text, options);
  }
  return data.pattern;
}

// Nil when nothing matches.
REALobject search(REALobject regex, REALstring text) {
  const Pattern* const pattern = current_pattern(regex);
  if (!pattern) return nullptr;
  const REALstring subject = make_string(string_utf8(text));
  Match match;
  const bool found = Pattern::Search(*pattern, string_bytes(subject)).next(match);
  const REALobject result = found ? new_regex_match(subject, std::move(match)) : nullptr;
  unlock_string(subject);
  return result;
}

REALobject search_all(REALobject regex, REALstring text) {
  const Pattern* const pattern = current_pattern(regex);
  if (!pattern) return nullptr;
  const ClassInfo& match_class = Runtime::current().registry().class_named("RegExMatch");
  ArrayObject* const found = new_array({Kind::kObject, Kind::kVoid, 0, &match_class}, {-1});
  if (!found) return nullptr;
  const REALstring subject = make_string(string_utf8(text));
  Pattern::Search search(*pattern, string_bytes(subject));
  for (Match match; search.next(match);) {
    Slot element;
    element.object = new_regex_match(subject, match);
    found->elements.push_back(element);
  }
  found->upper_bounds[0] = static_cast<int32_t>(found->elements.size()) - 1;
  unlock_string(subject);
  return found;
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The replacement with "$1" or "\1" to "$99" as the groups of the match, "$0" as all of it, "$$" as
// "$", and "\\" as "\".
void append_replacement(std::string& result, std::string_view replacement, std::string_view text,
                        const Match& match) {
  for (size_t i = 0; i < replacement.size(); ++i) {
    const size_t mark = std::min(replacement.find_first_of("$\\", i), replacement.size());
    result.append(replacement.substr(i, mark - i));
    if (mark == replacement.size()) return;
    i = mark;
    const char c = replacement[i];
    const char next = i + 1 < replacement.size() ? replacement[i + 1] : '\0';
    if (next != c && !is_digit(next)) {
      result.push_back(c);
      continue;
    }
    ++i;
    if (next == c) {
      result.push_back(c);
      continue;
    }
    auto group = static_cast<size_t>(next - '0');
    if (i + 1 < replacement.size() && is_digit(replacement[i + 1])) {
      const size_t longer = group * 10 + static_cast<size_t>(replacement[i + 1] - '0');
      if (longer < match.size()) {
        group = longer;
        ++i;
      }
    }
    if (group >= match.size() || match[group].begin < 0) continue;
    result.append(text.substr(static_cast<size_t>(match[group].begin),
                              static_cast<size_t>(match[group].end - match[group].begin)));
  }
}

enum class Which : uint8_t { kFirst, kAll };

REALstring replaced(REALobject regex, REALstring text_string, REALstring replacement_string,
                    Which which) {
  const Pattern* const pattern = current_pattern(regex);
  if (!pattern) return nullptr;
  const std::string text = string_utf8(text_string);
  const std::string replacement = string_utf8(replacement_string);
  std::string result;
  size_t copied = 0;
  Pattern::Search search(*pattern, text);
  for (Match match; search.next(match);) {
    const auto begin = std::max(copied, static_cast<size_t>(match[0].begin));
    result.append(text, copied, begin - copied);
    append_replacement(result, replacement, text, match);
    copied = std::max(copied, static_cast<size_t>(match[0].end));
    if (result.size() > kMaxResultBytes) {
      raise_exception("OutOfMemoryException",
                      "the replaced text is longer than 64 MiB; replace in pieces");
      return nullptr;
    }
    if (which == Which::kFirst) break;
  }
  if (exception_pending()) return nullptr;
  result.append(text, copied);
  return make_string(result);
}

REALstring replace(REALobject regex, REALstring text, REALstring replacement) {
  return replaced(regex, text, replacement, Which::kFirst);
}
REALstring replace_all(REALobject regex, REALstring text, REALstring replacement) {
  return replaced(regex, text, replacement, Which::kAll);
}

PropertyEntry g_properties[] = {
    KRZ_FIELD(RegExData, pattern_text, "SearchPattern", "String"),
    KRZ_FIELD(RegExData, case_sensitive, "CaseSensitive", "Boolean"),
    KRZ_FIELD(RegExData, multi_line, "MultiLine", "Boolean"),
    KRZ_FIELD(RegExData, dot_matches_all, "DotMatchesAll", "Boolean"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(construct, "Constructor(searchPattern as string)"),
    KRZ_METHOD(search, "Search(text as string) as RegExMatch"),
    KRZ_METHOD(search_all, "SearchAll(text as string) as RegExMatch()"),
    KRZ_METHOD(replace, "Replace(text as string, replacement as string) as string"),
    KRZ_METHOD(replace_all, "ReplaceAll(text as string, replacement as string) as string"),
};

}  // namespace

void register_regex(Registry& registry) {
  g_class = class_of<RegExData>("RegEx");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_properties(g_class, g_properties);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
