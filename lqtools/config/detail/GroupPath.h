// Formatted group paths: the variadic lookups of configuration groups format their path into a
// buffer of this many units (a longer text is cut) before looking it up.
#pragma once

#include <cstdarg>

#include "lqtools/text/LqBasicString.h"

namespace lq::detail {

constexpr int kGroupPathUnits = 256;

LqWString FormatGroupPath(const char16_t* format, va_list args);

}  // namespace lq::detail
