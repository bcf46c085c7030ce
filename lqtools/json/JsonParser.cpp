// The JSON parser: a recursive descent over UTF-8 bytes that ends at the text's first zero byte.
// A string without escapes is converted straight from the text; one with escapes is gathered as
// bytes first. Either way it is decoded once, into a block of its exact size.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>

#include "lqtools/json/JsonDocument.h"
#include "lqtools/platform/Truncation.h"
#include "lqtools/text/HexText.h"
#include "lqtools/text/Unicode.h"

using JsonNode = JsonDocument::JsonNode;

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// White space of the C library's scanner: blank, \t, \n, \v, \f, \r.
bool IsScannerSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

unsigned HexDigit(char c) {
  if (c <= '9') return static_cast<unsigned>(c - '0');
  return static_cast<unsigned>((c | 0x20) - 'a' + 10);
}

// The unsigned value that the scanner format "%4x" reads from `text`: blanks first, then at most
// four characters of an optional sign, an optional "0x" and hex digits. A minus negates in 32
// bits. Without any hex digit the value is 0.
uint32_t ScanHex4(const char* text) {
  while (IsScannerSpace(*text))
    ++text;
  int width = 4;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text, --width;
  if (width > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') && IsHexB(text[2]))
    text += 2, width -= 2;
  uint32_t value = 0;
  for (; width > 0 && IsHexB(*text); --width, ++text)
    value = value * 16 + HexDigit(*text);
  return negative ? 0u - value : value;
}

// The bytes of a string with escapes, gathered before they are decoded. Short strings, nearly
// all of them, stay in the inline room and cost no allocation.
class EscapedBytes {
 public:
  EscapedBytes() = default;
  EscapedBytes(const EscapedBytes&) = delete;
  EscapedBytes& operator=(const EscapedBytes&) = delete;

  const char* Data() const { return m_data; }
  std::size_t Size() const { return m_size; }

  void Append(const char* bytes, std::size_t count) {
    Reserve(count);
    if (count) std::memcpy(m_data + m_size, bytes, count);
    m_size += count;
  }
  void Push(char byte) {
    Reserve(1);
    m_data[m_size++] = byte;
  }

 private:
  void Reserve(std::size_t count) {
    if (m_capacity - m_size >= count) return;
    const std::size_t capacity = std::max(m_capacity * 2, m_size + count);
    std::unique_ptr<char[]> grown(new char[capacity]);
    std::memcpy(grown.get(), m_data, m_size);
    m_heap = std::move(grown);
    m_data = m_heap.get();
    m_capacity = capacity;
  }

  char m_inline[512];
  char* m_data = m_inline;
  std::size_t m_size = 0;
  std::size_t m_capacity = sizeof m_inline;
  std::unique_ptr<char[]> m_heap;
};

// The bytes of one \u value, built from the low end with six bits each.
void AppendUnicodeEscape(EscapedBytes& bytes, uint32_t value) {
  if (value == 0) return;
  const int length = value < 0x80 ? 1 : (value < 0x800 ? 2 : 3);
  char piece[3];
  int index = length;
  while (--index > 0) {
    piece[index] = static_cast<char>((value & 0x3F) | 0x80);
    value >>= 6;
  }
  // Kept: the mark comes from index 0 of the table, which is 0x00, so a two- or three-byte
  // sequence starts without its 0xC0 or 0xE0 prefix. Stored documents were read this way.
  piece[0] = static_cast<char>(value | JsonDocument::firstByteMark[index]);
  bytes.Append(piece, static_cast<std::size_t>(length));
}

// Converts `length` UTF-8 bytes into `target` with the library's converter, cut at the first zero
// unit the way a terminated text is, in one block of the exact size. `ascii` tells that no byte is
// from 0x80 up: such text is its own UTF-16 and is widened in place. False for a text beyond the
// 32-bit length of a string.
bool StoreText(LqWString& target, const char* bytes, std::size_t length, bool ascii) {
  if (length >= static_cast<std::size_t>(INT32_MAX)) return false;
  if (ascii) {
    char16_t* units = target.Prepare(static_cast<int>(length), false);
    for (std::size_t i = 0; i < length; ++i)
      units[i] = static_cast<unsigned char>(bytes[i]);
    return true;
  }
  LqWString wide;
  Utf8ToUtf16(wide, bytes, static_cast<int>(length));
  const int count = LqWideChar::Length(wide);
  char16_t* units = target.Prepare(count, false);
  std::memcpy(units, static_cast<const char16_t*>(wide), static_cast<std::size_t>(count) * 2);
  return true;
}

bool IsAscii(const char* bytes, std::size_t length) {
  unsigned char any = 0;
  for (std::size_t i = 0; i < length; ++i)
    any |= static_cast<unsigned char>(bytes[i]);
  return any < 0x80;
}

// The bytes that end a plain run inside a string: the quote, the backslash and the terminator.
constexpr struct StringStops {
  bool stop[256] = {};
  constexpr StringStops() { stop['"'] = stop['\\'] = stop[0] = true; }
} kStringStops;

// Reads the string whose opening quote stands at `text` into `target`. Returns the position
// after the closing quote, or null when the text ends first.
const char* ReadString(const char* text, LqWString& target) {
  const char* p = ++text;
  unsigned char any = 0;
  while (!kStringStops.stop[static_cast<unsigned char>(*p)])
    any |= static_cast<unsigned char>(*p++);
  if (*p == '"')
    return StoreText(target, text, static_cast<std::size_t>(p - text), any < 0x80) ? p + 1
                                                                                   : nullptr;
  EscapedBytes bytes;
  bytes.Append(text, static_cast<std::size_t>(p - text));
  for (;;) {
    const char* run = p;
    while (!kStringStops.stop[static_cast<unsigned char>(*p)])
      ++p;
    bytes.Append(run, static_cast<std::size_t>(p - run));
    if (*p == '"') break;
    if (!*p || !p[1]) return nullptr;
    ++p;
    switch (*p) {
      case 'b': bytes.Push('\b'); break;
      case 'f': bytes.Push('\f'); break;
      case 'n': bytes.Push('\n'); break;
      case 'r': bytes.Push('\r'); break;
      case 't': bytes.Push('\t'); break;
      case 'u':
        // The four bytes after the 'u' are stepped over whatever the scanner took from them;
        // a text that ends among them is cut.
        if (!p[1] || !p[2] || !p[3] || !p[4]) return nullptr;
        AppendUnicodeEscape(bytes, ScanHex4(p + 1));
        p += 4;
        break;
      default: bytes.Push(*p); break;
    }
    ++p;
  }
  // Conversion stops at a zero byte that a \u produced.
  const void* zero = std::memchr(bytes.Data(), 0, bytes.Size());
  const std::size_t length =
      zero ? static_cast<std::size_t>(static_cast<const char*>(zero) - bytes.Data()) : bytes.Size();
  return StoreText(target, bytes.Data(), length, IsAscii(bytes.Data(), length)) ? p + 1 : nullptr;
}

// The powers of ten that numbers scale by, as std::pow gives them, for the exponents that
// occur in practice; further out std::pow is called each time.
class PowersOfTen {
 public:
  static constexpr int kLowest = -350;
  static constexpr int kHighest = 350;

  PowersOfTen() {
    // The base goes through a volatile, so that the compiler cannot fold the calls into values
    // of its own: the table holds what the run-time library returns.
    volatile double base = 10.0;
    for (int e = kLowest; e <= kHighest; ++e)
      m_power[e - kLowest] = std::pow(base, static_cast<double>(e));
  }

  // 10 to the integral `exponent`.
  double operator()(double exponent) const {
    if (exponent >= kLowest && exponent <= kHighest)
      return m_power[static_cast<int>(exponent) - kLowest];
    return std::pow(10.0, exponent);
  }

 private:
  double m_power[kHighest - kLowest + 1];
};

// Built on first use, so that no order of static initialisation can see an empty table.
double PowerOfTen(double exponent) {
  static const PowersOfTen powers;
  return powers(exponent);
}

}  // namespace

