#include <gtest/gtest.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/detail/OleDate.h>

#include <cmath>
#include <cstdint>
#include <ctime>
#include <limits>

#include "datetime/DateTimeTestHelpers.h"

namespace {

constexpr uint32_t kUnixOffset = 915148800u;

// Walks day by day with the value's own rule (every fourth year a leap year) and checks that
// fields and seconds agree both ways, and that toDouble (the Gregorian timegm of the fields)
// matches the value's own count up to 2100-02-29 and is one day behind from 2100-03-01 on.
TEST(DateTimeCalendar, EveryDayAgreesWithTheFourYearRuleAndDepartsFromGregorianIn2100) {
  static const int kLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int year = 1999, month = 1, day = 1;
  for (uint32_t n = 0; n <= 0xFFFFFFFEu / 86400u; ++n) {
    const LqDateTime v(year, month, day, 0, 0, 0, 0, 0);
    ASSERT_EQ(v.Seconds(), n * 86400u) << year << "-" << month << "-" << day;
    ASSERT_EQ(v.Year(), year);
    ASSERT_EQ(v.Month(), month);
    ASSERT_EQ(v.Day(), day);
    const bool afterLeapDay2100 = year > 2100 || (year == 2100 && month > 2);
    ASSERT_EQ(v.toDouble() - (static_cast<double>(n) * 86400 + kUnixOffset),
              afterLeapDay2100 ? -86400.0 : 0.0);
    const int length = month == 2 && year % 4 == 0 ? 29 : kLengths[month - 1];
    if (++day > length) {
      day = 1;
      if (++month > 12) {
        month = 1;
        ++year;
      }
    }
  }
  EXPECT_EQ(FieldsOf(LqDateTime(2100, 2, 29, 0, 0, 0, 0, 0)), "2100-02-29 00:00:00.000000");
  EXPECT_FALSE(LqDateTime(2100, 2, 29, 0, 0, 0, 0, 0).isValidDate());
  EXPECT_EQ(LqDateTime(2100, 3, 1, 0, 0, 0, 0, 0) - LqDateTime(2100, 2, 29, 0, 0, 0, 0, 0),
            LqDateTimeSpan(1, 0, 0, 0, 0, 0));
}

TEST(DateTimeValue, SetDateTimeRangesAndRolling) {
  struct Case {
    int y, mo, d, h, mi, s, ms, us;
    const char* fields;  // null: invalid
  } cases[] = {
      {1999, 1, 1, 0, 0, 0, 0, 0, "1999-01-01 00:00:00.000000"},
      {1998, 12, 31, 0, 0, 0, 0, 0, nullptr},
      {2136, 1, 1, 0, 0, 0, 0, 0, nullptr},
      {2020, 0, 1, 0, 0, 0, 0, 0, nullptr},
      {2020, 13, 1, 0, 0, 0, 0, 0, nullptr},
      {2020, 1, 0, 0, 0, 0, 0, 0, nullptr},
      {2020, 1, 32, 0, 0, 0, 0, 0, nullptr},
      {2001, 2, 31, 0, 0, 0, 0, 0, "2001-03-03 00:00:00.000000"},
      {2000, 2, 31, 0, 0, 0, 0, 0, "2000-03-02 00:00:00.000000"},
      {2020, 1, 1, 25, 0, 0, 0, 0, "2020-01-02 01:00:00.000000"},
      {2020, 1, 1, 0, -1, 0, 0, 0, "2019-12-31 23:59:00.000000"},
      {2135, 12, 31, 0, 0, 0, 0, 0, "1999-11-24 17:31:44.000000"},
      {2020, 1, 1, 0, 0, 0, 0, -1, "2019-12-31 23:59:59.999999"},
      {2020, 1, 1, 0, 0, 0, 1500, 0, "2020-01-01 00:00:01.500000"},
      {2020, 1, 1, 0, 0, 0, -1000, 0, "2019-12-31 23:59:59.000000"},
      {2020, 1, 1, 0, 0, 0, 0, 2500000, "2020-01-01 00:00:02.500000"},
      {2020, 1, 1, 0, 0, 0, 0, INT32_MIN, "2019-12-31 23:24:12.516352"},
      {2020, 1, 1, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX,
       "2088-01-19 02:48:54.482647"},
  };
  for (const Case& c : cases) {
    const LqDateTime v(c.y, c.mo, c.d, c.h, c.mi, c.s, c.ms, c.us);
    if (c.fields) {
      EXPECT_TRUE(v.Valid());
      EXPECT_EQ(FieldsOf(v), c.fields) << c.y << "-" << c.mo << "-" << c.d;
    } else {
      EXPECT_FALSE(v.Valid()) << c.y << "-" << c.mo << "-" << c.d;
    }
  }
}

TEST(DateTimeValue, InvalidStateReadsAsLateIn2135AndKeepsItsMicroseconds) {
  LqDateTime v(2020, 5, 6, 7, 8, 9, 10, 11);
  v.Invalidate();
  EXPECT_FALSE(v.Valid());
  EXPECT_FALSE(v.isValidDate());
  EXPECT_EQ(FieldsOf(v), "2135-02-06 06:28:15.010011");
  EXPECT_FALSE(LqDateTime().Valid());
  EXPECT_EQ(LqDateTime().USecondInS(), 0);
  EXPECT_NE(v, LqDateTime());
  v.SetDateTime(1900, 1, 1, 0, 0, 0, 0, 0);
  EXPECT_EQ(v.USecondInS(), 10011);
}

TEST(DateTimeValue, AccessorsAndEpochSeconds) {
  const LqDateTime v(2000, 2, 29, 13, 14, 15, 678, 901);
  EXPECT_EQ(LqDateTime(2000, 2, 29, 0, 0, 0, 0, 0).Seconds(), 36633600u);
  EXPECT_EQ(v.MSecond(), 678);
  EXPECT_EQ(v.USecond(), 901);
  EXPECT_EQ(v.USecondInS(), 678901);
  EXPECT_EQ(LqDateTime(1999, 1, 1, 0, 0, 0, 0, 0).EpochSeconds(), 915148800);
  EXPECT_EQ(LqDateTime(2038, 1, 19, 3, 14, 7, 0, 0).EpochSeconds(), INT32_MAX);
  EXPECT_EQ(LqDateTime(2038, 1, 19, 3, 14, 8, 0, 0).EpochSeconds(), INT32_MIN);
  LqDateTime t(2020, 5, 6, 7, 8, 9, 0, 0);
  t.SetTime(10, 11, 12, 0, 0);
  EXPECT_EQ(FieldsOf(t), "1999-01-01 10:11:12.000000");
  t.SetDate(2024, 2, 29);
  EXPECT_EQ(FieldsOf(t), "2024-02-29 00:00:00.000000");
}

TEST(DateTimeCalendar, ValidityIsGregorianWithItsOwnYearRange) {
  const LqDateTime v;
  EXPECT_TRUE(v.isValidDate(1, 1, 1971, 0, 0, 0));
  EXPECT_FALSE(v.isValidDate(31, 12, 1970, 23, 59, 59));
  EXPECT_TRUE(v.isValidDate(31, 12, 9999, 23, 59, 59));
  EXPECT_FALSE(v.isValidDate(1, 1, 10000, 0, 0, 0));
  EXPECT_FALSE(v.isValidDate(1, 1, 2020, 0, 0, 60));
  EXPECT_FALSE(v.isValidDate(1, 1, 2020, 0, 60, 0));
  EXPECT_FALSE(v.isValidDate(1, 1, 2020, 24, 0, 0));
  EXPECT_FALSE(v.isValidDate(1, 1, 2020, -1, 0, 0));
  EXPECT_FALSE(v.isValidDate(31, 4, 2020, 0, 0, 0));
  EXPECT_TRUE(v.isValidDate(29, 2, 2000, 0, 0, 0));
  EXPECT_FALSE(v.isValidDate(29, 2, 2100, 0, 0, 0));
  EXPECT_FALSE(v.isValidDate(30, 2, 2024, 0, 0, 0));
  EXPECT_EQ(LqDateTime::DaysInMonth(2, 2100), 29);
  EXPECT_EQ(LqDateTime::DaysInMonth(2, 2019), 28);
  EXPECT_EQ(LqDateTime::DaysInMonth(4, 2019), 30);
  EXPECT_EQ(LqDateTime(2024, 2, 10, 0, 0, 0, 0, 0).DaysInMonth(), 29);
}

// Weekdays and ISO weeks against the C library for every day whose day count is positive and
// whose calendar is still Gregorian.
TEST(DateTimeCalendar, WeekdaysAndIsoWeeksAgreeWithTheCLibrary) {
  for (LqDateTime v(1999, 1, 4, 12, 0, 0, 0, 0); v.Year() < 2067;
       v += LqDateTimeSpan(1, 0, 0, 0, 0, 0)) {
    const long long t = static_cast<long long>(v.toDouble());
    tm fields{};
    ASSERT_NE(xgmtime(&t, &fields), nullptr);
    char week[4];
    std::strftime(week, sizeof week, "%V", &fields);
    ASSERT_EQ(v.DayOfWeek(), fields.tm_wday + 1) << FieldsOf(v);
    ASSERT_EQ(v.DayOfWeekISO8601(), (fields.tm_wday + 6) % 7 + 1);
    ASSERT_EQ(v.DayOfYear(), fields.tm_yday + 1);
    ASSERT_EQ(v.WeekOfYear(), fields.tm_yday / 7 + 1);
    ASSERT_EQ(v.WeekOfYearISO8601(), std::atoi(week)) << FieldsOf(v);
  }
  EXPECT_EQ(LqDateTime(2021, 1, 3, 0, 0, 0, 0, 0).WeekOfYearISO8601(), 53);
  EXPECT_EQ(LqDateTime(2021, 1, 4, 0, 0, 0, 0, 0).WeekOfYearISO8601(), 1);
  EXPECT_EQ(LqDateTime(2020, 12, 31, 0, 0, 0, 0, 0).WeekOfYearISO8601(), 53);
  // Kept behaviour: the first days of 1999 ask the invalid 1998-12-31.
  for (int day = 1; day <= 3; ++day)
    EXPECT_EQ(LqDateTime(1999, 1, day, 0, 0, 0, 0, 0).WeekOfYearISO8601(), 5);
  EXPECT_EQ(LqDateTime().WeekOfYearISO8601(), 5);
}

TEST(DateTimeCalendar, WeekdayTurnsNegativeFrom2067) {
  EXPECT_EQ(LqDateTime(2067, 1, 19, 3, 14, 7, 0, 0).DayOfWeek(), 4);  // a Wednesday
  for (LqDateTime v(2067, 1, 19, 3, 14, 8, 0, 0); v.Valid() && v.Year() < 2135;
       v += LqDateTimeSpan(3, 0, 0, 0, 0, 0)) {
    ASSERT_GE(v.DayOfWeek(), -5);
    ASSERT_LE(v.DayOfWeek(), 6);
  }
  EXPECT_EQ(LqDateTime(2067, 1, 19, 3, 14, 8, 0, 0).DayOfWeek(), 1);
}

TEST(DateTimeConversion, DoubleRuleTellsUnixSecondsFromOleDates) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  struct Case {
    double value;
    const char* fields;  // null: invalid
  } cases[] = {
      {36526.5, "2000-01-01 12:00:00.000000"},
      {946684800.25, "2000-01-01 00:00:00.250000"},
      {1577836800.5, "2020-01-01 00:00:00.500000"},
      {946684799.0, nullptr},  // Unix seconds of 1999, read as an OLE date
      {36161.0, "1999-01-01 00:00:00.000000"},
      {36160.0, nullptr},  // 1998-12-31
      {-1.0, nullptr},
      {nan, nullptr},
      {inf, nullptr},
      {-inf, nullptr},
      {1e300, nullptr},
      {32535215999.0, nullptr},  // 3000-12-31: gmtime takes it, the value does not
      {32535216000.0, nullptr},
  };
  for (const Case& c : cases) {
    LqDateTime v(c.value);
    if (c.fields) {
      EXPECT_EQ(FieldsOf(v), c.fields) << c.value;
    } else {
      EXPECT_FALSE(v.Valid()) << c.value;
    }
  }
  // From 2^31 on the fraction is unusable, yet the value stays normalised.
  const LqDateTime late(2147483648.5);
  EXPECT_TRUE(late.Valid());
  EXPECT_GE(late.USecondInS(), 0);
  EXPECT_LT(late.USecondInS(), 1000000);
}

