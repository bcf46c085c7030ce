#include <gtest/gtest.h>
#include <lqtools/files/FileOperations.h>
#include <lqtools/files/LqFileFind.h>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>

#include "support/TempFolder.h"

namespace {

// Every name the find yields, in the order of the documented calling loop.
std::multiset<std::u16string> FindAll(const LqWString& mask, int* lastResult = nullptr) {
  std::multiset<std::u16string> names;
  LqFileFind find;
  if (!find.FindFile(mask)) return names;
  int more;
  do {
    more = find.FindNextFileW();
    names.insert(static_cast<const char16_t*>(find.GetFileName()));
    if (lastResult) *lastResult = more;
  } while (more);
  return names;
}

TEST(LqFileFind, YieldsDotsAndEveryEntryAndKeepsTheLastReadable) {
  TempFolder dir;
  dir.Write("only.txt", "x");
  LqFileFind find;
  ASSERT_NE(find.FindFile(dir.Wide("*")), 0);
  EXPECT_NE(find.FindNextFileW(), 0);
  EXPECT_NE(find.FindNextFileW(), 0);
  EXPECT_EQ(find.FindNextFileW(), 0);
  EXPECT_FALSE(find.GetFileName().IsEmpty());
  EXPECT_EQ(FindAll(dir.Wide("*")), (std::multiset<std::u16string>{u".", u"..", u"only.txt"}));
}

TEST(LqFileFind, MasksFollowThePlatformRules) {
  TempFolder dir;
  for (const char* name : {"a.txt", "b.log", "noext", "ab.txt"})
    dir.Write(name, "");
  using Names = std::multiset<std::u16string>;
  EXPECT_EQ(FindAll(dir.Wide("*.txt")), (Names{u"a.txt", u"ab.txt"}));
  EXPECT_EQ(FindAll(dir.Wide("?.txt")), (Names{u"a.txt"}));
  EXPECT_EQ(FindAll(dir.Wide("*.*")).size(), 6u);  // also names without a dot, and the dots
  EXPECT_EQ(FindAll(dir.Wide("noext.*")), (Names{u"noext"}));
  LqWString backslashed = dir.Wide();
  backslashed += u"\\a*";
  EXPECT_EQ(FindAll(backslashed), (Names{u"a.txt", u"ab.txt"}));
  LqFileFind none;
  EXPECT_EQ(none.FindFile(dir.Wide("*.none")), 0);
  EXPECT_EQ(none.FindFile(dir.Wide("missing/*")), 0);
}

TEST(LqFileFind, GettersDescribeTheCurrentEntry) {
  TempFolder dir;
  dir.Write("report.final.txt", "");
  std::filesystem::create_directory(dir.Path("sub"));
  LqFileFind find;
  ASSERT_NE(find.FindFile(dir.Wide("r*")), 0);
  EXPECT_EQ(find.FindNextFileW(), 0);
  EXPECT_EQ(find.GetFileTitle(), u"report.final");
  EXPECT_EQ(find.GetRoot(), dir.Wide() + LqWString(u"/"));
  EXPECT_EQ(find.GetFilePath(), dir.Wide("report.final.txt"));
  EXPECT_EQ(find.IsDirectory(), 0);
  ASSERT_NE(find.FindFile(dir.Wide("sub")), 0);
  find.FindNextFileW();
  EXPECT_NE(find.IsDirectory(), 0);
  EXPECT_EQ(find.IsDots(), 0);
}

TEST(FileOperations, OpenRemoveRenameByWidePath) {
  TempFolder dir;
  const LqWString file = dir.Wide("\u00e9t\u00e9.txt");
  FILE* f = widefopen(file, u"w");
  ASSERT_NE(f, nullptr);
  std::fputs("data", f);
  std::fclose(f);
  EXPECT_EQ(dir.Read("\xC3\xA9t\xC3\xA9.txt"), "data");

  const int fd = wideopen(file, O_RDONLY, 0);
  EXPECT_GE(fd, 0);
  close(fd);

  dir.Write("other.txt", "other");
  EXPECT_EQ(widerename(file, dir.Wide("other.txt")), -1);  // no replacing
  EXPECT_EQ(widerename(file, dir.Wide("moved.txt")), 0);
  EXPECT_EQ(dir.Read("moved.txt"), "data");
  EXPECT_EQ(wideremove(dir.Wide("moved.txt")), 0);
  EXPECT_EQ(wideremove(dir.Wide("moved.txt")), -1);
  EXPECT_EQ(widefopen(dir.Wide("missing/x"), u"r"), nullptr);
}

TEST(FileOperations, BackslashesReachTheSystemAsSlashes) {
  TempFolder dir;
  std::filesystem::create_directory(dir.Path("sub"));
  LqWString path = dir.Wide();
  path += u"\\sub\\file.txt";
  FILE* f = widefopen(path, u"w");
  ASSERT_NE(f, nullptr);
  std::fclose(f);
  EXPECT_TRUE(dir.Exists("sub/file.txt"));
}

TEST(FileOperations, CopyTruncatesOrKeepsTheTail) {
  TempFolder dir;
  dir.Write("from", std::string(3000, 'a'));
  dir.Write("to", std::string(5000, 'b'));
  EXPECT_TRUE(widecopy(dir.Wide("from"), dir.Wide("to"), true));
  EXPECT_EQ(dir.Read("to"), std::string(3000, 'a') + std::string(2000, 'b'));
  EXPECT_TRUE(widecopy(dir.Wide("from"), dir.Wide("to"), false));
  EXPECT_EQ(dir.Read("to"), std::string(3000, 'a'));
  EXPECT_FALSE(widecopy(dir.Wide("missing"), dir.Wide("to2"), false));
  EXPECT_FALSE(widecopy(dir.Wide("from"), dir.Wide("no/such/to"), false));
}

// A copy that fails on one side closes the descriptor the other side opened.
TEST(FileOperations, FailedCopyKeepsNoDescriptor) {
  TempFolder dir;
  dir.Write("from", "abc");
  const auto open = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
  };
  const auto before = open();
  for (int i = 0; i < 20; ++i) {
    EXPECT_FALSE(widecopy(dir.Wide("from"), dir.Wide("no/such/to"), false));
    EXPECT_FALSE(widecopy(dir.Wide("missing"), dir.Wide("to"), false));
  }
  EXPECT_EQ(open(), before);
}