bool JsonDocument::Parse(const char* text) {
  Reset();
  if (!text) return false;
  std::unique_ptr<JsonNode> root(new JsonNode(6));
  if (!ParseValue(root.get(), text)) return false;
  m_root = root.release();
  return true;
}

const char* JsonDocument::skip(const char* text) {
  while (text && (*text == ' ' || *text == '\t' || *text == '\n' || *text == '\r'))
    ++text;
  return text;
}

const char* JsonDocument::ParseValue(JsonNode* node, const char* text, int depth) {
  text = skip(text);
  if (!text) return nullptr;
  // Kept: keywords match as prefixes, so "nullable" reads as null and leaves "able" behind.
  switch (*text) {
    case 'n':
      if (std::strncmp(text, "null", 4) != 0) return nullptr;
      node->m_type = JsonNull;
      return text + 4;
    case 'f':
      if (std::strncmp(text, "false", 5) != 0) return nullptr;
      node->m_type = JsonBoolean;
      node->m_intValue = 0;
      return text + 5;
    case 't':
      if (std::strncmp(text, "true", 4) != 0) return nullptr;
      node->m_type = JsonBoolean;
      node->m_intValue = 1;
      return text + 4;
    case '"': return ParseString(node, text);
    case '[': return ParseArray(node, text, depth);
    case '{': return ParseObject(node, text, depth);
    default: return *text == '-' || IsDigit(*text) ? ParseNumber(node, text) : nullptr;
  }
}

