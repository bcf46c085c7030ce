// The time stamp that begins every entry of the two log files: the present UTC time as
// "YYYY-MM-DDThh:mm:ss.mmmZ". This is the one place where the log channels read the date-time
// clock, so that nothing else in the files layer reaches up into datetime.
#pragma once

#include <cstddef>

namespace lq::detail {

constexpr std::size_t kLogStampSize = 32;

// Writes the terminated stamp into `out` and returns its length (24).
int LogTimeStamp(char (&out)[kLogStampSize]);

}  // namespace lq::detail
