// LqDateTime: the one date-time value of lqtools. Unsigned 32-bit seconds since
// 1999-01-01T00:00:00 and the microseconds of that second, kept 0 to 999999 with floor
// semantics (2020-01-01 minus one microsecond is 2019-12-31 23:59:59.999999). It holds no zone:
// UTC or wall-clock time, only the caller knows which.
//
// Range: 1999-01-01 to early 2135; seconds 0xFFFFFFFF are the invalid state, which every
// accessor still reads as 2135-02-06 06:28:15. Nothing throws except ToCompleteString and
// ToCompleteWString; bad input ends in the invalid state, which Valid() or isValidDate() tell.
//
// Two leap rules stand side by side on purpose. The value itself counts every fourth year as a
// leap year (2100-02-29 exists and is stored); isBisiesto and isValidDate follow the Gregorian
// rule (2100-02-29 is not a valid date). Neither may be made to follow the other.
//
// A copyable value of two words with no shared state; any thread may use its own copies.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>

#include "lqtools/LqToolsExport.h"
#include "lqtools/datetime/LqDateTimeSpan.h"
#include "lqtools/datetime/LqOleDateTime.h"
#include "lqtools/datetime/detail/Calendar.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API LqDateTime {
 public:
  // The seconds of the invalid state.
  static constexpr uint32_t kInvalidSeconds = 0xFFFFFFFFu;

  // ------------------------------------------------------------------------------------------
  // Construction and assignment

  // Invalid, with 0 microseconds.
  LqDateTime();
  LqDateTime(const LqDateTime& other) = default;
  LqDateTime& operator=(const LqDateTime& other) = default;
  LqDateTime(int year, int month, int day, int hour, int minute, int second, int msecond,
             int usecond);
  // tm_isdst is not looked at.
  LqDateTime(const tm& fields);
  LqDateTime& operator=(const tm& fields);
  // Unix seconds from 2000-01-01 on, an OLE date below that; see operator=(double).
  LqDateTime(double value);
  // A double below 946684800 (2000-01-01T00:00:00Z) is read as an OLE date, so the Unix seconds
  // of 1970 to 1999 end invalid. Only the fraction of a double below 2^31 gives milliseconds.
  LqDateTime& operator=(double value);
  LqDateTime(const LqOleDateTime& date);
  LqDateTime& operator=(const LqOleDateTime& date);
  // "31/12/2020 23:59:58", and failing that "2020-12-31T23:59:58Z"; otherwise invalid.
  LqDateTime(const std::u16string& text);

  // ------------------------------------------------------------------------------------------
  // Setters

  // Year 1999 to 2135, month 1 to 12 and day 1 to 31, or the value becomes invalid (keeping its
  // microseconds). Anything else rolls: day 31 of a short month and an hour of 25 carry
  // forward, negative times carry back, and the seconds wrap in 32 bits late in 2135.
  void SetDateTime(int year, int month, int day, int hour, int minute, int second, int msecond,
                   int usecond);
  void SetDate(int year, int month, int day);
  // The date becomes 1999-01-01; it is not kept.
  void SetTime(int hour, int minute, int second, int msecond, int usecond);
  void Invalidate() { m_seconds = kInvalidSeconds; }

  // Fixed-place text: format 0 "yyyy?mm?dd hh:mm:ss", 1 "dd?mm?yyyy hh:mm:ss", 2
  // "yyyy?mm?ddThh:mm:ss", then optional ":mmm:uuu". Shorter than 19 units (or null): the value
  // is left as it stands. `separator` is not read.
  void SetDateTime(const char16_t* text, int format, char16_t separator);
  // Format 0 month-day-year, 1 day-month-year, 2 year-month-day with a T; any other format writes
  // no date. With `withFraction` the milliseconds and the part below them follow the seconds.
  LqWString GetDateTime(int format, bool withFraction, const char16_t* dateSeparator,
                        const char16_t* timeSeparator) const;

  // ------------------------------------------------------------------------------------------
  // Fields. None tests validity.

  int Year() const;
  int Month() const;
  int Day() const;
  int Hour() const { return static_cast<int>(m_seconds / 3600 % 24); }
  int Minute() const { return static_cast<int>(m_seconds / 60 % 60); }
  int Second() const { return static_cast<int>(m_seconds % 60); }
  int MSecond() const { return m_microseconds / 1000; }
  // Only the part below the millisecond.
  int USecond() const { return m_microseconds % 1000; }
  // All microseconds of the second.
  int USecondInS() const { return m_microseconds; }
  uint32_t Seconds() const { return m_seconds; }
  // Unix seconds in 32 bits: negative from 2038-01-19T03:14:08 on.
  int EpochSeconds() const;
  bool Valid() const { return m_seconds != kInvalidSeconds; }

  // ------------------------------------------------------------------------------------------
  // Calendar

  // Gregorian leap year; the name means leap year.
  bool isBisiesto(int year) const;
  // Gregorian test of the fields, years 1971 to 9999. Note the order: day first.
  bool isValidDate(int day, int month, int year, int hour, int minute, int second) const;
  bool isValidDate() const;
  int DaysInMonth() const;
  // Month first. Every year divisible by 4 has a February of 29 days; a month outside 1 to 12
  // gives 0.
  static int DaysInMonth(int month, int year);
  // 1 (Sunday) to 7. From 2067-01-19T03:14:08 on the day count turns negative and the result
  // lies in -5 to 6.
  int DayOfWeek() const;
  // 1 (Monday) to 7, with the same turn as DayOfWeek.
  int DayOfWeekISO8601() const;
  int DayOfYear() const;
  int WeekOfYear() const;
  int WeekOfYearISO8601() const;

  // ------------------------------------------------------------------------------------------
  // Conversions

  // Unix seconds with milliseconds, or with microseconds.
  double toDouble() const;
  double toDoubleUSec() const;
  // Invalid status when the value has no OLE date (2100-02-29); microseconds are lost.
  LqOleDateTime OleDateTime() const;
  // A double (see operator=(double)) packed as year - baseYear (6 bits), month, day, hour,
  // minute and second, returned as the unsigned 32-bit number.
  static double toStdDate(double date, int baseYear);
  // The packed form back to Unix seconds (not to the double toStdDate was given).
  static double fromStdDate(double packed, int baseYear);

  // ------------------------------------------------------------------------------------------
  // The clock

  // The present UTC time to the millisecond (microsecond part 0).
  static LqDateTime UTC();
  // UTC().UTC2LTC()
  static LqDateTime LTC();

  // ------------------------------------------------------------------------------------------
  // Local and UTC conversion. `this` stays as it is; the result is a new value. None tests
  // validity.

  // Through the zone of LqTimeZone::Get(); without one, through the system's local time (the
  // `TZ` of the process). On that path LTC2UTC keeps the milliseconds and drops what lies below.
  LqDateTime LTC2UTC() const;
  LqDateTime UTC2LTC() const;
  // Through the zone file `zoneName` (loaded into LqTimeZone::GetAnother()); without one, through
  // a built-in standard offset for 75 names and, with `applyDst`, a fixed European daylight rule
  // that changes on the last Saturday of March and October.
  LqDateTime ExplicitLTC2UTC(const char16_t* zoneName, bool applyDst);
  LqDateTime ExplicitUTC2LTC(const char16_t* zoneName, bool applyDst);

  // ------------------------------------------------------------------------------------------
  // Period alignment (PeriodAlignment.h has the free helpers). Particular spans stand for the
  // calendar periods, tested in this order: 0 seconds or less does nothing; exactly 31 days is a
  // month, exactly 7 days a week (from the locale's first day of the week), 365 days or more a
  // year, 91 days or more a quarter, 86400 to 172799 seconds a day; any other span is a grid of
  // fixed seconds counted from 1999-01-01 in UTC. Calendar periods are cut in the local time of
  // LqTimeZone::Get() and the value stays UTC.

  // Back to the start of the period that holds the value. A valid `anchor` at or before the value
  // moves a grid of fixed seconds through itself; calendar periods ignore it.
  void AdjustToPeriod(const LqDateTimeSpan& period, const LqDateTime* anchor);
  // On to where the period ends; a value on a boundary stays. The boundary tests differ from kind
  // to kind, and a week ends at the start of its own last day: see PeriodAlignment.cpp.
  void AdjustToEndPeriod(const LqDateTimeSpan& period);
  // Sends the value to the wide printk as "DD/MM/YYYY hh:mm:ss.mmm" and a line feed.
  void printk() const;

  // ------------------------------------------------------------------------------------------
  // Text. ToCompleteString and ToCompleteWString throw std::exception for an invalid value or
  // microseconds outside 0 to 999999; the others write whatever the value reads as.

  std::string ToString() const;
  std::u16string ToWString() const;
  std::string ToCompleteString() const;
  std::u16string ToCompleteWString() const;
  std::string ToPlainStringReverseDate() const;

  // ------------------------------------------------------------------------------------------
  // Arithmetic (no test for the invalid state or for leaving the range) and comparison

  LqDateTime operator+(const LqDateTimeSpan& span) const;
  LqDateTime operator-(const LqDateTimeSpan& span) const;
  // Values more than 2147483647 seconds apart wrap to the other sign.
  LqDateTimeSpan operator-(const LqDateTime& other) const;
  const LqDateTime& operator+=(LqDateTimeSpan span);
  const LqDateTime& operator-=(LqDateTimeSpan span);

  // Both fields, also when both values are invalid.
  bool operator==(const LqDateTime& other) const {
    return m_seconds == other.m_seconds && m_microseconds == other.m_microseconds;
  }
  bool operator!=(const LqDateTime& other) const { return !(*this == other); }
  bool operator<(const LqDateTime& other) const {
    return m_seconds < other.m_seconds ||
           (m_seconds == other.m_seconds && m_microseconds < other.m_microseconds);
  }
  bool operator>(const LqDateTime& other) const { return other < *this; }
  bool operator<=(const LqDateTime& other) const { return !(other < *this); }
  bool operator>=(const LqDateTime& other) const { return !(*this < other); }

 private:
  static const int monthDays[12];

  // The standard offset of `zoneName` in seconds east of UTC from the built-in table; 0 for any
  // other name.
  int getBias(const char16_t* zoneName);

  // `year` receives the year index (years since 1999) and, with `yearOnly`, `day` the day number
  // of January 1; otherwise `month` and `day` the calendar fields.
  static void DateTime2DMY(uint32_t seconds, int& day, int& month, int& year, bool yearOnly);

  void ParseOldFormatWString(const std::u16string& text);
  void ParseISO8601FormatWString(const std::u16string& text);

  uint32_t m_seconds;
  int32_t m_microseconds = 0;
};

