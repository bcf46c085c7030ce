// XmlDocument::LoadNodeByPath on real files, with the lines it leaves in the logs.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include <lqtools/files/LqLog.h>

#include "xml/XmlTestHelpers.h"

namespace {

using XmlNode = XmlDocument::XmlNode;

// tag(=value)(@name=value...)[children...], units written as UTF-8 when they decode, the widened
// high bytes as \xHH.
std::string Describe(const XmlNode* node) {
  if (!node) return "null";
  auto text = [](const LqWString& wide) {
    std::string out;
    for (int i = 0; i < wide.Length(); ++i) {
      const char16_t unit = static_cast<const char16_t*>(wide)[i];
      if (unit < 0x80) {
        out += static_cast<char>(unit);
      } else {
        char hex[16];
        std::snprintf(hex, sizeof hex, "\\x%04X", static_cast<unsigned>(unit));
        out += hex;
      }
    }
    return out;
  };
  std::string out = text(node->Tag());
  if (node->Value().Length() > 0) out += "=" + text(node->Value());
  for (auto a = node->attributesBegin(); a != node->attributesEnd(); ++a)
    out += "@" + text(a->first) + "=" + text(a->second);
  if (node->HasChilds()) {
    out += "[";
    for (auto c = node->ChildsBegin(); c != node->ChildsEnd(); ++c)
      out += (c == node->ChildsBegin() ? "" : ",") + Describe(*c);
    out += "]";
  }
  return out;
}

class SelectiveLoadTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::remove(LqLogFileName());
    std::filesystem::remove(LqExceptionLogFileName());
  }
  void TearDown() override { SetUp(); }

  std::string Load(const std::string& content, const std::u16string& path,
                   unsigned long long bufferSize) {
    WriteFile(folder.Root() / "file.xml", content);
    std::unique_ptr<XmlNode> node(
        XmlDocument::LoadNodeByPath(folder.WideText("file.xml"), path, bufferSize));
    return Describe(node.get());
  }
  // The text of the last line of a log, behind its time stamp.
  static std::string LastEntry(const char* log) {
    std::ifstream in(log, std::ios::binary);
    std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::size_t dash = all.rfind("Z - ");
    return dash == std::string::npos ? std::string() : all.substr(dash + 4);
  }

  TempFolder folder;
};

const std::string kSmall = "<?xml version=\"1.0\"?><r><a><b>x</b><c>y</c></a></r>";
const std::string kNotFound = "XmlDocument::LoadNodeByPath: wrong formatted XML file, tag '/";

TEST_F(SelectiveLoadTest, FindsTheGoalWithItsSubtreeForEveryBufferSize) {
  const struct {
    std::string file;
    std::u16string path;
    std::string expected;
  } cases[] = {
      {kSmall, u"/a/b", "/a/b=x"},
      {kSmall, u"/a", "/a[b=x,c=y]"},
      {kSmall, u"/a/c", "/a/c=y"},
      // The first of two elements with the same path; reading stops at its end tag, so the
      // broken rest of the file is never seen.
      {"<?xml?><r><a>1</a><a>2</a><<<", u"/a", "/a=1"},
      // Text is kept as bytes: entities stay, a UTF-8 character gives two widened units.
      {"<?xml?><r><a>&amp;\xC3\xA9</a></r>", u"/a", "/a=&amp;\\xFFC3\\xFFA9"},
      // Only the text in front of an end tag becomes a value.
      {"<?xml?><r><a>t1<b>x</b>t2</a></r>", u"/a", "/a=t2[b=x]"},
      {"<?xml?><r><a>  \n<b> </b></a></r>", u"/a", "/a[b]"},
      // Attributes are parsed at the second tag of a pass only, in double quotes.
      {"<?xml?><r><p><a k=\"1\" j=\"2\" k=\"3\"><x>v</x></a></p></r>", u"/p/a",
       "/p/a@j=2@k=3[x=v]"},
      {"<?xml?><r><p><q><s><a k=\"1\">v</a></s></q></p></r>", u"/p", "/p[q[s[a=v@k=1]]]"},
      {"<?xml?><r><p><a k='1'>v</a></p></r>", u"/p", "null"},
      // An empty element behind the goal does not matter.
      {"<?xml?>\n<r>\n  <a>1</a>\n  <e/>\n</r>", u"/a", "/a=1"},
  };
  for (const auto& c : cases) {
    for (unsigned long long size : {2ull, 3ull, 16ull, 4096ull}) {
      EXPECT_EQ(Load(c.file, c.path, size), c.expected) << c.file << " size " << size;
    }
  }
}

