#include <gtest/gtest.h>
#include <lqtools/datetime/DateTimeText.h>

#include <exception>
#include <random>
#include <string>

#include "datetime/DateTimeTestHelpers.h"

namespace {

struct TextCase {
  const char* text;
  const char* fields;
};

TEST(DateTimeText, TextConstructorTriesTheOldFormThenIso) {
  const TextCase cases[] = {{"31/12/2020 23:59:58", "2020-12-31 23:59:58.000000"},
                            {"2020-12-31T23:59:58.123Zjunk", "2020-12-31 23:59:58.000000"},
                            {"31/02/2020 00:00:00", "2020-03-02 00:00:00.000000"},
                            {"2020-12-31T23:59:58+01:00", "invalid"},
                            {"", "invalid"},
                            {"29/02/2100 00:00:00", "invalid"},
                            {"1e999/nan/inf -inf:0x10:1e-999", "invalid"}};
  for (const TextCase& c : cases)
    EXPECT_EQ(FieldsOf(LqDateTime(Widen(c.text))), c.fields) << c.text;
}

// Formats 1 and 2 are read back in GetDateTimeFormatsAndRoundTrips.
TEST(DateTimeText, FixedPlaceSetDateTimeReadsTimeFieldsAfterColons) {
  const struct {
    TextCase c;
    int format;
  } cases[] = {{{"2020-12-31 23:59:58", "2020-12-31 23:59:58.000000"}, 0},
               {{"2020-12-31 12:34:56.789", "2020-12-31 12:34:56.000000"}, 0},
               {{"2020-12-31 12:34:56:7", "2020-12-31 12:34:56.007000"}, 0},
               {{"2020-12-31X12:34:56", "2020-12-31 00:00:00.000000"}, 0},
               {{"2020-12-31 23:59:58", "invalid"}, 3},
               {{"2020-12-31 23:59:5", "2001-02-03 04:05:06.007008"}, 0},  // short: untouched
               {{nullptr, "2001-02-03 04:05:06.007008"}, 0}};
  for (const auto& c : cases) {
    LqDateTime v(2001, 2, 3, 4, 5, 6, 7, 8);
    v.SetDateTime(c.c.text ? Widen(c.c.text).c_str() : nullptr, c.format, u'-');
    EXPECT_EQ(FieldsOf(v), c.c.fields) << (c.c.text ? c.c.text : "null") << " " << c.format;
  }
}

TEST(DateTimeText, GetDateTimeFormatsAndRoundTrips) {
  const LqDateTime v(2020, 12, 31, 23, 59, 58, 123, 456);
  EXPECT_EQ(Narrow(v.GetDateTime(0, false, u"/", u":")), "12/31/2020 23:59:58");
  EXPECT_EQ(Narrow(v.GetDateTime(1, true, u"/", u"-")), "31/12/2020 23-59-58-123-456");
  EXPECT_EQ(Narrow(v.GetDateTime(2, false, u".", u":")), "2020.12.31T23:59:58");
  EXPECT_EQ(Narrow(v.GetDateTime(7, false, nullptr, nullptr)), "235958");
  for (int format : {1, 2}) {
    LqDateTime back;
    back.SetDateTime(v.GetDateTime(format, true, u"-", u":"), format, 0);
    EXPECT_EQ(back, v) << format;
  }
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
  EXPECT_THROW(LqDateTime().ToCompleteString(), std::exception);
  EXPECT_THROW(LqDateTime().ToCompleteWString(), std::exception);
}

TEST(DateTimeText, DateTime2StringTwinsChooseDifferently) {
  struct Case {
    int ms, us;
    bool forceMs, forceUs;
    const char *narrow, *wide;
  } cases[] = {{0, 0, false, false, "31122020235958", "31122020235958"},
               {250, 0, false, false, "31122020235958250", "31122020235958"},
               {0, 1, false, false, "31122020235958000001", "31122020235958"},
               {0, 0, true, false, "31122020235958000", "31122020235958000"},
               {0, 0, false, true, "31122020235958000000", "31122020235958000000"},
               {250, 1, true, false, "31122020235958250001", "31122020235958250"}};
  // The outputs carry over from row to row: each call starts from the empty text.
  LqString narrow("stale");
  LqWString wide(u"stale");
  for (const Case& c : cases) {
    const LqDateTime v(2020, 12, 31, 23, 59, 58, c.ms, c.us);
    EXPECT_TRUE(DateTime2String(narrow, v, c.forceMs, c.forceUs) &&
                DateTime2String(wide, v, c.forceMs, c.forceUs));
    EXPECT_STREQ(narrow, c.narrow);
    EXPECT_EQ(Narrow(wide), c.wide);
  }
  EXPECT_FALSE(DateTime2String(narrow, LqDateTime(), true, true) ||
               DateTime2String(wide, LqDateTime(), true, true));
  EXPECT_TRUE(narrow.IsEmpty() && wide.IsEmpty());
  // The output is handed back with the small block policy, also when it was large before.
  LqString large(LqString::GrowLargeBlock);
  DateTime2String(large, LqDateTime(2020, 1, 1, 0, 0, 0, 0, 0), false, false);
  EXPECT_EQ(large.Flags() & 33u, 32u);
}

TEST(DateTimeText, String2DateTimeIsStrict) {
  const TextCase cases[] = {{"31122020235958", "2020-12-31 23:59:58.000000"},
                            {"31122020235958123", "2020-12-31 23:59:58.123000"},
                            {"29022100000000", "2100-02-29 00:00:00.000000"},
                            {"29022101000000", "invalid"},
                            {"31122020235958123456", "invalid"},
                            {"311220202359581", "invalid"},
                            {"01012020240000", "invalid"},
                            {"01012020000000:00", "invalid"},                   // ':' - '0' is 10
                            {"010120200/0000", "2019-12-31 23:00:00.000000"}};  // kept: hour -1
  for (const TextCase& c : cases) {
    LqDateTime narrow(2001, 1, 1, 0, 0, 0, 0, 0), wide = narrow;
    EXPECT_EQ(String2DateTime(narrow, c.text), std::string(c.fields) != "invalid") << c.text;
    String2DateTime(wide, Widen(c.text).c_str());
    EXPECT_EQ(FieldsOf(narrow), c.fields) << c.text;
    EXPECT_EQ(wide, narrow) << c.text;
  }
  LqDateTime v(2001, 1, 1, 0, 0, 0, 0, 0);
  EXPECT_FALSE(String2DateTime(v, static_cast<const char*>(nullptr)) || v.Valid());
}

TEST(DateTimeText, ParseDateTimeFillsWhatIsMissing) {
  const struct {
    TextCase c;
    bool end;
  } cases[] = {{{"31122020", "2020-12-31 23:59:59.000000"}, true},
               {{"31122020", "2020-12-31 00:00:00.000000"}, false},
               {{"3112202012", "2020-12-31 12:59:59.000000"}, true},
               {{"311220201234567", "2020-12-31 12:34:56.007000"}, false},
               {{"31122020123456789123", "2020-12-31 12:34:56.789000"}, false},
               {{"", "invalid"}, true}};
  for (const auto& c : cases) {
    LqDateTime narrow, wide;
    ParseDateTime(LqString(c.c.text), narrow, c.end);
    ParseDateTime(LqWString(Widen(c.c.text).c_str()), wide, c.end);
    EXPECT_EQ(FieldsOf(narrow), c.c.fields) << c.c.text;
    EXPECT_EQ(FieldsOf(wide), c.c.fields) << c.c.text;
  }
}

TEST(DateTimeText, Rfc822HeaderDate) {
  const LqDateTime v(2020, 12, 31, 23, 59, 58, 0, 0);
  EXPECT_EQ(Narrow(DateTime2RFC822(v, false)), "Thu 31 Dec 20 23:59:58 GMT");
  EXPECT_EQ(Narrow(DateTime2RFC822(v, true)), "Thu 31 Dec 2020 23:59:58 GMT");
  // From 2067 on the weekday can leave 1 to 7; the day name is then empty.
  EXPECT_EQ(Narrow(DateTime2RFC822(LqDateTime(2100, 1, 1, 0, 0, 0, 0, 0), true)),
            " 01 Jan 2100 00:00:00 GMT");
}

// Random texts through every reader: the sanitizers watch for reads past the text.
TEST(DateTimeText, ReadersTakeAnyText) {
  std::mt19937 random(1999);
  const char16_t alphabet[] = u"0123456789/:-TZ .e+xn";
  for (int round = 0; round < 20000; ++round) {
    std::u16string text(random() % 32, u'0');
    for (char16_t& c : text)
      c = random() % 8 == 0 ? static_cast<char16_t>(random()) : alphabet[random() % 21];
    LqDateTime v(text);
    for (int format = -1; format <= 3; ++format)
      v.SetDateTime(text.c_str(), format, 0);
    String2DateTime(v, text.c_str());
    ParseDateTime(LqWString(text.c_str()), v, round % 2 == 0);
    ParseDateTime(LqString(Narrow(text).c_str()), v, round % 2 == 0);
  }
}

}  // namespace
