// Node paths: the scan of one path step, shared by lookup and erase, and the formatting of
// paths from printf-style arguments into the fixed buffer of 1024 units that NodeV, ValueV,
// EraseV and HasNode use. A formatted text that does not fit is refused, never used cut.
#pragma once

#include <cstdarg>
#include <cstddef>

#include "lqtools/text/detail/PathStep.h"
#include "lqtools/xml/XmlDocument.h"

namespace lq::detail {

constexpr std::size_t kXmlPathUnits = 1024;

// False when the formatted text did not fit; `buffer` is terminated either way.
bool FormatXmlPath(char16_t (&buffer)[kXmlPathUnits], const char16_t* format, va_list args);
// `path` as a format without arguments: "%%" becomes '%'. False for any other conversion, since
// it would have nothing to read, and for a text that does not fit.
bool LiteralXmlPath(char16_t (&buffer)[kXmlPathUnits], const char16_t* path);

// One step of a path: name, name?cond? or name?cond=text?.
using XmlPathStep = PathStep;
inline PathStep::Kind ScanXmlPathStep(const char16_t* path, PathStep& step) {
  return ScanPathStep(path, step);
}
// Whether `child` qualifies for `step`: its tag, then the condition and its text.
bool XmlPathStepMatches(const XmlDocument::XmlNode& child, const XmlPathStep& step);

}  // namespace lq::detail
