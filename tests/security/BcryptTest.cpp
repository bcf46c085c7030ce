#include <gtest/gtest.h>
#include <lqtools/security/BcryptLib.h>
#include <lqtools/security/detail/BcryptCore.h>
#include <lqtools/security/detail/Blowfish.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Vector {
  std::string password;
  std::string hash;
};

// tests/data/security/bcrypt-vectors.txt: the password as hex bytes, a tab, the hash.
std::vector<Vector> LoadVectors() {
  const char* root = std::getenv("LQTOOLS_TEST_DATA");
  std::ifstream file(std::string(root ? root : "tests/data") + "/security/bcrypt-vectors.txt");
  std::vector<Vector> vectors;
  std::string line;
  while (std::getline(file, line)) {
    const auto tab = line.find('\t');
    if (line.empty() || line[0] == '#' || tab == std::string::npos) continue;
    Vector v;
    for (std::size_t i = 0; i + 1 < tab; i += 2)
      v.password += static_cast<char>(std::stoi(line.substr(i, 2), nullptr, 16));
    v.hash = line.substr(tab + 1);
    vectors.push_back(v);
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
  struct Case {
    uint64_t key, plain, cipher;
  };
  const Case cases[] = {
      {0x0000000000000000, 0x0000000000000000, 0x4EF997456198DD78},
      {0xFFFFFFFFFFFFFFFF, 0xFFFFFFFFFFFFFFFF, 0x51866FD5B85ECB8A},
      {0x3000000000000000, 0x1000000000000001, 0x7D856F9A613063F2},
  };
  for (const auto& c : cases) {
    uint8_t key[8];
    for (int i = 0; i < 8; ++i)
      key[i] = static_cast<uint8_t>(c.key >> (56 - 8 * i));
    lq::detail::BlowfishState state;
    lq::detail::BlowfishSetKey(state, key, sizeof key);
    auto left = static_cast<uint32_t>(c.plain >> 32);
    auto right = static_cast<uint32_t>(c.plain);
    lq::detail::BlowfishEncrypt(state, left, right);
    EXPECT_EQ((uint64_t{left} << 32) | right, c.cipher) << std::hex << c.key;
  }
}

TEST(Bcrypt, ValidatesThePublishedAndIndependentVectors) {
  const auto vectors = LoadVectors();
  ASSERT_EQ(vectors.size(), 13u);
  for (const auto& v : vectors) {
    SCOPED_TRACE(v.hash);
    EXPECT_TRUE(BcryptLib::ValidatePassword(v.password, v.hash));
    EXPECT_FALSE(BcryptLib::ValidatePassword("!" + v.password, v.hash));
  }
}

TEST(Bcrypt, GeneratedHashesCarryTheClampedCostAndValidate) {
  const std::string hash = BcryptLib::GenerateHash("x", 0);
  ASSERT_EQ(hash.size(), 60u);
  EXPECT_EQ(hash.substr(0, 7), "$2b$04$");
  EXPECT_TRUE(BcryptLib::ValidatePassword("x", hash));
  EXPECT_FALSE(BcryptLib::ValidatePassword("X", hash));
  EXPECT_EQ(BcryptLib::GenerateHash("x", 260).substr(0, 7), "$2b$04$");

  const std::pair<unsigned, unsigned> costs[] = {{0, 4},   {3, 4},   {4, 4},      {10, 10},
                                                 {31, 31}, {32, 31}, {99, 31},    {255, 31},
                                                 {256, 4}, {260, 4}, {0x11F, 31}, {~0u, 31}};
  for (const auto& [asked, used] : costs)
    EXPECT_EQ(lq::detail::BcryptClampCost(asked), used) << asked;
}

TEST(Bcrypt, PasswordsCountTheirZeroBytesAndTheirFirst72Bytes) {
  const std::string withZero("pass\0word", 9);
  const std::string hash = BcryptLib::GenerateHash(withZero, 4);
  EXPECT_TRUE(BcryptLib::ValidatePassword(withZero, hash));
  EXPECT_FALSE(BcryptLib::ValidatePassword("pass", hash));

  const std::string long80(80, 'p');
  const std::string longHash = BcryptLib::GenerateHash(long80, 4);
  EXPECT_TRUE(BcryptLib::ValidatePassword(long80.substr(0, 73) + "different", longHash));
  EXPECT_TRUE(BcryptLib::ValidatePassword(long80.substr(0, 73), longHash));
  EXPECT_FALSE(BcryptLib::ValidatePassword(long80.substr(0, 71), longHash));
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
  EXPECT_EQ(Core("U*U", "x2a$05$" + salt), expected);  // the first character is not read
  EXPECT_EQ(Core("U*U", "$1a$05$" + salt), expected);  // a version below 2 passes
  EXPECT_EQ(Core("U*U", "$2a!05$" + salt), expected);  // after the minor version, unread
  EXPECT_EQ(Core("U*U", "$2a$ 5$" + salt), expected);  // the cost is read as atoi does

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
    // An exact heap block without a terminator, so that any read past it is caught.
    std::unique_ptr<char[]> setting(new char[n]);
    std::copy(hash.begin(), hash.begin() + n, setting.get());
    char out[lq::detail::kBcryptOutputSize] = {};
    lq::detail::BcryptHashText("password", 8, setting.get(), n, out);
    EXPECT_EQ(std::string(out) == ":", n < 29) << n;
    EXPECT_FALSE(BcryptLib::ValidatePassword("password", hash.substr(0, n)));
  }
  for (const char* garbage : {"", "garbage", "$2b$31$",
                              "$2b$99$abcdefghijklmnopqrstuughE8Ev8uGFaUg"
                              "Y2cNEySvxngrb/Jzdm"}) {
    EXPECT_FALSE(BcryptLib::ValidatePassword("x", garbage)) << garbage;
  }
  EXPECT_FALSE(BcryptLib::ValidatePassword("password", hash + "m"));
}

}  // namespace
