#include <gtest/gtest.h>
#include <lqtools/security/BcryptLib.h>
#include <lqtools/security/detail/BcryptCore.h>
#include <lqtools/security/detail/Blowfish.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

// tests/data/security/bcrypt-vectors.txt: the password as hex bytes, a tab, the hash.
std::vector<std::pair<std::string, std::string>> LoadVectors() {
  const char* root = std::getenv("LQTOOLS_TEST_DATA");
  std::ifstream file(std::string(root ? root : "tests/data") + "/security/bcrypt-vectors.txt");
  std::vector<std::pair<std::string, std::string>> vectors;
  for (std::string line; std::getline(file, line);) {
    const auto tab = line.find('\t');
    if (tab == std::string::npos || line[0] == '#') continue;
    std::string password;
    for (std::size_t i = 0; i + 1 < tab; i += 2)
      password += static_cast<char>(std::stoi(line.substr(i, 2), nullptr, 16));
    vectors.emplace_back(password, line.substr(tab + 1));
  }
  return vectors;
}

std::string Core(const std::string& password, const std::string& setting) {
  char out[lq::detail::kBcryptOutputSize] = {};
  lq::detail::BcryptHashText(password.c_str(), password.size(), setting.c_str(), setting.size(),
                             out);
  return out;
}

TEST(Blowfish, EnciphersThePublishedEcbVectors) {
  const uint64_t cases[][3] = {
      {0x0000000000000000, 0x0000000000000000, 0x4EF997456198DD78},
      {0xFFFFFFFFFFFFFFFF, 0xFFFFFFFFFFFFFFFF, 0x51866FD5B85ECB8A},
      {0x3000000000000000, 0x1000000000000001, 0x7D856F9A613063F2},
  };
  for (const auto& [key, plain, cipher] : cases) {
    uint8_t bytes[8];
    for (int i = 0; i < 8; ++i)
      bytes[i] = static_cast<uint8_t>(key >> (56 - 8 * i));
    lq::detail::BlowfishState state;
    lq::detail::BlowfishSetKey(state, bytes, sizeof bytes);
    auto left = static_cast<uint32_t>(plain >> 32);
    auto right = static_cast<uint32_t>(plain);
    lq::detail::BlowfishEncrypt(state, left, right);
    EXPECT_EQ((uint64_t{left} << 32) | right, cipher) << std::hex << key;
  }
}

TEST(Bcrypt, ValidatesThePublishedAndIndependentVectors) {
  const auto vectors = LoadVectors();
  ASSERT_EQ(vectors.size(), 13u);
  for (const auto& [password, hash] : vectors) {
    SCOPED_TRACE(hash);
    EXPECT_TRUE(BcryptLib::ValidatePassword(password, hash));
    EXPECT_FALSE(BcryptLib::ValidatePassword("!" + password, hash));
  }
}

TEST(Bcrypt, GeneratedHashesCarryTheCostTakenModulo256AndClamped) {
  EXPECT_EQ(BcryptLib::GenerateHash("x", 0).substr(0, 7), "$2b$04$");
  EXPECT_EQ(BcryptLib::GenerateHash("x", 260).substr(0, 7), "$2b$04$");
  const std::pair<unsigned, unsigned> costs[] = {
      {3, 4}, {4, 4}, {31, 31}, {32, 31}, {99, 31}, {255, 31}, {256, 4}, {0x11F, 31}, {~0u, 31}};
  for (const auto& [asked, used] : costs)
    EXPECT_EQ(lq::detail::BcryptClampCost(asked), used) << asked;
}

TEST(Bcrypt, GeneratedHashesCountZeroBytesAndOnlyTheFirst72Bytes) {
  const std::tuple<std::string, std::string, bool> cases[] = {
      {"x", "X", false},
      {std::string("pass\0word", 9), "pass", false},
      {std::string(80, 'p'), std::string(72, 'p') + "different", true},
      {std::string(80, 'p'), std::string(71, 'p'), false},
  };
  for (const auto& [password, other, otherValidates] : cases) {
    const std::string hash = BcryptLib::GenerateHash(password, 4);
    EXPECT_TRUE(BcryptLib::ValidatePassword(password, hash));
    EXPECT_EQ(BcryptLib::ValidatePassword(other, hash), otherValidates) << other.size();
  }
}

TEST(Bcrypt, RefusedSettingsGiveTheColon) {
  const std::string salt = "CCCCCCCCCCCCCCCCCCCCC.";
  for (const std::string& setting :
       {std::string(), std::string("$"), std::string("$2"), std::string("$2b"), "$3a$05$" + salt,
        "$2c$05$" + salt, "$2a$05x" + salt, "$2a$5$" + salt, "$2a$03$" + salt, "$2a$32$" + salt,
        "$2a$-1$" + salt, "$2a$99$" + salt, "$2a$05$" + salt.substr(1),
        "$2$05$" + salt.substr(1)}) {
    EXPECT_EQ(Core("U*U", setting), ":") << setting;
  }
}

TEST(Bcrypt, LenientReadingOfTheSettingIsKept) {
  const std::string salt = "CCCCCCCCCCCCCCCCCCCCC.";
  const std::string expected = "$2a$05$" + salt + "E5YPO9kmyuRGyh0XouQYb4YMJKvyOeW";
  // Position 0 and the character after the minor version are not read, a version below 2 passes,
  // and the cost is read as atoi does.
  for (const char* prefix : {"x2a$05$", "$2a!05$", "$1a$05$", "$2a$ 5$"})
    EXPECT_EQ(Core("U*U", prefix + salt), expected) << prefix;

  // Without a minor version the core computes a 59-character hash that never validates.
  const std::string noMinor = Core("U*U", "$2$05$" + salt);
  EXPECT_EQ(noMinor.size(), 59u);
  EXPECT_FALSE(BcryptLib::ValidatePassword("U*U", noMinor));

  // Spare bits in the last salt character are lost, so such a hash does not validate.
  std::string spare = expected;
  spare[28] = '/';
  EXPECT_FALSE(BcryptLib::ValidatePassword("U*U", spare));

  // "$2a$" counts the key length in a byte: 255 bytes count as none, so only the first is read.
  const std::string wrapped = Core(std::string(255, 'a'), "$2a$04$" + salt);
  EXPECT_EQ(wrapped.substr(29), Core("a", "$2$04$" + salt).substr(28));
}

TEST(Bcrypt, AnyTextAsHashIsReadNoFurtherThanItsEnd) {
  const std::string hash = "$2b$04$abcdefghijklmnopqrstuughE8Ev8uGFaUgY2cNEySvxngrb/Jzdm";
  for (std::size_t n = 0; n < hash.size(); ++n) {
    const std::vector<char> setting(hash.begin(), hash.begin() + n);  // no terminator to stop at
    char out[lq::detail::kBcryptOutputSize] = {};
    lq::detail::BcryptHashText("password", 8, setting.data(), n, out);
    EXPECT_EQ(std::string(out) == ":", n < 29) << n;
    EXPECT_FALSE(BcryptLib::ValidatePassword("password", hash.substr(0, n)));
  }
  EXPECT_FALSE(BcryptLib::ValidatePassword("password", "$2b$31$"));  // refused before any round
  EXPECT_FALSE(BcryptLib::ValidatePassword("password", hash + "m"));
}

}  // namespace
