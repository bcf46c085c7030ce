// The log channels, against the log files this build writes to (LqLogFileName and
// LqExceptionLogFileName, inside the build folder for a build with tests).
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include <lqtools/files/LqLog.h>

#include "support/TempFolder.h"

namespace {

namespace fs = std::filesystem;

const char* const kStamp = R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z - )";

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

class LogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::error_code ignored;
    fs::remove_all(m_log, ignored);
    fs::remove_all(m_exceptionLog, ignored);
  }
  void TearDown() override { SetUp(); }

  const std::string m_log = LqLogFileName();
  const std::string m_exceptionLog = LqExceptionLogFileName();
};

TEST_F(LogTest, EntriesBeginWithTheTimeAndGetNoLineEnd) {
  printlog("x");
  printlog("%d-%s", 7, "y");
  EXPECT_TRUE(
      std::regex_match(ReadFile(m_log), std::regex(std::string(kStamp) + "x" + kStamp + "7-y")));
}

TEST_F(LogTest, LongMessageIsCutBehindTheTimePrefix) {
  printlog("%s", std::string(5000, 'a').c_str());
  printlog(u"%ls", std::u16string(5000, u'b').c_str());
  const std::string text = ReadFile(m_log);
  const std::regex whole(std::string("(") + kStamp + ")(a+)(" + kStamp + ")(b+)");
  std::smatch match;
  ASSERT_TRUE(std::regex_match(text, match, whole));
  // The narrow form cuts the message, the wide form the whole entry.
  EXPECT_EQ(match[2].length(), 4095);
  EXPECT_EQ(match[3].length() + match[4].length(), 4095);
}

TEST_F(LogTest, WideFormKeepsTheLowByteOfEachUnit) {
  printlog(u"%ls|", u"\u00e9\u0141\u20ac");
  // U+00E9 stays 0xE9, U+0141 becomes 'A', U+20AC becomes 0xAC.
  const std::string text = ReadFile(m_log);
  ASSERT_GE(text.size(), 4u);
  EXPECT_EQ(text.substr(text.size() - 4), std::string("\xE9\x41\xAC|"));
}

TEST_F(LogTest, WideUnitWithZeroLowByteEndsTheEntry) {
  printlog(u"ab\u0100cd");
  EXPECT_TRUE(std::regex_match(ReadFile(m_log), std::regex(std::string(kStamp) + "ab")));
}

TEST_F(LogTest, FileIsEmptiedOnlyAboveTenMebibytes) {
  const struct {
    std::size_t size;
    bool kept;
  } cases[] = {{0xA00000, true}, {0xA00001, false}};
  for (const auto& c : cases) {
    SetUp();
    std::ofstream(m_log, std::ios::binary) << std::string(c.size, 'z');
    printlog("next\n");
    const std::string text = ReadFile(m_log);
    if (c.kept) {
      EXPECT_EQ(text.size(), c.size + 24 + 3 + 5) << c.size;
    } else {
      EXPECT_TRUE(std::regex_match(text, std::regex(std::string(kStamp) + "next\n"))) << c.size;
    }
  }
}

TEST_F(LogTest, ExceptionLogAddsTheLineEndAndWritesUtf8) {
  printExceptionLog(u"failed %ls", u"\u00e9");
  printExceptionLog(u"again");
  EXPECT_TRUE(
      std::regex_match(ReadFile(m_exceptionLog),
                       std::regex(std::string(kStamp) + "failed \xC3\xA9\n" + kStamp + "again\n")));
}

TEST_F(LogTest, PlantedSymbolicLinkIsNotWrittenThrough) {
  TempFolder folder;
  folder.Write("target", "keep");
  fs::create_symlink(folder.Path("target"), m_log);
  fs::create_symlink(folder.Path("target"), m_exceptionLog);
  printlog("through the link\n");
  printlog(u"through the link\n");
  printExceptionLog(u"through the link");
  EXPECT_EQ(folder.Read("target"), "keep");
}

TEST_F(LogTest, UnwritableLogPathLosesTheEntrySilently) {
  // A folder standing at the log path cannot be opened for writing.
  fs::create_directory(m_log);
  fs::create_directory(m_exceptionLog);
  printlog("lost\n");
  printlog(u"lost\n");
  printExceptionLog(u"lost");
  EXPECT_TRUE(fs::is_empty(m_log));
  EXPECT_TRUE(fs::is_empty(m_exceptionLog));
}

TEST_F(LogTest, EightThreadsWriteWholeEntriesOnly) {
  constexpr int kThreads = 8;
  constexpr int kEntries = 200;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t] {
      const std::string payload(100 + t * 50, static_cast<char>('a' + t));
      for (int i = 0; i < kEntries; ++i) {
        if (i % 2)
          printlog("%d:%s\n", t, payload.c_str());
        else
          printlog(u"%d:%hs\n", t, payload.c_str());
      }
    });
  }
  for (auto& thread : threads)
    thread.join();

  std::ifstream in(m_log, std::ios::binary);
  const std::regex entry(std::string(kStamp) + R"((\d):([a-z]+))");
  int lines = 0;
  for (std::string line; std::getline(in, line); ++lines) {
    std::smatch match;
    ASSERT_TRUE(std::regex_match(line, match, entry)) << line;
    const int t = std::stoi(match[1]);
    EXPECT_EQ(match[2].str(), std::string(100 + t * 50, static_cast<char>('a' + t)));
  }
  EXPECT_EQ(lines, kThreads * kEntries);
}

}  // namespace
