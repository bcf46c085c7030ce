#include <gtest/gtest.h>
#include <lqtools/security/LqCRC16.h>

#include <cstring>

namespace {

TEST(CRC16, GivesTheModbusCheckValueWithItsBytesExchanged) {
  LqCRC16 crc;
  EXPECT_EQ(crc.Value(), 0xFFFF);
  crc.Add("123456789", 9);
  EXPECT_EQ(crc.Value(), 0x374B);
  EXPECT_EQ(static_cast<int>(crc), 0x374B);
  crc.Reset();
  EXPECT_EQ(crc.Value(), 0xFFFF);
}

TEST(CRC16, BlocksBytesAndSplitsAgree) {
  const char text[] = "The quick brown fox jumps over the lazy dog";
  const int size = static_cast<int>(std::strlen(text));
  LqCRC16 whole;
  whole.Add(text, size);
  for (int split = 0; split <= size; ++split) {
    LqCRC16 parts;
    parts.Add(text, split);
    LqCRC16 copy = parts;
    copy.Add(text + split, size - split);
    EXPECT_EQ(copy.Value(), whole.Value()) << split;
  }
  LqCRC16 bytes;
  for (int i = 0; i < size; ++i)
    bytes.Add(static_cast<unsigned char>(text[i]));
  EXPECT_EQ(bytes.Value(), whole.Value());
  bytes.Add(nullptr, 5);
  bytes.Add(text, -1);
  EXPECT_EQ(bytes.Value(), whole.Value());
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
