// IsValidPassword: a new password checked against a policy held in an XML node. The password may
// hold only ASCII letters, digits and the specials ! # $ % & ( ) * - . / @ _ ~ (a blank or any
// other character fails it). The policy's switches (on only when their text is exactly "T") and
// numbers, in the order tested:
//   maximunCharacters/enabled, /value    the password has at most that many characters
//   minimunCharacters/enabled, /value    at least that many characters
//   especialCharacters/enabled, /value   at least that many special characters
// A null policy passes every password. The result does not say which rule failed.
#pragma once

#include "lqtools/LqToolsExport.h"
#include "lqtools/xml/XmlDocument.h"

LQTOOLS_API bool IsValidPassword(XmlDocument::XmlNode* policy, const char16_t* password);
