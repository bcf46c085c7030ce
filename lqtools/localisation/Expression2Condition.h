// Expression2Condition: a logical expression stored as an XML tree, written as one line of
// condition text such as "([P1]>10)&&([P2]<=5)". Each expression node has a type ("AND", "OR",
// "E", "NE", "LT", "LTE", "GT", "GTE", "BET", "BEF", "VARIABLE", "VALUE"), its operands under an
// `Expressions` element, a `variable` or a `value`. Nothing is evaluated or typed; an unknown type
// or missing operands give empty text for that node. The recursion is as deep as the tree.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/text/LqBasicString.h"
#include "lqtools/xml/XmlDocument.h"

// Replaces `condition` with the text of `node` and its subtree. `node` must not be null.
LQTOOLS_API void Expression2Condition(LqWString& condition, const XmlDocument::XmlNode* node);
