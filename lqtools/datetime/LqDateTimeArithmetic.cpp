// The operators that join LqDateTime and LqDateTimeSpan. Both keep their microseconds in
// 0 to 999999, so one carry step after the field-by-field sum is enough.
#include "lqtools/datetime/LqDateTime.h"

namespace {

// Seconds in unsigned 32-bit arithmetic (wrapping), microseconds with one carry.
void Combine(uint32_t& seconds, int32_t& microseconds, uint32_t otherSeconds,
             int32_t otherMicroseconds, bool subtract) {
  seconds = subtract ? seconds - otherSeconds : seconds + otherSeconds;
  auto micro = static_cast<uint32_t>(microseconds);
  micro = subtract ? micro - static_cast<uint32_t>(otherMicroseconds)
                   : micro + static_cast<uint32_t>(otherMicroseconds);
  microseconds = static_cast<int32_t>(micro);
  if (microseconds < 0) {
    seconds -= 1u;
    microseconds += 1000000;
  } else if (microseconds >= 1000000) {
    seconds += 1u;
    microseconds -= 1000000;
  }
}

}  // namespace

// Kept: no test for an invalid operand or for leaving the range; a sum that lands on
// 0xFFFFFFFF is invalid and one from an invalid value usually reads as valid.
LqDateTime LqDateTime::operator+(const LqDateTimeSpan& span) const {
  LqDateTime result(*this);
  Combine(result.m_seconds, result.m_microseconds, static_cast<uint32_t>(span.m_seconds),
          span.m_microseconds, false);
  return result;
}

LqDateTime LqDateTime::operator-(const LqDateTimeSpan& span) const {
  LqDateTime result(*this);
  Combine(result.m_seconds, result.m_microseconds, static_cast<uint32_t>(span.m_seconds),
          span.m_microseconds, true);
  return result;
}

// The unsigned difference lands in the signed field: more than about 68 years apart wraps.
LqDateTimeSpan LqDateTime::operator-(const LqDateTime& other) const {
  uint32_t seconds = m_seconds;
  int32_t microseconds = m_microseconds;
  Combine(seconds, microseconds, other.m_seconds, other.m_microseconds, true);
  LqDateTimeSpan result;
  result.m_seconds = static_cast<int32_t>(seconds);
  result.m_microseconds = microseconds;
  return result;
}

const LqDateTime& LqDateTime::operator+=(LqDateTimeSpan span) {
  *this = *this + span;
  return *this;
}

const LqDateTime& LqDateTime::operator-=(LqDateTimeSpan span) {
  *this = *this - span;
  return *this;
}
