#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "lqtools/files/FileOperations.h"
#include "lqtools/platform/WideRuntime.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/text/detail/StringWriter.h"
#include "lqtools/xml/XmlDocument.h"
#include "lqtools/xml/detail/XmlEscape.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

// Texts of this many units or more are converted with the large growth block.
constexpr int kLargeText = 4096;

const char kHeader[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>";

// A sink hands out room for a number of bytes (Room), which the writer fills up to a cursor it
// hands back (Done). It never asks for more than kMostRoom bytes at a time.
constexpr std::size_t kMostRoom = 8192;
// Units of a text written in one piece: each may become an entity of six bytes.
constexpr std::size_t kPieceUnits = kMostRoom / 6;

// Writes behind the text of a string, as one append of the whole element would.
class StringSink {
 public:
  explicit StringSink(LqString& out) : m_writer(out, 0) {}
  char* Room(std::size_t bytes) { return m_writer.Room(m_written, bytes) + m_written; }
  void Done(const char* to) { m_written = static_cast<std::size_t>(to - m_writer.Data()); }
  void Finish() { m_writer.CommitAppend(m_written); }

 private:
  lq::detail::StringWriter<char, LqChar> m_writer;
  std::size_t m_written = 0;
};

// Gathers the text into blocks for fwrite, so that a file save holds no more than one block
// beyond the texts of the element being written.
class FileSink {
 public:
  explicit FileSink(FILE* stream) : m_stream(stream) {}
  ~FileSink() { Flush(); }
  char* Room(std::size_t bytes) {
    if (bytes > sizeof m_block - m_used) Flush();
    return m_block + m_used;
  }
  void Done(const char* to) { m_used = static_cast<std::size_t>(to - m_block); }
  void Finish() { Flush(); }

 private:
  void Flush() {
    // Write results are not looked at: a save reports only whether its file could be opened.
    if (m_used) std::fwrite(m_block, 1, m_used, m_stream);
    m_used = 0;
  }

  FILE* m_stream;
  std::size_t m_used = 0;
  char m_block[kMostRoom];
};

// Which of the 128 ASCII units are written as an entity by the escaping rules.
constexpr std::array<bool, 128> kEscaped = [] {
  std::array<bool, 128> escaped{};
  for (unsigned c = 0; c < 128; ++c)
    escaped[c] = lq::detail::XmlEntityOf(c) != nullptr;
  return escaped;
}();

// Writes a literal piece of markup.
template <typename Sink>
void PutMarkup(Sink& sink, const char* text, std::size_t length) {
  char* to = sink.Room(length);
  std::memcpy(to, text, length);
  sink.Done(to + length);
}

template <typename Sink, std::size_t N>
void PutMarkup(Sink& sink, const char (&text)[N]) {
  PutMarkup(sink, text, N - 1);
}

// Writes the units [p, end), each below 0x100, as bytes, escaped with Text2Xml's rules or raw.
template <typename Sink, typename Unit>
void PutUnits(Sink& sink, const Unit* p, const Unit* end, bool escaped) {
  while (p != end) {
    const std::size_t units = std::min(kPieceUnits, static_cast<std::size_t>(end - p));
    char* to = sink.Room(units * 6);
    for (const Unit* stop = p + units; p != stop; ++p) {
      const auto unit = static_cast<unsigned>(*p) & 0xFFu;
      if (escaped && unit < 128 && kEscaped[unit]) {
        for (const char* entity = lq::detail::XmlEntityOf(unit); *entity; ++entity)
          *to++ = *entity;
      } else {
        *to++ = static_cast<char>(unit);
      }
    }
    sink.Done(to);
  }
}

// The UTF-8 form of `text` up to its first zero unit, escaped with Text2Xml's rules or raw.
// ASCII text goes straight through in one pass; at the first unit beyond ASCII what was written
// is taken back and the whole text takes the way through Utf16ToUtf8.
template <typename Sink>
void PutUtf8(Sink& sink, const LqWString& text, LqString& scratch, bool escaped) {
  const char16_t* p = lq::detail::TextOf(text);
  const char16_t* piece;
  for (;;) {
    piece = p;
    char* to = sink.Room(kPieceUnits * 6);
    const char16_t* const stop = p + kPieceUnits;
    for (; p != stop; ++p) {
      const unsigned unit = *p;
      if (unit - 1 < 127) {
        if (escaped && kEscaped[unit]) {
          for (const char* entity = lq::detail::XmlEntityOf(unit); *entity; ++entity)
            *to++ = *entity;
        } else {
          *to++ = static_cast<char>(unit);
        }
        continue;
      }
      if (unit == 0) {
        sink.Done(to);
        return;
      }
      // Beyond ASCII: nothing of this piece counts, and the rest of the text from its start
      // takes the long way; the pieces before it were ASCII and split no pair.
      break;
    }
    if (p == stop) {
      sink.Done(to);
      continue;
    }
    break;
  }
  // Short texts take the small growth block, so that converting one costs no large allocation.
  scratch.SetGrowth(text.Length() >= kLargeText ? LqString::GrowLargeBlock
                                                : LqString::GrowSmallBlock);
  Utf16ToUtf8(scratch, LqWString(piece, false));
  const char* bytes = scratch;
  PutUnits(sink, bytes, bytes + std::strlen(bytes), escaped);
}

// One element with everything below it. `fileForm` writes an element without children and
// without text as <x/>; the string form always writes <x></x>.
template <typename Sink>
void WriteElement(const XmlNode& node, Sink& sink, LqString& scratch, bool fileForm) {
  const LqWString& tag = node.Tag();
  PutMarkup(sink, "<");
  PutUtf8(sink, tag, scratch, true);
  for (auto at = node.attributesBegin(); at != node.attributesEnd(); ++at) {
    // Kept: attribute names and values are written unescaped; the reader takes them back as
    // they stand.
    PutMarkup(sink, " ");
    PutUtf8(sink, at->first, scratch, false);
    PutMarkup(sink, "=\"");
    PutUtf8(sink, at->second, scratch, false);
    PutMarkup(sink, "\"");
  }
  const LqWString& value = node.Value();
  if (fileForm && !node.HasChilds() && value.IsEmpty()) {
    PutMarkup(sink, "/>");
    return;
  }
  PutMarkup(sink, ">");
  for (auto child = node.ChildsBegin(); child != node.ChildsEnd(); ++child)
    WriteElement(**child, sink, scratch, fileForm);
  if (value.Length() >= 1) PutUtf8(sink, value, scratch, true);
  PutMarkup(sink, "</");
  PutUtf8(sink, tag, scratch, true);
  PutMarkup(sink, ">");
}

template <typename T, typename String>
struct UnitSink {
  String& out;
  void Put(T c) { out += c; }
};

template <typename T, typename Traits>
void EscapeInto(LqBasicString<T, Traits>& out, const LqBasicString<T, Traits>& text) {
  out.SetGrowthIfNone(LqBasicString<T, Traits>::GrowLargeBlock);
  std::basic_string<T> escaped;
  UnitSink<T, std::basic_string<T>> sink{escaped};
  lq::detail::AppendEscaped(sink, static_cast<const T*>(text));
  out.Assign(escaped.data(), static_cast<int>(escaped.size()));
}

struct FileCloser {
  void operator()(FILE* stream) const { std::fclose(stream); }
};

}  // namespace

