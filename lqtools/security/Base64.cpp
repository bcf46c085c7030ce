#include "lqtools/security/Base64.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

#include "lqtools/platform/WideRuntime.h"

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char16_t kWideAlphabet[] =
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The longest block whose text length, 4 * ceil(size / 3), still fits an int.
constexpr int kLargestBlock = 1610612733;

constexpr std::array<int8_t, 256> MakeReverse() {
  std::array<int8_t, 256> table{};
  for (auto& entry : table)
    entry = -1;
  for (int i = 0; i < 64; ++i)
    table[static_cast<unsigned char>(kAlphabet[i])] = static_cast<int8_t>(i);
  return table;
}

constexpr std::array<uint16_t, 256> MakeWideReverse() {
  std::array<uint16_t, 256> table{};
  for (auto& entry : table)
    entry = 0xffff;
  for (int i = 0; i < 64; ++i)
    table[static_cast<unsigned char>(kAlphabet[i])] = static_cast<uint16_t>(i);
  // Kept: the stray entry reads the unit 0x16 as "B"; stored texts may hold it.
  table[0x16] = 1;
  return table;
}

constexpr std::array<int8_t, 256> kReverse = MakeReverse();

// The narrow decoder's tables: each symbol's six bits already in place for its position in a
// group of four, and a bit above the 24 of a group for everything outside the alphabet.
constexpr uint32_t kNotASymbol = 1u << 24;
using ShiftedTable = std::array<uint32_t, 256>;

constexpr ShiftedTable MakeShifted(int shift) {
  ShiftedTable table{};
  for (int c = 0; c < 256; ++c)
    table[c] = kReverse[c] < 0 ? kNotASymbol : static_cast<uint32_t>(kReverse[c]) << shift;
  return table;
}

constexpr ShiftedTable kShifted[4] = {MakeShifted(18), MakeShifted(12), MakeShifted(6),
                                      MakeShifted(0)};

// Two characters of the text for each 12 bits of input, so that three bytes take two lookups.
template <typename T>
struct PairTable {
  T pairs[4096][2];
};

template <typename T>
constexpr PairTable<T> MakePairs(const T* alphabet) {
  PairTable<T> table{};
  for (int i = 0; i < 4096; ++i) {
    table.pairs[i][0] = alphabet[i >> 6];
    table.pairs[i][1] = alphabet[i & 0x3f];
  }
  return table;
}

constexpr PairTable<char> kPairs = MakePairs(kAlphabet);
constexpr PairTable<char16_t> kWidePairs = MakePairs(kWideAlphabet);

const PairTable<char>& PairsOf(const char*) { return kPairs; }
const PairTable<char16_t>& PairsOf(const char16_t*) { return kWidePairs; }
constexpr std::array<uint16_t, 256> kWideReverse = MakeWideReverse();

template <typename T, typename Traits>
void Encode(LqBasicString<T, Traits>& out, const void* data, int size, const T* alphabet) {
  if (size < 1 || !data || size > kLargestBlock) {
    out.Prepare(0, true);
    return;
  }
  // Bytes taken from `out` itself would be freed by Prepare: encode a copy of them. A string that
  // borrows a null text has no bytes of its own.
  const auto* own = reinterpret_cast<const unsigned char*>(static_cast<const T*>(out));
  const std::less<const void*> before;
  if (own && !before(data, own) && before(data, own + (out.Length() + 1) * sizeof(T))) {
    const std::vector<unsigned char> copy(static_cast<const unsigned char*>(data),
                                          static_cast<const unsigned char*>(data) + size);
    Encode(out, copy.data(), size, alphabet);
    return;
  }
  // The buffer starts empty with room for size * 4 / 3 characters, and the padded tail grows it
  // by appending, so that its spare room ends as that of a text appended character by character.
  out.Prepare(static_cast<int>(int64_t{size} * 4 / 3), true);
  const auto* in = static_cast<const unsigned char*>(data);
  const unsigned char* const fullEnd = in + size / 3 * 3;
  T chunk[4096 + 1];
  while (in < fullEnd) {
    T* p = chunk;
    const PairTable<T>& table = PairsOf(alphabet);
    for (; in < fullEnd && p < chunk + 4096; in += 3, p += 4) {
      const uint32_t v = uint32_t{in[0]} << 16 | uint32_t{in[1]} << 8 | in[2];
      std::memcpy(p, table.pairs[v >> 12], 2 * sizeof(T));
      std::memcpy(p + 2, table.pairs[v & 0xfff], 2 * sizeof(T));
    }
    *p = 0;
    out += chunk;  // within the room: copied in place
  }
  const int left = size % 3;
  if (left == 0) return;
  const uint32_t v = uint32_t{in[0]} << 16 | (left == 2 ? uint32_t{in[1]} << 8 : 0);
  const T tail[4] = {alphabet[v >> 18], alphabet[(v >> 12) & 0x3f],
                     left == 2 ? alphabet[(v >> 6) & 0x3f] : T('='), T('=')};
  for (T c : tail)
    out += c;
}

