#include "lqtools/text/Unicode.h"

#include <cstdint>
#include <cstring>
#include <string>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "lqtools/platform/Utf8Encoder.h"
#include "lqtools/text/detail/StringWriter.h"

namespace {

using WideWriter = lq::detail::StringWriter<char16_t, LqWideChar>;
using NarrowWriter = lq::detail::StringWriter<char, LqChar>;

char16_t* PutUtf16(char16_t* to, uint32_t value) {
  if (value >= 0x10000) {
    // Kept: no 0x10000 offset, matching the encoder.
    *to++ = static_cast<char16_t>((value >> 10) | 0xD800);
    *to++ = static_cast<char16_t>((value & 0x3FF) | 0xDC00);
  } else {
    *to++ = static_cast<char16_t>(value);
  }
  return to;
}

bool IsContinuation(unsigned char b) { return (b & 0xC0) == 0x80; }

// The units of `p` before its first zero unit. The first `known` units are searched in blocks; a
// zero unit lies at or behind them (a borrowed text may have grown since it was measured).
std::size_t UnitsBeforeZero(const char16_t* p, std::size_t known) {
  std::size_t i = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  for (; known - i >= 8; i += 8) {
    const __m128i u = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(u, zero))) break;
  }
#else
  for (; known - i >= 4; i += 4) {
    uint64_t four;
    std::memcpy(&four, p + i, sizeof four);
    if ((four - 0x0001000100010001ull) & ~four & 0x8000800080008000ull) break;
  }
#endif
  while (p[i])
    ++i;
  return i;
}

// The units that the bytes [p, end) decode to, when they are well formed; more when they are not.
std::size_t UnitsOf(const unsigned char* p, const unsigned char* end) {
  std::size_t units = 0;
#if defined(__SSE2__)
  // Per byte 1 when it is no continuation (above -65 as a signed byte) and 1 more when its top
  // four bits are set. Byte lanes take 127 rounds of at most 2 before they are summed.
  const __m128i zero = _mm_setzero_si128();
  const __m128i continuation = _mm_set1_epi8(-65);
  const __m128i top = _mm_set1_epi8(static_cast<char>(0xF0));
  __m128i total = zero;
  while (end - p >= 16) {
    __m128i lanes = zero;
    for (int round = 0; round < 127 && end - p >= 16; ++round, p += 16) {
      const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
      lanes = _mm_sub_epi8(lanes, _mm_cmpgt_epi8(b, continuation));
      lanes = _mm_sub_epi8(lanes, _mm_cmpeq_epi8(_mm_and_si128(b, top), top));
    }
    total = _mm_add_epi64(total, _mm_sad_epu8(lanes, zero));
  }
  uint64_t sums[2];
  _mm_storeu_si128(reinterpret_cast<__m128i*>(sums), total);
  units = static_cast<std::size_t>(sums[0] + sums[1]);
#endif
  for (; p != end; ++p)
    units += static_cast<std::size_t>(!IsContinuation(*p)) + static_cast<std::size_t>(*p >= 0xF0);
  return units;
}

// Decodes the bytes [p, end) into [to, toEnd), which has room for their UnitsOf, and returns the
// end of the units. Never reads at or past `end`, also inside a sequence cut off by it.
char16_t* DecodeUtf8(const unsigned char* p, const unsigned char* end, char16_t* to,
                     const char16_t* toEnd) {
  while (p != end) {
#if defined(__SSE2__)
    // Sixteen bytes at a time while they are ASCII, and up to the first that is not.
    if (end - p >= 16 && toEnd - to >= 16) {
      const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
      const __m128i zero = _mm_setzero_si128();
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(bytes, zero));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 8), _mm_unpackhi_epi8(bytes, zero));
      const unsigned high = static_cast<unsigned>(_mm_movemask_epi8(bytes));
      if (high == 0) {
        p += 16;
        to += 16;
        continue;
      }
      const int run = __builtin_ctz(high);
      p += run;
      to += run;
    }
