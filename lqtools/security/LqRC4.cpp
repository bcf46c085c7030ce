#include "lqtools/security/LqRC4.h"

#include <cstring>

namespace {

// Kept: the exchange by three XORs clears the entry when i equals j; stored data depends on it.
inline void Exchange(unsigned char& a, unsigned char& b) {
  a ^= b;
  b ^= a;
  a ^= b;
}

}  // namespace

LqRC4::LqRC4() : m_sbox(), m_keyBox() {}

LqRC4::LqRC4(const LqRC4& other) {
  std::memcpy(m_sbox, other.m_sbox, sizeof m_sbox);
  std::memcpy(m_keyBox, other.m_keyBox, sizeof m_keyBox);
}

LqRC4& LqRC4::operator=(const LqRC4& other) {
  std::memmove(m_sbox, other.m_sbox, sizeof m_sbox);
  std::memmove(m_keyBox, other.m_keyBox, sizeof m_keyBox);
  return *this;
}

LqRC4::~LqRC4() { Reset(); }

void LqRC4::Reset() {
  // explicit_bzero, unlike memset, is not dropped as a store that nobody reads.
  explicit_bzero(m_sbox, sizeof m_sbox);
  explicit_bzero(m_keyBox, sizeof m_keyBox);
}

char* LqRC4::Encrypt(char* data, int size, const char* key) {
  if (!key || !*key) return nullptr;
  const std::size_t n = std::strlen(key);
  for (std::size_t i = 0; i < 256; ++i) {
    m_sbox[i] = static_cast<unsigned char>(i);
    m_keyBox[i] = static_cast<unsigned char>(key[i % n]);
  }
  unsigned j = 0;
  for (unsigned i = 0; i < 256; ++i) {
    j = (j + m_keyBox[i] + m_sbox[i]) & 0xff;
    Exchange(m_sbox[i], m_sbox[j]);
  }
  if (size < 1 || !data) return data;

  unsigned i = 0;
  j = 0;
  auto* bytes = reinterpret_cast<unsigned char*>(data);
  for (int k = 0; k < size; ++k) {
    i = (i + 1) & 0xff;
    j = (j + m_sbox[i]) & 0xff;
    Exchange(m_sbox[i], m_sbox[j]);
    bytes[k] ^= m_sbox[(m_sbox[i] + m_sbox[j]) & 0xff];
  }
  return data;
}

char* LqRC4::Decrypt(char* data, int size, const char* key) { return Encrypt(data, size, key); }
