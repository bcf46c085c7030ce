#include <gtest/gtest.h>

#include <string>

#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/LqStringTableWriter.h>
#include <lqtools/localisation/TextTemplates.h>
#include <lqtools/text/Unicode.h>

#include "support/TempFolder.h"
#include "support/TextHelpers.h"

namespace {

// One table for the whole program: 12 "Power", 13 "%s is %d kW", and "," and "." as separators.
class TextTemplate : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    s_folder = new TempFolder;
    LqStringTableWriter writer;
    writer.Add(12, "Power");
    writer.Add(13, "%s is %d kW");
    writer.Add(14, "%d%% of %s");
    writer.Add(15, "%.1f|%5.2e|%x|%c|%lld");
    ASSERT_EQ(writer.Save(s_folder->Path("table.bin").c_str()), LqStringTableWriter::Ok);
    ASSERT_TRUE(SetLqLoadStringTableFile(s_folder->Path("table.bin").c_str(), nullptr));
    localeInformationWide.SetThousandSeparator(u",");
    localeInformationWide.SetDecimalSeparator(u".");
  }
  static void TearDownTestSuite() {
    SetLqLoadStringTableFile("", nullptr);
    localeInformationWide.SetThousandSeparator(u"");
    localeInformationWide.SetDecimalSeparator(u"");
    delete s_folder;
  }

  static std::string Render(const char* xml) {
    LqWString result(u"stale");
    ParseXMLText(xml, result);
    return Utf8Of(result);
  }

  static TempFolder* s_folder;
};

TempFolder* TextTemplate::s_folder = nullptr;

TEST_F(TextTemplate, RendersEachElement) {
  const struct {
    const char* xml;
    const char* text;
  } cases[] = {
      {"<textId>IDS_00012</textId>", "Power"},
      {"<textId>IDS_12</textId>", "Power"},
      {"<textId>12</textId>", ""},
      {"<textId>IDS_</textId>", "IDS_00000"},
      {"<textId>IDS_00099</textId>", "IDS_00099"},
      {"<text><textStr>a</textStr><textStr>b</textStr></text>", "ab"},
      {"<textStr>a</textStr><unknown>x</unknown><textStr>b</textStr>", "ab"},
      {"<textValue><value>1234.5</value><integers>6</integers><decimals>2</decimals>"
       "<thousandSeparator>T</thousandSeparator><leftPadding>1</leftPadding>"
       "<rightPadding>1</rightPadding></textValue>",
       "001,234.50"},
      {"<textValue><value>1234.5</value><integers>6</integers><decimals>2</decimals>"
       "<thousandSeparator>t</thousandSeparator><leftPadding>1</leftPadding>"
       "<rightPadding>1</rightPadding></textValue>",
       "001234.50"},
      {"<textValue><value>3.7</value></textValue>", "4"},
      {"<textDate><date>garbage</date><pattern>yyyy</pattern></textDate>", "garbage"},
      {"<textDate><date>31122020235958</date><pattern>yyyy</pattern></textDate>", "2020"},
  };
  for (const auto& c : cases) EXPECT_EQ(Render(c.xml), c.text) << c.xml;
}

TEST_F(TextTemplate, FillsFormatsChunkByChunk) {
  const struct {
    const char* xml;
    const char* text;
  } cases[] = {
      {"<textParams><textId>IDS_00013</textId><paramId>IDS_00012</paramId>"
       "<paramInteger>5</paramInteger></textParams>",
       "Power is 5 kW"},
      {"<textParams><textId>IDS_00013</textId><paramStr>P</paramStr></textParams>",
       "P is %d kW"},
      {"<textParams><textStr>100%%</textStr></textParams>", "100%"},
      {"<textParams><textStr>100%%</textStr><paramStr>x</paramStr></textParams>", "100%"},
      {"<textParams><textStr>plain</textStr><paramStr>x</paramStr><paramStr>y</paramStr>"
       "</textParams>",
       "plain"},
      {"<textParams><textId>IDS_00014</textId><paramInteger>50</paramInteger>"
       "<paramStr>all</paramStr></textParams>",
       "50% of all"},
      {"<textParams><textId>plain %s</textId><paramStr>x</paramStr></textParams>", "plain x"},
      {"<textParams><textStr>[%s]</textStr><parameter>x</parameter></textParams>", "[%s]"},
      {"<textParams><textId>IDS_00015</textId><paramDouble>2.25</paramDouble>"
       "<paramDouble>1234.5</paramDouble><paramInteger>255</paramInteger>"
       "<paramInteger>65</paramInteger><paramInteger>-7</paramInteger></textParams>",
       "2.2|1.23e+03|ff|A|-7"},
  };
  for (const auto& c : cases) EXPECT_EQ(Render(c.xml), c.text) << c.xml;
}

