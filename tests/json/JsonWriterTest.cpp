#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>

#include "json/JsonTestSupport.h"

namespace {

using JsonNode = JsonDocument::JsonNode;

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

// The stream writer's bytes for `node`.
std::string StreamTextOf(const JsonNode& node) {
  char* data = nullptr;
  std::size_t size = 0;
  FILE* stream = open_memstream(&data, &size);
  node.SaveJsonCode(stream);
  std::fclose(stream);
  std::string text(data, size);
  std::free(data);
  return text;
}

TEST(JsonWriter, EscapesOnlyQuoteBackslashAndNamedControls) {
  JsonNode root(6);
  root.SetValue(u"t\"ab", u"\t\"\\/\x01\u00e9\x7f\b\f\n\r");
  EXPECT_EQ(TextOf(root), "{\"t\\\"ab\": \"\\t\\\"\\\\/\x01\xC3\xA9\x7f\\b\\f\\n\\r\"}");
  EXPECT_EQ(StreamTextOf(root), TextOf(root));
}

TEST(JsonWriter, NumbersAndKeywords) {
  JsonNode root(5);
  root.SetValue(0.1);
  root.SetValue(2.0);
  root.SetValue(-1e300);
  root.SetValue(std::numeric_limits<double>::infinity());
  root.SetValue(INT32_MIN);
  root.SetValue(false);
  root.SetNullValue();
  root.NewChild(5);
  root.NewChild(6);
  const char expected[] =
      "[0.10000000000000001,2,-1.0000000000000001e+300,inf,-2147483648,false,null,[],{}]";
  EXPECT_EQ(TextOf(root), expected);
  EXPECT_EQ(StreamTextOf(root), expected);
}

TEST(JsonWriter, NamesAreWrittenWheneverTheyAreNotEmpty) {
  JsonNode root(6);
  root.SetString(u"root");
  root.AddChild(new JsonNode(2, 1.0));              // a member without a name
  root.NewChild(u"arr", 5)->NewChild(u"named", 6);  // an element with a name
  root.NewChild(u"odd", 6)->SetType(9);             // an unknown type writes its name only
  const char expected[] = "\"root\": {1,\"arr\": [\"named\": {}],\"odd\": }";
  EXPECT_EQ(TextOf(root), expected);
  EXPECT_EQ(StreamTextOf(root), expected);
}

TEST(JsonDocumentFiles, SaveCreatesMissingFoldersAndClearsDirty) {
  ScratchFolder folder;
  JsonDocument doc;
  ASSERT_TRUE(doc.Parse("{\"name\":\"caf\xC3\xA9\",\"list\":[1,2.5,true]}"));
  doc.SetDirty(true);
  ASSERT_TRUE(doc.SaveAs(folder.File("one/two/settings.json").c_str()));
  EXPECT_FALSE(doc.Dirty());
  EXPECT_EQ(ReadFile(folder.Path("one/two/settings.json")),
            "{\"name\": \"caf\xC3\xA9\",\"list\": [1,2.5,true]}");

  JsonDocument again;
  ASSERT_TRUE(again.Load(folder.File("one\\two\\settings.json").c_str()));
  EXPECT_EQ(TextOf(*again.Root()), TextOf(*doc.Root()));
}

TEST(JsonDocumentFiles, FailedSavesReportFalseAndKeepTheName) {
  ScratchFolder folder;
  WriteFile(folder.Path("plain"), "x");
  JsonDocument doc;
  EXPECT_FALSE(doc.SaveAs(folder.File("empty.json").c_str()));  // no tree
  doc.Create(6);
  doc.SetDirty(true);
  const std::u16string blocked = folder.File("plain/sub/file.json");
  EXPECT_FALSE(doc.SaveAs(blocked.c_str()));
  EXPECT_EQ(std::u16string(doc.FileName()), blocked);
  EXPECT_TRUE(doc.Dirty());
}

TEST(JsonDocumentFiles, LoadDropsLeadingControlAndHighBytes) {
  ScratchFolder folder;
  const std::pair<std::string, bool> files[] = {{"\xEF\xBB\xBF{\"a\":1}", true},
                                                {"\r\n\n\t{\"a\":1}", true},
                                                {"\x80\xFF\x01{\"a\":1}", true},
                                                {std::string("{\"a\":1}\0junk", 12), true},
                                                {std::string("{\"a\":\0 1}", 9), false},
                                                {"{\"a\":\"cut", false},
                                                {"\xEF\xBB\xBF", false},
                                                {"", false}};
  for (const auto& [content, loads] : files) {
    WriteFile(folder.Path("f.json"), content);
    JsonDocument doc;
    EXPECT_EQ(doc.Load(folder.File("f.json").c_str()), loads) << content;
    if (loads) {
      EXPECT_EQ(doc.Root()->ValueInt(u"a"), 1);
    }
  }
}

TEST(JsonDocumentFiles, LoadFailuresKeepTheFileName) {
  ScratchFolder folder;
  JsonDocument doc;
  EXPECT_FALSE(doc.Load(folder.File("missing.json").c_str()));
  EXPECT_EQ(std::u16string(doc.FileName()), folder.File("missing.json"));
  EXPECT_FALSE(doc.Load(folder.File("").c_str()));  // a folder
  EXPECT_FALSE(doc.IsOK());
}

TEST(JsonDocumentFiles, SampleFileLoads) {
  const char* data = std::getenv("LQTOOLS_TEST_DATA");
  if (!data) GTEST_SKIP() << "LQTOOLS_TEST_DATA is not set";
  JsonDocument doc;
  ASSERT_TRUE(doc.Load(Wide(std::string(data) + "/json/device.json").c_str()));
  EXPECT_EQ(doc.Root()->ValueInt(u"devices/?id=7?"), 7);
  EXPECT_EQ(doc.Root()->ValueString(u"station", u""), u"Nord\u00e9");
}

TEST(JsonDocument, CreateAcceptsOnlyContainers) {
  JsonDocument doc;
  doc.Create(2);
  EXPECT_FALSE(doc.IsOK());
  doc.Create(5);
  ASSERT_TRUE(doc.IsOK());
  doc.Create(4);
  EXPECT_EQ(doc.Root()->Type(), 5);
  doc.SetFileName(nullptr);
  EXPECT_EQ(std::u16string(doc.FileName()), u"");
  doc.Reset();
  EXPECT_FALSE(doc.IsOK());
}

}  // namespace