void Text2Xml(LqString& out, const LqString& text) { EscapeInto(out, text); }
void Text2Xml(LqWString& out, const LqWString& text) { EscapeInto(out, text); }

void XmlNode::CreateXmlCode(LqString& out) const {
  LqString scratch;
  out.SetGrowth(LqString::GrowLargeBlock);
  // Written behind the text in place, the room growing by half, and taken in as one append: a
  // block that grew by its fixed slack would be copied over and over wherever the system can't
  // extend it in place. The writer never puts a zero byte into the text.
  StringSink sink(out);
  WriteElement(*this, sink, scratch, false);
  sink.Finish();
}

void XmlNode::SaveXmlCode(FILE* stream) const {
  if (!stream) return;
  LqString scratch;
  FileSink sink(stream);
  WriteElement(*this, sink, scratch, true);
  sink.Finish();
}

void XmlDocument::CreateXmlCode(LqString& out, bool header) const {
  out = header ? kHeader : "";
  if (m_root) m_root->CreateXmlCode(out);
}

void XmlDocument::SaveXmlCode(FILE* stream, bool header) const {
  if (!stream) return;
  if (header) std::fwrite(kHeader, 1, sizeof kHeader - 1, stream);
  if (m_root) m_root->SaveXmlCode(stream);
}

bool XmlDocument::SaveTo(const char16_t* fileName) const {
  std::unique_ptr<FILE, FileCloser> stream(widefopen(fileName, u"w"));
  if (!stream) {
    if (!CreateDirectoryW(fileName)) return false;
    stream.reset(widefopen(fileName, u"w"));
    if (!stream) return false;
  }
  SaveXmlCode(stream.get(), true);
  return true;
}

bool XmlDocument::Save() const {
  if (!m_fileName || !*m_fileName) return false;
  if (!SaveTo(m_fileName)) return false;
  m_dirty = false;
  if (m_callback) m_callback->OnSaved();
  if (!m_bckFileName || !*m_bckFileName) return true;
  return SaveTo(m_bckFileName);
}

bool XmlDocument::SaveAs(const char16_t* fileName) {
  SetFileName(fileName);
  return Save();
}

bool XmlDocument::SaveAs(const char16_t* fileName, const char16_t* bckFileName) {
  // `fileName` may be this document's own file name, which the first SetFileName releases.
  const std::unique_ptr<char16_t, decltype(&std::free)> file(lq::detail::wcsdup(fileName),
                                                             &std::free);
  SetFileName(bckFileName);
  Save();
  SetFileName(file.get());
  return Save();
}
