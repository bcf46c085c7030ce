#include "lqtools/text/detail/PathStep.h"

namespace lq::detail {

PathStep::Kind ScanPathStep(const char16_t* path, PathStep& step) {
  const char16_t* p = path;
  while (*p == u'/')
    ++p;
  if (!*p) return PathStep::Empty;

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
    if (!*p) return PathStep::Unclosed;
    if (*p == u'=') {
      equals = p++;
      while (*p && *p != u'?')
        ++p;
      if (!*p) return PathStep::Unclosed;
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
  return PathStep::Step;
}

}  // namespace lq::detail
