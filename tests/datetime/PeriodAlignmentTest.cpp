#include <gtest/gtest.h>
#include <lqtools/datetime/PeriodAlignment.h>

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

}  // namespace
