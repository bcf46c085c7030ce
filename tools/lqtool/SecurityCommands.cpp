// lqtool bcrypt|base64|crc16|uuid|password
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>
#include <vector>

#include <lqtools/security/Base64.h>
#include <lqtools/security/BcryptLib.h>
#include <lqtools/security/LqCRC16.h>
#include <lqtools/security/PasswordHelpers.h>
#include <lqtools/security/PasswordPolicy.h>
#include <lqtools/security/uuid.h>
#include <lqtools/xml/XmlDocument.h>

#include "Commands.h"
#include "Common.h"

namespace lqtool {

namespace {

struct SecurityOptions {
  unsigned cost = 10;
  std::string hash;
  std::string file = "-";
  std::vector<std::string> files;
  int count = 1;
  std::string text;
  std::string policy;
};

// The password: prompted without echo on a terminal, else the first line of standard input.
std::string ReadPassword() {
  const bool terminal = isatty(0);
  termios saved {};
  if (terminal) {
    std::fprintf(stderr, "password: ");
    tcgetattr(0, &saved);
    termios quiet = saved;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(0, TCSANOW, &quiet);
  }
  std::string password;
  const bool read = static_cast<bool>(std::getline(std::cin, password));
  if (terminal) {
    tcsetattr(0, TCSANOW, &saved);
    std::fprintf(stderr, "\n");
  }
  if (!read && password.empty()) throw Failure(kUnusable, "-", "no password given");
  if (!password.empty() && password.back() == '\r') password.pop_back();
  return password;
}

void BcryptHash(const SecurityOptions& o) {
  std::printf("%s\n", BcryptLib::GenerateHash(ReadPassword(), o.cost).c_str());
}

void BcryptVerify(const SecurityOptions& o) {
  if (!BcryptLib::ValidatePassword(ReadPassword(), o.hash))
    throw Failure(kAnswerNo, "", "password does not match the hash");
  std::printf("ok\n");
}

void Base64Encode(const SecurityOptions& o) {
  const std::string bytes = ReadInput(o.file);
  if (bytes.size() > 1610612733u) throw Failure(kUnusable, o.file, "too large to encode");
  LqString text;
  EncodeBase64(text, bytes.data(), static_cast<int>(bytes.size()));
  std::printf("%s\n", static_cast<const char*>(text));
}

void Base64Decode(const SecurityOptions& o) {
  std::string text = ReadInput(o.file);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  std::vector<unsigned char> bytes(text.size() / 4 * 3 + 3);
  if (!DecodeBase64(bytes.data(), text.c_str()))
    throw Failure(kAnswerNo, o.file, "not Base64 text");
  // A last group of k symbols (before any '=') gives k * 3 / 4 bytes.
  const std::size_t symbols = std::min(text.find('='), text.size());
  const std::size_t size = symbols / 4 * 3 + (symbols % 4) * 3 / 4;
  std::fwrite(bytes.data(), 1, size, stdout);
}

void Crc16(const SecurityOptions& o) {
  for (const std::string& file : o.files) {
    const std::string bytes = ReadInput(file);
    LqCRC16 crc;
    crc.Reset();
    for (std::size_t done = 0; done < bytes.size(); done += 1 << 30)
      crc.Add(bytes.data() + done, static_cast<int>(std::min<std::size_t>(bytes.size() - done, 1 << 30)));
    std::printf("%04X  %s\n", crc.Value(), file.c_str());
  }
}

void UuidNew(const SecurityOptions& o) {
  for (int i = 0; i < o.count; ++i) std::printf("%s\n", uuid::create().toString().c_str());
}

void UuidCheck(const SecurityOptions& o) {
  if (!uuid::isValidUuid(o.text)) throw Failure(kAnswerNo, o.text, "not a uuid");
  std::printf("%s\n", uuid::createFromString(o.text).toString().c_str());
}

std::u16string Scrambled(const std::string& text, bool (*scramble)(char16_t*, int)) {
  std::u16string buffer(Utf8(Wide(text)).size() * 4 + 130, u'\0');
  const LqWString wide = Wide(text);
  std::copy(static_cast<const char16_t*>(wide), static_cast<const char16_t*>(wide) + wide.Length(),
            buffer.begin());
  scramble(buffer.data(), static_cast<int>(buffer.size()));
  return buffer.c_str();
}

void PasswordEncode(const SecurityOptions& o) {
  std::printf("%s\n", Utf8(Scrambled(o.text, EncodePassword).c_str()).c_str());
}

void PasswordDecode(const SecurityOptions& o) {
  std::printf("%s\n", Utf8(Scrambled(o.text, DecodePassword).c_str()).c_str());
}

void PasswordCheck(const SecurityOptions& o) {
  const std::size_t colon = o.policy.find(':');
  const std::string file = o.policy.substr(0, colon);
  const std::string path = colon == std::string::npos ? "" : o.policy.substr(colon + 1);
  XmlDocument document;
  InputPath(file);
  if (!document.Load(Wide(file)) || !document.Root()) throw Failure(kAnswerNo, file, "does not parse as XML");
  XmlDocument::XmlNode* policy = path.empty() ? document.Root() : document.Root()->Node(Wide(path));
  if (!policy) throw Failure(kAnswerNo, file, "no node at " + path);
  if (!IsValidPassword(policy, Wide(o.text))) throw Failure(kAnswerNo, "", "password breaks the policy");
  std::printf("ok\n");
}

}  // namespace

void AddSecurityCommands(CLI::App& app) {
  auto o = std::make_shared<SecurityOptions>();

  auto* bcrypt = app.add_subcommand("bcrypt", "bcrypt password hashes (password on standard input)");
  bcrypt->require_subcommand(1);
  auto* hash = bcrypt->add_subcommand("hash", "print a new hash of the password");
  hash->add_option("--cost", o->cost, "log2 of the rounds, 4 to 31 (default 10)")->check(CLI::Range(4, 31));
  hash->callback([o] { BcryptHash(*o); });
  auto* verify = bcrypt->add_subcommand("verify", "exit 0 when the password matches HASH, 1 when not");
  verify->add_option("HASH", o->hash, "a $2a$ or $2b$ hash")->required();
  verify->callback([o] { BcryptVerify(*o); });

  auto* base64 = app.add_subcommand("base64", "Base64 without line breaks");
  base64->require_subcommand(1);
  auto* encode = base64->add_subcommand("encode", "print the Base64 text of FILE");
  encode->add_option("FILE", o->file, "input file (default -, standard input)");
  encode->callback([o] { Base64Encode(*o); });
  auto* decode = base64->add_subcommand("decode", "write the bytes of the Base64 text in FILE");
  decode->add_option("FILE", o->file, "input file (default -, standard input)");
  decode->callback([o] { Base64Decode(*o); });

  auto* crc16 = app.add_subcommand("crc16", "print the CRC-16/MODBUS of each FILE");
  crc16->add_option("FILE", o->files, "files, or - for standard input")->required();
  crc16->callback([o] { Crc16(*o); });

  auto* id = app.add_subcommand("uuid", "identifiers");
  id->require_subcommand(1);
  auto* create = id->add_subcommand("new", "print new random identifiers");
  create->add_option("-n,--count", o->count, "how many (default 1)")->check(CLI::Range(1, 1000000));
  create->callback([o] { UuidNew(*o); });
  auto* check = id->add_subcommand("check", "exit 0 and print TEXT upper-cased when it is a uuid");
  check->add_option("TEXT", o->text, "36 characters with hyphens")->required();
  check->callback([o] { UuidCheck(*o); });

  auto* password = app.add_subcommand("password", "stored password scrambling and policy checks");
  password->require_subcommand(1);
  auto* scramble = password->add_subcommand("encode", "print the scrambled form of TEXT");
  scramble->add_option("TEXT", o->text, "the password")->required();
  scramble->callback([o] { PasswordEncode(*o); });
  auto* unscramble = password->add_subcommand("decode", "print the password of a scrambled TEXT");
  unscramble->add_option("TEXT", o->text, "pairs of hexadecimal digits")->required();
  unscramble->callback([o] { PasswordDecode(*o); });
  auto* policy = password->add_subcommand("check", "exit 0 when PASSWORD passes the policy, 1 when not");
  policy->add_option("--policy", o->policy, "FILE[:PATH] of the policy element")->required();
  policy->add_option("PASSWORD", o->text, "the password to check")->required();
  policy->callback([o] { PasswordCheck(*o); });
}

}  // namespace lqtool
