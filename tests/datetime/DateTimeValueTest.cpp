#include <gtest/gtest.h>
#include <lqtools/datetime/LqDateTime.h>

#include <cmath>
#include <cstdint>
#include <ctime>

#include "datetime/DateTimeTestHelpers.h"

namespace {

// Every day of the range by the value's own rule, every fourth year a leap year; toDouble, which
// is Gregorian, agrees up to 2100-02-29 and falls one day behind from 2100-03-01 on.
TEST(DateTimeCalendar, EveryDayFollowsTheFourYearRuleAndDepartsFromGregorianIn2100) {
  static const int kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int year = 1999, month = 1, day = 1;
  for (uint32_t n = 0; n <= 0xFFFFFFFEu / 86400u; ++n) {
    const LqDateTime v(year, month, day, 0, 0, 0, 0, 0);
    ASSERT_EQ(v.Seconds(), n * 86400u) << year << "-" << month << "-" << day;
    ASSERT_EQ(v.Year() * 10000 + v.Month() * 100 + v.Day(), year * 10000 + month * 100 + day);
    const bool afterLeapDay2100 = year > 2100 || (year == 2100 && month > 2);
    ASSERT_EQ(v.toDouble() - (n * 86400.0 + 915148800), afterLeapDay2100 ? -86400.0 : 0.0);
    if (++day > (month == 2 && year % 4 == 0 ? 29 : kLengths[month - 1])) {
      day = 1;
      if (++month > 12) month = 1, ++year;
    }
  }
}

TEST(DateTimeValue, SetDateTimeRangesRollingAndFloorMicroseconds) {
  struct Case {
    int y, mo, d, h, mi, s, ms, us;
    const char* fields;
  } cases[] = {{2001, 2, 31, 0, 0, 0, 0, 0, "2001-03-03 00:00:00.000000"},
               {2020, 1, 1, 0, -1, 0, 0, 0, "2019-12-31 23:59:00.000000"},
               {2135, 12, 31, 0, 0, 0, 0, 0, "1999-11-24 17:31:44.000000"},
               {2020, 1, 1, 0, 0, 0, 0, -1, "2019-12-31 23:59:59.999999"},
               {2020, 1, 1, 0, 0, 0, 1500, 0, "2020-01-01 00:00:01.500000"},
               {2020, 1, 1, 0, 0, 0, -1000, 0, "2019-12-31 23:59:59.000000"},
               {2020, 1, 1, 0, 0, 0, 0, INT32_MIN, "2019-12-31 23:24:12.516352"},
               {2020, 1, 1, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX,
                "2088-01-19 02:48:54.482647"}};
  for (const Case& c : cases)
    EXPECT_EQ(FieldsOf(LqDateTime(c.y, c.mo, c.d, c.h, c.mi, c.s, c.ms, c.us)), c.fields)
        << c.y << "-" << c.mo << "-" << c.d;
  // Out of range ends invalid and leaves the microseconds as they were.
  const int invalid[][3] = {{1998, 12, 31}, {2136, 1, 1}, {2020, 0, 1},
                            {2020, 13, 1},  {2020, 1, 0}, {2020, 1, 32}};
  LqDateTime v(2020, 5, 6, 7, 8, 9, 10, 11);
  for (const auto& d : invalid) {
    v.SetDateTime(d[0], d[1], d[2], 0, 0, 0, 0, 0);
    EXPECT_FALSE(v.Valid()) << d[0] << "-" << d[1] << "-" << d[2];
  }
  EXPECT_EQ(v.USecondInS(), 10011);
  v.SetTime(10, 11, 12, 0, 0);
  EXPECT_EQ(FieldsOf(v), "1999-01-01 10:11:12.000000");
}

TEST(DateTimeCalendar, ValidityIsGregorianWithItsOwnYearRange) {
  struct Case {
    int d, mo, y, h, mi, s;
    bool valid;
  } cases[] = {{1, 1, 1971, 0, 0, 0, true},      {31, 12, 1970, 23, 59, 59, false},
               {31, 12, 9999, 23, 59, 59, true}, {1, 1, 10000, 0, 0, 0, false},
               {1, 1, 2020, 0, 0, 60, false},    {1, 1, 2020, 0, 60, 0, false},
               {1, 1, 2020, 24, 0, 0, false},    {1, 1, 2020, -1, 0, 0, false},
               {31, 4, 2020, 0, 0, 0, false},    {29, 2, 2000, 0, 0, 0, true},
               {29, 2, 2100, 0, 0, 0, false},    {30, 2, 2024, 0, 0, 0, false}};
  for (const Case& c : cases)
    EXPECT_EQ(LqDateTime().isValidDate(c.d, c.mo, c.y, c.h, c.mi, c.s), c.valid)
        << c.d << "." << c.mo << "." << c.y;
  EXPECT_EQ(LqDateTime(2024, 4, 10, 0, 0, 0, 0, 0).DaysInMonth(), 30);
  // Four-year rule, month first; a month that does not exist has no days.
  const int months[][3] = {{2, 2100, 29}, {2, 2101, 28}, {12, 2020, 31},
                           {0, 2020, 0},  {13, 2020, 0}, {INT32_MIN, 2020, 0}};
  for (const auto& m : months)
    EXPECT_EQ(LqDateTime::DaysInMonth(m[0], m[1]), m[2]) << m[0] << "/" << m[1];
}

// Weekdays and weeks against the C library for every day whose day count is positive.
TEST(DateTimeCalendar, WeekdaysAndIsoWeeksAgreeWithTheCLibrary) {
  for (LqDateTime v(1999, 1, 4, 12, 0, 0, 0, 0); v.Year() < 2067;
       v += LqDateTimeSpan(1, 0, 0, 0, 0, 0)) {
    const auto t = static_cast<long long>(v.toDouble());
    tm fields{};
    ASSERT_NE(xgmtime(&t, &fields), nullptr);
    char week[4];
    std::strftime(week, sizeof week, "%V", &fields);
    ASSERT_EQ(v.DayOfWeek(), fields.tm_wday + 1) << FieldsOf(v);
    ASSERT_EQ(v.DayOfYear(), fields.tm_yday + 1);
    ASSERT_EQ(v.WeekOfYear(), fields.tm_yday / 7 + 1);
    ASSERT_EQ(v.WeekOfYearISO8601(), std::atoi(week)) << FieldsOf(v);
  }
  // Kept: the first days of 1999 ask the invalid 1998-12-31; from 2067 the weekday turns.
  for (int day = 1; day <= 3; ++day)
    EXPECT_EQ(LqDateTime(1999, 1, day, 0, 0, 0, 0, 0).WeekOfYearISO8601(), 5);
  EXPECT_EQ(LqDateTime(2067, 1, 19, 3, 14, 7, 0, 0).DayOfWeek(), 4);
  EXPECT_EQ(LqDateTime(2067, 1, 21, 0, 0, 0, 0, 0).DayOfWeek(), -4);
}

TEST(DateTimeConversion, DoubleRuleTellsUnixSecondsFromOleDates) {
  EXPECT_EQ(FieldsOf(LqDateTime(36526.5)), "2000-01-01 12:00:00.000000");
  EXPECT_EQ(FieldsOf(LqDateTime(36161.0)), "1999-01-01 00:00:00.000000");
  EXPECT_EQ(FieldsOf(LqDateTime(946684800.25)), "2000-01-01 00:00:00.250000");
  // 946684799, the last Unix second of 1999, is read as an OLE date and lies past 9999.
  for (double value : {std::nan(""), HUGE_VAL, -HUGE_VAL, 32535216000.0, 946684799.0})
    EXPECT_FALSE(LqDateTime(value).Valid()) << value;
  // From 2^31 on the fraction is unusable, yet the value stays normalised.
  const LqDateTime late(2147483648.5);
  EXPECT_TRUE(late.Valid() && static_cast<uint32_t>(late.USecondInS()) < 1000000u);

  const LqDateTime v(2020, 1, 1, 0, 0, 0, 500, 250);
  EXPECT_EQ(v.toDouble(), 1577836800.5);
  EXPECT_DOUBLE_EQ(v.toDoubleUSec(), 1577836800.50025);
  EXPECT_EQ(LqDateTime(2038, 1, 19, 3, 14, 8, 0, 0).EpochSeconds(), INT32_MIN);
}

TEST(DateTimeConversion, TmAndGmtime) {
  tm fields{};
  fields.tm_year = 120, fields.tm_mon = 11, fields.tm_mday = 31, fields.tm_hour = 23;
  EXPECT_EQ(FieldsOf(LqDateTime(fields)), "2020-12-31 23:00:00.000000");
  fields.tm_year = INT32_MAX;
  EXPECT_FALSE(LqDateTime(fields).Valid());
  const long long last = 32535215999LL, beyond = last + 1, negative = -1;
  EXPECT_EQ(xgmtime(&last, &fields), &fields);
  EXPECT_EQ(fields.tm_year, 1100);
  EXPECT_TRUE(!xgmtime(&beyond, &fields) && !xgmtime(&negative, &fields) &&
              !xgmtime(nullptr, &fields) && !xgmtime(&last, nullptr));
}

TEST(DateTimeConversion, OleDatesBothWays) {
  const LqOleDateTime ole = LqDateTime(2020, 12, 31, 18, 0, 0, 0, 0).OleDateTime();
  EXPECT_EQ(ole.m_dt, 44196.75);
  EXPECT_EQ(FieldsOf(LqDateTime(ole)), "2020-12-31 18:00:00.000000");
  EXPECT_EQ(LqDateTime(2100, 2, 29, 0, 0, 0, 0, 0).OleDateTime().GetStatus(),
            LqOleDateTime::invalid);
  LqOleDateTime flagged(44196.75);
  flagged.m_status = LqOleDateTime::invalid;
  EXPECT_FALSE(LqDateTime(flagged).Valid());
  // Before day 0 the fraction still counts forward; times round to the second, half up.
  EXPECT_EQ(LqOleDateTime(1899, 12, 29, 6, 0, 0).m_dt, -1.25);
  EXPECT_EQ(LqOleDateTime(-1.25).GetDay() * 100 + LqOleDateTime(-1.25).GetHour(), 2906);
  EXPECT_EQ(LqOleDateTime(2.0 + 0.5 / 86400).GetSecond(), 1);
  EXPECT_EQ(LqOleDateTime(0.99999999).GetDay(), 31);
  EXPECT_EQ(LqOleDateTime(-657434.0).GetYear(), 100);
  EXPECT_EQ(LqOleDateTime(2958465.99999999).GetYear(), -1);  // rounds into the year 10000
  EXPECT_EQ(LqOleDateTime(std::nan("")).GetMonth(), -1);
  EXPECT_EQ(LqOleDateTime(2020, 2, 30, 0, 0, 0).GetStatus(), LqOleDateTime::invalid);
}

TEST(DateTimeConversion, PackedDates) {
  const double seconds = 1577836800.0 + 86400 * 45 + 3723;  // 2020-02-15 01:02:03
  const double packed = LqDateTime::toStdDate(seconds, 2000);
  EXPECT_EQ(packed, 20u << 26 | 2u << 22 | 15u << 17 | 1u << 12 | 2u << 6 | 3u);
  EXPECT_EQ(LqDateTime::fromStdDate(packed, 2000), seconds);
  EXPECT_EQ(static_cast<uint32_t>(LqDateTime::toStdDate(seconds, 1950)) >> 26, 70u & 63u);
  EXPECT_EQ(static_cast<uint32_t>(LqDateTime::toStdDate(-5.0, INT32_MIN)) >> 26,
            (2135u + 0x80000000u) & 63u);
  EXPECT_EQ(LqDateTime::fromStdDate(std::nan(""), INT32_MAX), LqDateTime().toDouble());
}

}  // namespace
