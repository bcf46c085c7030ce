// The one part of the security routines that reads an XML node: the password policy.
#include "lqtools/security/PasswordPolicy.h"

namespace {

bool IsLetterOrDigit(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

bool IsSpecial(char16_t c) {
  for (const char16_t* s = u"!#$%&()*-./@_~"; *s; ++s)
    if (c == *s) return true;
  return false;
}

bool SwitchOn(const XmlDocument::XmlNode* policy, const char16_t* path) {
  return policy->Value(path, u"F") == u"T";
}

}  // namespace

bool IsValidPassword(XmlDocument::XmlNode* policy, const char16_t* password) {
  if (!policy) return true;
  int characters = 0;
  int specials = 0;
  for (const char16_t* p = password ? password : u""; *p; ++p) {
    ++characters;
    if (IsSpecial(*p))
      ++specials;
    else if (!IsLetterOrDigit(*p))
      return false;
  }
  // Kept: the keys are spelt as the policy files in the field spell them.
  if (SwitchOn(policy, u"maximunCharacters/enabled") &&
      policy->iValue(u"maximunCharacters/value", 0) < characters)
    return false;
  if (SwitchOn(policy, u"minimunCharacters/enabled") &&
      policy->iValue(u"minimunCharacters/value", 0) > characters)
    return false;
  if (SwitchOn(policy, u"especialCharacters/enabled") &&
      policy->iValue(u"especialCharacters/value", 0) > specials)
    return false;
  return true;
}
