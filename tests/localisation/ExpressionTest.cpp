#include <gtest/gtest.h>

#include <string>

#include <lqtools/localisation/Expression2Condition.h>
#include <lqtools/xml/XmlDocument.h>

#include "support/TextHelpers.h"

namespace {


std::string Condition(const char* xml) {
  XmlDocument document;
  EXPECT_TRUE(document.Parse(xml)) << xml;
  LqWString condition(u"stale");
  Expression2Condition(condition, document.Root());
  return Utf8Of(condition);
}

TEST(Expression2Condition, RendersLeavesComparisonsAndOperators) {
  const struct {
    const char* xml;
    const char* text;
  } cases[] = {
      {"<e><type>VARIABLE</type><variable>P1</variable></e>", "[P1]"},
      {"<e><type>VARIABLE</type><Variable>P1</Variable></e>", "[P1]"},
      {"<e><type>VARIABLE</type></e>", "[]"},
      {"<e><Type>VALUE</Type><value>10</value></e>", "10"},
      {"<e><type>VALUE</type><Value>a b</Value></e>", "a b"},
      {"<e><type>AND</type><Expressions>"
       "<x><type>GT</type><Expressions><a><type>VARIABLE</type><variable>P1</variable></a>"
       "<b><type>VALUE</type><value>10</value></b></Expressions></x>"
       "<x><type>LTE</type><Expressions><a><type>VARIABLE</type><variable>P2</variable></a>"
       "<b><type>VALUE</type><value>5</value></b></Expressions></x>"
       "</Expressions></e>",
       "([P1]>10)&&([P2]<=5)"},
      {"<e><type>BET</type><expressions><a><type>VARIABLE</type><variable>P1</variable></a>"
       "<b><type>VALUE</type><value>3</value></b></expressions></e>",
       "[P1]==3"},
      {"<e><type>BEF</type><expressions><a><type>VALUE</type><value>1</value></a>"
       "<b><type>VALUE</type><value>2</value></b><c><type>VALUE</type><value>3</value></c>"
       "</expressions></e>",
       "1==2==3"},
      {"<e><type>OR</type><Expressions><a><type>VALUE</type><value>a</value></a></Expressions></e>",
       "(a)"},
      {"<e><type>AND</type><Expressions><a><type>NOPE</type></a>"
       "<b><type>VALUE</type><value>a</value></b></Expressions></e>",
       "()&&(a)"},
      {"<e><type>NE</type><Expressions><a><type>VALUE</type><value>1</value></a>"
       "<b><type>VALUE</type><value>2</value></b></Expressions></e>",
       "1!=2"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Condition(c.xml), c.text) << c.xml;
}

TEST(Expression2Condition, UnknownTypesAndMissingOperandsGiveEmptyText) {
  EXPECT_EQ(Condition("<e><type>and</type><Expressions><a><type>VALUE</type><value>1</value></a>"
                      "</Expressions></e>"),
            "");
  EXPECT_EQ(Condition("<e><type>AND</type><Expressions/></e>"), "");
  EXPECT_EQ(Condition("<e><type>AND</type></e>"), "");
  EXPECT_EQ(Condition("<e/>"), "");
}

TEST(Expression2Condition, FirstNameOfEachFieldWins) {
  EXPECT_EQ(Condition("<e><type>VALUE</type><Type>VARIABLE</Type><value>v</value></e>"), "v");
  EXPECT_EQ(Condition("<e><type>OR</type>"
                      "<expressions><a><type>VALUE</type><value>low</value></a></expressions>"
                      "<Expressions><a><type>VALUE</type><value>cap</value></a></Expressions></e>"),
            "(cap)");
}

// The parser refuses documents nested deeper than it allows, so a parsed expression is at most
// about half that deep (a node and its Expressions element per level): the recursion stays small.
TEST(Expression2Condition, DeepestParsedExpressionRenders) {
  const int levels = 999;
  std::string xml;
  for (int i = 0; i < levels; ++i)
    xml += "<e><type>OR</type><Expressions>";
  xml += "<v><type>VALUE</type><value>x</value></v>";
  for (int i = 0; i < levels; ++i)
    xml += "</Expressions></e>";
  const std::string text = Condition(xml.c_str());
  EXPECT_EQ(text, std::string(levels, '(') + "x" + std::string(levels, ')'));
}

}  // namespace
