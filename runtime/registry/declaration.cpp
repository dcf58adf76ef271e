#include "registry/declaration.h"

#include <charconv>
#include <limits>

#include "object/string.h"
#include "registry/names.h"
#include "registry/registry.h"

namespace krz {

namespace {

constexpr size_t kMaxParameters = 64;
constexpr uint8_t kMaxRank = 8;

// Reads a declaration from left to right. The first error stays, and everything after it reads as
// empty.
class DeclarationReader {
 public:
  explicit DeclarationReader(std::string_view text) : rest_(text) {}

  const std::string& error() const { return error_; }
  bool failed() const { return !error_.empty(); }
  void fail(std::string_view what) {
    if (failed()) return;
    error_ = what;
    rest_ = {};
  }

  char peek() {
    skip_blanks();
    return rest_.empty() ? '\0' : rest_.front();
  }
  bool accept(char c) {
    if (peek() != c || rest_.empty()) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool accept_word(std::string_view word) {
    skip_blanks();
    if (!same_name(declared_name(rest_), word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  std::string_view name(std::string_view what) {
    skip_blanks();
    const std::string_view found = declared_name(rest_);
    rest_.remove_prefix(found.size());
    if (found.empty() || (found.front() >= '0' && found.front() <= '9')) fail(what);
    return failed() ? std::string_view() : found;
  }

  // "()" or "(,)" after a name: the number of dimensions, 0 when there is none.
  uint8_t dimensions() {
    const std::string_view before = rest_;
    if (!accept('(')) return 0;
    uint8_t rank = 1;
    while (accept(',')) {
      if (++rank > kMaxRank) fail("an array has at most eight dimensions");
    }
    if (accept(')')) return rank;
    if (!failed()) rest_ = before;
    return 0;
  }

  void finish() {
    if (peek() != '\0' || !rest_.empty()) fail("unexpected text at the end");
  }

  // A literal, its own type first.
  void literal(Type& type, Slot& value) {
    const char c = peek();
    if (c == '"') {
      string_literal(type, value);
    } else if (accept_word("true") || accept_word("false")) {
      type.kind = Kind::kBoolean;
      value.boolean = ascii_lower(c) == 't';
    } else if (accept_word("nil")) {
      type.kind = Kind::kNil;
    } else if (c == '&') {
      radix_literal(type, value);
    } else {
      number_literal(type, value);
    }
  }

 private:
  void skip_blanks() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t')) {
      rest_.remove_prefix(1);
    }
  }

  void string_literal(Type& type, Slot& value) {
    rest_.remove_prefix(1);
    std::string text;
    for (;;) {
      const size_t quote = rest_.find('"');
      if (quote == std::string_view::npos) return fail("a quoted value does not end");
      text.append(rest_.substr(0, quote));
      rest_.remove_prefix(quote + 1);
      if (rest_.empty() || rest_.front() != '"') break;
      text.push_back('"');  // two quotes stand for one
      rest_.remove_prefix(1);
    }
    type.kind = Kind::kString;
    value.string = make_string(text);
  }

  void radix_literal(Type& type, Slot& value) {
    const char letter = rest_.size() > 1 ? ascii_lower(rest_[1]) : '\0';
    const int radix = letter == 'h' || letter == 'c' ? 16
                      : letter == 'b'                ? 2
                      : letter == 'o'                ? 8
                                                     : 0;
    if (radix == 0) return fail("a value is missing");
    rest_.remove_prefix(2);
    uint32_t number = 0;
    const auto [end, status] =
        std::from_chars(rest_.data(), rest_.data() + rest_.size(), number, radix);
    if (status != std::errc()) return fail("a number is not readable or does not fit in 32 bits");
    rest_.remove_prefix(static_cast<size_t>(end - rest_.data()));
    type.kind = letter == 'c' ? Kind::kColor : Kind::kInteger;
    value.color = number;
  }

  void number_literal(Type& type, Slot& value) {
    const bool negative = accept('-');
    if (!negative) accept('+');
    const char first = peek();
    if (first != '.' && (first < '0' || first > '9')) return fail("a value is missing");
    double number = 0;
    const char* const limit = rest_.data() + rest_.size();
    const auto [end, status] = std::from_chars(rest_.data(), limit, number);
    if (status != std::errc()) return fail("a number is not readable");
    const std::string_view digits = rest_.substr(0, static_cast<size_t>(end - rest_.data()));
    rest_.remove_prefix(digits.size());
    if (negative) number = -number;
    const bool whole = digits.find_first_of(".eE") == std::string_view::npos;
    if (!whole) {
      type.kind = Kind::kDouble;
      value.real = number;
    } else if (number >= std::numeric_limits<int32_t>::min() &&
               number <= std::numeric_limits<int32_t>::max()) {
      type.kind = Kind::kInteger;
      value.integer = static_cast<int32_t>(number);
    } else if (uint64_t wide = 0;
               std::from_chars(digits.data(), digits.data() + digits.size(), wide).ec ==
                   std::errc() &&
               wide <= static_cast<uint64_t>(std::numeric_limits<int64_t>::max())) {
      type.kind = Kind::kInt64;
      value.int64 = negative ? -static_cast<int64_t>(wide) : static_cast<int64_t>(wide);
    } else {
      fail("a number does not fit in 64 bits");
    }
  }

  std::string_view rest_;
  std::string error_;
};

// Makes a default value one of the parameter's type, or says that it is none.
void convert_default(DeclarationReader& reader, const Type& type, const Type& literal,
                     Slot& value) {
  const auto integer_of = [&]() -> int64_t {
    return literal.kind == Kind::kInt64 ? value.int64 : value.integer;
  };
  const bool whole = literal.kind == Kind::kInteger || literal.kind == Kind::kInt64;
  Slot converted;
  if (literal.kind == type.kind || (literal.kind == Kind::kNil && type.is_reference())) {
    return;
  } else if (type.kind == Kind::kDouble && whole) {
    converted.real = static_cast<double>(integer_of());
  } else if (type.kind == Kind::kSingle && (whole || literal.kind == Kind::kDouble)) {
    converted.single = static_cast<float>(whole ? static_cast<double>(integer_of()) : value.real);
  } else if (type.kind == Kind::kInt64 && whole) {
    converted.int64 = integer_of();
  } else if ((type.kind == Kind::kColor && literal.kind == Kind::kInteger) ||
             (type.kind == Kind::kInteger && literal.kind == Kind::kColor)) {
    converted.color = value.color;
  } else {
    if (literal.kind == Kind::kString) unlock_string(value.string);
    value = {};
    reader.fail("a default value does not have the type of its parameter");
    return;
  }
  value = converted;
}

Type parse_type(DeclarationReader& reader, Registry& registry) {
  const std::string_view name = reader.name("a type is missing after \"as\"");
  if (reader.failed()) return {};
  return registry.type_named(name);
}

Type array_of(const Type& element, uint8_t rank) {
  if (rank == 0) return element;
  return {Kind::kArray, element.kind, rank, element.class_info};
}

void parse_parameter(DeclarationReader& reader, Registry& registry, Signature& signature) {
  Parameter parameter;
  bool optional_word = false;
  for (;;) {
    if (reader.accept_word("byref")) {
      parameter.by_ref = true;
    } else if (reader.accept_word("optional")) {
      optional_word = true;
    } else if (!reader.accept_word("byval")) {
      break;
    }
  }
  parameter.name = reader.name("a parameter's name is missing");
  const uint8_t rank = reader.dimensions();
  if (!reader.accept_word("as")) reader.fail("a parameter needs \"as\" and a type");
  parameter.type = array_of(parse_type(reader, registry), rank);
  if (reader.accept('=')) {
    Type literal;
    parameter.optional = true;
    reader.literal(literal, parameter.default_value);
    if (!reader.failed()) {
      convert_default(reader, parameter.type, literal, parameter.default_value);
    }
  } else if (optional_word) {
    parameter.optional = true;
  } else if (!signature.parameters.empty() && signature.parameters.back().optional) {
    reader.fail("a parameter without a default value follows one with");
  }
  if (parameter.by_ref && parameter.optional) reader.fail("a byref parameter cannot be optional");
  if (signature.parameters.size() == kMaxParameters) reader.fail("there are too many parameters");
  signature.parameters.push_back(std::move(parameter));
}

}  // namespace

size_t Signature::required_count() const {
  size_t count = 0;
  for (const Parameter& parameter : parameters) count += !parameter.optional;
  return count;
}

std::string parse_method(std::string_view declaration, Registry& registry, std::string& name,
                         Signature& signature) {
  signature = {};
  DeclarationReader reader(declaration);
  name = reader.name("a name is missing");
  signature.reads_like_property = !reader.accept('(');
  if (!signature.reads_like_property && !reader.accept(')')) {
    do {
      parse_parameter(reader, registry, signature);
    } while (reader.accept(','));
    if (!reader.accept(')')) reader.fail("\")\" is missing after the parameters");
  }
  if (reader.accept_word("as")) {
    const Type type = parse_type(reader, registry);
    signature.result = array_of(type, reader.dimensions());
  }
  reader.finish();
  if (reader.failed()) release_defaults(signature);
  return reader.error();
}

std::string parse_constant(std::string_view declaration, ConstantInfo& constant) {
  constant = {};
  DeclarationReader reader(declaration);
  constant.name = reader.name("a name is missing");
  if (!reader.accept('=')) reader.fail("\"=\" is missing after the name");
  if (!reader.failed()) reader.literal(constant.type, constant.value);
  reader.finish();
  if (reader.failed() && constant.type.kind == Kind::kString) {
    unlock_string(constant.value.string);
    constant.value = {};
  }
  return reader.error();
}

void release_defaults(Signature& signature) {
  for (Parameter& parameter : signature.parameters) {
    if (parameter.type.kind == Kind::kString) unlock_string(parameter.default_value.string);
    parameter.default_value = {};
  }
}

}  // namespace krz
