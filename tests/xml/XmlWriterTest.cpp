#include <gtest/gtest.h>

#include <cstdio>

#include "xml/XmlTestHelpers.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

// The stream writer's text of `node`, through a temporary file.
std::string FileCode(const XmlNode& node) {
  FILE* stream = std::tmpfile();
  node.SaveXmlCode(stream);
  std::string text(static_cast<std::size_t>(std::ftell(stream)), '\0');
  std::rewind(stream);
  text.resize(std::fread(text.data(), 1, text.size(), stream));
  std::fclose(stream);
  return text;
}

struct CountingCallback : XmlDocumentCallback {
  int calls = 0;
  void OnSaved() override { ++calls; }
};

}  // namespace

TEST(XmlWriter, StringAndFileFormsDifferOnlyInEmptyElements) {
  XmlDocument document;
  struct Case {
    const char* xml;
    const char* stringForm;
    const char* fileForm;
  } cases[] = {
      {"<x/>", "<x></x>", "<x/>"},
      // The parser leaves a value object of length 0 behind; it counts as empty.
      {"<x></x>", "<x></x>", "<x/>"},
      {"<x a=\"1\"/>", "<x a=\"1\"></x>", "<x a=\"1\"/>"},
      {"<x b='2' a='1'><y/>t</x>", "<x a=\"1\" b=\"2\"><y></y>t</x>",
       "<x a=\"1\" b=\"2\"><y/>t</x>"},
      {"<x>\n  <y>1</y>\n</x>", "<x><y>1</y>\n  \n</x>", "<x><y>1</y>\n  \n</x>"},
  };
  for (const Case& c : cases) {
    ASSERT_TRUE(document.Parse(c.xml)) << c.xml;
    EXPECT_EQ(Code(document), c.stringForm);
    EXPECT_EQ(FileCode(*document.Root()), c.fileForm);
  }
}

TEST(XmlWriter, EscapesTagsAndValuesButNotAttributes) {
  XmlDocument document;
  document.Create(u"t&g");
  document.Root()->SetValue(u"a<b&c\"'>");
  document.Root()->setAttribute(u"k", u"a<b&c\"");
  document.Root()->NewChild(u"\u00e9")->SetValue(u"\u20ac");
  const std::string code =
      "<t&amp;g "
      "k=\"a<b&c\"\"><\xC3\xA9>\xE2\x82\xAC</\xC3\xA9>a&lt;b&amp;c&quot;&apos;&gt;</t&amp;g>";
  EXPECT_EQ(Code(document), code);
  EXPECT_EQ(FileCode(*document.Root()), code);
}

// Long texts go out in pieces; one that turns beyond ASCII deep inside, or ends on an entity at a
// piece's edge, comes out whole in both forms.
TEST(XmlWriter, LongTextsComeOutWholeWhereverTheyTurnBeyondAscii) {
  for (std::size_t at : {std::size_t{0}, std::size_t{1364}, std::size_t{1365}, std::size_t{5000}}) {
    std::u16string value(at, u'a');
    value += u"<\u00e9&";
    value += std::u16string(3000, u'b');
    std::string expected(at, 'a');
    expected += "&lt;\xC3\xA9&amp;" + std::string(3000, 'b');
    XmlDocument document;
    document.Create(u"t");
    document.Root()->SetValue(value.c_str());
    EXPECT_EQ(Code(document), "<t>" + expected + "</t>") << at;
    EXPECT_EQ(FileCode(*document.Root()), "<t>" + expected + "</t>") << at;
  }
  std::u16string entities(4000, u'&');
  std::string escaped;
  for (int i = 0; i < 4000; ++i)
    escaped += "&amp;";
  XmlDocument document;
  document.Create(u"t");
  document.Root()->SetValue(entities.c_str());
  EXPECT_EQ(FileCode(*document.Root()), "<t>" + escaped + "</t>");
}
// The writers escape with the narrow form, so the tests above cover its escapes.
TEST(XmlWriter, Text2XmlEscapesWideTextTooAndKeepsAChosenGrowthPolicy) {
  LqString narrow("old");
  Text2Xml(narrow, LqString("a'\xC3\xA9"));
  EXPECT_EQ(std::string(narrow), "a&apos;\xC3\xA9");
  EXPECT_EQ(narrow.Flags() & 33u, static_cast<uint32_t>(LqString::GrowLargeBlock));
  LqWString wide(LqWString::GrowSmallBlock);
  Text2Xml(wide, LqWString(u"<\u00e9&\"'>\n"));
  EXPECT_EQ(Utf8Of(wide), "&lt;\xC3\xA9&amp;&quot;&apos;&gt;\n");
  EXPECT_EQ(wide.Flags() & 33u, static_cast<uint32_t>(LqWString::GrowSmallBlock));
}

