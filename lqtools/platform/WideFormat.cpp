#include "lqtools/platform/WideFormat.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

#include "lqtools/platform/Locales.h"
#include "lqtools/platform/WideRuntime.h"

namespace lq::detail {

namespace {

// Output that never passes the end of the caller's buffer.
class BoundedOutput {
 public:
  BoundedOutput(char16_t* buffer, std::size_t count) : m_buffer(buffer), m_count(count) {}

  void Put(char16_t unit) {
    if (m_used + 1 < m_count) {
      m_buffer[m_used++] = unit;
    } else {
      m_cut = true;
    }
  }
  void Repeat(char16_t unit, std::size_t times) {
    for (std::size_t i = 0; i < times && !m_cut; ++i)
      Put(unit);
  }
  // Units still free before the terminator.
  std::size_t Room() const { return m_used + 1 < m_count ? m_count - 1 - m_used : 0; }
  int Finish() {
    if (m_count == 0) return -1;
    m_buffer[m_used] = 0;
    return m_cut ? -1 : static_cast<int>(m_used);
  }

 private:
  char16_t* m_buffer;
  std::size_t m_count;
  std::size_t m_used = 0;
  bool m_cut = false;
};

enum class Length { None, Char, Short, Long, LongLong, LongDouble, Size, Int32, Int64 };

struct Spec {
  bool leftAlign = false;
  std::string flags;
  int width = -1;
  int precision = -1;
  Length length = Length::None;
  char16_t conversion = 0;
};

int ReadCount(const char16_t*& p) {
  long long value = 0;
  while (*p >= u'0' && *p <= u'9') {
    if (value < INT32_MAX) value = value * 10 + (*p - u'0');
    ++p;
  }
  return value > INT32_MAX ? INT32_MAX : static_cast<int>(value);
}

// Reads flags, width, precision and length; `p` stands behind the '%'.
bool ReadSpec(const char16_t*& p, va_list& args, Spec& spec) {
  for (;; ++p) {
    const char16_t c = *p;
    if (c == u'-' || c == u'+' || c == u' ' || c == u'#' || c == u'0') {
      if (c == u'-') spec.leftAlign = true;
      spec.flags.push_back(static_cast<char>(c));
    } else {
      break;
    }
  }
  if (*p == u'*') {
    ++p;
    const int width = va_arg(args, int);
    if (width < 0) {
      spec.leftAlign = true;
      spec.flags.push_back('-');
      spec.width = width == INT32_MIN ? INT32_MAX : -width;
    } else {
      spec.width = width;
    }
  } else if (*p >= u'0' && *p <= u'9') {
    spec.width = ReadCount(p);
  }
  if (*p == u'.') {
    ++p;
    if (*p == u'*') {
      ++p;
      const int precision = va_arg(args, int);
      spec.precision = precision < 0 ? -1 : precision;
    } else {
      spec.precision = ReadCount(p);
    }
  }
  switch (*p) {
    case u'h':
      ++p;
      spec.length = *p == u'h' ? (++p, Length::Char) : Length::Short;
      break;
    case u'l':
      ++p;
      spec.length = *p == u'l' ? (++p, Length::LongLong) : Length::Long;
      break;
    case u'L': ++p, spec.length = Length::LongDouble; break;
    case u'q':
    case u'j': ++p, spec.length = Length::LongLong; break;
    case u'z':
    case u't': ++p, spec.length = Length::Size; break;
    case u'w': ++p, spec.length = Length::Long; break;
    case u'I':
      ++p;
      if (p[0] == u'6' && p[1] == u'4') {
        p += 2;
        spec.length = Length::Int64;
      } else if (p[0] == u'3' && p[1] == u'2') {
        p += 2;
        spec.length = Length::Int32;
      } else {
        spec.length = Length::Size;
      }
      break;
    default: break;
  }
  spec.conversion = *p;
  return *p != 0;
}

// The conversions that read an integer and those that read a floating value.
bool IsIntegerConversion(char16_t c) {
  return c == u'd' || c == u'i' || c == u'u' || c == u'o' || c == u'x' || c == u'X';
}
bool IsFloatingConversion(char16_t c) {
  return c == u'e' || c == u'E' || c == u'f' || c == u'F' || c == u'g' || c == u'G' || c == u'a' ||
         c == u'A';
}

char ToUpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// Above these precisions the C library would only add zeros (every binary floating value has a
// finite decimal expansion), so the library formats with the cap and inserts the zeros itself.
// Width is also applied here. A huge width or precision thus costs no more than the room left.
constexpr int kMaxIntegerPrecision = 64;
constexpr int kMaxFloatPrecision = 16500;

// std::to_chars writes printf's text for these cases ("C" locale), many times faster. Both return
// the full length of the text, or -1 when the case is not one of them or the buffer is too small.
template <typename Value>
int ClassicInteger(char* buffer, std::size_t count, Value value, char conversion) {
  const int base = conversion == 'o' ? 8 : (conversion == 'x' || conversion == 'X') ? 16 : 10;
  const std::to_chars_result done = std::to_chars(buffer, buffer + count, value, base);
  if (done.ec != std::errc()) return -1;
  if (conversion == 'X') std::transform(buffer, done.ptr, buffer, ToUpperAscii);
  return static_cast<int>(done.ptr - buffer);
}

int ClassicDouble(char* buffer, std::size_t count, double value, char conversion, int precision) {
  std::chars_format format;
  switch (conversion) {
    case 'e':
    case 'E': format = std::chars_format::scientific; break;
    case 'f':
    case 'F': format = std::chars_format::fixed; break;
    case 'g':
    case 'G': format = std::chars_format::general; break;
    default: return -1;
  }
  const std::to_chars_result done =
      std::to_chars(buffer, buffer + count, value, format, precision < 0 ? 6 : precision);
  if (done.ec != std::errc()) return -1;
  if (conversion == 'E' || conversion == 'F' || conversion == 'G')
    std::transform(buffer, done.ptr, buffer, ToUpperAscii);
  return static_cast<int>(done.ptr - buffer);
}

// The narrow conversion text for snprintf, without width: '%', flags, precision, then `tail`.
std::string NarrowSpec(const Spec& spec, int precision, const char* tail) {
  std::string out = "%";
  for (char flag : spec.flags)
    if (flag != '-' && flag != '0') out += flag;
  if (precision >= 0) out += "." + std::to_string(precision);
  return out + tail;
}

template <typename Value>
std::string FormatNarrow(const std::string& format, Value value) {
  char local[128];
  const int needed = std::snprintf(local, sizeof local, format.c_str(), value);
  if (needed < 0) return std::string();
  if (static_cast<std::size_t>(needed) < sizeof local)
    return std::string(local, static_cast<std::size_t>(needed));
  std::string big(static_cast<std::size_t>(needed) + 1, '\0');
  std::snprintf(big.data(), big.size(), format.c_str(), value);
  big.resize(static_cast<std::size_t>(needed));
  return big;
}

// One formatted number: its text, and a run of `zeros` zeros to insert at `zerosAt`.
struct NumberText {
  std::string text;
  std::size_t zerosAt = 0;
  std::size_t zeros = 0;
  bool zeroPadding = false;  // whether the '0' flag may pad this number
};

// Sign and "0x" prefix: zeros of padding and precision go behind them.
std::size_t PrefixLength(const std::string& text) {
  std::size_t i = 0;
  if (i < text.size() && (text[i] == '-' || text[i] == '+' || text[i] == ' ')) ++i;
  if (i + 1 < text.size() && text[i] == '0' && (text[i + 1] == 'x' || text[i + 1] == 'X')) i += 2;
  return i;
}

void PutNarrow(BoundedOutput& out, const std::string& text, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i)
    out.Put(static_cast<unsigned char>(text[i]));
}

void PutNumber(BoundedOutput& out, const Spec& spec, const NumberText& number) {
  const std::size_t length = number.text.size() + number.zeros;
  const std::size_t width = spec.width > 0 ? static_cast<std::size_t>(spec.width) : 0;
  const std::size_t pad = width > length ? width - length : 0;
  const bool zeroPad =
      !spec.leftAlign && number.zeroPadding && spec.flags.find('0') != std::string::npos;
  const std::size_t prefix = zeroPad ? PrefixLength(number.text) : 0;
  if (!spec.leftAlign && !zeroPad) out.Repeat(u' ', pad);
  PutNarrow(out, number.text, 0, prefix);
  if (zeroPad) out.Repeat(u'0', pad);
  PutNarrow(out, number.text, prefix, number.zerosAt);
  out.Repeat(u'0', number.zeros);
  PutNarrow(out, number.text, number.zerosAt, number.text.size());
  if (spec.leftAlign) out.Repeat(u' ', pad);
}

// Flags that change the text of a number itself; without them std::to_chars gives printf's text.
bool PlainFlags(const Spec& spec) { return spec.flags.find_first_of("+ #") == std::string::npos; }

template <typename Value>
void PutIntegerValue(BoundedOutput& out, const Spec& spec, Value value) {
  const char conversion = static_cast<char>(spec.conversion);
  const char tail[] = {'l', 'l', conversion, 0};
  const int precision = std::min(spec.precision, kMaxIntegerPrecision);
  NumberText number;
  if (PlainFlags(spec) && precision < 0) {
    char text[32];
    const int length = ClassicInteger(text, sizeof text, value, conversion);
    number.text.assign(text, static_cast<std::size_t>(length));
  } else {
    number.text = FormatNarrow(NarrowSpec(spec, precision, tail), value);
  }
  number.zerosAt = PrefixLength(number.text);
  number.zeros = static_cast<std::size_t>(spec.precision - precision);
  number.zeroPadding = spec.precision < 0;  // a precision turns the '0' flag off
  PutNumber(out, spec, number);
}

void PutInteger(BoundedOutput& out, const Spec& spec, va_list& args) {
  if (spec.conversion == u'd' || spec.conversion == u'i') {
    long long value;
    switch (spec.length) {
      case Length::Char: value = static_cast<signed char>(va_arg(args, int)); break;
      case Length::Short: value = static_cast<short>(va_arg(args, int)); break;
      case Length::Long: value = va_arg(args, long); break;
      case Length::LongLong:
      case Length::Int64: value = va_arg(args, long long); break;
      case Length::Size: value = va_arg(args, std::ptrdiff_t); break;
      default: value = va_arg(args, int); break;
    }
    PutIntegerValue(out, spec, value);
  } else {
    unsigned long long value;
    switch (spec.length) {
      case Length::Char: value = static_cast<unsigned char>(va_arg(args, unsigned)); break;
      case Length::Short: value = static_cast<unsigned short>(va_arg(args, unsigned)); break;
      case Length::Long: value = va_arg(args, unsigned long); break;
      case Length::LongLong:
      case Length::Int64: value = va_arg(args, unsigned long long); break;
      case Length::Size: value = va_arg(args, std::size_t); break;
      default: value = va_arg(args, unsigned); break;
    }
    PutIntegerValue(out, spec, value);
  }
}

template <typename Value>
void PutFloatingValue(BoundedOutput& out, const Spec& spec, const char* tail, Value value) {
  const int precision = std::min(spec.precision, kMaxFloatPrecision);
  NumberText number;
  char text[512];
  const int length = std::is_same_v<Value, double> && PlainFlags(spec)
                         ? ClassicDouble(text, sizeof text, static_cast<double>(value),
                                         static_cast<char>(spec.conversion), precision)
                         : -1;
  if (length >= 0 && static_cast<std::size_t>(length) < sizeof text) {
    number.text.assign(text, static_cast<std::size_t>(length));
  } else {
    number.text = FormatNarrow(NarrowSpec(spec, precision, tail), value);
  }
  const bool finite = number.text.find_first_of("0123456789") != std::string::npos;
  number.zeroPadding = finite;
  const char conversion = static_cast<char>(spec.conversion);
  const bool keepsZeros =
      (conversion != 'g' && conversion != 'G') || spec.flags.find('#') != std::string::npos;
  if (finite && keepsZeros) number.zeros = static_cast<std::size_t>(spec.precision - precision);
  const char* marker = conversion == 'a' || conversion == 'A' ? "pP" : "eE";
  const std::size_t exponent =
      conversion == 'f' || conversion == 'F' ? std::string::npos : number.text.find_last_of(marker);
  number.zerosAt = exponent == std::string::npos ? number.text.size() : exponent;
  PutNumber(out, spec, number);
}

void PutFloating(BoundedOutput& out, const Spec& spec, va_list& args) {
  const char conversion = static_cast<char>(spec.conversion);
  if (spec.length == Length::LongDouble) {
    const char tail[] = {'L', conversion, 0};
    PutFloatingValue(out, spec, tail, va_arg(args, long double));
  } else {
    const char tail[] = {conversion, 0};
    PutFloatingValue(out, spec, tail, va_arg(args, double));
  }
}

// A text or character with width, precision and alignment; `Unit` is char or char16_t.
template <typename Unit>
void PutText(BoundedOutput& out, const Spec& spec, const Unit* text, std::size_t limit) {
  std::size_t length = 0;
  while (length < limit && text[length])
    ++length;
  const std::size_t width = spec.width > 0 ? static_cast<std::size_t>(spec.width) : 0;
  const std::size_t pad = width > length ? width - length : 0;
  if (!spec.leftAlign) out.Repeat(u' ', pad);
  for (std::size_t i = 0; i < length; ++i) {
    if constexpr (sizeof(Unit) == 1) {
      out.Put(static_cast<unsigned char>(text[i]));
    } else {
      out.Put(text[i]);
    }
  }
  if (spec.leftAlign) out.Repeat(u' ', pad);
}

template <typename Unit>
void PutString(BoundedOutput& out, const Spec& spec, const Unit* text) {
  static const Unit nullText[] = {'(', 'n', 'u', 'l', 'l', ')', 0};
  const std::size_t limit =
      spec.precision >= 0 ? static_cast<std::size_t>(spec.precision) : SIZE_MAX;
  PutText(out, spec, text ? text : nullText, limit);
}

// Copies `length` units of `text` cut to the buffer, terminated; the result is `length`.
int CopyCut(char* buffer, std::size_t count, const char* text, int length) {
  if (!buffer || count == 0 || length < 0) return length;
  const std::size_t kept = std::min(count - 1, static_cast<std::size_t>(length));
  std::copy(text, text + kept, buffer);
  buffer[kept] = 0;
  return length;
}

}  // namespace

