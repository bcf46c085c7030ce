#include "lqtools/files/LqFileFind.h"

#include <dirent.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "lqtools/files/detail/PathSplit.h"
#include "lqtools/platform/SystemPath.h"
#include "lqtools/text/Unicode.h"

namespace {

struct Entry {
  LqWString name;
  bool directory;
};

// '*' any run, '?' one unit, a closing ".*" also matches the end of a name without a dot.
bool MatchesMask(const char16_t* mask, const char16_t* name) {
  const char16_t* star = nullptr;
  const char16_t* resume = nullptr;
  while (*name) {
    if (*mask == u'?' || *mask == *name) {
      ++mask, ++name;
    } else if (*mask == u'*') {
      star = mask++;
      resume = name;
    } else if (star) {
      mask = star + 1;
      name = ++resume;
    } else {
      return false;
    }
  }
  while (*mask == u'*')
    ++mask;
  if (mask[0] == u'.' && mask[1] == u'*') {
    mask += 2;
    while (*mask == u'*')
      ++mask;
  }
  return *mask == 0;
}

}  // namespace

struct LqFileFind::Search {
  LqWString root;
  std::vector<Entry> entries;
  std::size_t current = 0;
  bool started = false;

  const Entry* Current() const {
    return started && current < entries.size() ? &entries[current] : nullptr;
  }
};

LqFileFind::LqFileFind() = default;

LqFileFind::~LqFileFind() { Close(); }

void LqFileFind::Close() { m_find.reset(); }

int LqFileFind::FindFile(const char16_t* mask) {
  Close();
  const char16_t* pattern = mask ? mask : u"*.*";
  const lq::detail::SplitPath parts = lq::detail::SplitPathOf(pattern);
  auto search = std::make_unique<Search>();
  search->root = parts.drive + parts.directory;
  const LqWString namePattern = parts.name + parts.extension;

  const std::string folder =
      search->root.IsEmpty() ? std::string(".") : lq::detail::ToSystemPath(search->root);
  DIR* dir = opendir(folder.c_str());
  if (!dir) return 0;
  while (const dirent* item = readdir(dir)) {
    LqWString name;
    Utf8ToUtf16(name, LqString(item->d_name, false));
    if (!MatchesMask(namePattern, name)) continue;
    bool directory = item->d_type == DT_DIR;
    if (item->d_type == DT_UNKNOWN || item->d_type == DT_LNK) {
      struct stat info {};
      const std::string full = folder + "/" + item->d_name;
      directory = stat(full.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
    }
    name.Compact();
    search->entries.push_back(Entry{name, directory});
  }
  closedir(dir);
  if (search->entries.empty()) return 0;
  m_find = std::move(search);
  return 1;
}

int LqFileFind::FindNextFileW() {
  if (!m_find) return 0;
  if (m_find->started) {
    if (m_find->current + 1 >= m_find->entries.size()) return 0;
    ++m_find->current;
  }
  m_find->started = true;
  return m_find->current + 1 < m_find->entries.size() ? 1 : 0;
}

LqWString LqFileFind::GetFileName() const {
  const Entry* entry = m_find ? m_find->Current() : nullptr;
  return entry ? entry->name : LqWString();
}

LqWString LqFileFind::GetFilePath() const {
  const Entry* entry = m_find ? m_find->Current() : nullptr;
  return entry ? m_find->root + entry->name : LqWString();
}

LqWString LqFileFind::GetFileTitle() const {
  const Entry* entry = m_find ? m_find->Current() : nullptr;
  if (!entry) return LqWString();
  const int dot = entry->name.ReverseFind(u'.');
  return dot > 0 ? entry->name.Left(dot) : entry->name;
}

LqWString LqFileFind::GetRoot() const { return m_find ? m_find->root : LqWString(); }

int LqFileFind::IsDirectory() const {
  const Entry* entry = m_find ? m_find->Current() : nullptr;
  return entry && entry->directory ? 1 : 0;
}

int LqFileFind::IsDots() const {
  const Entry* entry = m_find ? m_find->Current() : nullptr;
  return entry && entry->directory && (entry->name == u"." || entry->name == u"..") ? 1 : 0;
}
