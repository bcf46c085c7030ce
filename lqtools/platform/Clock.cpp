#include "lqtools/platform/Clock.h"

#include <time.h>

namespace lq::detail {

int64_t ClockSeconds() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<int64_t>(now.tv_sec);
}

int ClockMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<int>(now.tv_nsec / 1000000);
}

}  // namespace lq::detail
