#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include <lqtools/text/StdRuntimeException.h>

#include "json/JsonTestSupport.h"

namespace {

using JsonNode = JsonDocument::JsonNode;

const char kTree[] =
    "{\"a\":{\"b\":1,\"id\":7},\"list\":{\"k\":\"x\",\"id\":7,\"on\":true,\"f\":0.5},"
    "\"arr\":[{\"x\":1},{\"x\":2}],\"a/b\":3,\"s\":\"text\"}";
const char kTreeWritten[] =
    "{\"a\": {\"b\": 1,\"id\": 7},\"list\": {\"k\": \"x\",\"id\": 7,\"on\": true,\"f\": 0.5},"
    "\"arr\": [{\"x\": 1},{\"x\": 2}],\"a/b\": 3,\"s\": \"text\"}";

struct PathCase {
  const char16_t* path;
  const char* found;  // the text of the node found; null: none
};

void PrintTo(const PathCase& c, std::ostream* os) { PrintCaseName(c.path, os); }

class PathLookup : public testing::TestWithParam<PathCase> {};

TEST_P(PathLookup, FindsTheDocumentedNode) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse(kTree));
  const JsonNode* node = doc.Root()->Node(GetParam().path);
  if (!GetParam().found) {
    EXPECT_EQ(node, nullptr);
  } else {
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(TextOf(*node), GetParam().found);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Paths, PathLookup,
    testing::Values(
        PathCase{u"///", kTreeWritten}, PathCase{u"", kTreeWritten}, PathCase{u"/a/b", "\"b\": 1"},
        PathCase{u"a/b/", "\"b\": 1"}, PathCase{u"a/c", nullptr}, PathCase{u"A", nullptr},
        PathCase{u"a?b", nullptr}, PathCase{u"a?", nullptr}, PathCase{u"a?b=1", nullptr},
        PathCase{u"a/b/c", nullptr},
        // The filter returns the matching grandchild and drops the rest.
        PathCase{u"list?id=7?", "\"id\": 7"}, PathCase{u"list?id=7?/nothing", "\"id\": 7"},
        PathCase{u"list?k=x?", "\"k\": \"x\""}, PathCase{u"list?on=true?", "\"on\": true"},
        // A filter that matches nothing has no effect.
        PathCase{u"list?id=8?/k", "\"k\": \"x\""},
        PathCase{u"a?id=9?", "\"a\": {\"b\": 1,\"id\": 7}"}, PathCase{u"a?id=9?/b", "\"b\": 1"},
        // A float compares by the low 32 bits of its pattern: 0.5 is 0x3FE0000000000000.
        PathCase{u"list?f=0?", "\"f\": 0.5"}, PathCase{u"list?f=0.5?/k", "\"k\": \"x\""},
        // Without '=' the name runs to the segment's end minus one.
        PathCase{u"list?k?/on", "\"on\": true"}, PathCase{u"a?id?/b", "\"b\": 1"},
        // Array elements have no name: only an empty tag reaches them, and only the first.
        PathCase{u"arr/?x=2?", "{\"x\": 1}"}, PathCase{u"a/b?x=1?", "\"b\": 1"},
        PathCase{u"a/b", "\"b\": 1"}, PathCase{u"a\\/b", nullptr}));

TEST(JsonNodePaths, EmptyTagReachesArrayElementsAndNodeVFormats) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"arr\":[{\"x\":1},{\"x\":2}]}"));
  JsonNode* arr = doc.Root()->Node(u"arr");
  EXPECT_EQ(TextOf(*arr->Node(u"?x=1?")), "\"x\": 1");
  EXPECT_EQ(arr->Node(u"?x=2?"), *arr->ChildsBegin());  // no match: the first element
  EXPECT_EQ(doc.Root()->NodeV(u"%s/?x=%d?", u"arr", 1), arr->Node(u"?x=1?"));
  EXPECT_THROW(doc.Root()->Node(nullptr), StdRuntimeException);
}

TEST(JsonNodePaths, GettersReturnSentinelsWhenAbsent) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"s\":\"v\",\"i\":4}"));
  const JsonNode* root = doc.Root();
  EXPECT_EQ(root->ValueInt(u"missing"), INT32_MIN);
  EXPECT_EQ(root->ValueDouble(u"missing"), DBL_MIN);
  EXPECT_EQ(root->ValueString(u"missing", u"dflt"), u"dflt");
  EXPECT_TRUE(root->ValueString(u"missing", nullptr).IsEmpty());
  EXPECT_EQ(root->ValueString(u"s", u"dflt"), u"v");
  EXPECT_TRUE(root->ValueString(u"i", u"dflt").IsEmpty());
}

struct ConstructCase {
  int type;
  double value;
  int storedType, intValue;
  double doubleValue;
};

TEST(JsonNodeConstruction, StoresOnlyTheFieldOfItsType) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const ConstructCase cases[] = {
      {0, 0.0, 0, 0, 0.0},   {0, -0.5, 0, 1, 0.0},        {0, nan, 0, 1, 0.0},
      {2, -7.9, 2, -7, 0.0}, {2, 3e9, 2, INT32_MIN, 0.0}, {2, nan, 2, INT32_MIN, 0.0},
      {3, 2.5, 3, 0, 2.5},   {1, 9.0, 1, 0, 0.0},         {7, 1.0, 6, 0, 0.0},
      {-1, 1.0, 6, 0, 0.0},  {5, 1.0, 5, 0, 0.0}};
  for (const ConstructCase& c : cases) {
    JsonNode node(c.type, c.value, u"ignored");
    EXPECT_EQ(node.Type(), c.storedType) << c.type;
    EXPECT_EQ(node.ValueInt(), c.intValue) << c.type;
    EXPECT_EQ(node.ValueDouble(), c.doubleValue) << c.type;
    EXPECT_TRUE(node.ValueString().IsEmpty()) << c.type;
  }
  EXPECT_EQ(JsonNode(4, 0.0, u"kept").ValueString(), u"kept");
  EXPECT_TRUE(JsonNode(4, 0.0, nullptr).ValueString().IsEmpty());
}