int vswprintf(char16_t* buffer, std::size_t count, const char16_t* format, va_list args) {
  BoundedOutput out(buffer, buffer ? count : 0);
  if (!format) return out.Finish();
  ScopedClassicLocale classic;
  va_list ap;
  va_copy(ap, args);
  for (const char16_t* p = format; *p; ++p) {
    if (*p != u'%') {
      out.Put(*p);
      continue;
    }
    const char16_t* start = p++;
    Spec spec;
    if (!ReadSpec(p, ap, spec)) break;
    const bool narrow = spec.length == Length::Short || spec.length == Length::Char;
    if (IsIntegerConversion(spec.conversion)) {
      PutInteger(out, spec, ap);
      continue;
    }
    if (IsFloatingConversion(spec.conversion)) {
      PutFloating(out, spec, ap);
      continue;
    }
    switch (spec.conversion) {
      case u'%': out.Put(u'%'); break;
      case u'p': {
        NumberText number;
        number.text = FormatNarrow(NarrowSpec(spec, spec.precision, "p"), va_arg(ap, void*));
        number.zerosAt = number.text.size();
        PutNumber(out, spec, number);
        break;
      }
      case u'c':
      case u'C': {
        const bool narrowChar = narrow || (spec.conversion == u'C' && spec.length != Length::Long);
        const int value = va_arg(ap, int);
        const char16_t unit = narrowChar ? static_cast<char16_t>(static_cast<unsigned char>(value))
                                         : static_cast<char16_t>(value);
        PutText(out, spec, &unit, 1);
        break;
      }
      case u's':
      case u'S':
        if (narrow || (spec.conversion == u'S' && spec.length != Length::Long)) {
          PutString(out, spec, va_arg(ap, const char*));
        } else {
          PutString(out, spec, va_arg(ap, const char16_t*));
        }
        break;
      case u'n': (void)va_arg(ap, void*); break;
      default:
        for (const char16_t* q = start; q <= p; ++q)
          out.Put(*q);
        break;
    }
  }
  va_end(ap);
  return out.Finish();
}

