// Alignment of a date-time to the grid of a sampling period. Calendar periods are cut in the local
// time of LqTimeZone::Get(); a week starts on the first day of the week of the user's locale,
// which is why this one file of the date-time code reads the locale record.
#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/localisation/LqLocaleInformation.h"

namespace {

// Particular spans stand for the calendar periods; the first test that holds decides.
enum class Period { None, Month, Week, Year, Quarter, Day, Seconds };

Period KindOf(const LqDateTimeSpan& period) {
  if (period.TotalSeconds() <= 0) return Period::None;
  if (period.TotalSeconds() == 2678400) return Period::Month;  // exactly 31 days
  if (period.TotalSeconds() == 604800) return Period::Week;    // exactly 7 days
  if (period.TotalDays() >= 365) return Period::Year;
  if (period.TotalDays() >= 91) return Period::Quarter;
  if (period.TotalDays() == 1) return Period::Day;  // 86400 to 172799 seconds
  return Period::Seconds;
}

// 1 on the first day of the locale's week, 7 on the last. A locale record that was never filled
// counts the week from Monday, its documented default.
int DayOfLocaleWeek(const LqDateTime& local) {
  int first = LocaleInformationWide().firstDayOfWeek;
  if (first < 1 || first > 7) first = 2;
  int d = local.DayOfWeek() - first;
  if (d < 0) d += 7;
  return d + 1;
}

// Midnight of the local date `days` days after that of `local`.
LqDateTime MidnightPlusDays(const LqDateTime& local, int days) {
  LqDateTime midnight;
  midnight.SetDateTime(local.Year(), local.Month(), local.Day(), 0, 0, 0, 0, 0);
  return midnight + LqDateTimeSpan(days, 0, 0, 0, 0, 0);
}

LqDateTime FirstOfMonth(int year, int month) {
  LqDateTime first;
  first.SetDateTime(year, month, 1, 0, 0, 0, 0, 0);
  return first;
}

}  // namespace

void LqDateTime::AdjustToPeriod(const LqDateTimeSpan& period, const LqDateTime* anchor) {
  const Period kind = KindOf(period);
  if (kind == Period::None) return;
  if (kind == Period::Seconds) {
    // The grid runs through the anchor, or else through the epoch of the value in UTC.
    const auto p = static_cast<uint32_t>(period.TotalSeconds());
    if (anchor && anchor->Valid() && anchor->Seconds() <= m_seconds) {
      m_seconds -= (m_seconds - anchor->Seconds()) % p;
    } else {
      m_seconds = m_seconds / p * p;
    }
    m_microseconds = 0;
    return;
  }

  const LqDateTime local = UTC2LTC();
  LqDateTime start;
  switch (kind) {
    case Period::Month: start = FirstOfMonth(local.Year(), local.Month()); break;
    case Period::Week: start = MidnightPlusDays(local, -(DayOfLocaleWeek(local) - 1)); break;
    case Period::Year: start = FirstOfMonth(local.Year(), 1); break;
    case Period::Quarter:
      start = FirstOfMonth(local.Year(), (local.Month() - 1) / 3 * 3 + 1);
      break;
    default: start = MidnightPlusDays(local, 0); break;
  }
  const LqDateTime utc = start.LTC2UTC();
  SetDateTime(utc.Year(), utc.Month(), utc.Day(), utc.Hour(), utc.Minute(), utc.Second(),
              utc.MSecond(), utc.USecond());
}

void LqDateTime::AdjustToEndPeriod(const LqDateTimeSpan& period) {
  const Period kind = KindOf(period);
  if (kind == Period::None) return;
  if (kind == Period::Seconds) {
    const auto p = static_cast<uint32_t>(period.TotalSeconds());
    if (m_seconds % p == 0) return;  // the microseconds are not looked at and stay
    m_seconds = m_seconds / p * p + p;
    m_microseconds = 0;
    return;
  }

  // Kept: the boundary tests differ from kind to kind (milliseconds for month and year, the part
  // below them for week, quarter and day; a quarter "starts" in month 3, 6, 9 or 12), and a week
  // ends on its own last day. Callers' stored period ends depend on each of them.
  const LqDateTime local = UTC2LTC();
  const bool midnight = local.Hour() == 0 && local.Minute() == 0 && local.Second() == 0;
  LqDateTime end;
  switch (kind) {
    case Period::Month:
      if (local.Day() == 1 && midnight && local.MSecond() == 0) return;
      end = local.Month() == 12 ? FirstOfMonth(local.Year() + 1, 1)
                                : FirstOfMonth(local.Year(), local.Month() + 1);
      break;
    case Period::Week: {
      const int d = DayOfLocaleWeek(local);
      if (d == 1 && midnight && local.USecond() == 0) return;
      end = MidnightPlusDays(local, 7 - d);
      break;
    }
    case Period::Year:
      if (local.Month() == 1 && local.Day() == 1 && midnight && local.MSecond() == 0) return;
      end = FirstOfMonth(local.Year() + 1, 1);
      break;
    case Period::Quarter: {
      if (local.Month() % 3 == 0 && local.Day() == 1 && midnight && local.USecond() == 0) return;
      const int next = (local.Month() - 1) / 3 * 3 + 1 + 3;
      end = next == 13 ? FirstOfMonth(local.Year() + 1, 1) : FirstOfMonth(local.Year(), next);
      break;
    }
    default:
      if (midnight && local.USecond() == 0) return;
      end = MidnightPlusDays(local, 1);
      break;
  }
  const LqDateTime utc = end.LTC2UTC();
  SetDateTime(utc.Year(), utc.Month(), utc.Day(), utc.Hour(), utc.Minute(), utc.Second(),
              utc.MSecond(), utc.USecond());
}
