#include "lqtools/localisation/DatePattern.h"

#include <algorithm>
#include <string>

#include "lqtools/localisation/LqLocaleInformation.h"
#include "lqtools/localisation/detail/UnitBuilder.h"

namespace {

using Builder = lq::detail::UnitBuilder<char16_t, 256>;

// The digits of a value of 0 and up, at least `width` of them: what FormatInteger writes.
void PutNumber(Builder& out, int value, int width) {
  char16_t digits[12];
  int count = 0;
  do {
    digits[count++] = static_cast<char16_t>(u'0' + value % 10);
    value /= 10;
  } while (value > 0 && count < 12);
  if (width > count) out.Repeat(u'0', static_cast<std::size_t>(width - count));
  while (count > 0)
    out.Put(digits[--count]);
}

// The whole name, or its first `limit` units when `limit` is above 0.
void PutName(Builder& out, const LqWString& name, int limit) {
  int length = name.Length();
  if (limit > 0) length = std::min(length, limit);
  out.Put(static_cast<const char16_t*>(name), static_cast<std::size_t>(length));
}

bool IsFieldLetter(char16_t c) {
  return c == u'y' || c == u'M' || c == u'd' || c == u'E' || c == u'H' || c == u'm' || c == u's';
}

struct Fields {
  const LqDateTime& value;
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
};

void PutField(Builder& out, const Fields& fields, char16_t letter, int count) {
  const LqLocaleInformation<LqWString>& record = LocaleInformationWide();
  switch (letter) {
    case u'y': PutNumber(out, fields.year, count); break;
    case u'd': PutNumber(out, fields.day, count); break;
    case u'H': PutNumber(out, fields.hour, count); break;
    case u'm': PutNumber(out, fields.minute, count); break;
    case u's': PutNumber(out, fields.second, count); break;
    case u'M':
      if (count <= 2) {
        PutNumber(out, fields.month, count);
      } else {
        PutName(out, record.monthNames[fields.month - 1], count == 3 ? 3 : 0);
      }
      break;
    case u'E': {
      // The weekday is read only when a pattern asks for it. Far in the value's range the
      // weekday count leaves 1 to 7; such a day has no name and renders as nothing.
      const int day = fields.value.DayOfWeek();
      if (day >= 1 && day <= 7) PutName(out, record.dayOfWeekNames[day - 1], count <= 3 ? 3 : 0);
      break;
    }
    default: break;
  }
}

enum class State { Plain, Field, QuoteOpened, Quoted, QuoteClosing };

}  // namespace

void ParseDate(LqWString& out, const LqWString& pattern, const LqDateTime& dateTime) {
  const int length = pattern.Length();
  if (length == 0) return;
  const Fields fields{dateTime,        dateTime.Year(),   dateTime.Month(), dateTime.Day(),
                      dateTime.Hour(), dateTime.Minute(), dateTime.Second()};
  const char16_t* units = pattern;
  Builder text;
  State state = State::Plain;
  char16_t letter = 0;
  int count = 0;
  for (int i = 0; i < length; ++i) {
    const char16_t c = units[i];
    switch (state) {
      case State::Field:
        if (c == letter) {
          ++count;
          continue;
        }
        PutField(text, fields, letter, count);
        state = State::Plain;
        break;  // c is read again in the plain state
      case State::QuoteOpened:
        text.Put(c);  // two apostrophes outside a quote give one
        state = c == u'\'' ? State::Plain : State::Quoted;
        continue;
      case State::Quoted:
        if (c == u'\'') {
          state = State::QuoteClosing;
        } else {
          text.Put(c);
        }
        continue;
      case State::QuoteClosing:
        if (c == u'\'') {
          text.Put(c);  // a doubled apostrophe inside a quote gives one
          state = State::Quoted;
          continue;
        }
        state = State::Plain;
        break;  // c is read again in the plain state
      case State::Plain: break;
    }
    if (IsFieldLetter(c)) {
      letter = c;
      count = 1;
      state = State::Field;
    } else if (c == u'\'') {
      state = State::QuoteOpened;
    } else {
      text.Put(c);
    }
  }
  if (state == State::Field) PutField(text, fields, letter, count);
  // An unclosed quote is no error: its text is already in place.
  const std::size_t rendered = text.Length();
  if (rendered == 0) return;
  text.Put(0);
  if (std::char_traits<char16_t>::length(text.Data()) != rendered) {
    for (std::size_t i = 0; i < rendered; ++i)  // a zero unit inside a name or a quote
      out += text.At(i);
  } else if (out.IsEmpty()) {
    out.Assign(text.Data(), static_cast<int>(rendered));  // one allocation instead of two
  } else {
    out += text.Data();
  }
}
