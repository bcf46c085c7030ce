// LqFileFind walks the entries of one folder that match a mask such as "logs/*.txt".
//
// Mask rules of the original platform: '*' matches any run of characters, '?' exactly one, and a
// closing ".*" also matches names without a dot, so "*.*" matches every name. Matching is
// case-sensitive, as names on this system are. The folder part may use '\' or '/'; "." and ".."
// come as dots entries. Entries come in the order the system gives them.
//
// The calling order of every user:
//   LqFileFind find;
//   if (find.FindFile(u"dir/*")) {
//     int more;
//     do { more = find.FindNextFileW(); use(find.GetFileName()); } while (more);
//   }
// FindNextFileW must run once before the first entry can be read, and returns zero when the entry
// it moved to is the last one, which stays readable. An object belongs to one thread at a time.
#pragma once

#include <memory>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

class LQTOOLS_API LqFileFind {
 public:
  LqFileFind();
  virtual ~LqFileFind();
  LqFileFind(const LqFileFind&) = delete;
  LqFileFind& operator=(const LqFileFind&) = delete;

  void Close();
  // Non-zero when at least one entry matches. A null mask means "*.*" in the current folder.
  int FindFile(const char16_t* mask);
  int FindNextFileW();

  LqWString GetFileName() const;   // name with extension
  LqWString GetFilePath() const;   // the folder searched followed by the name
  LqWString GetFileTitle() const;  // name without extension
  LqWString GetRoot() const;       // the folder searched, with its closing separator
  int IsDirectory() const;
  int IsDots() const;

 private:
  struct Search;
  std::unique_ptr<Search> m_find;
};
