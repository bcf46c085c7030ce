// The text forms that are members of LqDateTime: the text constructor with its two parsers, the
// fixed-place SetDateTime and GetDateTime, and the ISO 8601 and plain digit writers.
#include <exception>

#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/datetime/detail/TextFormat.h"
#include "lqtools/platform/Truncation.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/platform/WideRuntime.h"

namespace {

// wcstod of the units [begin, end) of `text`, truncated to an integer. An empty run reads 0.
int ReadNumber(const char16_t* text, std::size_t begin, std::size_t end) {
  const std::u16string field(text + begin, end > begin ? end - begin : 0);
  return lq::detail::TruncateToInt32(lq::detail::wcstod(field.c_str(), nullptr));
}

// Reads delimited fields one after the other; the first missing delimiter fails the whole
// parse. A field is read by wcstod from its own copy, so text past the delimiter is never seen.
class FieldCutter {
 public:
  explicit FieldCutter(const std::u16string& text) : m_text(text) {}

  // The field up to the next `delimiter`, or up to the end of the text with 0.
  bool Next(char16_t delimiter, int& value) {
    if (!m_ok) return false;
    std::size_t end = m_text.size();
    if (delimiter != 0) {
      end = m_text.find(delimiter, m_position);
      if (end == std::u16string::npos) return m_ok = false;
    }
    value = ReadNumber(m_text.c_str(), m_position, end);
    m_position = end + 1;
    return true;
  }

 private:
  const std::u16string& m_text;
  std::size_t m_position = 0;
  bool m_ok = true;
};

// Year, month, day, hour, minute, second and milliseconds through `format`, which may leave the
// milliseconds unread.
template <typename T>
std::basic_string<T> IsoText(const LqDateTime& v, const T* format) {
  T text[32];
  lq::detail::FormatText(text, 32, format, v.Year(), v.Month(), v.Day(), v.Hour(), v.Minute(),
                         v.Second(), v.MSecond());
  return text;
}

void ThrowUnlessComplete(uint32_t seconds, int32_t microseconds) {
  if (seconds == LqDateTime::kInvalidSeconds || static_cast<uint32_t>(microseconds) > 999999u)
    throw std::exception();
}

}  // namespace

LqDateTime::LqDateTime(const std::u16string& text) {
  ParseOldFormatWString(text);
  if (!isValidDate()) ParseISO8601FormatWString(text);
}

void LqDateTime::ParseOldFormatWString(const std::u16string& text) {
  FieldCutter cutter(text);
  int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
  if (!cutter.Next(u'/', day) || !cutter.Next(u'/', month) || !cutter.Next(u' ', year) ||
      !cutter.Next(u':', hour) || !cutter.Next(u':', minute) || !cutter.Next(0, second)) {
    Invalidate();
    return;
  }
  SetDateTime(year, month, day, hour, minute, second, 0, 0);
}

// Text behind the Z is not read; an offset such as +01:00 leaves no Z and fails.
void LqDateTime::ParseISO8601FormatWString(const std::u16string& text) {
  FieldCutter cutter(text);
  int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
  if (!cutter.Next(u'-', year) || !cutter.Next(u'-', month) || !cutter.Next(u'T', day) ||
      !cutter.Next(u':', hour) || !cutter.Next(u':', minute) || !cutter.Next(u'Z', second)) {
    Invalidate();
    return;
  }
  SetDateTime(year, month, day, hour, minute, second, 0, 0);
}

void LqDateTime::SetDateTime(const char16_t* text, int format, char16_t /*separator*/) {
  const std::size_t length = lq::detail::wcslen(text);
  if (length < 19) return;

  int year = 0, month = 0, day = 0;
  char16_t divider = u' ';
  if (format == 0 || format == 2) {
    year = ReadNumber(text, 0, 4);
    month = ReadNumber(text, 5, 7);
    day = ReadNumber(text, 8, 10);
    if (format == 2) divider = u'T';
  } else if (format == 1) {
    year = ReadNumber(text, 6, 10);
    month = ReadNumber(text, 3, 5);
    day = ReadNumber(text, 0, 2);
  }

  // Hour, minute and second take two units, milliseconds and microseconds three; the fields
  // are divided by ':' alone, whatever the time separator.
  int fields[5] = {0, 0, 0, 0, 0};
  std::size_t p = 0;
  while (p < length && text[p] != divider)
    ++p;
  if (p < length) {
    for (int field = 0; field <= 4; ++field) {
      const std::size_t start = p + 1;
      const std::size_t width = field < 3 ? 2 : 3;
      const std::size_t end =
          start >= length ? start : (start + width < length ? start + width : length);
      fields[field] = ReadNumber(text, start, end);
      p = start;
      while (p < length && text[p] != u':')
        ++p;
      if (p >= length) break;
    }
  }
  SetDateTime(year, month, day, fields[0], fields[1], fields[2], fields[3], fields[4]);
}

LqWString LqDateTime::GetDateTime(int format, bool withFraction, const char16_t* dateSeparator,
                                  const char16_t* timeSeparator) const {
  const char16_t* ds = dateSeparator ? dateSeparator : u"";
  const char16_t* ts = timeSeparator ? timeSeparator : u"";
  char16_t date[64] = {};
  char16_t time[64] = {};
  switch (format) {
    case 0:
      lq::detail::swprintf(date, 64, u"%02d%ls%02d%ls%04d ", Month(), ds, Day(), ds, Year());
      break;
    case 1:
      lq::detail::swprintf(date, 64, u"%02d%ls%02d%ls%04d ", Day(), ds, Month(), ds, Year());
      break;
    case 2:
      lq::detail::swprintf(date, 64, u"%04d%ls%02d%ls%02dT", Year(), ds, Month(), ds, Day());
      break;
    default: break;
  }
  if (withFraction) {
    lq::detail::swprintf(time, 64, u"%02d%ls%02d%ls%02d%ls%03d%ls%03d", Hour(), ts, Minute(), ts,
                         Second(), ts, MSecond(), ts, USecond());
  } else {
    lq::detail::swprintf(time, 64, u"%02d%ls%02d%ls%02d", Hour(), ts, Minute(), ts, Second());
  }
  LqWString result(date);
  result += time;
  return result;
}

std::string LqDateTime::ToString() const {
  return IsoText(*this, "%04d-%02d-%02dT%02d:%02d:%02dZ");
}

std::u16string LqDateTime::ToWString() const {
  return IsoText(*this, u"%04d-%02d-%02dT%02d:%02d:%02dZ");
}

std::string LqDateTime::ToCompleteString() const {
  ThrowUnlessComplete(m_seconds, m_microseconds);
  return IsoText(*this, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ");
}

std::u16string LqDateTime::ToCompleteWString() const {
  ThrowUnlessComplete(m_seconds, m_microseconds);
  return IsoText(*this, u"%04d-%02d-%02dT%02d:%02d:%02d.%03dZ");
}

std::string LqDateTime::ToPlainStringReverseDate() const {
  char text[32];
  lq::detail::snprintf(text, sizeof text, "%02d%02d%04d%02d%02d%02d", Day(), Month(), Year(),
                       Hour(), Minute(), Second());
  return text;
}
