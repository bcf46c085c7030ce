#include "lqtools/datetime/LqOleDateTime.h"

#include "lqtools/datetime/detail/OleDate.h"

namespace {

template <int lq::detail::SystemTime::*field>
int FieldOf(double date) {
  lq::detail::SystemTime fields;
  if (!lq::detail::VariantTimeToSystemTime(date, fields)) return -1;
  return fields.*field;
}

}  // namespace

LqOleDateTime::LqOleDateTime(int year, int month, int day, int hour, int minute, int second) {
  lq::detail::SystemTime fields;
  fields.year = year;
  fields.month = month;
  fields.day = day;
  fields.hour = hour;
  fields.minute = minute;
  fields.second = second;
  if (!lq::detail::SystemTimeToVariantTime(fields, m_dt)) {
    m_dt = 0.0;
    m_status = invalid;
  }
}

int LqOleDateTime::GetYear() const { return FieldOf<&lq::detail::SystemTime::year>(m_dt); }
int LqOleDateTime::GetMonth() const { return FieldOf<&lq::detail::SystemTime::month>(m_dt); }
int LqOleDateTime::GetDay() const { return FieldOf<&lq::detail::SystemTime::day>(m_dt); }
int LqOleDateTime::GetHour() const { return FieldOf<&lq::detail::SystemTime::hour>(m_dt); }
int LqOleDateTime::GetMinute() const { return FieldOf<&lq::detail::SystemTime::minute>(m_dt); }
int LqOleDateTime::GetSecond() const { return FieldOf<&lq::detail::SystemTime::second>(m_dt); }
