#include <gtest/gtest.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqDateTimeRange.h>

#include <cstdint>
#include <utility>

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
      {0, 0, 0, 0, 1000, 0, 1, 0},
      {0, 0, 0, 0, 1001, 0, 1, 1000},
      {0, 0, 0, 0, -1500, 0, -2, 500000},
      {0, 0, 0, 0, 0, -2000000, -2, 0},
      {0, 0, 0, 0, 5000000, 3, 5000, 3},
      {0, 0, 0, 0, 0, INT32_MIN, -2148, 516352},
      {0, 0, 0, INT32_MAX, 0, 1000000, INT32_MIN, 0},
      {INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, -2145428373, 163351}};
  for (const Case& c : cases)
    EXPECT_EQ(Stored(LqDateTimeSpan(c.d, c.h, c.m, c.s, c.ms, c.us)),
              std::make_pair(c.seconds, c.micro))
        << c.d << " " << c.h << " " << c.m << " " << c.s << " " << c.ms << " " << c.us;
}

TEST(DateTimeSpan, PartsOfNegativeSpansAreNegativeOrZero) {
  const LqDateTimeSpan minusOneMicro(0, 0, 0, 0, 0, -1);
  EXPECT_EQ(minusOneMicro.Seconds(), -1);
  EXPECT_EQ(minusOneMicro.USeconds(), -1);
  EXPECT_EQ(LqDateTimeSpan(0, 0, 0, 0, -1500, 0).TotalMSeconds(), -1500);
  EXPECT_EQ(LqDateTimeSpan(0, 0, 0, -86399, 0, 0).TotalDays(), 0);
  EXPECT_EQ(LqDateTimeSpan(0, 0, 0, -86400, 0, 0).TotalDays(), -1);
  // -93784.005006 seconds: the seconds field is its floor, the parts follow from it.
  const LqDateTimeSpan s(-1, -2, -3, -4, -5, -6);
  EXPECT_EQ(std::make_pair(s.Days(), s.Hours()), std::make_pair(-1, -2));
  EXPECT_EQ(std::make_pair(s.Minutes(), s.Seconds()), std::make_pair(-3, -5));
  EXPECT_EQ(std::make_pair(s.MSeconds(), s.USeconds()), std::make_pair(-6, -6));
  EXPECT_EQ(std::make_pair(s.TotalHours(), s.TotalMinutes()), std::make_pair(-26, -1563));
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
  EXPECT_GE(oneAndHalf, oneAndHalf);
}

TEST(DateTimeArithmetic, SpansMoveDateTimesWithOneCarry) {
  const LqDateTime newYear(2020, 1, 1, 0, 0, 0, 0, 0), late(2020, 1, 1, 0, 0, 0, 0, 999999);
  EXPECT_EQ(FieldsOf(newYear + LqDateTimeSpan(0, 0, 0, 0, 0, -1)), "2019-12-31 23:59:59.999999");
  EXPECT_EQ(FieldsOf(newYear - LqDateTimeSpan(0, 0, 0, 0, 0, 1)), "2019-12-31 23:59:59.999999");
  EXPECT_EQ(FieldsOf(late + LqDateTimeSpan(0, 0, 0, 0, 0, 1)), "2020-01-01 00:00:01.000000");
  EXPECT_EQ(newYear - late, LqDateTimeSpan(0, 0, 0, 0, 0, -999999));
  LqDateTime v = newYear;
  v += LqDateTimeSpan(366, 0, 0, 0, 0, 0);
  EXPECT_EQ(FieldsOf(v), "2021-01-01 00:00:00.000000");
  v -= LqDateTimeSpan(366, 0, 0, 0, 0, 0);
  EXPECT_EQ(v, newYear);
  // Kept: no range test, and the seconds of a difference wrap in the signed field.
  EXPECT_TRUE((LqDateTime() + LqDateTimeSpan(0, 0, 0, 1, 0, 0)).Valid());
  EXPECT_FALSE((LqDateTime(1999, 1, 1, 0, 0, 0, 0, 0) - LqDateTimeSpan(0, 0, 0, 1, 0, 0)).Valid());
  const LqDateTimeSpan century =
      LqDateTime(2100, 1, 1, 0, 0, 0, 0, 0) - LqDateTime(1999, 1, 1, 0, 0, 0, 0, 0);
  EXPECT_EQ(century.TotalSeconds(), -1107671296);
  EXPECT_EQ(century.TotalDays(), -12820);
}

TEST(DateTimeArithmetic, ComparisonIsUnsignedAndCountsMicrosecondsAlsoWhenInvalid) {
  const LqDateTime a(2020, 1, 1, 0, 0, 0, 0, 1), b(2020, 1, 1, 0, 0, 0, 0, 2);
  EXPECT_LT(a, b);
  EXPECT_GT(LqDateTime(), b);  // the invalid state sorts last
  LqDateTime x = a, y = b;
  x.Invalidate();
  y.Invalidate();
  EXPECT_NE(x, y);
  y = x;
  EXPECT_EQ(x, y);
}

TEST(DateTimeRange, HalfOpenContainmentAndTimeOfDay) {
  const LqDateTimeRange range(LqDateTime(2020, 1, 1, 8, 0, 0, 0, 5),
                              LqDateTime(2020, 1, 3, 17, 0, 0, 0, 7));
  EXPECT_TRUE(range.Valid());
  EXPECT_FALSE(LqDateTimeRange(LqDateTime(), *range.Last()).Valid());
  EXPECT_TRUE(range.Contains(*range.First()));
  EXPECT_FALSE(range.Contains(*range.Last()));
  struct Case {
    int h, ms, us;
    bool inside;
  } cases[] = {{7, 999, 999, false}, {8, 0, 4, false},   {8, 999, 4, false}, {8, 0, 5, true},
               {12, 0, 0, true},     {17, 999, 7, true}, {17, 0, 8, false},  {18, 0, 0, false}};
  for (const Case& c : cases)  // the milliseconds take no part in a tie
    EXPECT_EQ(range.ContainsTimeOfDay(LqDateTime(2031, 6, 6, c.h, 0, 0, c.ms, c.us)), c.inside)
        << c.h << " " << c.ms << " " << c.us;
  const LqDateTimeRange overnight(LqDateTime(2020, 1, 1, 22, 0, 0, 0, 0),
                                  LqDateTime(2020, 1, 2, 6, 0, 0, 0, 0));
  EXPECT_FALSE(overnight.ContainsTimeOfDay(LqDateTime(2020, 1, 1, 23, 0, 0, 0, 0)));
}

}  // namespace
