// The one UTF-16 to UTF-8 encoder of the library, below the string types so that the path
// boundary can use it too. Units that cannot be encoded (a lone surrogate half) are dropped. It
// differs from the UTF-16 standard on purpose: a surrogate pair is joined without the 0x10000
// offset, so U+1F600 read from UTF-8 as the units 0xD87D 0xDE00 writes back the same four bytes,
// and the decoder of Unicode.cpp mirrors it. 0xFFFF itself takes the four-byte form.
#pragma once

#include <cstdint>

namespace lq::detail {

// Calls `put(char)` for each byte of the UTF-8 form of `text`, up to its zero unit.
template <typename Put>
void EncodeUtf8(const char16_t* text, Put&& put) {
  for (const char16_t* p = text; *p; ++p) {
    const uint32_t u = *p;
    if (u >= 0xDC00 && u <= 0xDFFF) continue;
    uint32_t value = u;
    if (u >= 0xD800 && u <= 0xDBFF) {
      const uint32_t v = p[1];
      if (v < 0xDC00 || v > 0xDFFF) continue;
      // Kept: no 0x10000 offset; the low half comes up next and is dropped by the first test.
      value = ((u & 0x3FF) << 10) | (v & 0x3FF);
    }
    if (value < 0x80) {
      put(static_cast<char>(value));
    } else if (value < 0x800) {
      put(static_cast<char>(0xC0 | (value >> 6)));
      put(static_cast<char>(0x80 | (value & 0x3F)));
    } else if (value < 0xFFFF) {
      // Kept: the limit excludes 0xFFFF itself, which takes the four-byte form below.
      put(static_cast<char>(0xE0 | (value >> 12)));
      put(static_cast<char>(0x80 | ((value >> 6) & 0x3F)));
      put(static_cast<char>(0x80 | (value & 0x3F)));
    } else {
      put(static_cast<char>(0xF0 | (value >> 18)));
      put(static_cast<char>(0x80 | ((value >> 12) & 0x3F)));
      put(static_cast<char>(0x80 | ((value >> 6) & 0x3F)));
      put(static_cast<char>(0x80 | (value & 0x3F)));
    }
  }
}

}  // namespace lq::detail
