// Conversions between UTC and local readings: through a loaded zone file when there is one,
// otherwise through the system's local time (plain pair) or the built-in offsets (explicit pair).
#include <ctime>

#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/datetime/LqDateTimeSpan.h"
#include "lqtools/datetime/LqTimeZone.h"
#include "lqtools/datetime/detail/ZoneTable.h"

namespace {

constexpr int kDaylightSeconds = 3600;

// Added to the day of the month, by DayOfWeek() (1 Sunday to 7 Saturday), in the daylight rule.
constexpr int kWeekdayAdvance[7] = {6, 5, 4, 3, 2, 1, 7};

LqDateTimeSpan SpanOfSeconds(int seconds) { return LqDateTimeSpan(0, 0, 0, seconds, 0, 0); }

// The built-in daylight rule, one for every zone name, with European months. Kept: `n` reaches
// 32 from the last Saturday of the month on (not the last Sunday), so in March every later day
// counts hours 00 and 01 as standard time, and in October the days before the last Saturday
// count as standard time. Stored local readings were made with exactly this rule.
bool FallbackDaylight(int month, int hour, int dayOfMonth, int dayOfWeek) {
  if (month >= 4 && month <= 9) return true;
  if (month != 3 && month != 10) return false;
  // A weekday outside 1 to 7 (values from 2067 on) advances the day by nothing.
  const int advance = dayOfWeek >= 1 && dayOfWeek <= 7 ? kWeekdayAdvance[dayOfWeek - 1] : 0;
  if (dayOfMonth + advance < 32) return false;
  return month == 3 ? hour >= 2 : hour < 3;
}

}  // namespace

int LqDateTime::getBias(const char16_t* zoneName) {
  if (!zoneName) return 0;
  for (const lq::detail::ZoneRow& row : lq::detail::kZoneRows) {
    const char16_t* a = row.olson;
    const char16_t* b = zoneName;
    while (*a && *a == *b)
      ++a, ++b;
    if (*a == *b) return row.standardOffset;
  }
  return 0;
}

LqDateTime LqDateTime::LTC2UTC() const {
  LqTimeZone& zone = LqTimeZone::Get();
  if (zone.IsValid()) return *this - SpanOfSeconds(zone.Offset(*this, false, 0));

  tm local{};
  local.tm_mday = Day();
  local.tm_mon = Month() - 1;
  local.tm_year = Year() - 1900;
  local.tm_hour = Hour();
  local.tm_min = Minute();
  local.tm_sec = Second();
  local.tm_isdst = -1;
  const long long instant = static_cast<long long>(mktime(&local));
  tm utc{};
  // A system without zone rules for this reading gives the value back as it is.
  if (!xgmtime(&instant, &utc)) return *this;
  LqDateTime result(utc);
  // Kept: only this path drops what lies below the millisecond.
  result.SetDateTime(result.Year(), result.Month(), result.Day(), result.Hour(), result.Minute(),
                     result.Second(), MSecond(), 0);
  return result;
}

LqDateTime LqDateTime::UTC2LTC() const {
  LqTimeZone& zone = LqTimeZone::Get();
  if (zone.IsValid()) return *this + SpanOfSeconds(zone.Offset(*this, true, 0));

  tm utc{};
  utc.tm_mday = Day();
  utc.tm_mon = Month() - 1;
  utc.tm_year = Year() - 1900;
  utc.tm_hour = Hour();
  utc.tm_min = Minute();
  utc.tm_sec = Second();
  const time_t instant = timegm(&utc);
  tm local{};
  if (instant == static_cast<time_t>(-1) || !localtime_r(&instant, &local)) return *this;
  LqDateTime result(local);
  result.SetDateTime(result.Year(), result.Month(), result.Day(), result.Hour(), result.Minute(),
                     result.Second(), MSecond(), USecond());
  return result;
}

LqDateTime LqDateTime::ExplicitLTC2UTC(const char16_t* zoneName, bool applyDst) {
  LqDateTime result(*this);
  LqTimeZone& zone = LqTimeZone::GetAnother();
  zone.Set(LqWString(zoneName ? zoneName : u""));
  if (zone.IsValid()) return result - SpanOfSeconds(zone.Offset(result, false, 0));

  int bias = getBias(zoneName);
  if (applyDst && FallbackDaylight(Month(), Hour(), Day(), DayOfWeek())) bias += kDaylightSeconds;
  return result - SpanOfSeconds(bias);
}

LqDateTime LqDateTime::ExplicitUTC2LTC(const char16_t* zoneName, bool applyDst) {
  LqDateTime result(*this);
  LqTimeZone& zone = LqTimeZone::GetAnother();
  zone.Set(LqWString(zoneName ? zoneName : u""));
  if (zone.IsValid()) return result + SpanOfSeconds(zone.Offset(result, true, 0));

  result += SpanOfSeconds(getBias(zoneName));
  // Kept: the month and the hour come from the local reading, the day of the month and the
  // weekday from the UTC value; stored readings were converted with this mixed rule.
  if (applyDst && FallbackDaylight(result.Month(), result.Hour(), Day(), DayOfWeek()))
    result += SpanOfSeconds(kDaylightSeconds);
  return result;
}

LqDateTime LqDateTime::LTC() { return UTC().UTC2LTC(); }

int SetSystemDateTime(const LqDateTime&) { return -1; }
