// Identifiers stored as string nodes: the text form of guidtow, through a buffer of 256 units.
#include "lqtools/json/JsonDocument.h"
#include "lqtools/security/uuid.h"

namespace {
constexpr int kUuidTextUnits = 256;
}  // namespace

void JsonDocument::JsonNode::SetValue(const uuid& value) {
  char16_t text[kUuidTextUnits];
  SetValue(static_cast<const char16_t*>(guidtow(value, text, kUuidTextUnits)));
}

void JsonDocument::JsonNode::SetValue(const char16_t* path, const uuid& value) {
  char16_t text[kUuidTextUnits];
  SetValue(path, static_cast<const char16_t*>(guidtow(value, text, kUuidTextUnits)));
}
