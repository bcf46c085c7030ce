// LqCRC16: a running CRC-16/MODBUS checksum (polynomial 0x8005 reflected, initial value 0xFFFF,
// no final XOR) in the two-table form of the Modbus serial line protocol. The value holds the
// checksum with its two bytes exchanged, so that its high byte is the one sent first: the bytes of
// "123456789" give 0x374B.
//
// An object is a value of one register and belongs to one thread at a time. The two tables are
// constant data of the library, shared by every thread; the string tables read them directly.
#pragma once

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API LqCRC16 {
 public:
  LqCRC16() = default;
  LqCRC16(const LqCRC16&) = default;
  LqCRC16(LqCRC16&&) = default;
  LqCRC16& operator=(const LqCRC16&) = default;
  LqCRC16& operator=(LqCRC16&&) = default;

  void Reset() { m_crc = 0xFFFF; }
  void Add(unsigned char byte) {
    const int index = (m_crc >> 8) ^ byte;
    m_crc = ((crcHiTable[index] ^ (m_crc & 0xFF)) << 8) | crcLoTable[index];
  }
  // One step per byte in order; a `size` below 1 or a null `data` changes nothing.
  void Add(const void* data, int size);

  int Value() const { return m_crc; }
  operator int() const { return m_crc; }

  // The published Modbus tables: the high and the low byte of the step for an index.
  static const unsigned char crcHiTable[256];
  static const unsigned char crcLoTable[256];

 private:
  int m_crc = 0xFFFF;  // always 0 to 0xFFFF
};
