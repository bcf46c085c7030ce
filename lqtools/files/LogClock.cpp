// The log time stamp, read from the UTC clock of the date-time layer.
#include "lqtools/files/detail/LogClock.h"

#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/platform/WideFormat.h"

namespace lq::detail {

int LogTimeStamp(char (&out)[kLogStampSize]) {
  const LqDateTime now = LqDateTime::UTC();
  // The form of ToCompleteString, written here without its exception: the clock's value is
  // always valid, and a log entry must never throw.
  return lq::detail::snprintf(out, kLogStampSize, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", now.Year(),
                              now.Month(), now.Day(), now.Hour(), now.Minute(), now.Second(),
                              now.MSecond());
}

}  // namespace lq::detail
