// The two fixed C-library locale objects of the library. Number conversions run in "C", character
// classification and case mapping in "C.UTF-8", whatever the host program passed to setlocale.
// Both objects are made once, on first use, and live as long as the process.
#pragma once

#include <locale.h>

namespace lq::detail {

locale_t ClassicLocale();  // "C"
locale_t UnicodeLocale();  // "C.UTF-8"

// Makes "C" the calling thread's locale for the life of the object, so that the C library's
// number formatting and parsing ignore the host's setlocale.
class ScopedClassicLocale {
 public:
  ScopedClassicLocale() : m_previous(uselocale(ClassicLocale())) {}
  ~ScopedClassicLocale() { uselocale(m_previous); }
  ScopedClassicLocale(const ScopedClassicLocale&) = delete;
  ScopedClassicLocale& operator=(const ScopedClassicLocale&) = delete;

 private:
  locale_t m_previous;
};

}  // namespace lq::detail
