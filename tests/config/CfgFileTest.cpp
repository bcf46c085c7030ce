#include <gtest/gtest.h>
#include <lqtools/config/LqCfgFile.h>
#include <lqtools/text/StdRuntimeException.h>

#include <string>
#include <vector>

#include "CfgTestSupport.h"

namespace {

using Group = LqCfgFile::LqGroup;

std::vector<std::string> OptionsOf(const Group* group) {
  std::vector<std::string> out;
  for (auto option = group->OptionsBegin(); option != group->OptionsEnd(); ++option) {
    LqString name, value;
    Utf16ToUtf8(name, (*option)->Name());
    Utf16ToUtf8(value, (*option)->Value());
    out.push_back(std::string(name) + "=" + std::string(value));
  }
  return out;
}

class CfgFile : public ::testing::Test {
 protected:
  LqCfgFile Loaded(const std::string& body, bool expected = true) {
    LqCfgFile file;
    EXPECT_EQ(file.Load(WriteCfg(m_folder, body)), expected) << body;
    return file;
  }
  TempFolder m_folder;
};

TEST_F(CfgFile, HeaderMustBeExact) {
  LqCfgFile file;
  EXPECT_TRUE(file.Load(WriteCfg(m_folder, "")));
  EXPECT_EQ(file.Root()->Size(), 0);
  for (const char* text : {"ASCII\n a{}", "ascii\r\n", "ASCII\r", "",
                           "\xEF\xBB\xBF"
                           "ASCII\r\n"}) {
    m_folder.Write("raw.cfg", text);
    EXPECT_FALSE(file.Load(m_folder.Wide("raw.cfg"))) << text;
  }
  EXPECT_FALSE(file.Load(m_folder.Wide("missing.cfg")));
}

TEST_F(CfgFile, GroupsAndOptionsInFileOrder) {
  LqCfgFile file = Loaded("a{ b=\"1\" c=\"2\" }\r\nd{ e{ f=\"3\" } }");
  EXPECT_EQ(file.Root()->Size(), 2);
  EXPECT_EQ(OptionsOf(file.Group(LqWString(u"a"))), (std::vector<std::string>{"b=1", "c=2"}));
  EXPECT_EQ(OptionText(file.Group(LqWString(u"d/e")), u"f"), "3");
}

TEST_F(CfgFile, NamesKeepOnlyLettersDigitsAndUnderscores) {
  LqCfgFile file =
      Loaded("my group-1 {\r\n  some prose. opt_2 = \"v\"\r\n \xC3\xA9t\xC3\xA9=\"x\"}");
  const Group* group = file.Group(LqWString(u"mygroup1"));
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(OptionsOf(group), (std::vector<std::string>{"someproseopt_2=v", "t=x"}));
}

TEST_F(CfgFile, ValuesResolveEscapesAndDropControlBytes) {
  const struct {
    const char* raw;
    const char* value;
  } cases[] = {
      {"c://temp//x", "c:/temp/x"},
      {"a\\nb", "a\nb"},
      {"a\\qb", "ab"},
      {"a/b", "a"},
      {"say \\\"hi\\\"", "say \"hi\""},
      {"a\\\\b", "a\\b"},
      {"x\\ry", "x\ry"},
      {"li\r\nne\tend", "lineend"},
      {"caf\xC3\xA9", "caf\xC3\xA9"},
  };
  for (const auto& c : cases) {
    LqCfgFile file = Loaded(std::string("g{ v = junk\r\n \"") + c.raw + "\" }");
    EXPECT_EQ(OptionText(file.Group(LqWString(u"g")), u"v"), c.value) << c.raw;
  }
}

TEST_F(CfgFile, BadGroupsAreDroppedAndReadingGoesOn) {
  // Cut off by the end of the file.
  EXPECT_EQ(Loaded("a{ b=\"1\"").Root()->Size(), 0);
  // A value running into the end of the file.
  EXPECT_EQ(Loaded("a{ b=\"1").Root()->Size(), 0);
  // A nameless group inside a group loses that group only; the reader goes on in the parent.
  LqCfgFile file = Loaded("p{ a{ { q=\"2\" } r{}");
  EXPECT_EQ(file.Root()->Size(), 2);
  EXPECT_EQ(file.Group(LqWString(u"p"))->Size(), 0);
  EXPECT_EQ(OptionText(file.Group(LqWString(u"p")), u"q"), "2");
  // Top-level options and stray braces are skipped; a nameless option is dropped.
  LqCfgFile loose = Loaded("x=\"1\" } a{ =\"no name\" b=\"2\" }");
  EXPECT_EQ(loose.Root()->Size(), 1);
  EXPECT_EQ(OptionsOf(loose.Group(LqWString(u"a"))), std::vector<std::string>{"b=2"});
}

TEST_F(CfgFile, ErrorTokenAtTopLevelFailsButKeepsWhatWasRead) {
  LqCfgFile file = Loaded("a{} { b=\"1\" } c{}", false);
  EXPECT_EQ(file.Root()->Size(), 1);
  EXPECT_EQ(Loaded("x=\"unterminated", false).Root()->Size(), 0);
}

TEST_F(CfgFile, DeepNestingEndsInATreeNotACrash) {
  std::string deep(100000, '{');
  LqCfgFile unnamed = Loaded(deep, false);
  std::string named;
  for (int i = 0; i < 100000; ++i)
    named += "g{";
  LqCfgFile cut = Loaded(named);
  EXPECT_EQ(cut.Root()->Size(), 0);
  std::string closed;
  for (int i = 0; i < 1500; ++i)
    closed += "g{";
  closed += "v=\"x\"";
  for (int i = 0; i < 1500; ++i)
    closed += "}";
  LqCfgFile limited = Loaded(closed);
  // Groups below the depth limit are dropped; the levels above it stay.
  int depth = 0;
  for (const Group* g = limited.Root(); g->Size() > 0; g = *g->GroupsBegin())
    ++depth;
  EXPECT_EQ(depth, LqCfgFile::kMaxDepth);
}

TEST_F(CfgFile, PathsFilterOnOptionValues) {
  LqCfgFile file = Loaded(
      "meter{ id=\"3\" port{ n=\"a\" } }\r\n"
      "meter{ id=\"7\" port{ n=\"b\" } }\r\n"
      "meter{ id=\"7\" port{ n=\"c\" } }\r\n");
  EXPECT_EQ(OptionText(file.Group(LqWString(u"meter:id='7'/port")), u"n"), "b");
  EXPECT_EQ(OptionText(file.Group(LqWString(u"meter/port")), u"n"), "a");
  EXPECT_EQ(OptionText(file.Group(u"meter:id='%d'/port", 3), u"n"), "a");
  EXPECT_EQ(OptionText(file.Group(LqWString(u"meter:id='7'")), u"id"), "7");
  // The first match decides; its subtree is searched without going back.
  EXPECT_EQ(file.Group(LqWString(u"meter/nothing")), nullptr);
  EXPECT_EQ(file.Group(LqWString(u"meter:id='9'")), nullptr);
  EXPECT_EQ(file.Group(LqWString(u"Meter")), nullptr);
}

TEST_F(CfgFile, MalformedPathsGiveNullOrTheDocumentedException) {
  LqCfgFile file = Loaded("a{ k=\"v\" b{} }");
  const char16_t* nulls[] = {u"a:k='v'x", u"a:k=", u"a:k='", u"a:k=v", u"a:k='v", u"a:k=x'v'"};
  for (const char16_t* path : nulls)
    EXPECT_EQ(file.Group(LqWString(path)), nullptr);
  // Without '=' after ':' the whole text is the name.
  EXPECT_EQ(file.Group(LqWString(u"a:k")), nullptr);
  EXPECT_EQ(file.Group(LqWString(u"a:=")), nullptr);
  // A path ending in ':' reads past the end of the text.
  EXPECT_THROW(file.Group(LqWString(u"a:")), StdRuntimeException);
  EXPECT_EQ(file.Group(LqWString(u"")), nullptr);
}

TEST_F(CfgFile, CopiesAreDeepAndDifferInTheDirtyFlag) {
  LqCfgFile file = Loaded("a{ b{ c=\"1\" } }");
  file.SetDirty(true);
  LqCfgFile copy(file);
  EXPECT_FALSE(copy.Dirty());
  LqCfgFile assigned;
  assigned = file;
  EXPECT_TRUE(assigned.Dirty());
  EXPECT_EQ(assigned.FileName(), file.FileName());
  file.Reset(LqWString(u"other"));
  EXPECT_EQ(OptionText(copy.Group(LqWString(u"a/b")), u"c"), "1");
  EXPECT_EQ(OptionText(assigned.Group(LqWString(u"a/b")), u"c"), "1");
}

TEST_F(CfgFile, EditingGroupsAndOptions) {
  LqCfgFile file = Loaded("a{ k=\"1\" k=\"2\" }");
  Group* a = file.Group(LqWString(u"a"));
  a->RemoveOption(LqWString(u"k"));
  EXPECT_EQ(OptionsOf(a), std::vector<std::string>{"k=2"});
  a->RemoveOption(LqWString(u"missing"));
  Group* added = file.AddGroup(LqWString(u"a"));
  EXPECT_EQ(file.Root()->Size(), 2);
  // A group that is no child is deleted all the same (the sanitizers see no leak).
  a->RemoveGroup(new Group(LqWString(u"stray")));
  a->RemoveGroup(nullptr);
  const_cast<Group*>(file.Root())->RemoveGroup(added);
  EXPECT_EQ(file.Root()->Size(), 1);
  const LqWString fallback(u"d");
  EXPECT_EQ(&a->OptionValue(LqWString(u"none"), fallback), &fallback);
  EXPECT_TRUE(file.Save());
  EXPECT_TRUE(file.SaveAs(m_folder.Wide("elsewhere.cfg")));
  EXPECT_FALSE(m_folder.Exists("elsewhere.cfg"));
}

}  // namespace
