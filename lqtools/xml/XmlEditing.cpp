#include <algorithm>
#include <cstdarg>

#include "lqtools/platform/WideFormat.h"
#include "lqtools/xml/XmlDocument.h"
#include "lqtools/xml/detail/XmlPath.h"

using XmlNode = XmlDocument::XmlNode;

// ----------------------------------------------------------------------------------------------
// Removing

bool XmlNode::Erase(const char16_t* path) {
  if (!path) return false;
  const XmlNode* parent = nullptr;
  const XmlNode* found = Walk(path, &parent);
  // Unlike a lookup, a path that ends without a step is false: a node never erases itself.
  if (!found || !parent) return false;
  ChildList& childs = const_cast<XmlNode*>(parent)->m_childs;
  childs.erase(std::find(childs.begin(), childs.end(), found));
  delete found;
  return true;
}

bool XmlNode::EraseV(const char16_t* format, ...) {
  char16_t buffer[lq::detail::kXmlPathUnits];
  va_list args;
  va_start(args, format);
  const bool fits = lq::detail::FormatXmlPath(buffer, format, args);
  va_end(args);
  return fits && Erase(buffer);
}

bool XmlNode::EraseTag(const char16_t* tag) {
  // A copy: `tag` may be a text of a child that goes.
  const LqWString name(tag);
  for (auto at = m_childs.begin(); at != m_childs.end();) {
    if ((*at)->Tag() == name) {
      delete *at;
      at = m_childs.erase(at);
    } else {
      ++at;
    }
  }
  return true;
}

// Kept: the index is counted down on the first child with the tag, so it never selects another;
// callers rely on removing that first child.
bool XmlNode::EraseTag(const char16_t* tag, [[maybe_unused]] int index) {
  if (m_childs.empty()) return false;
  const LqWString name(tag, false);
  for (auto at = m_childs.begin(); at != m_childs.end(); ++at) {
    if (!((*at)->Tag() == name)) continue;
    delete *at;
    m_childs.erase(at);
    return true;
  }
  return false;
}

void XmlNode::RemoveChild(XmlNode* child) {
  const std::size_t before = m_childs.size();
  m_childs.remove(child);
  if (m_childs.size() != before) {
    delete child;
    return;
  }
  // Every child is searched, also after a deeper level has found and deleted the node; from then
  // on only the pointer value is compared.
  for (XmlNode* node : m_childs)
    node->RemoveChild(child);
}

bool XmlNode::eraseAttribute(const char16_t* name) {
  if (m_attributes.empty()) return true;
  if (!name) return false;
  return m_attributes.erase(LqWString(name, false)) != 0;
}

// ----------------------------------------------------------------------------------------------
// Renaming

void XmlNode::Rename(const char16_t* name) {
  if (!m_document || !name) return;
  m_tag = m_document->Tag(name, LqWideChar::Length(name));
}

bool XmlNode::RenameAttribute(const char16_t* oldName, const char16_t* newName) {
  if (!oldName || !newName) return false;
  const auto old = m_attributes.find(LqWString(oldName, false));
  if (old == m_attributes.end()) return false;
  if (m_attributes.count(LqWString(newName, false))) return false;
  // The new entry first: `newName` may be a text of the old one.
  m_attributes.emplace(LqWString(newName), old->second);
  m_attributes.erase(old);
  return true;
}

// ----------------------------------------------------------------------------------------------
// Grouping and numbering

void XmlNode::ChildListGroupedByName(std::map<LqWString, std::list<XmlNode*>>& groups) {
  for (XmlNode* child : m_childs)
    groups[child->Tag()].push_back(child);
}

void XmlNode::fixOrderNodes() {
  int number = 0;
  for (XmlNode* child : m_childs) {
    char16_t text[128];
    lq::detail::swprintf(text, 128, u"%d", number++);
    child->setAttribute(u"order", text);
    child->fixOrderNodes();
  }
}

// ----------------------------------------------------------------------------------------------
// Searching

namespace {

// Depth first, each node before its children.
template <typename Test>
bool Search(const XmlNode& node, std::vector<const XmlNode*>& results, const Test& test) {
  bool found = false;
  if (test(node)) {
    results.push_back(&node);
    found = true;
  }
  for (auto child = node.ChildsBegin(); child != node.ChildsEnd(); ++child)
    found = Search(**child, results, test) || found;
  return found;
}

}  // namespace

bool XmlNode::searchNodeByAttributeName(std::vector<const XmlNode*>& results,
                                        const char16_t* name) {
  // Kept: "-1" stands for an absent attribute, so an attribute holding "-1" is not found.
  return Search(*this, results,
                [name](const XmlNode& node) { return node.getAttribute(name, u"-1") != u"-1"; });
}

bool XmlNode::searchNodeByAttributeNameAndValue(std::vector<const XmlNode*>& results,
                                                const char16_t* name, const char16_t* value) {
  return Search(*this, results, [name, value](const XmlNode& node) {
    const LqWString text = node.getAttribute(name, u"-1");
    return text != u"-1" && text == value;
  });
}

// ----------------------------------------------------------------------------------------------
// Comparison by text form

bool XmlNode::operator==(const XmlNode& other) {
  LqString mine;
  LqString theirs;
  CreateXmlCode(mine);
  other.CreateXmlCode(theirs);
  return LqChar::Compare(mine, theirs) == 0;
}

bool XmlNode::operator!=(const XmlNode& other) { return !(*this == other); }
