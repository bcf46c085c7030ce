// Base64 of RFC 4648 (alphabet "A-Za-z0-9+/", padding "="), without line breaks, as narrow and
// wide text.
//
// The decoders write into a caller's buffer that must hold DecodedBase64Size bytes; they stop at
// the end of the text or at its first "=". The narrow decoders refuse a character outside the
// alphabet (blanks and line ends too) with false, keeping what they wrote before it. The wide
// decoder refuses nothing: it reads each unit by its low byte and lets a bad one spoil its group of
// three bytes. All tables are constant, so every function may run on any thread.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

// Replaces `out` with the text of `size` bytes of `data`: four characters for each group of up to
// three bytes. A `size` below 1, a null `data`, or a block whose text would not fit a string
// (above 1610612733 bytes) gives an empty text.
LQTOOLS_API void EncodeBase64(LqString& out, const void* data, int size);
LQTOOLS_API void EncodeBase64(LqWString& out, const void* data, int size);

// Decodes into `out`, which has no bound and gets no terminator. A group of k trailing symbols
// writes k * 3 / 4 bytes. A null or empty `text` gives true; a null `out` with a text to decode
// gives false.
LQTOOLS_API bool DecodeBase64(void* out, const char* text);
// True for any text, garbage included (see the file comment); only a null `out` gives false.
LQTOOLS_API bool DecodeBase64(void* out, const char16_t* text);

// Decodes and terminates. Every group writes three bytes, a short last group with zeros in its
// tail, so `out` needs room for three bytes per group of four characters and the terminator.
// False with an empty text in `out` when `outSize` is below 4 and there is something to decode
// (`outSize` is no bound beyond that test); false with no terminator on a bad character. A null
// or empty `text` gives an empty string and true; a null `out` gives false.
LQTOOLS_API bool DecodeBase64String(char* out, const char* text, int outSize);

// The size of the data that `length` characters of `text` (-1: the whole text) decode to: the
// count without the trailing "=", times 3, divided by 4. Nothing else of the text is checked.
// A null text, a length of 0, or a negative length other than -1 gives 0.
LQTOOLS_API int DecodedBase64Size(const char* text, int length);
LQTOOLS_API int DecodedBase64Size(const char16_t* text, int length);
