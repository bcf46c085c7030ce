#include "lqtools/datetime/PeriodAlignment.h"

#include <cmath>

const LqDateTime& NearestDateTime(const LqDateTime& value, const LqDateTime& first,
                                  const LqDateTime& second) {
  const bool firstIsEarlier = first <= second;
  const LqDateTime& lo = firstIsEarlier ? first : second;
  const LqDateTime& hi = firstIsEarlier ? second : first;
  if (value <= lo) return lo;
  if (value >= hi) return hi;
  return (value - lo) <= (hi - value) ? lo : hi;
}

double AdjustToSamplePeriod(double time, double period) {
  if (period == 31.0) {
    // A plain sentinel for a calendar month, whatever the unit of `time`; no zone conversion.
    LqDateTime month(time);
    month.SetDateTime(month.Year(), month.Month(), 1, 0, 0, 0, 0, 0);
    return month.toDouble();
  }
  double whole = 0;
  const double fraction = std::modf(time / period, &whole);
  // A millionth of a period below the next step counts as the step: stored doubles drift.
  if (fraction > 0.999999) whole += 1;
  return whole * period;
}

int DaysOfMonth(const LqDateTime& value) {
  const int month = value.Month();
  if (month == 2) {
    const int year = value.Year();
    if (year % 4 != 0) return 28;
    if (year % 100 != 0) return 29;
    return year % 400 != 0 ? 28 : 29;
  }
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

double DCeil(double value, int decimals) {
  // Kept: -1 means no scaling at all, not a tenth.
  const bool scaled = decimals != -1;
  const double factor = decimals == 2 ? 100.0 : std::pow(10.0, decimals);
  const double x = scaled ? value * factor : value;
  double whole = 0;
  const double fraction = std::modf(x, &whole);
  double result = whole;
  if (fraction != 0.0) result = x >= 0 ? whole + 1.0 : whole - 1.0;
  return scaled ? result / factor : result;
}
