#include "lqtools/localisation/NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "lqtools/localisation/LqLocaleInformation.h"
#include "lqtools/localisation/detail/LocaleRecord.h"
#include "lqtools/localisation/detail/UnitBuilder.h"
#include "lqtools/platform/WideFormat.h"

namespace {

// The largest count of trimmed decimals that FormatNumber works with: beyond it the power of ten
// is no finite double any more.
constexpr int kMaxTrimmedDecimals = 308;
// FormatDouble's widths and decimal counts are limited here, so that a careless argument cannot
// ask for gigabytes of padding or stars.
constexpr int kMaxLayoutUnits = 1024;

template <typename S>
using UnitOf = typename S::CharType;

template <typename S>
void Deliver(S& text, const lq::detail::UnitBuilder<UnitOf<S>>& built) {
  // The finished text keeps no growth policy and no slack.
  text.SetGrowth(0);
  text.Assign(built.Data(), static_cast<int>(built.Length()));
}

template <typename S>
void PutText(lq::detail::UnitBuilder<UnitOf<S>>& out, const S& text) {
  out.Put(static_cast<const UnitOf<S>*>(text), static_cast<std::size_t>(text.Length()));
}

template <typename S>
int FormatIntegerBody(S& text, int value, int width) {
  using T = UnitOf<S>;
  if (width < 0) return -1;
  int digits = 1;
  int64_t power = 1;  // 10 to the power digits - 1
  if (value > 0)
    while (power * 10 <= value) {
      power *= 10;
      ++digits;
    }
  lq::detail::UnitBuilder<T> out;
  if (width > digits) out.Repeat(T('0'), static_cast<std::size_t>(width - digits));
  if (value < 0) {
    // Kept: a negative value gives one unit, '0' plus the value (-5 gives '+'); callers pass none.
    out.Put(static_cast<T>(static_cast<unsigned>('0') + static_cast<unsigned>(value)));
  } else {
    int64_t rest = value;
    for (; power > 0; power /= 10) {
      const int64_t digit = rest / power;
      out.Put(static_cast<T>('0' + digit));
      rest -= digit * power;
    }
  }
  Deliver(text, out);
  return text.Length();
}

template <typename S, typename T>
void StarOutput(lq::detail::UnitBuilder<T>& out, int places, const S& decimalSeparator) {
  out.Put(T('*'));
  if (places > 0) {
    PutText(out, decimalSeparator);
    out.Repeat(T('*'), static_cast<std::size_t>(places));
  }
}

// The first place of `text` (`length` units) where `part` stands, or -1; an empty part is never
// found.
template <typename T, typename S>
int FindUnits(const T* text, int length, const S& part) {
  const int partLength = part.Length();
  if (partLength == 0) return -1;
  const T* units = part;
  for (int i = 0; i + partLength <= length; ++i)
    if (std::equal(units, units + partLength, text + i)) return i;
  return -1;
}

bool IsDigit(unsigned unit) { return unit >= '0' && unit <= '9'; }

template <typename S>
int FormatNumberBody(S& text, double value, int decimals, bool thousands,
                     const LqLocaleInformation<S>& record) {
  using T = UnitOf<S>;
  lq::detail::UnitBuilder<T> out;
  const int d = std::max(std::min(decimals, 10), -kMaxTrimmedDecimals);
  const int a = d < 0 ? -d : d;

  // Halves round away from zero; the result is scaled back by a multiplication.
  double whole = 0;
  const double fraction = std::modf(std::fabs(value) * std::pow(10.0, a), &whole);
  if (fraction >= 0.5) whole += 1;
  double rounded = whole * std::pow(10.0, -a);
  if (value < 0) rounded = -rounded;

  // A NaN has no digits to show: it takes the star output of a number that does not fit.
  if (std::isnan(rounded) || std::log10(std::fabs(rounded)) > 12) {
    // Kept: this overflow writes no minus sign, the one after the digits below does.
    StarOutput(out, a, record.decimalSeparator);
    Deliver(text, out);
    return text.Length();
  }

  char digits[kXfecvtBufferSize];
  int position = 0;
  int sign = 0;
  xfecvt(digits, sizeof digits, rounded, 12, &position, &sign);
  const std::size_t digitCount = std::strlen(digits);
  const bool tooLong = std::abs(position) > 12 || (position < 0 && -position > a);
  if (sign) out.Put(T('-'));
  if (tooLong) {
    StarOutput(out, a, record.decimalSeparator);
    Deliver(text, out);
    return text.Length();
  }

  std::size_t next = 0;  // the next digit of `digits` to use
  auto digit = [&]() { return next < digitCount ? T(digits[next++]) : T('0'); };
  if (position < 1) {
    out.Put(T('0'));
  } else {
    int remaining = position;
    bool partial = false;
    for (; remaining % 3 != 0; --remaining, partial = true)
      out.Put(digit());
    if (partial && thousands) PutText(out, record.thousandSeparator);
    for (; remaining > 0; remaining -= 3) {
      for (int i = 0; i < 3; ++i)
        out.Put(digit());
      if (thousands) PutText(out, record.thousandSeparator);
    }
    if (thousands) out.Drop(static_cast<std::size_t>(record.thousandSeparator.Length()));
  }
  if (d == 0) {
    Deliver(text, out);
    return text.Length();
  }

  PutText(out, record.decimalSeparator);
  int written = 0;
  for (; position < 0 && written < a; ++position, ++written)
    out.Put(T('0'));
  for (; written < a; ++written)
    out.Put(digit());

  if (d < 0) {
    // Trailing zeros go, then whatever is no digit (the separator); the first unit always stays.
    while (out.Length() > 1 && out.Last() == T('0'))
      out.Drop(1);
    while (out.Length() > 1 && !IsDigit(static_cast<unsigned>(out.Last())))
      out.Drop(1);
  }
  Deliver(text, out);
  return text.Length();
}

template <typename T>
bool IsValidNumberBody(const T* text, int maxDecimals, const T* thousands, int thousandsLength,
                       const T* decimal, int decimalLength) {
  if (!text) return true;
  bool inGroup = false;
  bool decimalsSeen = false;
  int groupDigits = 0;
  int decimals = 0;
  int thousandsAt = 0;  // the place reached in each separator
  int decimalAt = 0;
  for (const T* p = text; *p; ++p) {
    const T c = *p;
    if (IsDigit(static_cast<unsigned>(c))) {
      if (inGroup && ++groupDigits > 3) return false;
      if (decimalsSeen) ++decimals;
    } else if (c == T('-')) {
      if (p != text) return false;
    } else if (thousandsLength > 0 && c == thousands[thousandsAt]) {
      if (decimalsSeen) return false;
      if (thousandsAt == 0) {
        if (inGroup && groupDigits != 3) return false;
        groupDigits = 0;
      }
      if (++thousandsAt == thousandsLength) thousandsAt = 0;
      inGroup = true;
    } else if (decimalLength > 0 && c == decimal[decimalAt]) {
      if (decimalsSeen && decimalAt == 0) return false;
      if (inGroup && groupDigits != 3) return false;
      inGroup = false;
      decimalsSeen = true;
      if (++decimalAt == decimalLength) decimalAt = 0;
    } else {
      return false;
    }
  }
  if (inGroup && groupDigits != 3) return false;
  return maxDecimals < 0 || decimals <= maxDecimals;
}

// The bounded digit string: see xfecvt in the header.
char* DigitString(char* buffer, std::size_t size, double value, std::size_t count, int* position,
                  int* sign) {
  if (!buffer) return nullptr;
  int signValue = value >= 0 ? 0 : 1;
  char text[kXfecvtBufferSize];
  const int printed = lq::detail::FormatDouble(text, sizeof text, std::fabs(value), 'f', 6);
  const std::size_t length =
      printed < 0 ? 0 : std::min(static_cast<std::size_t>(printed), sizeof text - 1);
  text[length] = 0;

  // Kept: each removal moves the rest left but not the terminator, so the last character
  // stands twice; callers see these doubled digits past the sixth decimal.
  for (std::size_t k = 0; k < length && text[0] == '0'; ++k)
    std::memmove(text, text + 1, length - 1);
  const char* point = std::strchr(text, '.');
  if (!point) {
    const char first = localeInformation.decimalSeparator.IsEmpty()
                           ? 0
                           : static_cast<const char*>(localeInformation.decimalSeparator)[0];
    point = first ? std::strchr(text, first) : nullptr;
  }
  int positionValue = 0;
  if (point) {
    const auto at = static_cast<std::size_t>(point - text);
    positionValue = static_cast<int>(at);
    std::memmove(text + at, text + at + 1, length - at - 1);
  }

  const std::size_t total = std::max(length, count);
  const std::size_t kept = size == 0 ? 0 : std::min(total, size - 1);
  for (std::size_t i = 0; i < kept; ++i)
    buffer[i] = i < length ? text[i] : '0';
  if (size != 0) buffer[kept] = 0;
  if (position) *position = positionValue;
  if (sign) *sign = signValue;
  return buffer;
}

}  // namespace