TEST(JsonNodeConstruction, CopiesAreDeepAndIndependent) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"a\":[1,{\"b\":\"x\"}],\"c\":2.5}"));
  JsonNode copy(*doc.Root());
  copy.Node(u"a")->SetValue(3);
  EXPECT_EQ(TextOf(copy), "{\"a\": [1,{\"b\": \"x\"},3],\"c\": 2.5}");
  EXPECT_EQ(TextOf(*doc.Root()), "{\"a\": [1,{\"b\": \"x\"}],\"c\": 2.5}");
  JsonNode assigned(5);
  assigned.SetValue(9);
  assigned = *doc.Root();
  JsonNode& same = assigned;
  assigned = same;
  EXPECT_EQ(TextOf(assigned), TextOf(*doc.Root()));
}

TEST(JsonNodeValues, SettersWithoutPathFollowTheNodeType) {
  JsonNode array(5), integer(2), real(3), boolean(0), text(4), null(1);
  for (JsonNode* node : {&array, &integer, &real, &boolean, &text, &null}) {
    node->SetValue(5);
    node->SetValue(0.25);
    node->SetValue(true);
    node->SetValue(u"w");
    node->SetValue("n\xC3\xA9");
    node->SetNullValue();
  }
  EXPECT_EQ(TextOf(array), "[5,0.25,true,\"w\",\"n\xC3\xA9\",null]");
  EXPECT_EQ(TextOf(integer), "5");
  EXPECT_EQ(TextOf(real), "0.25");
  EXPECT_EQ(TextOf(boolean), "true");
  EXPECT_EQ(TextOf(text), "\"n\xC3\xA9\"");
  EXPECT_EQ(TextOf(null), "null");
  text.SetValue(static_cast<const char16_t*>(nullptr));
  EXPECT_TRUE(text.ValueString().IsEmpty());
}

TEST(JsonNodeValues, PathSettersKeepTheirAsymmetries) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"n\":null,\"s\":\"old\",\"d\":1.5,\"b\":false,\"o\":{}}"));
  JsonNode* root = doc.Root();
  root->SetValue(u"k", 5);
  EXPECT_EQ(root->ValueInt(u"k"), 5);
  root->SetValue(u"k", 7);
  EXPECT_EQ(root->ValueInt(u"k"), 1);  // an existing integer member keeps only 0 or 1
  root->SetValue(u"s", u"new");
  root->SetValue(u"d", 2.5);
  root->SetValue(u"b", true);
  root->SetValue(u"s", 3);  // a mismatch changes nothing
  root->SetNullValue(u"n");
  root->SetNullValue(u"s");         // beside a non-null member: a second member of the name
  root->SetValue(u"o/x", u"deep");  // missing: a member named by the whole path
  EXPECT_EQ(TextOf(*root),
            "{\"n\": null,\"s\": \"new\",\"d\": 2.5,\"b\": true,\"o\": {},\"k\": 1,"
            "\"s\": null,\"o/x\": \"deep\"}");
  JsonNode array(5);
  array.SetValue(u"k", 1);
  array.SetNullValue(u"k");
  EXPECT_EQ(array.Size(), 0);
}

TEST(JsonNodeChildren, NewChildAcceptsOnlyContainers) {
  JsonNode root(6);
  EXPECT_EQ(root.NewChild(2), nullptr);
  EXPECT_EQ(root.NewChild(u"x", 4), nullptr);
  EXPECT_EQ(root.NewChild(5)->Type(), 5);
  EXPECT_EQ(root.NewChild(u"o", 6)->String(), u"o");
  JsonNode* narrow = root.NewChild("\xC3\xA9", 5);  // this form always makes an object
  EXPECT_EQ(narrow->Type(), 6);
  EXPECT_EQ(narrow->String(), u"\u00e9");
  EXPECT_EQ(root.Size(), 3);
  EXPECT_THROW(root.NewChild(static_cast<const char16_t*>(nullptr), 5), StdRuntimeException);
  EXPECT_EQ(root.Size(), 3);
}

TEST(JsonNodeChildren, RemoveChildDeletesOnlyItsOwnChildren) {
  JsonNode root(5);
  JsonNode* first = root.NewChild(6);
  JsonNode stranger(6);
  root.RemoveChild(&stranger);
  root.RemoveChild(nullptr);
  EXPECT_EQ(root.Size(), 1);
  root.RemoveChild(first);
  EXPECT_EQ(root.Size(), 0);
  EXPECT_THROW(root.AddChild(nullptr), StdRuntimeException);
  EXPECT_THROW(root.SetString(static_cast<const char*>(nullptr)), StdRuntimeException);
}

TEST(JsonNodeChildren, ResetKeepsTheNodeItself) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"a\":1,\"b\":2}"));
  JsonNode* root = doc.Root();
  root->SetString("named");
  root->Reset();
  EXPECT_EQ(root->Size(), 0);
  EXPECT_EQ(root->Type(), 6);
  EXPECT_EQ(root->String(), u"named");
}

TEST(JsonNodeChildren, DeepHandBuiltTreesAreCopiedAndFreed) {
  JsonNode root(5);
  JsonNode* node = &root;
  for (int i = 0; i < 200000; ++i)
    node = node->NewChild(5);
  JsonNode copy(root);
  EXPECT_EQ(copy.Size(), 1);
}

}  // namespace
