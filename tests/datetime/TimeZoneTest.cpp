// Zones read from the build's zoneinfo/ folder, which holds the system's compiled database.
#include <gtest/gtest.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqTimeZone.h>
#include <lqtools/datetime/TimeZoneNames.h>
#include <stdlib.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

#include "DateTimeTestHelpers.h"

namespace {

const char* const kMappedZones[] = {"Pacific/Tongatapu",
                                    "Pacific/Fiji",
                                    "Pacific/Auckland",
                                    "Asia/Magadan",
                                    "Asia/Vladivostok",
                                    "Australia/Hobart",
                                    "Pacific/Guam",
                                    "Australia/Sydney",
                                    "Australia/Brisbane",
                                    "Australia/Adelaide",
                                    "Australia/Darwin",
                                    "Asia/Yakutsk",
                                    "Asia/Seoul",
                                    "Asia/Tokyo",
                                    "Asia/Taipei",
                                    "Australia/Perth",
                                    "Asia/Kuala_Lumpur",
                                    "Asia/Irkutsk",
                                    "Asia/Hong_Kong",
                                    "Asia/Krasnoyarsk",
                                    "Asia/Bangkok",
                                    "Asia/Rangoon",
                                    "Asia/Colombo",
                                    "Asia/Dhaka",
                                    "Asia/Almaty",
                                    "Asia/Katmandu",
                                    "Asia/Calcutta",
                                    "Asia/Karachi",
                                    "Asia/Yekaterinburg",
                                    "Asia/Kabul",
                                    "Asia/Baku",
                                    "Asia/Dubai",
                                    "Asia/Tehran",
                                    "Africa/Nairobi",
                                    "Europe/Moscow",
                                    "Asia/Kuwait",
                                    "Asia/Baghdad",
                                    "Asia/Jerusalem",
                                    "Europe/Helsinki",
                                    "Africa/Harare",
                                    "Africa/Cairo",
                                    "Europe/Bucharest",
                                    "Europe/Athens",
                                    "Africa/Lagos",
                                    "Europe/Warsaw",
                                    "Europe/Brussels",
                                    "Europe/Belgrade",
                                    "Europe/Amsterdam",
                                    "Africa/Casablanca",
                                    "Europe/Dublin",
                                    "Atlantic/Azores",
                                    "Atlantic/Cape_Verde",
                                    "Atlantic/South_Georgia",
                                    "America/Sao_Paulo",
                                    "America/Buenos_Aires",
                                    "America/Thule",
                                    "America/St_Johns",
                                    "America/Montreal",
                                    "America/Caracas",
                                    "America/Santiago",
                                    "America/Bogota",
                                    "America/New_York",
                                    "America/Indianapolis",
                                    "America/Costa_Rica",
                                    "America/Chicago",
                                    "America/Mexico_City",
                                    "America/Winnipeg",
                                    "America/Phoenix",
                                    "America/Tegucigalpa",
                                    "America/Denver",
                                    "America/Los_Angeles",
                                    "America/Anchorage",
                                    "Pacific/Honolulu",
                                    "Pacific/Apia",
                                    "Pacific/Kwajalein"};

// Unix seconds as a date-time value (from 1999 on).
LqDateTime FromUnix(long long seconds) {
  tm fields{};
  xgmtime(&seconds, &fields);
  return LqDateTime(fields);
}

// The system's own offset at an instant, in the zone that TZ names.
long SystemOffset(time_t instant) {
  tm local{};
  localtime_r(&instant, &local);
  return local.tm_gmtoff;
}

void UseSystemZone(const std::string& zone) {
  setenv("TZ", (":" + zone).c_str(), 1);
  tzset();
}

class SystemTz : public ::testing::Test {
 protected:
  void SetUp() override {
    const char* tz = getenv("TZ");
    m_hadTz = tz != nullptr;
    if (tz) m_tz = tz;
  }
  void TearDown() override {
    if (m_hadTz)
      setenv("TZ", m_tz.c_str(), 1);
    else
      unsetenv("TZ");
    tzset();
    LqTimeZone::Get().Reset();
    LqTimeZone::GetAnother().Reset();
  }

