#include <gtest/gtest.h>
#include <locale.h>
#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/NumberFormat.h>
#include <stdlib.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "localisation/LocaleFixture.h"
#include "localisation/StringTableTestSupport.h"
#include "support/TempFolder.h"

namespace {

// Sets one environment variable for the life of the object.
class ScopedEnvironment {
 public:
  ScopedEnvironment(const char* name, const std::string& value) : m_name(name) {
    if (const char* old = getenv(name)) m_old = std::make_unique<std::string>(old);
    setenv(name, value.c_str(), 1);
  }
  ~ScopedEnvironment() {
    if (m_old) {
      setenv(m_name, m_old->c_str(), 1);
    } else {
      unsetenv(m_name);
    }
  }

 private:
  const char* m_name;
  std::unique_ptr<std::string> m_old;
};

// The categories that the locale settings are read from.
bool LocaleAvailable(const char* name) {
  const locale_t locale = newlocale(LC_CTYPE_MASK | LC_NUMERIC_MASK | LC_TIME_MASK, name,
                                    static_cast<locale_t>(nullptr));
  if (locale) freelocale(locale);
  return locale != nullptr;
}

// Locales with other separators than "C": generated with localedef into a folder of their own
// (found through LOCPATH), or taken from the system when they are installed there.
class UserLocales : public LocaleRecords {
 protected:
  static void SetUpTestSuite() {
    s_folder = new TempFolder;
    for (const char* name : {"de_DE", "fr_FR"}) {
      const std::string command = "localedef -i " + std::string(name) + " -f UTF-8 " +
                                  s_folder->Path(std::string(name) + ".UTF-8") + " >/dev/null 2>&1";
      if (std::system(command.c_str()) != 0) s_failed += std::string(" ") + name;
    }
    // A locale of our own whose thousands separator is U+00A0: only the categories read here.
    s_folder->Write("xx_NB",
                    "LC_CTYPE\ncopy \"i18n\"\nEND LC_CTYPE\n"
                    "LC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"<U00A0>\"\n"
                    "grouping 3\nEND LC_NUMERIC\n"
                    "LC_TIME\ncopy \"de_DE\"\nEND LC_TIME\n");
    const std::string command = "localedef -c -i " + s_folder->Path("xx_NB") + " -f UTF-8 " +
                                s_folder->Path("xx_NB.UTF-8") + " >/dev/null 2>&1";
    if (std::system(command.c_str()) == -1) s_failed += " xx_NB";
  }
  static void TearDownTestSuite() {
    delete s_folder;
    s_folder = nullptr;
  }

  // Selects `name` for SetupLocalize, or false when it can be had neither way.
  bool Use(const std::string& name) {
    m_path = std::make_unique<ScopedEnvironment>("LOCPATH", s_folder->Path());
    m_all = std::make_unique<ScopedEnvironment>("LC_ALL", name);
    if (LocaleAvailable("")) return true;
    m_path.reset();
    return LocaleAvailable(name.c_str());
  }

