// LqOleDateTime: an OLE automation date, the interchange form of office and automation software.
// A double of days since 1899-12-30 (the fraction, by its absolute value, is the time of day) and
// a status, 0 valid and 1 invalid. Dates from 0100-01-01 to 9999-12-31 are representable.
//
// A plain copyable value with no shared state. Failures show as the invalid status, and the field
// getters give -1 for a value they cannot convert.
#pragma once

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API LqOleDateTime {
 public:
  enum DateTimeStatus { valid = 0, invalid = 1 };

  // Day 0, valid.
  LqOleDateTime() = default;
  LqOleDateTime(double date) : m_dt(date) {}
  // From calendar fields; invalid (day number 0) when a field lies outside its calendar range.
  LqOleDateTime(int year, int month, int day, int hour, int minute, int second);

  DateTimeStatus GetStatus() const { return m_status == valid ? valid : invalid; }

  // Each field is converted on its own; -1 when the day number cannot be converted.
  int GetYear() const;
  int GetMonth() const;
  int GetDay() const;
  int GetHour() const;
  int GetMinute() const;
  int GetSecond() const;

  double m_dt = 0.0;
  int m_status = valid;
};
