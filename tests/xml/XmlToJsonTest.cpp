// XmlNode::toJson: XML subtrees as JSON trees, checked through the JSON string writer.
#include <gtest/gtest.h>

#include <lqtools/json/JsonDocument.h>

#include "xml/XmlTestHelpers.h"

namespace {

std::string ToJson(const std::string& xml) {
  XmlDocument document;
  EXPECT_TRUE(document.Parse(("<root>" + xml + "</root>").c_str())) << xml;
  JsonDocument json;
  json.Create(6);
  for (auto c = document.Root()->ChildsBegin(); c != document.Root()->ChildsEnd(); ++c)
    (*c)->toJson(json.Root());
  std::u16string out;
  json.Root()->CreateJsonCode(out);
  return Utf8Of(LqWString(out.c_str()));
}

TEST(XmlToJson, ElementsBecomeMembersArraysAndStrings) {
  const struct {
    std::string xml;
    std::string json;
  } cases[] = {
      {"<a>1</a>", R"({"a": "1"})"},
      {"<a>T</a>", R"({"a": "T"})"},
      {"<a/>", R"({"a": ""})"},
      {"<a x=\"1\"><b>2</b></a>", R"({"a": {"b": "2","-x": "1"}})"},
      {"<a><b>1</b><b>2</b><c>3</c></a>", R"({"a": {"b": ["1","2"],"c": "3"}})"},
      {"<a>text<b>1</b></a>", R"({"a": {"b": "1"}})"},
      {"<a><c/><b/><c/></a>", R"({"a": {"b": "","c": ["",""]}})"},
      // A string node with attribute members is written as its string alone.
      {"<a x=\"1\">v</a>", R"({"a": "v"})"},
      {"<a><b><c>1</c></b><b x=\"y\"/></a>", R"({"a": {"b": [{"c": "1"},""]}})"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(ToJson(c.xml), c.json) << c.xml;
}

TEST(XmlToJson, ArrayElementsAreUnnamed) {
  XmlDocument document;
  ASSERT_TRUE(document.Parse("<a><b>1</b><b>2</b></a>"));
  JsonDocument json;
  json.Create(6);
  document.Root()->toJson(json.Root());
  JsonDocument::JsonNode* array = json.Root()->Node(u"a/b");
  ASSERT_NE(array, nullptr);
  ASSERT_EQ(array->Type(), 5);
  for (auto e = array->ChildsBegin(); e != array->ChildsEnd(); ++e) {
    EXPECT_EQ((*e)->Type(), 4);
    EXPECT_EQ(Utf8Of((*e)->String()), "");
  }
}

TEST(XmlToJson, StringNodeWithAttributesKeepsThemAsMembers) {
  XmlDocument document;
  ASSERT_TRUE(document.Parse("<r><a x=\"1\" y=\"2\">v</a></r>"));
  JsonDocument json;
  json.Create(6);
  document.Root()->Node(u"a")->toJson(json.Root());
  JsonDocument::JsonNode* a = json.Root()->Node(u"a");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->Type(), 4);
  EXPECT_EQ(a->Size(), 2);
  EXPECT_EQ(Utf8Of(a->Node(u"-y")->ValueString()), "2");
}

}  // namespace
