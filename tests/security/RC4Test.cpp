#include <gtest/gtest.h>
#include <lqtools/security/LqRC4.h>

#include <cstdio>
#include <string>

namespace {

std::string Hex(const std::string& bytes) {
  std::string out;
  char digits[3];
  for (unsigned char c : bytes) {
    std::snprintf(digits, sizeof digits, "%02x", c);
    out += digits;
  }
  return out;
}

std::string Encrypt(const std::string& plain, const char* key) {
  std::string data = plain;
  LqRC4 rc4;
  EXPECT_EQ(rc4.Encrypt(data.data(), static_cast<int>(data.size()), key), data.data());
  return data;
}

TEST(RC4, MatchesPublishedRc4WhileTheIndicesNeverMeet) {
  EXPECT_EQ(Hex(Encrypt("Plaintext", "Key")), "bbf316e8d940af0ad3");
  EXPECT_EQ(Hex(Encrypt("pedia", "Wiki")), "1021bf0420");
  EXPECT_EQ(Hex(Encrypt("Attack at dawn", "Secret")), "45a01f645fc35b383552544b9bf5");
}

TEST(RC4, ExchangeOfAnEntryWithItselfClearsIt) {
  // With the key "aag" j meets i at i = 9 of the key schedule; published RC4 ends in 5b.
  EXPECT_EQ(Hex(Encrypt("Plaintext", "aag")), "c3bdce87655fe45beb");
}

TEST(RC4, EveryCallStartsTheStreamAnew) {
  LqRC4 rc4;
  std::string first("\0same\0bytes", 11);
  std::string second = first;
  rc4.Encrypt(first.data(), 11, "k3y");
  rc4.Encrypt(second.data(), 11, "k3y");
  EXPECT_EQ(first, second);
  EXPECT_NE(first, std::string("\0same\0bytes", 11));
  rc4.Decrypt(first.data(), 11, "k3y");
  EXPECT_EQ(first, std::string("\0same\0bytes", 11));
}

TEST(RC4, CopiesAndResetsLeaveTheStreamAlone) {
  LqRC4 a;
  a.Encrypt(nullptr, 0, "first");
  LqRC4 b(a);
  b = a;
  b.Reset();
  EXPECT_EQ(Encrypt("Plaintext", "Key"), [&] {
    std::string data = "Plaintext";
    b.Encrypt(data.data(), 9, "Key");
    return data;
  }());
}

TEST(RC4, NothingToEncipherOrNoKeyLeavesTheData) {
  LqRC4 rc4;
  std::string data = "data";
  EXPECT_EQ(rc4.Encrypt(data.data(), 0, "key"), data.data());
  EXPECT_EQ(rc4.Encrypt(data.data(), -1, "key"), data.data());
  EXPECT_EQ(rc4.Encrypt(data.data(), 4, ""), nullptr);
  EXPECT_EQ(rc4.Decrypt(data.data(), 4, nullptr), nullptr);
  EXPECT_EQ(data, "data");
}

}  // namespace
