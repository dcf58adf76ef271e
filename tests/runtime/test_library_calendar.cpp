// Calendar dates against the C library's, in zones with and without summer time.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <ctime>

#include "library/calendar.h"

namespace krz {
namespace {

/// The zone of this process while it lives.
class Zone {
 public:
  explicit Zone(const char* rule) {
    const char* const before = ::getenv("TZ");
    if (before) before_ = before;
    ::setenv("TZ", rule, 1);
  }
  ~Zone() {
    if (before_.empty()) {
      ::unsetenv("TZ");
    } else {
      ::setenv("TZ", before_.c_str(), 1);
    }
    ::tzset();
  }

 private:
  std::string before_;
};

TEST(LibraryCalendar, FieldsAreThoseOfTheSystem) {
  // From the year 1 on, in steps that meet every part of the day and of leap years.
  for (int64_t seconds = kFirstSecond; seconds <= kLastSecond; seconds += 98'765'431) {
    const time_t time = seconds;
    tm expected{};
    ASSERT_TRUE(::gmtime_r(&time, &expected));
    const Moment moment{seconds, 0, 0};
    const CalendarFields fields = calendar_fields(moment);
    SCOPED_TRACE(seconds);
    ASSERT_EQ(fields.year, expected.tm_year + 1900);
    ASSERT_EQ(fields.month, expected.tm_mon + 1);
    ASSERT_EQ(fields.day, expected.tm_mday);
    ASSERT_EQ(fields.hour, expected.tm_hour);
    ASSERT_EQ(fields.minute, expected.tm_min);
    ASSERT_EQ(fields.second, expected.tm_sec);
    ASSERT_EQ(day_of_week(moment), expected.tm_wday + 1);
    ASSERT_EQ(day_of_year(moment), expected.tm_yday + 1);
    ASSERT_EQ(seconds_of(fields), seconds);
    ASSERT_EQ(parse_iso(iso_text(moment))->seconds, seconds);
  }
}

TEST(LibraryCalendar, LocalTextsTakeTheOffsetOfTheirDate) {
  const struct {
    const char* zone;
    const char* text;
    const char* shown;
  } cases[] = {
      {"UTC0", "2024-07-01", "2024-07-01T00:00:00Z"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", "2024-01-01T12:00", "2024-01-01T12:00:00+01:00"},
      {"CET-1CEST,M3.5.0,M10.5.0/3", "2024-07-01 12:00:00.25", "2024-07-01T12:00:00.25+02:00"},
      {"NST3:30", "1999-12-31T23:59:59", "1999-12-31T23:59:59-03:30"},
      {"NST3:30", "1999-12-31T23:59:59+0530", "1999-12-31T23:59:59+05:30"},
      // The clocks skip this hour.
      {"CET-1CEST,M3.5.0,M10.5.0/3", "2024-03-31T02:30", "2024-03-31T03:30:00+02:00"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const Zone zone(c.zone);
    const auto moment = parse_iso(c.text);
    ASSERT_TRUE(moment);
    EXPECT_EQ(iso_text(*moment), c.shown);
    if (std::string_view(c.text).find('+') == std::string_view::npos) {
      EXPECT_EQ(iso_text(local_moment(moment->seconds, moment->microseconds)), c.shown);
    }
  }
}

}  // namespace
}  // namespace krz
