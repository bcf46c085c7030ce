#include "lqtools/security/LqCRC16.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "lqtools/security/detail/ModbusTables.h"

const unsigned char LqCRC16::crcHiTable[256] = {LQTOOLS_MODBUS_CRC_HI};
const unsigned char LqCRC16::crcLoTable[256] = {LQTOOLS_MODBUS_CRC_LO};

namespace {

constexpr unsigned char kHi[256] = {LQTOOLS_MODBUS_CRC_HI};
constexpr unsigned char kLo[256] = {LQTOOLS_MODBUS_CRC_LO};

// The same checksum seen as a reflected 16-bit register r (the value with its bytes exchanged):
// one byte steps r to (r >> 8) ^ T[(r ^ byte) & 0xFF], where T[i] joins the two published bytes.
// Table k gives the step of a byte followed by k zero bytes, so that eight bytes step at once.
using Tables = std::array<std::array<uint16_t, 256>, 8>;

constexpr Tables SlicingTables() {
  Tables t{};
  for (int i = 0; i < 256; ++i)
    t[0][i] = static_cast<uint16_t>(kHi[i] | kLo[i] << 8);
  for (int k = 1; k < 8; ++k)
    for (int i = 0; i < 256; ++i)
      t[k][i] = static_cast<uint16_t>((t[k - 1][i] >> 8) ^ t[0][t[k - 1][i] & 0xFF]);
  return t;
}

constexpr Tables kTables = SlicingTables();

uint16_t Swapped(uint16_t value) { return static_cast<uint16_t>(value >> 8 | value << 8); }

}  // namespace

void LqCRC16::Add(const void* data, int size) {
  if (!data || size < 1) return;
  const auto* p = static_cast<const unsigned char*>(data);
  uint16_t r = Swapped(static_cast<uint16_t>(m_crc));
  for (; size >= 8; size -= 8, p += 8) {
    const uint16_t x = static_cast<uint16_t>(r ^ (p[0] | p[1] << 8));
    r = kTables[7][x & 0xFF] ^ kTables[6][x >> 8] ^ kTables[5][p[2]] ^ kTables[4][p[3]] ^
        kTables[3][p[4]] ^ kTables[2][p[5]] ^ kTables[1][p[6]] ^ kTables[0][p[7]];
  }
  for (; size > 0; --size, ++p)
    r = static_cast<uint16_t>((r >> 8) ^ kTables[0][(r ^ *p) & 0xFF]);
  m_crc = Swapped(r);
}
