#include <gtest/gtest.h>

#include "xml/XmlTestHelpers.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

XmlNode& Parsed(XmlDocument& document, const char* text) {
  EXPECT_TRUE(document.Parse(text)) << text;
  return *document.Root();
}

}  // namespace

TEST(XmlEditing, EraseRemovesOneAddressedNodeWithoutBacktracking) {
  struct Case {
    const char16_t* path;
    bool erased;
    const char* code;
  } cases[] = {
      {u"", false, nullptr},
      {u"/", false, nullptr},
      {u"a/", false, nullptr},
      {u"a?x=1?", true, "<r><a><x>2</x></a><a><x>1</x><b>3</b></a></r>"},
      {u"a?x=2?/b", false, nullptr},
      {u"a?x=1?/b", true, "<r><a><x>1</x></a><a><x>2</x></a><a><x>1</x><b>3</b></a></r>"},
      {u"a", true, "<r><a><x>2</x></a><a><x>1</x><b>3</b></a></r>"},
  };
  for (const Case& c : cases) {
    XmlDocument document;
    Parsed(document, "<r><a><x>1</x><b>1</b></a><a><x>2</x></a><a><x>1</x><b>3</b></a></r>");
    EXPECT_EQ(document.Erase(c.path), c.erased) << U8(c.path);
    if (c.code) {
      EXPECT_EQ(Code(document), c.code) << U8(c.path);
    }
  }
  XmlDocument document;
  Parsed(document, "<r><a><x>1</x></a><a><x>1</x><b/></a></r>");
  // The first a with x = 1 has no b; the later one is not tried.
  EXPECT_FALSE(document.Root()->EraseV(u"a?x=%d?/b", 1));
  EXPECT_FALSE(XmlDocument().Erase(u"a"));
}

TEST(XmlEditing, EraseTagIgnoresItsIndex) {
  XmlDocument document;
  XmlNode& root = Parsed(document, "<r><x>1</x><y/><x>2</x><x>3</x></r>");
  EXPECT_TRUE(root.EraseTag(u"x", 2));
  EXPECT_EQ(Code(root), "<r><y></y><x>2</x><x>3</x></r>");
  EXPECT_FALSE(root.EraseTag(u"z", 0));
  EXPECT_TRUE(root.EraseTag(u"x"));
  EXPECT_EQ(Code(root), "<r><y></y></r>");
  XmlNode& leaf = *root.Node(u"y");
  EXPECT_TRUE(leaf.EraseTag(u"x"));
  EXPECT_FALSE(leaf.EraseTag(u"x", 0));
}

TEST(XmlEditing, RemoveChildDeletesTheNodeWhereverItIs) {
  XmlDocument document;
  XmlNode& root = Parsed(document, "<r><a><b><c/></b></a><d/></r>");
  root.RemoveChild(root.Node(u"a/b/c"));
  root.RemoveChild(root.Node(u"d"));
  EXPECT_EQ(Code(root), "<r><a><b></b></a></r>");
  XmlDocument other;
  other.Create(u"o");
  root.RemoveChild(other.Root());
  EXPECT_EQ(Code(root), "<r><a><b></b></a></r>");
}

TEST(XmlEditing, AttributesAreErasedAndRenamedByTheirRules) {
  XmlDocument document;
  XmlNode& root = Parsed(document, "<r b=\"2\" c=\"3\"><bare/></r>");
  EXPECT_TRUE(root.Node(u"bare")->eraseAttribute(u"a"));
  EXPECT_FALSE(root.eraseAttribute(u"a"));
  EXPECT_TRUE(root.eraseAttribute(u"c"));
  EXPECT_FALSE(root.RenameAttribute(u"b", u"b"));
  EXPECT_FALSE(root.RenameAttribute(u"z", u"y"));
  root.setAttribute(u"c", u"3");
  EXPECT_FALSE(root.RenameAttribute(u"b", u"c"));
  EXPECT_TRUE(root.RenameAttribute(u"b", u"a"));
  EXPECT_EQ(Code(root), "<r a=\"2\" c=\"3\"><bare></bare></r>");
}

TEST(XmlEditing, RenameInternsInTheDocumentAndLeavesFreeNodesAlone) {
  XmlDocument document;
  XmlNode& root = Parsed(document, "<r><a/><b/></r>");
  root.Node(u"a")->Rename(u"b");
  EXPECT_EQ(&(*root.ChildsBegin())->Tag(), &(*root.ReverseChildsBegin())->Tag());
  XmlNode loose(nullptr, u"free", -1);
  loose.Rename(u"other");
  EXPECT_EQ(U8(loose.Tag()), "free");
}

TEST(XmlEditing, GroupingAppendsToExistingLists) {
  XmlDocument document;
  XmlNode& root = Parsed(document, "<r><c/><b/><c/></r>");
  std::map<LqWString, std::list<XmlNode*>> groups;
  groups[LqWString(u"c")].push_back(&root);
  root.ChildListGroupedByName(groups);
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(U8(groups.begin()->first), "b");
  const std::list<XmlNode*>& c = groups[LqWString(u"c")];
  ASSERT_EQ(c.size(), 3u);
  EXPECT_EQ(c.front(), &root);
}

TEST(XmlEditing, FixOrderNodesNumbersEveryLevelFromZero) {
  XmlDocument document;
  XmlNode& root = Parsed(document, "<r><a order=\"9\"><x/><y/><z/></a><b><x/></b></r>");
  root.fixOrderNodes();
  EXPECT_EQ(Code(root),
            "<r><a order=\"0\"><x order=\"0\"></x><y order=\"1\"></y><z order=\"2\"></z></a>"
            "<b order=\"1\"><x order=\"0\"></x></b></r>");
}

TEST(XmlEditing, SearchesTreatMinusOneAsAbsent) {
  XmlDocument document;
  XmlNode& root = Parsed(document, "<r k=\"1\"><a k=\"-1\"/><b k=\"2\"><c k=\"1\"/></b><d/></r>");
  std::vector<const XmlNode*> found{&root};
  EXPECT_TRUE(root.searchNodeByAttributeName(found, u"k"));
  ASSERT_EQ(found.size(), 4u);
  EXPECT_EQ(found[1], &root);
  EXPECT_EQ(found[2], root.Node(u"b"));
  EXPECT_EQ(found[3], root.Node(u"b/c"));
  found.clear();
  EXPECT_TRUE(root.searchNodeByAttributeNameAndValue(found, u"k", u"1"));
  EXPECT_EQ(found.size(), 2u);
  EXPECT_FALSE(root.searchNodeByAttributeNameAndValue(found, u"k", u"-1"));
  EXPECT_FALSE(root.Node(u"d")->searchNodeByAttributeName(found, u"k"));
  EXPECT_EQ(found.size(), 2u);
}

TEST(XmlEditing, NodesCompareByTheirTextForm) {
  XmlDocument first;
  XmlDocument second;
  XmlNode& a = Parsed(first, "<r y=\"2\" x=\"1\"><e></e></r>");
  XmlNode& b = Parsed(second, "<r x=\"1\" y=\"2\"><e/></r>");
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a != b);
  b.Node(u"e")->SetValue(u" ");
  EXPECT_TRUE(a != b);
  a = b;
  EXPECT_TRUE(a == b);
  EXPECT_EQ(&a.Tag(), first.Tag(u"r", -1));
}
