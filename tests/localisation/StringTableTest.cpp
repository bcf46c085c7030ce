#include <gtest/gtest.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/LqStringTableWriter.h>

#include <string>

#include "localisation/StringTableTestSupport.h"
#include "support/TempFolder.h"

namespace {

class StringTable : public ::testing::Test {
 protected:
  // Writes `primary` (and `secondary` when given) and loads them into `table`.
  bool Load(const std::string& primary, const std::string* secondary = nullptr) {
    folder.Write("primary.lqs", primary);
    if (secondary) folder.Write("secondary.lqs", *secondary);
    const std::string second = folder.Path("secondary.lqs");
    return table.SetFile(folder.Path("primary.lqs").c_str(), secondary ? second.c_str() : nullptr);
  }
  std::string Text(unsigned id, bool expectFound) {
    LqString text;
    EXPECT_EQ(table.LoadStringW(text, id), expectFound) << id;
    return std::string(text, static_cast<std::size_t>(text.Length()));
  }

  TempFolder folder;
  LqStringTableFile table;
};

TEST_F(StringTable, WriterProducesTheDocumentedBytesOfAOneEntryTable) {
  LqStringTableWriter writer;
  ASSERT_EQ(writer.Add(5, "abc"), LqStringTableWriter::Ok);
  std::string bytes;
  ASSERT_EQ(writer.Build(bytes), LqStringTableWriter::Ok);
  const std::string expected(
      "\x00\x01\x00\x05\x00\x00\x00\x0C\x00\x03\xA8\x95"
      "abc",
      15);
  EXPECT_EQ(bytes, expected);
  ASSERT_TRUE(Load(bytes));
  EXPECT_EQ(Text(5, true), "abc");
}

TEST_F(StringTable, WrittenTableRoundTripsEveryTextByteForByte) {
  LqStringTableWriter writer;
  std::vector<std::string> texts;
  for (unsigned id = 0; id < 3000; ++id) {
    std::string text = "text " + std::to_string(id * 7919 % 3001);
    if (id % 5 == 0) text += " \xC3\xA9\xE2\x82\xAC\r\n\x1A";  // UTF-8, CR LF and 0x1A
    if (id % 97 == 0) text.clear();
    texts.push_back(text);
    ASSERT_EQ(writer.Add(id * 21, text.c_str(), static_cast<int>(text.size())),
              LqStringTableWriter::Ok);
  }
  ASSERT_EQ(writer.Save(folder.Path("t.lqs").c_str()), LqStringTableWriter::Ok);
  ASSERT_TRUE(table.SetFile(folder.Path("t.lqs").c_str(), nullptr));
  for (unsigned id = 0; id < 3000; ++id)
    ASSERT_EQ(Text(id * 21, true), texts[id]) << id;
  LqWString wide;
  EXPECT_TRUE(table.LoadStringW(wide, 5 * 21));
  EXPECT_EQ(wide[wide.Length() - 4], u'\u20AC');
}

TEST_F(StringTable, WriterRefusesWhatTheFormatCannotHold) {
  LqStringTableWriter writer;
  EXPECT_EQ(writer.Add(65536, "x"), LqStringTableWriter::IdOutOfRange);
  EXPECT_EQ(writer.Add(65535, "x"), LqStringTableWriter::Ok);
  const std::string longest(65534, 'a');
  EXPECT_EQ(writer.Add(1, longest.c_str()), LqStringTableWriter::Ok);
  const std::string tooLong(65535, 'a');
  EXPECT_EQ(writer.Add(2, tooLong.c_str()), LqStringTableWriter::TextTooLong);
  EXPECT_EQ(writer.Add(3, "a\0b", 3), LqStringTableWriter::TextHasZeroByte);
  EXPECT_EQ(writer.Count(), 2);
  LqStringTableWriter full;
  for (unsigned id = 0; id < 65535; ++id)
    ASSERT_EQ(full.Add(id, "t"), LqStringTableWriter::Ok);
  EXPECT_EQ(full.Add(65535, "t"), LqStringTableWriter::TooManyEntries);
  EXPECT_EQ(full.Add(10, "replaced"), LqStringTableWriter::Ok);  // an id already there
  EXPECT_EQ(full.Count(), 65535);
  EXPECT_EQ(writer.Save(folder.Path("no/such/folder/t.lqs").c_str()),
            LqStringTableWriter::CannotWrite);
  EXPECT_STREQ(LqStringTableWriter::ResultText(LqStringTableWriter::IdOutOfRange),
               "id above 65535");
}

TEST_F(StringTable, WriterStoresEqualTextsOnceAndReplacesAnIdAddedAgain) {
  LqStringTableWriter writer;
  writer.Add(1, "same");
  writer.Add(2, "same");
  writer.Add(3, "first");
  writer.Add(3, "second");
  std::string bytes;
  writer.Build(bytes);
  EXPECT_EQ(bytes.size(), 4 + 3 * 8 + 4 + 6u);
  ASSERT_TRUE(Load(bytes));
  EXPECT_EQ(Text(1, true), "same");
  EXPECT_EQ(Text(2, true), "same");
  EXPECT_EQ(Text(3, true), "second");
}

TEST_F(StringTable, EmptyTableLoadsButEveryLookupFallsBack) {
  ASSERT_TRUE(Load(std::string("\x00\x00", 2)));
  EXPECT_EQ(Text(5, false), "IDS_00005");
  LqWString wide;
  EXPECT_FALSE(table.LoadStringW(wide, 5));
  EXPECT_TRUE(wide == u"IDS_00005");
}

TEST_F(StringTable, PrimaryThatCannotBeReadFailsAndClosesTheTable) {
  ASSERT_TRUE(Load(WrittenTable({{5, "abc"}})));
  EXPECT_FALSE(table.SetFile(folder.Path("missing.lqs").c_str(), nullptr));
  EXPECT_EQ(Text(5, false), "IDS_00005");

  std::string swapped = WrittenTable({{5, "abc"}});
  std::swap(swapped[10], swapped[11]);
  EXPECT_FALSE(Load(swapped));
  EXPECT_FALSE(Load(std::string("\x00", 1)));
  EXPECT_FALSE(Load(""));
  EXPECT_EQ(Text(5, false), "IDS_00005");
}

TEST_F(StringTable, FirstPrimaryEntryOfAnIdWinsAndLastSecondaryEntryWins) {
  const uint32_t area = TextArea(2);
  const std::string primary = RawTable({{7, area, 5}, {7, area + 5, 6}}, "firstsecond");
  const uint32_t second = TextArea(3);
  const std::string secondary =
      RawTable({{8, second, 5}, {8, second + 5, 6}, {7, second, 5}}, "firstsecond");
  ASSERT_TRUE(Load(primary, &secondary));
  EXPECT_EQ(Text(7, true), "first");
  EXPECT_EQ(Text(8, true), "second");  // only in the secondary file
}

TEST_F(StringTable, BlankMarkInThePrimaryIsAnsweredFromTheSecondary) {
  LqStringTableWriter primary;
  primary.AddUntranslated(1);
  primary.AddUntranslated(2);
  primary.Add(3, "  ");
  primary.AddUntranslated(4);
  std::string primaryBytes;
  primary.Build(primaryBytes);
  const std::string secondary = WrittenTable({{1, "abc"}, {3, "base"}, {4, " "}});
  ASSERT_TRUE(Load(primaryBytes, &secondary));
  EXPECT_EQ(Text(1, true), "abc");
  EXPECT_EQ(Text(2, false), "IDS_00002");  // marked, and no secondary text
  EXPECT_EQ(Text(3, true), "  ");          // two blanks are a text
  EXPECT_EQ(Text(4, true), " ");           // a blank in the secondary file is delivered
}

TEST_F(StringTable, IdIsCutToSixteenBitsForTheSearchButNotForTheFallback) {
  ASSERT_TRUE(Load(WrittenTable({{5, "five"}})));
  EXPECT_EQ(Text(65541, true), "five");
  EXPECT_EQ(Text(65542, false), "IDS_65542");
  EXPECT_EQ(Text(0xFFFFFFFFu, false), "IDS_-0001");
}

TEST_F(StringTable, SecondaryWithABrokenChecksumIsIgnored) {
  std::string secondary = WrittenTable({{9, "nine"}, {5, "base"}});
  secondary[18] ^= 1;  // the first checksum byte
  ASSERT_TRUE(Load(WrittenTable({{5, " "}}), &secondary));
  EXPECT_EQ(Text(9, false), "IDS_00009");
  EXPECT_EQ(Text(5, false), "IDS_00005");
}

TEST_F(StringTable, SameOrMissingSecondaryLeavesThePrimaryServingAlone) {
  folder.Write("p.lqs", WrittenTable({{1, " "}, {2, "two"}}));
  const std::string path = folder.Path("p.lqs");
  ASSERT_TRUE(table.SetFile(path.c_str(), path.c_str()));
  EXPECT_EQ(Text(1, false), "IDS_00001");  // the mark is not answered from the same file
  EXPECT_EQ(Text(2, true), "two");
  ASSERT_TRUE(table.SetFile(path.c_str(), folder.Path("missing").c_str()));
  EXPECT_EQ(Text(2, true), "two");
}

TEST_F(StringTable, StoredZeroByteCutsTheText) {
  const uint32_t area = TextArea(1);
  ASSERT_TRUE(Load(RawTable({{1, area, 5}}, std::string("ab\0cd", 5))));
  EXPECT_EQ(Text(1, true), "ab");
}

TEST_F(StringTable, UnreachableOrShortTextsCountAsUnreadable) {
  const uint32_t area = TextArea(6);
  const std::string primary = RawTable({{1, 0x80000000u, 3},
                                        {2, area, 50},
                                        {3, 0xFFFFFFFFu, 3},
                                        {4, area, 0xFFFF},
                                        {5, area, 0},
                                        {6, 0x7FFFFFFFu, 1}},
                                       "abc");
  const std::string secondary = WrittenTable({{1, "one"}, {2, "two"}});
  ASSERT_TRUE(Load(primary, &secondary));
  EXPECT_EQ(Text(1, true), "one");
  EXPECT_EQ(Text(2, true), "two");
  EXPECT_EQ(Text(3, false), "IDS_00003");
  EXPECT_EQ(Text(4, false), "IDS_00004");
  EXPECT_EQ(Text(5, true), "");  // a length of 0 is an empty text
  EXPECT_EQ(Text(6, false), "IDS_00006");
}

TEST_F(StringTable, CountLargerThanTheFileFailsTheLoad) {
  std::string bytes = WrittenTable({{1, "a"}, {2, "b"}});
  bytes[0] = '\xFF';
  bytes[1] = '\xFF';
  EXPECT_FALSE(Load(bytes));
  EXPECT_FALSE(Load(bytes.substr(0, 12)));
}

TEST(StringId, RendersTheIdAsASignedFiveDigitSymbol) {
  struct Case {
    unsigned id;
    const char* text;
  };
  const Case cases[] = {{7, "IDS_00007"},
                        {123456, "IDS_123456"},
                        {0xFFFFFFFFu, "IDS_-0001"},
                        {0x80000000u, "IDS_-2147483648"}};
  for (const Case& c : cases) {
    LqString narrow;
    EXPECT_STREQ(StringId2String(c.id, narrow), c.text);
    char buffer[16];
    EXPECT_STREQ(StringId2String(c.id, buffer), c.text);
    LqWString wide;
    EXPECT_TRUE(StringId2String(c.id, wide) == LqWString(c.text));
    char16_t units[16];
    EXPECT_TRUE(LqWString(StringId2String(c.id, units, 16)) == LqWString(c.text));
  }
  char16_t small[6];
  EXPECT_TRUE(LqWString(StringId2String(7, small, 6)) == u"IDS_0");
}

TEST(ProcessTable, LookupsFollowTheLoadedFile) {
  TempFolder folder;
  folder.Write("t.lqs", WrittenTable({{42, "answer"}}));
  ASSERT_TRUE(SetLqLoadStringTableFile(folder.Path("t.lqs").c_str(), nullptr));
  LqString narrow;
  EXPECT_STREQ(LqLoadString(42, narrow), "answer");
  EXPECT_TRUE(LqLoadString(42) == u"answer");
  LqWString wide;
  EXPECT_TRUE(LqLoadString(43, wide) == u"IDS_00043");
  EXPECT_FALSE(SetLqLoadStringTableFile(folder.Path("none").c_str(), nullptr));
  EXPECT_TRUE(LqLoadString(42) == u"IDS_00042");
}

}  // namespace
