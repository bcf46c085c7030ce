#include "lqtools/security/PasswordHelpers.h"

#include "lqtools/platform/WideFormat.h"
#include "lqtools/platform/WideRuntime.h"
#include "lqtools/text/HexText.h"

namespace {

constexpr char16_t kScramble = 0x5A;
// The working buffers: 32 pairs of digits, with room for the terminator behind them.
constexpr int kBufferUnits = 64;

void CopyBack(char16_t* text, int size, const char16_t* buffer) {
  if (size > 0) lq::detail::swprintf(text, static_cast<std::size_t>(size), u"%ls", buffer);
}

}  // namespace

bool EncodePassword(char16_t* text, int size) {
  if (!text) return true;
  char16_t buffer[kBufferUnits + 1] = {};
  if (*text) {
    for (int p = 0; 2 * p < kBufferUnits; ++p) {
      text[p] = static_cast<char16_t>(text[p] ^ kScramble);
      lq::detail::swprintf(buffer + 2 * p, static_cast<std::size_t>(kBufferUnits + 1 - 2 * p),
                           u"%02X", static_cast<unsigned>(text[p]));
      // Kept: the length is measured anew, so a unit that became 0 ends the password after its
      // "00"; stored scrambled passwords were made this way.
      if (static_cast<std::size_t>(p + 1) >= lq::detail::wcslen(text)) break;
    }
  }
  CopyBack(text, size, buffer);
  return true;
}

bool DecodePassword(char16_t* text, int size) {
  if (!text) return true;
  char16_t buffer[kBufferUnits] = {};
  int length = 0;
  for (const char16_t* pair = text; pair[0] && pair[1] && length < kBufferUnits - 1; pair += 2)
    buffer[length++] = static_cast<char16_t>(HtoB(pair) ^ kScramble);
  buffer[length] = u'\0';
  CopyBack(text, size, buffer);
  return true;
}
