#include <algorithm>
#include <cstdarg>
#include <memory>

#include "lqtools/platform/WideFormat.h"
#include "lqtools/platform/WideRuntime.h"
#include "lqtools/text/StdRuntimeException.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/xml/XmlDocument.h"
#include "lqtools/xml/detail/XmlPath.h"

using XmlNode = XmlDocument::XmlNode;

LqWString XmlNode::m_emptyValue;

namespace {

// Room for any number the SetValue family formats.
constexpr std::size_t kNumberUnits = 128;

}  // namespace

// ----------------------------------------------------------------------------------------------
// Life and structure

XmlNode::XmlNode(XmlDocument* document) : m_document(document), m_tag(nullptr), m_value(nullptr) {}

XmlNode::XmlNode(XmlDocument* document, const char16_t* tag, int length)
    : m_document(document), m_tag(nullptr), m_value(nullptr) {
  if (!tag) return;
  if (document) {
    m_tag = document->Tag(tag, length);
  } else {
    auto* own = new LqWString();
    // A length beyond the text ends at its terminator rather than reading past it.
    const int units = LqWideChar::Length(tag);
    own->Assign(tag, length < 0 || length > units ? units : length);
    m_tag = own;
  }
}

XmlNode::XmlNode(const XmlNode& other)
    : m_document(other.m_document),
      m_tag(other.m_tag),
      m_value(other.m_value),
      m_childs(other.m_childs),
      m_attributes(other.m_attributes) {}

XmlNode::~XmlNode() {
  Reset();
  // A free-standing node's tag is its own and goes with it; in a document the tag table owns it.
  if (!m_document) delete m_tag;
}

void XmlNode::Reset() {
  delete m_value;
  m_value = nullptr;
  m_attributes.clear();
  for (XmlNode* child : m_childs)
    delete child;
  m_childs.clear();
}

const LqWString& XmlNode::Tag() const {
  if (!m_tag) throw StdRuntimeException("Unexpected call!");
  return *m_tag;
}

XmlNode* XmlNode::NewChild(const char16_t* name, XmlNode* before) {
  if (before && std::find(m_childs.begin(), m_childs.end(), before) == m_childs.end())
    return nullptr;
  auto child = std::make_unique<XmlNode>(m_document, name, -1);
  AddChild(child.get(), before);
  return child.release();
}

XmlNode* XmlNode::NewChild(const char* name) {
  LqWString wide;
  Utf8ToUtf16(wide, LqString(name, false));
  return NewChild(wide, nullptr);
}

void XmlNode::AddChild(XmlNode* child, XmlNode* before) {
  if (!child) return;
  if (!before) {
    m_childs.push_back(child);
    return;
  }
  const auto at = std::find(m_childs.begin(), m_childs.end(), before);
  if (at != m_childs.end()) m_childs.insert(at, child);
}

bool XmlNode::HoldsBelow(const XmlNode* node) const {
  for (const XmlNode* child : m_childs)
    if (child == node || child->HoldsBelow(node)) return true;
  return false;
}

XmlNode& XmlNode::operator=(const XmlNode& other) {
  // Kept: no self-assignment guard; callers know that a = a empties a.
  if (HoldsBelow(&other)) {
    // The source lies in the subtree that Reset is about to free: copy it out first.
    XmlNode copy(nullptr);
    copy.CopyFrom(other);
    CopyFrom(copy);
  } else {
    CopyFrom(other);
  }
  return *this;
}

void XmlNode::CopyFrom(const XmlNode& other) {
  Reset();
  const LqWString& tag = other.Tag();
  if (m_document) {
    m_tag = m_document->Tag(tag, tag.Length());
  } else if (m_tag != &tag) {
    auto* own = new LqWString(tag);
    delete m_tag;
    m_tag = own;
  }
  SetValue(other.Value());
  for (const auto& attribute : other.m_attributes)
    setAttribute(attribute.first, attribute.second);
  for (const XmlNode* child : other.m_childs) {
    auto copy = std::unique_ptr<XmlNode>(new XmlNode(m_document));
    copy->CopyFrom(*child);
    AddChild(copy.release(), nullptr);
  }
}

// ----------------------------------------------------------------------------------------------
// Addressing

