#include "lqtools/localisation/LqLocaleInformation.h"

#include "lqtools/localisation/LqStringTableFile.h"
#include "lqtools/localisation/detail/LocaleRecord.h"
#include "lqtools/platform/LocaleSettings.h"
#include "lqtools/platform/WideRuntime.h"

LqLocaleInformation<LqString> localeInformation;
LqLocaleInformation<LqWString> localeInformationWide;

const LqLocaleInformation<LqWString>& LocaleInformationWide() { return localeInformationWide; }

namespace lq::detail {
const LqLocaleInformation<LqString>& LocaleInformation() { return localeInformation; }
}  // namespace lq::detail

namespace {

const char* const kMonthNames[12] = {"January",   "February", "March",    "April",
                                     "May",       "June",     "July",     "August",
                                     "September", "October",  "November", "December"};
const char* const kDayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};

template <typename T>
void StoreEnglishNames(LqLocaleInformation<T>& record) {
  for (int month = 1; month <= 12; ++month)
    record.SetMonthName(month, T(kMonthNames[month - 1]));
  record.SetFirstDayOfWeek(2);
  record.SetWeekSetting(1);
  for (int day = 1; day <= 7; ++day)
    record.SetDayOfWeekName(day, T(kDayNames[day - 1]));
}

// The answer to one setting, or false when the locale does not give it.
bool Query(uint32_t type, char16_t (&buffer)[256]) {
  return lq::detail::GetLocaleInfoW(lq::detail::kLocaleUserDefault, type, buffer, 256) != 0;
}

// "0" Monday to "6" Sunday, as 2 to 7 and 1; 0 for anything else.
int FirstDayOfWeek() {
  char16_t buffer[256];
  if (!Query(lq::detail::kLocaleIFirstDayOfWeek, buffer)) return 0;
  const int32_t value = lq::detail::wcstol(buffer, nullptr, 10);
  if (value < 0 || value > 6) return 0;
  return value == 6 ? 1 : value + 2;
}

// Kept: the narrow separators are the low bytes of the wide units, no UTF-8 (U+202F becomes '/').
LqString LowBytes(const LqWString& wide) { return LqString(wide); }

}  // namespace

void SetupLocalize() {
  StoreEnglishNames(localeInformationWide);
  StoreEnglishNames(localeInformation);

  if (const int day = FirstDayOfWeek()) localeInformationWide.SetFirstDayOfWeek(day);
  char16_t buffer[256];
  if (Query(lq::detail::kLocaleSThousand, buffer))
    localeInformationWide.SetThousandSeparator(LqWString(buffer));
  if (Query(lq::detail::kLocaleSDecimal, buffer))
    localeInformationWide.SetDecimalSeparator(LqWString(buffer));
  if (Query(lq::detail::kLocaleSTime, buffer))
    localeInformationWide.SetTimeSeparator(LqWString(buffer));
  if (Query(lq::detail::kLocaleSDate, buffer))
    localeInformationWide.SetDateSeparator(LqWString(buffer));
  if (Query(lq::detail::kLocaleIDate, buffer))
    localeInformationWide.SetShortDateOrder(buffer[0] - u'0');
  if (Query(lq::detail::kLocaleILDate, buffer))
    localeInformationWide.SetLongDateOrder(buffer[0] - u'0');

  if (const int day = FirstDayOfWeek()) localeInformation.SetFirstDayOfWeek(day);
  localeInformation.SetThousandSeparator(LowBytes(localeInformationWide.thousandSeparator));
  localeInformation.SetDecimalSeparator(LowBytes(localeInformationWide.decimalSeparator));
  localeInformation.SetTimeSeparator(LowBytes(localeInformationWide.timeSeparator));
  localeInformation.SetDateSeparator(LowBytes(localeInformationWide.dateSeparator));
  localeInformation.SetShortDateOrder(localeInformationWide.shortDateOrder);
  localeInformation.SetLongDateOrder(localeInformationWide.longDateOrder);
}

void SetLocalizeMonthName(int month, unsigned int stringId) {
  if (month < 1 || month > 12) return;
  LqWString wide;
  localeInformationWide.SetMonthName(month, LqLoadString(stringId, wide));
  LqString narrow;
  localeInformation.SetMonthName(month, LqLoadString(stringId, narrow));
}

void SetLocalizeDayOfWeekName(int dayOfWeek, unsigned int stringId) {
  if (dayOfWeek < 1 || dayOfWeek > 7) return;
  LqWString wide;
  localeInformationWide.SetDayOfWeekName(dayOfWeek, LqLoadString(stringId, wide));
  LqString narrow;
  localeInformation.SetDayOfWeekName(dayOfWeek, LqLoadString(stringId, narrow));
}