// ------------------------------------------------------------------------------------------
// Integers

int FormatInteger(LqString& text, int value, int width) {
  return FormatIntegerBody(text, value, width);
}

int FormatInteger(LqWString& text, int value, int width) {
  return FormatIntegerBody(text, value, width);
}

// ------------------------------------------------------------------------------------------
// Doubles

int FormatNumber(LqString& text, double value, int decimals, bool thousands) {
  return FormatNumberBody(text, value, decimals, thousands, lq::detail::LocaleInformation());
}

int FormatNumber(LqWString& text, double value, int decimals, bool thousands) {
  return FormatNumberBody(text, value, decimals, thousands, LocaleInformationWide());
}

double FormatNumber(double value, int decimals) {
  if (decimals == -1) return value;
  const double scale = std::pow(10.0, decimals);
  const double x = value * scale;
  double whole = 0;
  const double fraction = std::modf(x, &whole);
  double y;
  if (x >= 0) {
    y = std::floor(x) + (fraction >= 0.5 ? 1 : 0);
  } else if (fraction == 0) {
    y = x;
  } else {
    // Kept: a negative half rounds towards zero (-2.5 gives -2), unlike the text forms.
    y = std::floor(x) + (fraction >= -0.5 ? 1 : 0);
  }
  return y / scale;
}

