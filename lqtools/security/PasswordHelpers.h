// A reversible scrambling of stored passwords, to keep them from plain sight in configuration
// files: each unit XORed with 0x5A and written as two upper-case hexadecimal digits.
//
// Both work in place on `text`, whose capacity is `size` units, and always return true. Passwords
// are meant to be ASCII or Latin-1 of at most 32 units: a unit above 0xFF keeps only the first two
// of its digits (the last unit all of them), units from the 33rd on are dropped, and a unit equal
// to 0x5A ends the password there (its "00" is the last pair). Decoding takes at most 63 pairs
// and drops a lone digit at the end. Nothing is ever written past the 64-unit working buffers or
// past `size`.
#pragma once

#include "lqtools/LqToolsExport.h"

LQTOOLS_API bool EncodePassword(char16_t* text, int size);
LQTOOLS_API bool DecodePassword(char16_t* text, int size);
