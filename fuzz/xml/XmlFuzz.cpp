// Parses any input; a tree that came out is written by both writers, and each text is parsed and
// written again: the second text must equal the first. Trees whose text form is known to change
// at the next read (see StableAtReread) are written and read without the comparison.
#include <lqtools/text/Unicode.h>
#include <lqtools/xml/XmlDocument.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

using XmlNode = XmlDocument::XmlNode;

namespace {

bool HasUnit(const LqWString& text, const char16_t* units) {
  for (const char16_t* p = text; *p; ++p)
    for (const char16_t* u = units; *u; ++u)
      if (*p == *u) return true;
  return false;
}

// A text as the writers put it into the document: units that don't convert are gone.
std::string Written(const LqWString& text) {
  LqString narrow;
  Utf16ToUtf8(narrow, text);
  return std::string(narrow);
}

bool BeyondAscii(const std::string& text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) >= 0x80) return true;
  return false;
}

// Names are escaped when written but not decoded when read; a name ending in '/' reads back as
// an empty element; an empty name, or one that begins with '/', reads as an end tag; a name
// beyond ASCII with attributes never closes; a value of units that all drop out is written as
// nothing but still counts as a value. Attributes are written raw: a '>' (decoded from an
// overlong form) ends the start tag, and a unit that the writer drops can reorder or merge the
// sorted names.
bool StableAtReread(const XmlNode& node) {
  const std::string tag = Written(node.Tag());
  if (tag.empty() || tag.front() == '/' || tag.back() == '/') return false;
  if (tag.find_first_of("\"&'<>") != std::string::npos) return false;
  if (node.HasAttributes() && BeyondAscii(tag)) return false;
  // The file form tests the value's units for emptiness, not its written text.
  if (!node.HasChilds() && !node.Value().IsEmpty() && Written(node.Value()).empty()) return false;
  for (auto at = node.attributesBegin(); at != node.attributesEnd(); ++at) {
    if (HasUnit(at->first, u">") || HasUnit(at->second, u">")) return false;
    for (const char16_t* p = at->first; *p; ++p)
      if (*p >= 0xD800 && *p <= 0xDFFF) return false;
  }
  for (auto child = node.ChildsBegin(); child != node.ChildsEnd(); ++child)
    if (!StableAtReread(**child)) return false;
  return true;
}

std::string StringForm(const XmlDocument& document) {
  LqString out;
  document.CreateXmlCode(out, true);
  return std::string(static_cast<const char*>(out), static_cast<std::size_t>(out.Length()));
}

std::string FileForm(const XmlDocument& document) {
  char* buffer = nullptr;
  std::size_t size = 0;
  FILE* stream = open_memstream(&buffer, &size);
  if (!stream) std::abort();
  document.SaveXmlCode(stream, true);
  std::fclose(stream);
  std::string text(buffer, size);
  std::free(buffer);
  return text;
}

// Reads `text` back and writes it with the same writer; aborts when that differs.
template <typename Writer>
void CheckReread(const std::string& text, bool stable, Writer write) {
  XmlDocument again;
  const bool parsed = again.Parse(text.c_str());
  if (!stable) return;
  if (!parsed || write(again) != text) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  XmlDocument document;
  if (!document.Parse(input.c_str())) return 0;
  const bool stable = StableAtReread(*document.Root());
  CheckReread(StringForm(document), stable, StringForm);
  CheckReread(FileForm(document), stable, FileForm);

  XmlDocument copy(*document.Root());
  if (!(*copy.Root() == *document.Root())) std::abort();
  return 0;
}
