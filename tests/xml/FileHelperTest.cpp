// FileHelper: whole files and single XML elements as strings.
#include <gtest/gtest.h>

#include <lqtools/xml/FileHelper.h>

#include "xml/XmlTestHelpers.h"

namespace {

TEST(FileHelper, FileToStringGivesTheBytesOrNothing) {
  TempFolder folder;
  WriteFile(folder.Root() / "empty", "");
  WriteFile(folder.Root() / "bytes", std::string("x\0y\xC3", 4));
  FileHelper helper;
  EXPECT_EQ(helper.FileToString((folder.Root() / "empty").string()), "");
  EXPECT_EQ(helper.FileToString((folder.Root() / "missing").string()), "");
  EXPECT_EQ(helper.FileToString((folder.Root() / "bytes").string()), std::string("x\0y\xC3", 4));
  EXPECT_EQ(helper.FileToString(LqWString(folder.WideText("bytes").c_str())),
            std::string("x\0y\xC3", 4));
}

TEST(FileHelper, WideFileNameGoesThroughTheNarrowOverride) {
  struct Recorder : FileHelper {
    using FileHelper::FileToString;
    std::string FileToString(const std::string& fileName) override { return "[" + fileName + "]"; }
  } recorder;
  // Each unit keeps its low byte: U+0141 turns into 'A'.
  EXPECT_EQ(recorder.FileToString(LqWString(u"/x/\u0141b")), "[/x/Ab]");
}

TEST(FileHelper, XmlDocumentFileNodeToStringWritesTheElement) {
  TempFolder folder;
  WriteFile(folder.Root() / "doc.xml",
            "<?xml version=\"1.0\"?><cfg><a id=\"1\"><x/></a><a id=\"2\">v</a><cfg>in</cfg>"
            "</cfg>");
  WriteFile(folder.Root() / "broken.xml", "<cfg><a></cfg>");
  const LqWString doc(folder.WideText("doc.xml").c_str());
  FileHelper helper;
  const struct {
    const char16_t* node;
    std::string expected;
  } cases[] = {
      {u"cfg", "<cfg><a id=\"1\"><x></x></a><a id=\"2\">v</a><cfg>in</cfg></cfg>"},
      {u"a", "<a id=\"1\"><x></x></a>"},
      {u"a/x", "<x></x>"},
      {u"cfg/a", ""},  // the root's tag as a first step is looked up below the root
      {u"cfg/cfg", ""},
      {u"missing", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(helper.XmlDocumentFileNodeToString(doc, LqWString(c.node)), c.expected)
        << Utf8Of(LqWString(c.node));
  EXPECT_EQ(helper.XmlDocumentFileNodeToString(LqWString(folder.WideText("broken.xml").c_str()),
                                               LqWString(u"cfg")),
            "");
  EXPECT_EQ(helper.XmlDocumentFileNodeToString(LqWString(folder.WideText("missing.xml").c_str()),
                                               LqWString(u"cfg")),
            "");
}

}  // namespace
