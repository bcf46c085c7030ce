#include "lqtools/platform/SystemPath.h"

#include "lqtools/platform/Utf8Encoder.h"

namespace lq::detail {

std::string ToSystemText(const char16_t* text) {
  std::string result;
  if (text) EncodeUtf8(text, [&result](char byte) { result += byte; });
  return result;
}

std::string ToSystemPath(const char16_t* path) {
  std::string result = ToSystemText(path);
  for (char& c : result)
    if (c == '\\') c = '/';
  return result;
}

}  // namespace lq::detail
