#include <gtest/gtest.h>
#include <lqtools/text/Unicode.h>

#include <string>
#include <vector>

namespace {

std::u16string Decode(const std::string& bytes) {
  LqWString out;
  Utf8ToUtf16(out, bytes.data(), static_cast<int>(bytes.size()));
  return std::u16string(static_cast<const char16_t*>(out), static_cast<std::size_t>(out.Length()));
}

std::string Encode(const std::u16string& units) {
  LqString out;
  Utf16ToUtf8(out, LqWString(units.c_str()));
  return std::string(static_cast<const char*>(out), static_cast<std::size_t>(out.Length()));
}

TEST(Utf16ToUtf8, EncodesByTheFourRanges) {
  EXPECT_EQ(Encode(u"a\u00e9\u20ac"), "a\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(Encode(u"\uFFFE"), "\xEF\xBF\xBE");
  EXPECT_EQ(Encode(u"\uFFFF"), "\xF0\x8F\xBF\xBF");  // the limit of the third range is below 0xFFFF
}

TEST(Utf16ToUtf8, DropsLoneSurrogatesAndSkipsTheOffsetOfPairs) {
  EXPECT_EQ(Encode(std::u16string({u'a', 0xDC00, u'b'})), "ab");
  EXPECT_EQ(Encode(std::u16string({u'a', 0xD800})), "a");
  EXPECT_EQ(Encode(std::u16string({0xD800, u'x'})), "x");
  EXPECT_EQ(Encode(std::u16string({0xD87D, 0xDE00})), "\xF0\x9F\x98\x80");
  // A standard pair for U+1F600 loses its offset: the value 0xF600.
  EXPECT_EQ(Encode(std::u16string({0xD83D, 0xDE00})), "\xEF\x98\x80");
}

TEST(Utf16ToUtf8, EmptyInputGivesAnOwnedEmptyTextWithSmallBlocks) {
  LqString out;
  Utf16ToUtf8(out, LqWString());
  EXPECT_EQ(out.Length(), 0);
  EXPECT_EQ(out.Flags(), static_cast<uint32_t>(LqString::GrowSmallBlock));
  LqString large(LqString::GrowLargeBlock);
  Utf16ToUtf8(large, LqWString(u"x"));
  EXPECT_EQ(large.Flags(), static_cast<uint32_t>(LqString::GrowLargeBlock));
}

TEST(Utf8ToUtf16, DecodesAndDropsWhatCannotBeDecoded) {
  struct Case {
    std::string bytes;
    std::u16string units;
  };
  const std::vector<Case> cases = {
      {"a\xC3\xA9", u"a\u00e9"},
      {"\xE2\x82\xAC", u"\u20ac"},
      {"\xF0\x9F\x98\x80", std::u16string({0xD87D, 0xDE00})},
      {"\x80"
       "a",
       u"a"},  // stray continuation byte
      {"\xC3\x41"
       "b",
       u"b"},              // the offending byte goes with the sequence
      {"\xF0\x41", u""},   // likewise for a four-byte lead
      {"\xF8\x41", u"A"},  // an undecodable lead alone
      {"\xF8\x80\x80"
       "c",
       u"c"},                                              // with its continuation bytes
      {std::string("\xC0\x80", 2), std::u16string(1, 0)},  // overlong zero is kept
      {std::string("a\0b", 3), std::u16string({u'a', 0, u'b'})},
      {"\xE2\x82", u""},                            // cut off by the end
      {"\xED\xA0\x80", std::u16string(1, 0xD800)},  // encoded surrogate decodes to its value
  };
  for (const Case& c : cases)
    EXPECT_EQ(Decode(c.bytes), c.units) << c.bytes;
}

TEST(Utf8ToUtf16, TerminatedFormStopsAtZeroAlsoInsideASequence) {
  LqWString out;
  Utf8ToUtf16(out, LqString("a\xE2"));
  EXPECT_EQ(out, u"a");
  Utf8ToUtf16(out, LqString(""));
  EXPECT_EQ(out.Length(), 0);
  Utf8ToUtf16(out, "abc", 0);
  EXPECT_EQ(out.Length(), 0);
}

TEST(Utf8ToUtf16, CountedFormNeverReadsPastTheLength) {
  // A heap block of exactly the counted bytes: the sanitizer catches any read behind it.
  for (const char* bytes : {"\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xF8\x80"}) {
    const std::size_t n = std::char_traits<char>::length(bytes);
    std::vector<char> block(bytes, bytes + n);
    LqWString out;
    Utf8ToUtf16(out, block.data(), static_cast<int>(n));
    EXPECT_EQ(out.Length(), 0);
  }
}

TEST(Unicode, SupplementaryCharactersSurviveTheRoundTrip) {
  const std::string text = "x\xF0\x9F\x98\x80y\xF3\xA0\x80\x81";
  EXPECT_EQ(Encode(Decode(text)), text);
  // From U+100000 on the high unit lands among the low surrogates and is dropped on the way back.
  EXPECT_EQ(Encode(Decode("\xF4\x8F\xBF\xBF")), "");
}

// The results keep the spare room of a string grown one unit at a time, whatever the policy and
// wherever the text ends against the slack.
TEST(Unicode, ResultsKeepTheSpareRoomOfUnitByUnitGrowth) {
  for (unsigned growth :
       {0u, unsigned{LqWString::GrowSmallBlock}, unsigned{LqWString::GrowLargeBlock}}) {
    for (int length : {0, 1, 254, 255, 256, 257, 511, 512, 513, 70000, 131072}) {
      std::string bytes;
      for (int i = 0; i < length; ++i)
        bytes += i % 7 ? static_cast<char>('a' + i % 26) : '\xC3';
      // Each lead takes the letter behind it down with it.
      LqWString wide(growth), wideByUnit(growth);
      Utf8ToUtf16(wide, bytes.data(), length);
      wideByUnit.SetGrowthIfNone(LqWString::GrowSmallBlock);
      wideByUnit = u"";
      for (int i = 0; i < length; ++i)
        if (i % 7 > 1) wideByUnit += static_cast<char16_t>(bytes[i]);
      EXPECT_EQ(wide.Length(), wideByUnit.Length()) << growth << ' ' << length;
      EXPECT_EQ(wide.Spare(), wideByUnit.Spare()) << growth << ' ' << length;

      LqString narrow(growth), narrowByUnit(growth);
      Utf16ToUtf8(narrow, wide);
      narrowByUnit.SetGrowthIfNone(LqString::GrowSmallBlock);
      narrowByUnit = "";
      for (int i = 0; i < wide.Length(); ++i)
        narrowByUnit += static_cast<char>(wide[i]);
      EXPECT_EQ(narrow.Length(), narrowByUnit.Length()) << growth << ' ' << length;
      EXPECT_EQ(narrow.Spare(), narrowByUnit.Spare()) << growth << ' ' << length;
    }
  }
}

TEST(StdRuntimeException, CopiesShareTheMessage) {
  const StdRuntimeException original("Unexpected call!");
  const StdRuntimeException copy(original);
  StdRuntimeException assigned("other");
  assigned = original;
  EXPECT_EQ(copy.what(), original.what());
  EXPECT_EQ(assigned.what(), original.what());
  EXPECT_STREQ(original.what(), "Unexpected call!");
}

}  // namespace