TEST(FileOperations, CreateDirectoryMakesTheFolderChainOfAFilePath) {
  TempFolder dir;
  const LqWString file = dir.Wide("a\\b/file.txt");
  EXPECT_TRUE(CreateDirectoryW(file));
  EXPECT_TRUE(std::filesystem::is_directory(dir.Path("a/b")));
  EXPECT_FALSE(dir.Exists("a/b/file.txt"));
  EXPECT_FALSE(CreateDirectoryW(file));  // the deepest folder exists already
  EXPECT_FALSE(CreateDirectoryW(u"name"));
  EXPECT_FALSE(CreateDirectoryW(dir.Wide("c")));  // no closing separator: not made
  EXPECT_FALSE(dir.Exists("c"));
}

TEST(FileOperations, RemoveFolderTakesWhatItIsAllowedTo) {
  TempFolder dir;
  std::filesystem::create_directories(dir.Path("x/sub"));
  dir.Write("x/file", "");
  dir.Write("x/sub/deep", "");
  EXPECT_EQ(wideremovefolder(dir.Wide("x"), false, false), 0);
  EXPECT_TRUE(dir.Exists("x/file"));
  EXPECT_EQ(wideremovefolder(dir.Wide("x"), false, true), 0);
  EXPECT_FALSE(dir.Exists("x/file"));
  EXPECT_TRUE(dir.Exists("x/sub/deep"));
  EXPECT_EQ(wideremovefolder(dir.Wide("x/"), true, true), 1);
  EXPECT_FALSE(dir.Exists("x"));
}

TEST(FileOperations, RemoveFolderIfEmpty) {
  TempFolder dir;
  std::filesystem::create_directories(dir.Path("full/sub"));
  std::filesystem::create_directories(dir.Path("empty"));
  EXPECT_FALSE(wideremovefolderifempty(dir.Wide("full")));
  EXPECT_TRUE(dir.Exists("full/sub"));
  EXPECT_TRUE(wideremovefolderifempty(dir.Wide("empty")));
  EXPECT_FALSE(dir.Exists("empty"));
  EXPECT_FALSE(wideremovefolderifempty(dir.Wide("empty")));
}

TEST(FileOperations, RenameFilesNameChangesThePrefix) {
  TempFolder dir;
  dir.Write("old1.txt", "1");
  dir.Write("oldest", "2");
  dir.Write("x.txt", "3");
  EXPECT_TRUE(RenameFilesName(dir.Wide() + LqWString(u"/"), u"old", u"new"));
  EXPECT_EQ(dir.Read("new1.txt"), "1");
  EXPECT_EQ(dir.Read("newest"), "2");
  EXPECT_TRUE(dir.Exists("x.txt"));
  EXPECT_TRUE(RenameFilesName(dir.Wide("nothing/"), u"old", u"new"));
}

}  // namespace
