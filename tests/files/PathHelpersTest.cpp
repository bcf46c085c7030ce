#include <gtest/gtest.h>
#include <lqtools/files/PathHelpers.h>
#include <lqtools/files/detail/PathSplit.h>

#include <unistd.h>

#include <filesystem>
#include <string>

#include "support/TempFolder.h"

namespace {

TEST(PathSplit, SplitsDriveFolderNameAndExtension) {
  const lq::detail::SplitPath parts = lq::detail::SplitPathOf(u"c:\\a/b\\name.tar.gz");
  EXPECT_EQ(parts.drive, u"c:");
  EXPECT_EQ(parts.directory, u"\\a/b\\");
  EXPECT_EQ(parts.name, u"name.tar");
  EXPECT_EQ(parts.extension, u".gz");
  EXPECT_EQ(lq::detail::MakePath(u"c:", u"\\a", u"n", u"txt"), u"c:\\a\\n.txt");
  EXPECT_EQ(lq::detail::MakePath(u"", u"/a/", u"n", u".txt"), u"/a/n.txt");
}

TEST(PathHelpers, AppPathIsTheFolderOfTheExecutable) {
  const LqWString app = GetAppPath();
  ASSERT_FALSE(app.IsEmpty());
  EXPECT_TRUE(app.EndsWith(u"/"));
  EXPECT_EQ(GetSharePath(), app);
  LqString narrow;
  Utf16ToUtf8(narrow, app);
  EXPECT_TRUE(std::filesystem::is_directory(static_cast<const char*>(narrow)));
}

TEST(PathHelpers, ExtractNameKeepsTheDoubledDot) {
  LqWString name(u"old"), folder(u"old");
  EXPECT_TRUE(ExtractNameFromPath(LqWString(u"c:\\a\\b.txt"), name, folder));
  EXPECT_EQ(name, u"b..txt");
  EXPECT_EQ(folder, u"c:\\a\\");
  EXPECT_TRUE(ExtractNameFromPath(LqWString(u"c:\\x\\name"), name, folder));
  EXPECT_EQ(name, u"name");
  EXPECT_EQ(folder, u"c:\\x\\");
}

TEST(PathHelpers, PreviousDirectoryEndsWithSlash) {
  const std::pair<const char16_t*, const char16_t*> cases[] = {
      {u"c:\\a\\b", u"c:\\a/"},
      {u"c:\\a\\b\\", u"c:\\a/"},
      {u"c:/a/b/", u"c:/a/"},
      {u"/usr/lib", u"/usr/"},
  };
  for (const auto& [path, expected] : cases) {
    LqWString parent;
    EXPECT_TRUE(PreviousDirectory(LqWString(path), parent));
    EXPECT_EQ(parent, expected);
  }
  LqWString parent;
  EXPECT_FALSE(PreviousDirectory(LqWString(u"abc"), parent));
  EXPECT_EQ(parent, u"abc");
  EXPECT_FALSE(PreviousDirectory(LqWString(u"abc/"), parent));
  EXPECT_EQ(parent, u"abc");
}

TEST(PathHelpers, RelativePathResolvesAgainstTheBaseAndRestoresTheCurrentFolder) {
  TempFolder dir;
  std::filesystem::create_directories(dir.Path("base"));
  const std::string before = std::filesystem::current_path().string();
  LqWString full;
  RelativePathToFullPath(dir.Wide("base"), LqWString(u"..\\x"), full);
  EXPECT_EQ(full, dir.Wide("x"));
  EXPECT_EQ(std::filesystem::current_path().string(), before);
  RelativePathToFullPath(dir.Wide("base"), LqWString(u"./a/../b/"), full);
  EXPECT_EQ(full, dir.Wide("base/b/"));
  RelativePathToFullPath(dir.Wide("base"), LqWString(u"/abs/./p"), full);
  EXPECT_EQ(full, u"/abs/p");
}

}  // namespace
