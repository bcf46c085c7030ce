// Parses any input as an XML document and writes its root as condition text.
#include <lqtools/localisation/Expression2Condition.h>
#include <lqtools/xml/XmlDocument.h>

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  XmlDocument document;
  if (!document.Parse(text.c_str()) || !document.Root()) return 0;
  LqWString condition;
  Expression2Condition(condition, document.Root());
  return 0;
}
