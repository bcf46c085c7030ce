// Rounding, serial-line baud rates and short rising ids.
#pragma once

#include <cstdint>

#include "lqtools/LqToolsExport.h"

// Truncates to 32 bits, then moves one away from zero when the rest is strictly above 0.5, so
// exact halves round towards zero (2.5 gives 2, -2.5 gives -2). A value beyond the 32-bit range
// or NaN truncates to -2147483648 as the processor does, and the step wraps.
LQTOOLS_API int roundi(double value);

namespace lq {
// roundi as a double. Named lq::round because the C library owns ::round.
LQTOOLS_API double round(double value);
}  // namespace lq

// 110, 300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600 and 115200 map to themselves, any
// other value to -1. The platform's baud rate ids equal the rates.
LQTOOLS_API int BaudrateToIdBr(int baudrate);
LQTOOLS_API int IdBrToBaudrate(int id);

// The UTC time packed into 32 bits (year + 1 in 4 bits, month, day, hour, minute, second, two
// zero bits), raised by one whenever it would not exceed the last id given in this process.
// Ids repeat every 16 years and are not unique across processes. Unlocked: two threads at once
// can get the same id.
LQTOOLS_API uint32_t GetNewId();
