// uuid: the library's 128-bit identifier, laid out as a Windows GUID (a 32-bit, two 16-bit parts
// and eight bytes). Its text form is the 36 upper-case characters
// "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX", also in XML and JSON values. Values are ordered by the
// three numbers, then by the eight bytes.
//
// Two parsers on purpose: createFromString wants exactly the 36 characters (either case) and
// throws a plain std::exception otherwise; wtouuid gives uuid::null for bad text and accepts one
// blank (and anything after it) behind the value. wtouuid reads its digits as upper case: a
// lower-case digit gives a different value.
#pragma once

#include <cstdint>
#include <string>

#include "lqtools/LqToolsExport.h"

class LQTOOLS_API uuid {
 public:
  uuid() = default;
  uuid(const uuid&) = default;
  uuid& operator=(const uuid&) = default;
  uuid(unsigned int data1, unsigned short data2, unsigned short data3, unsigned char a,
       unsigned char b, unsigned char c, unsigned char d, unsigned char e, unsigned char f,
       unsigned char g, unsigned char h);
  // Eight bytes are copied from `data4`.
  uuid(unsigned int data1, unsigned short data2, unsigned short data3, const unsigned char* data4);

  void set(unsigned int data1, unsigned short data2, unsigned short data3, unsigned char a,
           unsigned char b, unsigned char c, unsigned char d, unsigned char e, unsigned char f,
           unsigned char g, unsigned char h);
  void set(unsigned int data1, unsigned short data2, unsigned short data3,
           const unsigned char* data4);
  void clear() { *this = uuid(); }
  bool is_null() const { return *this == null; }

  bool operator==(const uuid& other) const;
  bool operator!=(const uuid& other) const { return !(*this == other); }
  bool operator<(const uuid& other) const;

  unsigned int data1() const { return m_data1; }
  unsigned short data2() const { return m_data2; }
  unsigned short data3() const { return m_data3; }
  const unsigned char* data4() const { return m_data4; }

  std::string toString() const;
  std::u16string toWString() const;

  // A random (version 4) identifier from the system's random source.
  static uuid create();
  static uuid createFromString(const std::string& text);
  static bool isValidUuid(const std::string& text);

  static const uuid null;

 private:
  static bool isHexadecimal(char c);

  uint32_t m_data1 = 0;
  uint16_t m_data2 = 0;
  uint16_t m_data3 = 0;
  unsigned char m_data4[8] = {};
};

// uuid::create() into `out`; false when it gave the null value (or `out` is null).
LQTOOLS_API bool NewGUID(uuid* out);
// The text form and its terminator into `buffer`, which must hold 37 bytes.
LQTOOLS_API char* guidtoc(const uuid& id, char* buffer);
// The text form into `buffer` of `size` units, cut (and terminated) when it does not fit.
LQTOOLS_API char16_t* guidtow(const uuid& id, char16_t* buffer, int size);
// Parses the text form; uuid::null for bad text.
LQTOOLS_API uuid wtouuid(const char16_t* text);
