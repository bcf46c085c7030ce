// The user's regional settings, read the way the original platform's GetLocaleInfoW answered
// them, from the locale that the environment names (LC_ALL, LC_NUMERIC, LC_TIME, LANG) through
// newlocale and nl_langinfo_l. The process's own locale (setlocale) is neither read nor changed.
#pragma once

#include <cstdint>

namespace lq::detail {

constexpr uint32_t kLocaleUserDefault = 0x0400;

// The settings that can be asked for, by the platform's numbers.
enum LocaleInfoType : uint32_t {
  kLocaleSDecimal = 0x0E,          // decimal separator (RADIXCHAR)
  kLocaleSThousand = 0x0F,         // thousands separator (THOUSEP)
  kLocaleSDate = 0x1D,             // first separator character of D_FMT
  kLocaleSTime = 0x1E,             // first separator character of T_FMT
  kLocaleIDate = 0x21,             // "0" month-day-year, "1" day-month-year, "2" year-month-day
  kLocaleILDate = 0x22,            // the same; this system has one date order
  kLocaleIFirstDayOfWeek = 0x100C  // "0" Monday to "6" Sunday
};

// Writes the answer, terminated, into `buffer` and returns its length in units with the
// terminator; 0 when the setting cannot be read, the locale is unknown or `size` is too small.
// `locale` must be kLocaleUserDefault.
int GetLocaleInfoW(uint32_t locale, uint32_t type, char16_t* buffer, int size);

}  // namespace lq::detail