TEST(DateTimeConversion, ToDoubleAndTm) {
  const LqDateTime v(2020, 1, 1, 0, 0, 0, 500, 250);
  EXPECT_EQ(v.toDouble(), 1577836800.5);
  EXPECT_DOUBLE_EQ(v.toDoubleUSec(), 1577836800.50025);
  tm fields{};
  fields.tm_year = 120;
  fields.tm_mon = 11;
  fields.tm_mday = 31;
  fields.tm_hour = 23;
  fields.tm_min = 59;
  fields.tm_sec = 58;
  fields.tm_isdst = 1;
  EXPECT_EQ(FieldsOf(LqDateTime(fields)), "2020-12-31 23:59:58.000000");
  fields.tm_year = INT32_MAX;
  EXPECT_FALSE(LqDateTime(fields).Valid());
  fields.tm_year = 120;
  fields.tm_mon = INT32_MAX;
  EXPECT_FALSE(LqDateTime(fields).Valid());

  tm out{};
  const long long zero = 0, last = 32535215999LL, beyond = 32535216000LL, negative = -1;
  EXPECT_EQ(xgmtime(&zero, &out), &out);
  EXPECT_EQ(xgmtime(&last, &out), &out);
  EXPECT_EQ(out.tm_year, 1100);
  EXPECT_EQ(xgmtime(&beyond, &out), nullptr);
  EXPECT_EQ(xgmtime(&negative, &out), nullptr);
  EXPECT_EQ(xgmtime(nullptr, &out), nullptr);
  EXPECT_EQ(xgmtime(&zero, nullptr), nullptr);
}

