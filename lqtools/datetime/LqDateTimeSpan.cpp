#include "lqtools/datetime/LqDateTimeSpan.h"

LqDateTimeSpan::LqDateTimeSpan(int days, int hours, int minutes, int seconds, int mseconds,
                               int useconds) {
  SetDateTimeSpan(days, hours, minutes, seconds, mseconds, useconds);
}

// All sums run in unsigned 32-bit arithmetic and wrap, as the fields do.
void LqDateTimeSpan::SetDateTimeSpan(int days, int hours, int minutes, int seconds, int mseconds,
                                     int useconds) {
  uint32_t total = static_cast<uint32_t>(days) * 24u + static_cast<uint32_t>(hours);
  total = total * 60u + static_cast<uint32_t>(minutes);
  total = total * 60u + static_cast<uint32_t>(seconds);
  // Kept: exactly 1000 milliseconds and negative ones are left to the microsecond step below.
  if (mseconds > 1000) {
    const int q = mseconds / 1000;
    total += static_cast<uint32_t>(q);
    mseconds -= q * 1000;
  }
  const auto micro = static_cast<int32_t>(static_cast<uint32_t>(mseconds) * 1000u +
                                          static_cast<uint32_t>(useconds));
  m_microseconds = micro;
  if (micro < 0 || micro >= 1000000) {
    const int32_t q = micro / 1000000;
    const int32_t r = micro % 1000000;
    total += static_cast<uint32_t>(q);
    m_microseconds = r;
    if (r < 0) {
      total -= 1u;
      m_microseconds = r + 1000000;
    }
  }
  m_seconds = static_cast<int32_t>(total);
}

long long LqDateTimeSpan::TotalMSeconds() const {
  return static_cast<long long>(m_seconds) * 1000 + m_microseconds / 1000;
}

long long LqDateTimeSpan::TotalUSeconds() const {
  return static_cast<long long>(m_seconds) * 1000000 + m_microseconds;
}

// The negation of the most negative seconds wraps to itself, as the field does.
LqDateTimeSpan LqDateTimeSpan::operator-() const {
  return LqDateTimeSpan(0, 0, 0, static_cast<int>(0u - static_cast<uint32_t>(m_seconds)), 0,
                        static_cast<int>(0u - static_cast<uint32_t>(m_microseconds)));
}

LqDateTimeSpan LqDateTimeSpan::Abs() const {
  const bool negative = m_seconds < 0 || (m_seconds == 0 && m_microseconds < 0);
  const uint32_t magnitude =
      m_seconds < 0 ? 0u - static_cast<uint32_t>(m_seconds) : static_cast<uint32_t>(m_seconds);
  const int32_t micro =
      negative ? static_cast<int32_t>(0u - static_cast<uint32_t>(m_microseconds)) : m_microseconds;
  return LqDateTimeSpan(0, 0, 0, static_cast<int>(magnitude), 0, micro);
}
