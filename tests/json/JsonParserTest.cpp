#include <gtest/gtest.h>

#include <string>

#include "json/JsonTestSupport.h"

namespace {

struct ParseCase {
  const char* text;
  const char* written;  // null: the parse fails
};

void PrintTo(const ParseCase& c, std::ostream* os) { PrintCaseName(c.text, os); }

class ParsedText : public testing::TestWithParam<ParseCase> {};

TEST_P(ParsedText, ReadsAndWritesBack) {
  JsonDocument doc;
  const ParseCase& c = GetParam();
  ASSERT_EQ(doc.Parse(c.text), c.written != nullptr);
  if (c.written) {
    EXPECT_EQ(TextOf(*doc.Root()), c.written);
  } else {
    EXPECT_FALSE(doc.IsOK());
  }
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
                    ParseCase{"", nullptr}, ParseCase{"\f1", nullptr},
                    ParseCase{"\x01[]", nullptr}));

INSTANTIATE_TEST_SUITE_P(
    Scalars, ParsedText,
    testing::Values(ParseCase{"nullable", "null"}, ParseCase{"truest", "true"},
                    ParseCase{"1 2", "1"}, ParseCase{"{} garbage", "{}"}, ParseCase{"1e3", "1000"},
                    ParseCase{"1.0e3", "1000"}, ParseCase{"3000000000", "-2147483648"},
                    ParseCase{"-", "0"}, ParseCase{"007", "7"}, ParseCase{"1e", "1"},
                    ParseCase{"-.5", "-0.5"}, ParseCase{"1e4294967296", "1"},
                    ParseCase{"1e-2147483648", "0"}, ParseCase{"1e2147483648", "0"},
                    ParseCase{"+1", nullptr}, ParseCase{"1e400", "-2147483648"},
                    ParseCase{"0.1", "0.10000000000000001"}, ParseCase{"Null", nullptr}));

INSTANTIATE_TEST_SUITE_P(
    Strings, ParsedText,
    testing::Values(ParseCase{"\"\\q\"", "\"q\""}, ParseCase{"\"a\\/b\"", "\"a/b\""},
                    ParseCase{"\"\\b\\f\\n\\r\\t\"", "\"\\b\\f\\n\\r\\t\""},
                    ParseCase{"\"raw\x01\x7f\"", "\"raw\x01\x7f\""},
                    ParseCase{"\"caf\xC3\xA9\"", "\"caf\xC3\xA9\""},
                    ParseCase{"\"\\u0041\\u00\"x\"", "\"A\""},  // "\u00" takes `"x` along
                    ParseCase{"\"a\\u  41z\"", "\"aAz\""},      // the scanner skips blanks
                    ParseCase{"\"a\\uxyzwb\"", "\"ab\""},
                    ParseCase{"\"\\u0x41\"", "\"A\""},     // a "0x" prefix is read
                    ParseCase{"\"a\\u-001b\"", "\"ab\""},  // -1: bytes FF BF BF, dropped
                                                           // no hex digit: nothing
                    ParseCase{"\"a\\u0000b\"", "\"ab\""},  // the value 0: nothing
                    ParseCase{"\"x\\u0800y\"", "\"x\""},   // a zero lead byte ends the text
                    ParseCase{"\"abc", nullptr}, ParseCase{"\"a\\", nullptr},
                    ParseCase{"\"\\u12", nullptr}, ParseCase{"\"\\u123", nullptr}));

TEST(JsonParser, UnicodeEscapesLoseTheirLeadMark) {
  // The lead byte is built without 0xC0 or 0xE0, so "\u00E9" is 0x03 0xA9 and "\u20AC" is
  // 0x02 0x82 0xAC; the UTF-8 decoder then drops the unmarked lead and the stray continuations.
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("[\"\\u00E9\",\"\\u20AC\",\"\\u007A\"]"));
  std::u16string values;
  for (auto it = doc.Root()->ChildsBegin(); it != doc.Root()->ChildsEnd(); ++it)
    values += std::u16string((*it)->ValueString()) + u"|";
  EXPECT_EQ(values, std::u16string(u"\x0003|\x0002|z|"));
}

TEST(JsonParser, NumbersKeepTheirKindAndOnlyTheirField) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"i\":-12,\"f\":2.5,\"e\":1.5e-3,\"t\":true}"));
  JsonDocument::JsonNode* root = doc.Root();
  EXPECT_EQ(root->Node(u"i")->Type(), 2);
  EXPECT_EQ(root->ValueInt(u"i"), -12);
  EXPECT_EQ(root->ValueDouble(u"i"), 0.0);
  EXPECT_EQ(root->Node(u"f")->Type(), 3);
  EXPECT_EQ(root->ValueDouble(u"f"), 2.5);
  EXPECT_EQ(root->ValueInt(u"f"), 0);
  EXPECT_DOUBLE_EQ(root->ValueDouble(u"e"), 0.0015);
  EXPECT_EQ(root->Node(u"t")->Type(), 0);
  EXPECT_EQ(root->ValueInt(u"t"), 1);
}

TEST(JsonParser, FailureAndNullDropTheOldTree) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("[1]"));
  doc.SetDirty(true);
  EXPECT_FALSE(doc.Parse(nullptr));
  EXPECT_FALSE(doc.IsOK());
  EXPECT_FALSE(doc.Dirty());
}

std::string Nested(int depth, const char* open, const char* close, const char* inner = "") {
  std::string text;
  for (int i = 0; i < depth; ++i)
    text += open;
  text += inner;
  for (int i = 0; i < depth; ++i)
    text += close;
  return text;
}

TEST(JsonParser, NestingIsLimitedWithoutExhaustingTheStack) {
  const int limit = JsonDocument::kMaxParseDepth;
  JsonDocument doc;
  EXPECT_TRUE(doc.Parse(Nested(limit, "[", "]").c_str()));
  EXPECT_EQ(TextOf(*doc.Root()), Nested(limit, "[", "]"));
  EXPECT_TRUE(doc.Parse(Nested(limit, "{\"a\":", "}", "1").c_str()));
  EXPECT_FALSE(doc.Parse(Nested(limit + 1, "[", "]").c_str()));
  EXPECT_FALSE(doc.Parse(Nested(300000, "[", "]").c_str()));
  EXPECT_FALSE(doc.Parse(Nested(limit + 1, "{\"a\":", "}", "1").c_str()));
  EXPECT_FALSE(doc.Parse(Nested(300000, "{\"a\":", "}", "1").c_str()));
  EXPECT_FALSE(doc.Parse(std::string(300000, '[').c_str()));
}

}  // namespace
