#include "lqtools/config/LqCfgFile.h"

#include <cstdarg>

#include "lqtools/config/detail/GroupPath.h"

LqCfgFile::LqCfgFile(const LqCfgFile& other) {
  // Kept: a copy starts clean while an assignment takes the dirty flag along.
  Reset(other.m_fileName);
  m_root = other.m_root;
}

LqCfgFile& LqCfgFile::operator=(const LqCfgFile& other) {
  m_fileName = other.m_fileName;
  m_root = other.m_root;
  m_dirty = other.m_dirty;
  return *this;
}

LqCfgFile::~LqCfgFile() = default;

void LqCfgFile::Reset(const LqWString& fileName) {
  m_dirty = false;
  m_fileName = fileName;
  m_root.Reset();
}

bool LqCfgFile::SaveAs(const LqWString& fileName) {
  m_fileName = fileName;
  return Save();
}

bool LqCfgFile::Load(const LqWString& fileName) {
  Reset(fileName);
  CCfgTokenizer tokenizer;
  if (!tokenizer.Open(fileName)) return false;
  while (tokenizer.Next()) {
    switch (tokenizer.TokenType()) {
      case CCfgTokenizer::GroupOpen: {
        LqGroup* group = m_root.AddGroup(tokenizer.GroupName());
        if (!group->Load(tokenizer)) m_root.RemoveGroup(group);
        break;
      }
      case CCfgTokenizer::Error: return false;
      default: break;  // options at top level and stray '}' are skipped
    }
  }
  return true;
}

LqCfgFile::LqGroup* LqCfgFile::Group(const char16_t* format, ...) const {
  va_list args;
  va_start(args, format);
  const LqWString path = lq::detail::FormatGroupPath(format, args);
  va_end(args);
  return m_root.Group(path);
}