// Writes the bytes of a last group of `count` symbols (1 to 3) held in `acc`.
uint8_t* WriteShortGroup(uint8_t* out, uint32_t acc, int count) {
  acc <<= (4 - count) * 6;
  if (count >= 2) *out++ = static_cast<uint8_t>(acc >> 16);
  if (count == 3) *out++ = static_cast<uint8_t>(acc >> 8);
  return out;
}

uint8_t* WriteGroup(uint8_t* out, uint32_t acc) {
  out[0] = static_cast<uint8_t>(acc >> 16);
  out[1] = static_cast<uint8_t>(acc >> 8);
  out[2] = static_cast<uint8_t>(acc);
  return out + 3;
}

// Gathers up to four symbols of a narrow text into `acc`, stopping at the terminator or a "=".
// The count gathered, or -1 at a character outside the alphabet.
int GatherGroup(const unsigned char* t, uint32_t& acc) {
  acc = 0;
  int k = 0;
  for (; k < 4 && t[k] != 0 && t[k] != '='; ++k) {
    const int v = kReverse[t[k]];
    if (v < 0) return -1;
    acc = acc << 6 | static_cast<uint32_t>(v);
  }
  return k;
}

template <typename T>
int DecodedSize(const T* text, int length) {
  if (!text) return 0;
  if (length == -1) {
    if constexpr (sizeof(T) == 1) {
      const std::size_t n = std::strlen(text);
      length = n > INT32_MAX ? INT32_MAX : static_cast<int>(n);
    } else {
      const std::size_t n = lq::detail::wcslen(text);
      length = n > INT32_MAX ? INT32_MAX : static_cast<int>(n);
    }
  }
  // The padding is stepped over no further than the start of the text.
  while (length > 0 && text[length - 1] == T('='))
    --length;
  return length > 0 ? static_cast<int>(int64_t{length} * 3 / 4) : 0;
}

}  // namespace

void EncodeBase64(LqString& out, const void* data, int size) { Encode(out, data, size, kAlphabet); }

void EncodeBase64(LqWString& out, const void* data, int size) {
  Encode(out, data, size, kWideAlphabet);
}

bool DecodeBase64(void* out, const char* text) {
  if (!text || !*text) return true;
  if (!out) return false;
  auto* o = static_cast<uint8_t*>(out);
  const auto* t = reinterpret_cast<const unsigned char*>(text);
  for (;;) {
    // Whole groups of four symbols; the terminator and "=" are outside the alphabet and end this
    // loop too. No byte is read behind a terminator.
    if (!t[0] || !t[1] || !t[2] || !t[3]) break;
    const uint32_t group =
        kShifted[0][t[0]] | kShifted[1][t[1]] | kShifted[2][t[2]] | kShifted[3][t[3]];
    if (group & kNotASymbol) break;
    o = WriteGroup(o, group);
    t += 4;
  }
  // The last group: short, or holding a bad character (a whole one was taken above).
  uint32_t acc;
  const int k = GatherGroup(t, acc);
  if (k < 0) return false;
  WriteShortGroup(o, acc, k);
  return true;
}

bool DecodeBase64(void* out, const char16_t* text) {
  if (!text || !*text) return true;
  if (!out) return false;
  auto* o = static_cast<uint8_t*>(out);
  for (;;) {
    uint32_t acc = 0;
    int k = 0;
    for (; k < 4 && text[k] != 0 && text[k] != u'='; ++k)
      acc = acc << 6 | kWideReverse[text[k] & 0xff];
    if (k < 4) {
      WriteShortGroup(o, acc, k);
      return true;
    }
    o = WriteGroup(o, acc);
    text += 4;
  }
}

bool DecodeBase64String(char* out, const char* text, int outSize) {
  if (!out) return false;
  auto* o = reinterpret_cast<uint8_t*>(out);
  if (text) {
    const auto* t = reinterpret_cast<const unsigned char*>(text);
    while (*t != 0 && *t != '=') {
      if (outSize < 4) {
        *o = 0;
        return false;
      }
      uint32_t acc;
      const int k = GatherGroup(t, acc);
      if (k < 0) return false;
      o = WriteGroup(o, acc << (4 - k) * 6);
      t += k;
    }
  }
  *o = 0;
  return true;
}

int DecodedBase64Size(const char* text, int length) { return DecodedSize(text, length); }

int DecodedBase64Size(const char16_t* text, int length) { return DecodedSize(text, length); }