  static TempFolder* s_folder;
  static std::string s_failed;
  std::unique_ptr<ScopedEnvironment> m_path;
  std::unique_ptr<ScopedEnvironment> m_all;
};

TempFolder* UserLocales::s_folder = nullptr;
std::string UserLocales::s_failed;

TEST_F(UserLocales, CUtf8GivesEnglishNamesAndTheCSeparators) {
  ASSERT_TRUE(Use("C.UTF-8"));
  SetupLocalize();
  const LqLocaleInformation<LqWString>& wide = LocaleInformationWide();
  EXPECT_TRUE(wide.thousandSeparator == u"");
  EXPECT_TRUE(wide.decimalSeparator == u".");
  EXPECT_TRUE(wide.timeSeparator == u":");
  EXPECT_TRUE(wide.dateSeparator == u"/");
  EXPECT_EQ(wide.shortDateOrder, 0);
  EXPECT_EQ(wide.longDateOrder, 0);
  EXPECT_EQ(wide.firstDayOfWeek, 1);  // Sunday
  EXPECT_EQ(wide.weekSetting, 1);
  EXPECT_TRUE(wide.monthNames[0] == u"January");
  EXPECT_TRUE(wide.dayOfWeekNames[3] == u"Wednesday");
  EXPECT_GE(wide.maxDayNameLength, 9);
  EXPECT_STREQ(localeInformation.monthNames[11], "December");
  EXPECT_STREQ(localeInformation.decimalSeparator, ".");
  EXPECT_STREQ(localeInformation.dateSeparator, "/");
  EXPECT_EQ(localeInformation.firstDayOfWeek, 1);
}

TEST_F(UserLocales, GermanLocaleGivesItsSeparatorsOrderAndMonday) {
  if (!Use("de_DE.UTF-8")) GTEST_SKIP() << "no de_DE.UTF-8: localedef failed for" << s_failed;
  SetupLocalize();
  const LqLocaleInformation<LqWString>& wide = LocaleInformationWide();
  EXPECT_TRUE(wide.thousandSeparator == u".");
  EXPECT_TRUE(wide.decimalSeparator == u",");
  EXPECT_TRUE(wide.timeSeparator == u":");  // from "%T"
  EXPECT_TRUE(wide.dateSeparator == u".");
  EXPECT_EQ(wide.shortDateOrder, 1);
  EXPECT_EQ(wide.firstDayOfWeek, 2);
  EXPECT_EQ(localeInformation.firstDayOfWeek, 2);
  EXPECT_STREQ(localeInformation.thousandSeparator, ".");
  EXPECT_TRUE(wide.monthNames[2] == u"March");  // the names stay English
}

TEST_F(UserLocales, NarrowSeparatorsAreTheLowBytesOfTheWideOnes) {
  if (!Use("fr_FR.UTF-8")) GTEST_SKIP() << "no fr_FR.UTF-8: localedef failed for" << s_failed;
  SetupLocalize();
  ASSERT_EQ(localeInformationWide.thousandSeparator.Length(), 1);
  const char16_t unit = localeInformationWide.thousandSeparator[0];
  EXPECT_TRUE(unit == 0x202F || unit == 0x00A0) << static_cast<int>(unit);
  ASSERT_EQ(localeInformation.thousandSeparator.Length(), 1);
  EXPECT_EQ(static_cast<unsigned char>(localeInformation.thousandSeparator[0]), unit & 0xFF);
  EXPECT_STREQ(localeInformation.decimalSeparator, ",");
}

TEST_F(UserLocales, NoBreakSpaceSeparatorBecomesTheSingleByteA0) {
  if (!Use("xx_NB.UTF-8")) GTEST_SKIP() << "no locale with U+00A0 could be generated";
  SetupLocalize();
  EXPECT_TRUE(localeInformationWide.thousandSeparator == u"\u00A0");
  EXPECT_STREQ(localeInformation.thousandSeparator, "\xA0");
  LqString text;
  FormatNumber(text, 1234.5, 1, true);
  EXPECT_STREQ(text,
               "1\xA0"
               "234,5");
}

TEST_F(UserLocales, UnknownLocaleLeavesTheSettingsAsTheyWere) {
  ASSERT_TRUE(Use("C.UTF-8"));
  SetupLocalize();
  localeInformationWide.SetDecimalSeparator(u"!");
  localeInformationWide.SetFirstDayOfWeek(5);
  m_all.reset();
  m_all = std::make_unique<ScopedEnvironment>("LC_ALL", "xx_NOWHERE.UTF-8");
  SetupLocalize();
  EXPECT_TRUE(localeInformationWide.decimalSeparator == u"!");
  EXPECT_EQ(localeInformationWide.firstDayOfWeek, 2);  // the start value of every call
  EXPECT_STREQ(localeInformation.decimalSeparator, "!");
}

TEST_F(LocaleRecords, NamesFromTheStringTableGoToBothRecords) {
  TempFolder folder;
  folder.Write("names.lqs", WrittenTable({{10, "M\xC3\xA4rz"}, {20, "Mittwochabendtag"}}));
  ASSERT_TRUE(SetLqLoadStringTableFile(folder.Path("names.lqs").c_str(), nullptr));
  SetupLocalize();
  SetLocalizeMonthName(3, 10);
  SetLocalizeDayOfWeekName(4, 20);
  SetLocalizeDayOfWeekName(5, 99);
  SetLocalizeMonthName(13, 10);  // refused
  SetLocalizeDayOfWeekName(0, 10);
  EXPECT_TRUE(localeInformationWide.monthNames[2] == u"M\u00E4rz");
  EXPECT_STREQ(localeInformation.monthNames[2], "M\xC3\xA4rz");
  EXPECT_TRUE(localeInformationWide.dayOfWeekNames[4] == u"IDS_00099");
  EXPECT_EQ(localeInformationWide.maxDayNameLength, 16);
  EXPECT_EQ(localeInformation.maxDayNameLength, 16);

  SetupLocalize();
  EXPECT_TRUE(localeInformationWide.dayOfWeekNames[3] == u"Wednesday");
  EXPECT_EQ(localeInformationWide.maxDayNameLength, 16);  // never lowered
  SetLqLoadStringTableFile(folder.Path("missing").c_str(), nullptr);
}

}  // namespace
