// Calendar tables and rules shared by the date-time code. Compile-time constants; internal.
#pragma once

#include <cstdint>

namespace lq::detail {

// The value's epoch, 1999-01-01T00:00:00, in Unix seconds.
inline constexpr uint32_t kValueEpochInUnixSeconds = 915148800u;

inline constexpr int kMonthLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

constexpr bool IsGregorianLeap(int64_t year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// Zero-based day of the year of the first of each month, [0] a common year, [1] a leap year;
// [x][12] is the length of the year.
struct MonthStartTable {
  int start[2][13];
};
constexpr MonthStartTable MakeMonthStartTable() {
  MonthStartTable t{};
  for (int leap = 0; leap < 2; ++leap)
    for (int m = 0; m < 12; ++m)
      t.start[leap][m + 1] = t.start[leap][m] + kMonthLengths[m] + (leap && m == 1 ? 1 : 0);
  return t;
}
inline constexpr MonthStartTable kMonthStarts = MakeMonthStartTable();

// The zero-based month of each zero-based day of the year, the month walk done ahead of time.
struct MonthOfDayTable {
  uint8_t month[2][366];
};
constexpr MonthOfDayTable MakeMonthOfDayTable() {
  MonthOfDayTable t{};
  for (int leap = 0; leap < 2; ++leap) {
    int m = 0;
    for (int c = 0; c < 366; ++c) {
      while (m < 11 && c >= kMonthStarts.start[leap][m + 1])
        ++m;
      t.month[leap][c] = static_cast<uint8_t>(m);
    }
  }
  return t;
}
inline constexpr MonthOfDayTable kMonthOfDay = MakeMonthOfDayTable();

}  // namespace lq::detail
