#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "lqtools/files/FileOperations.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/platform/WideRuntime.h"
#include "lqtools/xml/XmlDocument.h"
#include "lqtools/xml/detail/XmlEscape.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

// The files read in blocks of this many bytes.
constexpr std::size_t kReadBlock = 65536;

// Elements nested deeper than this are refused, and the parse fails. Every operation on a tree
// recurses once per level, so the limit keeps parsing, writing, copying and destroying any tree
// that Parse built well inside a default 8 MB thread stack, sanitizers included.
constexpr int kMaxDepth = 2000;

// Text runs of more bytes than this are decoded with the large growth block.
constexpr std::size_t kLargeRun = 4095;

bool IsAscii(const char* begin, const char* end) {
  for (; begin != end; ++begin)
    if (static_cast<unsigned char>(*begin) >= 0x80) return false;
  return true;
}

// Decodes the five entities of [begin, end) into `out`, which is emptied first.
template <typename T, typename Out>
void DecodeEntities(const T* begin, const T* end, Out& out) {
  for (const T* p = begin; p < end; ++p) {
    if (*p == static_cast<T>('&')) {
      T decoded;
      const int consumed = lq::detail::DecodeXmlEntity(p + 1, decoded);
      if (consumed) {
        out += decoded;
        p += consumed;
        continue;
      }
    }
    out += *p;
  }
}

template <typename T, typename Traits>
void DecodeInto(LqBasicString<T, Traits>& out, const LqBasicString<T, Traits>& text) {
  out.SetGrowthIfNone(LqBasicString<T, Traits>::GrowLargeBlock);
  // Built aside and assigned in one piece: `text` may be `out` itself, and a long text is not
  // grown block by block.
  std::basic_string<T> decoded;
  const T* begin = lq::detail::TextOf(text);
  DecodeEntities(begin, begin + text.Length(), decoded);
  out.Assign(decoded.data(), static_cast<int>(decoded.size()));
}

// A UTF-16 text from the bytes [begin, end) of a text known to be ASCII.
void Widen(std::u16string& out, const char* begin, const char* end) {
  const std::size_t at = out.size();
  out.resize(at + static_cast<std::size_t>(end - begin));
  char16_t* to = &out[at];
  for (; begin != end; ++begin)
    *to++ = static_cast<char16_t>(*begin);
}

// Interned tags by the bytes of their ASCII names, so that most nodes of a parse spare the tag
// table its lookup. Open addressing over a power-of-two table, kept at most half full.
class TagIndex {
 public:
  // Small to start with: templates and messages are parsed by the thousand, most of a few tags.
  TagIndex() : m_slots(32) {}

  // The slot of `name`: its tag, or null when the name is new and the caller must fill it in.
  const LqWString*& Find(const char* name, std::size_t length) {
    uint32_t hash = 2166136261u;
    for (std::size_t i = 0; i < length; ++i)
      hash = (hash ^ static_cast<unsigned char>(name[i])) * 16777619u;
    if (2 * (m_used + 1) > m_slots.size()) Grow();
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
      Slot& slot = m_slots[i];
      if (!slot.tag) {
        slot = Slot{name, length, hash, nullptr};
        ++m_used;
        return slot.tag;
      }
      if (slot.hash == hash && slot.length == length && std::memcmp(slot.name, name, length) == 0)
        return slot.tag;
    }
  }

 private:
  struct Slot {
    const char* name;
    std::size_t length;
    uint32_t hash;
    const LqWString* tag;
  };

  void Grow() {
    std::vector<Slot> old(m_slots.size() * 2);
    old.swap(m_slots);
    const std::size_t mask = m_slots.size() - 1;
    for (const Slot& slot : old) {
      if (!slot.tag) continue;
      std::size_t i = slot.hash & mask;
      while (m_slots[i].tag)
        i = (i + 1) & mask;
      m_slots[i] = slot;
    }
  }

  std::vector<Slot> m_slots;
  std::size_t m_used = 0;
};

}  // namespace

void Xml2Text(LqString& out, const LqString& text) { DecodeInto(out, text); }
void Xml2Text(LqWString& out, const LqWString& text) { DecodeInto(out, text); }

// What one Parse shares between the levels of its recursion.
struct XmlDocument::ParseState {
  // Decodes text runs that are not ASCII; its growth follows the length of the run.
  LqWString work{LqWString::GrowSmallBlock};
  // The text of every open element, each element's from the offset it noted at its start.
  std::u16string content;
  std::u16string scratch;
  std::u16string pair;
  TagIndex tags;
};

