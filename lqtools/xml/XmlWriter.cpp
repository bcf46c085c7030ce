#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "lqtools/files/FileOperations.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/platform/WideRuntime.h"
#include "lqtools/xml/XmlDocument.h"
#include "lqtools/xml/detail/XmlEscape.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

// Texts of this many units or more are converted with the large growth block.
constexpr int kLargeText = 4096;

const char kHeader[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>";

template <typename T, typename String>
struct StringSink {
  String& out;
  void Put(T c) { out += c; }
  void Text(const T* text) { out += text; }
};

// Gathers small pieces into blocks for fwrite, so that a file save holds no more than one block
// beyond the texts of the element being written.
class FileSink {
 public:
  explicit FileSink(FILE* stream) : m_stream(stream) {}
  ~FileSink() { Flush(); }
  void Put(char c) {
    if (m_used == sizeof m_block) Flush();
    m_block[m_used++] = c;
  }
  void Text(const char* text) {
    for (; *text; ++text)
      Put(*text);
  }
  void Flush() {
    // Write results are not looked at: a save reports only whether its file could be opened.
    if (m_used) std::fwrite(m_block, 1, m_used, m_stream);
    m_used = 0;
  }

 private:
  FILE* m_stream;
  std::size_t m_used = 0;
  char m_block[8192];
};

// Puts `unit` escaped or as it stands.
template <typename Sink>
void PutUnit(Sink& sink, unsigned unit, bool escaped) {
  const char* entity = escaped ? lq::detail::XmlEntityOf(unit) : nullptr;
  if (entity) {
    sink.Text(entity);
  } else {
    sink.Put(static_cast<char>(unit));
  }
}

// The UTF-8 form of `text` up to its first zero unit, escaped with Text2Xml's rules or raw.
// ASCII text goes straight through; anything else takes the way through Utf16ToUtf8.
template <typename Sink>
void PutUtf8(Sink& sink, const LqWString& text, LqString& scratch, bool escaped) {
  const char16_t* p = lq::detail::TextOf(text);
  const char16_t* q = p;
  while (*q && *q < 0x80)
    ++q;
  if (!*q) {
    for (; *p; ++p)
      PutUnit(sink, *p, escaped);
    return;
  }
  // Short texts take the small growth block, so that converting one costs no large allocation.
  scratch.SetGrowth(text.Length() >= kLargeText ? LqString::GrowLargeBlock
                                                : LqString::GrowSmallBlock);
  Utf16ToUtf8(scratch, text);
  for (const char* b = scratch; *b; ++b)
    PutUnit(sink, static_cast<unsigned char>(*b), escaped);
}

// One element with everything below it. `fileForm` writes an element without children and
// without text as <x/>; the string form always writes <x></x>.
template <typename Sink>
void WriteElement(const XmlNode& node, Sink& sink, LqString& scratch, bool fileForm) {
  const LqWString& tag = node.Tag();
  sink.Put('<');
  PutUtf8(sink, tag, scratch, true);
  for (auto at = node.attributesBegin(); at != node.attributesEnd(); ++at) {
    // Kept: attribute names and values are written unescaped; the reader takes them back as
    // they stand.
    sink.Put(' ');
    PutUtf8(sink, at->first, scratch, false);
    sink.Text("=\"");
    PutUtf8(sink, at->second, scratch, false);
    sink.Put('"');
  }
  const LqWString& value = node.Value();
  if (fileForm && !node.HasChilds() && value.IsEmpty()) {
    sink.Text("/>");
    return;
  }
  sink.Put('>');
  for (auto child = node.ChildsBegin(); child != node.ChildsEnd(); ++child)
    WriteElement(**child, sink, scratch, fileForm);
  if (value.Length() >= 1) PutUtf8(sink, value, scratch, true);
  sink.Text("</");
  PutUtf8(sink, tag, scratch, true);
  sink.Put('>');
}

template <typename T, typename Traits>
void EscapeInto(LqBasicString<T, Traits>& out, const LqBasicString<T, Traits>& text) {
  out.SetGrowthIfNone(LqBasicString<T, Traits>::GrowLargeBlock);
  std::basic_string<T> escaped;
  StringSink<T, std::basic_string<T>> sink{escaped};
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
  // Built in a standard string, which grows geometrically, and appended in one piece: a block
  // that grows by a fixed slack would be copied over and over wherever the system can't extend
  // it in place. The writer never puts a zero byte into the text.
  std::string text;
  StringSink<char, std::string> sink{text};
  WriteElement(*this, sink, scratch, false);
  out += text.c_str();
}

void XmlNode::SaveXmlCode(FILE* stream) const {
  if (!stream) return;
  LqString scratch;
  FileSink sink(stream);
  WriteElement(*this, sink, scratch, true);
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
