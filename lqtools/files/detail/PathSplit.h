// The platform's path split and join, on 16-bit paths. Both '\' and '/' separate folders.
//   split: drive = the first two units when the second is ':'; directory = up to and including the
//          last separator; extension = from the last '.' of the remaining name; name = the rest.
//   join:  drive, directory (a '\' added when it lacks a closing separator), name, extension (a
//          '.' added when it lacks one).
#pragma once

#include "lqtools/text/LqBasicString.h"

namespace lq::detail {

struct SplitPath {
  LqWString drive;
  LqWString directory;
  LqWString name;
  LqWString extension;
};

inline bool IsPathSeparator(char16_t c) { return c == u'\\' || c == u'/'; }

SplitPath SplitPathOf(const char16_t* path);
LqWString MakePath(const char16_t* drive, const char16_t* directory,
                               const char16_t* name, const char16_t* extension);
// An absolute path with "." and ".." resolved as text; the target need not exist. A relative
// path is taken from the current directory. Separators come out as '/'.
LqWString FullPathOf(const char16_t* path);

}  // namespace lq::detail