const char* JsonDocument::ParseNumber(JsonNode* node, const char* text) {
  const char* p = skip(text);
  double sign = 1.0;
  if (*p == '-') {
    sign = -1.0;
    ++p;
  }
  double n = 0.0;
  double scale = 0.0;
  bool isFloat = false;
  for (; IsDigit(*p); ++p)
    n = n * 10.0 + (*p - '0');
  if (*p == '.') {
    isFloat = true;
    for (++p; IsDigit(*p); ++p) {
      n = n * 10.0 + (*p - '0');
      scale -= 1.0;
    }
  }
  // The exponent accumulates in 32 bits and wraps without notice, the sign included.
  uint32_t exponent = 0;
  if (*p == 'e' || *p == 'E') {
    ++p;
    const bool negative = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    for (; IsDigit(*p); ++p)
      exponent = exponent * 10u + static_cast<uint32_t>(*p - '0');
    if (negative) exponent = 0u - exponent;
  }
  const double power = scale + static_cast<int32_t>(exponent);
  // pow(10, 0) is exactly 1, so the common case spares the call.
  const double value = power == 0.0 ? n * sign : PowerOfTen(power) * (n * sign);
  if (isFloat) {
    node->m_type = JsonFloat;
    node->m_doubleValue = value;
  } else {
    // Kept: "1e3" is the integer 1000; a number beyond 32 bits reads as -2147483648.
    node->m_type = JsonInteger;
    node->m_intValue = lq::detail::TruncateToInt32(value);
  }
  return skip(p);
}

const char* JsonDocument::ParseString(JsonNode* node, const char* text) {
  text = skip(text);
  if (*text != '"') return nullptr;
  text = ReadString(text, node->m_stringValue);
  if (!text) return nullptr;
  node->m_type = JsonString;
  return skip(text);
}

const char* JsonDocument::ParseArray(JsonNode* node, const char* text, int depth) {
  text = skip(text);
  if (*text != '[' || depth >= kMaxParseDepth) return nullptr;
  text = skip(text + 1);
  node->m_type = JsonArray;
  if (*text == ']') return text + 1;
  // Kept: one comma before the first element is tolerated, "[,1]" is "[1]".
  if (*text == ',') ++text;
  for (;;) {
    // A new node of type 6 at the end, before it is parsed.
    std::unique_ptr<JsonNode> created(new JsonNode(JsonObject));
    node->m_childs.push_back(created.get());
    JsonNode* child = created.release();
    text = ParseValue(child, text, depth + 1);
    if (!text) return nullptr;
    text = skip(text);
    if (*text != ',') break;
    ++text;
  }
  return *text == ']' ? text + 1 : nullptr;
}

const char* JsonDocument::ParseObject(JsonNode* node, const char* text, int depth) {
  text = skip(text);
  if (*text != '{' || depth >= kMaxParseDepth) return nullptr;
  text = skip(text + 1);
  node->m_type = JsonObject;
  if (*text == '}') return text + 1;
  // Kept: one comma before the first member is tolerated, "{,"a":1}" is "{"a":1}".
  if (*text == ',') ++text;
  for (;;) {
    // A new node of type 6 at the end, before it is parsed.
    std::unique_ptr<JsonNode> created(new JsonNode(JsonObject));
    node->m_childs.push_back(created.get());
    JsonNode* child = created.release();
    text = skip(text);
    if (*text != '"') return nullptr;
    // The name is read straight into its place; the value string stays empty.
    text = ReadString(text, child->m_name);
    if (!text) return nullptr;
    text = skip(text);
    if (*text != ':') return nullptr;
    text = ParseValue(child, text + 1, depth + 1);
    if (!text) return nullptr;
    text = skip(text);
    if (*text == '}') return text + 1;
    if (*text != ',') return nullptr;
    ++text;
  }
}
