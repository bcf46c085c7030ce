#include <gtest/gtest.h>
#include <lqtools/security/Base64.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace std::string_literals;

TEST(Base64, EncodesAndDecodesTheRfcVectorsInBothForms) {
  const char* const rfc4648[][2] = {
      {"f", "Zg=="},        {"fo", "Zm8="},        {"foo", "Zm9v"},
      {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"},
      {"M", "TQ=="},        {"Ma", "TWE="},        {"Man", "TWFu"},
  };
  for (const auto& [data, text] : rfc4648) {
    SCOPED_TRACE(text);
    const int size = static_cast<int>(std::strlen(data));
    LqString narrow;
    LqWString wide;
    EncodeBase64(narrow, data, size);
    EncodeBase64(wide, data, size);
    EXPECT_STREQ(narrow, text);
    EXPECT_EQ(LqString(wide), narrow);
    std::string out(size + 1, '#');
    std::string fromWide(size + 1, '#');
    EXPECT_TRUE(DecodeBase64(out.data(), text));
    EXPECT_TRUE(DecodeBase64(fromWide.data(), static_cast<const char16_t*>(wide)));
    EXPECT_EQ(out, data + "#"s);
    EXPECT_EQ(fromWide, out);
  }
}

TEST(Base64, EveryByteValueSurvivesARoundTrip) {
  std::vector<unsigned char> data(256 * 3 + 1);
  for (std::size_t i = 0; i < data.size(); ++i)
    data[i] = static_cast<unsigned char>(i * 7);
  LqString text;
  EncodeBase64(text, data.data(), static_cast<int>(data.size()));
  std::vector<unsigned char> back(data.size());
  ASSERT_EQ(DecodedBase64Size(text, text.Length()), static_cast<int>(back.size()));
  EXPECT_TRUE(DecodeBase64(back.data(), text));
  EXPECT_EQ(back, data);
}

TEST(Base64, EncodingReplacesTheOutputEvenWhenItReadsFromIt) {
  LqString text("Man");
  EncodeBase64(text, static_cast<const char*>(text) + 1, 2);
  EXPECT_STREQ(text, "YW4=");
  EncodeBase64(text, "abc", 0);
  EXPECT_STREQ(text, "");
  LqWString wide(u"old");
  EncodeBase64(wide, nullptr, 3);
  EXPECT_EQ(wide.Length(), 0);
  LqString borrowsNull(static_cast<const char*>(nullptr), false);
  EncodeBase64(borrowsNull, "Ma", 2);
  EXPECT_STREQ(borrowsNull, "TWE=");
}

TEST(Base64, EncodingAppendsThePaddedTailBeyondItsRoom) {
  // Room for size * 4 / 3 characters: "Man" fills it exactly; "M" has room for one character,
  // and the three appended behind it take a new block with the small slack of 255.
  LqString exact(LqString::GrowSmallBlock);
  EncodeBase64(exact, "Man", 3);
  EXPECT_EQ(exact.Spare(), 0u);
  LqString padded(LqString::GrowSmallBlock);
  EncodeBase64(padded, "M", 1);
  EXPECT_STREQ(padded, "TQ==");
  EXPECT_EQ(padded.Spare(), 253u);
}

TEST(Base64, NarrowDecoderRefusesBadCharactersAndWritesOnlyWholeBytes) {
  // A refusal keeps what was written before it; a single leftover symbol writes nothing.
  const std::tuple<const char*, bool, const char*> cases[] = {
      {"TW E=", false, "######"},     {"TWFu\nTWFu", false, "Man###"},
      {"TWFu-A==", false, "Man###"},  {"TWFu\x80\x41==", false, "Man###"},
      {"T", true, "######"},          {"TWE", true, "Ma####"},
      {"TQ=garbage", true, "M#####"}, {"", true, "######"},
      {nullptr, true, "######"},
  };
  for (const auto& [text, ok, bytes] : cases) {
    SCOPED_TRACE(text);
    std::string out(6, '#');
    EXPECT_EQ(DecodeBase64(out.data(), text), ok);
    EXPECT_EQ(out, bytes);
    EXPECT_EQ(DecodeBase64String(out.data(), text, 6), ok);
  }
  EXPECT_FALSE(DecodeBase64(nullptr, "TWFu"));
}

TEST(Base64, WideDecoderNeverRefusesAndReadsTheLowByte) {
  std::string out(3, '\0');
  EXPECT_TRUE(DecodeBase64(out.data(), u"TW E="));
  EXPECT_NE(out.substr(0, 2), "Ma");
  EXPECT_TRUE(DecodeBase64(out.data(), u"\u0154\u0157\u0146\u0175"));  // low bytes "TWFu"
  EXPECT_EQ(out, "Man");
  // Kept: the table entry of 0x16 reads as "B", so four of them decode like "BBBB".
  EXPECT_TRUE(DecodeBase64(out.data(), u"\x16\x16\x16\x16"));
  EXPECT_EQ(out, "\x04\x10\x41");
  EXPECT_FALSE(DecodeBase64(nullptr, u"TWFu"));
}

TEST(Base64, StringDecoderTestsTheSizeAndWritesWholeGroups) {
  const std::tuple<const char*, int, bool, std::string> cases[] = {
      {"TQ==", 3, false, "\0#"s},           // too small: only the terminator
      {"TQ==", 4, true, "M\0\0\0#"s},       // a short group still writes three bytes
      {"TWFuTWFu", 4, true, "ManMan\0#"s},  // the size is tested, never counted down
      {"", 0, true, "\0#"s},
      {"TW!u", 8, false, "#"s},  // no terminator after a bad character
  };
  for (const auto& [text, outSize, ok, bytes] : cases) {
    SCOPED_TRACE(text);
    std::string out(8, '#');
    EXPECT_EQ(DecodeBase64String(out.data(), text, outSize), ok);
    EXPECT_EQ(out.substr(0, bytes.size()), bytes);
  }
}

TEST(Base64, DecodedSizeStepsOverPaddingOnly) {
  const std::tuple<const char*, int, int> cases[] = {
      {"TWE=", -1, 2}, {"TWE=", 4, 2}, {"TWFuTQ==", 6, 4}, {"TWFu", 2, 1},  {"====", -1, 0},
      {"=", 1, 0},     {"", 0, 0},     {"", -1, 0},        {"TWFu", -2, 0}, {"!!!!", -1, 3}};
  for (const auto& [text, length, size] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(DecodedBase64Size(text, length), size);
    const LqWString wide(text);
    EXPECT_EQ(DecodedBase64Size(static_cast<const char16_t*>(wide), length), size);
  }
  EXPECT_EQ(DecodedBase64Size(static_cast<const char*>(nullptr), -1), 0);
}

}  // namespace
