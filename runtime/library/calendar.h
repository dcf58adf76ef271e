// Moments as calendar dates and as ISO 8601 text. Years 1 to 9999 of the Gregorian calendar.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krz {

/// A moment and the time zone that it is shown in.
struct Moment {
  int64_t seconds = 0;         // since 1970, UTC
  int32_t microseconds = 0;    // 0 to 999999
  int32_t offset_seconds = 0;  // of the zone, east of UTC
};

struct CalendarFields {
  int32_t year = 1970, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

inline constexpr int64_t kFirstSecond = -62'135'596'800;  // the year 1 begins
inline constexpr int64_t kLastSecond = 253'402'300'799;   // the year 9999 ends

CalendarFields calendar_fields(const Moment& moment);

/// Day of the week, 1 is Sunday, and day of the year from 1.
int32_t day_of_week(const Moment& moment);
int32_t day_of_year(const Moment& moment);

/// Seconds since 1970 of a date whose zone is UTC; nothing when there is no such date.
std::optional<int64_t> seconds_of(const CalendarFields& fields);

/// The same moment in the zone of this machine; and the moment at which its clocks show that date.
Moment local_moment(int64_t seconds, int32_t microseconds);
std::optional<Moment> local_moment(const CalendarFields& fields);

/// "2024-02-29T12:30:00Z", with the zone as "+01:00" where it is not UTC, and the fraction of the
/// second where there is one.
std::string iso_text(const Moment& moment);

/// Reads "2024-02-29", with a time behind "T" or a blank, "12:30" or "12:30:00.5", and a zone "Z"
/// or "+01:00"; the local zone without one. Nothing for other texts and for dates that do not
/// exist.
std::optional<Moment> parse_iso(std::string_view text);

}  // namespace krz
