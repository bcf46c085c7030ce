// The one UTF-16 to UTF-8 encoder of the library, below the string types so that the path
// boundary can use it too. Units that cannot be encoded (a lone surrogate half) are dropped. It
// differs from the UTF-16 standard on purpose: a surrogate pair is joined without the 0x10000
// offset, so U+1F600 read from UTF-8 as the units 0xD87D 0xDE00 writes back the same four bytes,
// and the decoder of Unicode.cpp mirrors it. 0xFFFF itself takes the four-byte form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lq::detail {

// The index, in memory order, of the first byte of `word` with a bit set; `word` is not zero.
inline int FirstSetByte(uint64_t word) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return __builtin_clzll(word) >> 3;
#else
  return __builtin_ctzll(word) >> 3;
#endif
}

// The bytes that the `length` units of `text` encode to, when every surrogate half has its
// partner; more when one has not.
inline std::size_t Utf8LengthOf(const char16_t* text, std::size_t length) {
  // Each unit takes 1, plus 1 from 0x80 and 1 from 0x800 on; halves count two each (a pair takes
  // four), and 0xFFFF four.
  auto bytesOf = [](unsigned u) {
    return 1u + (u >= 0x80) + (u >= 0x800) - ((u & 0xF800) == 0xD800) + (u == 0xFFFF);
  };
  std::size_t bytes = 0;
  std::size_t i = 0;
#if defined(__SSE2__)
  // Per unit 3 plus four masks of -1 or 0: below 0x80, below 0x800, a half, and minus 0xFFFF.
  // Sixteen-bit lanes take 8192 rounds of -3 to +1 before they are summed into 32-bit ones.
  const __m128i zero = _mm_setzero_si128();
  const __m128i ones = _mm_set1_epi16(1);
  const __m128i from80 = _mm_set1_epi16(static_cast<short>(0xFF80));
  const __m128i from800 = _mm_set1_epi16(static_cast<short>(0xF800));
  const __m128i half = _mm_set1_epi16(static_cast<short>(0xD800));
  const __m128i last = _mm_set1_epi16(-1);
  __m128i total = zero;
  while (length - i >= 8) {
    __m128i lanes = zero;
    for (int round = 0; round < 8192 && length - i >= 8; ++round, i += 8) {
      const __m128i u = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
      const __m128i high = _mm_and_si128(u, from800);
      lanes = _mm_add_epi16(lanes, _mm_cmpeq_epi16(_mm_and_si128(u, from80), zero));
      lanes = _mm_add_epi16(lanes, _mm_cmpeq_epi16(high, zero));
      lanes = _mm_add_epi16(lanes, _mm_cmpeq_epi16(high, half));
      lanes = _mm_sub_epi16(lanes, _mm_cmpeq_epi16(u, last));
      bytes += 24;
    }
    total = _mm_add_epi32(total, _mm_madd_epi16(lanes, ones));
  }
  int32_t sums[4];
  _mm_storeu_si128(reinterpret_cast<__m128i*>(sums), total);
  bytes =
      static_cast<std::size_t>(static_cast<int64_t>(bytes) + sums[0] + sums[1] + sums[2] + sums[3]);
#endif
  for (; i < length; ++i)
    bytes += bytesOf(text[i]);
  return bytes;
}

// Writes the UTF-8 form of the `length` units of `text` into [to, toEnd), which has room for
// their Utf8LengthOf, and returns the end of what it wrote. `text` holds no zero unit before
// `length`.
inline char* EncodeUtf8(const char16_t* text, std::size_t length, char* to, const char* toEnd) {
  const char16_t* p = text;
  const char16_t* const end = text + length;
  while (p != end) {
#if defined(__SSE2__)
    // Sixteen units at a time while they are ASCII, and up to the first that is not.
    if (end - p >= 16 && toEnd - to >= 16) {
      const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
      const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(low, high));
      const __m128i beyond = _mm_set1_epi16(static_cast<short>(0xFF80));
      const __m128i zero = _mm_setzero_si128();
      // Two bits for each unit below 0x80.
      const unsigned ascii =
          static_cast<unsigned>(
              _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(low, beyond), zero))) |
          static_cast<unsigned>(
              _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(high, beyond), zero)))
              << 16;
      if (ascii == 0xFFFFFFFFu) {
        p += 16;
        to += 16;
        continue;
      }
      const int run = __builtin_ctz(~ascii) >> 1;
      p += run;
      to += run;
    }
#else
    // Four units at a time while they are ASCII, and up to the first that is not.
    if (end - p >= 4 && toEnd - to >= 4) {
      uint64_t four;
      std::memcpy(&four, p, sizeof four);
      for (int i = 0; i < 4; ++i)
        to[i] = static_cast<char>(p[i]);
      const uint64_t high = four & 0xFF80FF80FF80FF80ull;
      if (high == 0) {
        p += 4;
        to += 4;
        continue;
      }
      // The first unit of at least 0x80 has a set bit in one of its two bytes.
      const int run = FirstSetByte(high) >> 1;
      p += run;
      to += run;
    }
#endif
    // Then unit by unit, while they are not ASCII.
    do {
      const uint32_t u = *p++;
      if (u < 0x80) {
        *to++ = static_cast<char>(u);
        continue;
      }
      // The usual units take the short way: two bytes, or three outside the surrogates.
      if (u < 0x800) {
        to[0] = static_cast<char>(0xC0 | (u >> 6));
        to[1] = static_cast<char>(0x80 | (u & 0x3F));
        to += 2;
        continue;
      }
      if ((u & 0xF800) != 0xD800 && u != 0xFFFF) {
        to[0] = static_cast<char>(0xE0 | (u >> 12));
        to[1] = static_cast<char>(0x80 | ((u >> 6) & 0x3F));
        to[2] = static_cast<char>(0x80 | (u & 0x3F));
        to += 3;
        continue;
      }
      if (u >= 0xDC00 && u <= 0xDFFF) continue;
      uint32_t value = u;
      if (u >= 0xD800 && u <= 0xDBFF) {
        const uint32_t v = p != end ? *p : 0;
        if (v < 0xDC00 || v > 0xDFFF) continue;
        // Kept: no 0x10000 offset; the low half comes up next and is dropped by the test above.
        value = ((u & 0x3FF) << 10) | (v & 0x3FF);
      }
      if (value < 0x80) {
        *to++ = static_cast<char>(value);
      } else if (value < 0x800) {
        to[0] = static_cast<char>(0xC0 | (value >> 6));
        to[1] = static_cast<char>(0x80 | (value & 0x3F));
        to += 2;
      } else if (value < 0xFFFF) {
        // Kept: the limit excludes 0xFFFF itself, which takes the four-byte form below.
        to[0] = static_cast<char>(0xE0 | (value >> 12));
        to[1] = static_cast<char>(0x80 | ((value >> 6) & 0x3F));
        to[2] = static_cast<char>(0x80 | (value & 0x3F));
        to += 3;
      } else {
        to[0] = static_cast<char>(0xF0 | (value >> 18));
        to[1] = static_cast<char>(0x80 | ((value >> 12) & 0x3F));
        to[2] = static_cast<char>(0x80 | ((value >> 6) & 0x3F));
        to[3] = static_cast<char>(0x80 | (value & 0x3F));
        to += 4;
      }
    } while (p != end && *p >= 0x80);
  }
  return to;
}

}  // namespace lq::detail
