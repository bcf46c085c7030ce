#include <gtest/gtest.h>
#include <lqtools/datetime/DateTimeText.h>

#include <exception>
#include <random>
#include <string>

#include "datetime/DateTimeTestHelpers.h"

namespace {

const char* const kInvalid = "invalid";

std::string Describe(const LqDateTime& v) { return v.Valid() ? FieldsOf(v) : kInvalid; }

TEST(DateTimeText, TextConstructorTriesTheOldFormThenIso) {
  struct Case {
    const char16_t* text;
    const char* fields;
  } cases[] = {
      {u"31/12/2020 23:59:58", "2020-12-31 23:59:58.000000"},
      {u"2020-12-31T23:59:58Z", "2020-12-31 23:59:58.000000"},
      {u"2020-12-31T23:59:58.123Z", "2020-12-31 23:59:58.000000"},
      {u"2020-12-31T23:59:58Zjunk", "2020-12-31 23:59:58.000000"},
      {u"31/12/2020 23:59:58.5", "2020-12-31 23:59:58.000000"},
      {u"31/02/2020 00:00:00", "2020-03-02 00:00:00.000000"},  // rolled, and then valid
      {u"1/1/2000 0:0:", "2000-01-01 00:00:00.000000"},
      {u"2020-12-31T23:59:58", kInvalid},
      {u"2020-12-31T23:59:58+01:00", kInvalid},
      {u"2020-12-31", kInvalid},
      {u"", kInvalid},
      {u"ab/cd/efgh ij:kl:mn", kInvalid},
      {u"29/02/2100 00:00:00", kInvalid},  // stored, but no valid date, and no ISO text
      {u"1e999/nan/inf -inf:0x10:1e-999", kInvalid},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Describe(LqDateTime(std::u16string(c.text))), c.fields) << Narrow(c.text);
}

TEST(DateTimeText, FixedPlaceSetDateTimeReadsTimeFieldsAfterColons) {
  struct Case {
    const char16_t* text;
    int format;
    const char* fields;
  } cases[] = {
      {u"2020-12-31 23:59:58", 0, "2020-12-31 23:59:58.000000"},
      {u"31-12-2020 23:59:58", 1, "2020-12-31 23:59:58.000000"},
      {u"2020/12/31T23:59:58", 2, "2020-12-31 23:59:58.000000"},
      {u"2020-12-31 12:34:56:789:012", 0, "2020-12-31 12:34:56.789012"},
      {u"2020-12-31 12:34:56.789", 0, "2020-12-31 12:34:56.000000"},
      {u"2020-12-31 12:34:56:7", 0, "2020-12-31 12:34:56.007000"},
      {u"2020-12-31 12:34:56:", 0, "2020-12-31 12:34:56.000000"},
      {u"2020-12-31X12:34:56", 0, "2020-12-31 00:00:00.000000"},  // no divider: midnight
      {u"2020-12-31 23:59:58", 3, kInvalid},
      {u"2020-12-31 23:59:58", -1, kInvalid},
  };
  for (const Case& c : cases) {
    LqDateTime v(2001, 1, 1, 0, 0, 0, 0, 0);
    v.SetDateTime(c.text, c.format, u'-');
    EXPECT_EQ(Describe(v), c.fields) << Narrow(c.text) << " " << c.format;
  }
  const LqDateTime before(2001, 2, 3, 4, 5, 6, 7, 8);
  LqDateTime v = before;
  v.SetDateTime(u"2020-12-31 23:59:5", 0, 0);
  EXPECT_EQ(v, before);
  v.SetDateTime(nullptr, 0, 0);
  EXPECT_EQ(v, before);
}

TEST(DateTimeText, GetDateTimeFormatsAndRoundTrips) {
  const LqDateTime v(2020, 12, 31, 23, 59, 58, 123, 456);
  struct Case {
    int format;
    bool fraction;
    const char16_t* text;
  } cases[] = {
      {0, false, u"12/31/2020 23:59:58"}, {1, false, u"31/12/2020 23:59:58"},
      {2, false, u"2020/12/31T23:59:58"}, {1, true, u"31/12/2020 23:59:58:123:456"},
      {7, true, u"23:59:58:123:456"},
  };
  for (const Case& c : cases) {
    const LqWString text = v.GetDateTime(c.format, c.fraction, u"/", u":");
    EXPECT_EQ(Narrow(static_cast<const char16_t*>(text)), Narrow(c.text));
  }
  for (int format : {1, 2}) {
    LqDateTime back;
    back.SetDateTime(v.GetDateTime(format, true, u"-", u":"), format, 0);
    EXPECT_EQ(back, v) << format;
  }
  EXPECT_EQ(Narrow(static_cast<const char16_t*>(v.GetDateTime(1, false, nullptr, nullptr))),
            "31122020 235958");
}

TEST(DateTimeText, IsoAndPlainWriters) {
  const LqDateTime v(2020, 12, 31, 23, 59, 58, 7, 0);
  EXPECT_EQ(v.ToString(), "2020-12-31T23:59:58Z");
  EXPECT_EQ(v.ToWString(), u"2020-12-31T23:59:58Z");
  EXPECT_EQ(v.ToCompleteString(), "2020-12-31T23:59:58.007Z");
  EXPECT_EQ(v.ToCompleteWString(), u"2020-12-31T23:59:58.007Z");
  EXPECT_EQ(v.ToPlainStringReverseDate(), "31122020235958");
  EXPECT_EQ(LqDateTime(v.ToCompleteWString()), LqDateTime(2020, 12, 31, 23, 59, 58, 0, 0));
  EXPECT_EQ(LqDateTime().ToString(), "2135-02-06T06:28:15Z");
  EXPECT_EQ(LqDateTime().ToPlainStringReverseDate(), "06022135062815");
  EXPECT_THROW(LqDateTime().ToCompleteString(), std::exception);
  EXPECT_THROW(LqDateTime().ToCompleteWString(), std::exception);
}

TEST(DateTimeText, DateTime2StringTwinsChooseDifferently) {
  struct Case {
    int ms, us;
    bool forceMs, forceUs;
    const char* narrow;
    const char* wide;
  } cases[] = {
      {0, 0, false, false, "31122020235958", "31122020235958"},
      {250, 0, false, false, "31122020235958250", "31122020235958"},
      {0, 1, false, false, "31122020235958000001", "31122020235958"},
      {0, 0, true, false, "31122020235958000", "31122020235958000"},
      {0, 0, false, true, "31122020235958000000", "31122020235958000000"},
      {250, 1, true, false, "31122020235958250001", "31122020235958250"},
  };
  for (const Case& c : cases) {
    const LqDateTime v(2020, 12, 31, 23, 59, 58, c.ms, c.us);
    LqString narrow("stale");
    LqWString wide(u"stale");
    EXPECT_TRUE(DateTime2String(narrow, v, c.forceMs, c.forceUs));
    EXPECT_TRUE(DateTime2String(wide, v, c.forceMs, c.forceUs));
    EXPECT_STREQ(narrow, c.narrow);
    EXPECT_EQ(Narrow(static_cast<const char16_t*>(wide)), c.wide);
    EXPECT_EQ(narrow.Flags() & 33u, static_cast<uint32_t>(LqString::GrowSmallBlock));
  }
  LqString narrow("stale");
  LqWString wide(u"stale");
  EXPECT_FALSE(DateTime2String(narrow, LqDateTime(), true, true));
  EXPECT_FALSE(DateTime2String(wide, LqDateTime(), true, true));
  EXPECT_TRUE(narrow.IsEmpty());
  EXPECT_TRUE(wide.IsEmpty());
}

TEST(DateTimeText, String2DateTimeIsStrict) {
  struct Case {
    const char* text;
    const char* fields;
  } cases[] = {
      {"31122020235958", "2020-12-31 23:59:58.000000"},
      {"31122020235958123", "2020-12-31 23:59:58.123000"},
      {"29022100000000", "2100-02-29 00:00:00.000000"},  // the value's own leap rule
      {"29022101000000", kInvalid},
      {"31122020235958123456", kInvalid},
      {"311220202359581", kInvalid},
      {"", kInvalid},
      {"31042020000000", kInvalid},
      {"01011998000000", kInvalid},
      {"01012020240000", kInvalid},
      {"01012020006000", kInvalid},
      {"01012020000060", kInvalid},
      {"01012020000000:00", kInvalid},                   // ':' - '0' is 10
      {"010120200/0000", "2019-12-31 23:00:00.000000"},  // kept: '/' gives hour -1
  };
  for (const Case& c : cases) {
    LqDateTime narrow(2001, 1, 1, 0, 0, 0, 0, 0), wide = narrow;
    const std::u16string wideText(c.text, c.text + std::char_traits<char>::length(c.text));
    EXPECT_EQ(String2DateTime(narrow, c.text), c.fields != kInvalid) << c.text;
    EXPECT_EQ(String2DateTime(wide, wideText.c_str()), c.fields != kInvalid) << c.text;
    EXPECT_EQ(Describe(narrow), c.fields) << c.text;
    EXPECT_EQ(wide, narrow) << c.text;
  }
  LqDateTime v(2001, 1, 1, 0, 0, 0, 0, 0);
  EXPECT_FALSE(String2DateTime(v, static_cast<const char*>(nullptr)));
  EXPECT_FALSE(v.Valid());
}

TEST(DateTimeText, ParseDateTimeFillsWhatIsMissing) {
  struct Case {
    const char* text;
    bool end;
    const char* fields;
  } cases[] = {
      {"31122020", true, "2020-12-31 23:59:59.000000"},
      {"31122020", false, "2020-12-31 00:00:00.000000"},
      {"3112202012", true, "2020-12-31 12:59:59.000000"},
      {"311220201234567", false, "2020-12-31 12:34:56.007000"},
      {"31122020123456789123", false, "2020-12-31 12:34:56.789000"},
      {"3112202012345", false, "2020-12-31 12:34:05.000000"},
      {"31022020", false, "2020-03-02 00:00:00.000000"},
      {"3112", false, kInvalid},
      {"", true, kInvalid},
      {"xx122020", false, kInvalid},
  };
  for (const Case& c : cases) {
    LqDateTime narrow, wide;
    const std::u16string wideText(c.text, c.text + std::char_traits<char>::length(c.text));
    ParseDateTime(LqString(c.text), narrow, c.end);
    ParseDateTime(LqWString(wideText.c_str()), wide, c.end);
    EXPECT_EQ(Describe(narrow), c.fields) << c.text;
    EXPECT_EQ(Describe(wide), c.fields) << c.text;
  }
}

TEST(DateTimeText, Rfc822HeaderDate) {
  const LqDateTime v(2020, 12, 31, 23, 59, 58, 0, 0);
  EXPECT_EQ(Narrow(static_cast<const char16_t*>(DateTime2RFC822(v, false))),
            "Thu 31 Dec 20 23:59:58 GMT");
  EXPECT_EQ(Narrow(static_cast<const char16_t*>(DateTime2RFC822(v, true))),
            "Thu 31 Dec 2020 23:59:58 GMT");
  EXPECT_EQ(Narrow(static_cast<const char16_t*>(
                DateTime2RFC822(LqDateTime(2005, 3, 6, 1, 2, 3, 0, 0), false))),
            "Sun 06 Mar 05 01:02:03 GMT");
  // From 2067 on the weekday can leave 1 to 7; the day name is then empty.
  EXPECT_EQ(Narrow(static_cast<const char16_t*>(
                DateTime2RFC822(LqDateTime(2100, 1, 1, 0, 0, 0, 0, 0), true))),
            " 01 Jan 2100 00:00:00 GMT");
}

// Random texts of every length through every reader: the sanitizers watch for reads past the
// text, the readers end in one of their documented results.
TEST(DateTimeText, ReadersTakeAnyText) {
  std::mt19937 random(1999);
  const char16_t alphabet[] = u"0123456789/:-TZ .e+xn";
  for (int round = 0; round < 20000; ++round) {
    std::u16string text(random() % 32, u'0');
    for (char16_t& c : text)
      c = random() % 8 == 0 ? static_cast<char16_t>(random() % 0x10000)
                            : alphabet[random() % (sizeof alphabet / 2 - 1)];
    std::string narrow(text.begin(), text.end());
    const LqDateTime parsed(text);
    EXPECT_TRUE(!parsed.Valid() || parsed.Year() >= 1999);
    LqDateTime v(2001, 1, 1, 0, 0, 0, 0, 0);
    for (int format = -1; format <= 3; ++format)
      v.SetDateTime(text.c_str(), format, 0);
    String2DateTime(v, text.c_str());
    String2DateTime(v, narrow.c_str());
    ParseDateTime(LqWString(text.c_str()), v, round % 2 == 0);
    ParseDateTime(LqString(narrow.c_str()), v, round % 2 == 0);
  }
}

}  // namespace
