// The free text forms of date-times declared in DateTimeText.h: compact digit strings and the
// mail-header date. The text forms that are members of LqDateTime are in LqDateTimeMemberText.cpp.
#include "lqtools/datetime/DateTimeText.h"

#include <cstdlib>
#include <type_traits>

#include "lqtools/datetime/detail/TextFormat.h"
#include "lqtools/platform/Locales.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/platform/WideRuntime.h"

namespace {

// The formats and the integer reader of the narrow and the wide twins.
template <typename T>
struct DigitForms;

template <>
struct DigitForms<char> {
  static constexpr const char* kMicro = "%02d%02d%04d%02d%02d%02d%03d%03d";
  static constexpr const char* kMilli = "%02d%02d%04d%02d%02d%02d%03d";
  static constexpr const char* kPlain = "%02d%02d%04d%02d%02d%02d";
  // atoi in the "C" locale.
  static int ToInt(const char* text) {
    const lq::detail::ScopedClassicLocale classic;
    return std::atoi(text);
  }
};

template <>
struct DigitForms<char16_t> {
  static constexpr const char16_t* kMicro = u"%02d%02d%04d%02d%02d%02d%03d%03d";
  static constexpr const char16_t* kMilli = u"%02d%02d%04d%02d%02d%02d%03d";
  static constexpr const char16_t* kPlain = u"%02d%02d%04d%02d%02d%02d";
  static int ToInt(const char16_t* text) { return lq::detail::wcstol(text, nullptr, 10); }
};

template <typename T, typename Traits>
bool WriteDigits(LqBasicString<T, Traits>& out, const LqDateTime& value, bool milli, bool micro) {
  out.SetGrowth(LqBasicString<T, Traits>::GrowSmallBlock);
  out = LqBasicString<T, Traits>();
  if (!value.Valid()) return false;
  using Forms = DigitForms<T>;
  T text[32];
  if (micro) {
    lq::detail::FormatText(text, 32, Forms::kMicro, value.Day(), value.Month(), value.Year(),
                           value.Hour(), value.Minute(), value.Second(), value.MSecond(),
                           value.USecond());
  } else if (milli) {
    lq::detail::FormatText(text, 32, Forms::kMilli, value.Day(), value.Month(), value.Year(),
                           value.Hour(), value.Minute(), value.Second(), value.MSecond());
  } else {
    lq::detail::FormatText(text, 32, Forms::kPlain, value.Day(), value.Month(), value.Year(),
                           value.Hour(), value.Minute(), value.Second());
  }
  out = text;
  return true;
}

// Kept: digits are read as `character - '0'` with no digit test, and the time fields have no
// lower bound, so a stray character can give a negative hour that rolls the date back.
template <typename T>
bool ReadStrictDigits(LqDateTime& out, const T* text) {
  out.Invalidate();
  std::size_t length = 0;
  if (text)
    while (text[length] != 0)
      ++length;
  if (length != 14 && length != 17) return false;

  auto number = [text](std::size_t at, std::size_t count) {
    int value = 0;
    for (std::size_t i = 0; i < count; ++i)
      value = value * 10 + (static_cast<int>(text[at + i]) - '0');
    return value;
  };
  const int day = number(0, 2);
  const int month = number(2, 2);
  const int year = number(4, 4);
  if (day < 1 || day > 31 || month < 1 || month > 12 || year < 1999 || year > 2135 ||
      day > LqDateTime::DaysInMonth(month, year))
    return false;
  const int hour = number(8, 2);
  const int minute = number(10, 2);
  const int second = number(12, 2);
  if (hour > 23 || minute > 59 || second > 59) return false;
  int milliseconds = 0;
  if (length == 17) {
    milliseconds = number(14, 3);
    if (milliseconds > 999) return false;
  }
  out.SetDateTime(year, month, day, hour, minute, second, milliseconds, 0);
  return out.Valid();
}

template <typename T, typename Traits>
void ReadLenientDigits(const LqBasicString<T, Traits>& text, LqDateTime& out, bool endOfPeriod) {
  const T* units = lq::detail::TextOf(text);
  const int length = text.Length();

  // The units [at, at + count) cut to the text; false when nothing of them is there.
  auto cut = [units, length](int at, int count, T* field) {
    int n = 0;
    for (int i = at; i < at + count && i < length; ++i)
      field[n++] = units[i];
    field[n] = 0;
    return n != 0;
  };

  T field[8];
  cut(0, 2, field);
  const int day = DigitForms<T>::ToInt(field);
  cut(2, 2, field);
  const int month = DigitForms<T>::ToInt(field);
  cut(4, 4, field);
  const int year = DigitForms<T>::ToInt(field);

  int time[4] = {endOfPeriod ? 23 : 0, endOfPeriod ? 59 : 0, endOfPeriod ? 59 : 0, 0};
  static const int kPlaces[4][2] = {{8, 2}, {10, 2}, {12, 2}, {14, 3}};
  for (int i = 0; i < 4; ++i) {
    if (!cut(kPlaces[i][0], kPlaces[i][1], field)) break;
    time[i] = DigitForms<T>::ToInt(field);
  }
  out.SetDateTime(year, month, day, time[0], time[1], time[2], time[3], 0);
}

}  // namespace

bool DateTime2String(LqString& out, const LqDateTime& value, bool forceMSeconds,
                     bool forceUSeconds) {
  const bool micro = value.USecond() > 0 || forceUSeconds;
  const bool milli = value.MSecond() > 0 || forceMSeconds;
  return WriteDigits(out, value, milli, micro);
}

// Kept: the wide form follows the flags alone, dropping a fraction no flag asks for.
bool DateTime2String(LqWString& out, const LqDateTime& value, bool forceMSeconds,
                     bool forceUSeconds) {
  return WriteDigits(out, value, forceMSeconds, forceUSeconds);
}

bool String2DateTime(LqDateTime& out, const char* text) { return ReadStrictDigits(out, text); }
bool String2DateTime(LqDateTime& out, const char16_t* text) { return ReadStrictDigits(out, text); }

void ParseDateTime(const LqString& text, LqDateTime& out, bool endOfPeriod) {
  ReadLenientDigits(text, out, endOfPeriod);
}
void ParseDateTime(const LqWString& text, LqDateTime& out, bool endOfPeriod) {
  ReadLenientDigits(text, out, endOfPeriod);
}

const LqWString DateTime2RFC822(const LqDateTime& value, bool fourDigitYear) {
  static const char16_t* const kDays[7] = {u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat", u"Sun"};
  static const char16_t* const kMonths[12] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                              u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
  const int weekday = value.DayOfWeekISO8601();
  const int month = value.Month();
  const char16_t* dayName = weekday >= 1 && weekday <= 7 ? kDays[weekday - 1] : u"";
  const char16_t* monthName = month >= 1 && month <= 12 ? kMonths[month - 1] : u"";
  char16_t text[64];
  if (fourDigitYear) {
    lq::detail::swprintf(text, 64, u"%ls %02d %ls %04d %02d:%02d:%02d GMT", dayName, value.Day(),
                         monthName, value.Year(), value.Hour(), value.Minute(), value.Second());
  } else {
    lq::detail::swprintf(text, 64, u"%ls %02d %ls %02d %02d:%02d:%02d GMT", dayName, value.Day(),
                         monthName, value.Year() % 100, value.Hour(), value.Minute(),
                         value.Second());
  }
  return LqWString(text);
}
