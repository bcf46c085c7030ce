#include "lqtools/security/uuid.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <cstring>
#include <exception>

#include "lqtools/platform/WideRuntime.h"
#include "lqtools/text/HexText.h"

namespace {

constexpr int kTextLength = 36;
constexpr char kDigits[] = "0123456789ABCDEF";
// Where each of the sixteen bytes stands in the text form, in field order.
constexpr int kBytePositions[16] = {0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};

bool IsHyphenPosition(int i) { return i == 8 || i == 13 || i == 18 || i == 23; }

// The sixteen bytes in field order: data1 and data2 and data3 big-endian, then data4.
void BytesOf(const uuid& id, unsigned char (&bytes)[16]) {
  const uint32_t d1 = id.data1();
  bytes[0] = static_cast<unsigned char>(d1 >> 24);
  bytes[1] = static_cast<unsigned char>(d1 >> 16);
  bytes[2] = static_cast<unsigned char>(d1 >> 8);
  bytes[3] = static_cast<unsigned char>(d1);
  bytes[4] = static_cast<unsigned char>(id.data2() >> 8);
  bytes[5] = static_cast<unsigned char>(id.data2());
  bytes[6] = static_cast<unsigned char>(id.data3() >> 8);
  bytes[7] = static_cast<unsigned char>(id.data3());
  std::memcpy(bytes + 8, id.data4(), 8);
}

uuid FromBytes(const unsigned char (&bytes)[16]) {
  return uuid(static_cast<unsigned>(bytes[0]) << 24 | static_cast<unsigned>(bytes[1]) << 16 |
                  static_cast<unsigned>(bytes[2]) << 8 | bytes[3],
              static_cast<unsigned short>(bytes[4] << 8 | bytes[5]),
              static_cast<unsigned short>(bytes[6] << 8 | bytes[7]), bytes + 8);
}

template <typename Unit>
void WriteText(const uuid& id, Unit* out) {
  unsigned char bytes[16];
  BytesOf(id, bytes);
  for (int i = 0; i < kTextLength; ++i)
    out[i] = static_cast<Unit>('-');
  for (int i = 0; i < 16; ++i) {
    out[kBytePositions[i]] = static_cast<Unit>(kDigits[bytes[i] >> 4]);
    out[kBytePositions[i] + 1] = static_cast<Unit>(kDigits[bytes[i] & 15]);
  }
}

int DigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c - 'A' + 10;
}

void FillRandom(unsigned char* bytes, std::size_t count) {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = getrandom(bytes + done, count - done, 0);
    if (got > 0) {
      done += static_cast<std::size_t>(got);
    } else if (got < 0 && errno != EINTR) {
      // A kernel without getrandom: the same source through its device.
      const int device = open("/dev/urandom", O_RDONLY | O_CLOEXEC);
      if (device < 0) return;
      while (done < count) {
        const ssize_t read = ::read(device, bytes + done, count - done);
        if (read <= 0 && errno != EINTR) break;
        if (read > 0) done += static_cast<std::size_t>(read);
      }
      close(device);
      return;
    }
  }
}

}  // namespace

const uuid uuid::null;

uuid::uuid(unsigned int data1, unsigned short data2, unsigned short data3, unsigned char a,
           unsigned char b, unsigned char c, unsigned char d, unsigned char e, unsigned char f,
           unsigned char g, unsigned char h) {
  set(data1, data2, data3, a, b, c, d, e, f, g, h);
}

uuid::uuid(unsigned int data1, unsigned short data2, unsigned short data3,
           const unsigned char* data4) {
  set(data1, data2, data3, data4);
}

void uuid::set(unsigned int data1, unsigned short data2, unsigned short data3, unsigned char a,
               unsigned char b, unsigned char c, unsigned char d, unsigned char e, unsigned char f,
               unsigned char g, unsigned char h) {
  const unsigned char data4[8] = {a, b, c, d, e, f, g, h};
  set(data1, data2, data3, data4);
}

void uuid::set(unsigned int data1, unsigned short data2, unsigned short data3,
               const unsigned char* data4) {
  m_data1 = data1;
  m_data2 = data2;
  m_data3 = data3;
  std::memcpy(m_data4, data4, sizeof m_data4);
}

bool uuid::operator==(const uuid& other) const {
  return m_data1 == other.m_data1 && m_data2 == other.m_data2 && m_data3 == other.m_data3 &&
         std::memcmp(m_data4, other.m_data4, sizeof m_data4) == 0;
}

bool uuid::operator<(const uuid& other) const {
  if (m_data1 != other.m_data1) return m_data1 < other.m_data1;
  if (m_data2 != other.m_data2) return m_data2 < other.m_data2;
  if (m_data3 != other.m_data3) return m_data3 < other.m_data3;
  return std::memcmp(m_data4, other.m_data4, sizeof m_data4) < 0;
}

std::string uuid::toString() const {
  std::string text(kTextLength, '-');
  WriteText(*this, text.data());
  return text;
}

std::u16string uuid::toWString() const {
  std::u16string text(kTextLength, u'-');
  WriteText(*this, text.data());
  return text;
}

uuid uuid::create() {
  unsigned char bytes[16] = {};
  FillRandom(bytes, sizeof bytes);
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
  return FromBytes(bytes);
}

bool uuid::isHexadecimal(char c) {
  if (c >= '0' && c <= '9') return true;
  const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  return upper >= 'A' && upper <= 'F';
}

bool uuid::isValidUuid(const std::string& text) {
  if (text.size() != kTextLength) return false;
  for (int i = 0; i < kTextLength; ++i) {
    if (IsHyphenPosition(i) ? text[i] != '-' : !isHexadecimal(text[i])) return false;
  }
  return true;
}

uuid uuid::createFromString(const std::string& text) {
  if (!isValidUuid(text)) throw std::exception();
  unsigned char bytes[16];
  for (int i = 0; i < 16; ++i)
    bytes[i] = static_cast<unsigned char>(DigitValue(text[kBytePositions[i]]) << 4 |
                                          DigitValue(text[kBytePositions[i] + 1]));
  return FromBytes(bytes);
}

bool NewGUID(uuid* out) {
  if (!out) return false;
  *out = uuid::create();
  return !out->is_null();
}

char* guidtoc(const uuid& id, char* buffer) {
  WriteText(id, buffer);
  buffer[kTextLength] = '\0';
  return buffer;
}

char16_t* guidtow(const uuid& id, char16_t* buffer, int size) {
  if (!buffer || size <= 0) return buffer;
  char16_t text[kTextLength];
  WriteText(id, text);
  const int length = size - 1 < kTextLength ? size - 1 : kTextLength;
  std::memcpy(buffer, text, static_cast<std::size_t>(length) * sizeof(char16_t));
  buffer[length] = u'\0';
  return buffer;
}

uuid wtouuid(const char16_t* text) {
  if (!text) return uuid::null;
  for (int i = 0; i < kTextLength; ++i) {
    const bool ok = IsHyphenPosition(i) ? text[i] == u'-' : lq::detail::iswxdigit(text[i]) != 0;
    if (!ok) return uuid::null;
  }
  // Kept: the terminator or a blank may follow, and after a blank anything; hosts pass
  // identifiers followed by their display names this way.
  if ((text[kTextLength] & 0xFFDF) != 0) return uuid::null;
  unsigned char bytes[16];
  for (int i = 0; i < 16; ++i)
    bytes[i] = static_cast<unsigned char>(HtoB(text + kBytePositions[i]));
  return FromBytes(bytes);
}
