#include "library/number_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "object/convert.h"

namespace krz {

namespace {

constexpr int kMaxDecimals = 30;

struct Pattern {
  std::string_view before;  // stands for itself
  std::string_view after;
  int least_digits = 0;  // before the point
  int least_decimals = 0;
  int most_decimals = 0;
  bool grouped = false;
  bool percent = false;
};

Pattern parse_pattern(std::string_view text) {
  constexpr std::string_view kDigits = "0#.,";
  Pattern pattern;
  const size_t first = std::min(text.find_first_of(kDigits), text.size());
  const size_t last = std::max(first, text.find_last_of(kDigits) + 1);
  pattern.before = text.substr(0, first);
  pattern.after = text.substr(last);
  pattern.percent = text.find('%') != std::string_view::npos;
  bool behind_point = false;
  for (const char c : text.substr(first, last - first)) {
    if (c == '.') behind_point = true;
    if (c == ',') pattern.grouped = true;
    if (c != '0' && c != '#') continue;
    if (!behind_point) {
      pattern.least_digits += c == '0' && pattern.least_digits < kMaxDecimals;
    } else if (pattern.most_decimals < kMaxDecimals) {
      ++pattern.most_decimals;
      if (c == '0') pattern.least_decimals = pattern.most_decimals;
    }
  }
  return pattern;
}

std::string grouped(std::string_view digits) {
  std::string result;
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) result.push_back(',');
    result.push_back(digits[i]);
  }
  return result;
}

std::string digits_of(double size, const Pattern& pattern) {
  char buffer[400];  // the largest double has 309 digits before the point
  const auto end = std::to_chars(buffer, std::end(buffer), size, std::chars_format::fixed,
                                 pattern.most_decimals);
  std::string_view digits(buffer, static_cast<size_t>(end.ptr - buffer));
  const size_t point = std::min(digits.find('.'), digits.size());
  std::string whole(digits.substr(0, point));
  std::string decimals(digits.substr(std::min(point + 1, digits.size())));
  if (whole == "0") whole.clear();
  const auto least = static_cast<size_t>(pattern.least_digits);
  if (whole.size() < least) whole.insert(0, least - whole.size(), '0');
  while (decimals.size() > static_cast<size_t>(pattern.least_decimals) && decimals.back() == '0') {
    decimals.pop_back();
  }
  if (pattern.grouped) whole = grouped(whole);
  return decimals.empty() ? whole : whole + "." + decimals;
}

}  // namespace

std::string formatted_number(double number, std::string_view pattern_text) {
  if (!std::isfinite(number)) return number_text(number);
  const size_t second = pattern_text.find(';');
  std::string_view chosen = pattern_text.substr(0, second);
  bool shows_sign = number < 0;
  if (second != std::string_view::npos && number <= 0) {
    const std::string_view rest = pattern_text.substr(second + 1);
    const size_t third = rest.find(';');
    if (number < 0) {
      chosen = rest.substr(0, third);
      shows_sign = false;
    } else if (third != std::string_view::npos) {
      chosen = rest.substr(third + 1);
    }
  }
  const Pattern pattern = parse_pattern(chosen);
  const std::string digits = digits_of(std::abs(number) * (pattern.percent ? 100 : 1), pattern);
  // What rounds to nothing has no sign.
  shows_sign = shows_sign && digits.find_first_of("123456789") != std::string::npos;
  return (shows_sign ? "-" : "") + std::string(pattern.before) + digits +
         std::string(pattern.after);
}

}  // namespace krz
