// The system's real-time clock, read the two ways the library's callers expect: whole seconds
// since 1970-01-01T00:00:00Z, and the millisecond within the second. Each call is a read of its
// own; a caller that needs both may see the millisecond of the next second.
#pragma once

#include <cstdint>

namespace lq::detail {

int64_t ClockSeconds();
int ClockMilliseconds();

}  // namespace lq::detail
