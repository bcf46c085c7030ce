// XmlNode::toJson: an XML subtree copied into a JSON tree. Every value becomes a JSON string;
// nothing is read as a number or a boolean.
#include <list>
#include <map>

#include "lqtools/json/JsonDocument.h"
#include "lqtools/xml/XmlDocument.h"

using XmlNode = XmlDocument::XmlNode;
using JsonNode = JsonDocument::JsonNode;

namespace {
constexpr int kJsonString = 4;
constexpr int kJsonArray = 5;
constexpr int kJsonObject = 6;
}  // namespace

void XmlNode::toJson(JsonNode* parent) {
  // Array elements have no names.
  const LqWString name = parent->Type() == kJsonArray ? LqWString(u"") : Tag();
  JsonNode* node = parent->NewChild(static_cast<const char16_t*>(name), kJsonObject);

  if (!HasChilds()) {
    node->SetType(kJsonString);
    // SetNullValue on a string node changes nothing: an empty element is the empty string.
    if (Value().Length() > 0)
      node->SetValue(static_cast<const char16_t*>(Value()));
    else
      node->SetNullValue();
    if (HasAttributes()) getAttributesJson(node);
    return;
  }

  // Children grouped by tag, in tag order; the element's own value is dropped.
  std::map<LqWString, std::list<XmlNode*>> groups;
  ChildListGroupedByName(groups);
  for (const auto& [tag, children] : groups) {
    if (children.size() > 1) {
      JsonNode* array = node->NewChild(static_cast<const char16_t*>(tag), kJsonArray);
      for (XmlNode* child : children)
        child->toJson(array);
    } else {
      children.front()->toJson(node);
    }
  }
  if (HasAttributes()) getAttributesJson(node);
}

void XmlNode::getAttributesJson(JsonNode* target) const {
  // The attribute map has unique names, so each attribute gives one member.
  for (const auto& [name, value] : m_attributes) {
    LqWString memberName(u"-");
    memberName += name;
    JsonNode* member = target->NewChild(static_cast<const char16_t*>(memberName), kJsonObject);
    member->SetType(kJsonString);
    member->SetValue(static_cast<const char16_t*>(value));
  }
}
