#include "lqtools/localisation/TextTemplates.h"

#include <cstring>
#include <list>

#include "lqtools/datetime/DateTimeText.h"
#include "lqtools/localisation/DatePattern.h"
#include "lqtools/localisation/LqStringTableFile.h"
#include "lqtools/localisation/NumberFormat.h"
#include "lqtools/platform/Truncation.h"
#include "lqtools/platform/WideFormat.h"
#include "lqtools/platform/WideRuntime.h"
#include "lqtools/text/Unicode.h"

namespace {

using XmlNode = XmlDocument::XmlNode;

// The working room of one formatted piece, terminator included.
constexpr std::size_t kPieceUnits = 1024;
constexpr char16_t kIdPrefix[] = u"IDS_";
constexpr int kIdPrefixLength = 4;
constexpr char16_t kParamPrefix[] = u"param";
constexpr int kParamPrefixLength = 5;

bool HasIdPrefix(const LqWString& text) {
  return text.Length() >= kIdPrefixLength &&
         lq::detail::wcsncmp(text, kIdPrefix, kIdPrefixLength) == 0;
}

// The table text of "IDS_<n>"; the caller has checked the prefix.
LqWString TableText(const LqWString& text) {
  const unsigned id = static_cast<unsigned>(
      lq::detail::wcstol(static_cast<const char16_t*>(text) + kIdPrefixLength, nullptr, 10));
  LqWString found;
  LqLoadString(id, found);
  return found;
}

int32_t ReadInteger(const LqWString& text) { return lq::detail::wcstol(text, nullptr, 10); }

// A format piece printed without any argument: "%%" gives '%' and every conversion stands as it
// is written, so nothing is ever read that was not passed.
LqWString PrintWithoutArgument(const char16_t* format) {
  LqWString out;
  out.SetGrowthIfNone(LqWString::GrowSmallBlock);
  for (const char16_t* p = format; *p && out.Length() < static_cast<int>(kPieceUnits) - 1;) {
    if (*p != u'%') {
      out += *p++;
    } else if (p[1] == u'%') {
      out += u'%';
      p += 2;
    } else {
      const char16_t* end = p;
      lq::detail::ConversionArgument(p, &end);
      for (; p < end && out.Length() < static_cast<int>(kPieceUnits) - 1; ++p)
        out += *p;
    }
  }
  return out;
}

// One parameter of a textParams element, read once by its tag.
struct Parameter {
  enum Kind { Text, Integer, Double, Stale, None } kind = None;
  LqWString text;
  int32_t integer = 0;
  double number = 0;
};

Parameter ReadParameter(const XmlNode& node) {
  Parameter parameter;
  const LqWString& tag = node.Tag();
  if (tag == u"paramId") {
    // Kept: an id without "IDS_" fills nothing, so the piece before is repeated; stored
    // messages are laid out around that.
    parameter.kind = HasIdPrefix(node.Value()) ? Parameter::Text : Parameter::Stale;
    if (parameter.kind == Parameter::Text) parameter.text = TableText(node.Value());
  } else if (tag == u"paramStr") {
    parameter.kind = Parameter::Text;
    parameter.text = node.Value();
  } else if (tag == u"paramDouble") {
    parameter.kind = Parameter::Double;
    parameter.number = lq::detail::wcstod(node.Value(), nullptr);
  } else if (tag == u"paramInteger") {
    parameter.kind = Parameter::Integer;
    parameter.integer = ReadInteger(node.Value());
  }
  return parameter;
}

// `chunk` holds exactly one conversion; it is printed with the parameter when their kinds agree.
LqWString FillChunk(const LqWString& chunk, int conversionAt, const Parameter& parameter) {
  using lq::detail::WideArgument;
  char16_t buffer[kPieceUnits];
  const char16_t* format = chunk;
  const WideArgument wanted =
      lq::detail::ConversionArgument(format + conversionAt, nullptr);
  const double number =
      parameter.kind == Parameter::Integer ? parameter.integer : parameter.number;
  const long long whole = parameter.kind == Parameter::Integer
                              ? parameter.integer
                              : lq::detail::TruncateToInt64(parameter.number);
  const bool isNumber = parameter.kind == Parameter::Integer || parameter.kind == Parameter::Double;
  const bool isText = parameter.kind == Parameter::Text;
  LqString narrow;
  switch (wanted) {
    case WideArgument::WideText:
      if (!isText) break;
      lq::detail::swprintf(buffer, kPieceUnits, format, static_cast<const char16_t*>(parameter.text));
      return LqWString(buffer);
    case WideArgument::NarrowText:
      if (!isText) break;
      Utf16ToUtf8(narrow, parameter.text);
      lq::detail::swprintf(buffer, kPieceUnits, format, static_cast<const char*>(narrow));
      return LqWString(buffer);
    case WideArgument::Int:
      if (!isNumber) break;
      lq::detail::swprintf(buffer, kPieceUnits, format, static_cast<int>(whole));
      return LqWString(buffer);
    case WideArgument::Long:
      if (!isNumber) break;
      lq::detail::swprintf(buffer, kPieceUnits, format, static_cast<long>(whole));
      return LqWString(buffer);
    case WideArgument::LongLong:
      if (!isNumber) break;
      lq::detail::swprintf(buffer, kPieceUnits, format, whole);
      return LqWString(buffer);
    case WideArgument::Size:
      if (!isNumber) break;
      lq::detail::swprintf(buffer, kPieceUnits, format, static_cast<std::ptrdiff_t>(whole));
      return LqWString(buffer);
    case WideArgument::Double:
      if (!isNumber) break;
      lq::detail::swprintf(buffer, kPieceUnits, format, number);
      return LqWString(buffer);
    case WideArgument::LongDouble:
      if (!isNumber) break;
      lq::detail::swprintf(buffer, kPieceUnits, format, static_cast<long double>(number));
      return LqWString(buffer);
    default: break;
  }
  return PrintWithoutArgument(format);
}

void RenderParams(const XmlNode& node, LqWString& result) {
  LqWString format = node.Value(u"textId", u"");
  if (!format.IsEmpty() && HasIdPrefix(format))
    format = TableText(format);
  else if (format.IsEmpty())
    format = node.Value(u"textStr", u"");

  std::list<const XmlNode*> parameters;
  // A prefix test: "param", "parameter" and "paramX" are collected too.
  for (auto child = node.ChildsBegin(); child != node.ChildsEnd(); ++child) {
    const LqWString& tag = (*child)->Tag();
    if (tag.Length() >= kParamPrefixLength &&
        lq::detail::wcsncmp(tag, kParamPrefix, kParamPrefixLength) == 0)
      parameters.push_back(*child);
  }

  LqWString rest = format;
  LqWString piece;
  while (!parameters.empty()) {
    const int at = rest.Find(u'%', 0);
    if (at < 0) {
      // Spare parameters are dropped, and the rest is not formatted.
      result += rest;
      return;
    }
    const bool literal = rest[at + 1] == u'%';
    const int next = literal ? at + 2 : rest.Find(u'%', at + 2);
    const LqWString chunk = next < 0 ? rest : rest.Left(next);
    rest = next < 0 ? LqWString(u"") : rest.Mid(next, rest.Length() - next);
    if (literal) {
      piece = PrintWithoutArgument(chunk);
    } else {
      const Parameter parameter = ReadParameter(*parameters.front());
      parameters.pop_front();
      if (parameter.kind != Parameter::Stale) piece = FillChunk(chunk, at, parameter);
    }
    result += piece;
  }
  result += PrintWithoutArgument(rest);
}

void RenderValue(const XmlNode& node, LqWString& result) {
  const double value = lq::detail::wcstod(node.Value(u"value", u""), nullptr);
  const int integers = ReadInteger(node.Value(u"integers", u"0"));
  const int decimals = ReadInteger(node.Value(u"decimals", u"0"));
  const bool thousands = node.Value(u"thousandSeparator", u"") == u"T";
  const bool leftPadding = ReadInteger(node.Value(u"leftPadding", u"0")) > 0;
  const bool rightPadding = ReadInteger(node.Value(u"rightPadding", u"0")) > 0;
  LqWString text;
  FormatDouble(text, value, integers, decimals, thousands, leftPadding, rightPadding);
  result += text;
}

void RenderDate(const XmlNode& node, LqWString& result) {
  const LqWString date = node.Value(u"date", u"");
  LqDateTime dateTime;
  if (!String2DateTime(dateTime, static_cast<const char16_t*>(date))) {
    result += date;
    return;
  }
  LqWString text;
  ParseDate(text, node.Value(u"pattern", u""), dateTime);
  result += text;
}

}  // namespace

