#include <gtest/gtest.h>

#include <cfloat>
#include <limits>

#include <lqtools/text/StdRuntimeException.h>

#include "json/JsonTestSupport.h"

namespace {

using JsonNode = JsonDocument::JsonNode;

const char kTree[] =
    "{\"a\":{\"b\":1,\"id\":7},\"list\":{\"k\":\"x\",\"id\":7,\"on\":true,\"f\":0.5},"
    "\"arr\":[{\"x\":1},{\"x\":2}],\"a/b\":3}";

struct PathCase {
  const char16_t* path;
  const char* found;  // the text of the node found; null: none; empty: the root itself
};

void PrintTo(const PathCase& c, std::ostream* os) { PrintCaseName(c.path, os); }

class PathLookup : public testing::TestWithParam<PathCase> {};

TEST_P(PathLookup, FindsTheDocumentedNode) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse(kTree));
  const char* found = GetParam().found;
  const std::string expected = !found ? "(none)" : *found ? found : TextOf(doc.Root());
  EXPECT_EQ(TextOf(doc.Root()->Node(GetParam().path)), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, PathLookup,
    testing::Values(
        PathCase{u"///", ""}, PathCase{u"", ""}, PathCase{u"a/b/", "\"b\": 1"},
        PathCase{u"a/c", nullptr}, PathCase{u"A", nullptr}, PathCase{u"a?b", nullptr},
        PathCase{u"a?", nullptr}, PathCase{u"a?b=1", nullptr}, PathCase{u"a/b/c", nullptr},
        // A slash always separates: neither "/a/b" nor an escape reaches the member named "a/b".
        PathCase{u"/a/b", "\"b\": 1"}, PathCase{u"a\\/b", nullptr},
        // The filter returns the matching grandchild and drops the rest.
        PathCase{u"list?id=7?", "\"id\": 7"}, PathCase{u"list?id=7?/nothing", "\"id\": 7"},
        PathCase{u"list?k=x?", "\"k\": \"x\""}, PathCase{u"list?on=true?", "\"on\": true"},
        // A filter that matches nothing has no effect.
        PathCase{u"list?id=8?/k", "\"k\": \"x\""},
        PathCase{u"a?id=9?", "\"a\": {\"b\": 1,\"id\": 7}"},
        // A float compares by the low 32 bits of its pattern: 0.5 is 0x3FE0000000000000.
        PathCase{u"list?f=0?", "\"f\": 0.5"}, PathCase{u"list?f=0.5?/k", "\"k\": \"x\""},
        // Without '=' the name runs to the segment's end minus one.
        PathCase{u"list?k?/on", "\"on\": true"},
        // Array elements have no name: only an empty tag reaches them, and only the first.
        PathCase{u"arr/?x=1?", "\"x\": 1"}, PathCase{u"arr/?x=2?", "{\"x\": 1}"}));

TEST(JsonNodePaths, NodeVFormatsFirstAndGettersFallBackToSentinels) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse(kTree));
  JsonNode* root = doc.Root();
  EXPECT_EQ(root->NodeV(u"%s/?x=%d?", u"arr", 1), root->Node(u"arr/?x=1?"));
  EXPECT_EQ(root->ValueInt(u"missing"), INT32_MIN);
  EXPECT_EQ(root->ValueDouble(u"missing"), DBL_MIN);
  EXPECT_EQ(root->ValueString(u"missing", u"dflt"), u"dflt");
  EXPECT_TRUE(root->ValueString(u"missing", nullptr).IsEmpty());
  EXPECT_EQ(root->ValueString(u"list/k", u"dflt"), u"x");
  EXPECT_TRUE(root->ValueString(u"a/b", u"dflt").IsEmpty());  // found, but not a string
}

