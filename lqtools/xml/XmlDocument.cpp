#include "lqtools/xml/XmlDocument.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "lqtools/platform/WideRuntime.h"

XmlDocument::XmlDocument()
    : m_root(nullptr),
      m_fileName(nullptr),
      m_bckFileName(nullptr),
      m_dirty(false),
      m_callback(nullptr) {}

XmlDocument::XmlDocument(const XmlNode& node) : XmlDocument() {
  const XmlDocument* source = node.Document();
  SetFileName(source ? source->FileName() : nullptr);
  Create(node.Tag());
  *m_root = node;
  SetBckFileName(source ? source->BckFileName() : nullptr);
}

XmlDocument::~XmlDocument() {
  // The virtual Reset of a derived class is gone by now; this is the document's own.
  XmlDocument::Reset();
  std::free(m_fileName);
  std::free(m_bckFileName);
}

void XmlDocument::Reset() {
  delete m_root;
  m_root = nullptr;
  m_tags.clear();
  m_dirty = false;
}

void XmlDocument::Create(const char16_t* rootTag) {
  // The tag may be a text of this document, such as the old root's tag, which Reset frees.
  const std::unique_ptr<char16_t, decltype(&std::free)> tag(lq::detail::wcsdup(rootTag),
                                                            &std::free);
  Reset();
  m_root = new XmlNode(this, tag.get(), -1);
}

XmlDocument::XmlNode* XmlDocument::Node(const char16_t* path) {
  return m_root ? m_root->Node(path) : nullptr;
}

const XmlDocument::XmlNode* XmlDocument::Node(const char16_t* path) const {
  return m_root ? m_root->Node(path) : nullptr;
}

LqWString XmlDocument::Value(const char16_t* path, const char16_t* defaultValue) const {
  // Kept: once there is a root the caller's default is ignored, and a missing node reads "".
  return m_root ? m_root->Value(path, u"") : LqWString(defaultValue);
}

const LqWString* XmlDocument::Tag(const char16_t* text, int length) {
  const LqWString key(text, false);
  const auto at = m_tags.lower_bound(key);
  if (at != m_tags.end() && !(key < at->first)) return &at->first;
  return &m_tags.emplace_hint(at, LqWString(text), length)->first;
}

void XmlDocument::SetFileName(const char16_t* name) {
  char16_t* copy = lq::detail::wcsdup(name);
  std::free(m_fileName);
  m_fileName = copy;
}

void XmlDocument::SetBckFileName(const char16_t* name) {
  std::free(m_bckFileName);
  m_bckFileName = nullptr;
  // Kept: the name goes into the file name, so the backup name stays null for good.
  if (name) SetFileName(name);
}

bool XmlDocument::Erase(const char16_t* path) { return m_root && m_root->Erase(path); }