 private:
  bool m_hadTz = false;
  std::string m_tz;
};

// Every mapped zone, at each of its transitions (a second before, at, and after) and at the
// first of every month, from 1999 (the first year a value holds) to 2037: the offsets agree with
// the system's localtime_r. Where the loader's rule departs from the system (element 0 stands
// for every time before the second transition; the system uses the first transition's type
// from the first transition on), those instants are left out and counted.
TEST_F(SystemTz, OffsetsAgreeWithTheSystemForEveryMappedZone) {
  constexpr long long kFirst = 915148800;  // 1999-01-01, the first instant a value holds
  constexpr long long kLast = 2145916800;  // 2038-01-01
  for (const char* name : kMappedZones) {
    LqTimeZone zone{LqWString(Widen(name).c_str())};
    ASSERT_TRUE(zone.IsValid()) << name;
    UseSystemZone(name);
    // The first of every month, and each change of offset the system makes (found by daily
    // steps, then to the second), a second and an hour either side.
    std::vector<long long> instants;
    long before = SystemOffset(kFirst);
    for (long long day = kFirst; day < kLast; day += 86400) {
      if (day % (86400LL * 30) < 86400) instants.push_back(day);
      const long after = SystemOffset(static_cast<time_t>(day + 86400));
      if (after == before) continue;
      long long low = day, high = day + 86400;
      while (high - low > 1) {
        const long long middle = (low + high) / 2;
        (SystemOffset(static_cast<time_t>(middle)) == before ? low : high) = middle;
      }
      for (long long d : {-3600LL, -1LL, 0LL, 1LL, 3600LL})
        instants.push_back(high + d);
      before = after;
    }
    for (long long t : instants)
      ASSERT_EQ(zone.Offset(FromUnix(t), true, 0), SystemOffset(static_cast<time_t>(t)))
          << name << " at " << t;
  }
}

TEST_F(SystemTz, BrusselsAcrossItsChanges) {
  LqTimeZone zone(LqWString(u"Europe/Brussels"));
  ASSERT_TRUE(zone.IsValid());
  EXPECT_EQ(Narrow(zone.Name()), "Europe/Brussels");
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 1, 15, 12, 0, 0, 0, 0), true, 0), 3600);
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 7, 15, 12, 0, 0, 0, 0), true, 0), 7200);
  EXPECT_FALSE(zone.Dst(LqDateTime(2021, 1, 15, 12, 0, 0, 0, 0)));
  EXPECT_TRUE(zone.Dst(LqDateTime(2021, 7, 15, 12, 0, 0, 0, 0)));
  // The change of 2021-03-28 at 01:00 UTC.
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 3, 28, 0, 59, 59, 0, 0), true, 0), 3600);
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 3, 28, 1, 0, 0, 0, 0), true, 0), 7200);
  // Modes: in January (standard time after a change back) mode 1 gives the summer offset; the
  // mode is ignored for UTC readings.
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 1, 15, 12, 0, 0, 0, 0), false, 1), 7200);
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 1, 15, 12, 0, 0, 0, 0), true, 1), 3600);
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 7, 15, 12, 0, 0, 0, 0), false, 2), 3600);
  EXPECT_EQ(zone.Offset(LqDateTime(2021, 7, 15, 12, 0, 0, 0, 0), false, 7), 7200);
  // At 2038-01-19T03:14:08 the Unix seconds turn to -2^31, before the second transition:
  // element 0 (offset 0 in this file, not the file's first local time type of 1050 seconds).
  EXPECT_EQ(zone.Offset(LqDateTime(2038, 1, 19, 3, 14, 8, 0, 0), true, 0), 0);
  EXPECT_EQ(zone.Offset(LqDateTime(2038, 1, 19, 3, 14, 7, 0, 0), true, 0), 3600);
}

TEST_F(SystemTz, GapAndOverlapReadAsDocumented) {
  LqTimeZone::Get().Set(LqWString(u"Europe/Brussels"));
  // 02:30 in the gap of 2021-03-28 comes out as the instant that reads 03:30.
  EXPECT_EQ(FieldsOf(LqDateTime(2021, 3, 28, 2, 30, 0, 0, 0).LTC2UTC()),
            "2021-03-28 01:30:00.000000");
  // 02:30 in the overlap of 2021-10-31 is the second, standard-time occurrence.
  EXPECT_EQ(FieldsOf(LqDateTime(2021, 10, 31, 2, 30, 0, 0, 0).LTC2UTC()),
            "2021-10-31 01:30:00.000000");
  EXPECT_EQ(FieldsOf(LqDateTime(2021, 10, 31, 0, 30, 0, 0, 0).UTC2LTC()),
            "2021-10-31 02:30:00.000000");
  EXPECT_EQ(FieldsOf(LqDateTime(2021, 7, 1, 10, 0, 0, 123, 456).UTC2LTC()),
            "2021-07-01 12:00:00.123456");
}

