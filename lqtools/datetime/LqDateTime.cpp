#include "lqtools/datetime/LqDateTime.h"

#include "lqtools/datetime/detail/Calendar.h"
#include "lqtools/datetime/detail/OleDate.h"
#include "lqtools/platform/Truncation.h"

using lq::detail::kMonthLengths;
const int LqDateTime::monthDays[12] = {kMonthLengths[0], kMonthLengths[1],  kMonthLengths[2],
                                       kMonthLengths[3], kMonthLengths[4],  kMonthLengths[5],
                                       kMonthLengths[6], kMonthLengths[7],  kMonthLengths[8],
                                       kMonthLengths[9], kMonthLengths[10], kMonthLengths[11]};

namespace {

// tm_year of 2000: from 2000-01-01T00:00:00Z on, a double is read as Unix seconds.
constexpr int kUnixYearThreshold = 100;
// The last time gmtime takes, 3000-12-31T23:59:59Z.
constexpr long long kLastGmTime = 32535215999LL;

// timegm of the six fields, as a double.
double WholeUnixSeconds(const LqDateTime& value) {
  tm fields{};
  fields.tm_year = value.Year() - 1900;
  fields.tm_mon = value.Month() - 1;
  fields.tm_mday = value.Day();
  fields.tm_hour = value.Hour();
  fields.tm_min = value.Minute();
  fields.tm_sec = value.Second();
  fields.tm_isdst = -1;
  return static_cast<double>(timegm(&fields));
}

}  // namespace

// ------------------------------------------------------------------------------------------
// Construction and assignment

LqDateTime::LqDateTime() { Invalidate(); }

LqDateTime::LqDateTime(int year, int month, int day, int hour, int minute, int second, int msecond,
                       int usecond) {
  SetDateTime(year, month, day, hour, minute, second, msecond, usecond);
}

LqDateTime::LqDateTime(const tm& fields) { *this = fields; }

LqDateTime& LqDateTime::operator=(const tm& fields) {
  // Sums in 64 bits; a year or month that does not fit ends invalid through the range test.
  const long long year = fields.tm_year + 1900LL;
  const long long month = fields.tm_mon + 1LL;
  SetDateTime(year >= 1999 && year <= 2135 ? static_cast<int>(year) : 0,
              month >= 1 && month <= 12 ? static_cast<int>(month) : 0, fields.tm_mday,
              fields.tm_hour, fields.tm_min, fields.tm_sec, 0, 0);
  return *this;
}

LqDateTime::LqDateTime(double value) { *this = value; }

LqDateTime& LqDateTime::operator=(double value) {
  const long long t = lq::detail::TruncateToInt64(value);
  tm fields{};
  if (!xgmtime(&t, &fields)) {
    Invalidate();
    return *this;
  }
  if (fields.tm_year >= kUnixYearThreshold) {
    // Kept: the whole part is taken in 32 bits, so from 2^31 on the fraction is meaningless.
    const double fraction = value - static_cast<double>(lq::detail::TruncateToInt32(value));
    const int32_t ms = lq::detail::TruncateToInt32(fraction * 1000.0);
    const int32_t us = lq::detail::TruncateToInt32(
        static_cast<double>(lq::detail::TruncateToInt32(fraction * 1e6)) -
        static_cast<double>(ms) * 1000.0);
    SetDateTime(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour,
                fields.tm_min, fields.tm_sec, ms, us);
    return *this;
  }
  *this = LqOleDateTime(value);
  return *this;
}

LqDateTime::LqDateTime(const LqOleDateTime& date) { *this = date; }

LqDateTime& LqDateTime::operator=(const LqOleDateTime& date) {
  if (date.GetStatus() != LqOleDateTime::valid) {
    Invalidate();
    return *this;
  }
  SetDateTime(date.GetYear(), date.GetMonth(), date.GetDay(), date.GetHour(), date.GetMinute(),
              date.GetSecond(), 0, 0);
  return *this;
}

// ------------------------------------------------------------------------------------------
// Setters

void LqDateTime::SetDate(int year, int month, int day) {
  SetDateTime(year, month, day, 0, 0, 0, 0, 0);
}

void LqDateTime::SetTime(int hour, int minute, int second, int msecond, int usecond) {
  SetDateTime(1999, 1, 1, hour, minute, second, msecond, usecond);
}

// ------------------------------------------------------------------------------------------
// Fields

int LqDateTime::EpochSeconds() const {
  return static_cast<int>(m_seconds + lq::detail::kValueEpochInUnixSeconds);
}

// ------------------------------------------------------------------------------------------
// Calendar

bool LqDateTime::isBisiesto(int year) const { return lq::detail::IsGregorianLeap(year); }