char* xfecvt(char* buffer, double value, unsigned int count, int* position, int* sign) {
  const std::size_t size = std::max<std::size_t>(kXfecvtBufferSize, std::size_t{count} + 1);
  return DigitString(buffer, size, value, count, position, sign);
}

char* xfecvt(char* buffer, unsigned int size, double value, unsigned int count, int* position,
             int* sign) {
  return DigitString(buffer, size, value, count, position, sign);
}

int countDecimals(double value) {
  char text[kXfecvtBufferSize];
  lq::detail::FormatDouble(text, sizeof text, value, 'f', 6);
  const char* point = std::strchr(text, '.');
  if (!point) return 0;
  int last = 0;
  for (int i = 1; point[i]; ++i)
    if (point[i] != '0') last = i;
  return last;
}

// ------------------------------------------------------------------------------------------
// Fixed-width layouts

void FormatDouble(LqWString& text, double value, int integers, int decimals, bool thousandSeparator,
                  bool leftPadding, bool rightPadding) {
  if (value == HUGE_VAL || value == -HUGE_VAL) {
    text = u"#";
    return;
  }
  integers = std::min(integers, kMaxLayoutUnits);
  decimals = std::min(decimals, kMaxLayoutUnits);
  const LqLocaleInformation<LqWString>& record = LocaleInformationWide();
  const int width = std::max(integers, 0);
  const int places = decimals < 0 ? 5 : decimals;

  LqWString number;
  FormatNumber(number, value, places, false);
  const LqWString separator = record.decimalSeparator;
  const int point = number.Find(separator, 0);
  const auto numberLength = static_cast<std::size_t>(number.Length());
  const char16_t* digits = number;

  lq::detail::UnitBuilder<char16_t> out;
  if (integers >= 1 &&
      ((point >= 1 && point > integers) || (point < 0 && number.Length() > integers))) {
    out.Repeat(u'*', static_cast<std::size_t>(integers));
    if (decimals > 0) {
      PutText(out, separator);
      out.Repeat(u'*', static_cast<std::size_t>(decimals));
    }
    Deliver(text, out);
    return;
  }

  // Zeros in front of the integer part; a minus sign stays ahead of them.
  const int integerLength = point >= 0 ? point : number.Length();
  const bool negative = number.Length() > 0 && digits[0] == u'-';
  std::size_t from = 0;
  if (negative) {
    if (integerLength - 1 < width && leftPadding) {
      out.Put(u'-');
      out.Repeat(u'0', static_cast<std::size_t>(width - (integerLength - 1)));
      from = 1;
    }
  } else if (leftPadding && integerLength < width) {
    out.Repeat(u'0', static_cast<std::size_t>(width - integerLength));
  }
  out.Put(digits + from, numberLength - from);

  if (!rightPadding || decimals < 1) {
    if (point > 0 && separator.Length() > 0) {
      // Cut after the last unit that is no '0'; a separator left last goes too.
      std::size_t end = out.Length();
      while (end > 1 && out.At(end - 1) == u'0')
        --end;
      if (out.At(end - 1) == separator[separator.Length() - 1]) {
        const auto sepLength = static_cast<std::size_t>(separator.Length());
        end = end > sepLength ? end - sepLength : 0;
      }
      out.Drop(out.Length() - end);
    }
  } else if (point < 0) {
    PutText(out, separator);
    out.Repeat(u'0', static_cast<std::size_t>(places));
  }

  if (!thousandSeparator) {
    Deliver(text, out);
    return;
  }
  // Groups of three in the integer part, the first group taking what is left over.
  const char16_t* units = out.Data();
  const int length = static_cast<int>(out.Length());
  const int split = FindUnits(units, length, separator);
  const int integerEnd = split >= 0 ? split : length;
  lq::detail::UnitBuilder<char16_t> grouped;
  int at = 0;
  if (integerEnd > 0 && units[0] == u'-') {
    grouped.Put(u'-');
    at = 1;
  }
  const int count = integerEnd - at;
  int group = count % 3 == 0 ? 3 : count % 3;
  while (at < integerEnd) {
    const int take = std::min(group, integerEnd - at);
    grouped.Put(units + at, static_cast<std::size_t>(take));
    at += take;
    if (integerEnd - at >= 3) PutText(grouped, record.thousandSeparator);
    group = 3;
  }
  grouped.Put(units + integerEnd, static_cast<std::size_t>(length - integerEnd));
  Deliver(text, grouped);
}

