// The one route between UTF-16 (LqWString) and UTF-8 (LqString). The converters never report:
// what cannot be converted is dropped. They share one treatment of characters above U+FFFF that
// differs from the UTF-16 standard: the offset 0x10000 is never applied, so U+1F600 in UTF-8
// becomes the units 0xD87D 0xDE00 and those convert back to the same four bytes. UTF-8 text thus
// passes unchanged through a read and a write. Neither direction may be changed alone.
//
// Each replaces the content of `out`, and selects GrowSmallBlock on it unless the caller already
// chose a policy (select GrowLargeBlock beforehand for long texts).
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

// Up to the first zero unit.
LQTOOLS_API void Utf16ToUtf8(LqString& out, const LqWString& text);
// Up to the first zero byte.
LQTOOLS_API void Utf8ToUtf16(LqWString& out, const LqString& text);
// Exactly `length` bytes; a zero byte becomes a zero unit.
LQTOOLS_API void Utf8ToUtf16(LqWString& out, const char* text, int length);