bool LqDateTime::isValidDate(int day, int month, int year, int hour, int minute, int second) const {
  if (minute < 0 || minute > 59 || second < 0 || second > 59 || hour < 0 || hour > 23) return false;
  if (month < 1 || month > 12 || day < 1 || day > 31) return false;
  if (year < 1971 || year > 9999) return false;
  if ((month == 4 || month == 6 || month == 9 || month == 11) && day > 30) return false;
  if (month == 2 && (day > 29 || (day == 29 && !isBisiesto(year)))) return false;
  return true;
}

bool LqDateTime::isValidDate() const {
  return Valid() && isValidDate(Day(), Month(), Year(), Hour(), Minute(), Second());
}

int LqDateTime::DaysInMonth() const { return DaysInMonth(Month(), Year()); }

int LqDateTime::DaysInMonth(int month, int year) {
  // The table is not read outside its twelve entries: a month that does not exist has no days.
  if (month < 1 || month > 12) return 0;
  if (month == 2 && (year & 3) == 0) return 29;
  return monthDays[month - 1];
}

int LqDateTime::DayOfWeek() const {
  const int d = (*this - LqDateTime(1999, 1, 1, 0, 0, 0, 0, 0)).TotalDays();
  return (d + 5) % 7 + 1;  // 1999-01-01 was a Friday
}

int LqDateTime::DayOfWeekISO8601() const {
  const int d = (*this - LqDateTime(1999, 1, 1, 0, 0, 0, 0, 0)).TotalDays();
  return (d + 4) % 7 + 1;
}

int LqDateTime::DayOfYear() const {
  return (*this - LqDateTime(Year(), 1, 1, 0, 0, 0, 0, 0)).TotalDays() + 1;
}

int LqDateTime::WeekOfYear() const { return (DayOfYear() - 1) / 7 + 1; }

int LqDateTime::WeekOfYearISO8601() const {
  const int year = Year();
  const int n = LqDateTime(year + 1, 1, 1, 0, 0, 0, 0, 0).DayOfWeekISO8601();
  if (Month() == 12 && n >= 2 && n <= 4 && Day() > 32 - n) return 1;
  const int f = LqDateTime(year, 1, 1, 0, 0, 0, 0, 0).DayOfWeekISO8601();
  // Kept: for 1999-01-01 to 1999-01-03 this asks the invalid 1998-12-31, which gives 5.
  if (Month() == 1 && f > 4 && Day() <= 8 - f)
    return LqDateTime(year - 1, 12, 31, 0, 0, 0, 0, 0).WeekOfYearISO8601();
  const int k = f < 5 ? DayOfYear() + f - 2 : DayOfYear() + f - 9;
  return k / 7 + 1;
}

// ------------------------------------------------------------------------------------------
// Conversions

double LqDateTime::toDouble() const { return WholeUnixSeconds(*this) + MSecond() / 1000.0; }

double LqDateTime::toDoubleUSec() const { return WholeUnixSeconds(*this) + USecondInS() / 1e6; }

LqOleDateTime LqDateTime::OleDateTime() const {
  LqOleDateTime result;
  lq::detail::SystemTime fields;
  fields.year = Year();
  fields.month = Month();
  fields.day = Day();
  fields.hour = Hour();
  fields.minute = Minute();
  fields.second = Second();
  lq::detail::SystemTime back;
  if (!lq::detail::SystemTimeToVariantTime(fields, result.m_dt) ||
      !lq::detail::VariantTimeToSystemTime(result.m_dt, back) || back.year != fields.year ||
      back.month != fields.month || back.day != fields.day || back.hour != fields.hour ||
      back.minute != fields.minute || back.second != fields.second)
    result.m_status = LqOleDateTime::invalid;
  return result;
}

double LqDateTime::toStdDate(double date, int baseYear) {
  const LqDateTime value(date);
  const uint32_t packed =
      (static_cast<uint32_t>(value.Year()) - static_cast<uint32_t>(baseYear)) << 26 |
      static_cast<uint32_t>(value.Month()) << 22 | static_cast<uint32_t>(value.Day()) << 17 |
      static_cast<uint32_t>(value.Hour()) << 12 | static_cast<uint32_t>(value.Minute()) << 6 |
      static_cast<uint32_t>(value.Second());
  return static_cast<double>(packed);
}

double LqDateTime::fromStdDate(double packed, int baseYear) {
  const auto bits =
      static_cast<uint32_t>(static_cast<uint64_t>(lq::detail::TruncateToInt64(packed)));
  const auto year = static_cast<int>((bits >> 26) + static_cast<uint32_t>(baseYear));
  LqDateTime value(year, static_cast<int>(bits >> 22 & 15u), static_cast<int>(bits >> 17 & 31u),
                   static_cast<int>(bits >> 12 & 31u), static_cast<int>(bits >> 6 & 63u),
                   static_cast<int>(bits & 63u), 0, 0);
  return value.toDouble();
}

tm* xgmtime(const long long* time, tm* result) {
  if (!time || !result || *time < 0 || *time > kLastGmTime) return nullptr;
  const auto t = static_cast<time_t>(*time);
  return gmtime_r(&t, result) ? result : nullptr;
}