TEST(XmlWriter, DocumentCodeReplacesTheOutputAndMayStartWithTheHeader) {
  XmlDocument document;
  LqString out("old");
  document.CreateXmlCode(out, true);
  EXPECT_EQ(std::string(out), kHeader);
  document.CreateXmlCode(out, false);
  EXPECT_EQ(std::string(out), "");
  document.Create(u"r");
  document.CreateXmlCode(out, true);
  EXPECT_EQ(std::string(out), kHeader + "<r></r>");
  EXPECT_EQ(out.Flags() & 33u, static_cast<uint32_t>(LqString::GrowLargeBlock));
  document.Root()->NewChild(static_cast<const char16_t*>(nullptr));
  EXPECT_THROW(document.CreateXmlCode(out, false), StdRuntimeException);
}

// A document with a root and a callback, and a folder for its files.
class XmlSave : public ::testing::Test {
 protected:
  XmlSave() {
    document.SetXmlDocumentCallback(&callback);
    document.Create(u"r");
  }
  TempFolder folder;
  XmlDocument document;
  CountingCallback callback;
};

TEST_F(XmlSave, SaveMakesMissingFoldersClearsDirtyAndCallsBack) {
  document.Root()->NewChild(u"e");
  document.SetDirty(true);
  EXPECT_FALSE(document.Save());
  EXPECT_TRUE(document.Dirty());
  EXPECT_TRUE(document.SaveAs(folder.WideText("one/two/doc.xml").c_str()));
  EXPECT_EQ(ReadFile(folder.Root() / "one/two/doc.xml"), kHeader + "<r><e/></r>");
  EXPECT_FALSE(document.Dirty());
  EXPECT_EQ(callback.calls, 1);

  // A file name that is a folder cannot be opened: false, and nothing changes.
  document.SetDirty(true);
  EXPECT_FALSE(document.SaveAs(folder.WideText("one").c_str()));
  EXPECT_TRUE(document.Dirty());
  EXPECT_EQ(callback.calls, 1);

  // Without a root only the header is written, and that file does not load.
  document.Reset();
  EXPECT_TRUE(document.SaveAs(folder.WideText("empty.xml").c_str()));
  EXPECT_EQ(ReadFile(folder.Root() / "empty.xml"), kHeader);
  EXPECT_FALSE(document.Load(folder.WideText("empty.xml").c_str()));
}

TEST_F(XmlSave, SaveAsWithBackupWritesBothAndStaysOnTheMainFile) {
  const std::u16string main = folder.WideText("a.xml");
  EXPECT_TRUE(document.SaveAs(main.c_str(), folder.WideText("b.xml").c_str()));
  EXPECT_EQ(Utf8Of(document.FileName()), Utf8Of(main.c_str()));
  EXPECT_EQ(ReadFile(folder.Root() / "a.xml"), ReadFile(folder.Root() / "b.xml"));
  EXPECT_EQ(callback.calls, 2);
  // The document's own file name, released by the first of the two saves, still names the main
  // file.
  EXPECT_TRUE(document.SaveAs(document.FileName(), folder.WideText("c.xml").c_str()));
  EXPECT_EQ(Utf8Of(document.FileName()), Utf8Of(main.c_str()));
}

TEST_F(XmlSave, SetBckFileNameStoresIntoTheFileName) {
  document.SetFileName(u"a.xml");
  document.SetBckFileName(u"b.xml");
  EXPECT_EQ(Utf8Of(document.FileName()), "b.xml");
  EXPECT_EQ(document.BckFileName(), nullptr);
  document.SetBckFileName(nullptr);
  EXPECT_EQ(Utf8Of(document.FileName()), "b.xml");
}
