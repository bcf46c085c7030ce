#include <gtest/gtest.h>
#include <lqtools/security/LqCRC16.h>

namespace {

TEST(CRC16, GivesTheModbusCheckValueWithItsBytesExchangedHoweverTheBytesArrive) {
  const char* const check = "123456789";
  LqCRC16 bytes;
  EXPECT_EQ(bytes.Value(), 0xFFFF);
  for (int i = 0; i < 9; ++i)
    bytes.Add(static_cast<unsigned char>(check[i]));
  EXPECT_EQ(static_cast<int>(bytes), 0x374B);
  for (int split = 0; split <= 9; ++split) {
    LqCRC16 parts;
    parts.Add(check, split);
    parts.Add(check + split, 9 - split);
    EXPECT_EQ(parts.Value(), 0x374B) << split;
  }
  bytes.Reset();
  bytes.Add(nullptr, 5);  // nothing to add
  bytes.Add(check, -1);
  EXPECT_EQ(bytes.Value(), 0xFFFF);
}

TEST(CRC16, TablesAreTheStepsOfTheReflectedPolynomial) {
  for (unsigned i = 0; i < 256; ++i) {
    unsigned crc = i;
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 1) ? (crc >> 1) ^ 0xA001u : crc >> 1;
    EXPECT_EQ(LqCRC16::crcHiTable[i], crc & 0xFF) << i;
    EXPECT_EQ(LqCRC16::crcLoTable[i], crc >> 8) << i;
  }
}

}  // namespace

namespace {

// A block goes through the checksum eight bytes at a time; it must end where the published
// byte-at-a-time step ends, for every length and every starting register.
TEST(CRC16, BlocksEndWhereTheByteStepsEnd) {
  unsigned state = 12345;
  unsigned char data[200];
  for (unsigned char& byte : data)
    byte = static_cast<unsigned char>((state = state * 1103515245u + 12345u) >> 16);
  for (int length = 0; length <= 200; ++length) {
    LqCRC16 block, bytes;
    block.Reset();
    block.Add(data, 3);  // a register other than the initial one
    bytes = block;
    block.Add(data, length);
    for (int i = 0; i < length; ++i)
      bytes.Add(data[i]);
    ASSERT_EQ(block.Value(), bytes.Value()) << length;
  }
}

}  // namespace
