#include <cfloat>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "lqtools/json/JsonDocument.h"
#include "lqtools/platform/Truncation.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/platform/WideRuntime.h"
#include "lqtools/text/StdRuntimeException.h"
#include "lqtools/text/Unicode.h"
#include "lqtools/text/detail/PathStep.h"

using JsonNode = JsonDocument::JsonNode;

namespace {

const char kUnexpected[] = "Unexpected situation!";
// The buffer that formatted node paths go through.
constexpr std::size_t kNodePathUnits = 1024;

// The value of a node as a path filter compares it, formatted into `buffer` where needed; null
// for the types that never match.
const char16_t* FilterText(const JsonNode& node, char16_t* buffer, std::size_t count) {
  switch (node.Type()) {
    case JsonDocument::JsonBoolean: return node.ValueInt() ? u"true" : u"false";
    case JsonDocument::JsonInteger:
      lq::detail::swprintf(buffer, count, u"%d", node.ValueInt());
      return buffer;
    case JsonDocument::JsonFloat: {
      // Kept: the double's bit pattern goes through "%d", so the low 32 bits are compared and
      // not the number; stored paths depend on it.
      uint64_t bits;
      const double value = node.ValueDouble();
      std::memcpy(&bits, &value, sizeof bits);
      lq::detail::swprintf(buffer, count, u"%d", static_cast<int32_t>(bits & 0xFFFFFFFFu));
      return buffer;
    }
    case JsonDocument::JsonString: return node.ValueString();
    default: return nullptr;
  }
}

bool SameText(const char16_t* a, std::size_t length, const char16_t* b) {
  return lq::detail::wcslen(b) == length && std::memcmp(a, b, length * sizeof(char16_t)) == 0;
}

}  // namespace

// ------------------------------------------------------------------------------------------------
// Construction

JsonNode::JsonNode(int type, double value, const char16_t* string)
    : m_type(type), m_intValue(0), m_doubleValue(0.0) {
  switch (type) {
    case JsonBoolean: m_intValue = value != 0.0 ? 1 : 0; break;
    case JsonInteger: m_intValue = lq::detail::TruncateToInt32(value); break;
    case JsonFloat: m_doubleValue = value; break;
    case JsonString:
      if (string) m_stringValue = string;
      break;
    default:
      if (static_cast<unsigned>(type) > 6u) m_type = JsonObject;
      break;
  }
}

JsonNode::JsonNode(const JsonNode& other)
    : m_type(other.m_type),
      m_intValue(other.m_intValue),
      m_doubleValue(other.m_doubleValue),
      m_stringValue(other.m_stringValue),
      m_name(other.m_name) {
  // Cloned through a work list, so that a deep tree costs no stack. Each copy joins the tree
  // before it is filled, so a failed allocation leaves nothing that Reset does not free.
  try {
    std::vector<std::pair<const JsonNode*, JsonNode*>> pending{{&other, this}};
    while (!pending.empty()) {
      const auto [from, to] = pending.back();
      pending.pop_back();
      for (const JsonNode* child : from->m_childs) {
        auto copy = std::make_unique<JsonNode>(child->m_type);
        to->m_childs.push_back(copy.get());
        JsonNode* filled = copy.release();
        filled->m_type = child->m_type;
        filled->m_intValue = child->m_intValue;
        filled->m_doubleValue = child->m_doubleValue;
        filled->m_stringValue = child->m_stringValue;
        filled->m_name = child->m_name;
        pending.emplace_back(child, filled);
      }
    }
  } catch (...) {
    Reset();
    throw;
  }
}

JsonNode& JsonNode::operator=(const JsonNode& other) {
  if (this == &other) return *this;
  // The copy comes first, so that a node may be assigned one of its own descendants.
  JsonNode copy(other);
  Reset();
  m_type = copy.m_type;
  m_intValue = copy.m_intValue;
  m_doubleValue = copy.m_doubleValue;
  m_stringValue = copy.m_stringValue;
  m_name = copy.m_name;
  m_childs.swap(copy.m_childs);
  return *this;
}

