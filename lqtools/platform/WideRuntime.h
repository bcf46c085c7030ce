// The C library's wide-character routines on 16-bit units. The host platform's own routines work
// on 32-bit wchar_t; these behave as the 16-bit platform's did, with its 32-bit `long`.
// Classification and case mapping use a fixed "C.UTF-8" locale object and number parsing the "C"
// locale, never the process's global locale. Internal: callers outside lqtools must not use them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lq::detail {

std::size_t wcslen(const char16_t* text);  // 0 for null
// A copy from malloc, to be released with free; null for null. std::bad_alloc when memory runs out.
char16_t* wcsdup(const char16_t* text);
int wcsncmp(const char16_t* a, const char16_t* b, std::size_t count);

// strtol/strtoul on 16-bit units, clamped to the 32-bit ranges; `end` may be null.
int32_t wcstol(const char16_t* text, char16_t** end, int base);
uint32_t wcstoul(const char16_t* text, char16_t** end, int base);
// The longest prefix that reads as a number, as strtod does in the "C" locale.
double wcstod(const char16_t* text, char16_t** end);
// The three-argument wcstok: the state lives in `context`.
char16_t* wcstok(char16_t* text, const char16_t* delimiters, char16_t** context);

int iswspace(unsigned c);
int iswalnum(unsigned c);
int iswxdigit(unsigned c);
unsigned towupper(unsigned c);
unsigned towlower(unsigned c);

}  // namespace lq::detail
