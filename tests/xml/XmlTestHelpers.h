// Small helpers shared by the XML tests: readable texts for assertions and a temporary folder.
#pragma once

#include <lqtools/text/Unicode.h>
#include <lqtools/xml/XmlDocument.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

// The 55 bytes that open every saved document.
inline const std::string kHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>";

inline std::string U8(const LqWString& text) {
  LqString narrow;
  Utf16ToUtf8(narrow, text);
  return std::string(narrow);
}

inline std::u16string U16(const std::string& text) {
  LqWString wide;
  Utf8ToUtf16(wide, LqString(text.c_str()));
  return std::u16string(static_cast<const char16_t*>(wide), wide.Length());
}

// The string writer's text of the whole document, without the header.
inline std::string Code(const XmlDocument& document) {
  LqString out;
  document.CreateXmlCode(out, false);
  return std::string(out);
}

inline std::string Code(const XmlDocument::XmlNode& node) {
  LqString out;
  node.CreateXmlCode(out);
  return std::string(out);
}

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteFile(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// A fresh folder under the system's temporary folder, removed with everything in it.
class TempFolder {
 public:
  TempFolder() { std::filesystem::create_directories(m_path); }
  ~TempFolder() { std::filesystem::remove_all(m_path, m_ignored); }
  const std::filesystem::path& Path() const { return m_path; }
  std::u16string Wide(const std::string& name) const { return U16((m_path / name).string()); }

 private:
  std::filesystem::path m_path = std::filesystem::temp_directory_path() /
                                 ("lqtools-xml-" + std::to_string(std::random_device()()) +
                                  std::to_string(std::random_device()()));
  std::error_code m_ignored;
};