JsonNode::~JsonNode() { Reset(); }

// ------------------------------------------------------------------------------------------------
// Fields and children

void JsonNode::SetString(const char16_t* name) {
  if (!name) throw StdRuntimeException(kUnexpected);
  m_name = name;
}

void JsonNode::SetString(const char* utf8Name) {
  if (!utf8Name) throw StdRuntimeException(kUnexpected);
  LqWString wide;
  Utf8ToUtf16(wide, utf8Name);
  SetString(static_cast<const char16_t*>(wide));
}

void JsonNode::AddChild(JsonNode* child) {
  if (!child) throw StdRuntimeException(kUnexpected);
  m_childs.push_back(child);
}

void JsonNode::RemoveChild(JsonNode* child) {
  const auto before = m_childs.size();
  m_childs.remove(child);
  if (child && m_childs.size() != before) delete child;
}

void JsonNode::Reset() { DeleteChilds(); }

void JsonNode::DeleteChilds() {
  // Each node hands its children to this list before it goes, so no destructor recurses and
  // nothing is allocated.
  while (!m_childs.empty()) {
    JsonNode* first = m_childs.front();
    m_childs.pop_front();
    m_childs.splice(m_childs.begin(), first->m_childs);
    delete first;
  }
}

JsonNode* JsonNode::NewChild(int type) {
  if (type != JsonArray && type != JsonObject) return nullptr;
  JsonNode* child =
      type == JsonArray ? JsonDocument::cJSON_CreateArray() : JsonDocument::cJSON_CreateObject();
  AddChild(child);
  return child;
}

JsonNode* JsonNode::NewChild(const char16_t* name, int type) {
  if (type != JsonArray && type != JsonObject) return nullptr;
  JsonNode* child = type == JsonArray ? JsonDocument::cJSON_CreateArray(name)
                                      : JsonDocument::cJSON_CreateObject(name);
  AddChild(child);
  return child;
}

JsonNode* JsonNode::NewChild(const char* utf8Name, int) {
  LqWString name;
  Utf8ToUtf16(name, utf8Name);
  // Kept: this form always makes an object whatever type it is given; callers rely on it.
  return NewChild(static_cast<const char16_t*>(name), JsonObject);
}

// ------------------------------------------------------------------------------------------------
// Paths

JsonNode* JsonNode::Node(const char16_t* path) {
  if (!path) throw StdRuntimeException(kUnexpected);
  JsonNode* node = this;
  for (;;) {
    lq::detail::PathStep step;
    switch (lq::detail::ScanPathStep(path, step)) {
      case lq::detail::PathStep::Empty: return node;
      case lq::detail::PathStep::Unclosed: return nullptr;
      case lq::detail::PathStep::Step: break;
    }
    const auto tagLength = static_cast<std::size_t>(step.nameEnd - step.nameBegin);
    JsonNode* child = nullptr;
    for (JsonNode* candidate : node->m_childs) {
      if (SameText(step.nameBegin, tagLength, candidate->m_name)) {
        child = candidate;
        break;
      }
    }
    if (!child) return nullptr;

    if (step.conditional) {
      // A filter without "=value" compares with the empty text.
      char16_t text[64];
      for (JsonNode* grandchild : child->m_childs) {
        if (!SameText(step.condition, static_cast<std::size_t>(step.condition.Length()),
                      grandchild->m_name))
          continue;
        const char16_t* candidate = FilterText(*grandchild, text, 64);
        if (candidate &&
            SameText(step.text, static_cast<std::size_t>(step.text.Length()), candidate))
          return grandchild;
      }
    }
    const char16_t* end = step.end;
    if (!*end) return child;
    node = child;
    path = end + 1;
  }
}

