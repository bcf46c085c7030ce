#include "lqtools/security/BcryptLib.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "lqtools/security/detail/BcryptCore.h"
#include "lqtools/platform/WideFormat.h"

namespace {

constexpr std::size_t kHashLength = lq::detail::kBcryptOutputSize - 1;

}  // namespace

std::string BcryptLib::GenerateHash(const std::string& password, unsigned int cost) {
  std::srand(static_cast<unsigned>(std::time(nullptr)));
  uint8_t salt[lq::detail::kBcryptSaltSize];
  for (uint8_t& byte : salt)
    byte = static_cast<uint8_t>(std::rand() % 256);

  char setting[8 + 22 + 1];
  const int n = lq::detail::snprintf(setting, sizeof setting, "$2b$%2.2u$",
                                     lq::detail::BcryptClampCost(cost));
  const std::size_t end =
      static_cast<std::size_t>(n) + lq::detail::BcryptEncode(setting + n, salt, sizeof salt);
  setting[end] = 0;

  char result[lq::detail::kBcryptOutputSize] = {};
  lq::detail::BcryptHashText(password.c_str(), password.size(), setting, end, result);
  return std::string(result, strnlen(result, kHashLength));
}

bool BcryptLib::ValidatePassword(const std::string& password, const std::string& hash) {
  // Only a text of the full length can equal a result, so any other is refused before the work.
  if (hash.size() != kHashLength) return false;
  char result[lq::detail::kBcryptOutputSize] = {};
  lq::detail::BcryptHashText(password.c_str(), password.size(), hash.c_str(), hash.size(), result);
  // Every byte is compared, so the time does not tell how much of a guess was right.
  unsigned char difference = 0;
  for (std::size_t i = 0; i < kHashLength; ++i)
    difference |= static_cast<unsigned char>(hash[i] ^ result[i]);
  return difference == 0;
}