namespace {

// ReadSpec for a conversion known to hold no '*': no argument is read.
bool ReadSpecWithoutArguments(const char16_t*& p, Spec* spec, ...) {
  va_list none;
  va_start(none, spec);
  const bool complete = ReadSpec(p, none, *spec);
  va_end(none);
  return complete;
}

WideArgument IntegerArgument(Length length) {
  switch (length) {
    case Length::Long: return WideArgument::Long;
    case Length::LongLong:
    case Length::Int64: return WideArgument::LongLong;
    case Length::Size: return WideArgument::Size;
    default: return WideArgument::Int;
  }
}

}  // namespace

WideArgument ConversionArgument(const char16_t* percent, const char16_t** end) {
  const char16_t* p = percent + 1;
  // Flags, width, '.', precision: a '*' among them takes arguments of its own.
  const char16_t* q = p;
  while (*q == u'-' || *q == u'+' || *q == u' ' || *q == u'#' || *q == u'.' ||
         (*q >= u'0' && *q <= u'9') || *q == u'*') {
    if (*q == u'*') {
      if (end) *end = q + 1;
      return WideArgument::Several;
    }
    ++q;
  }
  Spec spec;
  const bool complete = ReadSpecWithoutArguments(p, &spec);
  if (end) *end = complete ? p + 1 : p;
  if (!complete) return WideArgument::Nothing;
  const bool narrow = spec.length == Length::Short || spec.length == Length::Char;
  if (IsIntegerConversion(spec.conversion)) return IntegerArgument(spec.length);
  if (IsFloatingConversion(spec.conversion))
    return spec.length == Length::LongDouble ? WideArgument::LongDouble : WideArgument::Double;
  switch (spec.conversion) {
    case u'c':
    case u'C': return WideArgument::Int;
    case u's':
    case u'S':
      return narrow || (spec.conversion == u'S' && spec.length != Length::Long)
                 ? WideArgument::NarrowText
                 : WideArgument::WideText;
    case u'p': return WideArgument::Pointer;
    case u'n': return WideArgument::Count;
    default: return WideArgument::Nothing;
  }
}

