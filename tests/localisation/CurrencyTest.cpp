#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include <lqtools/files/PathHelpers.h>
#include <lqtools/localisation/LqCurrency.h>
#include <lqtools/text/Unicode.h>

#include "support/TextHelpers.h"

namespace {

// "currencies.curr" lies beside the program; each test writes its own and removes it.
class Currency : public ::testing::Test {
 protected:
  void TearDown() override { std::remove(FilePath().c_str()); }
  static std::string FilePath() {
    LqString folder;
    Utf16ToUtf8(folder, GetSharePath());
    return std::string(static_cast<const char*>(folder)) + "currencies.curr";
  }
  static void WriteFile(const std::string& content) {
    std::ofstream(FilePath(), std::ios::binary) << content;
  }
};

TEST_F(Currency, DefaultIsInvalidAndEmpty) {
  LqCurrency currency;
  EXPECT_FALSE(currency.IsValid());
  EXPECT_TRUE(currency.Code().IsEmpty());
  EXPECT_TRUE(currency.Symbol().IsEmpty());
}

TEST_F(Currency, SetFindsTheFirstExactPair) {
  WriteFile("EUR\t\xE2\x82\xAC\nUSD $\nUSD dollar\n");
  LqCurrency currency(u"USD");
  EXPECT_TRUE(currency.IsValid());
  EXPECT_EQ(Utf8Of(currency.Code()), "USD");
  EXPECT_EQ(Utf8Of(currency.Symbol()), "$");
  currency.Set(u"EUR");
  EXPECT_EQ(Utf8Of(currency.Symbol()), "\xE2\x82\xAC");
}

TEST_F(Currency, UnknownLowerCaseOrEmptyCodesLeaveItInvalid) {
  WriteFile("EUR E\nUSD $\n");
  for (const char16_t* code : {u"usd", u"GBP", u""}) {
    LqCurrency currency(u"USD");
    ASSERT_TRUE(currency.IsValid());
    currency.Set(code);
    EXPECT_FALSE(currency.IsValid());
    EXPECT_TRUE(currency.Symbol().IsEmpty());
  }
}

TEST_F(Currency, CurrentCodeDoesNotReadTheFileAgain) {
  WriteFile("USD $\n");
  LqCurrency currency(u"USD");
  WriteFile("USD US$\n");
  currency.Set(u"USD");
  EXPECT_EQ(Utf8Of(currency.Symbol()), "$");
}

TEST_F(Currency, PairsNeedNotStandOnLinesOfTheirOwn) {
  WriteFile("AAA x BBB y");
  LqCurrency currency(u"BBB");
  EXPECT_EQ(Utf8Of(currency.Symbol()), "y");
}

TEST_F(Currency, ALastCodeWithoutSymbolTakesThePreviousSymbol) {
  WriteFile("AAA x\nBBB");
  EXPECT_EQ(Utf8Of(LqCurrency(u"BBB").Symbol()), "x");
  WriteFile("BBB");
  LqCurrency alone(u"BBB");
  EXPECT_TRUE(alone.IsValid());
  EXPECT_TRUE(alone.Symbol().IsEmpty());
}

TEST_F(Currency, LongTokensAreCutAndKeepThePairsInStep) {
  WriteFile("ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789abcdefghij\nUSD $\n");
  EXPECT_EQ(Utf8Of(LqCurrency(u"ABCDEFGHIJKLMNO").Symbol()), "0123456789abcde");
  EXPECT_EQ(Utf8Of(LqCurrency(u"USD").Symbol()), "$");
  EXPECT_FALSE(LqCurrency(u"ABCDEFGHIJKLMNOPQRSTUVWXYZ").IsValid());
}

TEST_F(Currency, MissingFileLeavesItInvalid) {
  LqCurrency currency(u"USD");
  EXPECT_FALSE(currency.IsValid());
}

TEST_F(Currency, ProcessInstanceIsShared) {
  WriteFile("CHF Fr.\n");
  LqCurrency::Get().Set(u"CHF");
  EXPECT_EQ(&LqCurrency::Get(), &LqCurrency::m_instance);
  EXPECT_EQ(Utf8Of(LqCurrency::m_instance.Symbol()), "Fr.");
  LqCurrency::Get().Reset();
}

}  // namespace
