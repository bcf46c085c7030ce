#include <gtest/gtest.h>

#include <string>

#include <lqtools/localisation/LanguageIds.h>

namespace {

int CodeToId(std::string code) { return Win32LanguageCodeToLanguageId(code.data()); }

TEST(LanguageIds, CodesCompareTwoCharactersIgnoringCase) {
  const struct {
    const char* code;
    int id;
  } cases[] = {{"DE", 7},  {"de_AT", 7}, {"en-GB", 9}, {"x", -1},  {"", -1},
               {"hr", 26}, {"sr", 26},   {"SR", 26},   {"et", 37}, {"zz", -1}};
  for (const auto& c : cases)
    EXPECT_EQ(CodeToId(c.code), c.id) << c.code;
  EXPECT_EQ(Win32LanguageCodeToLanguageId(nullptr), -1);
}

TEST(LanguageIds, PersianIsOneWay) {
  EXPECT_EQ(CodeToId("fa"), -1);
  EXPECT_STREQ(Win32LanguageIdToLanguageCode(41), "fa");
}

TEST(LanguageIds, IdsAreMaskedToThePrimaryLanguage) {
  const struct {
    int id;
    const char* code;
  } cases[] = {{0x0409, "en"}, {0x0809, "en"}, {0x0C0A, "es"}, {26, "hr"}, {31770, "hr"},
               {18, "??"},     {0, "??"},      {0x400, "??"},  {42, "??"}, {-1, "??"}};
  for (const auto& c : cases)
    EXPECT_STREQ(Win32LanguageIdToLanguageCode(c.id), c.code) << c.id;
}

TEST(LanguageIds, NamesKeepTheirStoredBytes) {
  EXPECT_STREQ(Win32LanguageIdToLanguageName(31770), "Srpski");
  EXPECT_STREQ(Win32LanguageIdToLanguageName(0x041A), "Hrvatski");
  EXPECT_STREQ(Win32LanguageIdToLanguageName(26), "Hrvatski");
  EXPECT_STREQ(Win32LanguageIdToLanguageName(0x0421), "Italian/German");
  EXPECT_STREQ(Win32LanguageIdToLanguageName(30), "Thai");
  EXPECT_STREQ(Win32LanguageIdToLanguageName(25), "Pycc\xC4\xB8\xD0\xB8\xD0\xB9");
  EXPECT_STREQ(Win32LanguageIdToLanguageName(41), "\xDB\x8C\xD8\xB3\xD8\xB1\xD8\xA7\xD9\x81");
  EXPECT_STREQ(Win32LanguageIdToLanguageName(23), "??");
}

TEST(LanguageIds, EveryCodeLeadsBackToItsId) {
  for (int id = 1; id <= 41; ++id) {
    std::string code = Win32LanguageIdToLanguageCode(id);
    if (code == "??" || id == 41) continue;
    EXPECT_EQ(CodeToId(code), id) << code;
  }
}

}  // namespace