TEST_F(SelectiveLoadTest, BranchBehindManyBlocksIsFoundWhole) {
  std::string file = "<?xml version=\"1.0\"?>\n<root>\n";
  for (int i = 0; i < 3000; ++i)
    file += "<item><n>" + std::to_string(i) + "</n></item>\n";
  file += "<goal><k>1</k><v>two</v></goal><item><n>x</n></item></root>";
  for (unsigned long long size : {2ull, 100ull, 4096ull, 65536ull})
    EXPECT_EQ(Load(file, u"/goal", size), "/goal[k=1,v=two]") << size;
}

TEST_F(SelectiveLoadTest, LongTextReadByteByByteIsScannedOnce) {
  // Scanning the whole text again after each one-byte read would take minutes here.
  const std::string text(400000, 't');
  EXPECT_EQ(Load("<?xml?><r><a>" + text + "</a></r>", u"/a", 2).size(), 3 + text.size());
  EXPECT_EQ(Load("<?xml" + text + "?><r><a>1</a></r>", u"/a", 2), "/a=1");
}

TEST_F(SelectiveLoadTest, PathsThatNeverMatchRunToTheRootsEndAndFailThere) {
  for (const std::u16string path : {u"/r/a", u"a", u"/", u"/a/b/c", u"//a"}) {
    SetUp();
    EXPECT_EQ(Load(kSmall, path, 4096), "null");
    EXPECT_EQ(LastEntry(LqExceptionLogFileName()), kNotFound + "' not found!\n");
  }
}

TEST_F(SelectiveLoadTest, UnpairedStartTagsFailWithTheirName) {
  const struct {
    std::string file;
    std::string name;
  } cases[] = {
      {"<?xml?><r><x/><a>1</a></r>", "x/"},  // a closes cleanly, then r meets x/
      {"<?xml?><r><a><x/><b>1</b></a></r>", "x/"},
      {"<?xml?><r><a><!-- c --><b>1</b></a></r>", "!-- c --"},
      {"<?xml?><r><a k=\"1\"><b>1</b></a></r>", "a k=\"1\""},
  };
  for (const auto& c : cases) {
    SetUp();
    EXPECT_EQ(Load(c.file, u"/a/b", 4096), "null") << c.file;
    EXPECT_EQ(LastEntry(LqExceptionLogFileName()), kNotFound + c.name + "' not found!\n");
  }
}

TEST_F(SelectiveLoadTest, RefusedFilesLogTheirReason) {
  const std::string header =
      "XmlDocument::LoadNodeByPath: wrong formatted XML file - no header '<?xml ... ?>' tag "
      "found!\n";
  const std::string root =
      "XmlDocument::LoadNodeByPath: wrong formatted XML file - no 'first level tag' found!\n";
  const struct {
    std::string file;
    std::string exceptionEntry;
  } cases[] = {
      {"<r><a>1</a></r>", header},
      {"<?xml version=\"1.0\"", header},
      {"", header},
      {"<?xml?>", root},
      {"<?xml?> <r", root},
  };
  for (const auto& c : cases) {
    SetUp();
    EXPECT_EQ(Load(c.file, u"/a", 4096), "null") << c.file;
    EXPECT_EQ(LastEntry(LqExceptionLogFileName()), c.exceptionEntry) << c.file;
  }

  SetUp();
  EXPECT_EQ(XmlDocument::LoadNodeByPath(folder.WideText("missing.xml"), u"/a", 4096), nullptr);
  EXPECT_EQ(LastEntry(LqExceptionLogFileName()),
            "XmlDocument::LoadNodeByPath: failed to open file '" +
                (folder.Root() / "missing.xml").string() + "'!\n");
}

TEST_F(SelectiveLoadTest, FileEndingInsideTheGoalLosesTheSubtreeAndLogsHouston) {
  for (const std::string file : {"<?xml?><r><a><b>1</b><c>", "<?xml?><r><a><b>1</b><c"}) {
    SetUp();
    EXPECT_EQ(Load(file, u"/a", 4096), "null");
    EXPECT_EQ(LastEntry(LqLogFileName()), "Houston... situaci\xC3\xB3n no controlada!\n");
  }
}

TEST_F(SelectiveLoadTest, RootTagAtTheEndOfTheLastReadIsTheBufferSizeEdge) {
  // The read that brings the root's '>' also meets the end of the file: refused, while a buffer
  // that took the whole file during the header phase gets through to the main loop.
  const std::string file = "<?xml?><r>";
  EXPECT_EQ(Load(file, u"/a", 9), "null");
  EXPECT_EQ(
      LastEntry(LqExceptionLogFileName()),
      "XmlDocument::LoadNodeByPath: wrong formatted XML file - no 'first level tag' found!\n");
  SetUp();
  EXPECT_EQ(Load(file, u"/a", 4096), "null");
  EXPECT_EQ(LastEntry(LqLogFileName()), "Houston... situaci\xC3\xB3n no controlada!\n");
}

}  // namespace
