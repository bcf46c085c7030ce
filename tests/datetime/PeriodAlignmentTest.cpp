#include <gtest/gtest.h>
#include <lqtools/datetime/LqTimeZone.h>
#include <lqtools/datetime/PeriodAlignment.h>

#include <lqtools/localisation/LqLocaleInformation.h>
#include <stdlib.h>
#include <time.h>

#include <string>

#include "datetime/DateTimeTestHelpers.h"

namespace {

TEST(NearestDateTime, GivesAReferenceToTheNearerArgumentAndTiesToTheEarlier) {
  const LqDateTime ten(2021, 3, 15, 10, 0, 0, 0, 0);
  const LqDateTime eleven(2021, 3, 15, 11, 0, 0, 0, 0);
  const LqDateTime half(2021, 3, 15, 10, 30, 0, 0, 0);
  EXPECT_EQ(&NearestDateTime(half, ten, eleven), &ten);
  EXPECT_EQ(&NearestDateTime(half, eleven, ten), &ten);
  const LqDateTime late(2021, 3, 15, 10, 30, 0, 0, 1);
  EXPECT_EQ(&NearestDateTime(late, ten, eleven), &eleven);
  const LqDateTime before(2021, 3, 15, 9, 0, 0, 0, 0);
  const LqDateTime after(2021, 3, 15, 12, 0, 0, 0, 0);
  EXPECT_EQ(&NearestDateTime(before, eleven, ten), &ten);
  EXPECT_EQ(&NearestDateTime(after, eleven, ten), &eleven);
  const LqDateTime same(ten);
  EXPECT_EQ(&NearestDateTime(before, same, ten), &same);  // of equal values the first is earlier
  EXPECT_EQ(&NearestDateTime(after, same, ten), &ten);
}

TEST(AdjustToSamplePeriod, FloorsToTheGridForgivingAMillionthOfAPeriod) {
  EXPECT_EQ(AdjustToSamplePeriod(899.9999999, 1.0), 900.0);
  EXPECT_EQ(AdjustToSamplePeriod(899.5, 1.0), 899.0);
  EXPECT_EQ(AdjustToSamplePeriod(1000.0, 300.0), 900.0);
  EXPECT_EQ(AdjustToSamplePeriod(1199.9999, 300.0), 1200.0);
}

TEST(AdjustToSamplePeriod, ThirtyOneMeansTheFirstOfTheMonthWithoutZone) {
  const LqDateTime value(2021, 3, 15, 10, 7, 30, 500, 0);
  const LqDateTime first(2021, 3, 1, 0, 0, 0, 0, 0);
  EXPECT_EQ(AdjustToSamplePeriod(value.toDouble(), 31.0), first.toDouble());
}

TEST(DaysOfMonth, FollowsTheGregorianRule) {
  struct Case {
    int year, month, days;
  };
  const Case cases[] = {{2021, 2, 28}, {2024, 2, 29},  {2100, 2, 28},  {2000, 2, 29},
                        {2021, 4, 30}, {2021, 11, 30}, {2021, 12, 31}, {2021, 7, 31}};
  for (const Case& c : cases)
    EXPECT_EQ(DaysOfMonth(LqDateTime(c.year, c.month, 1, 0, 0, 0, 0, 0)), c.days)
        << c.year << "-" << c.month;
}

TEST(DCeil, RoundsAwayFromZero) {
  EXPECT_DOUBLE_EQ(DCeil(1.01, 1), 1.1);
  EXPECT_DOUBLE_EQ(DCeil(-1.01, 1), -1.1);
  EXPECT_EQ(DCeil(2.5, -1), 3.0);
  EXPECT_EQ(DCeil(-2.5, -1), -3.0);
  EXPECT_EQ(DCeil(2.0, 0), 2.0);
  EXPECT_DOUBLE_EQ(DCeil(1.231, 2), 1.24);
}

// Calendar periods are cut in local time. Without a loaded LqTimeZone the conversions follow the
// system's zone, which the tests set through TZ.
class PeriodAlignment : public ::testing::Test {
 protected:
  PeriodAlignment() : m_firstDay(localeInformationWide.firstDayOfWeek) {
    if (const char* old = getenv("TZ")) m_oldZone = old;
    UseZone("UTC0");
    localeInformationWide.SetFirstDayOfWeek(2);  // Monday
  }
  ~PeriodAlignment() override {
    if (m_oldZone.empty()) {
      unsetenv("TZ");
    } else {
      setenv("TZ", m_oldZone.c_str(), 1);
    }
    tzset();
    localeInformationWide.SetFirstDayOfWeek(m_firstDay);
  }
  static void UseZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }
  static LqDateTimeSpan Seconds(int seconds) { return LqDateTimeSpan(0, 0, 0, seconds, 0, 0); }
  static LqDateTimeSpan Days(int days) { return LqDateTimeSpan(days, 0, 0, 0, 0, 0); }
  static std::string Start(LqDateTime value, const LqDateTimeSpan& period,
                           const LqDateTime* anchor = nullptr) {
    value.AdjustToPeriod(period, anchor);
    return FieldsOf(value);
  }
  static std::string End(LqDateTime value, const LqDateTimeSpan& period) {
    value.AdjustToEndPeriod(period);
    return FieldsOf(value);
  }

