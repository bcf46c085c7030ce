#include <gtest/gtest.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqDateTimeRange.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "datetime/DateTimeTestHelpers.h"

namespace {

// The stored pair (seconds, microseconds) of a span.
std::pair<long long, long long> Stored(const LqDateTimeSpan& s) {
  return {s.TotalSeconds(), s.TotalUSeconds() - s.TotalSeconds() * 1000000LL};
}

TEST(DateTimeSpan, ConstructionNormalisesWithFloorSemantics) {
  struct Case {
    int d, h, m, s, ms, us;
    long long seconds, micro;
  } cases[] = {
      {1, 2, 3, 4, 0, 0, 93784, 0},
      {0, 0, 0, 0, 0, -1, -1, 999999},
      {0, 0, 0, 0, 0, -2000000, -2, 0},
      {0, 0, 0, 0, 5000000, 3, 5000, 3},  // milliseconds over 1000 are reduced before scaling
      {0, 0, 0, 0, 0, INT32_MIN, -2148, 516352},
      {INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, -2145428373, 163351}};
  for (const Case& c : cases)
    EXPECT_EQ(Stored(LqDateTimeSpan(c.d, c.h, c.m, c.s, c.ms, c.us)),
              std::make_pair(c.seconds, c.micro))
        << c.d << " " << c.h << " " << c.m << " " << c.s << " " << c.ms << " " << c.us;
}

// -93784.005006 seconds are stored as (-93785, 994994); each part truncates its total toward
// zero, so the seconds part is -5 and the milliseconds part -6.
TEST(DateTimeSpan, PartsOfNegativeSpansAreNegativeOrZero) {
  const LqDateTimeSpan s(-1, -2, -3, -4, -5, -6);
  EXPECT_EQ(
      (std::vector<long long>{s.Days(), s.Hours(), s.Minutes(), s.Seconds(), s.MSeconds(),
                              s.USeconds(), s.TotalHours(), s.TotalMinutes(), s.TotalMSeconds()}),
      (std::vector<long long>{-1, -2, -3, -5, -6, -6, -26, -1563, -93784006}));
}

TEST(DateTimeSpan, NegationAbsAndOrder) {
  const LqDateTimeSpan oneAndHalf(0, 0, 0, 0, 1500, 0);
  EXPECT_EQ(Stored(-oneAndHalf), std::make_pair(-2LL, 500000LL));
  EXPECT_EQ((-oneAndHalf).Abs(), oneAndHalf);
  EXPECT_EQ(oneAndHalf.Abs(), oneAndHalf);
  const LqDateTimeSpan most(0, 0, 0, INT32_MIN, 0, 0);  // wraps to itself
  EXPECT_EQ(-most, most);
  EXPECT_EQ(most.Abs(), most);
  EXPECT_LT(-oneAndHalf, LqDateTimeSpan());
  EXPECT_LT(LqDateTimeSpan(0, 0, 0, 1, 0, 0), oneAndHalf);
}

TEST(DateTimeArithmetic, SpansMoveDateTimesWithOneCarry) {
  const LqDateTime epoch(1999, 1, 1, 0, 0, 0, 0, 0), newYear(2020, 1, 1, 0, 0, 0, 0, 0);
  const LqDateTime late(2020, 1, 1, 0, 0, 0, 0, 999999);
  EXPECT_EQ(FieldsOf(newYear + LqDateTimeSpan(0, 0, 0, 0, 0, -1)), "2019-12-31 23:59:59.999999");
  EXPECT_EQ(FieldsOf(newYear - LqDateTimeSpan(0, 0, 0, 0, 0, 1)), "2019-12-31 23:59:59.999999");
  EXPECT_EQ(FieldsOf(late + LqDateTimeSpan(0, 0, 0, 0, 0, 1)), "2020-01-01 00:00:01.000000");
  EXPECT_EQ(newYear - late, LqDateTimeSpan(0, 0, 0, 0, 0, -999999));
  LqDateTime v = newYear;
  EXPECT_EQ(FieldsOf(v += LqDateTimeSpan(366, 0, 0, 0, 0, 0)), "2021-01-01 00:00:00.000000");
  EXPECT_EQ(v -= LqDateTimeSpan(366, 0, 0, 0, 0, 0), newYear);
  // Kept: no range test, and the seconds of a difference wrap in the signed field.
  EXPECT_TRUE((LqDateTime() + LqDateTimeSpan(0, 0, 0, 1, 0, 0)).Valid());
  EXPECT_FALSE((epoch - LqDateTimeSpan(0, 0, 0, 1, 0, 0)).Valid());
  EXPECT_EQ((LqDateTime(2100, 1, 1, 0, 0, 0, 0, 0) - epoch).TotalSeconds(), -1107671296);
}

TEST(DateTimeArithmetic, ComparisonIsUnsignedAndCountsMicrosecondsAlsoWhenInvalid) {
  LqDateTime a(2020, 1, 1, 0, 0, 0, 0, 1), b(2020, 1, 1, 0, 0, 0, 0, 2);
  EXPECT_LT(a, b);
  EXPECT_GT(LqDateTime(), b);  // the invalid state sorts last
  a.Invalidate();
  b.Invalidate();
  EXPECT_NE(a, b);
}

TEST(DateTimeRange, HalfOpenContainmentAndTimeOfDay) {
  const LqDateTime first(2020, 1, 1, 8, 0, 0, 0, 5), last(2020, 1, 3, 17, 0, 0, 0, 7);
  const LqDateTimeRange range(first, last);
  EXPECT_TRUE(range.Contains(first) && !range.Contains(last));
  EXPECT_FALSE(LqDateTimeRange(LqDateTime(), last).Valid());
  struct Case {
    int h, ms, us;
    bool inside;
  } cases[] = {{7, 999, 999, false}, {8, 0, 4, false},   {8, 999, 4, false}, {8, 0, 5, true},
               {12, 0, 0, true},     {17, 999, 7, true}, {17, 0, 8, false},  {18, 0, 0, false}};
  for (const Case& c : cases)  // the milliseconds take no part in a tie
    EXPECT_EQ(range.ContainsTimeOfDay(LqDateTime(2031, 6, 6, c.h, 0, 0, c.ms, c.us)), c.inside)
        << c.h << " " << c.ms << " " << c.us;
  // Reversed, the range wraps past midnight and holds no time of day.
  EXPECT_FALSE(
      LqDateTimeRange(last, first).ContainsTimeOfDay(LqDateTime(2031, 6, 6, 20, 0, 0, 0, 0)));
}

}  // namespace