int swprintf(char16_t* buffer, std::size_t count, const char16_t* format, ...) {
  va_list args;
  va_start(args, format);
  const int result = vswprintf(buffer, count, format, args);
  va_end(args);
  return result;
}

int FormatInteger(char* buffer, std::size_t count, long long value) {
  char text[32];
  const int length = ClassicInteger(text, sizeof text, value, 'd');
  return CopyCut(buffer, count, text, length);
}

int FormatDouble(char* buffer, std::size_t count, double value, char conversion, int precision) {
  if (!std::strchr("eEfFgGaA", conversion) || conversion == 0) return -1;
  char text[512];
  int length = ClassicDouble(text, sizeof text, value, conversion, precision);
  if (length >= 0) return CopyCut(buffer, count, text, length);
  const char format[] = {'%', '.', '*', conversion, 0};
  return snprintf(buffer, count, format, precision, value);
}

int vsnprintf(char* buffer, std::size_t count, const char* format, va_list args) {
  ScopedClassicLocale classic;
  return std::vsnprintf(buffer, count, format, args);
}

int snprintf(char* buffer, std::size_t count, const char* format, ...) {
  va_list args;
  va_start(args, format);
  const int result = vsnprintf(buffer, count, format, args);
  va_end(args);
  return result;
}

}  // namespace lq::detail
