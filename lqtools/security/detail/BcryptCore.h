// The core step of bcrypt: one hash text computed from key bytes and a setting text, with the
// checks and the failure result of BcryptLib. The Blowfish state lives on the stack of the call;
// nothing allocates and nothing is shared, so any thread may call it. Internal: callers outside
// lqtools use BcryptLib.
#pragma once

#include <cstddef>
#include <cstdint>


namespace lq::detail {

constexpr std::size_t kBcryptOutputSize = 61;  // 60 characters and the terminator
constexpr std::size_t kBcryptSaltSize = 16;

// Writes into `out` (kBcryptOutputSize bytes) the hash text "$2<minor>$NN$<salt><digest>" of the
// key, or the text ":" when `setting` is refused. `setting` is read no further than
// `settingLength` bytes, nor past a zero byte (a null `setting` is refused). The key is read in the
// published way, up to one byte past `keyLength`, so key[keyLength] must be readable (a
// terminator).
void BcryptHashText(const char* key, std::size_t keyLength, const char* setting,
                                std::size_t settingLength, char* out);

// bcrypt's own Base64 ("./A-Za-z0-9", no padding): `size` bytes as text, no terminator written.
// Returns the characters written, (size * 4 + 2) / 3.
std::size_t BcryptEncode(char* out, const uint8_t* data, std::size_t size);

// The cost that GenerateHash uses for a requested `cost`: its low 8 bits, clamped to 4 to 31.
//
unsigned BcryptClampCost(unsigned cost);

}  // namespace lq::detail
