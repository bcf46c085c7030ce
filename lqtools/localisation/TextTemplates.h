// ParseXMLText: a stored text template rendered in the language and locale in force now. A
// template is a small XML document under a `text` element whose children append, in order:
//   textId      "IDS_<n>": the string table text of n        textStr    the text itself
//   textValue   a number laid out by FormatDouble            textDate   a date by ParseDate
//   textParams  a format string (textId or textStr) filled with paramId, paramStr, paramDouble
//               and paramInteger children, one per conversion
// Other elements are skipped; attributes are never read. Nothing is reported: unknown ids render
// their fallback text, bad numbers read as 0, a bad date shows as its text, and text that is not
// XML shows as itself.
//
// A conversion is filled only by a parameter of its kind: text (%s, %ls, %hs, %S) by paramId and
// paramStr, numbers (%d %i %u %o %x %X %c, %e %f %g %a and their capitals) by paramInteger and
// paramDouble, converted to the type the conversion reads. Any other pairing, a '*' width or
// precision, %p and %n print the conversion as it stands and use up the parameter. Each piece is
// cut to 1023 units.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"
#include "lqtools/xml/XmlDocument.h"

// Replaces `result` with the rendering of `node` (empty unless its tag is "text") and returns it.
LQTOOLS_API LqWString& ParseXMLText(const XmlDocument::XmlNode& node, LqWString& result);
// UTF-8 template text: wrapped in <text>...</text> unless it starts with "<text>", parsed and
// rendered. Text that fails to parse is returned as it came, in UTF-16.
LQTOOLS_API LqWString& ParseXMLText(const LqString& xml, LqWString& result);
// The same for a zero-terminated text; null gives the empty text.
LQTOOLS_API LqWString& ParseXMLText(const char* xml, LqWString& result);
