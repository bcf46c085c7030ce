// Small substring helpers on std::string and LqWString.
#pragma once

#include <string>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"

// Non-overlapping occurrences of `part`; 0 when either text is empty ("aaaa" holds "aa" twice).
LQTOOLS_API int CountSubstring(const std::string& text, const std::string& part);

// Replaces every occurrence of `search` in `text`. Without `matchCase` the matching runs on
// upper-cased copies, while the kept pieces keep their case. The replacement is never searched
// again; an empty `search` changes nothing.
LQTOOLS_API void ReplaceTextW(LqWString& text, const LqWString& search,
                              const LqWString& replacement, bool matchCase);

// The three-argument wcstok on 16-bit units; the state lives in `context`.
LQTOOLS_API char16_t* wideStrtok(char16_t* text, const char16_t* delimiters, char16_t** context);
