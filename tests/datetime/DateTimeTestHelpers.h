// Shared helpers of the date-time tests.
#pragma once

#include <lqtools/datetime/LqDateTime.h>

#include <cstdio>
#include <string>

// "yyyy-mm-dd hh:mm:ss.uuuuuu" from the field accessors.
inline std::string FieldsOf(const LqDateTime& v) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%06d", v.Year(), v.Month(),
                v.Day(), v.Hour(), v.Minute(), v.Second(), v.USecondInS());
  return text;
}

inline std::string Narrow(const std::u16string& text) {
  return std::string(text.begin(), text.end());
}
