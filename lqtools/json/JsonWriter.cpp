// The JSON writers: the wide text in memory and the UTF-8 stream are two walks of the tree that
// give the same text, and saving a document to its file.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <type_traits>

#include "lqtools/files/FileOperations.h"
#include "lqtools/json/JsonDocument.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/platform/WideFormat.h"

using JsonNode = JsonDocument::JsonNode;

namespace {

void AppendRun(std::u16string& out, const char16_t* run, std::size_t count) {
  out.append(run, count);
}
template <typename Unit, typename Traits>
void AppendRun(LqBasicString<Unit, Traits>& out, const Unit* run, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i)
    out += run[i];
}

// The letter that follows the backslash, by character; 0 for a character copied as it is.
constexpr struct EscapeLetters {
  char letter[128] = {};
  constexpr EscapeLetters() {
    const char pairs[][2] = {{'"', '"'},  {'\\', '\\'}, {'\b', 'b'}, {'\f', 'f'},
                             {'\n', 'n'}, {'\r', 'r'},  {'\t', 't'}};
    for (const auto& pair : pairs)
      letter[static_cast<unsigned char>(pair[0])] = pair[1];
  }
} kEscapes;

char EscapeLetter(unsigned c) { return c < 128 ? kEscapes.letter[c] : 0; }

// The one escaping rule of both encodings. Only the quote, the backslash and the five named
// control characters are escaped; every other unit, other control characters and non-ASCII
// included, is copied, and '/' is never written as "\/" although the parser reads it.
template <typename Unit, typename Out>
void Escape(const Unit* in, Out& out) {
  using Code = std::make_unsigned_t<Unit>;
  out += static_cast<Unit>('"');
  for (const Unit* p = in; p && *p;) {
    const Unit* run = p;
    while (*p && !EscapeLetter(static_cast<Code>(*p)))
      ++p;
    AppendRun(out, run, static_cast<std::size_t>(p - run));
    if (!*p) break;
    out += static_cast<Unit>('\\');
    out += static_cast<Unit>(EscapeLetter(static_cast<Code>(*p++)));
  }
  out += static_cast<Unit>('"');
}

// The "%d" text of an integer and the "%.17g" text of a double, in the "C" locale; the length.
int NumberText(char (&text)[128], int32_t value) {
  return lq::detail::FormatInteger(text, sizeof text, value);
}
int NumberText(char (&text)[128], double value) {
  return lq::detail::FormatDouble(text, sizeof text, value, 'g', 17);
}

// A number appended to wide text.
template <typename Value>
void AppendNumber(std::u16string& out, Value value) {
  char number[128];
  const int length = std::min(NumberText(number, value), static_cast<int>(sizeof number) - 1);
  for (int i = 0; i < length; ++i)
    out += static_cast<char16_t>(number[i]);
}

// The stream is locked once per node, so the pieces go out through the unlocked calls.
void Write(FILE* stream, const char* text, std::size_t length) {
  fwrite_unlocked(text, 1, length, stream);
}
void Write(FILE* stream, const char* text) { Write(stream, text, std::strlen(text)); }
void Write(FILE* stream, const LqString& text) {
  Write(stream, text, static_cast<std::size_t>(text.Length()));
}

// A number written to the stream.
template <typename Value>
void WriteNumber(FILE* stream, Value value) {
  char number[128];
  const int length = NumberText(number, value);
  if (length > 0)
    Write(stream, number, std::min(static_cast<std::size_t>(length), sizeof number - 1));
}

// Each child through `writeChild`, with `writeComma` between two.
template <typename WriteChild, typename WriteComma>
void Join(const JsonNode::ChildList& childs, WriteChild writeChild, WriteComma writeComma) {
  for (auto child = childs.begin(); child != childs.end(); ++child) {
    if (child != childs.begin()) writeComma();
    writeChild(**child);
  }
}

}  // namespace

// ------------------------------------------------------------------------------------------------
// Escaping

void JsonNode::scapeString(const char* in, LqString& out) const {
  out.SetGrowthIfNone(LqString::GrowSmallBlock);
  Escape(in, out);
}

void JsonNode::scapeString(const char16_t* in, LqWString& out) const {
  out.SetGrowthIfNone(LqWString::GrowSmallBlock);
  Escape(in, out);
}

