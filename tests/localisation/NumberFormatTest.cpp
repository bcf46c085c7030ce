#include <gtest/gtest.h>
#include <lqtools/localisation/NumberFormat.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>

#include "localisation/LocaleFixture.h"

namespace {

using NumberFormat = LocaleRecords;

std::string Narrow(const LqString& text) {
  return std::string(text, static_cast<std::size_t>(text.Length()));
}

TEST_F(NumberFormat, FormatIntegerPadsToAMinimumWidthInBothWidths) {
  struct Case {
    int value, width;
    const char* text;
  };
  const Case cases[] = {
      {7, 3, "007"}, {12345, 2, "12345"},           {0, 0, "0"},
      {10, 2, "10"}, {1000000000, 0, "1000000000"}, {2147483647, 12, "002147483647"},
      {-5, 0, "+"}};
  for (const Case& c : cases) {
    LqString narrow;
    EXPECT_EQ(FormatInteger(narrow, c.value, c.width), static_cast<int>(strlen(c.text)));
    EXPECT_EQ(Narrow(narrow), c.text) << c.value;
    LqWString wide;
    FormatInteger(wide, c.value, c.width);
    EXPECT_EQ(::Narrow(wide), c.text) << c.value;
    EXPECT_EQ(wide.Spare(), 0u);
  }
  LqString untouched("keep");
  EXPECT_EQ(FormatInteger(untouched, 5, -1), -1);
  EXPECT_EQ(Narrow(untouched), "keep");
}

TEST_F(NumberFormat, FormatNumberRoundsGroupsAndTrims) {
  struct Case {
    double value;
    int decimals;
    bool thousands;
    const char* text;
  };
  const Case cases[] = {
      {1234567.891, 2, true, "1,234,567.89"},
      {999.5, 0, true, "1,000"},
      {1234.5, -3, false, "1234.5"},
      {1000, -3, false, "1000"},
      {0.125, 2, false, "0.13"},
      {-0.001, 2, false, "0.00"},
      {-2.5, 0, false, "-3"},
      {123, 0, true, "123"},
      {12, 1, true, "12.0"},
      {-1234.5, 1, true, "-1,234.5"},
      {0.1234567, 7, false, "0.1234577"},  // past the sixth decimal the digit repeats
      {1, 15, false, "1.0000000000"},      // at most 10 decimals
      {1e13, 2, false, "*.**"},
      {-1e13, 0, false, "*"},
      {-1e12, 0, false, "-*"},
      {999999999999.4, 0, true, "999,999,999,999"},
      {std::numeric_limits<double>::infinity(), 1, false, "*.*"},
      {std::nan(""), 2, false, "*.**"},
      {0, -20, false, "0"},
  };
  for (const Case& c : cases) {
    LqString narrow;
    EXPECT_EQ(FormatNumber(narrow, c.value, c.decimals, c.thousands),
              static_cast<int>(strlen(c.text)));
    EXPECT_EQ(Narrow(narrow), c.text) << c.value << " " << c.decimals;
    LqWString wide;
    FormatNumber(wide, c.value, c.decimals, c.thousands);
    EXPECT_EQ(::Narrow(wide), c.text) << c.value << " " << c.decimals;
  }
}

TEST_F(NumberFormat, FormatNumberUsesWholeSeparatorsOfEachRecord) {
  UseSeparators(u"\u00A0", u"<>");
  LqWString wide;
  FormatNumber(wide, 1234567.5, 1, true);
  EXPECT_TRUE(wide == u"1\u00A0234\u00A0567<>5");
  LqString narrow;
  FormatNumber(narrow, 1234567.5, 1, true);
  EXPECT_EQ(Narrow(narrow),
            "1\xA0"
            "234\xA0"
            "567<>5");
  FormatNumber(wide, 1e14, 2, false);
  EXPECT_TRUE(wide == u"*<>**");
  FormatNumber(wide, 100, -2, false);
  EXPECT_TRUE(wide == u"100");
}

TEST_F(NumberFormat, RoundingFormRoundsNegativeHalvesTowardsZero) {
  EXPECT_EQ(FormatNumber(2.5, 0), 3.0);
  EXPECT_EQ(FormatNumber(-2.5, 0), -2.0);
  EXPECT_EQ(FormatNumber(-2.7, 0), -3.0);
  EXPECT_EQ(FormatNumber(-3.0, 0), -3.0);
  EXPECT_EQ(FormatNumber(1.55, -1), 1.55);
  EXPECT_DOUBLE_EQ(FormatNumber(1.2345, 2), 1.23);
}

TEST_F(NumberFormat, FormatDoubleLaysOutFixedWidths) {
  struct Case {
    double value;
    int integers, decimals;
    bool thousands, left, right;
    const char* text;
  };
  const Case cases[] = {
      {1234.5, 6, 2, true, true, true, "001,234.50"},
      {1234.5, 3, 2, false, false, false, "***.**"},
      {1234.5, 0, -1, false, false, false, "1234.5"},
      {-12.5, 5, 1, false, true, false, "-00012.5"},
      {1.5, 3, 2, false, false, false, "1.5"},
      {2, 3, 2, false, false, false, "2"},
      {2, 3, 2, false, false, true, "2.00"},
      {-1234567, 0, 0, true, false, false, "-1,234,567"},
      {12, 2, 0, false, false, false, "12"},
      {123, 2, 0, false, false, false, "**"},
      {std::numeric_limits<double>::infinity(), 3, 2, false, false, false, "#"},
      {-std::numeric_limits<double>::infinity(), 3, 2, false, false, false, "#"},
  };
  for (const Case& c : cases) {
    LqWString text;
    FormatDouble(text, c.value, c.integers, c.decimals, c.thousands, c.left, c.right);
    EXPECT_EQ(::Narrow(text), c.text) << c.value;
  }
}

TEST_F(NumberFormat, ParseFormatReadsTheShortLayouts) {
  struct Case {
    const char16_t* format;
    int integers, decimals;
    bool left, right;
  };
  const Case cases[] = {{u"05.02", 5, 2, true, true},   {u"5.", 5, -1, false, false},
                        {u".2", -1, 2, false, false},   {u"abc", -1, 3, false, false},
                        {u"5.789", 5, 3, false, false}, {u"09.7", 9, 7, true, false},
                        {u"z.1", 12, 1, false, false},  {u"12.3", 2, 3, false, false},
                        {u"3.0z", 3, 9, false, true},   {u"3.-", 3, -3, false, false}};
  for (const Case& c : cases) {
    int integers = 0, decimals = 0;
    bool left = true, right = true;
    ParseFormat(LqWString(c.format), integers, decimals, left, right);
    EXPECT_EQ(integers, c.integers) << ::Narrow(c.format);
    EXPECT_EQ(decimals, c.decimals) << ::Narrow(c.format);
    EXPECT_EQ(left, c.left) << ::Narrow(c.format);
    EXPECT_EQ(right, c.right) << ::Narrow(c.format);
  }
}

TEST_F(NumberFormat, UnformatNumberDropsEveryUnitOfTheThousandsSeparator) {
  LqWString result(u"old");
  EXPECT_TRUE(UnformatNumber(u"1,234.50", result) == u"1234.50");
  EXPECT_EQ(result.Flags() & LqWString::GrowLargeBlock, LqWString::GrowSmallBlock);
  UseSeparators(u"'.", u",");
  EXPECT_TRUE(UnformatNumber(u"1'234.5,0", result) == u"12345,0");
  UseSeparators(u"", u".");
  EXPECT_TRUE(UnformatNumber(u"1,2", result) == u"1,2");
  EXPECT_TRUE(UnformatNumber(nullptr, result) == u"");
}

TEST_F(NumberFormat, CountDecimalsCountsSignificantPlacesOfSix) {
  EXPECT_EQ(countDecimals(1.5), 1);
  EXPECT_EQ(countDecimals(2.0), 0);
  EXPECT_EQ(countDecimals(0.1234567), 6);
  EXPECT_EQ(countDecimals(-0.05), 2);
  EXPECT_EQ(countDecimals(1e300), 0);
  EXPECT_EQ(countDecimals(std::nan("")), 0);
}

TEST_F(NumberFormat, XfecvtRepeatsTheLastCharacterForEachRemoval) {
  char buffer[kXfecvtBufferSize];
  int position = -1, sign = -1;
  EXPECT_STREQ(xfecvt(buffer, 123.456789, 12, &position, &sign), "123456789900");
  EXPECT_EQ(position, 3);
  EXPECT_EQ(sign, 0);
  EXPECT_STREQ(xfecvt(buffer, -0.123456, 4, &position, &sign), "12345666");
  EXPECT_EQ(position, 0);
  EXPECT_EQ(sign, 1);
  xfecvt(buffer, std::nan(""), 0, &position, &sign);
  EXPECT_EQ(sign, 1);
  EXPECT_EQ(xfecvt(nullptr, 1.0, 12, &position, &sign), nullptr);

  char small[5];
  EXPECT_STREQ(xfecvt(small, sizeof small, 123.456789, 12, &position, &sign), "1234");
  EXPECT_EQ(position, 3);
  char large[kXfecvtBufferSize];
  xfecvt(large, sizeof large, DBL_MAX, 12, &position, &sign);
  EXPECT_EQ(position, 309);
}

TEST_F(NumberFormat, FormattersStayInBoundsForExtremeValuesAndWidths) {
  const double values[] = {
      DBL_MAX, -DBL_MAX, DBL_MIN, 4.9e-324,     -4.9e-324,
      1e308,   0.0,      -0.0,    std::nan(""), std::numeric_limits<double>::infinity(),
      5e11,    -5e-7};
  const int counts[] = {INT32_MIN, -1000, -11, -1, 0, 1, 9, 10, 11, 2000, INT32_MAX};
  for (double value : values) {
    for (int count : counts) {
      LqWString wide;
      FormatNumber(wide, value, count, true);
      EXPECT_LE(wide.Length(), 400) << value << " " << count;
      LqString narrow;
      FormatNumber(narrow, value, count, true);
      FormatDouble(wide, value, count, count, true, true, true);
      EXPECT_LE(wide.Length(), 3000) << value << " " << count;
      FormatDouble(wide, value, 3, count, false, false, false);
    }
  }
}

TEST_F(NumberFormat, IsValidNumberChecksTheLocaleForm) {
  struct Case {
    const char* text;
    int maxDecimals;
    bool valid;
  };
  const Case cases[] = {{"1,234.5", 2, true},    {"1,23", -1, false},       {"1,234,56", -1, false},
                        {"1.2.3", -1, false},    {"1.234,5", -1, false},    {"-5", -1, true},
                        {"5-", -1, false},       {"1.234", 2, false},       {"", 0, true},
                        {"12345,678", -1, true}, {"1,2345", -1, false},     {"1a", -1, false},
                        {".5", 1, true},         {"1,234,567.25", 2, true}, {"--1", -1, false}};
  for (const Case& c : cases) {
    EXPECT_EQ(IsValidNumber(c.text, c.maxDecimals), c.valid) << c.text;
    const LqWString wide(c.text);
    EXPECT_EQ(IsValidNumber(static_cast<const char16_t*>(wide), c.maxDecimals), c.valid) << c.text;
  }
}

TEST_F(NumberFormat, IsValidNumberFollowsSeparatorsOfSeveralUnits) {
  UseSeparators(u"'.", u"::");
  EXPECT_TRUE(IsValidNumber(u"1'.234::56", -1));
  EXPECT_FALSE(IsValidNumber(u"1'.23::5", -1));
  EXPECT_FALSE(IsValidNumber(u"1::2::3", -1));
  EXPECT_TRUE(IsValidNumber("1'.234::5", 1));
  UseSeparators(u".", u".");  // the thousands meaning wins
  EXPECT_TRUE(IsValidNumber(u"1.234", -1));
  EXPECT_FALSE(IsValidNumber(u"1.5", -1));
}

}  // namespace
