// Small helpers of the JSON tests: readable names for table cases, the text of a tree as UTF-8.
#pragma once

#include <lqtools/json/JsonDocument.h>
#include <lqtools/text/Unicode.h>

#include <cctype>
#include <cstring>
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

// The wide writer's text of `node` as UTF-8, or "(none)" when there is no node.
inline std::string TextOf(const JsonDocument::JsonNode* node) {
  if (!node) return "(none)";
  std::u16string wide;
  node->CreateJsonCode(wide);
  LqString utf8;
  Utf16ToUtf8(utf8, LqWString(wide.c_str()));
  return std::string(utf8);
}
