// Number conversions shared by the JSON tree and its parser.
#pragma once

#include <cstdint>

namespace lq::detail {

// The truncation of the processor: toward zero, and -2147483648 for a value outside the 32-bit
// range, an infinity or NaN, without the undefined out-of-range cast.
inline int32_t TruncateToInt32(double value) {
  return value > -2147483649.0 && value < 2147483648.0 ? static_cast<int32_t>(value) : INT32_MIN;
}

}  // namespace lq::detail
