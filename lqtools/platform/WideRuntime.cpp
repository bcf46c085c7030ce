#include "lqtools/platform/WideRuntime.h"

#include <wctype.h>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "lqtools/platform/Locales.h"

namespace lq::detail {

std::size_t wcslen(const char16_t* text) {
  if (!text) return 0;
  const char16_t* p = text;
  while (*p)
    ++p;
  return static_cast<std::size_t>(p - text);
}

char16_t* wcsdup(const char16_t* text) {
  if (!text) return nullptr;
  const std::size_t bytes = (wcslen(text) + 1) * sizeof(char16_t);
  auto* copy = static_cast<char16_t*>(std::malloc(bytes));
  if (!copy) throw std::bad_alloc();
  std::memcpy(copy, text, bytes);
  return copy;
}

int wcsncmp(const char16_t* a, const char16_t* b, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    if (a[i] == 0) break;
  }
  return 0;
}

int iswspace(unsigned c) { return ::iswspace_l(c, UnicodeLocale()); }
int iswalnum(unsigned c) { return ::iswalnum_l(c, UnicodeLocale()); }
int iswxdigit(unsigned c) { return ::iswxdigit_l(c, UnicodeLocale()); }
unsigned towupper(unsigned c) { return ::towupper_l(c, UnicodeLocale()); }
unsigned towlower(unsigned c) { return ::towlower_l(c, UnicodeLocale()); }

namespace {

int DigitValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'z') return c - u'a' + 10;
  if (c >= u'A' && c <= u'Z') return c - u'A' + 10;
  return 99;
}

// The shared body of strtol and strtoul: sign, base prefix and the magnitude, saturated at
// `limit`. `*overflow` tells whether the magnitude exceeded it.
struct ParsedInteger {
  bool negative = false;
  bool overflow = false;
  uint64_t magnitude = 0;
  const char16_t* end = nullptr;
};

ParsedInteger ParseInteger(const char16_t* text, int base, uint64_t limit) {
  ParsedInteger result;
  result.end = text;
  if (!text || base < 0 || base == 1 || base > 36) return result;
  const char16_t* p = text;
  while (iswspace(*p))
    ++p;
  if (*p == u'+' || *p == u'-') {
    result.negative = *p == u'-';
    ++p;
  }
  if ((base == 0 || base == 16) && p[0] == u'0' && (p[1] == u'x' || p[1] == u'X') &&
      DigitValue(p[2]) < 16) {
    p += 2;
    base = 16;
  } else if (base == 0) {
    base = p[0] == u'0' ? 8 : 10;
  }
  const char16_t* digits = p;
  for (int d; (d = DigitValue(*p)) < base; ++p) {
    if (result.magnitude > (limit - static_cast<uint64_t>(d)) / static_cast<uint64_t>(base)) {
      result.overflow = true;
    } else {
      result.magnitude = result.magnitude * static_cast<uint64_t>(base) + static_cast<uint64_t>(d);
    }
  }
  if (p != digits) result.end = p;
  return result;
}

}  // namespace

int32_t wcstol(const char16_t* text, char16_t** end, int base) {
  // The negative side reaches one further than the positive one.
  const ParsedInteger parsed = ParseInteger(text, base, uint64_t{INT32_MAX} + 1);
  if (end) *end = const_cast<char16_t*>(parsed.end);
  if (parsed.negative) {
    if (parsed.overflow) {
      errno = ERANGE;
      return INT32_MIN;
    }
    return static_cast<int32_t>(-static_cast<int64_t>(parsed.magnitude));
  }
  if (parsed.overflow || parsed.magnitude > uint64_t{INT32_MAX}) {
    errno = ERANGE;
    return INT32_MAX;
  }
  return static_cast<int32_t>(parsed.magnitude);
}

uint32_t wcstoul(const char16_t* text, char16_t** end, int base) {
  const ParsedInteger parsed = ParseInteger(text, base, uint64_t{UINT32_MAX});
  if (end) *end = const_cast<char16_t*>(parsed.end);
  if (parsed.overflow) {
    errno = ERANGE;
    return UINT32_MAX;
  }
  const auto value = static_cast<uint32_t>(parsed.magnitude);
  return parsed.negative ? 0u - value : value;
}

double wcstod(const char16_t* text, char16_t** end) {
  if (end) *end = const_cast<char16_t*>(text);
  if (!text) return 0.0;
  const char16_t* start = text;
  while (iswspace(*start))
    ++start;
  // Only these characters can belong to a number ("1e5", "0x1p3", "inf", "nan(...)"), so the
  // narrow copy stays as short as the number itself.
  std::string narrow;
  for (const char16_t* p = start; *p < 0x80; ++p) {
    const char c = static_cast<char>(*p);
    const bool numberChar = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                            (c >= 'A' && c <= 'Z') || c == '+' || c == '-' || c == '.' ||
                            c == '(' || c == ')' || c == '_';
    if (!numberChar) break;
    narrow.push_back(c);
  }
  char* narrowEnd = nullptr;
  const double value = ::strtod_l(narrow.c_str(), &narrowEnd, ClassicLocale());
  const std::size_t used = static_cast<std::size_t>(narrowEnd - narrow.c_str());
  if (end && used > 0) *end = const_cast<char16_t*>(start + used);
  return value;
}

char16_t* wcstok(char16_t* text, const char16_t* delimiters, char16_t** context) {
  if (!context || !delimiters) return nullptr;
  char16_t* p = text ? text : *context;
  if (!p) return nullptr;
  auto isDelimiter = [delimiters](char16_t c) {
    for (const char16_t* d = delimiters; *d; ++d)
      if (*d == c) return true;
    return false;
  };
  while (*p && isDelimiter(*p))
    ++p;
  if (!*p) {
    *context = p;
    return nullptr;
  }
  char16_t* token = p;
  while (*p && !isDelimiter(*p))
    ++p;
  if (*p) *p++ = 0;
  *context = p;
  return token;
}

}  // namespace lq::detail
