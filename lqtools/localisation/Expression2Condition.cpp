#include "lqtools/localisation/Expression2Condition.h"

#include <cstring>

namespace {

struct Operator {
  const char16_t* type;
  const char16_t* text;
  bool parenthesised;
};

// Kept: "BET" and "BEF" render as plain equality; the conditions stored for them rely on it.
constexpr Operator kOperators[] = {
    {u"AND", u"&&", true},  {u"OR", u"||", true},   {u"E", u"==", false}, {u"NE", u"!=", false},
    {u"LT", u"<", false},   {u"LTE", u"<=", false}, {u"GT", u">", false}, {u"GTE", u">=", false},
    {u"BET", u"==", false}, {u"BEF", u"==", false},
};

// The value of the child `first` when it exists, otherwise the value at `second`.
LqWString FieldOf(const XmlDocument::XmlNode* node, const char16_t* first, const char16_t* second) {
  if (const XmlDocument::XmlNode* child = node->Node(first)) return child->Value();
  return node->Value(second, u"");
}

}  // namespace

void Expression2Condition(LqWString& condition, const XmlDocument::XmlNode* node) {
  condition.SetGrowthIfNone(LqWString::GrowSmallBlock);
  condition = u"";

  const LqWString type = FieldOf(node, u"type", u"Type");
  if (type == u"VARIABLE") {
    condition += u"[";
    condition += FieldOf(node, u"variable", u"Variable");
    condition += u"]";
    return;
  }
  if (type == u"VALUE") {
    condition += FieldOf(node, u"value", u"Value");
    return;
  }

  const Operator* found = nullptr;
  for (const Operator& candidate : kOperators)
    if (type == candidate.type) found = &candidate;
  if (!found) return;

  // Kept: the capitalised name comes first here, unlike the other fields; a node that has both
  // takes `Expressions`.
  const XmlDocument::XmlNode* operands = node->Node(u"Expressions");
  if (!operands) operands = node->Node(u"expressions");
  if (!operands) return;

  LqWString operand;
  operand.SetGrowthIfNone(LqWString::GrowSmallBlock);
  for (auto child = operands->ChildsBegin(); child != operands->ChildsEnd(); ++child) {
    if (child != operands->ChildsBegin()) condition += found->text;
    if (found->parenthesised) condition += u"(";
    Expression2Condition(operand, *child);
    condition += operand;
    if (found->parenthesised) condition += u")";
  }
}
