// One step of a node path, "name", "name?cond?" or "name?cond=text?", as the XML and the JSON
// documents both read their slash paths. Internal to the library.
#pragma once

#include "lqtools/text/LqBasicString.h"

namespace lq::detail {

struct PathStep {
  enum Kind { Empty, Unclosed, Step };

  const char16_t* nameBegin = nullptr;
  const char16_t* nameEnd = nullptr;
  bool conditional = false;
  bool valued = false;
  LqWString condition;
  LqWString text;
  // At the '/' behind the step or at the terminator.
  const char16_t* end = nullptr;
};

// Skips the leading '/' of `path` and scans one step. Empty: nothing is left. Unclosed: a '?'
// without its closing '?'.
PathStep::Kind ScanPathStep(const char16_t* path, PathStep& step);

}  // namespace lq::detail
