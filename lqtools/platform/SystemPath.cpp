#include "lqtools/platform/SystemPath.h"

#include "lqtools/text/Unicode.h"

namespace lq::detail {

std::string ToSystemText(const char16_t* text) {
  if (!text) return std::string();
  LqString narrow;
  Utf16ToUtf8(narrow, LqWString(text, false));
  return std::string(static_cast<const char*>(narrow), static_cast<std::size_t>(narrow.Length()));
}

std::string ToSystemPath(const char16_t* path) {
  std::string result = ToSystemText(path);
  for (char& c : result)
    if (c == '\\') c = '/';
  return result;
}

}  // namespace lq::detail
