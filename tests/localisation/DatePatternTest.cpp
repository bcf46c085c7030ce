#include <gtest/gtest.h>
#include <lqtools/localisation/DatePattern.h>

#include <string>

#include "localisation/LocaleFixture.h"

namespace {

class DatePattern : public LocaleRecords {
 protected:
  DatePattern() {
    SetupLocalize();  // English names
  }
  std::string Render(const char16_t* pattern) {
    LqWString out;
    ParseDate(out, LqWString(pattern), m_tuesday);
    return Narrow(out);
  }

  LqDateTime m_tuesday{2024, 3, 5, 9, 7, 3, 0, 0};
};

TEST_F(DatePattern, RendersFieldsNamesAndLiterals) {
  struct Case {
    const char16_t* pattern;
    const char* text;
  };
  const Case cases[] = {
      {u"", ""},
      {u"dd/MM/yyyy HH:mm:ss", "05/03/2024 09:07:03"},
      {u"d MMM yy", "5 Mar 2024"},
      {u"EEEE", "Tuesday"},
      {u"E", "Tue"},
      {u"EEE, d. MMMM", "Tue, 5. March"},
      {u"MMMMM", "March"},
      {u"M/d H:m:s", "3/5 9:7:3"},
      {u"yyyyyy", "002024"},
      {u"h a Z 12", "h a Z 12"},
      {u"'at' HH", "at 09"},
      {u"''", "'"},
      {u"'it''s'", "it's"},
      {u"'open", "open"},
      {u"'x'y", "x2024"},
      {u"HH'h'mm", "09h07"},
      {u"ss", "03"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Render(c.pattern), c.text) << Narrow(LqWString(c.pattern));
}

TEST_F(DatePattern, ShortNamesKeepNamesShorterThanThreeUnits) {
  localeInformationWide.SetMonthName(3, u"Mz");
  localeInformationWide.SetDayOfWeekName(3, u"D\u00E9");
  EXPECT_EQ(Render(u"MMM"), "Mz");
  LqWString out;
  ParseDate(out, LqWString(u"E"), m_tuesday);
  EXPECT_TRUE(out == u"D\u00E9");
}

TEST_F(DatePattern, AppendsToWhatTheOutputAlreadyHolds) {
  LqWString out(u"[");
  ParseDate(out, LqWString(u"HH"), m_tuesday);
  ParseDate(out, LqWString(u"-mm"), m_tuesday);
  EXPECT_TRUE(out == u"[09-07");
}

}  // namespace
