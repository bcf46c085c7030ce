// Readable texts for assertions: the UTF-8 of a library string.
#pragma once

#include <lqtools/text/Unicode.h>

#include <string>

inline std::string Utf8Of(const LqWString& text) {
  LqString narrow;
  Utf16ToUtf8(narrow, text);
  return std::string(static_cast<const char*>(narrow), static_cast<std::size_t>(narrow.Length()));
}
