#include "lqtools/datetime/TimeZoneNames.h"

#include "lqtools/datetime/detail/ZoneTable.h"

namespace {

bool Same(const char16_t* a, const char16_t* b) {
  while (*a && *a == *b)
    ++a, ++b;
  return *a == *b;
}

}  // namespace

const char16_t* OlsonTimeZoneToWin32TimeZone(const char16_t* olsonName) {
  if (!olsonName || !*olsonName) return u"";
  for (const lq::detail::ZoneRow& row : lq::detail::kZoneRows)
    if (Same(row.olson, olsonName)) return row.windows;
  return u"";
}

const char16_t* Win32TimeZoneToOlsonTimeZone(const char16_t* windowsName) {
  if (!windowsName || !*windowsName) return u"";
  for (const lq::detail::ZoneRow& row : lq::detail::kZoneRows)
    if (Same(row.windows, windowsName)) return row.olson;
  return u"";
}
