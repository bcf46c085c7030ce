// XmlDocument::LoadNodeByPath: one branch out of a large XML file without loading the file.
//
// The file streams through a buffer of the caller's size into `content`, which holds only what
// has been read and not yet consumed. A stack of open tag names tells when the reader stands in
// the goal; nodes are built only from there, and reading stops at the goal's end tag. The reader
// is made for the plain element style of the library's own files and reports every fault in a
// log, unlike the parser. Tags are taken in pairs as they come: the first of a pair is taken as
// plain text, only the second has its attributes parsed. Kept: files written for this reader
// rely on exactly that behaviour, so it must not be "fixed" into a real parser.
#include <cctype>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <stack>
#include <string>
#include <string_view>
#include <vector>

#include "lqtools/files/LqLog.h"
#include "lqtools/xml/XmlDocument.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

// Byte to unit with sign extension, as LqWString widens: no decoding, no entities.
std::u16string Widen(const std::string& text) {
  std::u16string out;
  out.reserve(text.size());
  for (const char c : text)
    out.push_back(static_cast<char16_t>(static_cast<signed char>(c)));
  return out;
}

// Unit to its low byte, as LqString narrows.
std::string Narrow(const char16_t* begin, const char16_t* end) {
  std::string out;
  out.reserve(static_cast<std::size_t>(end - begin));
  for (const char16_t* p = begin; p != end; ++p)
    out.push_back(static_cast<char>(*p & 0xFF));
  return out;
}

void LogUncontrolled() {
  // Kept: the text is written in bytes C3 B3 exactly as log readers know it, the UTF-8 form of
  // the accented letter that reads as two Latin-1 characters.
  printlog("Houston... situaci\xC3\xB3n no controlada!\n");
}

// What has been read and not yet consumed. Cutting at the front only moves a start offset; the
// consumed bytes are dropped once they make up more than half of the text, so that the cost of a
// cut does not grow with the block size.
class Content {
 public:
  std::string_view View() const { return std::string_view(m_text).substr(m_start); }
  std::size_t Size() const { return m_text.size() - m_start; }
  std::size_t Find(std::string_view text, std::size_t from = 0) const {
    return View().find(text, from);
  }
  std::size_t Find(char c, std::size_t from = 0) const { return View().find(c, from); }
  void CutFront(std::size_t count) {
    m_start += count;
    if (m_start > 4096 && m_start * 2 > m_text.size()) {
      m_text.erase(0, m_start);
      m_start = 0;
    }
  }
  void Append(const char* bytes, std::size_t count) { m_text.append(bytes, count); }

 private:
  std::string m_text;
  std::size_t m_start = 0;
};

// The text between the first '<' and the first '>' behind it, or empty.
std::string_view NextTag(std::string_view text) {
  const std::size_t open = text.find('<');
  if (open == std::string_view::npos) return std::string_view();
  const std::size_t close = text.find('>', open + 1);
  if (close == std::string_view::npos) return std::string_view();
  return text.substr(open + 1, close - open - 1);
}

// The file and the read buffer of one call. Each read asks for at most size - 1 bytes, ends them
// with a zero and appends to the content what stands in front of the first zero byte.
class BlockReader {
 public:
  BlockReader(FILE* file, unsigned long long bufferSize)
      : m_file(file), m_size(bufferSize < 2 ? 2 : bufferSize), m_buffer(new char[m_size]) {}
  ~BlockReader() { std::fclose(m_file); }
  BlockReader(const BlockReader&) = delete;
  BlockReader& operator=(const BlockReader&) = delete;

  // The number of bytes the read brought, 0 at the end of the file or on an error.
  std::size_t Read(Content& content) {
    const std::size_t got = std::fread(m_buffer.get(), 1, m_size - 1, m_file);
    m_buffer[got] = 0;
    content.Append(m_buffer.get(), std::strlen(m_buffer.get()));
    return got;
  }
  bool AtEnd() const { return std::feof(m_file) != 0; }

