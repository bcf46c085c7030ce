#include "lqtools/files/PathHelpers.h"

#include <unistd.h>

#include <cerrno>
#include <vector>

#include "lqtools/files/detail/PathSplit.h"
#include "lqtools/platform/SystemPath.h"
#include "lqtools/text/Unicode.h"

namespace {

// Room for a path the system gives back (the current folder, the program's file).
constexpr std::size_t kSystemPathBytes = 4096;

const int kMaxPath = 260;

int LastSeparator(const LqWString& text) {
  const int back = text.ReverseFind(u'\\');
  return back >= 0 ? back : text.ReverseFind(u'/');
}

std::string CurrentDirectory() {
  std::vector<char> buffer(kSystemPathBytes);
  while (!getcwd(buffer.data(), buffer.size())) {
    if (errno != ERANGE) return std::string();
    buffer.resize(buffer.size() * 2);
  }
  return buffer.data();
}

// The result is not looked at: a base that cannot be entered resolves against the current folder.
void ChangeDirectory(const std::string& path) {
  if (chdir(path.c_str()) != 0) return;
}

}  // namespace

LqWString GetAppPath() {
  std::vector<char> buffer(kSystemPathBytes);
  const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size() - 1);
  if (length <= 0) return LqWString();
  buffer[static_cast<std::size_t>(length)] = 0;
  LqWString executable;
  Utf8ToUtf16(executable, LqString(buffer.data(), false));
  const lq::detail::SplitPath parts = lq::detail::SplitPathOf(executable);
  LqWString folder = lq::detail::MakePath(parts.drive, parts.directory, nullptr, nullptr);
  folder.Compact();
  return folder;
}

LqWString GetSharePath() { return GetAppPath(); }

bool ExtractNameFromPath(const LqWString& path, LqWString& name, LqWString& folder) {
  name = u"";
  folder = u"";
  const lq::detail::SplitPath parts = lq::detail::SplitPathOf(path);
  name = parts.name;
  if (!parts.extension.IsEmpty()) {
    // Kept: the extension already holds its dot; stored names depend on the doubled dot.
    name += u".";
    name += parts.extension;
  }
  folder = parts.drive + parts.directory;
  return true;
}

bool PreviousDirectory(const LqWString& path, LqWString& parent) {
  parent = path;
  int separator = LastSeparator(parent);
  if (separator < 0) return false;
  const bool closing = separator == parent.Length() - 1;
  parent = parent.Left(separator);
  if (closing) {
    separator = LastSeparator(parent);
    if (separator < 0) return false;
    parent = parent.Left(separator);
  }
  parent += u'/';
  return true;
}

LqWString& RelativePathToFullPath(const LqWString& base, const LqWString& relative,
                                  LqWString& full) {
  const std::string previous = CurrentDirectory();
  ChangeDirectory(lq::detail::ToSystemPath(base));
  LqWString resolved = lq::detail::FullPathOf(relative);
  if (!previous.empty()) ChangeDirectory(previous);
  full = resolved.Length() < kMaxPath ? resolved : LqWString();
  return full;
}
