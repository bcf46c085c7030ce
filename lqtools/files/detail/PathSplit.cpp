#include "lqtools/files/detail/PathSplit.h"

#include <unistd.h>

#include <cerrno>

#include <string>
#include <vector>

#include "lqtools/text/Unicode.h"

namespace lq::detail {

SplitPath SplitPathOf(const char16_t* path) {
  SplitPath parts;
  if (!path) return parts;
  const int length = LqWideChar::Length(path);
  int start = 0;
  if (length >= 2 && path[1] == u':') {
    parts.drive.Assign(path, 2);
    start = 2;
  }
  int nameStart = start;
  for (int i = start; i < length; ++i)
    if (IsPathSeparator(path[i])) nameStart = i + 1;
  parts.directory.Assign(path + start, nameStart - start);
  int dot = -1;
  for (int i = nameStart; i < length; ++i)
    if (path[i] == u'.') dot = i;
  const int nameEnd = dot < 0 ? length : dot;
  parts.name.Assign(path + nameStart, nameEnd - nameStart);
  parts.extension.Assign(path + nameEnd, length - nameEnd);
  return parts;
}

LqWString MakePath(const char16_t* drive, const char16_t* directory, const char16_t* name,
                   const char16_t* extension) {
  LqWString path(drive);
  if (directory && *directory) {
    path += directory;
    if (!IsPathSeparator(path[path.Length() - 1])) path += u'\\';
  }
  path += name;
  if (extension && *extension) {
    if (*extension != u'.') path += u'.';
    path += extension;
  }
  return path;
}

LqWString FullPathOf(const char16_t* path) {
  LqWString text(path);
  std::u16string joined;
  if (text.IsEmpty() || !IsPathSeparator(text[0])) {
    std::vector<char> cwd(4096);
    while (!getcwd(cwd.data(), cwd.size())) {
      if (errno != ERANGE) return LqWString();
      cwd.resize(cwd.size() * 2);
    }
    LqWString current;
    Utf8ToUtf16(current, LqString(cwd.data(), false));
    joined.assign(static_cast<const char16_t*>(current),
                  static_cast<std::size_t>(current.Length()));
    joined += u'/';
  }
  joined.append(static_cast<const char16_t*>(text), static_cast<std::size_t>(text.Length()));

  std::vector<std::u16string> parts;
  std::u16string piece;
  auto flush = [&]() {
    if (piece == u"..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!piece.empty() && piece != u".") {
      parts.push_back(piece);
    }
    piece.clear();
  };
  for (char16_t c : joined) {
    if (IsPathSeparator(c)) {
      flush();
    } else {
      piece += c;
    }
  }
  const bool closingSeparator = !joined.empty() && IsPathSeparator(joined.back());
  flush();
  LqWString result(LqWString::GrowSmallBlock);
  for (const std::u16string& part : parts) {
    result += u'/';
    result += part.c_str();
  }
  if (parts.empty() || closingSeparator) result += u'/';
  result.Compact();
  return result;
}

}  // namespace lq::detail
