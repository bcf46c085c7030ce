// LqChar and LqWideChar: the character traits of LqString (bytes) and LqWString (UTF-16 units).
// All members are static; the classes hold no data. Both classify and case-map with the same
// wide-character routines, so the narrow traits treat a byte as if it were a code point.
#pragma once

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API LqChar {
 public:
  using CharType = char;

  LqChar() = default;
  LqChar(const LqChar&) = default;
  LqChar& operator=(const LqChar&) { return *this; }
  LqChar& operator=(LqChar&&) { return *this; }

  // -1, 0 or 1, comparing unsigned bytes. Neither text may be null.
  static int Compare(const char* a, const char* b);
  // The result of strncmp.
  static int Compare(const char* a, const char* b, int count);
  // Units before the terminator; 0 for null.
  static int Length(const char* text);
  // The shared static empty text. It must never be written.
  static char* EmptyString();
  static bool IsSpace(int c);
  static int ToLower(int c);
  static int ToUpper(int c);
};

class LQTOOLS_API LqWideChar {
 public:
  using CharType = char16_t;

  LqWideChar() = default;
  LqWideChar(const LqWideChar&) = default;
  LqWideChar& operator=(const LqWideChar&) { return *this; }
  LqWideChar& operator=(LqWideChar&&) { return *this; }

  // -1, 0 or 1, comparing unsigned 16-bit units. Neither text may be null.
  static int Compare(const char16_t* a, const char16_t* b);
  // The result of wcsncmp.
  static int Compare(const char16_t* a, const char16_t* b, int count);
  static int Length(const char16_t* text);
  static char16_t* EmptyString();
  static bool IsSpace(int c);
  static int ToLower(int c);
  static int ToUpper(int c);
};
