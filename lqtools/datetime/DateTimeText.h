// Compact and mail-header text forms of LqDateTime, each in a narrow (LqString, bytes) and a wide
// (LqWString, 16-bit units) form:
//
//   DateTime2String   ddmmyyyyhhmmss, optionally followed by milliseconds and by the three
//                     digits below them (14, 17 or 20 digits)
//   String2DateTime   strict reader of 14 or 17 digits
//   ParseDateTime     lenient reader of the same digits that fills what is missing
//   DateTime2RFC822   "Thu 31 Dec 2020 23:59:58 GMT", English names, no zone conversion
//
// Failures are results: false, or the invalid date-time. Stateless; safe from any thread.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/text/LqBasicString.h"

// False, with `out` empty, for an invalid value. The narrow form writes the shortest text that
// holds the value unless a flag asks for more; the wide form obeys the flags alone and drops a
// fraction that no flag asks for. `out` takes the GrowSmallBlock policy.
LQTOOLS_API bool DateTime2String(LqString& out, const LqDateTime& value, bool forceMSeconds,
                                 bool forceUSeconds);
LQTOOLS_API bool DateTime2String(LqWString& out, const LqDateTime& value, bool forceMSeconds,
                                 bool forceUSeconds);

// `out` is invalid unless the text holds 14 or 17 characters of an existing date and time in
// the value's range (the 20-digit form is refused). The result is Valid() of `out`.
LQTOOLS_API bool String2DateTime(LqDateTime& out, const char* text);
LQTOOLS_API bool String2DateTime(LqDateTime& out, const char16_t* text);

// Day, month and year from the first eight characters; the time fields that follow are read as
// far as the text goes, the rest default to midnight, or to 23:59:59 with `endOfPeriod`.
// Milliseconds default to 0 in either case. An impossible date ends invalid.
LQTOOLS_API void ParseDateTime(const LqString& text, LqDateTime& out, bool endOfPeriod);
LQTOOLS_API void ParseDateTime(const LqWString& text, LqDateTime& out, bool endOfPeriod);

// The value is written as it stands, as if it were UTC.
LQTOOLS_API const LqWString DateTime2RFC822(const LqDateTime& value, bool fourDigitYear);
