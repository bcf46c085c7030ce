// OLE automation dates and the Gregorian calendar behind them. An OLE date counts days from
// 1899-12-30 in its whole part; the fraction, taken by its absolute value, is the time of day, so
// -1.25 is 1899-12-29 06:00:00. Dates from 0100-01-01 to 9999-12-31 convert; anything else fails.
// Pure functions, safe from any thread. Internal to the date-time code.
#pragma once

#include <cstdint>


namespace lq::detail {

// The broken-down time that OLE dates are converted to and from.
struct SystemTime {
  int year = 0;
  int month = 0;
  int dayOfWeek = 0;  // 0 is Sunday
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int milliseconds = 0;
};

// Days from 1970-01-01 to the proleptic Gregorian date, and back.
int64_t DaysFromCivil(int64_t year, int month, int day);
void CivilFromDays(int64_t days, int64_t& year, int& month, int& day);

// The time rounds to the nearest second (a half second rounds up, carrying into the date);
// milliseconds come out 0. False for NaN and for dates outside the range.
bool VariantTimeToSystemTime(double date, SystemTime& out);
// False unless every field lies in its calendar range (milliseconds and day of week are not
// read).
bool SystemTimeToVariantTime(const SystemTime& fields, double& out);

}  // namespace lq::detail
