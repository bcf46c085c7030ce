#include "lqtools/platform/LocaleSettings.h"

#include <langinfo.h>
#include <locale.h>

#include <cwchar>
#include <string>

namespace lq::detail {

namespace {

// Categories of the user's locale (with LC_CTYPE, for the character set of the answers), released
// on scope exit; null when the environment names a locale that is not installed.
class UserLocale {
 public:
  explicit UserLocale(int mask) : m_locale(newlocale(mask, "", static_cast<locale_t>(nullptr))) {}
  ~UserLocale() {
    if (m_locale) freelocale(m_locale);
  }
  UserLocale(const UserLocale&) = delete;
  UserLocale& operator=(const UserLocale&) = delete;
  locale_t Get() const { return m_locale; }

 private:
  locale_t m_locale;
};

// An nl_langinfo_l answer, decoded from the locale's own character set into UTF-16. False when
// the bytes do not decode.
bool Decode(locale_t locale, nl_item item, std::u16string& out) {
  const char* text = nl_langinfo_l(item, locale);
  if (!text) return false;
  const locale_t previous = uselocale(locale);
  std::mbstate_t state{};
  std::wstring wide;
  const char* p = text;
  const char* end = text + std::char_traits<char>::length(text);
  bool ok = true;
  while (p < end) {
    wchar_t c = 0;
    const std::size_t n = std::mbrtowc(&c, p, static_cast<std::size_t>(end - p), &state);
    if (n == static_cast<std::size_t>(-1) || n == static_cast<std::size_t>(-2) || n == 0) {
      ok = false;
      break;
    }
    wide += c;
    p += n;
  }
  uselocale(previous);
  if (!ok) return false;
  out.clear();
  for (wchar_t c : wide) {
    const auto code = static_cast<uint32_t>(c);
    if (code > 0xFFFF) {
      out += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
      out += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
      out += static_cast<char16_t>(code);
    }
  }
  return true;
}

// The common shorthands of the strftime language, written out.
std::u16string Expand(const std::u16string& format) {
  std::u16string out;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] == u'%' && i + 1 < format.size()) {
      const char16_t c = format[i + 1];
      const char16_t* full = c == u'D'   ? u"%m/%d/%y"
                             : c == u'T' ? u"%H:%M:%S"
                             : c == u'F' ? u"%Y-%m-%d"
                             : c == u'R' ? u"%H:%M"
                                         : nullptr;
      if (full) {
        out += full;
      } else {
        out += format.substr(i, 2);
      }
      ++i;
    } else {
      out += format[i];
    }
  }
  return out;
}

// Walks a strftime format: calls `conversion` for each conversion letter and returns the first
// character that is neither a digit nor part of a conversion, or 0.
template <typename OnConversion>
char16_t Walk(const std::u16string& format, OnConversion conversion) {
  char16_t separator = 0;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const char16_t c = format[i];
    if (c == u'%') {
      ++i;
      while (i < format.size() && (format[i] == u'_' || format[i] == u'-' || format[i] == u'0' ||
                                   format[i] == u'^' || format[i] == u'#'))
        ++i;
      while (i < format.size() && format[i] >= u'0' && format[i] <= u'9')
        ++i;
      if (i < format.size() && (format[i] == u'E' || format[i] == u'O')) ++i;
      if (i < format.size()) conversion(format[i]);
    } else if (!(c >= u'0' && c <= u'9') && separator == 0) {
      separator = c;
    }
  }
  return separator;
}

bool TimeFormat(nl_item item, std::u16string& format) {
  UserLocale locale(LC_TIME_MASK | LC_CTYPE_MASK);
  if (!locale.Get() || !Decode(locale.Get(), item, format)) return false;
  format = Expand(format);
  return true;
}

bool Answer(uint32_t type, std::u16string& answer) {
  switch (type) {
    case kLocaleSDecimal:
    case kLocaleSThousand: {
      UserLocale locale(LC_NUMERIC_MASK | LC_CTYPE_MASK);
      return locale.Get() &&
             Decode(locale.Get(), type == kLocaleSDecimal ? RADIXCHAR : THOUSEP, answer);
    }
    case kLocaleSDate:
    case kLocaleSTime: {
      std::u16string format;
      if (!TimeFormat(type == kLocaleSDate ? D_FMT : T_FMT, format)) return false;
      const char16_t separator = Walk(format, [](char16_t) {});
      if (separator == 0) return false;
      answer.assign(1, separator);
      return true;
    }
    case kLocaleIDate:
    case kLocaleILDate: {
      std::u16string format;
      if (!TimeFormat(D_FMT, format)) return false;
      std::u16string order;  // 'd', 'm', 'y' in the order they stand
      Walk(format, [&order](char16_t c) {
        const char16_t field = (c == u'd' || c == u'e')                             ? u'd'
                               : (c == u'm' || c == u'b' || c == u'B' || c == u'h') ? u'm'
                               : (c == u'y' || c == u'Y' || c == u'C' || c == u'G') ? u'y'
                                                                                    : 0;
        if (field && order.find(field) == std::u16string::npos) order += field;
      });
      if (order == u"mdy") {
        answer = u"0";
      } else if (order == u"dmy") {
        answer = u"1";
      } else if (order == u"ymd") {
        answer = u"2";
      } else {
        return false;
      }
      return true;
    }
    case kLocaleIFirstDayOfWeek: {
      UserLocale locale(LC_TIME_MASK);
      if (!locale.Get()) return false;
      const char* day = nl_langinfo_l(_NL_TIME_FIRST_WEEKDAY, locale.Get());
      if (!day || day[0] < 1 || day[0] > 7) return false;
      // glibc counts 1 Sunday to 7 Saturday; the answer counts 0 Monday to 6 Sunday.
      answer.assign(1, static_cast<char16_t>(u'0' + (day[0] + 5) % 7));
      return true;
    }
    default: return false;
  }
}

}  // namespace

int GetLocaleInfoW(uint32_t locale, uint32_t type, char16_t* buffer, int size) {
  if (locale != kLocaleUserDefault || !buffer || size <= 0) return 0;
  std::u16string answer;
  if (!Answer(type, answer)) return 0;
  if (answer.size() + 1 > static_cast<std::size_t>(size)) return 0;
  answer.copy(buffer, answer.size());
  buffer[answer.size()] = 0;
  return static_cast<int>(answer.size() + 1);
}

}  // namespace lq::detail