 private:
  FILE* m_file;
  std::size_t m_size;
  std::unique_ptr<char[]> m_buffer;
};

// Cuts `content` behind the first `marker`, reading blocks until it turns up. False when a read
// brings nothing first.
bool SkipBehind(BlockReader& reader, Content& content, std::string_view marker) {
  // Each search starts where the previous one could not have seen a whole marker.
  std::size_t from = 0;
  for (;;) {
    const std::size_t found = content.Find(marker, from);
    if (found != std::string_view::npos) {
      content.CutFront(found + marker.size());
      return true;
    }
    from = content.Size() < marker.size() ? 0 : content.Size() - marker.size() + 1;
    if (reader.Read(content) == 0) return false;
    if (content.Find(marker, from) == std::string_view::npos && reader.AtEnd()) return false;
  }
}

// The root phase: the end of the file after a read fails the search even when that read brought
// the wanted character. Kept: this is the one place where the buffer size changes the result.
bool SkipRootCharacter(BlockReader& reader, Content& content, char wanted) {
  for (std::size_t from = 0;;) {
    const std::size_t found = content.Find(wanted, from);
    if (found != std::string_view::npos) {
      content.CutFront(found + 1);
      return true;
    }
    from = content.Size();
    if (reader.Read(content) == 0 || reader.AtEnd()) return false;
  }
}

}  // namespace

std::string XmlDocument::GetNextTagFromString(const std::string& text) {
  return std::string(NextTag(text));
}

bool XmlDocument::IsAllWhitespace(const std::string& text) {
  for (const char c : text)
    if (!std::isspace(static_cast<unsigned char>(c))) return false;
  return true;
}

bool XmlDocument::IsGoalNodeInTheStack(const std::u16string& path, std::stack<std::string>& tags) {
  if (path.size() < 2 || tags.empty()) return false;
  std::vector<std::string> outermostFirst;
  outermostFirst.reserve(tags.size());
  for (std::stack<std::string> copy = tags; !copy.empty(); copy.pop())
    outermostFirst.push_back(copy.top());

  std::size_t position = 0;
  for (auto tag = outermostFirst.rbegin();; ++tag) {
    if (tag == outermostFirst.rend()) return false;  // the path is longer than the stack
    if (position >= path.size() || path[position] != u'/') return false;
    const std::size_t next = path.find(u'/', position + 1);
    const std::size_t stepEnd = next == std::u16string::npos ? path.size() : next;
    const std::string step = Narrow(path.data() + position + 1, path.data() + stepEnd);
    if (step != *tag) return false;
    if (next == std::u16string::npos) return true;
    position = next;
  }
}

