#include "lqtools/text/Unicode.h"

#include <cstdint>

#include "lqtools/platform/Utf8Encoder.h"

namespace {

void AppendUtf16(LqWString& out, uint32_t value) {
  if (value >= 0x10000) {
    // Kept: no 0x10000 offset, matching the encoder above.
    out += static_cast<char16_t>((value >> 10) | 0xD800);
    out += static_cast<char16_t>((value & 0x3FF) | 0xDC00);
  } else {
    out += static_cast<char16_t>(value);
  }
}

bool IsContinuation(unsigned char b) { return (b & 0xC0) == 0x80; }

// Decodes bytes from `p`: up to `end` when `counted`, else up to the first zero byte. Never reads
// at or past that end, also inside a sequence cut off by it.
void DecodeUtf8(LqWString& out, const unsigned char* p, const unsigned char* end, bool counted) {
  auto more = [&](const unsigned char* q) { return counted ? q < end : *q != 0; };
  while (more(p)) {
    const unsigned char lead = *p++;
    int continuations;
    uint32_t value;
    if (lead < 0x80) {
      out += static_cast<char16_t>(lead);
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
      while (more(p) && IsContinuation(*p))
        ++p;
      continue;
    }
    bool complete = true;
    for (int i = 0; i < continuations; ++i) {
      if (!more(p)) return;  // cut off by the end of the text: nothing comes of it
      const unsigned char b = *p++;
      if (!IsContinuation(b)) {
        complete = false;  // the offending byte goes with the partial value
        break;
      }
      value = (value << 6) | (b & 0x3F);
    }
    if (complete) AppendUtf16(out, value);
  }
}

}  // namespace

void Utf16ToUtf8(LqString& out, const LqWString& text) {
  out.SetGrowthIfNone(LqString::GrowSmallBlock);
  out = "";
  const char16_t* p = text;
  if (!p) return;
  lq::detail::EncodeUtf8(p, [&out](char byte) { out += byte; });
}

void Utf8ToUtf16(LqWString& out, const LqString& text) {
  out.SetGrowthIfNone(LqWString::GrowSmallBlock);
  out = u"";
  const auto* p = reinterpret_cast<const unsigned char*>(static_cast<const char*>(text));
  if (!p) return;
  DecodeUtf8(out, p, nullptr, false);
}

void Utf8ToUtf16(LqWString& out, const char* text, int length) {
  out.SetGrowthIfNone(LqWString::GrowSmallBlock);
  out = u"";
  if (!text || length < 1) return;
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  DecodeUtf8(out, p, p + length, true);
}
