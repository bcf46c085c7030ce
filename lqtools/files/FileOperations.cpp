#include "lqtools/files/FileOperations.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "lqtools/files/LqFileFind.h"
#include "lqtools/files/detail/PathSplit.h"
#include "lqtools/platform/SystemPath.h"

namespace {

std::string SystemPath(const char16_t* path) { return lq::detail::ToSystemPath(path); }

bool MakeFolder(const LqWString& path) { return mkdir(SystemPath(path).c_str(), 0777) == 0; }
bool RemoveFolder(const char16_t* path) { return path && rmdir(SystemPath(path).c_str()) == 0; }

// The mask of every entry of `folder`: "folder/*", or "folder*" when it ends with a separator.
LqWString EveryEntryOf(const char16_t* folder) {
  LqWString mask(folder);
  const bool closed = !mask.IsEmpty() && lq::detail::IsPathSeparator(mask[mask.Length() - 1]);
  mask += closed ? u"*" : u"/*";
  return mask;
}

int OpenUnder(const char16_t* path, int flags) {
  if (!path) return -1;
  return open(SystemPath(path).c_str(), flags | O_CLOEXEC, 0666);
}

}  // namespace

FILE* widefopen(const char16_t* path, const char16_t* mode) {
  if (!path || !mode) return nullptr;
  return std::fopen(SystemPath(path).c_str(), lq::detail::ToSystemText(mode).c_str());
}

int wideopen(const char16_t* path, int flags, int mode) {
  if (!path) return -1;
  return open(SystemPath(path).c_str(), flags | O_CLOEXEC, static_cast<mode_t>(mode));
}

int wideremove(const char16_t* path) {
  if (!path) return -1;
  return unlink(SystemPath(path).c_str());
}

int widerename(const char16_t* from, const char16_t* to) {
  if (!from || !to) return -1;
  const std::string source = SystemPath(from);
  const std::string target = SystemPath(to);
  if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
    return 0;
  if (errno != EINVAL && errno != ENOSYS) return -1;
  // A file system without the no-replace flag: test, then rename.
  struct stat info {};
  if (lstat(target.c_str(), &info) == 0) {
    errno = EEXIST;
    return -1;
  }
  return rename(source.c_str(), target.c_str());
}

// The bytes widecopy moves at a time.
constexpr std::size_t kCopyBlock = 1024;

bool widecopy(const char16_t* from, const char16_t* to, bool noTruncate) {
  const int source = OpenUnder(from, O_RDONLY);
  const int target =
      OpenUnder(to, noTruncate ? (O_WRONLY | O_CREAT) : (O_RDWR | O_CREAT | O_TRUNC));
  if (source < 0 || target < 0) {
    // A failed copy keeps no descriptor: the side that did open is closed again.
    if (source >= 0) close(source);
    if (target >= 0) close(target);
    return false;
  }
  char block[kCopyBlock];
  ssize_t got;
  while ((got = read(source, block, sizeof block)) > 0) {
    [[maybe_unused]] const ssize_t written = write(target, block, static_cast<std::size_t>(got));
  }
  close(source);
  close(target);
  return true;
}

bool CreateDirectoryW(const char16_t* path) {
  const lq::detail::SplitPath parts = lq::detail::SplitPathOf(path);
  LqWString built(parts.drive);
  LqWString rest(parts.directory);
  bool made = false;
  for (;;) {
    // Kept: '\' is always looked for first, so with mixed separators a piece can hold a '/'.
    int separator = rest.Find(u'\\', 0);
    if (separator < 0) separator = rest.Find(u'/', 0);
    if (separator < 0) break;
    built += rest.Left(separator + 1);
    rest = rest.Mid(separator + 1, rest.Length());
    made = MakeFolder(built);
  }
  return made;
}

namespace {

// Calls `visit` for every entry that `mask` finds, in the order of enumeration, until it returns
// false. The finder is closed when this returns.
template <typename Visit>
void ForEachEntry(const LqWString& mask, Visit&& visit) {
  LqFileFind find;
  if (!find.FindFile(mask)) return;
  int more;
  do {
    more = find.FindNextFileW();
    if (!visit(static_cast<const LqFileFind&>(find))) return;
  } while (more);
}

}  // namespace

int wideremovefolder(const char16_t* folder, bool recursive, bool removeFiles) {
  if (!folder) return 0;
  ForEachEntry(EveryEntryOf(folder), [&](const LqFileFind& find) {
    if (find.IsDots()) return true;
    const LqWString path = find.GetFilePath();
    if (find.IsDirectory()) {
      if (recursive) {
        wideremovefolder(path, recursive, removeFiles);
        RemoveFolder(path);
      }
    } else if (removeFiles) {
      wideremove(path);
    }
    return true;
  });
  return RemoveFolder(folder) ? 1 : 0;
}

bool wideremovefolderifempty(const char16_t* folder) {
  if (!folder) return false;
  bool empty = true;
  ForEachEntry(EveryEntryOf(folder), [&](const LqFileFind& find) {
    empty = find.IsDots();
    return empty;
  });
  return empty && RemoveFolder(folder);
}

bool RenameFilesName(const char16_t* folder, const char16_t* oldPrefix, const char16_t* newPrefix) {
  if (!folder || !oldPrefix || !newPrefix) return false;
  LqWString mask(folder);
  mask += oldPrefix;
  mask += u"*.*";
  const int cut = LqWideChar::Length(oldPrefix);
  bool failed = false;
  ForEachEntry(mask, [&](const LqFileFind& find) {
    const LqWString name = find.GetFileName();
    LqWString from(folder);
    from += name;
    LqWString to(folder);
    to += newPrefix;
    to += name.Mid(cut, name.Length());
    if (widerename(from, to) != 0 && errno != ENOENT) failed = true;
    return true;
  });
  return !failed;
}
