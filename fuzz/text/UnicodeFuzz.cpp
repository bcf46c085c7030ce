// Any bytes through both UTF-8 decoders and back through the encoder, under the sanitizers, each
// held to a plain reference that works one byte and one unit at a time: the converters must give
// the same units, the same bytes and the same spare room as appending each unit alone. The decoder
// that stops at a zero byte must give a prefix of what the counted decoder gives.
#include <lqtools/text/Unicode.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

void PutUnits(LqWString& out, uint32_t value) {
  if (value >= 0x10000) {
    out += static_cast<char16_t>((value >> 10) | 0xD800);
    out += static_cast<char16_t>((value & 0x3FF) | 0xDC00);
  } else {
    out += static_cast<char16_t>(value);
  }
}

// One byte at a time, one append per unit.
void ReferenceDecode(LqWString& out, const unsigned char* p, const unsigned char* end) {
  out.SetGrowthIfNone(LqWString::GrowSmallBlock);
  out = u"";
  auto continuation = [](unsigned char b) { return (b & 0xC0) == 0x80; };
  while (p < end) {
    const unsigned char lead = *p++;
    int count;
    uint32_t value;
    if (lead < 0x80) {
      out += static_cast<char16_t>(lead);
      continue;
    }
    if (lead < 0xC0) continue;
    if (lead < 0xE0) {
      count = 1, value = lead & 0x1F;
    } else if (lead < 0xF0) {
      count = 2, value = lead & 0x0F;
    } else if (lead < 0xF8) {
      count = 3, value = lead & 0x07;
    } else {
      while (p < end && continuation(*p))
        ++p;
      continue;
    }
    bool complete = true;
    for (int i = 0; i < count; ++i) {
      if (p >= end) return;
      const unsigned char b = *p++;
      if (!continuation(b)) {
        complete = false;
        break;
      }
      value = (value << 6) | (b & 0x3F);
    }
    if (complete) PutUnits(out, value);
  }
}

// One unit at a time, one append per byte.
void ReferenceEncode(LqString& out, const char16_t* p) {
  out.SetGrowthIfNone(LqString::GrowSmallBlock);
  out = "";
  for (; *p; ++p) {
    const uint32_t u = *p;
    if (u >= 0xDC00 && u <= 0xDFFF) continue;
    uint32_t value = u;
    if (u >= 0xD800 && u <= 0xDBFF) {
      const uint32_t v = p[1];
      if (v < 0xDC00 || v > 0xDFFF) continue;
      value = ((u & 0x3FF) << 10) | (v & 0x3FF);
    }
    if (value < 0x80) {
      out += static_cast<char>(value);
    } else if (value < 0x800) {
      out += static_cast<char>(0xC0 | (value >> 6));
      out += static_cast<char>(0x80 | (value & 0x3F));
    } else if (value < 0xFFFF) {
      out += static_cast<char>(0xE0 | (value >> 12));
      out += static_cast<char>(0x80 | ((value >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (value & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (value >> 18));
      out += static_cast<char>(0x80 | ((value >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((value >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (value & 0x3F));
    }
  }
}

template <typename String>
bool Same(const String& a, const String& b) {
  using Unit = typename String::CharType;
  return a.Length() == b.Length() && a.Spare() == b.Spare() &&
         std::memcmp(static_cast<const Unit*>(a), static_cast<const Unit*>(b),
                     static_cast<std::size_t>(a.Length()) * sizeof(Unit)) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > (1u << 20)) return 0;
  // The first byte picks the growth policy of the results.
  const unsigned growth = size ? (data[0] % 3 == 0   ? 0u
                                  : data[0] % 3 == 1 ? unsigned{LqWString::GrowSmallBlock}
                                                     : unsigned{LqWString::GrowLargeBlock})
                               : 0u;
  // Copies without slack, so that a read behind the input is caught.
  const std::vector<char> bytes(data, data + size);
  LqWString counted(growth);
  Utf8ToUtf16(counted, bytes.empty() ? nullptr : bytes.data(), static_cast<int>(size));
  LqWString reference(growth);
  ReferenceDecode(reference, data, data + size);
  if (!Same(counted, reference)) std::abort();

  std::vector<char> terminated(bytes);
  terminated.push_back(0);
  LqWString uptoZero;
  Utf8ToUtf16(uptoZero, LqString(terminated.data(), false));
  const int prefix = uptoZero.Length();
  if (prefix > counted.Length() ||
      std::memcmp(static_cast<const char16_t*>(uptoZero), static_cast<const char16_t*>(counted),
                  static_cast<std::size_t>(prefix) * sizeof(char16_t)) != 0)
    std::abort();
  LqWString referenceUptoZero;
  ReferenceDecode(referenceUptoZero, data, data + std::strlen(terminated.data()));
  if (!Same(uptoZero, referenceUptoZero)) std::abort();

  LqString encoded(growth);
  Utf16ToUtf8(encoded, counted);
  LqString referenceEncoded(growth);
  ReferenceEncode(referenceEncoded, counted);
  if (!Same(encoded, referenceEncoded)) std::abort();
  if (static_cast<std::size_t>(encoded.Length()) > 4 * static_cast<std::size_t>(counted.Length()))
    std::abort();
  return 0;
}
