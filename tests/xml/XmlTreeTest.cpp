#include <gtest/gtest.h>

#include <new>

#include "xml/XmlTestHelpers.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

// A document with the root "r".
class XmlTree : public ::testing::Test {
 protected:
  XmlTree() {
    document.Create(u"r");
    root = document.Root();
  }
  // <r><a><b>1</b></a><item><id>3</id></item><item><id>7</id></item><item><id>7</id><x>x2</x>
  // </item><p><q><s>deep</s></q></p><s><id>7?</id></s></r>, built without the parser.
  void BuildSample() {
    root->NewChild(u"a")->SetValue(u"b", 1);
    for (const char16_t* id : {u"3", u"7", u"7"})
      root->NewChild(u"item")->SetValue(u"id", id);
    (*root->ReverseChildsBegin())->SetValue(u"x", u"x2");
    root->NewChild(u"p")->NewChild(u"q")->SetValue(u"s", u"deep");
    root->NewChild(u"s")->SetValue(u"id", u"7?");
  }
  XmlDocument document;
  XmlNode* root;
};

}  // namespace

TEST_F(XmlTree, PathLookupFollowsTheStepRules) {
  BuildSample();
  struct Case {
    const char16_t* path;
    const XmlNode* expected;
  } cases[] = {
      {u"", root},
      {u"///", root},
      {u"a/", root->Node(u"a")},
      {u"a//b", root->Node(u"a/b")},
      {u"a?b", nullptr},
      {u"a?b=1", nullptr},
      {u"a?b?", root->Node(u"a")},
      {u"a?b=1?", root->Node(u"a")},
      {u"a?b=2?", nullptr},
      {u"item?id=7?", *std::next(root->ChildsBegin(), 2)},
      // No backtracking: the first item with id 7 has no x, the later one does.
      {u"item?id=7?/x", nullptr},
      {u"item?x?/x", (*std::next(root->ChildsBegin(), 3))->Node(u"x")},
      {u"missing", nullptr},
      // A condition may hold '/'.
      {u"p?q/s=deep?", root->Node(u"p")},
      // Stray text behind the closing '?' joins the compared text, less its last unit.
      {u"item?id=7?z", nullptr},
      {u"s?id=7?z", root->Node(u"s")},
  };
  for (const Case& c : cases)
    EXPECT_EQ(root->Node(c.path), c.expected) << Utf8Of(c.path);
  EXPECT_EQ(document.Node(u""), root);
  EXPECT_EQ(XmlDocument().Node(u""), nullptr);
}

TEST_F(XmlTree, FormattedPathsUseTheBoundedFormatter) {
  BuildSample();
  EXPECT_EQ(root->NodeV(u"item?id=%d?/id", 3), root->Node(u"item/id"));
  EXPECT_EQ(Utf8Of(root->ValueV(u"%s/%hs", u"a", "b")), "1");
  std::u16string longPath(1100, u'a');
  EXPECT_EQ(root->NodeV(u"%s", longPath.c_str()), nullptr);
  EXPECT_EQ(Utf8Of(root->ValueV(u"%s", longPath.c_str())), "");
  root->NewChild(u"50%");
  EXPECT_TRUE(root->HasNode(u"50%%"));
  EXPECT_FALSE(root->HasNode(u"50%"));
  EXPECT_FALSE(root->HasNode(u"a%d"));
}

TEST_F(XmlTree, TypedGettersConvertLikeTheRuntime) {
  struct Case {
    const char16_t* value;
    int i;
    int32_t h;
    uint32_t hPath;
    double d;
    bool b;
  } cases[] = {
      {u"T", 0, 0, 0, 0.0, true},
      {u"true", 0, 0, 0, 0.0, false},
      {u"12abc", 12, 0x12ABC, 0x12ABC, 12.0, false},
      {u"FFFFFFFF", 0, INT32_MAX, 0xFFFFFFFFu, 0.0, false},
      {u"-2.5e1", -2, -2, 0xFFFFFFFEu, -25.0, false},
      {u"", 0, 0, 0, 0.0, false},
  };
  for (const Case& c : cases) {
    root->SetValue(u"v", c.value);
    const XmlNode* v = root->Node(u"v");
    EXPECT_EQ(v->iValue(), c.i) << Utf8Of(c.value);
    EXPECT_EQ(v->hValue(), c.h) << Utf8Of(c.value);
    EXPECT_EQ(root->hValue(u"v", 5), c.hPath) << Utf8Of(c.value);
    EXPECT_EQ(v->dValue(), c.d) << Utf8Of(c.value);
    EXPECT_EQ(v->bValue(), c.b) << Utf8Of(c.value);
  }
  EXPECT_EQ(root->iValue(u"none", 42), 42);
  EXPECT_EQ(root->hValue(u"none", -1), 0xFFFFFFFFu);
  EXPECT_EQ(root->dValue(u"none", 1.5), 1.5);
  EXPECT_TRUE(root->bValue(u"none", true));
  EXPECT_FALSE(root->bValue(u"none", u"yes"));
  EXPECT_TRUE(root->bValue(u"v", u""));
  EXPECT_EQ(std::string(root->sValue(u"none", "d")), "d");
  EXPECT_EQ(Utf8Of(root->Value(u"none", u"d")), "d");
  // The document's default counts only while it has no root.
  EXPECT_EQ(Utf8Of(document.Value(u"none", u"d")), "");
  EXPECT_EQ(Utf8Of(XmlDocument().Value(u"none", u"d")), "d");
}