bool XmlDocument::Parse(const char* text) {
  Reset();
  if (!text) return false;
  const char* p = text;
  if (std::strncmp(p, "\xEF\xBB\xBF", 3) == 0) p += 3;
  if (p[0] == '<' && p[1] == '?') {
    // Kept: the header ends at its first '?', so a '?' inside it fails the parse.
    const char* question = std::strchr(p + 2, '?');
    if (!question || question[1] != '>') return false;
    p = question + 2;
  }
  if (!*p) return false;
  p = std::strchr(p, '<');
  if (!p) return false;
  m_root = ParseNode(&p);
  return m_root != nullptr;
}

XmlNode* XmlDocument::ParseNode(const char** cursor) {
  ParseState state;
  return ParseNode(cursor, state, 1);
}

XmlNode* XmlDocument::ParseNode(const char** cursor, ParseState& state, int depth) {
  if (!cursor || !*cursor || **cursor != '<' || depth > kMaxDepth) return nullptr;
  const char* tagBegin = *cursor + 1;
  // Kept: the start tag ends at its first '>', also inside a quoted attribute value.
  const char* tagEnd = std::strchr(tagBegin, '>');
  if (!tagEnd) return nullptr;
  *cursor = tagEnd + 1;

  std::unique_ptr<XmlNode> node;
  // Bytes of the start tag that the end tag must repeat.
  std::size_t closing = static_cast<std::size_t>(tagEnd - tagBegin);
  bool empty;

  if (IsAscii(tagBegin, tagEnd)) {
    const auto* blank =
        static_cast<const char*>(std::memchr(tagBegin, ' ', static_cast<std::size_t>(closing)));
    const bool slash = tagEnd != tagBegin && tagEnd[-1] == '/';
    const char* nameEnd = blank ? blank : tagEnd;
    if (blank) closing = static_cast<std::size_t>(blank - tagBegin) + (slash ? 1 : 0);
    empty = slash || (nameEnd != tagBegin && nameEnd[-1] == '/');
    if (empty && !(blank && slash)) --nameEnd;

    const LqWString*& tag = state.tags.Find(tagBegin, static_cast<std::size_t>(nameEnd - tagBegin));
    if (!tag) {
      state.scratch.clear();
      Widen(state.scratch, tagBegin, nameEnd);
      tag = Tag(state.scratch.c_str(), -1);
    }
    node.reset(new XmlNode(this));
    node->m_tag = tag;
    if (blank) {
      state.scratch.clear();
      Widen(state.scratch, blank + 1, slash ? tagEnd - 1 : tagEnd);
      const char16_t* attributes = state.scratch.data();
      ParseNodeAttributes(node.get(), attributes, attributes + state.scratch.size(), state.pair);
    }
  } else {
    LqWString& tag = state.work;
    Utf8ToUtf16(tag, tagBegin, static_cast<int>(closing));
    const int blank = tag.Find(u' ', 0);
    LqWString attributes;
    if (blank >= 0) {
      if (tag.EndsWith(u"/")) {
        attributes = tag.Mid(blank + 1, tag.Length() - blank - 2);
        LqWString name = tag.Left(blank);
        name += u'/';
        tag = name;
      } else {
        attributes = tag.Mid(blank + 1, tag.Length());
        tag = tag.Left(blank);
      }
      // Kept: a count of units, compared against bytes at the end tag, so that an element with
      // a name beyond ASCII and attributes never closes.
      closing = static_cast<std::size_t>(tag.Length());
    }
    empty = tag.EndsWith(u"/");
    if (empty) tag = tag.Left(tag.Length() - 1);
    node.reset(new XmlNode(this, tag, -1));
    if (blank >= 0) ParseNodeAttributes(node.get(), attributes);
  }
  if (empty) return node.release();

  const std::size_t contentStart = state.content.size();
  const char* p = *cursor;
  for (;;) {
    if (!*p) return nullptr;
    if (*p != '<') {
      const char* next = std::strchr(p, '<');
      if (!next) return nullptr;
      if (IsAscii(p, next)) {
        Widen(state.content, p, next);
      } else {
        const int bytes = static_cast<int>(next - p);
        if (static_cast<std::size_t>(bytes) > kLargeRun)
          state.work.SetGrowth(LqWString::GrowLargeBlock);
        Utf8ToUtf16(state.work, p, bytes);
        state.work.SetGrowth(LqWString::GrowSmallBlock);
        state.content.append(static_cast<const char16_t*>(state.work), state.work.Length());
      }
      p = next;
      continue;
    }
    if (p[1] == '/') {
      p += 2;
      // strncmp stops at the end of the text; the start tag holds no zero byte.
      if (std::strncmp(p, tagBegin, closing) != 0 || p[closing] != '>') return nullptr;
      *cursor = p + closing + 1;
      const char16_t* begin = state.content.data() + contentStart;
      const char16_t* end = state.content.data() + state.content.size();
      LqWString& value = node->ValueObject();
      if (std::char_traits<char16_t>::find(begin, static_cast<std::size_t>(end - begin), u'&')) {
        state.scratch.clear();
        DecodeEntities(begin, end, state.scratch);
        value.Assign(state.scratch.data(), static_cast<int>(state.scratch.size()));
      } else {
        value.Assign(begin, static_cast<int>(end - begin));
      }
      state.content.resize(contentStart);
      return node.release();
    }
    std::unique_ptr<XmlNode> child(ParseNode(&p, state, depth + 1));
    if (!child) return nullptr;
    node->m_childs.push_back(child.get());
    child.release();
  }
}

