#include <gtest/gtest.h>
#include <lqtools/text/HexText.h>
#include <lqtools/text/Identifiers.h>
#include <lqtools/text/NumberHelpers.h>
#include <lqtools/text/TextHelpers.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace {

TEST(HexText, WritesUpperCaseDigits) {
  char out[4] = {'#', '#', '#', '#'};
  BtoH(0xAF, out);
  EXPECT_EQ(std::string(out, 4), "AF##");
  char16_t wide[9];
  LtoH(wide, 0x1234ABCD);
  EXPECT_EQ(std::u16string(wide), u"1234ABCD");
  char narrow[9];
  LtoH(narrow, -1);
  EXPECT_STREQ(narrow, "FFFFFFFF");
}

TEST(HexText, ReadersTakeTheCountAndTrustTheirDigits) {
  EXPECT_EQ(HtoB(u"7F"), 127u);
  EXPECT_EQ(HtoB("7F"), 127u);
  EXPECT_EQ(HtoL(u"FF", 1), 15);
  EXPECT_EQ(HtoL("12345678", 8), 0x12345678);
  EXPECT_NE(HtoL("ff", 2), 255);  // lower case is no proper digit
  EXPECT_EQ(HtoL("ff", 2), 47 * 16 | 47);
  EXPECT_EQ(HtoL("FFFFFFFF", 8), -1);
  EXPECT_EQ(DtoL("1234", 2), 12);
  EXPECT_EQ(DtoL(u"12", 0), 0);
  EXPECT_EQ(DtoL("99999999999", 11), static_cast<int32_t>(static_cast<uint32_t>(99999999999ULL)));
  EXPECT_TRUE(IsHexB('f'));
  EXPECT_TRUE(IsHexB(u'F'));
  EXPECT_FALSE(IsHexB('g'));
  EXPECT_TRUE(IsValidHexa(u""));
  EXPECT_FALSE(IsValidHexa(u"12G"));
}

TEST(HexText, TagsKeepTheTopBitPositive) {
  EXPECT_EQ(HtoTAG("FFFFFFFFFFFFFFFF", 16), std::ldexp(1.0, 64));
  EXPECT_EQ(HtoTAG(u"10", 2), 16.0);
  char out[17];
  TAGtoH(out, 255.9);
  EXPECT_STREQ(out, "FF");
  TAGtoH(out, 0.0);
  EXPECT_STREQ(out, "0");
  TAGtoH(out, -1.0);
  EXPECT_STREQ(out, "FFFFFFFFFFFFFFFF");
  for (double impossible : {std::ldexp(1.0, 63), std::numeric_limits<double>::quiet_NaN(), 1e300}) {
    TAGtoH(out, impossible);
    EXPECT_STREQ(out, "8000000000000000");
  }
  char16_t wide[17];
  TAGtoH(wide, 11, 4096.0);
  EXPECT_EQ(std::u16string(wide), u"1000");
  EXPECT_THROW(TAGtoH(wide, 10, 1.0), const char*);
  EXPECT_THROW(TAGtoH(static_cast<char*>(nullptr), 1.0), StdRuntimeException);
}

TEST(TextHelpers, CountSubstringDoesNotOverlap) {
  EXPECT_EQ(CountSubstring("abcabc", "bc"), 2);
  EXPECT_EQ(CountSubstring("aaaa", "aa"), 2);
  EXPECT_EQ(CountSubstring("abc", ""), 0);
  EXPECT_EQ(CountSubstring("", "a"), 0);
}

TEST(TextHelpers, ReplaceTextMatchesOnUpperCasedCopies) {
  struct Case {
    const char16_t* text;
    const char16_t* search;
    const char16_t* replacement;
    bool matchCase;
    const char16_t* result;
  };
  const Case cases[] = {
      {u"aXbxc", u"x", u"-", false, u"a-b-c"},
      {u"aXbxc", u"x", u"-", true, u"aXb-c"},
      {u"aaa", u"a", u"aa", true, u"aaaaaa"},
      {u"abc", u"", u"-", true, u"abc"},
      {u"xax", u"x", u"", true, u"a"},
      {u"xx", u"x", u"", true, u""},
      {u"\u00e9t\u00c9", u"\u00e9", u"e", false, u"ete"},
      {u"\u00e9t\u00c9", u"\u00e9", u"e", true, u"et\u00c9"},
  };
  for (const Case& c : cases) {
    LqWString text(c.text);
    ReplaceTextW(text, c.search, c.replacement, c.matchCase);
    EXPECT_EQ(text, c.result);
  }
}

TEST(NumberHelpers, HalvesRoundTowardsZero) {
  const std::pair<double, int> cases[] = {{2.5, 2}, {2.51, 3}, {-2.51, -3}, {-2.5, -2},
                                          {0.5, 0}, {0.49, 0}, {-0.7, -1},  {7.0, 7}};
  for (const auto& [value, expected] : cases) {
    EXPECT_EQ(roundi(value), expected) << value;
    EXPECT_EQ(lq::round(value), expected) << value;
  }
  EXPECT_EQ(roundi(std::numeric_limits<double>::quiet_NaN()), INT32_MIN);
  EXPECT_EQ(roundi(1e12), INT32_MIN + 1);
}

TEST(NumberHelpers, BaudRatesMapToThemselves) {
  EXPECT_EQ(BaudrateToIdBr(9600), 9600);
  EXPECT_EQ(IdBrToBaudrate(115200), 115200);
  EXPECT_EQ(BaudrateToIdBr(14400), -1);
  EXPECT_EQ(IdBrToBaudrate(0), -1);
}

TEST(NumberHelpers, NewIdsRiseAndCarryTheDate) {
  const uint32_t first = GetNewId();
  const uint32_t second = GetNewId();
  EXPECT_GT(second, first);
  const uint32_t month = (first >> 24) & 15;
  EXPECT_GE(month, 1u);
  EXPECT_LE(month, 12u);
}

TEST(Identifiers, ValidNamesAndReservedDevices) {
  struct Case {
    const char16_t* id;
    bool allowSpaces;
    bool valid;
  };
  const Case cases[] = {
      {u"a b", false, false}, {u"a b", true, true},       {u" a", true, false},
      {u"a ", true, false},   {u"COM1", true, false},     {u"com1", true, true},
      {u"COM10", true, true}, {u"COM0", true, true},      {u"a.b", true, false},
      {u"", false, true},     {u"a-b_c(1)", false, true}, {u"\u00e9\u4e2d", false, true},
      {u"a#", true, false},   {u"NUL", false, false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(IsValidId(c.id, c.allowSpaces), c.valid) << std::string(c.id, c.id + 1);
  EXPECT_TRUE(IsValidId(nullptr, false));
}

TEST(Identifiers, NormalizeReplacesForbiddenAndReservedNames) {
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"a.b", u"a_b"},   {u"NUL", u"N_U_L"}, {u"C.O.N", u"C_O_N"},
      {u"CO:N", u"CO_N"}, {u" a ", u" a "},   {u"", u""},
  };
  for (const auto& [input, expected] : cases) {
    LqWString id(input, false);  // a borrowed literal must not be written into
    EXPECT_TRUE(NormalizeId(id));
    EXPECT_EQ(id, expected);
  }
}

}  // namespace
