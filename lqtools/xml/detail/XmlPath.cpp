#include "lqtools/xml/detail/XmlPath.h"

#include <algorithm>

#include "lqtools/platform/WideFormat.h"

namespace lq::detail {

bool FormatXmlPath(char16_t (&buffer)[kXmlPathUnits], const char16_t* format, va_list args) {
  buffer[0] = 0;
  if (!format) return false;
  return vswprintf(buffer, kXmlPathUnits, format, args) >= 0;
}

bool LiteralXmlPath(char16_t (&buffer)[kXmlPathUnits], const char16_t* path) {
  buffer[0] = 0;
  if (!path) return false;
  std::size_t n = 0;
  for (const char16_t* p = path; *p; ++p) {
    if (*p == u'%') {
      if (p[1] != u'%') return false;
      ++p;
    }
    if (n + 1 == kXmlPathUnits) {
      buffer[n] = 0;
      return false;
    }
    buffer[n++] = *p;
  }
  buffer[n] = 0;
  return true;
}

}  // namespace lq::detail

namespace lq::detail {

bool XmlPathStepMatches(const XmlDocument::XmlNode& child, const XmlPathStep& step) {
  const LqWString& tag = child.Tag();
  const auto length = static_cast<std::size_t>(step.nameEnd - step.nameBegin);
  if (static_cast<std::size_t>(tag.Length()) != length ||
      !std::equal(step.nameBegin, step.nameEnd, static_cast<const char16_t*>(tag)))
    return false;
  if (!step.conditional) return true;
  const XmlDocument::XmlNode* held = child.Node(step.condition);
  return held && (!step.valued || held->Value() == step.text);
}

}  // namespace lq::detail
