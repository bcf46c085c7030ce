// Small helpers of the JSON tests: the text of a tree as UTF-8, and a scratch folder.
#pragma once

#include <lqtools/json/JsonDocument.h>
#include <lqtools/text/Unicode.h>

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <string>
#include <type_traits>

// A case of a table named by its text: quotes shown as ' and every unit outside letters, digits
// and a few plain signs as \xNN, so that test names stay readable, stable and safe for CTest.
template <typename Unit>
void PrintCaseName(const Unit* text, std::ostream* os) {
  for (; *text; ++text) {
    const unsigned code = static_cast<std::make_unsigned_t<Unit>>(*text);
    if (code == '"') {
      *os << '\'';
    } else if (code < 128 && (std::isalnum(static_cast<int>(code)) ||
                              std::strchr("{}:,.-+?=/", static_cast<int>(code)))) {
      *os << static_cast<char>(code);
    } else {
      *os << "\\x" << std::hex << code << std::dec;
    }
  }
}

// The wide writer's text of `node`, as UTF-8.
inline std::string TextOf(const JsonDocument::JsonNode& node) {
  std::u16string wide;
  node.CreateJsonCode(wide);
  LqString utf8;
  Utf16ToUtf8(utf8, LqWString(wide.c_str()));
  return std::string(utf8);
}

inline std::u16string Wide(const std::string& utf8) {
  LqWString wide;
  Utf8ToUtf16(wide, utf8.c_str());
  return std::u16string(static_cast<const char16_t*>(wide));
}

// A fresh folder under the system's temporary folder, removed with its content at the end.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "lqjsonXXXXXX").string();
    if (!mkdtemp(pattern.data())) std::abort();
    m_path = pattern;
  }
  ~ScratchFolder() { std::filesystem::remove_all(m_path); }
  std::u16string File(const std::string& relative) const { return Wide(m_path + "/" + relative); }
  std::string Path(const std::string& relative) const { return m_path + "/" + relative; }

 private:
  std::string m_path;
};