TEST_F(SystemTz, ExplicitConversionsUseTheNamedZoneFile) {
  LqDateTime utc(2021, 7, 1, 10, 0, 0, 0, 0);
  EXPECT_EQ(FieldsOf(utc.ExplicitUTC2LTC(u"America/New_York", false)),
            "2021-07-01 06:00:00.000000");
  EXPECT_EQ(FieldsOf(utc.ExplicitUTC2LTC(u"Asia/Tokyo", true)), "2021-07-01 19:00:00.000000");
  EXPECT_EQ(Narrow(LqTimeZone::GetAnother().Name()), "Asia/Tokyo");
  EXPECT_EQ(FieldsOf(LqDateTime(2021, 7, 1, 19, 0, 0, 0, 0).ExplicitLTC2UTC(u"Asia/Tokyo", true)),
            "2021-07-01 10:00:00.000000");
}

// With no zone set the plain conversions follow the system's zone, as TZ names it.
TEST_F(SystemTz, PlainConversionsFallBackToTheSystemZone) {
  setenv("TZ", ":America/New_York", 1);
  tzset();
  const LqDateTime utc(2021, 7, 1, 10, 0, 0, 123, 456);
  EXPECT_EQ(FieldsOf(utc.UTC2LTC()), "2021-07-01 06:00:00.123456");
  // Below the millisecond is dropped on this path only.
  EXPECT_EQ(FieldsOf(LqDateTime(2021, 7, 1, 6, 0, 0, 123, 456).LTC2UTC()),
            "2021-07-01 10:00:00.123000");
  EXPECT_EQ(FieldsOf(LqDateTime(2021, 1, 1, 5, 0, 0, 0, 0).LTC2UTC()),
            "2021-01-01 10:00:00.000000");
}

TEST(TimeZone, ClockReadsNowInUtcAndLocal) {
  const LqDateTime before = LqDateTime::UTC();
  const std::time_t now = std::time(nullptr);
  EXPECT_LE(std::llabs(static_cast<long long>(before.EpochSeconds()) - now), 2);
  EXPECT_EQ(before.USecond(), 0);
  EXPECT_TRUE(LqDateTime::LTC().Valid());
  EXPECT_EQ(SetSystemDateTime(before), -1);
}

TEST(TimeZoneNames, MapOneToOneAndExactly) {
  EXPECT_EQ(std::u16string(OlsonTimeZoneToWin32TimeZone(u"Europe/Brussels")),
            u"Romance Standard Time");
  EXPECT_EQ(std::u16string(Win32TimeZoneToOlsonTimeZone(u"Romance Standard Time")),
            u"Europe/Brussels");
  EXPECT_EQ(std::u16string(Win32TimeZoneToOlsonTimeZone(u"Mexico Standard Time")),
            u"America/Mexico_City");
  EXPECT_EQ(std::u16string(Win32TimeZoneToOlsonTimeZone(u"Mexico Standard Time 2")),
            u"America/Tegucigalpa");
  for (const char16_t* unknown :
       {u"Europe/Madrid", u"romance standard time", u"Europe/Brussel", u"", u"Romance"}) {
    EXPECT_EQ(*OlsonTimeZoneToWin32TimeZone(unknown), u'\0');
    EXPECT_EQ(*Win32TimeZoneToOlsonTimeZone(unknown), u'\0');
  }
  EXPECT_EQ(*OlsonTimeZoneToWin32TimeZone(nullptr), u'\0');
  for (const char* name : kMappedZones) {
    const std::u16string olson = Widen(name);
    const char16_t* windows = OlsonTimeZoneToWin32TimeZone(olson.c_str());
    ASSERT_NE(*windows, u'\0') << name;
    EXPECT_EQ(std::u16string(Win32TimeZoneToOlsonTimeZone(windows)), olson);
  }
}

TEST(TimeZone, SupportedZonesListTwoLevelsAndAppend) {
  std::vector<LqWString> names;
  ASSERT_TRUE(LqTimeZone::GetSupportedOlsonTimeZones(names));
  std::vector<std::string> narrow;
  for (const LqWString& name : names)
    narrow.push_back(Narrow(name));
  auto has = [&](const char* name) { return std::count(narrow.begin(), narrow.end(), name); };
  EXPECT_EQ(has("Europe/Brussels"), 1);
  EXPECT_EQ(has("UTC"), 1);
  EXPECT_EQ(has("America/Indiana/Knox"), 0);
  const std::size_t first = names.size();
  ASSERT_TRUE(LqTimeZone::GetSupportedOlsonTimeZones(names));
  EXPECT_EQ(names.size(), 2 * first);
}

}  // namespace
