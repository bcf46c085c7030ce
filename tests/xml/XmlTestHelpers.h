// Small helpers shared by the XML tests: readable texts for assertions and whole files.
#pragma once

#include <lqtools/text/Unicode.h>
#include <lqtools/xml/XmlDocument.h>

#include "support/TempFolder.h"
#include "support/TextHelpers.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// The 55 bytes that open every saved document.
inline const std::string kHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>";

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