XmlNode* XmlDocument::LoadNodeByPath(const std::u16string& fileName, const std::u16string& path,
                                     unsigned long long bufferSize) {
  const LqString narrowName(fileName.c_str());
  const char* name = narrowName;
  FILE* file = std::fopen(name ? name : "", "rb");
  if (!file) {
    printExceptionLog(u"XmlDocument::LoadNodeByPath: failed to open file '%ls'!", fileName.c_str());
    return nullptr;
  }
  BlockReader reader(file, bufferSize);
  Content content;

  if (!SkipBehind(reader, content, "<?xml") || !SkipBehind(reader, content, "?>")) {
    printExceptionLog(
        u"XmlDocument::LoadNodeByPath: wrong formatted XML file - no header '<?xml ... ?>' tag "
        u"found!");
    return nullptr;
  }
  // The root's start tag is dropped unseen, with its attributes.
  if (!SkipRootCharacter(reader, content, '<') || !SkipRootCharacter(reader, content, '>')) {
    printExceptionLog(
        u"XmlDocument::LoadNodeByPath: wrong formatted XML file - no 'first level tag' found!");
    return nullptr;
  }

  std::stack<std::string> tags;
  std::stack<XmlNode*> nodes;
  std::map<std::string, std::string> attributes;
  std::unique_ptr<XmlNode> result;  // owns every node built below it
  bool inside = false;

  auto cutBehind = [&content](const std::string& text, std::size_t from = 0) {
    const std::size_t found = content.Find(text, from);
    if (found == std::string_view::npos) return false;
    content.CutFront(found + text.size());
    return true;
  };
  auto newNode = [](const std::string& tag) {
    return new XmlNode(nullptr, Widen(tag).c_str(), -1);
  };

  for (bool secondOfPair = false;; secondOfPair = !secondOfPair) {
    std::string tag;
    while ((tag = NextTag(content.View())).empty()) {
      if (reader.Read(content) == 0) {
        LogUncontrolled();
        return nullptr;
      }
    }

    if (tag[0] == '/') {
      // With nothing on the stack there is nothing to match, not even a lone "/".
      const std::string top = tags.empty() ? std::string() : tags.top();
      if (tags.empty() || tag.compare(1, std::string::npos, top) != 0) {
        printExceptionLog(
            u"XmlDocument::LoadNodeByPath: wrong formatted XML file, tag '/%ls' not found!",
            Widen(top).c_str());
        return nullptr;
      }
      tags.pop();
      const std::string whole = "<" + tag + ">";
      const std::size_t found = content.Find(whole);
      if (found == std::string_view::npos) {
        LogUncontrolled();
        return nullptr;
      }
      if (inside && !nodes.empty()) {
        const std::string text(content.View().substr(0, found));
        if (!IsAllWhitespace(text)) nodes.top()->SetValue(LqWString(Widen(text).c_str()));
        nodes.pop();
      }
      content.CutFront(found + whole.size());
      if (inside && !IsGoalNodeInTheStack(path, tags)) return result.release();
      continue;
    }

    if (!secondOfPair) {
      // First of a pair: the whole tag text, attributes included, is the name.
      tags.push(tag);
      if (!result) {
        if (IsGoalNodeInTheStack(path, tags)) {
          result.reset(new XmlNode(nullptr, path.c_str(), -1));
          nodes.push(result.get());
          inside = true;
        }
      } else if (inside) {
        XmlNode* child = newNode(tag);
        nodes.top()->AddChild(child);
        nodes.push(child);
      }
      if (!cutBehind("<" + tag + ">")) {
        LogUncontrolled();
        return nullptr;
      }
      continue;
    }

    // Second of a pair: name="value" pairs behind blanks; single quotes are not known.
    attributes.clear();
    for (std::size_t blank = tag.find(' '); blank != std::string::npos;) {
      const std::size_t equals = tag.find('=', blank);
      if (equals == std::string::npos) break;
      const std::size_t quote = tag.find('"', equals + 2);
      if (quote == std::string::npos) break;
      attributes[tag.substr(blank + 1, equals - blank - 1)] =
          tag.substr(equals + 2, quote - equals - 2);
      blank = tag.find(' ', quote);
    }
    if (!attributes.empty()) tag.erase(tag.find(' '));
    tags.push(tag);

    auto withAttributes = [&](XmlNode* node) {
      for (const auto& [key, value] : attributes)
        node->setAttribute(Widen(key).c_str(), Widen(value).c_str());
      return node;
    };
    if (result && inside) {
      XmlNode* child = withAttributes(newNode(tag));
      nodes.top()->AddChild(child);
      nodes.push(child);
    } else if (!result && IsGoalNodeInTheStack(path, tags)) {
      result.reset(withAttributes(new XmlNode(nullptr, path.c_str(), -1)));
      nodes.push(result.get());
      inside = true;
    }

    const bool found = attributes.empty() ? cutBehind("<" + tag + ">") : [&] {
      const std::size_t start = content.Find("<" + tag);
      return start != std::string_view::npos && cutBehind(">", start + tag.size() + 1);
    }();
    if (!found) {
      LogUncontrolled();
      return nullptr;
    }
  }
}
