// The present time as a date-time value.
#include <ctime>

#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/platform/Clock.h"

LqDateTime LqDateTime::UTC() {
  const long long now = lq::detail::ClockSeconds();
  tm fields{};
  LqDateTime result;
  if (!xgmtime(&now, &fields)) return result;
  result = fields;
  // A second read of the clock gives the millisecond; it may belong to the next second.
  result.SetDateTime(result.Year(), result.Month(), result.Day(), result.Hour(), result.Minute(),
                     result.Second(), lq::detail::ClockMilliseconds(), 0);
  return result;
}
