#include "lqtools/text/LqCharTraits.h"

#include <cstring>

#include "lqtools/platform/WideRuntime.h"

namespace {

char g_emptyNarrow[1] = {0};
char16_t g_emptyWide[1] = {0};

template <typename Unsigned, typename Unit>
int CompareUnits(const Unit* a, const Unit* b) {
  for (;; ++a, ++b) {
    const auto x = static_cast<Unsigned>(*a);
    const auto y = static_cast<Unsigned>(*b);
    if (x != y) return x < y ? -1 : 1;
    if (x == 0) return 0;
  }
}

// Classification of `c` as the platform's wint_t: a negative int wraps to a large value, which
// no class contains.
bool IsWideSpace(int c) { return lq::detail::iswspace(static_cast<unsigned>(c)) != 0; }
int LowerOf(int c) {
  return static_cast<int>(lq::detail::towlower(static_cast<unsigned>(c)) & 0xffff);
}
int UpperOf(int c) {
  return static_cast<int>(lq::detail::towupper(static_cast<unsigned>(c)) & 0xffff);
}

}  // namespace

int LqChar::Compare(const char* a, const char* b) { return CompareUnits<unsigned char>(a, b); }

int LqChar::Compare(const char* a, const char* b, int count) {
  return count <= 0 ? 0 : std::strncmp(a, b, static_cast<std::size_t>(count));
}

int LqChar::Length(const char* text) { return text ? static_cast<int>(std::strlen(text)) : 0; }
char* LqChar::EmptyString() { return g_emptyNarrow; }
bool LqChar::IsSpace(int c) { return IsWideSpace(c); }
int LqChar::ToLower(int c) { return LowerOf(c); }
int LqChar::ToUpper(int c) { return UpperOf(c); }

int LqWideChar::Compare(const char16_t* a, const char16_t* b) {
  return CompareUnits<char16_t>(a, b);
}

int LqWideChar::Compare(const char16_t* a, const char16_t* b, int count) {
  return count <= 0 ? 0 : lq::detail::wcsncmp(a, b, static_cast<std::size_t>(count));
}

int LqWideChar::Length(const char16_t* text) { return static_cast<int>(lq::detail::wcslen(text)); }
char16_t* LqWideChar::EmptyString() { return g_emptyWide; }
bool LqWideChar::IsSpace(int c) { return IsWideSpace(c); }
int LqWideChar::ToLower(int c) { return LowerOf(c); }
int LqWideChar::ToUpper(int c) { return UpperOf(c); }
