#include <gtest/gtest.h>
#include <lqtools/security/PasswordHelpers.h>
#include <lqtools/security/PasswordPolicy.h>
#include <lqtools/xml/XmlDocument.h>

#include <string>

namespace {

std::u16string Encoded(std::u16string text, int size = 200) {
  text.resize(200, u'\0');
  EXPECT_TRUE(EncodePassword(text.data(), size));
  return text.c_str();
}

std::u16string Decoded(std::u16string text, int size = 200) {
  text.resize(200, u'\0');
  EXPECT_TRUE(DecodePassword(text.data(), size));
  return text.c_str();
}

TEST(Password, ScramblesToHexPairsAndBack) {
  EXPECT_EQ(Encoded(u"A", 8), u"1B");
  EXPECT_EQ(Decoded(u"1B", 8), u"A");
  EXPECT_EQ(Encoded(u""), u"");
  EXPECT_EQ(Decoded(u""), u"");
  for (const char16_t* password :
       {u"secret", u"P@ss w0rd!", u"\u00e9t\u00e9", u"0123456789abcdefghijklmnopqrstuv"})
    EXPECT_EQ(Decoded(Encoded(password)), password);
}

TEST(Password, UnitEqualToTheKeyEndsThePassword) {
  EXPECT_EQ(Encoded(u"aZbc"), u"3B00");
  EXPECT_EQ(Decoded(u"3B00"), u"aZ");
}

TEST(Password, BuffersBoundEveryLength) {
  // 32 units fit; from the 33rd on they are dropped.
  const std::u16string longPassword(40, u'x');
  EXPECT_EQ(Encoded(longPassword).size(), 64u);
  EXPECT_EQ(Decoded(Encoded(longPassword)), std::u16string(32, u'x'));
  EXPECT_EQ(Decoded(std::u16string(1000, u'1')).size(), 63u);
  // A unit above 0xFF keeps the first two of its digits; the last keeps all of them.
  EXPECT_EQ(Encoded(u"\u01FFa"), u"1A3B");
  EXPECT_EQ(Encoded(u"a\u01FF"), u"3B1A5");
  // A lone digit at the end is dropped; the capacity cuts the text written back.
  EXPECT_EQ(Decoded(u"1B3"), u"A");
  EXPECT_EQ(Encoded(u"AAAA", 5), u"1B1B");
  EXPECT_TRUE(EncodePassword(nullptr, 10));
  EXPECT_TRUE(DecodePassword(nullptr, 10));
}

class Policy : public ::testing::Test {
 protected:
  XmlDocument::XmlNode* With(const char* xml) {
    EXPECT_TRUE(m_document.Parse(xml));
    return m_document.Root();
  }
  XmlDocument m_document;
};

TEST_F(Policy, NullPolicyPassesEverything) {
  EXPECT_TRUE(IsValidPassword(nullptr, u"a b"));
  EXPECT_TRUE(IsValidPassword(nullptr, nullptr));
}

TEST_F(Policy, CharacterSetIsFixed) {
  XmlDocument::XmlNode* none = With("<policy/>");
  EXPECT_TRUE(IsValidPassword(none, u"abc"));
  EXPECT_TRUE(IsValidPassword(none, u"A1!#$%&()*-./@_~"));
  for (const char16_t* bad : {u"a b", u"a+b", u"\u00e9", u"a^", u"a,b"})
    EXPECT_FALSE(IsValidPassword(none, bad));
}

TEST_F(Policy, RulesRunOnlyWhenSwitchedOnWithT) {
  XmlDocument::XmlNode* min =
      With("<p><minimunCharacters><enabled>T</enabled><value>4</value></minimunCharacters></p>");
  EXPECT_FALSE(IsValidPassword(min, u"abc"));
  EXPECT_TRUE(IsValidPassword(min, u"abcd"));
  XmlDocument::XmlNode* off =
      With("<p><minimunCharacters><enabled>true</enabled><value>4</value></minimunCharacters></p>");
  EXPECT_TRUE(IsValidPassword(off, u"abc"));
  XmlDocument::XmlNode* all = With(
      "<p><maximunCharacters><enabled>T</enabled><value>6</value></maximunCharacters>"
      "<minimunCharacters><enabled>T</enabled><value>3</value></minimunCharacters>"
      "<especialCharacters><enabled>T</enabled><value>2</value></especialCharacters></p>");
  EXPECT_TRUE(IsValidPassword(all, u"a!b#"));
  EXPECT_FALSE(IsValidPassword(all, u"a!b#cde"));
  EXPECT_FALSE(IsValidPassword(all, u"ab!c"));
  // The correctly spelt keys are not read.
  XmlDocument::XmlNode* spelt =
      With("<p><minimumCharacters><enabled>T</enabled><value>9</value></minimumCharacters></p>");
  EXPECT_TRUE(IsValidPassword(spelt, u"abc"));
}

}  // namespace