const XmlNode* XmlNode::Walk(const char16_t* path, const XmlNode** parent) const {
  const XmlNode* node = this;
  if (parent) *parent = nullptr;
  for (;;) {
    lq::detail::XmlPathStep step;
    switch (lq::detail::ScanXmlPathStep(path, step)) {
      case lq::detail::XmlPathStep::Empty:
        if (parent) *parent = nullptr;
        return node;
      case lq::detail::XmlPathStep::Unclosed: return nullptr;
      case lq::detail::XmlPathStep::Step: break;
    }
    const auto found = std::find_if(
        node->m_childs.begin(), node->m_childs.end(),
        [&step](const XmlNode* child) { return lq::detail::XmlPathStepMatches(*child, step); });
    if (found == node->m_childs.end()) return nullptr;
    if (parent) *parent = node;
    if (!*step.end) return *found;
    // No backtracking: the first qualifying child must hold the rest of the path.
    node = *found;
    path = step.end + 1;
  }
}

const XmlNode* XmlNode::NodeFromString(const char16_t* path) const {
  return path ? Walk(path, nullptr) : this;
}

XmlNode* XmlNode::Node(const char16_t* path) { return const_cast<XmlNode*>(NodeFromString(path)); }

const XmlNode* XmlNode::Node(const char16_t* path) const { return NodeFromString(path); }

namespace {
const XmlNode* FormattedNode(const XmlNode& node, const char16_t* format, va_list args) {
  char16_t buffer[lq::detail::kXmlPathUnits];
  return lq::detail::FormatXmlPath(buffer, format, args) ? node.Node(buffer) : nullptr;
}
}  // namespace

XmlNode* XmlNode::NodeV(const char16_t* format, ...) {
  va_list args;
  va_start(args, format);
  const XmlNode* found = FormattedNode(*this, format, args);
  va_end(args);
  return const_cast<XmlNode*>(found);
}

const XmlNode* XmlNode::NodeV(const char16_t* format, ...) const {
  va_list args;
  va_start(args, format);
  const XmlNode* found = FormattedNode(*this, format, args);
  va_end(args);
  return found;
}

LqWString XmlNode::ValueV(const char16_t* format, ...) const {
  char16_t buffer[lq::detail::kXmlPathUnits];
  va_list args;
  va_start(args, format);
  const bool fits = lq::detail::FormatXmlPath(buffer, format, args);
  va_end(args);
  return fits ? Value(buffer, u"") : LqWString(u"");
}

bool XmlNode::HasNode(const char16_t* path) const {
  char16_t buffer[lq::detail::kXmlPathUnits];
  return lq::detail::LiteralXmlPath(buffer, path) && Node(buffer) != nullptr;
}

// ----------------------------------------------------------------------------------------------
// Values

const LqWString& XmlNode::Value() const { return m_value ? *m_value : m_emptyValue; }

LqWString XmlNode::Value(const char16_t* path, const char16_t* defaultValue) const {
  const XmlNode* node = Node(path);
  return node ? LqWString(node->Value()) : LqWString(defaultValue);
}

bool XmlNode::bValue() const { return Value() == u"T"; }

bool XmlNode::bValue(const char16_t* path, const bool& defaultValue) const {
  const XmlNode* node = Node(path);
  return node ? node->bValue() : defaultValue;
}

bool XmlNode::bValue(const char16_t* path, const char16_t* text) const {
  const XmlNode* node = Node(path);
  return node && node->Value() == text;
}

int XmlNode::iValue() const { return lq::detail::wcstol(Value(), nullptr, 10); }

int XmlNode::iValue(const char16_t* path, const int& defaultValue) const {
  const XmlNode* node = Node(path);
  return node ? node->iValue() : defaultValue;
}

int32_t XmlNode::hValue() const { return lq::detail::wcstol(Value(), nullptr, 16); }

uint32_t XmlNode::hValue(const char16_t* path, const int32_t& defaultValue) const {
  const XmlNode* node = Node(path);
  // Kept: a signed default and an unsigned result; the two hValue forms part from 0x80000000 on.
  return node ? lq::detail::wcstoul(node->Value(), nullptr, 16)
              : static_cast<uint32_t>(defaultValue);
}

double XmlNode::dValue() const { return lq::detail::wcstod(Value(), nullptr); }

double XmlNode::dValue(const char16_t* path, const double& defaultValue) const {
  const XmlNode* node = Node(path);
  return node ? node->dValue() : defaultValue;
}

