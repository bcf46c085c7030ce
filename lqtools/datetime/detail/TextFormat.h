// One name for the narrow and the 16-bit bounded formatters, so that the narrow and wide twins
// of the date-time text forms share one body. Internal to the date-time code.
#pragma once

#include <cstddef>

#include "lqtools/platform/WideFormat.h"

namespace lq::detail {

template <typename... Args>
void FormatText(char* out, std::size_t count, const char* format, Args... args) {
  lq::detail::snprintf(out, count, format, args...);
}

template <typename... Args>
void FormatText(char16_t* out, std::size_t count, const char16_t* format, Args... args) {
  lq::detail::swprintf(out, count, format, args...);
}

}  // namespace lq::detail