TEST(JsonNodeConstruction, StoresOnlyTheFieldOfItsType) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    int type;
    double value;
    int storedType, intValue;
    double doubleValue;
  } cases[] = {{0, 0.0, 0, 0, 0.0},   {0, -0.5, 0, 1, 0.0},        {0, nan, 0, 1, 0.0},
               {2, -7.9, 2, -7, 0.0}, {2, 3e9, 2, INT32_MIN, 0.0}, {2, nan, 2, INT32_MIN, 0.0},
               {3, 2.5, 3, 0, 2.5},   {1, 9.0, 1, 0, 0.0},         {7, 1.0, 6, 0, 0.0},
               {-1, 1.0, 6, 0, 0.0},  {5, 1.0, 5, 0, 0.0}};
  for (const auto& c : cases) {
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
  const std::string original = TextOf(doc.Root());
  JsonNode copy(*doc.Root());
  copy.Node(u"a")->SetValue(3);
  EXPECT_EQ(TextOf(&copy), "{\"a\": [1,{\"b\": \"x\"},3],\"c\": 2.5}");
  EXPECT_EQ(TextOf(doc.Root()), original);
  copy = *doc.Root();  // over a tree of its own
  JsonNode& same = copy;
  copy = same;
  EXPECT_EQ(TextOf(&copy), original);
}

TEST(JsonNodeValues, SettersWithoutPathFollowTheNodeType) {
  JsonNode all(5);
  for (int type : {5, 2, 3, 0, 4, 1})
    all.AddChild(new JsonNode(type));
  for (JsonNode* node : all.GetChilds()) {
    node->SetValue(5);
    node->SetValue(0.25);
    node->SetValue(true);
    node->SetValue(u"w");
    node->SetValue("n\xC3\xA9");
    node->SetNullValue();
  }
  EXPECT_EQ(TextOf(&all),
            "[[5,0.25,true,\"w\",\"n\xC3\xA9\",null],5,0.25,true,\"n\xC3\xA9\",null]");
  JsonNode text(4, 0.0, u"old");
  text.SetValue(static_cast<const char16_t*>(nullptr));
  EXPECT_TRUE(text.ValueString().IsEmpty());
}

TEST(JsonNodeValues, PathSettersKeepTheirAsymmetries) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"n\":null,\"s\":\"old\",\"i\":4,\"d\":1.5,\"b\":false,\"o\":{}}"));
  JsonNode* root = doc.Root();
  root->SetValue(u"k", 5);  // missing: a new member keeps the whole value
  root->SetValue(u"i", 7);  // an existing integer member keeps only 0 or 1
  root->SetValue(u"s", u"new");
  root->SetValue(u"d", 2.5);
  root->SetValue(u"b", true);
  root->SetValue(u"s", 3);  // a mismatch changes nothing
  root->SetNullValue(u"n");
  root->SetNullValue(u"s");         // beside a non-null member: a second member of the name
  root->SetValue(u"o/x", u"deep");  // missing: a member named by the whole path
  EXPECT_EQ(TextOf(root),
            "{\"n\": null,\"s\": \"new\",\"i\": 1,\"d\": 2.5,\"b\": true,\"o\": {},\"k\": 5,"
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
  root.NewChild(u"o", 6);
  root.NewChild("\xC3\xA9", 5);  // this form always makes an object
  EXPECT_EQ(TextOf(&root), "{[],\"o\": {},\"\xC3\xA9\": {}}");
}

TEST(JsonNodeChildren, RemoveChildAndResetDeleteOnlyOwnChildren) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"o\":{\"a\":1,\"b\":[2]}}"));
  JsonNode* o = doc.Root()->Node(u"o");
  JsonNode stranger(6);
  o->RemoveChild(&stranger);
  o->RemoveChild(nullptr);
  o->RemoveChild(o->Node(u"a"));
  EXPECT_EQ(TextOf(doc.Root()), "{\"o\": {\"b\": [2]}}");
  o->Reset();  // type and name stay
  EXPECT_EQ(TextOf(doc.Root()), "{\"o\": {}}");
}

TEST(JsonNodeChildren, NullPathChildOrNameThrowsAndAddsNothing) {
  JsonNode root(6);
  EXPECT_THROW(root.Node(nullptr), StdRuntimeException);
  EXPECT_THROW(root.AddChild(nullptr), StdRuntimeException);
  EXPECT_THROW(root.SetString(static_cast<const char*>(nullptr)), StdRuntimeException);
  EXPECT_THROW(root.NewChild(static_cast<const char16_t*>(nullptr), 5), StdRuntimeException);
  EXPECT_EQ(TextOf(&root), "{}");
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