// gmtime of a time: null when either pointer is null, the time is negative or it lies after
// 3000-12-31T23:59:59Z; otherwise `result`.
LQTOOLS_API tm* xgmtime(const long long* time, tm* result);

// Setting the system clock is deliberately not offered: always -1, and the clock stays.
LQTOOLS_API int SetSystemDateTime(const LqDateTime& dateTime);

// ------------------------------------------------------------------------------------------
// The calendar core, inline so that loops over many values compile to plain arithmetic.

inline void LqDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second,
                                    int msecond, int usecond) {
  if (year < 1999 || year > 2135 || month < 1 || month > 12 || day < 1 || day > 31) {
    Invalidate();
    return;
  }
  const int y = year - 1999;
  // February always counts 28 here; the leap day is the extra one after it.
  int n = y * 365 + ((y + 2) >> 2) + day - 1 + lq::detail::kMonthStarts.start[0][month - 1];
  if ((y & 3) == 1 && month > 2) ++n;

  // Kept: out-of-range times and late 2135 wrap in 32 bits, rolling the date without a word.
  uint32_t total = static_cast<uint32_t>(n) * 24u + static_cast<uint32_t>(hour);
  total = total * 60u + static_cast<uint32_t>(minute);
  total = total * 60u + static_cast<uint32_t>(second);

  const auto micro =
      static_cast<int32_t>(static_cast<uint32_t>(msecond) * 1000u + static_cast<uint32_t>(usecond));
  if (micro < 0) {
    // Floor: 2020-01-01 minus 1 microsecond is 2019-12-31 23:59:59.999999.
    const int64_t magnitude = -static_cast<int64_t>(micro);
    const int64_t q = magnitude / 1000000;
    const int64_t r = magnitude - q * 1000000;
    total -= static_cast<uint32_t>(q);
    if (r != 0) {
      total -= 1u;
      m_microseconds = static_cast<int32_t>(1000000 - r);
    } else {
      m_microseconds = 0;
    }
  } else if (micro >= 1000000) {
    total += static_cast<uint32_t>(micro / 1000000);
    m_microseconds = micro % 1000000;
  } else {
    m_microseconds = micro;
  }
  m_seconds = total;
}

