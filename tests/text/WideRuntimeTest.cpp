#include <gtest/gtest.h>
#include <lqtools/platform/WideFormat.h>
#include <lqtools/platform/WideRuntime.h>

#include <cerrno>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

// Inside the namespace, the 16-bit routines hide the C library's names.
namespace lq::detail {
namespace {

template <typename... Args>
std::u16string Format(const char16_t* format, Args... args) {
  char16_t buffer[1024];
  const int n = swprintf(buffer, 1024, format, args...);
  EXPECT_GE(n, 0);
  return buffer;
}

TEST(WideFormat, FollowsTheWidePlatformConventions) {
  EXPECT_EQ(Format(u"%s|%ls|%hs|%S", u"wide", u"also", "narrow", "bytes"),
            u"wide|also|narrow|bytes");
  EXPECT_EQ(Format(u"%c%c%hc", u'\u00e9', u'x', 'y'), u"\u00e9xy");
  EXPECT_EQ(Format(u"%I64X %I64d %lld", int64_t{0x1234567890ABCDEF}, int64_t{-5}, -6LL),
            u"1234567890ABCDEF -5 -6");
  EXPECT_EQ(Format(u"%05d|%-4d|%+d|%x|%#o|%%", 42, 7, 3, 255u, 8u), u"00042|7   |+3|ff|010|%");
  EXPECT_EQ(Format(u"%*d|%-*s|%.*s", 4, 1, 3, u"a", 2, u"abcdef"), u"   1|a  |ab");
  EXPECT_EQ(Format(u"%.3f %e %g", 1.5, 100.0, 0.25), u"1.500 1.000000e+02 0.25");
  EXPECT_EQ(Format(u"%hd %hhu %zu", 70000, 257, std::size_t{9}), u"4464 1 9");
  EXPECT_EQ(Format(u"%08.3f|%-6.1f|%06.1f|%#010x|%+05d|%05s", -1.5, 2.0, -INFINITY, 255u, 7, u"ab"),
            u"-001.500|2.0   |  -inf|0x000000ff|+0007|   ab");
  EXPECT_EQ(Format(u"%.70d", -5), u"-" + std::u16string(69, u'0') + u"5");
  EXPECT_EQ(Format(u"%08.3d", 5), u"     005");
  EXPECT_EQ(Format(u"%s", static_cast<const char16_t*>(nullptr)), u"(null)");
  EXPECT_EQ(Format(u"%.2s", u"\u4e2d\u6587\u5b57"), u"\u4e2d\u6587");
}

TEST(WideFormat, FastNumberTextsEqualTheCLibrarys) {
  const double values[] = {0.0,
                           -0.0,
                           1.0,
                           0.1,
                           -2.5,
                           123456.789,
                           1e21,
                           1e-5,
                           1e-300,
                           5e-324,
                           1.7976931348623157e308,
                           NAN,
                           INFINITY,
                           -INFINITY,
                           0.5,
                           2.5e-7};
  for (double value : values) {
    for (char conversion : {'e', 'E', 'f', 'F', 'g', 'G'}) {
      for (int precision : {-1, 0, 3, 17}) {
        char expected[1024];
        char actual[1024];
        const char format[] = {'%', '.', '*', conversion, 0};
        std::snprintf(expected, sizeof expected, format, precision, value);
        EXPECT_EQ(FormatDouble(actual, sizeof actual, value, conversion, precision),
                  static_cast<int>(std::strlen(expected)));
        EXPECT_STREQ(actual, expected) << value << ' ' << conversion << precision;
        const char16_t wideFormat[] = {u'%', u'.', u'*', static_cast<char16_t>(conversion), 0};
        EXPECT_EQ(Format(wideFormat, precision, value),
                  std::u16string(expected, expected + std::strlen(expected)));
      }
    }
  }
  for (long long value : {0LL, -1LL, 42LL, LLONG_MIN, LLONG_MAX}) {
    char expected[128];
    char actual[64];
    std::snprintf(expected, sizeof expected, "%lld|%llx|%llX|%llo|%llu", value, value, value, value,
                  value);
    EXPECT_EQ(Format(u"%I64d|%I64x|%I64X|%I64o|%I64u", value, value, value, value, value),
              std::u16string(expected, expected + std::strlen(expected)));
    FormatInteger(actual, sizeof actual, value);
    EXPECT_EQ(std::string(actual),
              std::string(expected).substr(0, std::string(expected).find('|')));
  }
  char cut[4];
  EXPECT_EQ(FormatDouble(cut, sizeof cut, 12345.0, 'g', 17), 5);
  EXPECT_STREQ(cut, "123");
}

TEST(WideFormat, NumbersIgnoreTheHostLocale) {
  const char* previous = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = previous ? previous : "C";
  if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8")) std::setlocale(LC_NUMERIC, "fr_FR.UTF-8");
  EXPECT_EQ(Format(u"%.2f", 3.25), u"3.25");
  char narrow[32];
  snprintf(narrow, sizeof narrow, "%.1f", 2.5);
  EXPECT_STREQ(narrow, "2.5");
  EXPECT_EQ(wcstod(u"1.5", nullptr), 1.5);
  std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(WideFormat, NeverWritesPastTheBufferAndStaysTerminated) {
  char16_t buffer[8];
  for (char16_t& c : buffer)
    c = u'#';
  EXPECT_EQ(swprintf(buffer, 5, u"%s", u"abcdefgh"), -1);
  EXPECT_EQ(std::u16string(buffer), u"abcd");
  EXPECT_EQ(buffer[5], u'#');
  EXPECT_EQ(swprintf(buffer, 8, u"%2000000000d", 1), -1);
  EXPECT_EQ(std::u16string(buffer), u"       ");
  EXPECT_EQ(swprintf(buffer, 8, u"%.900f", 1.0), -1);
  EXPECT_EQ(std::u16string(buffer), u"1.00000");
  EXPECT_EQ(swprintf(buffer, 8, u"%.2000000000e", 1.0), -1);
  EXPECT_EQ(std::u16string(buffer), u"1.00000");
  EXPECT_EQ(swprintf(buffer, 8, u"%.2000000000d", 1), -1);
  EXPECT_EQ(std::u16string(buffer), u"0000000");
  EXPECT_EQ(swprintf(buffer, 0, u"x"), -1);
  EXPECT_EQ(swprintf(buffer, 4, u"abc"), 3);
  EXPECT_EQ(swprintf(buffer, 8, u"%n|%q|", static_cast<int*>(nullptr)), 4);
  EXPECT_EQ(std::u16string(buffer), u"|%q|");
  EXPECT_EQ(swprintf(buffer, 8, u"ab%"), 2);
}

TEST(WideRuntime, IntegerParsingClampsToThirtyTwoBits) {
  struct Case {
    const char16_t* text;
    int base;
    int32_t value;
    int used;
  };
  const Case cases[] = {
      {u"  -42x", 10, -42, 5},
      {u"0x1F", 0, 31, 4},
      {u"0x1F", 16, 31, 4},
      {u"017", 0, 15, 3},
      {u"2147483648", 10, INT32_MAX, 10},
      {u"-2147483648", 10, INT32_MIN, 11},
      {u"-99999999999", 10, INT32_MIN, 12},
      {u"abc", 10, 0, 0},
      {u"0x", 16, 0, 1},
      {u"- 5", 10, 0, 0},
  };
  for (const Case& c : cases) {
    char16_t* end = nullptr;
    EXPECT_EQ(wcstol(c.text, &end, c.base), c.value) << std::string(c.text, c.text + 3);
    EXPECT_EQ(end - c.text, c.used);
  }
  EXPECT_EQ(wcstoul(u"-1", nullptr, 10), UINT32_MAX);
  EXPECT_EQ(wcstoul(u"4294967295", nullptr, 10), UINT32_MAX);
  errno = 0;
  EXPECT_EQ(wcstoul(u"4294967296", nullptr, 10), UINT32_MAX);
  EXPECT_EQ(errno, ERANGE);
  EXPECT_EQ(wcstoul(u"ff", nullptr, 16), 255u);
}

TEST(WideRuntime, DoubleParsingTakesTheLongestNumberPrefix) {
  char16_t* end = nullptr;
  const char16_t* text = u" 1.5e3xyz";
  EXPECT_EQ(wcstod(text, &end), 1500.0);
  EXPECT_EQ(end - text, 6);
  text = u"-.5\u00e9";
  EXPECT_EQ(wcstod(text, &end), -0.5);
  EXPECT_EQ(end - text, 3);
  text = u"x1";
  EXPECT_EQ(wcstod(text, &end), 0.0);
  EXPECT_EQ(end, text);
  EXPECT_TRUE(std::isinf(wcstod(u"inf", nullptr)));
}

TEST(WideRuntime, TokensKeepTheirStateInTheContext) {
  char16_t text[] = u",a,,bc;";
  char16_t* context = nullptr;
  std::u16string tokens;
  for (char16_t* t = wcstok(text, u",;", &context); t; t = wcstok(nullptr, u",;", &context)) {
    tokens += t;
    tokens += u'|';
  }
  EXPECT_EQ(tokens, u"a|bc|");
}

TEST(WideRuntime, ClassificationIsUnicodeWhateverTheHostLocale) {
  EXPECT_TRUE(iswspace(u' '));
  EXPECT_TRUE(iswspace(0x2003));
  EXPECT_TRUE(iswalnum(0x00e9));
  EXPECT_TRUE(iswalnum(0x4e2d));
  EXPECT_FALSE(iswalnum(u'.'));
  EXPECT_TRUE(iswxdigit(u'f'));
  EXPECT_EQ(towupper(0x00e9), 0x00c9u);
  EXPECT_EQ(towlower(u'Q'), static_cast<unsigned>(u'q'));
  EXPECT_EQ(wcsncmp(u"abc", u"abd", 2), 0);
  EXPECT_LT(wcsncmp(u"abc", u"abd", 3), 0);
  EXPECT_EQ(wcslen(nullptr), 0u);
}

}  // namespace
}  // namespace lq::detail
