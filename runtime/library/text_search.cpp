// Functions that find, replace, split and compare texts. Letters match without regard to case, save
// where the name ends in B.
#include <limits>

#include "library/parts.h"
#include "library/text_support.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "registry/tables.h"

namespace krz {

namespace {

int32_t find_from(int32_t start, REALstring source, REALstring wanted) {
  const Text text(source);
  const std::string inside = small_letters(text.bytes(), text.encoding());
  const std::string find = small_letters(text_in(wanted, text.encoding()), text.encoding());
  const size_t first = text.byte_of(start > 1 ? static_cast<size_t>(start - 1) : 0);
  const size_t found = inside.find(find, first);
  if (found == std::string::npos) return 0;
  return static_cast<int32_t>(text.characters_before(found)) + 1;
}

int32_t find(REALstring source, REALstring wanted) { return find_from(1, source, wanted); }

int32_t find_bytes(int32_t start, REALstring source, REALstring wanted) {
  const size_t first = start > 1 ? static_cast<size_t>(start - 1) : 0;
  const size_t found = string_bytes(source).find(string_bytes(wanted), first);
  return found == std::string_view::npos ? 0 : static_cast<int32_t>(found) + 1;
}

int32_t find_bytes_anywhere(REALstring source, REALstring find) {
  return find_bytes(1, source, find);
}

REALstring replaced(REALstring source, REALstring wanted, REALstring replacement, size_t limit) {
  const Text text(source);
  const std::string inside = small_letters(text.bytes(), text.encoding());
  const std::string find = small_letters(text_in(wanted, text.encoding()), text.encoding());
  const std::string with = text_in(replacement, text.encoding());
  std::string result;
  size_t at = 0;
  while (!find.empty() && limit-- > 0) {
    const size_t found = inside.find(find, at);
    if (found == std::string::npos) break;
    result.append(text.bytes().substr(at, found - at)).append(with);
    at = found + find.size();
  }
  result.append(text.bytes().substr(at));
  return make_string(result, text.encoding());
}

REALstring replace(REALstring source, REALstring wanted, REALstring replacement) {
  return replaced(source, wanted, replacement, 1);
}

REALstring replace_all(REALstring source, REALstring wanted, REALstring replacement) {
  return replaced(source, wanted, replacement, std::numeric_limits<size_t>::max());
}

// The line ends of any system: CR LF, CR and LF.
REALstring replace_line_ends(REALstring source, REALstring replacement) {
  const std::string_view all = string_bytes(source);
  if (all.find('\n') == std::string_view::npos && all.find('\r') == std::string_view::npos) {
    lock_string(source);
    return source;
  }
  const Text text(source);
  const std::string_view bytes = text.bytes();
  const std::string with = text_in(replacement, text.encoding());
  std::string result;
  size_t at = 0;
  for (;;) {
    const size_t end = bytes.find_first_of("\r\n", at);
    if (end == std::string_view::npos) break;
    result.append(bytes.substr(at, end - at)).append(with);
    at = end + (bytes.substr(end).starts_with("\r\n") ? 2 : 1);
  }
  result.append(bytes.substr(at));
  return make_string(result, text.encoding());
}

// Calls `take` with every field's first byte and length. An empty separator takes the text apart
// into characters.
template <class Take>
void each_field(const Text& text, REALstring separator, Take take) {
  const std::string between = text_in(separator, text.encoding());
  size_t at = 0;
  if (between.empty()) {
    while (at < text.bytes().size()) {
      const size_t next = text.byte_after(at);
      take(at, next - at);
      at = next;
    }
    return;
  }
  for (;;) {
    const size_t found = text.bytes().find(between, at);
    if (found == std::string_view::npos) break;
    take(at, found - at);
    at = found + between.size();
  }
  take(at, text.bytes().size() - at);
}

ArrayObject* split(REALstring source, REALstring separator) {
  const Text text(source);
  ArrayObject* const fields = new_array({Kind::kString}, {-1});
  if (!fields) return nullptr;
  each_field(text, separator, [&](size_t first, size_t length) {
    Slot field;
    field.string = text.slice(first, length);
    fields->elements.push_back(field);
  });
  fields->upper_bounds.front() = static_cast<int32_t>(fields->elements.size()) - 1;
  return fields;
}

REALstring join(ArrayObject* fields, REALstring separator) {
  if (!fields) {
    raise_exception("NilObjectException", "the array to join is nil");
    return nullptr;
  }
  const std::string between = string_utf8(separator);
  std::string result;
  for (size_t i = 0; i < fields->elements.size(); ++i) {
    if (i > 0) result.append(between);
    result.append(string_utf8(fields->elements[i].string));
  }
  return make_string(result);
}

REALstring nth_field(REALstring source, REALstring separator, int32_t wanted) {
  const Text text(source);
  REALstring result = nullptr;
  int32_t number = 0;
  each_field(text, separator, [&](size_t first, size_t length) {
    if (++number == wanted) result = text.slice(first, length);
  });
  return result;
}

int32_t count_fields(REALstring source, REALstring separator) {
  if (string_bytes(source).empty()) return 0;
  int32_t count = 0;
  each_field(Text(source), separator, [&](size_t, size_t) { ++count; });
  return count;
}

int32_t sign_of(int difference) { return difference < 0 ? -1 : difference > 0; }

constexpr int32_t kCompareBytes = 0;

int32_t compare(REALstring a, REALstring b, int32_t mode) {
  const std::string first = string_utf8(a);
  const std::string second = string_utf8(b);
  if (mode == kCompareBytes) return sign_of(first.compare(second));
  return sign_of(
      small_letters(first, encoding::kUtf8).compare(small_letters(second, encoding::kUtf8)));
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(find, "InStr(source as string, find as string) as integer"),
    KRZ_FUNCTION(find_from, "InStr(start as integer, source as string, find as string) as integer"),
    KRZ_FUNCTION(find_bytes_anywhere, "InStrB(source as string, find as string) as integer"),
    KRZ_FUNCTION(find_bytes,
                 "InStrB(start as integer, source as string, find as string) as integer"),
    KRZ_FUNCTION(replace,
                 "Replace(source as string, find as string, replacement as string) as string"),
    KRZ_FUNCTION(replace_all,
                 "ReplaceAll(source as string, find as string, replacement as string) as string"),
    KRZ_FUNCTION(replace_line_ends,
                 "ReplaceLineEndings(source as string, replacement as string) as string"),
    KRZ_FUNCTION(split, "Split(source as string, separator as string = \" \") as string()"),
    KRZ_FUNCTION(join, "Join(fields() as string, separator as string = \" \") as string"),
    KRZ_FUNCTION(nth_field,
                 "NthField(source as string, separator as string, index as integer) as string"),
    KRZ_FUNCTION(count_fields, "CountFields(source as string, separator as string) as integer"),
    KRZ_FUNCTION(compare, "StrComp(a as string, b as string, mode as integer = 1) as integer"),
};

}  // namespace

void register_text_search(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
