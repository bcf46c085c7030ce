#include <gtest/gtest.h>
#include <lqtools/security/LqRC4.h>

#include <string>

namespace {

TEST(RC4, MatchesPublishedRc4OnlyWhileTheIndicesNeverMeet) {
  const char* const cases[][3] = {
      {"Plaintext", "Key", "\xbb\xf3\x16\xe8\xd9\x40\xaf\x0a\xd3"},
      {"pedia", "Wiki", "\x10\x21\xbf\x04\x20"},
      {"Attack at dawn", "Secret", "\x45\xa0\x1f\x64\x5f\xc3\x5b\x38\x35\x52\x54\x4b\x9b\xf5"},
      // "aag": j meets i in the key schedule, clearing an entry; published RC4 ends in 5b.
      {"Plaintext", "aag", "\xc3\xbd\xce\x87\x65\x5f\xe4\x5b\xeb"},
  };
  for (const auto& [plain, key, cipher] : cases) {
    std::string data = plain;
    LqRC4 rc4;
    EXPECT_EQ(rc4.Encrypt(data.data(), static_cast<int>(data.size()), key), data.data());
    EXPECT_EQ(data, cipher) << key;
  }
}

TEST(RC4, EveryCallStartsTheStreamAnewSoTheSecondRestores) {
  const std::string plain("\0same\0bytes", 11);
  std::string data = plain;
  LqRC4 rc4;
  rc4.Encrypt(data.data(), 11, "k3y");
  EXPECT_NE(data.substr(6), plain.substr(6));  // the bytes after a zero byte are enciphered too
  rc4.Decrypt(data.data(), 11, "k3y");
  EXPECT_EQ(data, plain);
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
