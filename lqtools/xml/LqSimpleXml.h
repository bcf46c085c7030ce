// LqSimpleXml: an XML text built from front to back with Open, Add and Close, without holding any
// node; the text is taken out at the end without a header, for instance to send it to another
// process. One root at a time: Open or Add with nothing open starts a new document, so after the
// root has been closed the next element replaces the whole tree. Close does not check its tag,
// and elements left open are written as they stand.
#pragma once

#include <stack>

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"
#include "lqtools/xml/XmlDocument.h"

class LqDateTime;
class uuid;

class LQTOOLS_API LqSimpleXml {
 public:
  LqSimpleXml() = default;
  virtual ~LqSimpleXml() = default;
  LqSimpleXml(const LqSimpleXml&) = delete;
  LqSimpleXml& operator=(const LqSimpleXml&) = delete;

  void Open(const char16_t* tag);
  // Closes the innermost open element, whatever `tag` says; nothing when none is open.
  void Close(const char16_t* tag);
  // The document without a header (empty elements as "<x></x>"); empty before any Open.
  void CreateXmlCode(LqString& out) const;

  // Open(tag), the value, Close(tag).
  void Add(const char16_t* tag, const LqWString& value);
  void Add(const char16_t* tag, const char16_t* value);
  // Each byte becomes one unit, sign-extended: not decoded as UTF-8, only ASCII passes unchanged.
  void Add(const char16_t* tag, const LqString& value);
  void Add(const char16_t* tag, const char* value);
  void Add(const char16_t* tag, int value);
  // "yyyymmddhhmmssmmm" from the fields as they stand; no zone is applied.
  void Add(const char16_t* tag, const LqDateTime& value);
  void Add(const char16_t* tag, const uuid& value);
  // Two upper-case hexadecimal digits per byte, no separator.
  void Add(const char16_t* tag, const unsigned char* data, int length);

 private:
  void AddText(const char16_t* tag, const char16_t* text);

  XmlDocument m_document;
  std::stack<XmlDocument::XmlNode*> m_stack;
};
