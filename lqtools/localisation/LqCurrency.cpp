#include "lqtools/localisation/LqCurrency.h"

#include <cstdio>

#include "lqtools/files/PathHelpers.h"
#include "lqtools/text/Unicode.h"

namespace {

constexpr char16_t kCurrencyFile[] = u"currencies.curr";
// A token holds at most this many bytes; the fixed buffers of the file's readers have one more.
constexpr int kTokenBytes = 15;

// The next token of the file: a run of bytes that are not white space, after skipping white space.
// A longer token keeps its first 15 bytes and the rest of it is skipped, so that the pairs after it
// stay in step. False at the end of the file before any byte of a token.
bool ReadToken(std::FILE* file, char (&token)[kTokenBytes + 1]) {
  int c;
  do
    c = std::fgetc(file);
  while (c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r');
  if (c == EOF) return false;
  int length = 0;
  for (; c != EOF && !(c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r');
       c = std::fgetc(file))
    if (length < kTokenBytes) token[length++] = static_cast<char>(c);
  token[length] = '\0';
  return true;
}

LqWString Widened(const char* token) {
  LqWString wide;
  Utf8ToUtf16(wide, LqString(token, false));
  return wide;
}

}  // namespace

LqCurrency LqCurrency::m_instance;

LqCurrency::LqCurrency() { Reset(); }

LqCurrency::LqCurrency(const LqWString& code) { Set(code); }

LqCurrency::LqCurrency(const LqCurrency& other) : m_code(other.m_code), m_symbol(other.m_symbol) {}

LqCurrency& LqCurrency::operator=(const LqCurrency& other) {
  m_code = other.m_code;
  m_symbol = other.m_symbol;
  return *this;
}

LqCurrency::~LqCurrency() = default;

void LqCurrency::Reset() {
  m_code = u"";
  m_symbol = u"";
}

void LqCurrency::Set(const LqWString& code) {
  // Kept: the file is not read again for the current code, so a symbol changed in the file since
  // is not noticed until another code was selected in between.
  if (code == m_code) return;
  if (code.IsEmpty()) {
    Reset();
    return;
  }
  Reset();

  LqWString widePath = GetSharePath();
  widePath += kCurrencyFile;
  LqString path;
  Utf16ToUtf8(path, widePath);
  std::FILE* file = std::fopen(static_cast<const char*>(path), "rb");
  if (!file) return;

  char codeToken[kTokenBytes + 1] = {};
  // Cleared once, before the first pair: a code without a symbol at the very end of the file
  // takes the symbol of the pair before it, or an empty one when it is the only pair.
  char symbolToken[kTokenBytes + 1] = {};
  while (ReadToken(file, codeToken)) {
    ReadToken(file, symbolToken);
    if (Widened(codeToken) == code) {
      m_code = code;
      m_symbol = Widened(symbolToken);
      break;
    }
  }
  std::fclose(file);
}
