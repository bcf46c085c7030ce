#include "lqtools/text/TextHelpers.h"

#include "lqtools/platform/WideRuntime.h"

int CountSubstring(const std::string& text, const std::string& part) {
  if (text.empty() || part.empty()) return 0;
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos;
       at = text.find(part, at + part.size()))
    ++count;
  return count;
}

void ReplaceTextW(LqWString& text, const LqWString& search, const LqWString& replacement,
                  bool matchCase) {
  LqWString work(text);
  LqWString pattern(search);
  LqWString result;
  for (;;) {
    if (!matchCase) {
      work.MakeUpper();
      pattern.MakeUpper();
    }
    const int at = work.Find(static_cast<const char16_t*>(pattern), 0);
    if (at < 0) break;
    result += text.Left(at);
    result += replacement;
    const int rest = at + search.Length();
    text.Assign(static_cast<const char16_t*>(text) + rest, text.Length() - rest);
    work = text;
  }
  // Kept: when every piece was empty, `text` stays what the last cut left.
  if (!result.IsEmpty()) {
    result += text;
    text = result;
  }
}

char16_t* wideStrtok(char16_t* text, const char16_t* delimiters, char16_t** context) {
  return lq::detail::wcstok(text, delimiters, context);
}