// A paramId without "IDS_" fills nothing: the piece before is appended again and this chunk's
// own text is lost.
TEST_F(TextTemplate, IdParameterWithoutPrefixRepeatsThePieceBefore) {
  EXPECT_EQ(Render("<textParams><textStr>a%s b%s c</textStr><paramStr>1</paramStr>"
                   "<paramId>12</paramId></textParams>"),
            "a1 ba1 b");
  EXPECT_EQ(Render("<textParams><textStr>a%s b</textStr><paramId>12</paramId></textParams>"),
            "");
}

// Conversions and parameters of different kinds never meet: the conversion prints as written.
TEST_F(TextTemplate, MismatchedConversionsPrintAsWritten) {
  const struct {
    const char* xml;
    const char* text;
  } cases[] = {
      {"<textParams><textStr>[%s]</textStr><paramInteger>5</paramInteger></textParams>", "[%s]"},
      {"<textParams><textStr>[%d]</textStr><paramStr>x</paramStr></textParams>", "[%d]"},
      {"<textParams><textStr>[%n]</textStr><paramInteger>5</paramInteger></textParams>", "[%n]"},
      {"<textParams><textStr>[%*d]</textStr><paramInteger>5</paramInteger></textParams>",
       "[%*d]"},
      {"<textParams><textStr>[%p]</textStr><paramInteger>5</paramInteger></textParams>", "[%p]"},
      {"<textParams><textStr>[%d] [%s]</textStr><paramInteger>1</paramInteger></textParams>",
       "[1] [%s]"},
      {"<textParams><textStr>[%5.1f]</textStr><paramInteger>3</paramInteger></textParams>",
       "[  3.0]"},
      {"<textParams><textStr>[%d]</textStr><paramDouble>2.9</paramDouble></textParams>", "[2]"},
      {"<textParams><textStr>[%hs]</textStr><paramStr>x</paramStr></textParams>", "[x]"},
  };
  for (const auto& c : cases) EXPECT_EQ(Render(c.xml), c.text) << c.xml;
}

TEST_F(TextTemplate, PiecesAreCutAtTheirRoom) {
  const std::string longText(3000, 'a');
  const std::string xml = "<textParams><textStr>%s" + longText + "</textStr><paramStr>x" +
                          "</paramStr></textParams>";
  EXPECT_EQ(Render(xml.c_str()), "x" + std::string(1022, 'a'));
}

TEST_F(TextTemplate, WrappingAndPassThrough) {
  EXPECT_EQ(Render("a < b"), "a < b");
  EXPECT_EQ(Render("hello"), "");
  EXPECT_EQ(Render("<other><textStr>a</textStr></other>"), "");
  // A prefix test: "<text " with attributes is wrapped once more and so renders nothing.
  EXPECT_EQ(Render("<text a=\"1\"><textStr>a</textStr></text>"), "");
  EXPECT_EQ(Render("<text><textStr>a</textStr></text>"), "a");
  LqWString result(u"stale");
  EXPECT_TRUE(ParseXMLText(static_cast<const char*>(nullptr), result).IsEmpty());
}

TEST_F(TextTemplate, ResultKeepsTheCallersGrowthPolicy) {
  LqWString result;
  ParseXMLText("<textStr>a</textStr>", result);
  EXPECT_EQ(result.Flags() & LqWString::GrowLargeBlock, unsigned{LqWString::GrowSmallBlock});
  LqWString large;
  large.SetGrowthIfNone(LqWString::GrowLargeBlock);
  ParseXMLText("<textStr>a</textStr>", large);
  EXPECT_EQ(large.Flags() & LqWString::GrowLargeBlock, unsigned{LqWString::GrowLargeBlock});
}

}  // namespace
