// The JSON parser: a recursive descent over UTF-8 bytes that ends at the text's first zero byte.
// Strings are gathered as bytes and converted to wide text once, when they are complete.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "lqtools/json/JsonDocument.h"
#include "lqtools/text/HexText.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/platform/Truncation.h"

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

// The bytes of one \u value, built from the low end with six bits each.
void AppendUnicodeEscape(std::string& bytes, uint32_t value) {
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
  bytes.append(piece, static_cast<std::size_t>(length));
}

// Converts `length` UTF-8 bytes into `target`, cut at the first zero unit the way a
// terminated text is. Plain ASCII, the common case, is its own UTF-16 and is widened in place.
// False for a text beyond the 32-bit length of a string.
bool StoreText(LqWString& target, const char* bytes, std::size_t length) {
  if (length >= static_cast<std::size_t>(INT32_MAX)) return false;
  std::size_t ascii = 0;
  while (ascii < length && static_cast<unsigned char>(bytes[ascii]) < 0x80)
    ++ascii;
  if (ascii == length) {
    char16_t* units = target.Prepare(static_cast<int>(length), false);
    for (std::size_t i = 0; i < length; ++i)
      units[i] = static_cast<char16_t>(bytes[i]);
    return true;
  }
  LqWString wide;
  Utf8ToUtf16(wide, bytes, static_cast<int>(length));
  target = static_cast<const char16_t*>(wide);
  return true;
}

// Reads the string whose opening quote stands at `text` into `target`. Returns the position
// after the closing quote, or null when the text ends first.
const char* ReadString(const char* text, LqWString& target) {
  const char* p = ++text;
  while (*p && *p != '"' && *p != '\\')
    ++p;
  if (*p == '"')
    return StoreText(target, text, static_cast<std::size_t>(p - text)) ? p + 1 : nullptr;
  std::string bytes(text, p);
  for (;;) {
    const char* run = p;
    while (*p && *p != '"' && *p != '\\')
      ++p;
    bytes.append(run, p);
    if (*p == '"') break;
    if (!*p || !p[1]) return nullptr;
    ++p;
    switch (*p) {
      case 'b': bytes += '\b'; break;
      case 'f': bytes += '\f'; break;
      case 'n': bytes += '\n'; break;
      case 'r': bytes += '\r'; break;
      case 't': bytes += '\t'; break;
      case 'u':
        // The four bytes after the 'u' are stepped over whatever the scanner took from them;
        // a text that ends among them is cut.
        if (!p[1] || !p[2] || !p[3] || !p[4]) return nullptr;
        AppendUnicodeEscape(bytes, ScanHex4(p + 1));
        p += 4;
        break;
      default: bytes += *p; break;
    }
    ++p;
  }
  // Conversion stops at a zero byte that a \u produced.
  return StoreText(target, bytes.data(), std::strlen(bytes.c_str())) ? p + 1 : nullptr;
}

// A new node of type 6 at the end of `parent`, before it is parsed.
JsonNode* AppendChild(JsonNode* parent) {
  auto child = std::make_unique<JsonNode>(6);
  parent->AddChild(child.get());
  return child.release();
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
  const double value = power == 0.0 ? n * sign : std::pow(10.0, power) * (n * sign);
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
    JsonNode* child = AppendChild(node);
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
    JsonNode* child = AppendChild(node);
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
