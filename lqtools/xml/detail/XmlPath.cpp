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

XmlPathStep::Kind ScanXmlPathStep(const char16_t* path, XmlPathStep& step) {
  const char16_t* p = path;
  while (*p == u'/')
    ++p;
  if (!*p) return XmlPathStep::Empty;

  step.nameBegin = p;
  while (*p && *p != u'/' && *p != u'?')
    ++p;
  step.nameEnd = p;
  const char16_t* condBegin = nullptr;
  const char16_t* equals = nullptr;
  if (*p == u'?') {
    condBegin = ++p;
    while (*p && *p != u'=' && *p != u'?')
      ++p;
    if (!*p) return XmlPathStep::Unclosed;
    if (*p == u'=') {
      equals = p++;
      while (*p && *p != u'?')
        ++p;
      if (!*p) return XmlPathStep::Unclosed;
    }
  }
  // Text between the closing '?' and the next '/' belongs to no part of the syntax...
  while (*p && *p != u'/')
    ++p;
  step.end = p;
  step.conditional = condBegin != nullptr;
  step.valued = equals != nullptr;
  // ...but the unit in front of the step's end is taken as the closing '?', whatever stands
  // there, so stray text lands in the condition or its text, less its last unit.
  if (condBegin) {
    step.condition.Assign(condBegin, static_cast<int>((equals ? equals : p - 1) - condBegin));
    if (equals) step.text.Assign(equals + 1, static_cast<int>(p - 1 - (equals + 1)));
  }
  return XmlPathStep::Step;
}

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
