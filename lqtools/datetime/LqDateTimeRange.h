// LqDateTimeRange: two date-times, the first inside and the last outside, with a test for a
// date-time and one for a time of day. A small header-only value, kept beside the date-time
// classes; it is not exported and no other part of lqtools uses it.
#pragma once

#include "lqtools/datetime/LqDateTime.h"

class LqDateTimeRange {
 public:
  LqDateTimeRange(const LqDateTime& first, const LqDateTime& last) : m_first(first), m_last(last) {}

  LqDateTime* First() { return &m_first; }
  const LqDateTime* First() const { return &m_first; }
  LqDateTime* Last() { return &m_last; }
  const LqDateTime* Last() const { return &m_last; }

  // Half open: the last date-time is left out.
  bool Contains(const LqDateTime& x) const { return x >= m_first && x < m_last; }

  // Compares the times of day, both bounds inside. Kept: a tie is broken by USecond(), the part
  // below the millisecond, so the milliseconds take no part; a range that wraps past midnight
  // contains nothing.
  bool ContainsTimeOfDay(const LqDateTime& x) const {
    const uint32_t s = x.Seconds() % 86400u;
    const uint32_t a = m_first.Seconds() % 86400u;
    const uint32_t b = m_last.Seconds() % 86400u;
    if (s < a || (s == a && x.USecond() < m_first.USecond())) return false;
    if (s > b) return false;
    if (s != b) return true;
    return x.USecond() <= m_last.USecond();
  }

  bool Valid() const { return m_first.Valid() && m_last.Valid(); }

 private:
  LqDateTime m_first;
  LqDateTime m_last;
};
