// The tokenizer of configuration files: one byte at a time, skipping whatever it does not know.
#include <stdio.h>

#include <string>

#include "lqtools/config/LqCfgFile.h"
#include "lqtools/files/FileOperations.h"
#include "lqtools/text/Unicode.h"

namespace {

constexpr char kHeader[] = "ASCII\r\n";

// The classes of the "C" locale, whatever the host program's locale is.
bool IsNameByte(int c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}
bool IsControlByte(int c) { return (c >= 0 && c < 0x20) || c == 0x7F; }

}  // namespace

LqCfgFile::CCfgTokenizer::~CCfgTokenizer() {
  if (m_stream) std::fclose(m_stream);
}

bool LqCfgFile::CCfgTokenizer::Open(const LqWString& fileName) {
  if (m_stream) std::fclose(m_stream);
  m_stream = widefopen(fileName, u"rb");
  if (!m_stream) return false;
  // All seven bytes are read and compared, so a file that ends early fails too.
  bool same = true;
  for (const char expected : std::string(kHeader))
    same &= getc_unlocked(m_stream) == expected;
  if (!same) {
    std::fclose(m_stream);
    m_stream = nullptr;
  }
  return same;
}

bool LqCfgFile::CCfgTokenizer::Next() {
  m_tokenType = None;
  LqWString name;
  name.SetGrowthIfNone(LqWString::GrowSmallBlock);
  if (!m_stream) return false;
  for (int c; (c = getc_unlocked(m_stream)) != EOF;) {
    if (c == '=') {
      m_tokenType = Option;
      m_optionName = name;
      if (!ReadValue()) {
        m_tokenType = Error;
        return true;
      }
      // An option without a name is dropped.
      if (name.IsEmpty()) continue;
      return true;
    }
    if (c == '{') {
      if (name.IsEmpty()) {
        m_tokenType = Error;
        return true;
      }
      m_tokenType = GroupOpen;
      m_groupName = name;
      return true;
    }
    if (c == '}') {
      m_tokenType = GroupClose;
      return true;
    }
    // Kept: any other byte is dropped without ending the name, so "my group" names "mygroup" and
    // prose before an option is glued to its name; files in the field rely on this looseness.
    if (IsNameByte(c)) name += static_cast<char16_t>(c);
  }
  return false;
}

bool LqCfgFile::CCfgTokenizer::ReadValue() {
  m_optionValue = u"";
  int c;
  while ((c = getc_unlocked(m_stream)) != '"')
    if (c == EOF) return false;

  std::string bytes;
  while ((c = getc_unlocked(m_stream)) != EOF && c != '"') {
    if (IsControlByte(c)) continue;
    if (c == '/' || c == '\\') {
      // Kept: both are escape leaders, and an unknown escape vanishes with its leader, so a
      // plain "a/b" reads "a" and paths are written with doubled separators.
      const int escaped = getc_unlocked(m_stream);
      switch (escaped) {
        case '"': bytes += '"'; break;
        case '/': bytes += '/'; break;
        case '\\': bytes += '\\'; break;
        case 'n': bytes += '\n'; break;
        case 'r': bytes += '\r'; break;
        default: break;
      }
      continue;
    }
    bytes += static_cast<char>(c);
  }
  Utf8ToUtf16(m_optionValue, bytes.data(), static_cast<int>(bytes.size()));
  // A value that runs into the end of the file is an error.
  return !feof_unlocked(m_stream);
}
