#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "json/JsonTestSupport.h"

namespace {

struct ParseCase {
  const char* text;
  const char* written;  // null: the parse fails
};

void PrintTo(const ParseCase& c, std::ostream* os) { PrintCaseName(c.text ? c.text : "None", os); }

class ParsedText : public testing::TestWithParam<ParseCase> {};

// Each parse starts on a dirty document: a failure must leave it empty and clean.
TEST_P(ParsedText, ReadsAndWritesBack) {
  JsonDocument doc;
  doc.Create(5);
  doc.SetDirty(true);
  const ParseCase& c = GetParam();
  EXPECT_EQ(doc.Parse(c.text), c.written != nullptr);
  EXPECT_EQ(TextOf(doc.Root()), c.written ? c.written : "(none)");
  EXPECT_FALSE(doc.Dirty());
}

INSTANTIATE_TEST_SUITE_P(
    Containers, ParsedText,
    testing::Values(ParseCase{"{\"a\":1,\"b\":2}", "{\"a\": 1,\"b\": 2}"},
                    ParseCase{" [ 1 , [ ] , { } ] ", "[1,[],{}]"}, ParseCase{"[,1]", "[1]"},
                    ParseCase{"{,\"a\":1}", "{\"a\": 1}"}, ParseCase{"[1,]", nullptr},
                    ParseCase{"{\"a\":1,}", nullptr}, ParseCase{"[,,1]", nullptr},
                    ParseCase{"[1,,2]", nullptr}, ParseCase{"[1 2]", nullptr},
                    ParseCase{"{\"a\" 1}", nullptr}, ParseCase{"{a:1}", nullptr},
                    ParseCase{"[1", nullptr}, ParseCase{"{\"a\":1,\"a\":2}", "{\"a\": 1,\"a\": 2}"},
                    ParseCase{nullptr, nullptr}, ParseCase{"", nullptr}, ParseCase{"\f1", nullptr},
                    ParseCase{"\x01[]", nullptr}));

INSTANTIATE_TEST_SUITE_P(
    Scalars, ParsedText,
    testing::Values(ParseCase{"nullable", "null"}, ParseCase{"truest", "true"},
                    ParseCase{"1 2", "1"}, ParseCase{"{} garbage", "{}"}, ParseCase{"1e3", "1000"},
                    ParseCase{"1.0e3", "1000"}, ParseCase{"1.5e-3", "0.0015"},
                    ParseCase{"3000000000", "-2147483648"}, ParseCase{"-", "0"},
                    ParseCase{"007", "7"}, ParseCase{"1e", "1"}, ParseCase{"-.5", "-0.5"},
                    ParseCase{"1e4294967296", "1"}, ParseCase{"1e-2147483648", "0"},
                    ParseCase{"1e2147483648", "0"}, ParseCase{"+1", nullptr},
                    ParseCase{"1e400", "-2147483648"}, ParseCase{"0.1", "0.10000000000000001"},
                    ParseCase{"Null", nullptr}));

INSTANTIATE_TEST_SUITE_P(
    Strings, ParsedText,
    testing::Values(ParseCase{"\"\\q\"", "\"q\""}, ParseCase{"\"a\\/b\"", "\"a/b\""},
                    ParseCase{"\"\\b\\f\\n\\r\\t\"", "\"\\b\\f\\n\\r\\t\""},
                    ParseCase{"\"raw\x01\x7f\"", "\"raw\x01\x7f\""},
                    // A \u lead byte gets no 0xC0 or 0xE0 mark (\u00E9 is 03 A9, \u20AC 02 82 AC):
                    // the UTF-8 decoder keeps the bare lead and drops the stray continuations.
                    ParseCase{"\"\\u00E9\"", "\"\x03\""}, ParseCase{"\"\\u20AC\"", "\"\x02\""},
                    ParseCase{"\"\\u007A\"", "\"z\""},
                    ParseCase{"\"\\u0041\\u00\"x\"", "\"A\""},  // "\u00" takes `"x` along
                    ParseCase{"\"a\\u  41z\"", "\"aAz\""},      // the scanner skips blanks
                    ParseCase{"\"a\\uxyzwb\"", "\"ab\""},       // no hex digit: nothing
                    ParseCase{"\"\\u0x41\"", "\"A\""},          // a "0x" prefix is read
                    ParseCase{"\"a\\u-001b\"", "\"ab\""},       // -1: bytes FF BF BF, dropped
                    ParseCase{"\"a\\u0000b\"", "\"ab\""},       // the value 0: nothing
                    ParseCase{"\"x\\u0800y\"", "\"x\""},        // a zero lead byte ends the text
                    ParseCase{"\"abc", nullptr}, ParseCase{"\"a\\", nullptr},
                    ParseCase{"\"\\u12", nullptr}, ParseCase{"\"\\u123", nullptr}));

// Type and integer field of each element: a float leaves the integer field alone.
TEST(JsonParser, NumbersAreIntegersUnlessTheyHoldAPoint) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("[-12,1e3,2.5,1.0e3,1.,true]"));
  std::string kinds;
  for (const JsonDocument::JsonNode* node : doc.Root()->GetChilds())
    kinds += std::to_string(node->Type()) + ":" + std::to_string(node->ValueInt()) + " ";
  EXPECT_EQ(kinds, "2:-12 2:1000 3:0 3:0 3:0 0:1 ");
}

