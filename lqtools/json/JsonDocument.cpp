#include "lqtools/json/JsonDocument.h"

#include <cstdlib>
#include <cstring>
#include <memory>

#include "lqtools/files/FileOperations.h"
#include "lqtools/text/StdRuntimeException.h"
#include "lqtools/platform/WideRuntime.h"

using JsonNode = JsonDocument::JsonNode;

namespace {

const char kUnexpected[] = "Unexpected situation!";

// The duplicate of a wide text, an empty one for null.
char16_t* DuplicateText(const char16_t* text) { return lq::detail::wcsdup(text ? text : u""); }

// A new node that receives `name`; nothing leaks when the name is refused.
JsonNode* Named(JsonNode* created, const char16_t* name) {
  std::unique_ptr<JsonNode> node(created);
  node->SetString(name);
  return node.release();
}

}  // namespace

const unsigned char JsonDocument::firstByteMark[7] = {0x00, 0x00, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC};

JsonDocument::JsonDocument() : m_root(nullptr), m_fileName(DuplicateText(u"")), m_dirty(false) {}

JsonDocument::~JsonDocument() {
  Reset();
  std::free(m_fileName);
}

void JsonDocument::Create(int type) {
  if (type != JsonArray && type != JsonObject) return;
  Reset();
  m_root = new JsonNode(type);
}

void JsonDocument::Reset() {
  delete m_root;
  m_root = nullptr;
  m_dirty = false;
}

void JsonDocument::SetFileName(const char16_t* fileName) {
  char16_t* copy = DuplicateText(fileName);
  std::free(m_fileName);
  m_fileName = copy;
}

// ------------------------------------------------------------------------------------------------
// Reading a file

bool JsonDocument::Load(const char16_t* fileName) {
  Reset();
  SetFileName(fileName);
  return Load();
}

bool JsonDocument::Load() {
  FILE* file = widefopen(m_fileName, u"r");
  if (!file) return false;
  long size = -1;
  if (std::fseek(file, 0, SEEK_END) == 0) size = std::ftell(file);
  // A size that does not fit the 32-bit length of a loaded text fails, as an unreadable one.
  if (size < 0 || size > INT32_MAX - 1 || std::fseek(file, 0, SEEK_SET) != 0) {
    std::fclose(file);
    return false;
  }
  // One byte beyond the data for the terminator that the parser stops at.
  auto* buffer = static_cast<char*>(std::malloc(static_cast<std::size_t>(size) + 1));
  if (!buffer) {
    std::fclose(file);
    throw StdRuntimeException(kUnexpected);
  }
  // What could not be read (a folder, a file that shrank) counts as absent.
  const std::size_t read = std::fread(buffer, 1, static_cast<std::size_t>(size), file);
  std::fclose(file);
  buffer[read] = 0;

  std::unique_ptr<char, void (*)(void*)> text(
      CheckFirstCharacters(buffer, static_cast<int32_t>(read)), std::free);
  return Parse(text.get());
}

char* JsonDocument::CheckFirstCharacters(char* buffer, int32_t size) {
  int32_t dropped = 0;
  while (dropped < size && static_cast<signed char>(buffer[dropped]) < 32)
    ++dropped;
  if (dropped == 0) return buffer;
  const auto rest = static_cast<std::size_t>(size - dropped);
  auto* moved = static_cast<char*>(std::malloc(rest + 1));
  if (!moved) {
    std::free(buffer);
    throw StdRuntimeException(kUnexpected);
  }
  std::memcpy(moved, buffer + dropped, rest + 1);
  std::free(buffer);
  return moved;
}

// ------------------------------------------------------------------------------------------------
// Factories

JsonNode* JsonDocument::cJSON_CreateNull() { return new JsonNode(1); }
JsonNode* JsonDocument::cJSON_CreateNull(const char16_t* name) {
  return Named(cJSON_CreateNull(), name);
}
JsonNode* JsonDocument::cJSON_CreateBool(bool value) { return new JsonNode(0, value ? 1.0 : 0.0); }
JsonNode* JsonDocument::cJSON_CreateBool(const char16_t* name, bool value) {
  return Named(cJSON_CreateBool(value), name);
}
JsonNode* JsonDocument::cJSON_CreateInteger(int value) { return new JsonNode(2, value); }
JsonNode* JsonDocument::cJSON_CreateInteger(const char16_t* name, int value) {
  return Named(cJSON_CreateInteger(value), name);
}
JsonNode* JsonDocument::cJSON_CreateFloat(double value) { return new JsonNode(3, value); }
JsonNode* JsonDocument::cJSON_CreateFloat(const char16_t* name, double value) {
  return Named(cJSON_CreateFloat(value), name);
}
JsonNode* JsonDocument::cJSON_CreateString(const char16_t* value) {
  return new JsonNode(4, 0.0, value);
}
JsonNode* JsonDocument::cJSON_CreateString(const char16_t* name, const char16_t* value) {
  return Named(cJSON_CreateString(value), name);
}
JsonNode* JsonDocument::cJSON_CreateArray() { return new JsonNode(5); }
JsonNode* JsonDocument::cJSON_CreateArray(const char16_t* name) {
  return Named(cJSON_CreateArray(), name);
}
JsonNode* JsonDocument::cJSON_CreateObject() { return new JsonNode(6); }
JsonNode* JsonDocument::cJSON_CreateObject(const char16_t* name) {
  return Named(cJSON_CreateObject(), name);
}