void JsonNode::scapeString(const char* in, LqWString& out) const {
  if (!in) {
    out += u"\"\"";
    return;
  }
  LqWString wide;
  Utf8ToUtf16(wide, in);
  scapeString(static_cast<const char16_t*>(wide), out);
}

void JsonNode::scapeString(const char16_t* in, LqString& out) const {
  if (!in) {
    out += "\"\"";
    return;
  }
  LqString utf8;
  Utf16ToUtf8(utf8, LqWString(in, false));
  scapeString(static_cast<const char*>(utf8), out);
}

void JsonNode::scapeString(const char16_t* in, std::u16string& out) const { Escape(in, out); }

// ------------------------------------------------------------------------------------------------
// Wide text

void JsonNode::CreateJsonCode(std::u16string& out) const {
  out.clear();
  AppendJsonCode(out);
}

void JsonNode::AppendJsonCode(std::u16string& out) const {
  if (!m_name.IsEmpty()) {
    scapeString(static_cast<const char16_t*>(m_name), out);
    out.append(u": ", 2);
  }
  switch (m_type) {
    case JsonBoolean:
      if (m_intValue != 0) {
        out.append(u"true", 4);
      } else {
        out.append(u"false", 5);
      }
      break;
    case JsonNull: out.append(u"null", 4); break;
    case JsonInteger: AppendNumber(out, m_intValue); break;
    case JsonFloat: AppendNumber(out, m_doubleValue); break;
    case JsonString: scapeString(static_cast<const char16_t*>(m_stringValue), out); break;
    case JsonArray: AppendJsonCodeForArray(out); break;
    case JsonObject: AppendJsonCodeForObject(out); break;
    default: break;
  }
}

void JsonNode::AppendJsonCodeForArray(std::u16string& out) const {
  out += u'[';
  Join(
      m_childs, [&](const JsonNode& child) { child.AppendJsonCode(out); }, [&] { out += u','; });
  out += u']';
}

void JsonNode::AppendJsonCodeForObject(std::u16string& out) const {
  out += u'{';
  Join(
      m_childs, [&](const JsonNode& child) { child.AppendJsonCode(out); }, [&] { out += u','; });
  out += u'}';
}

// ------------------------------------------------------------------------------------------------
// UTF-8 stream

void JsonNode::SaveJsonCode(FILE* stream) const {
  if (!stream) return;
  flockfile(stream);
  if (!m_name.IsEmpty()) {
    LqString name;
    scapeString(static_cast<const char16_t*>(m_name), name);
    Write(stream, name);
    Write(stream, ": ", 2);
  }
  switch (m_type) {
    case JsonBoolean: Write(stream, m_intValue != 0 ? "true" : "false"); break;
    case JsonNull: Write(stream, "null", 4); break;
    case JsonInteger: WriteNumber(stream, m_intValue); break;
    case JsonFloat: WriteNumber(stream, m_doubleValue); break;
    case JsonString: {
      LqString text;
      scapeString(static_cast<const char16_t*>(m_stringValue), text);
      Write(stream, text);
      break;
    }
    case JsonArray: SaveJsonCodeForArray(stream); break;
    case JsonObject: SaveJsonCodeForObject(stream); break;
    default: break;
  }
  funlockfile(stream);
}

void JsonNode::SaveJsonCodeForArray(FILE* stream) const {
  Write(stream, "[", 1);
  Join(
      m_childs, [&](const JsonNode& child) { child.SaveJsonCode(stream); },
      [&] { Write(stream, ",", 1); });
  Write(stream, "]", 1);
}

void JsonNode::SaveJsonCodeForObject(FILE* stream) const {
  Write(stream, "{", 1);
  Join(
      m_childs, [&](const JsonNode& child) { child.SaveJsonCode(stream); },
      [&] { Write(stream, ",", 1); });
  Write(stream, "}", 1);
}

// ------------------------------------------------------------------------------------------------
// Saving

bool JsonDocument::Save() const {
  if (!m_root) return false;
  FILE* file = widefopen(m_fileName, u"w");
  if (!file) {
    if (!CreateDirectoryW(m_fileName)) return false;
    file = widefopen(m_fileName, u"w");
    if (!file) return false;
  }
  m_root->SaveJsonCode(file);
  std::fclose(file);
  m_dirty = false;
  return true;
}

bool JsonDocument::SaveAs(const char16_t* fileName) {
  SetFileName(fileName);
  return Save();
}
