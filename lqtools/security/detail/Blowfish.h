// The Blowfish cipher as bcrypt drives it: a state of four S-boxes and the P-array, its initial
// value (the fraction of pi), the plain key schedule, and the expansions of bcrypt's expensive key
// schedule. Keys and salts enter as the 18 words of their cyclic byte stream (StreamWords), so the
// hot loops do no byte work. A state is a plain value on the caller's stack; nothing allocates,
// nothing is shared, and no function fails. Internal: callers outside lqtools must not use it.
#pragma once

#include <cstddef>
#include <cstdint>


namespace lq::detail {

struct BlowfishState {
  uint32_t S[4][256];
  uint32_t P[18];
};

// The 18 words that a key of `length` bytes gives when read as a cyclic big-endian byte stream.
// A `length` of 0 reads data[0] over and over, so one byte must always be readable.
void StreamWords(const uint8_t* data, std::size_t length, uint32_t words[18]);

//
void BlowfishInitState(BlowfishState& state);
// The plain Blowfish key schedule: the initial state expanded with the key alone.
void BlowfishSetKey(BlowfishState& state, const uint8_t* key, std::size_t length);
// One 64-bit block, enciphered in place.
void BlowfishEncrypt(const BlowfishState& state, uint32_t& left, uint32_t& right);

// P ^= key words, then the chain from a zero block through P and the S-boxes, each block
// additionally XORed with the salt words, two per block, from the start of the salt stream.
void BlowfishExpandWithSalt(BlowfishState& state, const uint32_t keyWords[18],
                            const uint32_t saltWords[4]);
// P ^= key words, then the chain from a zero block through P and the S-boxes.
void BlowfishExpand(BlowfishState& state, const uint32_t keyWords[18]);
// bcrypt's costly loop: `rounds` times BlowfishExpand with the key, then with the salt.
void BlowfishExpandRounds(BlowfishState& state, const uint32_t keyWords[18],
                          const uint32_t saltWords[18], uint32_t rounds);

}  // namespace lq::detail
