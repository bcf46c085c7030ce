// Numbers as the user reads and types them: integers with a minimum width, doubles with the
// separators of the locale records (LqLocaleInformation.h) and a fixed or trimmed count of
// decimals, fixed-width layouts with star-filled overflow, the short format strings that carry such
// a layout ("05.02"), and the check of a typed number. The runtime's locale is never read: "%f"
// runs in the "C" locale, the separators come from the records.
//
// Numbers that do not fit become star text ("*.**") or "#"; only FormatInteger reports an error
// (-1). Every function is stateless and reads the locale records without a lock.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

// Decimal text of `value`, at least `width` digits (zeros in front; longer numbers are not cut).
// Meant for values of 0 and up: a negative value gives the one character '0' + value (-5 gives
// "+"). Returns the length, or -1 for a negative width with `text` untouched.
LQTOOLS_API int FormatInteger(LqString& text, int value, int width);
LQTOOLS_API int FormatInteger(LqWString& text, int value, int width);

// `value` rounded (halves away from zero) to `decimals` places with the locale's separators:
// `decimals` 1 to 10 gives exactly that many (more counts as 10), 0 none, a negative count up to
// that many with trailing zeros cut. Only six decimals are real digits: later places repeat the
// sixth. An absolute value that rounds to 10^12 or more gives "*" followed, when decimals are
// asked for, by the decimal separator and one "*" per decimal. Returns the length of `text`.
LQTOOLS_API int FormatNumber(LqString& text, double value, int decimals, bool thousands);
LQTOOLS_API int FormatNumber(LqWString& text, double value, int decimals, bool thousands);
// The value rounded to `decimals` places; -1 returns it untouched. Positive halves round up,
// negative halves towards zero (-2.5 gives -2).
LQTOOLS_API double FormatNumber(double value, int decimals);

// Fixed-width layout of `value` in the wide record's separators: at most `integers` digits ahead
// of the decimal separator (a minus counts), `decimals` after it (negative: up to 5, trimmed).
// Too long an integer part gives `integers` stars, then the separator and `decimals` stars;
// infinities give "#". `leftPadding` fills the integer part with zeros to `integers` digits,
// `rightPadding` keeps trailing zeros of the decimals.
LQTOOLS_API void FormatDouble(LqWString& text, double value, int integers, int decimals,
                              bool thousandSeparator, bool leftPadding, bool rightPadding);

// Reads a layout of the shape "05.02" (see FormatDouble); without a "." the defaults stay:
// integers -1, decimals 3, no padding.
LQTOOLS_API void ParseFormat(const LqWString& format, int& integers, int& decimals,
                             bool& leftPadding, bool& rightPadding);

// `text` without any unit of the wide record's thousands separator. Returns `result`.
LQTOOLS_API LqWString& UnformatNumber(const char16_t* text, LqWString& result);

// Significant decimals (0 to 6) of the "%f" text of `value`.
LQTOOLS_API int countDecimals(double value);

// Size of a buffer that holds the "%f" text of any double with its terminator.
constexpr unsigned int kXfecvtBufferSize = 328;

// The digit string of `value` in the manner of fcvt: the digits of the "%f" text of |value|
// without the point, at least `count` of them ("0" appended), `*position` the digits ahead of the
// point, `*sign` 1 for a value not 0 or above (NaN too). Every leading zero removed and the point
// removed repeat the last character: 123.456789 with count 12 gives "123456789900". Returns
// `buffer`, or null for a null buffer. The buffer must hold the larger of kXfecvtBufferSize and
// count + 1 bytes; the bounded form below never writes past `size` bytes.
LQTOOLS_API char* xfecvt(char* buffer, double value, unsigned int count, int* position, int* sign);
LQTOOLS_API char* xfecvt(char* buffer, unsigned int size, double value, unsigned int count,
                         int* position, int* sign);

// True when `text` reads as a number typed in the record's form: an optional leading "-", digits,
// groups of three after each thousands separator, at most one decimal separator and, unless
// `maxDecimals` is negative, at most `maxDecimals` decimals. An empty text passes.
LQTOOLS_API bool IsValidNumber(const char* text, int maxDecimals);
LQTOOLS_API bool IsValidNumber(const char16_t* text, int maxDecimals);
