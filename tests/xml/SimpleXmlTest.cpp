#include <gtest/gtest.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/security/uuid.h>
#include <lqtools/xml/LqSimpleXml.h>

#include <string>

namespace {

std::string Text(const LqSimpleXml& xml) {
  LqString out;
  xml.CreateXmlCode(out);
  return std::string(static_cast<const char*>(out), static_cast<std::size_t>(out.Length()));
}

TEST(SimpleXml, OpensAddsAndClosesFrontToBack) {
  LqSimpleXml xml;
  EXPECT_EQ(Text(xml), "");
  xml.Open(u"a");
  xml.Add(u"b", 1);
  xml.Close(u"a");
  EXPECT_EQ(Text(xml), "<a><b>1</b></a>");
}

TEST(SimpleXml, CloseIgnoresItsTagAndEmptyStacks) {
  LqSimpleXml xml;
  xml.Close(u"none");
  xml.Open(u"a");
  xml.Open(u"b");
  xml.Close(u"x");
  xml.Close(u"y");
  EXPECT_EQ(Text(xml), "<a><b></b></a>");
  LqSimpleXml open;
  open.Open(u"a");
  open.Open(u"b");
  open.Add(u"c", u"x");
  EXPECT_EQ(Text(open), "<a><b><c>x</c></b></a>");
}

TEST(SimpleXml, EachAddOnAnEmptyStackStartsANewDocument) {
  LqSimpleXml xml;
  xml.Add(u"a", 1);
  xml.Add(u"b", 2);
  EXPECT_EQ(Text(xml), "<b>2</b>");
}

TEST(SimpleXml, ValuesOfEveryKind) {
  LqSimpleXml xml;
  xml.Open(u"r");
  xml.Add(u"w", LqWString(u"<&>"));
  xml.Add(u"p", u"plain");
  xml.Add(u"n", "caf\xC3\xA9");
  xml.Add(u"s", LqString("ab"));
  xml.Add(u"i", -42);
  xml.Add(u"d", LqDateTime(2021, 3, 4, 5, 6, 7, 89, 500));
  xml.Add(u"u", uuid(0x12345678, 0x9ABC, 0xDEF0, 1, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF));
  const unsigned char bytes[] = {0x0A, 0xFF};
  xml.Add(u"b", bytes, 2);
  xml.Add(u"e", bytes, 0);
  EXPECT_EQ(Text(xml),
            "<r><w>&lt;&amp;&gt;</w><p>plain</p><n>caf\xEF\xBF\x83\xEF\xBE\xA9</n><s>ab</s>"
            "<i>-42</i><d>20210304050607089</d><u>12345678-9ABC-DEF0-0123-456789ABCDEF</u>"
            "<b>0AFF</b><e></e></r>");
}

}  // namespace
