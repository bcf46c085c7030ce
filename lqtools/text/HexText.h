// Hexadecimal and decimal text of fixed length, and 64-bit tags kept in doubles.
//
// The readers (HtoB, HtoL, DtoL, HtoTAG) do not validate and do not stop at a terminator: the
// count alone decides. A digit is c - 48 below 'A' and c - 55 from 'A' on, so only "0"-"9" and
// "A"-"F" are proper digits; lower-case digits spoil the result although IsHexB accepts them.
// Callers upper-case what they pass on.
#pragma once

#include <cstdint>

#include "lqtools/LqToolsExport.h"

// Two upper-case digits, no terminator.
LQTOOLS_API void BtoH(unsigned char value, char* out);
LQTOOLS_API void BtoH(unsigned char value, char16_t* out);
// Reads exactly two digits.
LQTOOLS_API unsigned int HtoB(const unsigned char* text);
LQTOOLS_API unsigned int HtoB(const char16_t* text);
// Eight upper-case digits of the 32-bit value and a terminator.
LQTOOLS_API void LtoH(unsigned char* out, int32_t value);
LQTOOLS_API void LtoH(char16_t* out, int32_t value);
// `count` hex or decimal digits, in 32-bit arithmetic that wraps.
LQTOOLS_API int32_t HtoL(const unsigned char* text, int count);
LQTOOLS_API int32_t HtoL(const char16_t* text, int count);
LQTOOLS_API int32_t DtoL(const unsigned char* text, int count);
LQTOOLS_API int32_t DtoL(const char16_t* text, int count);
// "0"-"9", "A"-"F" or "a"-"f".
LQTOOLS_API bool IsHexB(unsigned char c);
LQTOOLS_API bool IsHexB(char16_t c);
// Every unit passes IsHexB; an empty text is valid.
LQTOOLS_API bool IsValidHexa(const char16_t* text);

// `count` digits read into an unsigned 64-bit value, as a double (exact up to 2^53).
LQTOOLS_API double HtoTAG(const char* text, int count);
LQTOOLS_API double HtoTAG(const char16_t* text, int count);
// The value truncated to a signed 64-bit integer as upper-case hex without leading zeros; `out`
// holds 17 units. A null `out` throws StdRuntimeException("Null ptr received!"). A value that fits
// no signed 64-bit integer gives "8000000000000000". The forms with `size` throw the plain
// `const char*` "bad destination size" when `size` is below 11.
LQTOOLS_API void TAGtoH(char* out, double value);
LQTOOLS_API void TAGtoH(char* out, uint64_t size, double value);
LQTOOLS_API void TAGtoH(char16_t* out, double value);
LQTOOLS_API void TAGtoH(char16_t* out, uint64_t size, double value);

// Native narrow-character forms of the byte readers and writers.
inline bool IsHexB(char c) { return IsHexB(static_cast<unsigned char>(c)); }
inline unsigned int HtoB(const char* text) {
  return HtoB(reinterpret_cast<const unsigned char*>(text));
}
inline void LtoH(char* out, int32_t value) { LtoH(reinterpret_cast<unsigned char*>(out), value); }
inline int32_t HtoL(const char* text, int count) {
  return HtoL(reinterpret_cast<const unsigned char*>(text), count);
}
inline int32_t DtoL(const char* text, int count) {
  return DtoL(reinterpret_cast<const unsigned char*>(text), count);
}
