#include "lqtools/datetime/detail/OleDate.h"

#include <cmath>

#include "lqtools/datetime/detail/Calendar.h"

namespace lq::detail {

namespace {

// 1899-12-30, day 0 of OLE dates, lies this many days before 1970-01-01.
constexpr int64_t kOleEpochToUnixDays = 25569;
// 0100-01-01 and 9999-12-31 as OLE day numbers.
constexpr int64_t kFirstOleDay = -657434;
constexpr int64_t kLastOleDay = 2958465;

int GregorianMonthLength(int64_t year, int month) {
  return month == 2 && IsGregorianLeap(year) ? 29 : kMonthLengths[month - 1];
}

}  // namespace

// Counts in 400-year eras of 146097 days, with years starting on March 1 so that the leap day
// falls at the end of the counted year.
int64_t DaysFromCivil(int64_t year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const int64_t era = (year >= 0 ? year : year - 399) / 400;
  const int64_t yearOfEra = year - era * 400;
  const int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

void CivilFromDays(int64_t days, int64_t& year, int& month, int& day) {
  days += 719468;
  const int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const int64_t dayOfEra = days - era * 146097;
  const int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int64_t shiftedMonth = (5 * dayOfYear + 2) / 153;
  day = static_cast<int>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
  month = static_cast<int>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
  year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
}

bool VariantTimeToSystemTime(double date, SystemTime& out) {
  if (!(date > static_cast<double>(kFirstOleDay - 1) &&
        date < static_cast<double>(kLastOleDay + 1)))
    return false;
  int64_t whole = static_cast<int64_t>(date);
  const double fraction = std::fabs(date - static_cast<double>(whole));
  auto secondOfDay = static_cast<int>(std::floor(fraction * 86400.0 + 0.5));
  if (secondOfDay >= 86400) {
    secondOfDay = 0;
    ++whole;
  }
  if (whole < kFirstOleDay || whole > kLastOleDay) return false;

  const int64_t unixDays = whole - kOleEpochToUnixDays;
  int64_t year = 0;
  CivilFromDays(unixDays, year, out.month, out.day);
  out.year = static_cast<int>(year);
  out.dayOfWeek = static_cast<int>(((unixDays + 4) % 7 + 7) % 7);  // 1970-01-01 was a Thursday
  out.hour = secondOfDay / 3600;
  out.minute = secondOfDay / 60 % 60;
  out.second = secondOfDay % 60;
  out.milliseconds = 0;
  return true;
}

bool SystemTimeToVariantTime(const SystemTime& fields, double& out) {
  if (fields.year < 100 || fields.year > 9999 || fields.month < 1 || fields.month > 12 ||
      fields.day < 1 || fields.day > GregorianMonthLength(fields.year, fields.month) ||
      fields.hour < 0 || fields.hour > 23 || fields.minute < 0 || fields.minute > 59 ||
      fields.second < 0 || fields.second > 59)
    return false;
  const auto days = static_cast<double>(DaysFromCivil(fields.year, fields.month, fields.day) +
                                        kOleEpochToUnixDays);
  const double time = (fields.hour * 3600 + fields.minute * 60 + fields.second) / 86400.0;
  out = days >= 0 ? days + time : days - time;
  return true;
}

}  // namespace lq::detail
