// Any bytes through both UTF-8 decoders and back through the encoder, under the sanitizers. The
// decoder that stops at a zero byte must give a prefix of what the counted decoder gives.
#include <lqtools/text/Unicode.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > (1u << 20)) return 0;
  // Copies without slack, so that a read behind the input is caught.
  const std::vector<char> bytes(data, data + size);
  LqWString counted;
  Utf8ToUtf16(counted, bytes.empty() ? nullptr : bytes.data(), static_cast<int>(size));

  std::vector<char> terminated(bytes);
  terminated.push_back(0);
  LqWString uptoZero;
  Utf8ToUtf16(uptoZero, LqString(terminated.data(), false));
  const int prefix = uptoZero.Length();
  if (prefix > counted.Length() ||
      std::memcmp(static_cast<const char16_t*>(uptoZero), static_cast<const char16_t*>(counted),
                  static_cast<std::size_t>(prefix) * sizeof(char16_t)) != 0)
    std::abort();

  LqString encoded;
  Utf16ToUtf8(encoded, counted);
  if (static_cast<std::size_t>(encoded.Length()) > 4 * static_cast<std::size_t>(counted.Length()))
    std::abort();
  return 0;
}