 private:
  int m_firstDay;
  std::string m_oldZone;
};

TEST_F(PeriodAlignment, SpanLengthsChooseTheKindOfPeriod) {
  const LqDateTime value(2021, 3, 15, 10, 7, 30, 500, 0);  // a Monday
  struct Case {
    LqDateTimeSpan period;
    const char* start;
  };
  const Case cases[] = {
      {Days(31), "2021-03-01 00:00:00.000000"},
      {Days(30), "2021-03-06 00:00:00.000000"},  // fixed seconds from the 1999 epoch
      {Seconds(2678401), "2021-02-25 00:04:21.000000"},
      {Days(7), "2021-03-15 00:00:00.000000"},
      {Days(365), "2021-01-01 00:00:00.000000"},
      {Days(730), "2021-01-01 00:00:00.000000"},
      {Days(91), "2021-01-01 00:00:00.000000"},
      {Days(200), "2021-01-01 00:00:00.000000"},
      {Seconds(86400), "2021-03-15 00:00:00.000000"},
      {Seconds(172799), "2021-03-15 00:00:00.000000"},
      {Seconds(172800), "2021-03-14 00:00:00.000000"},
      {Seconds(900), "2021-03-15 10:00:00.000000"},
      {Seconds(0), "2021-03-15 10:07:30.500000"},
      {Seconds(-900), "2021-03-15 10:07:30.500000"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Start(value, c.period), c.start) << c.period.TotalSeconds();
}

TEST_F(PeriodAlignment, FixedSecondsFollowAnAnchorAtOrBeforeTheValue) {
  const LqDateTime value(2021, 3, 15, 10, 7, 30, 500, 0);
  const LqDateTime early(2021, 3, 15, 10, 5, 0, 0, 0);
  const LqDateTime late(2021, 3, 15, 10, 20, 0, 0, 0);
  LqDateTime invalid;
  EXPECT_EQ(Start(value, Seconds(900), &early), "2021-03-15 10:05:00.000000");
  EXPECT_EQ(Start(value, Seconds(900), &late), "2021-03-15 10:00:00.000000");
  EXPECT_EQ(Start(value, Seconds(900), &invalid), "2021-03-15 10:00:00.000000");
}

TEST_F(PeriodAlignment, WeekStartsOnTheLocaleFirstDay) {
  const LqDateTime wednesday(2021, 3, 17, 10, 0, 0, 0, 0);
  EXPECT_EQ(Start(wednesday, Days(7)), "2021-03-15 00:00:00.000000");
  localeInformationWide.SetFirstDayOfWeek(1);  // Sunday
  EXPECT_EQ(Start(wednesday, Days(7)), "2021-03-14 00:00:00.000000");
  localeInformationWide.SetFirstDayOfWeek(0);  // never filled: Monday
  EXPECT_EQ(Start(wednesday, Days(7)), "2021-03-15 00:00:00.000000");
}

TEST_F(PeriodAlignment, EndOfPeriodKeepsItsUnevenBoundaryTests) {
  struct Case {
    LqDateTime value;
    LqDateTimeSpan period;
    const char* end;
  };
  const Case cases[] = {
      {{2021, 3, 15, 10, 15, 0, 250, 0}, Seconds(900), "2021-03-15 10:15:00.250000"},
      {{2021, 3, 15, 10, 15, 1, 0, 0}, Seconds(900), "2021-03-15 10:30:00.000000"},
      {{2021, 12, 15, 8, 0, 0, 0, 0}, Days(31), "2022-01-01 00:00:00.000000"},
      {{2021, 3, 1, 0, 0, 0, 0, 0}, Days(31), "2021-03-01 00:00:00.000000"},
      {{2021, 3, 1, 0, 0, 0, 500, 0}, Days(31), "2021-04-01 00:00:00.000000"},
      {{2021, 3, 1, 0, 0, 0, 0, 7}, Days(31), "2021-03-01 00:00:00.000007"},  // below the ms
      {{2021, 4, 1, 0, 0, 0, 0, 0}, Days(91), "2021-07-01 00:00:00.000000"},
      {{2021, 3, 1, 0, 0, 0, 0, 0}, Days(91), "2021-03-01 00:00:00.000000"},
      {{2021, 3, 1, 0, 0, 1, 0, 0}, Days(91), "2021-04-01 00:00:00.000000"},
      {{2021, 11, 5, 0, 0, 1, 0, 0}, Days(91), "2022-01-01 00:00:00.000000"},
      {{2021, 1, 1, 0, 0, 0, 0, 0}, Days(365), "2021-01-01 00:00:00.000000"},
      {{2021, 1, 1, 0, 0, 0, 1, 0}, Days(365), "2022-01-01 00:00:00.000000"},
      {{2021, 3, 15, 0, 0, 0, 500, 0}, Days(1), "2021-03-15 00:00:00.500000"},
      {{2021, 3, 15, 0, 0, 0, 0, 1}, Days(1), "2021-03-16 00:00:00.000000"},
      {{2021, 3, 15, 0, 0, 0, 0, 0}, Days(7), "2021-03-15 00:00:00.000000"},  // a Monday
      {{2021, 3, 17, 9, 0, 0, 0, 0}, Days(7), "2021-03-21 00:00:00.000000"},  // its Sunday
      {{2021, 3, 21, 9, 0, 0, 0, 0}, Days(7), "2021-03-21 00:00:00.000000"},  // before the value
  };
  for (const Case& c : cases)
    EXPECT_EQ(End(c.value, c.period), c.end) << FieldsOf(c.value);
}

TEST_F(PeriodAlignment, CalendarCutsAreMadeInLocalTime) {
  UseZone("<+01>-1");
  const LqDateTime value(2021, 1, 1, 23, 30, 0, 0, 0);
  EXPECT_EQ(Start(value, Days(1)), "2021-01-01 23:00:00.000000");
  EXPECT_EQ(End(value, Days(1)), "2021-01-02 23:00:00.000000");
  EXPECT_EQ(Start(value, Days(31)), "2020-12-31 23:00:00.000000");
  EXPECT_EQ(Start(value, Seconds(3600)), "2021-01-01 23:00:00.000000");  // UTC grid
}

TEST_F(PeriodAlignment, LoadedZoneDecidesTheLocalCut) {
  LqTimeZone::Get().Set(LqWString(u"Europe/Paris"));
  if (!LqTimeZone::Get().IsValid()) GTEST_SKIP() << "no zoneinfo/Europe/Paris beside the program";
  const LqDateTime winter(2021, 1, 1, 23, 30, 0, 0, 0);
  const LqDateTime summer(2021, 7, 1, 22, 30, 0, 0, 0);
  EXPECT_EQ(Start(winter, Days(1)), "2021-01-01 23:00:00.000000");
  EXPECT_EQ(Start(summer, Days(1)), "2021-07-01 22:00:00.000000");  // local 07-02 00:30
  EXPECT_EQ(End(summer, Days(31)), "2021-07-31 22:00:00.000000");
  LqTimeZone::Get().Reset();
}

}  // namespace
