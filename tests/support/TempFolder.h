// A fresh folder under the system's temporary folder for one test, removed with all it holds when
// the test ends. Paths come as UTF-8 (Path) or as the library's 16-bit form (Wide).
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <lqtools/text/Unicode.h>

class TempFolder {
 public:
  TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "lqtools-XXXXXX").string();
    m_path = mkdtemp(pattern.data());
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  // The folder itself, or `relative` inside it.
  std::string Path(const std::string& relative = "") const {
    return relative.empty() ? m_path : m_path + "/" + relative;
  }
  LqWString Wide(const std::string& relative = "") const {
    LqWString out;
    Utf8ToUtf16(out, LqString(Path(relative).c_str()));
    return out;
  }

  void Write(const std::string& relative, const std::string& content) const {
    std::ofstream(Path(relative), std::ios::binary) << content;
  }
  std::string Read(const std::string& relative) const {
    std::ifstream in(Path(relative), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  bool Exists(const std::string& relative) const { return std::filesystem::exists(Path(relative)); }

  // The same as a filesystem path, and as a standard 16-bit string, for tests that work in those.
  std::filesystem::path Root() const { return m_path; }
  std::u16string WideText(const std::string& relative = "") const {
    const LqWString wide = Wide(relative);
    return std::u16string(static_cast<const char16_t*>(wide),
                          static_cast<std::size_t>(wide.Length()));
  }

 private:
  std::string m_path;
};
