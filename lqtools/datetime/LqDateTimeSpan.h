// LqDateTimeSpan: a signed duration of whole seconds and microseconds. A day is always 86400
// seconds; there is no month or year unit. The fraction is kept 0 to 999999 and the sign sits in
// the seconds, so -1.5 seconds is stored as (-2, 500000), the same floor convention as
// LqDateTime, and the two add field by field (see LqDateTime's operators).
//
// A plain copyable value with no invalid state and no shared state. Nothing is checked for
// overflow: the seconds wrap in 32 bits, so a span of more than about 68 years changes sign.
#pragma once

#include <cstdint>

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API LqDateTimeSpan {
 public:
  LqDateTimeSpan() = default;
  LqDateTimeSpan(int days, int hours, int minutes, int seconds, int mseconds, int useconds);

  // Any value of any field is accepted; the result is normalised.
  void SetDateTimeSpan(int days, int hours, int minutes, int seconds, int mseconds, int useconds);

  // Whole units of the duration, truncated toward zero.
  int TotalDays() const { return m_seconds / 86400; }
  int TotalHours() const { return m_seconds / 3600; }
  int TotalMinutes() const { return m_seconds / 60; }
  int TotalSeconds() const { return m_seconds; }
  long long TotalMSeconds() const;
  long long TotalUSeconds() const;

  // The parts of the duration; those of a negative span are negative or zero.
  int Days() const { return TotalDays(); }
  int Hours() const { return TotalHours() % 24; }
  int Minutes() const { return TotalMinutes() % 60; }
  int Seconds() const { return TotalSeconds() % 60; }
  int MSeconds() const { return static_cast<int>(TotalMSeconds() % 1000); }
  int USeconds() const { return static_cast<int>(TotalUSeconds() % 1000); }

  LqDateTimeSpan operator-() const;
  LqDateTimeSpan Abs() const;

  bool operator==(const LqDateTimeSpan& other) const {
    return m_seconds == other.m_seconds && m_microseconds == other.m_microseconds;
  }
  bool operator!=(const LqDateTimeSpan& other) const { return !(*this == other); }
  bool operator<(const LqDateTimeSpan& other) const {
    return m_seconds < other.m_seconds ||
           (m_seconds == other.m_seconds && m_microseconds < other.m_microseconds);
  }
  bool operator>(const LqDateTimeSpan& other) const { return other < *this; }
  bool operator<=(const LqDateTimeSpan& other) const { return !(other < *this); }
  bool operator>=(const LqDateTimeSpan& other) const { return !(*this < other); }

 private:
  friend class LqDateTime;

  int32_t m_seconds = 0;       // floor of the duration
  int32_t m_microseconds = 0;  // 0 to 999999
};
