// BcryptLib: passwords stored and checked as bcrypt hashes, in the text form "$2b$NN$" followed by
// 22 characters of salt and 31 of digest (60 in all). The cost NN is the base-two logarithm of the
// key schedule's rounds, so each step up doubles the time of both calls.
//
// The class holds nothing; its two operations are static. A hash that cannot be read is no error:
// ValidatePassword simply answers false. GenerateHash seeds the C runtime's srand with the current
// second and draws the salt from rand(), so two hashes made in the same second share their salt,
// and the process's rand() sequence starts anew: callers on several threads share that generator.
#pragma once

#include <string>

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API BcryptLib {
 public:
  BcryptLib() = default;
  ~BcryptLib() = default;
  BcryptLib& operator=(const BcryptLib&) { return *this; }

  // A new "$2b$" hash of every byte of `password` (a zero byte counts). The cost is taken modulo
  // 256 and then held between 4 and 31. Only the first 72 bytes of a password matter.
  static std::string GenerateHash(const std::string& password, unsigned int cost);

  // True when `hash` is the 60-character hash of `password` ("$2a$" or "$2b$"). Any other text,
  // a 59-character hash without a minor version included, gives false.
  static bool ValidatePassword(const std::string& password, const std::string& hash);
};
