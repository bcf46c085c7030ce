// Double to integer truncation as the processor does it, without undefined behaviour: a value
// outside the target range, or NaN, gives the "integer indefinite" pattern (the most negative
// value of the type). Every double-to-integer conversion of the library goes through here.
#pragma once

#include <cstdint>

namespace lq::detail {

inline int32_t TruncateToInt32(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return INT32_MIN;
  return static_cast<int32_t>(value);
}

inline int64_t TruncateToInt64(double value) {
  if (!(value > -9223372036854775808.0 && value < 9223372036854775808.0)) return INT64_MIN;
  return static_cast<int64_t>(value);
}

}  // namespace lq::detail