inline void LqDateTime::DateTime2DMY(uint32_t seconds, int& day, int& month, int& year,
                                     bool yearOnly) {
  const auto d = static_cast<int>(seconds / 86400u);
  int y = d / 365;
  int s = y * 365 + ((y + 2) >> 2);
  if (s > d) {
    --y;
    s = y * 365 + ((y + 2) >> 2);
  }
  year = y;
  day = s;
  if (yearOnly) return;
  // The month walk over the table is done ahead of time, in kMonthOfDay.
  const int c = d - s;
  const int leap = (y & 3) == 1 ? 1 : 0;  // 2000, 2004, ... and 2100 too
  const int m = lq::detail::kMonthOfDay.month[leap][c];
  month = m + 1;
  day = c - lq::detail::kMonthStarts.start[leap][m] + 1;
}

inline int LqDateTime::Year() const {
  int day = 0, month = 0, year = 0;
  DateTime2DMY(m_seconds, day, month, year, true);
  return year + 1999;
}

inline int LqDateTime::Month() const {
  int day = 0, month = 0, year = 0;
  DateTime2DMY(m_seconds, day, month, year, false);
  return month;
}

inline int LqDateTime::Day() const {
  int day = 0, month = 0, year = 0;
  DateTime2DMY(m_seconds, day, month, year, false);
  return day;
}
