#include "library/date_time.h"

#include <cmath>
#include <ctime>

#include "library/parts.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

constexpr double kMillion = 1e6;

REALclassDefinition g_class;

Moment& moment_of(REALobject date) { return data_in<Moment>(date, g_class); }

Moment now_here() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return local_moment(now.tv_sec, static_cast<int32_t>(now.tv_nsec / 1000));
}

void initialise(REALobject date) { moment_of(date) = now_here(); }

REALobject now() { return new_date_time(now_here()); }

REALobject from_seconds_in(double seconds, int32_t offset_seconds) {
  // Also false for what is no number.
  if (!(seconds >= kFirstSecond && seconds <= kLastSecond)) {
    raise_exception("OutOfBoundsException",
                    "the moment is outside of the years 1 to 9999; give seconds since 1970");
    return nullptr;
  }
  const double whole = std::floor(seconds);
  const auto microseconds = static_cast<int32_t>((seconds - whole) * kMillion);
  return new_date_time({static_cast<int64_t>(whole), microseconds, offset_seconds});
}

REALobject from_seconds(double seconds) { return from_seconds_in(seconds, 0); }

REALobject parse(REALstring text) {
  if (const auto moment = parse_iso(string_utf8(text))) return new_date_time(*moment);
  raise_exception(
      "InvalidArgumentException",
      "\"" + string_utf8(text) + "\" is no date; write it like 2024-02-29 or 2024-02-29T12:30:00Z");
  return nullptr;
}

void construct(REALobject date, int32_t year, int32_t month, int32_t day, int32_t hour,
               int32_t minute, int32_t second) {
  const auto moment = local_moment({year, month, day, hour, minute, second});
  if (moment) {
    moment_of(date) = *moment;
  } else {
    raise_exception(
        "OutOfBoundsException",
        "there is no such date; give a year from 1 to 9999, a month from 1 to 12, a day "
        "of that month, and a time from 0:00:00 to 23:59:59");
  }
}

template <int32_t CalendarFields::*kField>
int32_t field(REALobject date, intptr_t) {
  return calendar_fields(moment_of(date)).*kField;
}
int32_t get_day_of_week(REALobject date, intptr_t) { return day_of_week(moment_of(date)); }
int32_t get_day_of_year(REALobject date, intptr_t) { return day_of_year(moment_of(date)); }
int32_t get_offset(REALobject date, intptr_t) { return moment_of(date).offset_seconds; }

double seconds_from_1970(REALobject date, intptr_t) {
  const Moment& moment = moment_of(date);
  return static_cast<double>(moment.seconds) + moment.microseconds / kMillion;
}

REALobject in_utc(REALobject date) {
  Moment moment = moment_of(date);
  moment.offset_seconds = 0;
  return new_date_time(moment);
}
REALobject in_local_zone(REALobject date) {
  const Moment& moment = moment_of(date);
  return new_date_time(local_moment(moment.seconds, moment.microseconds));
}
REALobject add_seconds(REALobject date, double seconds) {
  return from_seconds_in(seconds_from_1970(date, 0) + seconds, moment_of(date).offset_seconds);
}

REALstring to_text(REALobject date) { return make_string(iso_text(moment_of(date))); }

PropertyEntry g_properties[] = {
    KRZ_READ_ONLY(field<&CalendarFields::year>, "Year", "Integer"),
    KRZ_READ_ONLY(field<&CalendarFields::month>, "Month", "Integer"),
    KRZ_READ_ONLY(field<&CalendarFields::day>, "Day", "Integer"),
    KRZ_READ_ONLY(field<&CalendarFields::hour>, "Hour", "Integer"),
    KRZ_READ_ONLY(field<&CalendarFields::minute>, "Minute", "Integer"),
    KRZ_READ_ONLY(field<&CalendarFields::second>, "Second", "Integer"),
    KRZ_READ_ONLY(get_day_of_week, "DayOfWeek", "Integer"),
    KRZ_READ_ONLY(get_day_of_year, "DayOfYear", "Integer"),
    KRZ_READ_ONLY(get_offset, "SecondsFromUTC", "Integer"),
    KRZ_READ_ONLY(seconds_from_1970, "SecondsFrom1970", "Double"),
};

MethodEntry g_shared_methods[] = {
    KRZ_SHARED(now, "Now() as DateTime"),
    KRZ_SHARED(from_seconds, "FromSeconds(secondsFrom1970 as double) as DateTime"),
    KRZ_SHARED(parse, "Parse(text as string) as DateTime"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(
        construct,
        "Constructor(year as integer, month as integer, day as integer, hour as integer = 0, "
        "minute as integer = 0, second as integer = 0)"),
    KRZ_METHOD(in_utc, "UTC as DateTime"),
    KRZ_METHOD(in_local_zone, "Local as DateTime"),
    KRZ_METHOD(add_seconds, "AddSeconds(seconds as double) as DateTime"),
    KRZ_METHOD(to_text, "ToString() as string"),
};

}  // namespace

REALobject new_date_time(const Moment& moment) {
  // The zone may carry a moment at either end over it.
  const int64_t shown = moment.seconds + moment.offset_seconds;
  if (moment.seconds < kFirstSecond || moment.seconds > kLastSecond || shown < kFirstSecond ||
      shown > kLastSecond) {
    raise_exception("OutOfBoundsException", "the moment is outside of the years 1 to 9999");
    return nullptr;
  }
  const ClassInfo* const class_info = Runtime::current().registry().find_class(g_class.name);
  const REALobject date = class_info ? new_instance(*class_info) : nullptr;
  if (date) moment_of(date) = moment;
  return date;
}

void register_date_time(Registry& registry) {
  g_class = class_of<Moment>("DateTime");
  g_class.constructor = reinterpret_cast<REALfunction>(&initialise);
  set_properties(g_class, g_properties);
  set_shared_methods(g_class, g_shared_methods);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
