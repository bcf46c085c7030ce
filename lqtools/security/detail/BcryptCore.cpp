#include "lqtools/security/detail/BcryptCore.h"

#include <cstdlib>
#include <cstring>

#include "lqtools/security/detail/Blowfish.h"
#include "lqtools/platform/Locales.h"
#include "lqtools/platform/WideFormat.h"

namespace lq::detail {

namespace {

constexpr char kAlphabet[] = "./ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr int kDigestBlocks = 6;  // "OrpheanBeholderScryDoubt" as six words
constexpr std::size_t kDigestBytes = 4 * kDigestBlocks - 1;

// The value of a character of the alphabet, or -1 for any other byte.
int Value(unsigned char c) {
  if (c == '.') return 0;
  if (c == '/') return 1;
  if (c >= 'A' && c <= 'Z') return c - 'A' + 2;
  if (c >= 'a' && c <= 'z') return c - 'a' + 28;
  if (c >= '0' && c <= '9') return c - '0' + 54;
  return -1;
}

// Decodes up to `size` bytes; the first character outside the alphabet stops it and leaves the
// remaining bytes as they were.
void Decode(uint8_t* out, std::size_t size, const unsigned char* text) {
  std::size_t n = 0;
  while (n < size) {
    const int c1 = Value(text[0]);
    const int c2 = c1 < 0 ? -1 : Value(text[1]);
    if (c2 < 0) return;
    out[n++] = static_cast<uint8_t>((c1 << 2) | ((c2 & 0x30) >> 4));
    if (n == size) return;
    const int c3 = Value(text[2]);
    if (c3 < 0) return;
    out[n++] = static_cast<uint8_t>(((c2 & 0x0f) << 4) | ((c3 & 0x3c) >> 2));
    if (n == size) return;
    const int c4 = Value(text[3]);
    if (c4 < 0) return;
    out[n++] = static_cast<uint8_t>(((c3 & 0x03) << 6) | c4);
    text += 4;
  }
}

void Fail(char* out) {
  out[0] = ':';
  out[1] = 0;
}

}  // namespace

std::size_t BcryptEncode(char* out, const uint8_t* data, std::size_t size) {
  char* const start = out;
  const uint8_t* const end = data + size;
  while (data < end) {
    unsigned c1 = *data++;
    *out++ = kAlphabet[c1 >> 2];
    c1 = (c1 & 0x03) << 4;
    if (data >= end) {
      *out++ = kAlphabet[c1];
      break;
    }
    unsigned c2 = *data++;
    *out++ = kAlphabet[c1 | (c2 >> 4)];
    c1 = (c2 & 0x0f) << 2;
    if (data >= end) {
      *out++ = kAlphabet[c1];
      break;
    }
    c2 = *data++;
    *out++ = kAlphabet[c1 | (c2 >> 6)];
    *out++ = kAlphabet[c2 & 0x3f];
  }
  return static_cast<std::size_t>(out - start);
}

unsigned BcryptClampCost(unsigned cost) {
  cost &= 0xff;
  if (cost < 4) return 4;
  if (cost > 31) return 31;
  return cost;
}

void BcryptHashText(const char* key, std::size_t keyLength, const char* setting,
                    std::size_t settingLength, char* out) {
  // The setting as a terminated text: bytes past its length or past a zero byte read as zero.
  const std::size_t length = setting ? strnlen(setting, settingLength) : 0;
  auto at = [&](std::size_t i) -> char { return i < length ? setting[i] : '\0'; };

  // Kept: position 0 is never looked at, and the version is compared as a signed char, so "1",
  // "0" and any byte above 0x7F pass for "2".
  if (static_cast<signed char>(at(1)) > '2') return Fail(out);
  char minor = 0;
  std::size_t i = 2;
  if (at(2) != '$') {
    if (at(2) != 'a' && at(2) != 'b') return Fail(out);
    minor = at(2);
    ++i;
  }
  // Kept: the character after the minor version is stepped over unseen, as older hashes were.
  ++i;
  if (at(i + 2) != '$') return Fail(out);
  const char costText[3] = {at(i), at(i + 1), 0};
  const long cost = strtol_l(costText, nullptr, 10, ClassicLocale());
  if (cost > 31 || cost < 4) return Fail(out);
  const auto rounds = uint32_t{1} << cost;
  i += 3;

  const std::size_t rest = length - i;
  if (rest * 3 / 4 < kBcryptSaltSize) return Fail(out);
  uint8_t salt[kBcryptSaltSize] = {};
  Decode(salt, sizeof salt, reinterpret_cast<const unsigned char*>(setting + i));

  std::size_t used;
  if (minor == 0) {
    used = keyLength & 0xff;
  } else if (minor == 'a') {
    // Kept: the key length wraps at 256, so a key of 255 bytes counts as none.
    used = (keyLength + 1) & 0xff;
  } else {
    used = (keyLength < 72 ? keyLength : 72) + 1;
  }

  uint32_t keyWords[18];
  uint32_t saltWords[18];
  StreamWords(reinterpret_cast<const uint8_t*>(key), used, keyWords);
  StreamWords(salt, sizeof salt, saltWords);
  BlowfishState state;
  BlowfishInitState(state);
  BlowfishExpandWithSalt(state, keyWords, saltWords);
  BlowfishExpandRounds(state, keyWords, saltWords, rounds);

  static const uint8_t kMagic[] = "OrpheanBeholderScryDoubt";
  uint32_t data[kDigestBlocks];
  for (int b = 0; b < kDigestBlocks; ++b) {
    const uint8_t* p = kMagic + 4 * b;
    data[b] = uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3];
  }
  for (int n = 0; n < 64; ++n)
    for (int b = 0; b < kDigestBlocks; b += 2)
      BlowfishEncrypt(state, data[b], data[b + 1]);
  uint8_t digest[4 * kDigestBlocks];
  for (int b = 0; b < kDigestBlocks; ++b) {
    digest[4 * b] = static_cast<uint8_t>(data[b] >> 24);
    digest[4 * b + 1] = static_cast<uint8_t>(data[b] >> 16);
    digest[4 * b + 2] = static_cast<uint8_t>(data[b] >> 8);
    digest[4 * b + 3] = static_cast<uint8_t>(data[b]);
  }
  // No trace of the key stays on the stack.
  explicit_bzero(&state, sizeof state);
  explicit_bzero(keyWords, sizeof keyWords);

  std::size_t n = 0;
  out[n++] = '$';
  out[n++] = '2';
  if (minor != 0) out[n++] = minor;
  out[n++] = '$';
  lq::detail::snprintf(out + n, 4, "%2.2u$", static_cast<unsigned>(cost));
  n += 3;
  n += BcryptEncode(out + n, salt, sizeof salt);
  n += BcryptEncode(out + n, digest, kDigestBytes);
  out[n] = 0;
}

}  // namespace lq::detail
