#include <gtest/gtest.h>
#include <lqtools/security/LqRC4.h>

#include <string>

namespace {

std::string Encrypt(const std::string& plain, const char* key) {
  std::string data = plain;
  LqRC4 rc4;
  EXPECT_EQ(rc4.Encrypt(data.data(), static_cast<int>(data.size()), key), data.data());
  return data;
}

TEST(RC4, MatchesPublishedRc4WhileTheIndicesNeverMeet) {
  EXPECT_EQ(Encrypt("Plaintext", "Key"), "\xbb\xf3\x16\xe8\xd9\x40\xaf\x0a\xd3");
  EXPECT_EQ(Encrypt("pedia", "Wiki"), "\x10\x21\xbf\x04\x20");
  EXPECT_EQ(Encrypt("Attack at dawn", "Secret"),
            "\x45\xa0\x1f\x64\x5f\xc3\x5b\x38\x35\x52\x54\x4b\x9b\xf5");
}

TEST(RC4, ExchangeOfAnEntryWithItselfClearsIt) {
  // With the key "aag" j meets i at i = 9 of the key schedule; published RC4 ends in 5b.
  EXPECT_EQ(Encrypt("Plaintext", "aag"), "\xc3\xbd\xce\x87\x65\x5f\xe4\x5b\xeb");
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
