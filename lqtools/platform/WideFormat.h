// The bounded formatter for 16-bit format strings, the one engine behind every wide printf-style
// call in lqtools. It keeps the conventions of the original platform's wide formatters:
//   %s, %ls, %ws  a const char16_t* text        %hs, %S  a const char* text (bytes as Latin-1)
//   %c, %lc       a char16_t (passed as int)     %hc, %C  a char
//   %d %i %u %x %X %o %e %E %f %F %g %G %a %A %p %%  as in printf, numbers always in the "C" locale
//   flags "-+ #0", width and precision (also "*"), lengths hh h l ll L q j z t I I32 I64.
// `%n` writes nothing and consumes its argument; an unknown conversion is copied as it stands.
// At most `count` units are written, the terminator included; a cut text stays terminated.
// Result: the units written without the terminator, or -1 when the text was cut (or count is 0).
#pragma once

#include <cstdarg>
#include <cstddef>

namespace lq::detail {

int vswprintf(char16_t* buffer, std::size_t count, const char16_t* format, va_list args);
int swprintf(char16_t* buffer, std::size_t count, const char16_t* format, ...);

// What the conversion at `percent` (a '%') takes from the argument list, for callers that fill
// formats from data and must pass exactly that type or nothing. `Nothing` for "%%", for an
// unknown conversion (copied as it stands) and for a format that ends inside the conversion;
// `Several` when a '*' width or precision takes further arguments. `end`, when given, is set
// behind the conversion.
enum class WideArgument {
  Nothing,
  Int,
  Long,
  LongLong,
  Size,
  Double,
  LongDouble,
  WideText,
  NarrowText,
  Pointer,
  Count,
  Several
};
WideArgument ConversionArgument(const char16_t* percent, const char16_t** end);

// The texts of "%lld" and of "%.<precision><conversion>" (conversion e, E, f, F, g or G; a negative
// precision means 6) in the "C" locale, as snprintf writes them but many times faster. The text
// is cut to `count - 1` units and terminated; the result is its full length.
int FormatInteger(char* buffer, std::size_t count, long long value);
int FormatDouble(char* buffer, std::size_t count, double value, char conversion, int precision);

// vsnprintf and snprintf of the C library, run in the "C" locale.
int vsnprintf(char* buffer, std::size_t count, const char* format, va_list args);
int snprintf(char* buffer, std::size_t count, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

}  // namespace lq::detail