void XmlDocument::ParseNodeAttributes(XmlNode* node, const LqWString& text) {
  const char16_t* begin = lq::detail::TextOf(text);
  std::u16string pair;
  ParseNodeAttributes(node, begin, begin + text.Length(), pair);
}

void XmlDocument::ParseNodeAttributes(XmlNode* node, const char16_t* begin, const char16_t* end,
                                      std::u16string& pair) {
  // A search ends at a zero unit as well, as on a terminated copy of the rest.
  auto find = [](const char16_t* from, const char16_t* to, char16_t c) {
    for (const char16_t* at = from; at != to && *at; ++at)
      if (*at == c) return at;
    return to;
  };
  // Kept: the closing quote is the first '"' left, whichever quote opened the value; a '\''
  // closes only when no '"' follows anywhere in the list.
  auto findQuote = [&](const char16_t* from, const char16_t* to) {
    const char16_t* at = find(from, to, u'"');
    return at != to ? at : find(from, to, u'\'');
  };
  const char16_t* rest = begin;
  while (rest != end) {
    while (rest != end && LqWideChar::IsSpace(*rest))
      ++rest;
    while (end - rest > 1 && LqWideChar::IsSpace(end[-1]))
      --end;
    const char16_t* equals = find(rest, end, u'=');
    if (equals == end) return;
    const char16_t* open = findQuote(equals + 1, end);
    if (open == end || open != equals + 1) return;
    const char16_t* close = findQuote(open + 1, end);
    if (close == end) return;
    // Kept: the name is not trimmed, so "x =" gives the name "x ".
    pair.assign(rest, equals);
    pair += u'\0';
    pair.append(open + 1, close);
    node->setAttribute(pair.c_str(), pair.c_str() + (equals - rest) + 1);
    rest = close + 1;
  }
}

bool XmlDocument::Load(const char16_t* fileName) {
  // The name may be a value of this document's tree, which Reset frees.
  const std::unique_ptr<char16_t, decltype(&std::free)> name(lq::detail::wcsdup(fileName),
                                                             &std::free);
  Reset();
  SetFileName(name.get());
  return Load();
}

bool XmlDocument::Load() {
  if (!m_fileName || !*m_fileName) return false;
  FILE* stream = widefopen(m_fileName, u"r");
  if (!stream) return false;
  // Read to the end rather than trusting a size taken beforehand: the buffer holds exactly what
  // was read, with a terminator behind it, so that an unfinished file fails the parse.
  std::vector<char> buffer;
  std::size_t used = 0;
  for (;;) {
    buffer.resize(used + kReadBlock);
    const std::size_t got = std::fread(buffer.data() + used, 1, kReadBlock, stream);
    // Parse stops at a zero byte, so nothing behind one is needed; this also ends the read of an
    // endless device such as /dev/zero.
    const bool zero = std::memchr(buffer.data() + used, 0, got) != nullptr;
    used += got;
    if (got < kReadBlock || zero) break;
  }
  std::fclose(stream);
  buffer.resize(used + 1);
  buffer[used] = 0;
  return Parse(buffer.data());
}

bool XmlDocument::Load(const char16_t* fileName, const char16_t* bckFileName) {
  // Either name may be this document's own file name, which the calls below release.
  const std::unique_ptr<char16_t, decltype(&std::free)> file(lq::detail::wcsdup(fileName),
                                                             &std::free);
  const std::unique_ptr<char16_t, decltype(&std::free)> backupName(lq::detail::wcsdup(bckFileName),
                                                                   &std::free);
  fileName = file.get();
  bckFileName = backupName.get();
  SetBckFileName(bckFileName);
  if (!Load(fileName)) {
    if (!Load(bckFileName)) return false;
    if (!SaveAs(fileName)) return false;
    return Load(fileName);
  }
  if (!m_bckFileName || !*m_bckFileName) return true;
  XmlDocument backup;
  if (!backup.Load(bckFileName)) {
    backup.Load(fileName);
    backup.SaveAs(bckFileName);
  }
  return true;
}
