#include "lqtools/xml/LqSimpleXml.h"

#include <vector>

#include "lqtools/datetime/LqDateTime.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/security/uuid.h"
#include "lqtools/text/HexText.h"

namespace {
constexpr int kNumberUnits = 32;
constexpr int kUuidUnits = 48;
}  // namespace

void LqSimpleXml::Open(const char16_t* tag) {
  if (m_stack.empty()) {
    m_document.Create(tag);
    m_stack.push(m_document.Root());
  } else {
    m_stack.push(m_stack.top()->NewChild(tag, nullptr));
  }
}

void LqSimpleXml::Close(const char16_t*) {
  if (!m_stack.empty()) m_stack.pop();
}

void LqSimpleXml::CreateXmlCode(LqString& out) const { m_document.CreateXmlCode(out, false); }

void LqSimpleXml::AddText(const char16_t* tag, const char16_t* text) {
  Open(tag);
  m_stack.top()->SetValue(text);
  Close(tag);
}

void LqSimpleXml::Add(const char16_t* tag, const LqWString& value) {
  Open(tag);
  m_stack.top()->SetValue(value);
  Close(tag);
}

void LqSimpleXml::Add(const char16_t* tag, const char16_t* value) {
  Open(tag);
  m_stack.top()->SetValue(LqWString(value, false));
  Close(tag);
}

void LqSimpleXml::Add(const char16_t* tag, const LqString& value) { Add(tag, LqWString(value)); }

void LqSimpleXml::Add(const char16_t* tag, const char* value) {
  Add(tag, LqWString(LqString(value, false)));
}

void LqSimpleXml::Add(const char16_t* tag, int value) {
  char16_t text[kNumberUnits];
  lq::detail::swprintf(text, kNumberUnits, u"%d", value);
  AddText(tag, text);
}

void LqSimpleXml::Add(const char16_t* tag, const LqDateTime& value) {
  char16_t text[kNumberUnits];
  lq::detail::swprintf(text, kNumberUnits, u"%04d%02d%02d%02d%02d%02d%03d", value.Year(),
                       value.Month(), value.Day(), value.Hour(), value.Minute(), value.Second(),
                       value.MSecond());
  AddText(tag, text);
}

void LqSimpleXml::Add(const char16_t* tag, const uuid& value) {
  char16_t text[kUuidUnits];
  AddText(tag, guidtow(value, text, kUuidUnits));
}

void LqSimpleXml::Add(const char16_t* tag, const unsigned char* data, int length) {
  std::vector<char16_t> text(static_cast<std::size_t>(length > 0 ? length : 0) * 2 + 1, u'\0');
  for (int i = 0; i < length && data; ++i)
    BtoH(data[i], text.data() + 2 * i);
  AddText(tag, text.data());
}