LqString XmlNode::sValue() const {
  LqString text;
  Utf16ToUtf8(text, Value());
  return text;
}

LqString XmlNode::sValue(const char16_t* path, const char* defaultValue) const {
  const XmlNode* node = Node(path);
  return node ? node->sValue() : LqString(defaultValue);
}

void XmlNode::setAttribute(const char16_t* name, const char16_t* value) {
  if (!name || !*name) return;
  m_attributes[LqWString(name, false)] = lq::detail::TextOf<char16_t, LqWideChar>(value);
}

LqWString XmlNode::getAttribute(const char16_t* name, const char16_t* defaultValue) const {
  if (name) {
    const auto at = m_attributes.find(LqWString(name, false));
    if (at != m_attributes.end()) return at->second;
  }
  return LqWString(lq::detail::TextOf<char16_t, LqWideChar>(defaultValue));
}

bool XmlNode::HasAttribute(const char16_t* name) const {
  return name && m_attributes.find(LqWString(name, false)) != m_attributes.end();
}

// ----------------------------------------------------------------------------------------------
// SetValue, form 1: this node's own value

LqWString& XmlNode::ValueObject() {
  if (!m_value) m_value = new LqWString();
  return *m_value;
}

void XmlNode::SetValue(const LqWString& value) { ValueObject() = value; }

void XmlNode::SetValue(const char16_t* value) {
  ValueObject() = lq::detail::TextOf<char16_t, LqWideChar>(value);
}

void XmlNode::SetValue(const char* value) {
  LqWString wide;
  Utf8ToUtf16(wide, LqString(value, false));
  SetValue(wide);
}

namespace {
template <typename... Args>
LqWString FormatNumber(const char16_t* format, Args... args) {
  char16_t buffer[kNumberUnits];
  lq::detail::swprintf(buffer, kNumberUnits, format, args...);
  return LqWString(buffer);
}
}  // namespace

void XmlNode::SetValue(int value) { SetValue(FormatNumber(u"%d", value)); }
void XmlNode::SetValue(uint32_t value) { SetValue(FormatNumber(u"%u", value)); }
void XmlNode::SetValue(long value) { SetValue(FormatNumber(u"%ld", value)); }
void XmlNode::SetValue(unsigned long value) { SetValue(FormatNumber(u"%lu", value)); }
void XmlNode::SetValue(double value) { SetValue(FormatNumber(u"%f", value)); }
void XmlNode::SetValue(bool value) { SetValue(value ? u"T" : u"F"); }

void XmlNode::SetValue(const XmlNode* source) {
  if (!source) return;
  if (HoldsBelow(source)) {
    XmlNode copy(nullptr);
    copy.CopyFrom(*source);
    Reset();
    CopyFrom(copy);
    return;
  }
  // Kept: from itself this empties the node, as the Reset runs before the copy.
  Reset();
  CopyFrom(*source);
}

// ----------------------------------------------------------------------------------------------
// SetValue, forms 2 and 3: at a path, making one child named by the whole path when it is missing

namespace {
XmlNode* NodeOrNewChild(XmlNode* node, const char16_t* path) {
  XmlNode* found = node->Node(path);
  return found ? found : node->NewChild(path, nullptr);
}

LqWString WidePath(const char* path) {
  LqWString wide;
  Utf8ToUtf16(wide, LqString(path, false));
  return wide;
}
}  // namespace

void XmlNode::SetValue(const char16_t* path, const LqWString& value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, const char16_t* value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, const char* value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, const LqString& value) {
  NodeOrNewChild(this, path)->SetValue(static_cast<const char*>(value));
}
void XmlNode::SetValue(const char16_t* path, int value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, uint32_t value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, long value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, unsigned long value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, double value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, bool value) {
  NodeOrNewChild(this, path)->SetValue(value);
}
void XmlNode::SetValue(const char16_t* path, const XmlNode* source) {
  if (source) NodeOrNewChild(this, path)->SetValue(source);
}

void XmlNode::SetValue(const char* path, const LqWString& value) {
  SetValue(WidePath(path), value);
}
void XmlNode::SetValue(const char* path, const char16_t* value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, const char* value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, const LqString& value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, int value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, uint32_t value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, long value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, unsigned long value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, double value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, bool value) { SetValue(WidePath(path), value); }
void XmlNode::SetValue(const char* path, const XmlNode* source) {
  SetValue(WidePath(path), source);
}