// Random byte texts, every byte but the quote, the backslash and zero, cover the decoder's cases
// (stray continuations, cut sequences, overlong zeros, four-byte values, leads from 0xF8 up).
// Read as a string value, with and without an escape in it, each must give what the library's
// converter gives for the same bytes, cut at its first zero unit, in a block of the exact size.
TEST(JsonParser, StringsDecodeAsTheLibraryConverterDoes) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> byte(1, 255);
  std::uniform_int_distribution<int> length(0, 1200);
  for (int round = 0; round < 400; ++round) {
    std::string bytes(static_cast<std::size_t>(length(random) % (round % 4 ? 24 : 1200)), 'a');
    for (char& c : bytes) {
      do {
        c = static_cast<char>(byte(random));
      } while (c == '"' || c == '\\');
    }
    for (const bool escaped : {false, true}) {
      // "\t" goes in at the middle, where it may split a sequence.
      std::string expectedBytes = bytes;
      std::string text = bytes;
      if (escaped) {
        expectedBytes.insert(bytes.size() / 2, "\t");
        text.insert(bytes.size() / 2, "\\t");
      }
      LqWString decoded;
      Utf8ToUtf16(decoded, LqString(expectedBytes.c_str()));
      const LqWString expected(static_cast<const char16_t*>(decoded));

      JsonDocument doc;
      ASSERT_TRUE(doc.Parse(("[\"" + text + "\"]").c_str()));
      const LqWString& value = (*doc.Root()->ChildsBegin())->ValueString();
      ASSERT_EQ(value, expected) << "round " << round << (escaped ? " escaped" : "");
      EXPECT_EQ(value.Length(), expected.Length());
      EXPECT_EQ(value.Spare(), 0u);
    }
  }
}

// Names and values are owned texts of their exact size, the empty one included.
TEST(JsonParser, ReadTextsAreOwnedWithoutSpareRoom) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"\":\"\",\"caf\xC3\xA9\":\"a\\nb\"}"));
  for (auto child = doc.Root()->ChildsBegin(); child != doc.Root()->ChildsEnd(); ++child) {
    for (const LqWString* text : {&(*child)->String(), &(*child)->ValueString()}) {
      EXPECT_EQ(text->Flags(), 0u);
      EXPECT_EQ(text->Spare(), 0u);
    }
  }
  // An empty name is not written.
  EXPECT_EQ(TextOf(doc.Root()), "{\"\",\"caf\xC3\xA9\": \"a\\nb\"}");
}

// A number is its digits scaled by the power of ten that the point and the exponent give, the
// power as the maths library computes it, also far out where it overflows or underflows.
TEST(JsonParser, NumbersScaleByTheLibraryPowerOfTen) {
  for (int power = -420; power <= 420; power += 3) {
    const std::string text = "[12.5e" + std::to_string(power + 1) + "]";
    JsonDocument doc;
    ASSERT_TRUE(doc.Parse(text.c_str()));
    const double expected = std::pow(10.0, static_cast<double>(power)) * 125.0;
    EXPECT_EQ((*doc.Root()->ChildsBegin())->ValueDouble(), expected) << text;
  }
}

std::string Repeat(const char* piece, int count) {
  std::string text;
  while (count-- > 0)
    text += piece;
  return text;
}

TEST(JsonParser, NestingIsLimitedWithoutExhaustingTheStack) {
  const int limit = JsonDocument::kMaxParseDepth;
  const std::string arrays = std::string(limit, '[') + std::string(limit, ']');
  const std::string objects = Repeat("{\"a\":", limit) + "1" + std::string(limit, '}');
  JsonDocument doc;
  EXPECT_TRUE(doc.Parse(arrays.c_str()));
  EXPECT_EQ(TextOf(doc.Root()), arrays);
  EXPECT_TRUE(doc.Parse(objects.c_str()));
  EXPECT_FALSE(doc.Parse(("[" + arrays + "]").c_str()));
  EXPECT_FALSE(doc.Parse(("{\"a\":" + objects + "}").c_str()));
  EXPECT_FALSE(doc.Parse(Repeat("{\"a\":", 300000).c_str()));
  EXPECT_FALSE(doc.Parse(std::string(300000, '[').c_str()));
}

}  // namespace
