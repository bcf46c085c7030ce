#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <limits>

#include "json/JsonTestSupport.h"
#include "support/TempFolder.h"

namespace {

using JsonNode = JsonDocument::JsonNode;

// The stream writer's bytes for `node`.
std::string StreamTextOf(const JsonNode* node) {
  char* data = nullptr;
  std::size_t size = 0;
  FILE* stream = open_memstream(&data, &size);
  node->SaveJsonCode(stream);
  std::fclose(stream);
  std::string text(data, size);
  std::free(data);
  return text;
}

TEST(JsonWriter, EscapesOnlyQuoteBackslashAndNamedControls) {
  JsonNode root(6);
  root.SetValue(u"t\"ab", u"\t\"\\/\x01\u00e9\x7f\b\f\n\r");
  EXPECT_EQ(TextOf(&root), "{\"t\\\"ab\": \"\\t\\\"\\\\/\x01\xC3\xA9\x7f\\b\\f\\n\\r\"}");
  EXPECT_EQ(StreamTextOf(&root), TextOf(&root));
}

TEST(JsonWriter, NumbersAndKeywords) {
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("[2.0,-1.0e300,-2147483648,false,null,[],{}]"));
  doc.Root()->SetValue(std::numeric_limits<double>::infinity());
  EXPECT_EQ(TextOf(doc.Root()), "[2,-1.0000000000000001e+300,-2147483648,false,null,[],{},inf]");
  EXPECT_EQ(StreamTextOf(doc.Root()), TextOf(doc.Root()));
}

TEST(JsonWriter, NamesAreWrittenWheneverTheyAreNotEmpty) {
  JsonNode root(6);
  root.SetString(u"root");
  root.AddChild(new JsonNode(2, 1.0));              // a member without a name
  root.NewChild(u"arr", 5)->NewChild(u"named", 6);  // an element with a name
  root.NewChild(u"odd", 6)->SetType(9);             // an unknown type writes its name only
  EXPECT_EQ(TextOf(&root), "\"root\": {1,\"arr\": [\"named\": {}],\"odd\": }");
  EXPECT_EQ(StreamTextOf(&root), TextOf(&root));
}

TEST(JsonDocumentFiles, SaveCreatesMissingFoldersAndClearsDirty) {
  TempFolder folder;
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"name\":\"caf\xC3\xA9\",\"list\":[1,2.5,true]}"));
  doc.SetDirty(true);
  ASSERT_TRUE(doc.SaveAs(folder.Wide("one/two/settings.json")));
  EXPECT_FALSE(doc.Dirty());
  EXPECT_EQ(folder.Read("one/two/settings.json"), TextOf(doc.Root()));

  JsonDocument again;
  ASSERT_TRUE(again.Load(folder.Wide("one\\two\\settings.json")));
  EXPECT_EQ(TextOf(again.Root()), TextOf(doc.Root()));
}

TEST(JsonDocumentFiles, FailedLoadsAndSavesReportFalseAndKeepTheName) {
  TempFolder folder;
  folder.Write("plain", "x");
  JsonDocument doc;
  EXPECT_FALSE(doc.Load(folder.Wide("missing.json")));
  EXPECT_EQ(folder.Wide("missing.json"), doc.FileName());
  EXPECT_FALSE(doc.Load(folder.Wide()));  // a folder
  EXPECT_FALSE(doc.IsOK());
  EXPECT_FALSE(doc.SaveAs(folder.Wide("empty.json")));  // no tree
  doc.Create(6);
  doc.SetDirty(true);
  EXPECT_FALSE(doc.SaveAs(folder.Wide("plain/sub/file.json")));
  EXPECT_EQ(folder.Wide("plain/sub/file.json"), doc.FileName());
  EXPECT_TRUE(doc.Dirty());
}

TEST(JsonDocumentFiles, LoadDropsLeadingControlAndHighBytes) {
  TempFolder folder;
  const std::pair<std::string, bool> files[] = {{"\xEF\xBB\xBF{\"a\":1}", true},
                                                {"\r\n\n\t{\"a\":1}", true},
                                                {"\x80\xFF\x01{\"a\":1}", true},
                                                {std::string("{\"a\":1}\0junk", 12), true},
                                                {std::string("{\"a\":\0 1}", 9), false},
                                                {"{\"a\":\"cut", false},
                                                {"\xEF\xBB\xBF", false},
                                                {"", false}};
  for (const auto& [content, loads] : files) {
    folder.Write("f.json", content);
    JsonDocument doc;
    EXPECT_EQ(doc.Load(folder.Wide("f.json")), loads) << content;
    EXPECT_EQ(TextOf(doc.Root()), loads ? "{\"a\": 1}" : "(none)") << content;
  }
}

TEST(JsonDocumentFiles, SampleFileLoads) {
  const char* data = std::getenv("LQTOOLS_TEST_DATA");
  if (!data) GTEST_SKIP() << "LQTOOLS_TEST_DATA is not set";
  LqWString path;
  Utf8ToUtf16(path, (std::string(data) + "/json/device.json").c_str());
  JsonDocument doc;
  ASSERT_TRUE(doc.Load(path));
  EXPECT_EQ(doc.Root()->ValueInt(u"devices/?id=7?"), 7);
  EXPECT_EQ(doc.Root()->ValueString(u"station", u""), u"Nord\u00e9");
}

TEST(JsonDocument, CreateAcceptsOnlyContainers) {
  JsonDocument doc;
  doc.Create(2);
  EXPECT_FALSE(doc.IsOK());
  doc.Create(5);
  doc.Create(4);
  EXPECT_EQ(TextOf(doc.Root()), "[]");
  doc.SetFileName(nullptr);
  EXPECT_EQ(std::u16string(doc.FileName()), u"");
  doc.Reset();
  EXPECT_FALSE(doc.IsOK());
}

}  // namespace
