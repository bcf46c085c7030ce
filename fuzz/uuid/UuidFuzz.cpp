// Both uuid parsers on any text: every text one of them accepts prints back, upper-cased, as the
// same value. wtouuid reads its digits as upper case, so the check holds for it on texts whose
// letters are upper case; a lower-case digit is accepted and read as another value.
#include <lqtools/security/uuid.h>

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>

namespace {

std::string Upper(std::string text) {
  for (char& c : text)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const bool valid = uuid::isValidUuid(text);
  try {
    const uuid id = uuid::createFromString(text);
    if (!valid || id.toString() != Upper(text)) abort();
  } catch (const std::exception&) {
    if (valid) abort();
  }

  std::u16string wide;
  for (unsigned char c : text) wide += static_cast<char16_t>(c);
  for (std::size_t i = 0; i + 1 < size; i += 2)
    wide += static_cast<char16_t>(data[i] | data[i + 1] << 8);
  const uuid parsed = wtouuid(wide.c_str());
  if (!parsed.is_null()) {
    const std::u16string first(wide.c_str(), std::min<std::size_t>(36, wide.size()));
    bool upper = true;
    for (char16_t c : first) upper &= !(c >= u'a' && c <= u'z');
    if (upper && parsed.toWString() != first) abort();
  }
  char16_t buffer[40];
  if (parsed != wtouuid(guidtow(parsed, buffer, 40))) abort();
  return 0;
}