TEST_F(XmlTree, SetValueStoresTextForEveryType) {
  root->SetValue(u"i", -7);
  root->SetValue(u"u", 4000000000u);
  root->SetValue(u"l", 5000000000L);
  root->SetValue(u"d", 2.5);
  root->SetValue(u"t", true);
  root->SetValue(u"f", false);
  root->SetValue("n", "\xC3\xA9");
  root->SetValue(u"s", LqString("x"));
  root->SetValue(u"w", LqWString(u"y"));
  root->SetValue(u"z", static_cast<const char16_t*>(nullptr));
  root->SetValue(u"x", static_cast<const XmlNode*>(nullptr));
  root->SetValue(u"", 5);
  EXPECT_EQ(Code(document),
            "<r><i>-7</i><u>4000000000</u><l>5000000000</l><d>2.500000</d><t>T</t><f>F</f>"
            "<n>\xC3\xA9</n><s>x</s><w>y</w><z></z>5</r>");
  EXPECT_NE(&root->Node(u"z")->Value(), &XmlNode::m_emptyValue);
}

TEST_F(XmlTree, SetValueByPathMakesOneChildNamedByTheWholePath) {
  root->SetValue(u"a/b", 1);
  root->SetValue(u"a/b", 2);
  EXPECT_EQ(Code(document), "<r><a/b>1</a/b><a/b>2</a/b></r>");
  EXPECT_EQ(root->Node(u"a/b"), nullptr);
}

TEST_F(XmlTree, ChildrenGoInFrontOfTheirAnchorOrNowhere) {
  XmlNode* b = root->NewChild(u"b");
  // A fresh node has no value object and hands out the shared empty text.
  EXPECT_EQ(&b->Value(), &XmlNode::m_emptyValue);
  root->NewChild(u"a", b);
  XmlDocument other;
  other.Create(u"o");
  XmlNode* stranger = other.Root()->NewChild(u"s");
  EXPECT_EQ(root->NewChild(u"x", stranger), nullptr);
  // Not taken, so it stays with this frame; a tree that took it would free it twice.
  XmlNode loose(&document, u"n", -1);
  root->AddChild(&loose, stranger);
  root->AddChild(nullptr);
  EXPECT_EQ(Code(document), "<r><a></a><b></b></r>");
}

TEST_F(XmlTree, TagsAreInternedPerDocumentAlsoOnRename) {
  XmlDocument other;
  other.Create(u"r");
  XmlNode* a = root->NewChild(u"a");
  EXPECT_EQ(&root->NewChild(u"a")->Tag(), &a->Tag());
  EXPECT_NE(&root->Tag(), &other.Root()->Tag());
  EXPECT_EQ(document.Tag(u"a", 99), &a->Tag());
  root->NewChild(u"b")->Rename(u"a");
  EXPECT_EQ(&(*root->ReverseChildsBegin())->Tag(), &a->Tag());
  // A free-standing node keeps a tag of its own, cut to the length given, and isn't renamed.
  XmlNode loose(nullptr, u"abc", 2);
  loose.Rename(u"other");
  EXPECT_EQ(Utf8Of(loose.Tag()), "ab");
  EXPECT_EQ(Utf8Of(XmlNode(nullptr, u"abc", 50).Tag()), "abc");
  EXPECT_THROW(root->NewChild(static_cast<const char16_t*>(nullptr))->Tag(), StdRuntimeException);
  // A new root may take the tag of the old one, which goes with the old tag table.
  document.Create(root->Tag());
  EXPECT_EQ(Code(document), "<r></r>");
}

TEST_F(XmlTree, AssignmentCopiesDeepAndCopyConstructionShares) {
  BuildSample();
  root->setAttribute(u"k", u"v");
  XmlDocument target;
  target.Create(u"t");
  *target.Root() = *root;
  EXPECT_EQ(Code(target), Code(document));
  // The copy's tags come from its own document.
  EXPECT_EQ(target.Tag(u"item", -1), &target.Root()->Node(u"item")->Tag());
  root->SetValue(u"a/b", 9);
  EXPECT_EQ(target.Root()->iValue(u"a/b", 0), 1);

  // A child-less copy owns no memory of its own, so it may simply be dropped unrun.
  alignas(XmlNode) unsigned char storage[sizeof(XmlNode)];
  XmlNode* b = root->Node(u"a/b");
  auto* shallow = new (storage) XmlNode(*b);
  EXPECT_EQ(&shallow->Value(), &b->Value());
  EXPECT_EQ(&shallow->Tag(), &b->Tag());

  // From a descendant the source is copied out first; from itself the node is emptied.
  target.Root()->SetValue(target.Root()->Node(u"a"));
  EXPECT_EQ(Code(target), "<a><b>1</b></a>");
  XmlNode* item = root->Node(u"item");
  const XmlNode& same = *item;
  *item = same;
  EXPECT_EQ(Code(*item), "<item></item>");
}

TEST_F(XmlTree, DocumentFromNodeCopiesTheNodeAndTheFileName) {
  BuildSample();
  document.SetFileName(u"/tmp/source.xml");
  document.SetDirty(true);
  XmlDocument copy(*root->Node(u"a"));
  EXPECT_EQ(Code(copy), "<a><b>1</b></a>");
  EXPECT_EQ(Utf8Of(copy.FileName()), "/tmp/source.xml");
  EXPECT_FALSE(copy.Dirty());
}
