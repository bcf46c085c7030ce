// The JSON writers: the wide text in memory and the UTF-8 stream are two walks of the tree that
// give the same text, and saving a document to its file.
#include <cstdio>

#include "lqtools/files/FileOperations.h"
#include "lqtools/json/JsonDocument.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/text/detail/WideFormat.h"

using JsonNode = JsonDocument::JsonNode;

namespace {

// The one escaping rule of both encodings. Only the quote, the backslash and the five named
// control characters are escaped; every other unit, other control characters and non-ASCII
// included, is copied, and '/' is never written as "\/" although the parser reads it.
template <typename Unit, typename Out>
void Escape(const Unit* in, Out& out) {
  out += static_cast<Unit>('"');
  for (const Unit* p = in; p && *p; ++p) {
    char escape;
    switch (*p) {
      case '"': escape = '"'; break;
      case '\\': escape = '\\'; break;
      case '\b': escape = 'b'; break;
      case '\f': escape = 'f'; break;
      case '\n': escape = 'n'; break;
      case '\r': escape = 'r'; break;
      case '\t': escape = 't'; break;
      default: out += *p; continue;
    }
    out += static_cast<Unit>('\\');
    out += static_cast<Unit>(escape);
  }
  out += static_cast<Unit>('"');
}

void Write(FILE* stream, const LqString& text) {
  std::fwrite(static_cast<const char*>(text), 1, static_cast<std::size_t>(text.Length()), stream);
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
    out += u": ";
  }
  switch (m_type) {
    case 0: out += m_intValue != 0 ? u"true" : u"false"; break;
    case 1: out += u"null"; break;
    case 2: {
      char16_t number[64];
      lq::detail::swprintf(number, 64, u"%d", m_intValue);
      out += number;
      break;
    }
    case 3: {
      char16_t number[128];
      lq::detail::swprintf(number, 128, u"%.17g", m_doubleValue);
      out += number;
      break;
    }
    case 4: scapeString(static_cast<const char16_t*>(m_stringValue), out); break;
    case 5: AppendJsonCodeForArray(out); break;
    case 6: AppendJsonCodeForObject(out); break;
    default: break;
  }
}

void JsonNode::AppendJsonCodeForArray(std::u16string& out) const {
  out += u'[';
  for (auto child = m_childs.begin(); child != m_childs.end(); ++child) {
    if (child != m_childs.begin()) out += u',';
    (*child)->AppendJsonCode(out);
  }
  out += u']';
}

void JsonNode::AppendJsonCodeForObject(std::u16string& out) const {
  out += u'{';
  for (auto child = m_childs.begin(); child != m_childs.end(); ++child) {
    if (child != m_childs.begin()) out += u',';
    (*child)->AppendJsonCode(out);
  }
  out += u'}';
}

// ------------------------------------------------------------------------------------------------
// UTF-8 stream

void JsonNode::SaveJsonCode(FILE* stream) const {
  if (!m_name.IsEmpty()) {
    LqString name;
    scapeString(static_cast<const char16_t*>(m_name), name);
    Write(stream, name);
    std::fputs(": ", stream);
  }
  switch (m_type) {
    case 0: std::fputs(m_intValue != 0 ? "true" : "false", stream); break;
    case 1: std::fputs("null", stream); break;
    case 2: {
      char number[64];
      lq::detail::snprintf(number, sizeof number, "%d", m_intValue);
      std::fputs(number, stream);
      break;
    }
    case 3: {
      char number[128];
      lq::detail::snprintf(number, sizeof number, "%.17g", m_doubleValue);
      std::fputs(number, stream);
      break;
    }
    case 4: {
      LqString text;
      scapeString(static_cast<const char16_t*>(m_stringValue), text);
      Write(stream, text);
      break;
    }
    case 5: SaveJsonCodeForArray(stream); break;
    case 6: SaveJsonCodeForObject(stream); break;
    default: break;
  }
}

void JsonNode::SaveJsonCodeForArray(FILE* stream) const {
  std::fputc('[', stream);
  for (auto child = m_childs.begin(); child != m_childs.end(); ++child) {
    if (child != m_childs.begin()) std::fputc(',', stream);
    (*child)->SaveJsonCode(stream);
  }
  std::fputc(']', stream);
}

void JsonNode::SaveJsonCodeForObject(FILE* stream) const {
  std::fputc('{', stream);
  for (auto child = m_childs.begin(); child != m_childs.end(); ++child) {
    if (child != m_childs.begin()) std::fputc(',', stream);
    (*child)->SaveJsonCode(stream);
  }
  std::fputc('}', stream);
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