JsonNode* JsonNode::NodeV(const char16_t* format, ...) {
  if (!format) throw StdRuntimeException(kUnexpected);
  char16_t path[kNodePathUnits];
  va_list args;
  va_start(args, format);
  lq::detail::vswprintf(path, kNodePathUnits, format, args);
  va_end(args);
  return Node(path);
}

int JsonNode::ValueInt(const char16_t* path) const {
  const JsonNode* node = const_cast<JsonNode*>(this)->Node(path);
  return node ? node->m_intValue : INT32_MIN;
}

double JsonNode::ValueDouble(const char16_t* path) const {
  const JsonNode* node = const_cast<JsonNode*>(this)->Node(path);
  return node ? node->m_doubleValue : DBL_MIN;
}

LqWString JsonNode::ValueString(const char16_t* path, const char16_t* defaultValue) const {
  const JsonNode* node = const_cast<JsonNode*>(this)->Node(path);
  return node ? node->m_stringValue : LqWString(defaultValue);
}

// ------------------------------------------------------------------------------------------------
// Values

void JsonNode::SetValue(int value) {
  if (m_type == JsonArray) {
    AddChild(JsonDocument::cJSON_CreateInteger(value));
  } else if (m_type == JsonInteger) {
    m_intValue = value;
  }
}

void JsonNode::SetValue(double value) {
  if (m_type == JsonArray) {
    AddChild(JsonDocument::cJSON_CreateFloat(value));
  } else if (m_type == JsonFloat) {
    m_doubleValue = value;
  }
}

void JsonNode::SetValue(bool value) {
  if (m_type == JsonArray) {
    AddChild(JsonDocument::cJSON_CreateBool(value));
  } else if (m_type == JsonBoolean) {
    m_intValue = value ? 1 : 0;
  }
}

void JsonNode::SetValue(const char16_t* value) {
  if (m_type == JsonArray) {
    AddChild(JsonDocument::cJSON_CreateString(value));
  } else if (m_type == JsonString) {
    m_stringValue = value ? value : u"";
  }
}

void JsonNode::SetValue(const char* utf8Value) {
  if (m_type != JsonString && m_type != JsonArray) return;
  LqWString wide;
  Utf8ToUtf16(wide, utf8Value);
  SetValue(static_cast<const char16_t*>(wide));
}

void JsonNode::SetNullValue() {
  if (m_type == JsonArray) AddChild(JsonDocument::cJSON_CreateNull());
}

void JsonNode::SetValue(const char16_t* path, const char16_t* value) {
  if (m_type != JsonObject) return;
  JsonNode* node = Node(path);
  if (!node) {
    AddChild(JsonDocument::cJSON_CreateString(path, value));
  } else if (node->m_type == JsonString) {
    node->m_stringValue = value ? value : u"";
  }
}

void JsonNode::SetValue(const char16_t* path, int value) {
  if (m_type != JsonObject) return;
  JsonNode* node = Node(path);
  if (!node) {
    AddChild(JsonDocument::cJSON_CreateInteger(path, value));
  } else if (node->m_type == JsonInteger) {
    node->m_intValue = value != 0 ? 1 : 0;
  }
}

void JsonNode::SetValue(const char16_t* path, double value) {
  if (m_type != JsonObject) return;
  JsonNode* node = Node(path);
  if (!node) {
    AddChild(JsonDocument::cJSON_CreateFloat(path, value));
  } else if (node->m_type == JsonFloat) {
    node->m_doubleValue = value;
  }
}

void JsonNode::SetValue(const char16_t* path, bool value) {
  if (m_type != JsonObject) return;
  JsonNode* node = Node(path);
  if (!node) {
    AddChild(JsonDocument::cJSON_CreateBool(path, value));
  } else if (node->m_type == JsonBoolean) {
    node->m_intValue = value ? 1 : 0;
  }
}

void JsonNode::SetNullValue(const char16_t* path) {
  if (m_type != JsonObject) return;
  const JsonNode* node = Node(path);
  if (!node || node->m_type != JsonNull) AddChild(JsonDocument::cJSON_CreateNull(path));
}
