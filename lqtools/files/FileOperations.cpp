#include "lqtools/files/FileOperations.h"

#include "lqtools/files/detail/SystemPath.h"

FILE* widefopen(const char16_t* path, const char16_t* mode) {
  if (!path || !mode) return nullptr;
  return std::fopen(lq::detail::ToSystemPath(path).c_str(), lq::detail::ToSystemText(mode).c_str());
}
