#include <gtest/gtest.h>

#include "xml/XmlTestHelpers.h"

using XmlNode = XmlDocument::XmlNode;

TEST(XmlParser, AcceptsTheNarrowFormAndRejectsTheRest) {
  struct Case {
    const char* input;
    const char* code;  // null: the parse fails
  } cases[] = {
      {"<a/>", "<a></a>"},
      {"<a />", "<a></a>"},
      {"<?xml a=\"?\"?><a/>", nullptr},
      {"<?xml version=\"1.0\"", nullptr},
      {"\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<a>1</a>", "<a>1</a>"},
      {"junk <a>1</a><b>2</b> tail", "<a>1</a>"},
      // A '"' anywhere behind an opening '\'' ends the list: the value doesn't open with it.
      {"<a x='1' y=\"2\"/>", "<a></a>"},
      {"<a x=\"1\" y = \"2\"/>", "<a x=\"1\"></a>"},
      {"<a x =\"1\"/>", "<a x =\"1\"></a>"},
      // The closing quote is the first '"' left, whichever quote opened the value.
      {"<a x=\"1' y='2\"/>", "<a x=\"1' y='2\"></a>"},
      {"<a x=\"p>q\"/>", nullptr},
      {"<a>x<b/>y</a>", "<a><b></b>xy</a>"},
      {"<a><!-- c --></a>", nullptr},
      {"<a>&lt;&amp;&gt;&quot;&apos;</a>", "<a>&lt;&amp;&gt;&quot;&apos;</a>"},
      {"<a>&#65;&unknown;&Xmp;&1pos;</a>", "<a>&amp;#65;&amp;unknown;&amp;&apos;</a>"},
      // Text is decoded once over the joined runs.
      {"<a>&am<b/>p;</a>", "<a><b></b>&amp;</a>"},
      {"<a k=\"&amp;\"/>", "<a k=\"&amp;\"></a>"},
      {"<a>x</b>", nullptr},
      {"<a>x", nullptr},
      {"<a>", nullptr},
      {"<a>x</a >", nullptr},
      {"<a x=\"1\">\xC3\xA9</a>", "<a x=\"1\">\xC3\xA9</a>"},
      {"<\xC3\xA9></\xC3\xA9>", "<\xC3\xA9></\xC3\xA9>"},
      // A count of units is compared against bytes at the end tag.
      {"<\xC3\xA9 x=\"1\"></\xC3\xA9>", nullptr},
      // Only the blank separates the name; a tab stays in it.
      {"<a\tx=\"1\"></a\tx=\"1\">", "<a\tx=&quot;1&quot;></a\tx=&quot;1&quot;>"},
      {"<a/ x=\"1\">", "<a x=\"1\"></a>"},
      {"", nullptr},
      {"no element", nullptr},
  };
  XmlDocument document;
  for (const Case& c : cases) {
    EXPECT_EQ(document.Parse(c.input), c.code != nullptr) << c.input;
    // A failed parse leaves an empty document, whose text is empty.
    EXPECT_EQ(Code(document), c.code ? c.code : "") << c.input;
  }
  EXPECT_FALSE(document.Parse(nullptr));
}

TEST(XmlParser, LongTextRunsAndLongNamesSurvive) {
  std::string text(70000, 'x');
  text += "\xC3\xA9&amp;";
  const std::string name(5000, 'n');
  XmlDocument document;
  ASSERT_TRUE(document.Parse(("<r><" + name + ">" + text + "</" + name + "></r>").c_str()));
  EXPECT_EQ(Utf8Of(document.Value(U16(name).c_str(), u"")), std::string(70000, 'x') + "\xC3\xA9&");
}

TEST(XmlParser, XmlTextDecodesLaxlyInBothWidths) {
  LqString narrow;
  Xml2Text(narrow, LqString("&lt;&\x80mp;&Amp;&apos;&#65;&"));
  EXPECT_EQ(std::string(narrow), "<&&'&#65;&");
  LqWString wide;
  Xml2Text(wide, LqWString(u"&\u00e9mp;&gt;"));
  EXPECT_EQ(Utf8Of(wide), "&\xC3\xA9mp;>");
  Xml2Text(wide, wide);
  EXPECT_EQ(Utf8Of(wide), "&\xC3\xA9mp;>");
}

