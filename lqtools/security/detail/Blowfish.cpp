#include "lqtools/security/detail/Blowfish.h"

#include <cstring>

namespace lq::detail {

namespace {

// The initial state, in the order of BlowfishState's members read as P first: 18 words of P,
// then S[0] to S[3]. Written by gen-blowfish-pi during the build.
constexpr uint32_t kPi[18 + 4 * 256] = {
#include "lqtools/security/detail/BlowfishPi.inc"
};

#define LQ_BLOWFISH_INLINE inline __attribute__((always_inline))

LQ_BLOWFISH_INLINE uint32_t F(const BlowfishState& s, uint32_t x) {
  return ((s.S[0][x >> 24] + s.S[1][(x >> 16) & 0xff]) ^ s.S[2][(x >> 8) & 0xff]) +
         s.S[3][x & 0xff];
}

// Sixteen rounds written out: this is where bcrypt spends its time.
LQ_BLOWFISH_INLINE void Encipher(const BlowfishState& s, uint32_t& left, uint32_t& right) {
  uint32_t l = left ^ s.P[0];
  uint32_t r = right;
  r ^= F(s, l) ^ s.P[1];
  l ^= F(s, r) ^ s.P[2];
  r ^= F(s, l) ^ s.P[3];
  l ^= F(s, r) ^ s.P[4];
  r ^= F(s, l) ^ s.P[5];
  l ^= F(s, r) ^ s.P[6];
  r ^= F(s, l) ^ s.P[7];
  l ^= F(s, r) ^ s.P[8];
  r ^= F(s, l) ^ s.P[9];
  l ^= F(s, r) ^ s.P[10];
  r ^= F(s, l) ^ s.P[11];
  l ^= F(s, r) ^ s.P[12];
  r ^= F(s, l) ^ s.P[13];
  l ^= F(s, r) ^ s.P[14];
  r ^= F(s, l) ^ s.P[15];
  l ^= F(s, r) ^ s.P[16];
  left = r ^ s.P[17];
  right = l;
}

LQ_BLOWFISH_INLINE void XorKey(BlowfishState& s, const uint32_t keyWords[18]) {
  for (int i = 0; i < 18; ++i)
    s.P[i] ^= keyWords[i];
}

// Replaces P and the S-boxes by the chain of blocks enciphered from a zero block.
LQ_BLOWFISH_INLINE void Chain(BlowfishState& s) {
  uint32_t l = 0;
  uint32_t r = 0;
  for (int i = 0; i < 18; i += 2) {
    Encipher(s, l, r);
    s.P[i] = l;
    s.P[i + 1] = r;
  }
  for (auto& box : s.S) {
    for (int i = 0; i < 256; i += 2) {
      Encipher(s, l, r);
      box[i] = l;
      box[i + 1] = r;
    }
  }
}

#undef LQ_BLOWFISH_INLINE

}  // namespace

void StreamWords(const uint8_t* data, std::size_t length, uint32_t words[18]) {
  std::size_t j = 0;
  for (int i = 0; i < 18; ++i) {
    uint32_t word = 0;
    for (int b = 0; b < 4; ++b, ++j) {
      if (j >= length) j = 0;
      word = (word << 8) | data[j];
    }
    words[i] = word;
  }
}

void BlowfishInitState(BlowfishState& state) {
  std::memcpy(state.P, kPi, sizeof state.P);
  std::memcpy(state.S, kPi + 18, sizeof state.S);
}

void BlowfishSetKey(BlowfishState& state, const uint8_t* key, std::size_t length) {
  uint32_t words[18];
  StreamWords(key, length, words);
  BlowfishInitState(state);
  BlowfishExpand(state, words);
}

void BlowfishEncrypt(const BlowfishState& state, uint32_t& left, uint32_t& right) {
  Encipher(state, left, right);
}

void BlowfishExpandWithSalt(BlowfishState& state, const uint32_t keyWords[18],
                            const uint32_t saltWords[4]) {
  XorKey(state, keyWords);
  // The salt stream runs on across P and the S-boxes: block n takes words 2n and 2n + 1 of it,
  // so the pairs alternate, and the S-boxes start on the second pair (P takes nine blocks).
  uint32_t l = 0;
  uint32_t r = 0;
  for (int i = 0; i < 18; i += 2) {
    const int pair = (i / 2) % 2 * 2;
    l ^= saltWords[pair];
    r ^= saltWords[pair + 1];
    Encipher(state, l, r);
    state.P[i] = l;
    state.P[i + 1] = r;
  }
  for (auto& box : state.S) {
    for (int i = 0; i < 256; i += 4) {
      l ^= saltWords[2];
      r ^= saltWords[3];
      Encipher(state, l, r);
      box[i] = l;
      box[i + 1] = r;
      l ^= saltWords[0];
      r ^= saltWords[1];
      Encipher(state, l, r);
      box[i + 2] = l;
      box[i + 3] = r;
    }
  }
}

void BlowfishExpand(BlowfishState& state, const uint32_t keyWords[18]) {
  XorKey(state, keyWords);
  Chain(state);
}

void BlowfishExpandRounds(BlowfishState& state, const uint32_t keyWords[18],
                          const uint32_t saltWords[18], uint32_t rounds) {
  for (uint32_t n = 0; n < rounds; ++n) {
    XorKey(state, keyWords);
    Chain(state);
    XorKey(state, saltWords);
    Chain(state);
  }
}

}  // namespace lq::detail
