#include <gtest/gtest.h>

#include "xml/XmlTestHelpers.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

// A document and the root of the text it last parsed.
class XmlEditing : public ::testing::Test {
 protected:
  XmlNode& Parsed(const char* text) {
    EXPECT_TRUE(document.Parse(text)) << text;
    return *document.Root();
  }
  XmlDocument document;
};

}  // namespace

TEST_F(XmlEditing, EraseRemovesOneAddressedNodeWithoutBacktracking) {
  const char* source = "<r><a><x>1</x></a><a><x>2</x><b/></a><a><x>1</x><b/></a></r>";
  struct Case {
    const char16_t* path;
    const char* code;  // null: false, and nothing removed
  } cases[] = {
      {u"", nullptr},
      {u"/", nullptr},
      {u"a/", nullptr},
      {u"a?x", nullptr},
      {u"a?x=3?", nullptr},
      // The first a with x = 1 has no b; the later one is not tried.
      {u"a?x=1?/b", nullptr},
      {u"a?x=2?/b", "<r><a><x>1</x></a><a><x>2</x></a><a><x>1</x><b></b></a></r>"},
      {u"a?x=2?", "<r><a><x>1</x></a><a><x>1</x><b></b></a></r>"},
      {u"a", "<r><a><x>2</x><b></b></a><a><x>1</x><b></b></a></r>"},
  };
  for (const Case& c : cases) {
    const std::string before = Code(Parsed(source));
    EXPECT_EQ(document.Erase(c.path), c.code != nullptr) << Utf8Of(c.path);
    EXPECT_EQ(Code(document), c.code ? c.code : before) << Utf8Of(c.path);
  }
  EXPECT_TRUE(Parsed(source).EraseV(u"a?x=%d?/b", 2));
  EXPECT_FALSE(document.Root()->HasNode(u"a?x=2?/b"));
  EXPECT_FALSE(XmlDocument().Erase(u"a"));
}

TEST_F(XmlEditing, EraseTagIgnoresItsIndex) {
  XmlNode& root = Parsed("<r><x>1</x><y/><x>2</x><x>3</x></r>");
  EXPECT_TRUE(root.EraseTag(u"x", 2));
  EXPECT_EQ(Code(root), "<r><y></y><x>2</x><x>3</x></r>");
  EXPECT_FALSE(root.EraseTag(u"z", 0));
  EXPECT_TRUE(root.EraseTag(u"x"));
  EXPECT_EQ(Code(root), "<r><y></y></r>");
  EXPECT_TRUE(root.Node(u"y")->EraseTag(u"x"));
  EXPECT_FALSE(root.Node(u"y")->EraseTag(u"x", 0));
  // The tag may be the text of a child that goes.
  XmlNode& named = Parsed("<r><x>x</x><y/><x>2</x></r>");
  EXPECT_TRUE(named.EraseTag(named.Node(u"x")->Value()));
  EXPECT_EQ(Code(named), "<r><y></y></r>");
}

TEST_F(XmlEditing, RemoveChildDeletesTheNodeWhereverItIs) {
  XmlNode& root = Parsed("<r><a><b><c/></b></a><d/></r>");
  root.RemoveChild(root.Node(u"a/b/c"));
  root.RemoveChild(root.Node(u"d"));
  XmlDocument other;
  other.Create(u"o");
  root.RemoveChild(other.Root());
  EXPECT_EQ(Code(root), "<r><a><b></b></a></r>");
}

TEST_F(XmlEditing, AttributesAreSetErasedAndRenamedByTheirRules) {
  XmlNode& root = Parsed("<r b=\"2\" c=\"1\"><bare/></r>");
  root.setAttribute(u"", u"x");
  root.setAttribute(u"n", nullptr);
  root.setAttribute(u"c", u"3");
  EXPECT_TRUE(root.HasAttribute(u"n"));
  EXPECT_EQ(Utf8Of(root.getAttribute(u"c", u"d")), "3");
  EXPECT_EQ(Utf8Of(root.getAttribute(u"z", nullptr)), "");
  EXPECT_TRUE(root.Node(u"bare")->eraseAttribute(u"a"));
  EXPECT_FALSE(root.eraseAttribute(u"a"));
  EXPECT_FALSE(root.RenameAttribute(u"b", u"b"));
  EXPECT_FALSE(root.RenameAttribute(u"z", u"y"));
  EXPECT_FALSE(root.RenameAttribute(u"b", u"c"));
  EXPECT_TRUE(root.RenameAttribute(u"b", u"a"));
  EXPECT_TRUE(root.eraseAttribute(u"n"));
  // The new name may be the text of the entry that goes.
  root.setAttribute(u"k", u"z");
  EXPECT_TRUE(root.RenameAttribute(u"k", std::prev(root.attributesEnd())->second));
  EXPECT_EQ(Code(root), "<r a=\"2\" c=\"3\" z=\"z\"><bare></bare></r>");
}

TEST_F(XmlEditing, GroupingAppendsToExistingLists) {
  XmlNode& root = Parsed("<r><c/><b/><c/></r>");
  std::map<LqWString, std::list<XmlNode*>> groups;
  groups[LqWString(u"c")].push_back(&root);
  root.ChildListGroupedByName(groups);
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(Utf8Of(groups.begin()->first), "b");
  const std::list<XmlNode*> c{&root, *root.ChildsBegin(), *root.ReverseChildsBegin()};
  EXPECT_EQ(groups[LqWString(u"c")], c);
}

TEST_F(XmlEditing, FixOrderNodesNumbersEveryLevelFromZero) {
  XmlNode& root = Parsed("<r><a order=\"9\"><x/><y/><z/></a><b><x/></b></r>");
  root.fixOrderNodes();
  EXPECT_EQ(Code(root),
            "<r><a order=\"0\"><x order=\"0\"></x><y order=\"1\"></y><z order=\"2\"></z></a>"
            "<b order=\"1\"><x order=\"0\"></x></b></r>");
}

TEST_F(XmlEditing, SearchesTreatMinusOneAsAbsent) {
  XmlNode& root = Parsed("<r k=\"1\"><a k=\"-1\"/><b k=\"2\"><c k=\"1\"/></b><d/></r>");
  using Found = std::vector<const XmlNode*>;
  Found found{&root};
  EXPECT_TRUE(root.searchNodeByAttributeName(found, u"k"));
  EXPECT_EQ(found, (Found{&root, &root, root.Node(u"b"), root.Node(u"b/c")}));
  found.clear();
  EXPECT_TRUE(root.searchNodeByAttributeNameAndValue(found, u"k", u"1"));
  EXPECT_FALSE(root.searchNodeByAttributeNameAndValue(found, u"k", u"-1"));
  EXPECT_FALSE(root.Node(u"d")->searchNodeByAttributeName(found, u"k"));
  EXPECT_EQ(found, (Found{&root, root.Node(u"b/c")}));
}

TEST_F(XmlEditing, NodesCompareByTheirTextForm) {
  XmlNode& a = Parsed("<r y=\"2\" x=\"1\"><e></e></r>");
  XmlDocument second;
  ASSERT_TRUE(second.Parse("<r x=\"1\" y=\"2\"><e/></r>"));
  XmlNode& b = *second.Root();
  // Only the end tag leaves a value object; an empty one writes as none.
  EXPECT_NE(&a.Node(u"e")->Value(), &XmlNode::m_emptyValue);
  EXPECT_EQ(&b.Node(u"e")->Value(), &XmlNode::m_emptyValue);
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  b.Node(u"e")->SetValue(u" ");
  EXPECT_TRUE(a != b);
}
