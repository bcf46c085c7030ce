// Shared helpers of the date-time tests.
#pragma once

#include <lqtools/datetime/LqDateTime.h>

#include <cstdio>
#include <string>

// "yyyy-mm-dd hh:mm:ss.uuuuuu" from the field accessors, or "invalid".
inline std::string FieldsOf(const LqDateTime& v) {
  if (!v.Valid()) return "invalid";
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%06d", v.Year(), v.Month(),
                v.Day(), v.Hour(), v.Minute(), v.Second(), v.USecondInS());
  return text;
}

// ASCII texts only.
inline std::string Narrow(const std::u16string& text) { return {text.begin(), text.end()}; }
inline std::string Narrow(const LqWString& text) {
  return Narrow(std::u16string(static_cast<const char16_t*>(text)));
}
inline std::u16string Widen(const std::string& text) { return {text.begin(), text.end()}; }
