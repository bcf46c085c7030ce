// Identifiers stored as node values: the text form of guidtow, through a buffer of 256 units.
#include "lqtools/security/uuid.h"
#include "lqtools/xml/XmlDocument.h"

namespace {
constexpr int kUuidTextUnits = 256;
}  // namespace

void XmlDocument::XmlNode::SetValue(const uuid& value) {
  char16_t text[kUuidTextUnits];
  SetValue(static_cast<const char16_t*>(guidtow(value, text, kUuidTextUnits)));
}

void XmlDocument::XmlNode::SetValue(const char16_t* path, const uuid& value) {
  char16_t text[kUuidTextUnits];
  SetValue(path, static_cast<const char16_t*>(guidtow(value, text, kUuidTextUnits)));
}

void XmlDocument::XmlNode::SetValue(const char* path, const uuid& value) {
  char16_t text[kUuidTextUnits];
  SetValue(path, static_cast<const char16_t*>(guidtow(value, text, kUuidTextUnits)));
}
