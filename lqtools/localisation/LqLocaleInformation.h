// LqLocaleInformation<T>: the names and separators that presentation needs (month and weekday
// names, thousands, decimal, time and date separators, the date orders and the first day of the
// week), as one plain record per text width. The library holds two process-wide records:
// `localeInformationWide` (LqWString) and `localeInformation` (LqString); number formatting, date
// patterns and period alignment read them directly.
//
// The host fills them at start-up: SetupLocalize (English names, then the user's locale from the
// environment), then optionally SetLocalizeMonthName and SetLocalizeDayOfWeekName to take names
// from the string table. Until then the separators and names are empty and the numbers 0.
//
// Nothing locks these records: writing them while other threads read is the caller's affair.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

template <typename T>
class LqLocaleInformation {
 public:
  T thousandSeparator;
  T decimalSeparator;
  T timeSeparator;
  T dateSeparator;
  T monthNames[12];        // index 0 is January
  T dayOfWeekNames[7];     // index 0 is Sunday
  int shortDateOrder = 0;  // 0 month-day-year, 1 day-month-year, 2 year-month-day
  int longDateOrder = 0;
  int firstDayOfWeek = 0;    // 1 Sunday to 7 Saturday; SetupLocalize starts from 2, Monday
  int weekSetting = 0;       // 1 once SetupLocalize ran; read by nothing in the library
  int maxDayNameLength = 0;  // longest weekday name ever stored here, in units of T; never lowered

  void SetThousandSeparator(const T& text) { thousandSeparator = text; }
  void SetDecimalSeparator(const T& text) { decimalSeparator = text; }
  void SetTimeSeparator(const T& text) { timeSeparator = text; }
  void SetDateSeparator(const T& text) { dateSeparator = text; }
  void SetShortDateOrder(int order) { shortDateOrder = order; }
  void SetLongDateOrder(int order) { longDateOrder = order; }
  void SetFirstDayOfWeek(int day) { firstDayOfWeek = day; }
  void SetWeekSetting(int setting) { weekSetting = setting; }

  // `month` 1 to 12; any other number changes nothing.
  void SetMonthName(int month, const T& name) {
    if (month >= 1 && month <= 12) monthNames[month - 1] = name;
  }
  // `dayOfWeek` 1 (Sunday) to 7; any other number changes nothing. Raises maxDayNameLength.
  void SetDayOfWeekName(int dayOfWeek, const T& name) {
    if (dayOfWeek < 1 || dayOfWeek > 7) return;
    dayOfWeekNames[dayOfWeek - 1] = name;
    if (name.Length() > maxDayNameLength) maxDayNameLength = name.Length();
  }
};

extern LQTOOLS_API LqLocaleInformation<LqString> localeInformation;
extern LQTOOLS_API LqLocaleInformation<LqWString> localeInformationWide;

LQTOOLS_API const LqLocaleInformation<LqWString>& LocaleInformationWide();

// Both records: English month and weekday names, first day of the week Monday, then the user's
// locale as the environment names it (LC_ALL, LC_NUMERIC, LC_TIME, LANG): first day of the week,
// thousands, decimal, time and date separators, date orders. A setting the locale does not give
// leaves its field. The narrow separators are the low bytes of the wide ones (U+00A0 becomes the
// byte 0xA0): no UTF-8. The English names return on every call.
LQTOOLS_API void SetupLocalize();

// The name from the string table (LqLoadString; the fallback "IDS_%05d" for an unknown id) into
// both records, UTF-8 in the narrow one. Numbers outside 1 to 12 and 1 to 7 change nothing.
LQTOOLS_API void SetLocalizeMonthName(int month, unsigned int stringId);
LQTOOLS_API void SetLocalizeDayOfWeekName(int dayOfWeek, unsigned int stringId);
