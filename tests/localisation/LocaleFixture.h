// Sets the separators of both locale records for one test and restores the records afterwards.
#pragma once

#include <gtest/gtest.h>
#include <lqtools/localisation/LqLocaleInformation.h>

class LocaleRecords : public ::testing::Test {
 protected:
  LocaleRecords() : m_narrow(localeInformation), m_wide(localeInformationWide) {
    UseSeparators(u",", u".");
  }
  ~LocaleRecords() override {
    localeInformation = m_narrow;
    localeInformationWide = m_wide;
  }

  static void UseSeparators(const char16_t* thousands, const char16_t* decimal) {
    localeInformationWide.SetThousandSeparator(thousands);
    localeInformationWide.SetDecimalSeparator(decimal);
    localeInformation.SetThousandSeparator(LqString(LqWString(thousands)));
    localeInformation.SetDecimalSeparator(LqString(LqWString(decimal)));
  }

 private:
  LqLocaleInformation<LqString> m_narrow;
  LqLocaleInformation<LqWString> m_wide;
};

inline std::string Narrow(const LqWString& text) {
  std::string out;
  for (int i = 0; i < text.Length(); ++i)
    out += text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
  return out;
}
