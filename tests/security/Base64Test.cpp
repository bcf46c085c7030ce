#include <gtest/gtest.h>
#include <lqtools/security/Base64.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

struct Rfc4648Case {
  const char* data;
  const char* text;
};

// The test vectors of RFC 4648, section 10.
const Rfc4648Case kRfc4648[] = {
    {"f", "Zg=="},        {"fo", "Zm8="},        {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"},
    {"M", "TQ=="},        {"Ma", "TWE="},        {"Man", "TWFu"},
};

TEST(Base64, EncodesAndDecodesTheRfcVectorsInBothForms) {
  for (const auto& c : kRfc4648) {
    SCOPED_TRACE(c.text);
    const int size = static_cast<int>(std::strlen(c.data));
    LqString narrow;
    EncodeBase64(narrow, c.data, size);
    EXPECT_STREQ(narrow, c.text);
    LqWString wide;
    EncodeBase64(wide, c.data, size);
    EXPECT_EQ(LqString(wide), narrow);

    EXPECT_EQ(DecodedBase64Size(c.text, -1), size);
    EXPECT_EQ(DecodedBase64Size(static_cast<const char16_t*>(wide), -1), size);
    // The byte after the decoded data stays untouched.
    std::vector<char> out(size + 1, '#');
    EXPECT_TRUE(DecodeBase64(out.data(), c.text));
    EXPECT_EQ(std::string(out.data(), size + 1), std::string(c.data) + "#");
    std::vector<char> fromWide(size + 1, '#');
    EXPECT_TRUE(DecodeBase64(fromWide.data(), static_cast<const char16_t*>(wide)));
    EXPECT_EQ(fromWide, out);
  }
}

TEST(Base64, EveryByteValueSurvivesARoundTrip) {
  std::vector<unsigned char> data(256 * 3 + 1);
  for (std::size_t i = 0; i < data.size(); ++i)
    data[i] = static_cast<unsigned char>(i * 7);
  LqString text;
  EncodeBase64(text, data.data(), static_cast<int>(data.size()));
  ASSERT_EQ(text.Length(), 1028);
  std::vector<unsigned char> back(data.size());
  ASSERT_EQ(DecodedBase64Size(text, text.Length()), static_cast<int>(back.size()));
  EXPECT_TRUE(DecodeBase64(back.data(), text));
  EXPECT_EQ(back, data);
}

TEST(Base64, NothingToEncodeGivesAnEmptyText) {
  LqString out("old");
  EncodeBase64(out, "abc", 0);
  EXPECT_STREQ(out, "");
  LqWString wide(u"old");
  EncodeBase64(wide, nullptr, 3);
  EXPECT_EQ(wide.Length(), 0);
}

TEST(Base64, EncodesTheTextOfItsOwnOutput) {
  LqString text("Man");
  EncodeBase64(text, static_cast<const char*>(text) + 1, 2);
  EXPECT_STREQ(text, "YW4=");
}

TEST(Base64, NarrowDecoderRefusesBadCharactersAndKeepsWhatItWrote) {
  for (const char* bad : {"TW E=", "TWFu\nTWFu", "TWFu-A==", "TWFu\x80\x41=="}) {
    SCOPED_TRACE(bad);
    char out[8] = "#######";
    EXPECT_FALSE(DecodeBase64(out, bad));
    EXPECT_FALSE(DecodeBase64String(out, bad, 8));
  }
  char out[8] = "#######";
  EXPECT_FALSE(DecodeBase64(out, "TWFuT!=="));
  EXPECT_EQ(std::string(out, 4), "Man#");
}

TEST(Base64, ShortLastGroupsWriteOnlyWhole) {
  char out[4] = {'#', '#', '#', '#'};
  EXPECT_TRUE(DecodeBase64(out, "T"));  // a single leftover symbol writes nothing
  EXPECT_EQ(std::string(out, 4), "####");
  EXPECT_TRUE(DecodeBase64(out, "TWE"));
  EXPECT_EQ(std::string(out, 4), "Ma##");
  EXPECT_TRUE(DecodeBase64(out, "TQ=garbage"));  // stops at the first '='
  EXPECT_EQ(std::string(out, 4), "Ma##");
  EXPECT_TRUE(DecodeBase64(out, ""));
  EXPECT_TRUE(DecodeBase64(out, static_cast<const char*>(nullptr)));
}

TEST(Base64, WideDecoderNeverRefusesAndReadsTheLowByte) {
  unsigned char spoilt[3] = {};
  EXPECT_TRUE(DecodeBase64(spoilt, u"TW E="));
  EXPECT_NE(std::string(reinterpret_cast<char*>(spoilt), 2), "Ma");

  unsigned char a[3] = {};
  unsigned char b[3] = {};
  EXPECT_TRUE(DecodeBase64(a, u"\u0154\u0157\u0146\u0175"));  // low bytes "TWFu"
  EXPECT_EQ(std::string(reinterpret_cast<char*>(a), 3), "Man");
  EXPECT_TRUE(DecodeBase64(a, u"\x16\x16\x16\x16"));  // the stray entry reads as "B"
  EXPECT_TRUE(DecodeBase64(b, u"BBBB"));
  EXPECT_EQ(std::memcmp(a, b, 3), 0);
}

TEST(Base64, StringDecoderTestsTheSizeAndWritesWholeGroups) {
  char out[8];
  std::memset(out, '#', sizeof out);
  EXPECT_FALSE(DecodeBase64String(out, "TQ==", 3));
  EXPECT_STREQ(out, "");
  std::memset(out, '#', sizeof out);
  EXPECT_TRUE(DecodeBase64String(out, "TQ==", 4));
  EXPECT_EQ(std::string(out, 5), std::string("M\0\0\0#", 5));
  // The size is only tested, not counted down: six bytes and the terminator land in 4.
  EXPECT_TRUE(DecodeBase64String(out, "TWFuTWFu", 4));
  EXPECT_STREQ(out, "ManMan");
  std::memset(out, '#', sizeof out);
  EXPECT_TRUE(DecodeBase64String(out, "", 0));
  EXPECT_STREQ(out, "");
  std::memset(out, '#', sizeof out);
  EXPECT_FALSE(DecodeBase64String(out, "TW!u", 8));  // no terminator after a bad character
  EXPECT_EQ(out[0], '#');
}

TEST(Base64, DecodedSizeStepsOverPaddingOnly) {
  struct Case {
    const char* text;
    int length;
    int size;
  };
  const Case cases[] = {{"TWE=", -1, 2}, {"TWE=", 4, 2}, {"TWFuTQ==", 6, 4}, {"TWFu", 2, 1},
                        {"====", -1, 0}, {"=", 1, 0},    {"", 0, 0},         {"", -1, 0},
                        {"TWFu", -2, 0}, {"!!!!", -1, 3}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(DecodedBase64Size(c.text, c.length), c.size);
    const LqWString wide(c.text);
    EXPECT_EQ(DecodedBase64Size(static_cast<const char16_t*>(wide), c.length), c.size);
  }
  EXPECT_EQ(DecodedBase64Size(static_cast<const char*>(nullptr), -1), 0);
}

}  // namespace
