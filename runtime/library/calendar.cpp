#include "library/calendar.h"

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <ctime>

namespace krz {

namespace {

constexpr int64_t kDay = 86'400;

std::chrono::sys_days day_of(const Moment& moment) {
  const std::chrono::sys_seconds shown{
      std::chrono::seconds(moment.seconds + moment.offset_seconds)};
  return std::chrono::floor<std::chrono::days>(shown);
}

void append_padded(std::string& text, int32_t number, size_t width) {
  const std::string digits = std::to_string(number);
  if (digits.size() < width) text.append(width - digits.size(), '0');
  text.append(digits);
}

// Reads a text from its front.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  bool at_end() const { return rest_.empty(); }
  bool take(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool digits(size_t count, int32_t& number) {
    if (rest_.size() < count || rest_.find_first_not_of("0123456789") < count) return false;
    std::from_chars(rest_.data(), rest_.data() + count, number);
    rest_.remove_prefix(count);
    return true;
  }
  // Digits of a fraction; those beyond the sixth are dropped.
  bool fraction(int32_t& millionths) {
    int32_t unit = 100'000;
    size_t count = 0;
    for (; count < rest_.size() && rest_[count] >= '0' && rest_[count] <= '9'; ++count) {
      millionths += (rest_[count] - '0') * unit;
      unit /= 10;
    }
    rest_.remove_prefix(count);
    return count > 0;
  }

 private:
  std::string_view rest_;
};

bool parse_zone(Scanner& scanner, int32_t& offset_seconds) {
  if (scanner.take('Z') || scanner.take('z')) return true;
  const bool west = scanner.take('-');
  int32_t hours = 0;
  int32_t minutes = 0;
  if (!west && !scanner.take('+')) return false;
  if (!scanner.digits(2, hours)) return false;
  scanner.take(':');
  if (!scanner.at_end() && !scanner.digits(2, minutes)) return false;
  if (hours > 14 || minutes > 59) return false;
  offset_seconds = (hours * 3600 + minutes * 60) * (west ? -1 : 1);
  return true;
}

}  // namespace

CalendarFields calendar_fields(const Moment& moment) {
  const std::chrono::sys_days day = day_of(moment);
  const std::chrono::year_month_day date(day);
  const auto second_of_day = static_cast<int32_t>(moment.seconds + moment.offset_seconds -
                                                  int64_t{day.time_since_epoch().count()} * kDay);
  return {static_cast<int32_t>(date.year()),
          static_cast<int32_t>(static_cast<unsigned>(date.month())),
          static_cast<int32_t>(static_cast<unsigned>(date.day())),
          second_of_day / 3600,
          second_of_day / 60 % 60,
          second_of_day % 60};
}

int32_t day_of_week(const Moment& moment) {
  return static_cast<int32_t>(std::chrono::weekday(day_of(moment)).c_encoding()) + 1;
}

int32_t day_of_year(const Moment& moment) {
  const std::chrono::sys_days day = day_of(moment);
  const std::chrono::year year = std::chrono::year_month_day(day).year();
  const std::chrono::sys_days first = year / std::chrono::January / 1;
  return static_cast<int32_t>((day - first).count()) + 1;
}

std::optional<int64_t> seconds_of(const CalendarFields& f) {
  if (f.year < 1 || f.year > 9999 || f.month < 1 || f.day < 1) return {};
  if (f.hour < 0 || f.hour > 23 || f.minute < 0 || f.minute > 59 || f.second < 0 || f.second > 59)
    return {};
  const std::chrono::year_month_day date(std::chrono::year(f.year),
                                         std::chrono::month(static_cast<unsigned>(f.month)),
                                         std::chrono::day(static_cast<unsigned>(f.day)));
  if (f.month > 12 || f.day > 31 || !date.ok()) return {};
  const int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
  return days * kDay + f.hour * 3600 + f.minute * 60 + f.second;
}

Moment local_moment(int64_t seconds, int32_t microseconds) {
  ::tzset();
  const time_t time = seconds;
  tm shown{};
  const bool known = ::localtime_r(&time, &shown) != nullptr;
  return {seconds, microseconds, known ? static_cast<int32_t>(shown.tm_gmtoff) : 0};
}

std::optional<Moment> local_moment(const CalendarFields& f) {
  if (!seconds_of(f)) return {};
  tm shown{};
  shown.tm_year = f.year - 1900;
  shown.tm_mon = f.month - 1;
  shown.tm_mday = f.day;
  shown.tm_hour = f.hour;
  shown.tm_min = f.minute;
  shown.tm_sec = f.second;
  shown.tm_isdst = -1;  // whether it is summer time follows from the date
  const time_t seconds = ::mktime(&shown);
  return Moment{seconds, 0, static_cast<int32_t>(shown.tm_gmtoff)};
}

std::string iso_text(const Moment& moment) {
  const CalendarFields f = calendar_fields(moment);
  std::string text;
  append_padded(text, f.year, 4);
  append_padded(text += '-', f.month, 2);
  append_padded(text += '-', f.day, 2);
  append_padded(text += 'T', f.hour, 2);
  append_padded(text += ':', f.minute, 2);
  append_padded(text += ':', f.second, 2);
  if (moment.microseconds != 0) {
    append_padded(text += '.', moment.microseconds, 6);
    text.erase(text.find_last_not_of('0') + 1);
  }
  if (moment.offset_seconds == 0) return text + "Z";
  const int32_t minutes = std::abs(moment.offset_seconds) / 60;
  append_padded(text += moment.offset_seconds < 0 ? '-' : '+', minutes / 60, 2);
  append_padded(text += ':', minutes % 60, 2);
  return text;
}

std::optional<Moment> parse_iso(std::string_view text) {
  Scanner scanner(text);
  CalendarFields f;
  Moment moment;
  const bool has_date = scanner.digits(4, f.year) && scanner.take('-') &&
                        scanner.digits(2, f.month) && scanner.take('-') && scanner.digits(2, f.day);
  if (!has_date) return {};
  if (!scanner.at_end()) {
    if (!scanner.take('T') && !scanner.take('t') && !scanner.take(' ')) return {};
    if (!scanner.digits(2, f.hour) || !scanner.take(':') || !scanner.digits(2, f.minute)) return {};
    if (scanner.take(':') && !scanner.digits(2, f.second)) return {};
    if (scanner.take('.') && !scanner.fraction(moment.microseconds)) return {};
  }
  if (scanner.at_end()) {
    auto local = local_moment(f);
    if (local) local->microseconds = moment.microseconds;
    return local;
  }
  const auto seconds = seconds_of(f);
  if (!seconds || !parse_zone(scanner, moment.offset_seconds) || !scanner.at_end()) return {};
  moment.seconds = *seconds - moment.offset_seconds;
  if (moment.seconds < kFirstSecond || moment.seconds > kLastSecond) return {};
  return moment;
}

}  // namespace krz