void ParseFormat(const LqWString& format, int& integers, int& decimals, bool& leftPadding,
                 bool& rightPadding) {
  integers = -1;
  decimals = 3;
  leftPadding = false;
  rightPadding = false;
  const int point = format.Find(u'.', 0);
  if (point < 0) return;
  const char16_t* text = format;
  if (point == 1) {
    integers = text[0] - u'0';
  } else if (point == 2) {
    // Kept: of two digits only the second counts ("12.3" gives 2); the first asks for padding.
    integers = text[1] - u'0';
    leftPadding = text[0] == u'0';
  }
  if (integers >= 13) integers = 12;
  if (integers < 0) leftPadding = false;

  const int tail = format.Length() - point - 1;
  const char16_t* after = text + point + 1;
  if (tail == 0) {
    decimals = -1;
    rightPadding = false;
  } else if (tail == 1) {
    decimals = after[0] - u'0';
  } else if (tail == 2) {
    decimals = after[1] - u'0';
    rightPadding = after[0] == u'0';
  }
  if (decimals > 9) decimals = 9;
  if (decimals < 0) rightPadding = false;
}

LqWString& UnformatNumber(const char16_t* text, LqWString& result) {
  const LqWString& separator = LocaleInformationWide().thousandSeparator;
  lq::detail::UnitBuilder<char16_t> out;
  if (text)
    for (const char16_t* p = text; *p; ++p)
      if (separator.Find(*p, 0) < 0) out.Put(*p);
  // Unlike the formatters, the result keeps its block policy: callers append to it.
  result.SetGrowth(LqWString::GrowSmallBlock);
  result.Assign(out.Data(), static_cast<int>(out.Length()));
  return result;
}

// ------------------------------------------------------------------------------------------
// Checking typed numbers

bool IsValidNumber(const char* text, int maxDecimals) {
  const LqLocaleInformation<LqString>& record = lq::detail::LocaleInformation();
  return IsValidNumberBody<char>(text, maxDecimals, record.thousandSeparator,
                                 record.thousandSeparator.Length(), record.decimalSeparator,
                                 record.decimalSeparator.Length());
}

bool IsValidNumber(const char16_t* text, int maxDecimals) {
  const LqLocaleInformation<LqWString>& record = LocaleInformationWide();
  return IsValidNumberBody<char16_t>(text, maxDecimals, record.thousandSeparator,
                                     record.thousandSeparator.Length(), record.decimalSeparator,
                                     record.decimalSeparator.Length());
}