LqWString& ParseXMLText(const XmlNode& node, LqWString& result) {
  result.SetGrowthIfNone(LqWString::GrowSmallBlock);
  result = u"";
  if (!(node.Tag() == u"text")) return result;
  for (auto child = node.ChildsBegin(); child != node.ChildsEnd(); ++child) {
    const XmlNode& element = **child;
    const LqWString& tag = element.Tag();
    if (tag == u"textId") {
      if (HasIdPrefix(element.Value())) result += TableText(element.Value());
    } else if (tag == u"textStr") {
      result += element.Value();
    } else if (tag == u"textValue") {
      RenderValue(element, result);
    } else if (tag == u"textDate") {
      RenderDate(element, result);
    } else if (tag == u"textParams") {
      RenderParams(element, result);
    }
  }
  return result;
}

LqWString& ParseXMLText(const LqString& xml, LqWString& result) {
  static constexpr char kOpen[] = "<text>";
  const char* text = xml;
  const bool wrapped =
      xml.Length() >= 6 && std::strncmp(text ? text : "", kOpen, sizeof kOpen - 1) == 0;
  LqString source;
  if (wrapped) {
    source = xml;
  } else {
    source = kOpen;
    source += xml;
    source += "</text>";
  }
  XmlDocument document;
  if (document.Parse(source)) {
    const XmlNode* root = document.Root();
    if (root) return ParseXMLText(*root, result);
    result = u"";
    return result;
  }
  result.SetGrowthIfNone(LqWString::GrowSmallBlock);
  Utf8ToUtf16(result, xml);
  return result;
}

LqWString& ParseXMLText(const char* xml, LqWString& result) {
  if (!xml) {
    result.SetGrowthIfNone(LqWString::GrowSmallBlock);
    result = u"";
    return result;
  }
  return ParseXMLText(LqString(xml, false), result);
}
