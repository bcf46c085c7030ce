#include "lqtools/platform/SystemPath.h"

#include "lqtools/platform/Utf8Encoder.h"

#include <string>

namespace lq::detail {

std::string ToSystemText(const char16_t* text) {
  std::string result;
  if (!text) return result;
  const std::size_t length = std::char_traits<char16_t>::length(text);
  result.resize(Utf8LengthOf(text, length));
  char* const begin = result.data();
  result.resize(
      static_cast<std::size_t>(EncodeUtf8(text, length, begin, begin + result.size()) - begin));
  return result;
}

std::string ToSystemPath(const char16_t* path) {
  std::string result = ToSystemText(path);
  for (char& c : result)
    if (c == '\\') c = '/';
  return result;
}

}  // namespace lq::detail