TEST(XmlParser, WhatTheWritersWroteParsesBackToAnEqualTree) {
  XmlDocument document;
  document.Create(u"r");
  for (int i = 0; i < 6; ++i) {
    // A name beyond ASCII with attributes never closes, so only plain names get attributes.
    XmlNode* child = document.Root()->NewChild(i % 3 ? u"item" : u"\u00e9l\u00e9ment");
    if (i % 3) child->setAttribute(u"id", i % 2 ? u"1" : u"\u20ac");
    child->SetValue(u"v", u"a<b&c>'\"");
    child->SetValue(u"n", i);
    child->NewChild(u"empty");
  }
  XmlDocument again;
  ASSERT_TRUE(again.Parse((kHeader + Code(document)).c_str()));
  EXPECT_TRUE(*again.Root() == *document.Root());
  TempFolder folder;
  ASSERT_TRUE(document.SaveAs(folder.WideText("t.xml").c_str()));
  ASSERT_TRUE(again.Load(folder.WideText("t.xml").c_str()));
  EXPECT_TRUE(*again.Root() == *document.Root());
}

TEST(XmlParser, NestingBeyondTheLimitIsRefusedWithFalse) {
  auto nested = [](int depth) {
    std::string open, close;
    for (int i = 0; i < depth; ++i)
      open += "<a>", close += "</a>";
    return open + close;
  };
  XmlDocument document;
  ASSERT_TRUE(document.Parse(nested(2000).c_str()));
  EXPECT_EQ(Code(document), nested(2000));
  XmlDocument copy(*document.Root());
  EXPECT_TRUE(*copy.Root() == *document.Root());
  EXPECT_FALSE(document.Parse(nested(2001).c_str()));
  EXPECT_FALSE(document.Parse(nested(300000).c_str()));
}

TEST(XmlParser, LoadReadsWholeFilesAndFailsOnBrokenOnes) {
  TempFolder folder;
  WriteFile(folder.Root() / "good.xml", "<r><a>1</a></r>");
  WriteFile(folder.Root() / "cut.xml", "<r><a>1</a");
  XmlDocument document;
  EXPECT_TRUE(document.Load(folder.WideText("good.xml").c_str()));
  // A name held in the tree that the load replaces.
  document.Root()->SetValue(folder.WideText("good.xml").c_str());
  EXPECT_TRUE(document.Load(document.Root()->Value()));
  for (const std::u16string& name :
       {folder.WideText("cut.xml"), folder.WideText("missing.xml"), folder.WideText(""), std::u16string(),
        std::u16string(u"/dev/zero")}) {
    EXPECT_FALSE(document.Load(name.c_str())) << Utf8Of(name.c_str());
    EXPECT_FALSE(document.IsOK());
    // The name that was tried stays.
    EXPECT_EQ(Utf8Of(document.FileName()), Utf8Of(name.c_str()));
  }
}

TEST(XmlParser, TwoFileLoadRepairsTheMainFileFromTheBackup) {
  TempFolder folder;
  const std::u16string main = folder.WideText("main.xml"), backup = folder.WideText("backup.xml");
  WriteFile(folder.Root() / "main.xml", "<r><a>broken");
  WriteFile(folder.Root() / "backup.xml", "<r><a>2</a></r>");
  XmlDocument document;
  EXPECT_TRUE(document.Load(main.c_str(), backup.c_str()));
  EXPECT_EQ(document.Root()->iValue(u"a", 0), 2);
  EXPECT_EQ(Utf8Of(document.FileName()), Utf8Of(main.c_str()));
  EXPECT_EQ(ReadFile(folder.Root() / "main.xml"), kHeader + "<r><a>2</a></r>");
  // The document's own file name, which the load replaces on its way, serves as either name.
  EXPECT_TRUE(document.Load(document.FileName(), backup.c_str()));
  EXPECT_TRUE(document.Load(main.c_str(), document.FileName()));
  EXPECT_EQ(Utf8Of(document.FileName()), Utf8Of(main.c_str()));
  WriteFile(folder.Root() / "main.xml", "broken");
  WriteFile(folder.Root() / "backup.xml", "broken too");
  EXPECT_FALSE(document.Load(main.c_str(), backup.c_str()));
}