#else
    // Eight bytes at a time while they are ASCII, and up to the first that is not.
    if (end - p >= 8 && toEnd - to >= 8) {
      uint64_t eight;
      std::memcpy(&eight, p, sizeof eight);
      for (int i = 0; i < 8; ++i)
        to[i] = p[i];
      const uint64_t high = eight & 0x8080808080808080ull;
      if (high == 0) {
        p += 8;
        to += 8;
        continue;
      }
      const int run = lq::detail::FirstSetByte(high);
      p += run;
      to += run;
    }
#endif
    // Then sequence by sequence, while they are not ASCII.
    do {
      const unsigned char lead = *p;
      // Whole two- and three-byte sequences, the usual ones, take the short way.
      if (lead >= 0xC0 && lead < 0xE0 && end - p >= 2 && IsContinuation(p[1])) {
        *to++ = static_cast<char16_t>(((lead & 0x1Fu) << 6) | (p[1] & 0x3Fu));
        p += 2;
        continue;
      }
      if (lead >= 0xE0 && lead < 0xF0 && end - p >= 3 && IsContinuation(p[1]) &&
          IsContinuation(p[2])) {
        *to++ =
            static_cast<char16_t>(((lead & 0x0Fu) << 12) | ((p[1] & 0x3Fu) << 6) | (p[2] & 0x3Fu));
        p += 3;
        continue;
      }
      ++p;
      int continuations;
      uint32_t value;
      if (lead < 0x80) {
        *to++ = lead;
        continue;
      } else if (lead < 0xC0) {
        continue;  // a stray continuation byte
      } else if (lead < 0xE0) {
        continuations = 1, value = lead & 0x1F;
      } else if (lead < 0xF0) {
        continuations = 2, value = lead & 0x0F;
      } else if (lead < 0xF8) {
        continuations = 3, value = lead & 0x07;
      } else {
        // Not decodable: the lead and the continuation bytes behind it are dropped.
        while (p != end && IsContinuation(*p))
          ++p;
        continue;
      }
      bool complete = true;
      for (int i = 0; i < continuations; ++i) {
        if (p == end) return to;  // cut off by the end of the text: nothing comes of it
        const unsigned char b = *p++;
        if (!IsContinuation(b)) {
          complete = false;  // the offending byte goes with the partial value
          break;
        }
        value = (value << 6) | (b & 0x3F);
      }
      if (complete) to = PutUtf16(to, value);
    } while (p != end && *p >= 0x80);
  }
  return to;
}

void Decode(LqWString& out, const char* text, std::size_t length) {
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  const std::size_t units = UnitsOf(p, p + length);
  WideWriter writer(out, units);
  char16_t* const to = writer.Data();
  writer.Commit(static_cast<std::size_t>(DecodeUtf8(p, p + length, to, to + units) - to));
}

}  // namespace

void Utf16ToUtf8(LqString& out, const LqWString& text) {
  out.SetGrowthIfNone(LqString::GrowSmallBlock);
  out = "";
  const char16_t* p = text;
  if (!p) return;
  const std::size_t length = UnitsBeforeZero(p, static_cast<std::size_t>(text.Length()));
  const std::size_t bytes = lq::detail::Utf8LengthOf(p, length);
  NarrowWriter writer(out, bytes);
  char* const to = writer.Data();
  writer.Commit(static_cast<std::size_t>(lq::detail::EncodeUtf8(p, length, to, to + bytes) - to));
}

void Utf8ToUtf16(LqWString& out, const LqString& text) {
  out.SetGrowthIfNone(LqWString::GrowSmallBlock);
  out = u"";
  const char* p = text;
  if (!p) return;
  Decode(out, p, std::strlen(p));
}

void Utf8ToUtf16(LqWString& out, const char* text, int length) {
  out.SetGrowthIfNone(LqWString::GrowSmallBlock);
  out = u"";
  if (!text || length < 1) return;
  Decode(out, text, static_cast<std::size_t>(length));
}