TEST(DateTimeConversion, OleDatesBothWays) {
  const LqOleDateTime ole = LqDateTime(2020, 12, 31, 18, 0, 0, 0, 0).OleDateTime();
  EXPECT_EQ(ole.GetStatus(), LqOleDateTime::valid);
  EXPECT_EQ(ole.m_dt, 44196.75);
  EXPECT_EQ(FieldsOf(LqDateTime(ole)), "2020-12-31 18:00:00.000000");
  EXPECT_EQ(LqDateTime(2100, 2, 29, 0, 0, 0, 0, 0).OleDateTime().GetStatus(),
            LqOleDateTime::invalid);
  LqOleDateTime bad(2020, 1, 1, 0, 0, 0);
  bad.m_status = LqOleDateTime::invalid;
  EXPECT_FALSE(LqDateTime(bad).Valid());
  EXPECT_FALSE(LqDateTime(LqOleDateTime(2020, 2, 30, 0, 0, 0)).Valid());
}

TEST(OleDate, FieldConversionsRoundAndRespectTheRange) {
  struct Case {
    double date;
    int y, mo, d, h, mi, s;  // y == 0: fails
  } cases[] = {
      {0.0, 1899, 12, 30, 0, 0, 0},
      {-1.25, 1899, 12, 29, 6, 0, 0},
      {-0.5, 1899, 12, 30, 12, 0, 0},
      {2.0 + 0.5 / 86400, 1900, 1, 1, 0, 0, 1},  // a half second rounds up
      {1.0 - 0.4 / 86400, 1899, 12, 31, 0, 0, 0},
      {0.99999999, 1899, 12, 31, 0, 0, 0},  // carries into the next day
      {-657434.0, 100, 1, 1, 0, 0, 0},
      {2958465.9999, 9999, 12, 31, 23, 59, 51},
      {2958465.99999999, 0, 0, 0, 0, 0, 0},  // rounds into the year 10000
      {-657435.0, 0, 0, 0, 0, 0, 0},
      {std::nan(""), 0, 0, 0, 0, 0, 0},
  };
  for (const Case& c : cases) {
    lq::detail::SystemTime st;
    ASSERT_EQ(lq::detail::VariantTimeToSystemTime(c.date, st), c.y != 0) << c.date;
    if (c.y == 0) continue;
    EXPECT_EQ(st.year * 10000 + st.month * 100 + st.day, c.y * 10000 + c.mo * 100 + c.d) << c.date;
    EXPECT_EQ(st.hour * 3600 + st.minute * 60 + st.second, c.h * 3600 + c.mi * 60 + c.s) << c.date;
  }
  lq::detail::SystemTime st;
  st.year = 1899, st.month = 12, st.day = 29, st.hour = 6;
  double date = 0;
  ASSERT_TRUE(lq::detail::SystemTimeToVariantTime(st, date));
  EXPECT_EQ(date, -1.25);
  for (int* field : {&st.year, &st.month, &st.day, &st.hour, &st.minute, &st.second}) {
    const int kept = *field;
    *field = field == &st.year ? 10000 : 99;
    EXPECT_FALSE(lq::detail::SystemTimeToVariantTime(st, date));
    *field = -1;
    EXPECT_FALSE(lq::detail::SystemTimeToVariantTime(st, date));
    *field = kept;
  }
}

TEST(DateTimeConversion, PackedDates) {
  const double packed = LqDateTime::toStdDate(1577836800.0 + 86400 * 45 + 3723, 2000);
  const uint32_t bits = static_cast<uint32_t>(packed);
  EXPECT_EQ(bits,
            20u << 26 | 2u << 22 | 15u << 17 | 1u << 12 | 2u << 6 | 3u);  // 2020-02-15 01:02:03
  EXPECT_EQ(LqDateTime::fromStdDate(packed, 2000), 1577836800.0 + 86400 * 45 + 3723);
  // A year difference over 63 loses its top bits.
  EXPECT_EQ(static_cast<uint32_t>(LqDateTime::toStdDate(1577836800.0, 1950)) >> 26, 70u & 63u);
  EXPECT_EQ(LqDateTime::fromStdDate(std::nan(""), INT32_MAX),
            LqDateTime().toDouble());  // nothing usable: the invalid value's time
  EXPECT_EQ(static_cast<uint32_t>(LqDateTime::toStdDate(-5.0, INT32_MIN)) >> 26,
            (2135u + 0x80000000u) & 63u);
}

}  // namespace
