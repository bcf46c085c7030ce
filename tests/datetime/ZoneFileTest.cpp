// Zone files written by the tests into the zoneinfo/ folder beside this program (which lies in a
// folder of its own), and the fallbacks of the conversions for names without a file there.
#include <gtest/gtest.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqTimeZone.h>
#include <lqtools/text/Unicode.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "DateTimeTestHelpers.h"

namespace {

struct Type {
  int32_t offset;
  uint8_t isDst;
};

void PutBigEndian(std::string& out, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8)
    out += static_cast<char>(value >> shift & 0xFF);
}

// The first block of a TZif file with these transitions, type indexes and types.
std::string TzifBytes(const std::vector<int32_t>& times, const std::vector<int8_t>& indexes,
                      const std::vector<Type>& types) {
  std::string out = "TZif2";
  out += std::string(15, '\0');
  for (uint32_t count :
       {0u, 0u, 0u, static_cast<uint32_t>(times.size()), static_cast<uint32_t>(types.size()), 4u})
    PutBigEndian(out, count);
  for (int32_t t : times)
    PutBigEndian(out, static_cast<uint32_t>(t));
  for (int8_t i : indexes)
    out += static_cast<char>(i);
  for (const Type& type : types) {
    PutBigEndian(out, static_cast<uint32_t>(type.offset));
    out += static_cast<char>(type.isDst);
    out += '\0';
  }
  out += std::string("UTC", 4);
  return out;
}

std::string ZoneFolder() {
  LqString folder;
  Utf16ToUtf8(folder, GetTimeZonePath());
  return std::string(static_cast<const char*>(folder));
}

// Test processes run side by side: each file is written whole under another name and renamed.
void WriteZone(const std::string& name, const std::string& bytes) {
  const std::string path = ZoneFolder() + name;
  for (std::size_t slash = path.find('/', 1); slash != std::string::npos;
       slash = path.find('/', slash + 1))
    mkdir(path.substr(0, slash).c_str(), 0777);
  const std::string temporary = path + ".tmp" + std::to_string(getpid());
  std::ofstream(temporary, std::ios::binary) << bytes;
  std::rename(temporary.c_str(), path.c_str());
}

LqWString Wide(const std::string& text) { return LqWString(Widen(text).c_str()); }

LqDateTime At(int year, int month, int day, int hour = 12, int minute = 0) {
  return LqDateTime(year, month, day, hour, minute, 0, 0, 0);
}

constexpr int32_t k2010 = 1262304000;
constexpr int32_t k2020 = 1577836800;

class ZoneFile : public ::testing::Test {
 protected:
  void TearDown() override {
    LqTimeZone::Get().Reset();
    LqTimeZone::GetAnother().Reset();
  }
};

TEST_F(ZoneFile, MissingFileLeavesTheZoneEmpty) {
  LqTimeZone zone(Wide("Test/Missing"));
  EXPECT_FALSE(zone.IsValid());
  EXPECT_TRUE(zone.Name().IsEmpty());
  LqTimeZone empty(Wide(""));
  EXPECT_FALSE(empty.IsValid());
}

TEST_F(ZoneFile, NoTransitionsMeansOffsetZero) {
  WriteZone("Test/Fixed", TzifBytes({}, {}, {{3600, 0}}));
  LqTimeZone zone(Wide("Test/Fixed"));
  EXPECT_TRUE(zone.IsValid());
  EXPECT_EQ(zone.Offset(At(2021, 7, 1), true, 0), 0);
  EXPECT_EQ(zone.Offset(At(2021, 7, 1), false, 1), 0);
  EXPECT_FALSE(zone.Dst(At(2021, 7, 1)));
}

TEST_F(ZoneFile, ElementZeroStandsForEverythingBeforeTheSecondTransition) {
  WriteZone("Test/One", TzifBytes({k2010}, {1}, {{-18000, 0}, {7200, 1}}));
  LqTimeZone one(Wide("Test/One"));
  EXPECT_EQ(one.Offset(At(2000, 1, 1), true, 0), 7200);
  EXPECT_EQ(one.Offset(At(2030, 1, 1), true, 0), 7200);
  EXPECT_TRUE(one.Dst(At(2000, 1, 1)));

  WriteZone("Test/Two", TzifBytes({k2010, k2020}, {1, 2}, {{-18000, 0}, {3600, 0}, {7200, 1}}));
  LqTimeZone two(Wide("Test/Two"));
  EXPECT_EQ(two.Offset(At(2000, 1, 1), true, 0), 3600);  // not the file's first type
  EXPECT_EQ(two.Offset(At(2015, 1, 1), true, 0), 3600);
  EXPECT_EQ(two.Offset(At(2025, 1, 1), true, 0), 7200);
  // A local reading compares with the offset after each transition.
  EXPECT_EQ(two.Offset(At(2020, 1, 1, 1, 59), false, 0), 3600);
  EXPECT_EQ(two.Offset(At(2020, 1, 1, 2, 0), false, 0), 7200);
  EXPECT_EQ(two.Offset(At(2019, 12, 31, 23, 59), true, 0), 3600);
  // Mode 2: the transition in force began daylight saving, so the offset before it.
  EXPECT_EQ(two.Offset(At(2025, 1, 1), false, 2), 3600);
  EXPECT_EQ(two.Offset(At(2025, 1, 1), false, 1), 7200);
}

// A table out of order is walked as it stands: the first later transition stops the walk.
TEST_F(ZoneFile, TablesOutOfOrderAreWalkedFromTheStart) {
  WriteZone("Test/Disorder",
            TzifBytes({0, k2020, k2010}, {0, 1, 2}, {{100, 0}, {200, 0}, {300, 0}}));
  LqTimeZone zone(Wide("Test/Disorder"));
  EXPECT_EQ(zone.Offset(At(2015, 1, 1), true, 0), 100);
  EXPECT_EQ(zone.Offset(At(2025, 1, 1), true, 0), 300);
  EXPECT_EQ(zone.Offset(At(2015, 1, 1), false, 0), 100);
  EXPECT_EQ(zone.Offset(At(2025, 1, 1), false, 0), 300);
}

TEST_F(ZoneFile, MalformedFilesLoadOrStayEmpty) {
  const std::string good = TzifBytes({k2010, k2020}, {0, 1}, {{3600, 0}, {7200, 1}});
  WriteZone("Test/Short", good.substr(0, 30));
  WriteZone("Test/CutInTransitions", good.substr(0, 48));
  std::string huge = good.substr(0, 60);
  huge[32] = 0x7F, huge[33] = huge[34] = huge[35] = static_cast<char>(0xFF);
  WriteZone("Test/HugeCount", huge);
  std::string negative = good;
  negative[32] = static_cast<char>(0xFF);
  WriteZone("Test/NegativeCount", negative);
  for (const char* name :
       {"Test/Short", "Test/CutInTransitions", "Test/HugeCount", "Test/NegativeCount"})
    EXPECT_FALSE(LqTimeZone(Wide(name)).IsValid()) << name;

  // An index before the first record lies before the start of the file: no zone.
  WriteZone("Test/IndexBefore", TzifBytes({k2010}, {-128}, {{3600, 0}}));
  EXPECT_FALSE(LqTimeZone(Wide("Test/IndexBefore")).IsValid());
  // One past the end of the file reads nothing: the entry keeps 0.
  WriteZone("Test/IndexAfter", TzifBytes({k2010, k2020}, {0, 100}, {{3600, 0}}));
  LqTimeZone after(Wide("Test/IndexAfter"));
  ASSERT_TRUE(after.IsValid());
  EXPECT_EQ(after.Offset(At(2015, 1, 1), true, 0), 3600);
  EXPECT_EQ(after.Offset(At(2025, 1, 1), true, 0), 0);
}

TEST_F(ZoneFile, NamesAreReadAsPathsBelowTheFolder) {
  WriteZone("Test/Plain", TzifBytes({k2010}, {0}, {{3600, 0}}));
  EXPECT_TRUE(LqTimeZone(Wide("/Test/Plain")).IsValid());
  EXPECT_TRUE(LqTimeZone(Wide("../zoneinfo/Test/Plain")).IsValid());
  EXPECT_TRUE(LqTimeZone(Wide("Test\\Plain")).IsValid());
  EXPECT_FALSE(LqTimeZone(Wide("Test")).IsValid());
  EXPECT_FALSE(LqTimeZone(Wide("../../../../../../../../../../../../dev/null")).IsValid());
}

TEST_F(ZoneFile, SameNameReadsNoFileAgain) {
  const std::string name = "Test/Changing" + std::to_string(getpid());
  WriteZone(name, TzifBytes({k2010}, {0}, {{3600, 0}}));
  LqTimeZone zone(Wide(name));
  WriteZone(name, TzifBytes({k2010}, {0}, {{7200, 0}}));
  zone.Set(Wide(name));
  EXPECT_EQ(zone.Offset(At(2021, 1, 1), true, 0), 3600);
  zone.Set(Wide("Test/Missing"));
  zone.Set(Wide(name));
  EXPECT_EQ(zone.Offset(At(2021, 1, 1), true, 0), 7200);
  std::remove((ZoneFolder() + name).c_str());
}

TEST_F(ZoneFile, CopiesOwnTheirTables) {
  WriteZone("Test/Copied", TzifBytes({k2010, k2020}, {0, 1}, {{3600, 0}, {7200, 1}}));
  auto* source = new LqTimeZone(Wide("Test/Copied"));
  LqTimeZone copy(*source);
  LqTimeZone assigned;
  assigned = *source;
  assigned = assigned;
  delete source;
  for (LqTimeZone* zone : {&copy, &assigned}) {
    EXPECT_EQ(Narrow(zone->Name()), "Test/Copied");
    EXPECT_EQ(zone->Offset(At(2025, 1, 1), true, 0), 7200);
  }
}

// Without a zone file the explicit pair uses the built-in standard offsets and daylight rule.
TEST_F(ZoneFile, ExplicitFallbackUsesBuiltInOffsetsAndRule) {
  const struct {
    LqDateTime local;
    const char* utc;
  } brussels[] = {
      {LqDateTime(2021, 3, 27, 2, 0, 0, 0, 0), "2021-03-27 00:00:00.000000"},
      {LqDateTime(2021, 3, 27, 1, 59, 0, 0, 0), "2021-03-27 00:59:00.000000"},
      {LqDateTime(2021, 3, 30, 1, 0, 0, 0, 0), "2021-03-30 00:00:00.000000"},
      {LqDateTime(2021, 3, 30, 2, 0, 0, 0, 0), "2021-03-30 00:00:00.000000"},
      {LqDateTime(2021, 10, 15, 12, 0, 0, 0, 0), "2021-10-15 11:00:00.000000"},
      {LqDateTime(2021, 10, 30, 2, 59, 0, 0, 0), "2021-10-30 00:59:00.000000"},
      {LqDateTime(2021, 10, 30, 3, 0, 0, 0, 0), "2021-10-30 02:00:00.000000"},
  };
  for (const auto& c : brussels) {
    LqDateTime local = c.local;
    EXPECT_EQ(FieldsOf(local.ExplicitLTC2UTC(u"Europe/Brussels", true)), c.utc)
        << FieldsOf(c.local);
  }
  LqDateTime tokyo(2021, 7, 1, 19, 0, 0, 0, 0);
  EXPECT_EQ(FieldsOf(tokyo.ExplicitLTC2UTC(u"Asia/Tokyo", true)), "2021-07-01 09:00:00.000000");
  EXPECT_EQ(FieldsOf(tokyo.ExplicitLTC2UTC(u"Asia/Tokyo", false)), "2021-07-01 10:00:00.000000");
  LqDateTime anywhere(2021, 7, 1, 12, 0, 0, 0, 0);
  EXPECT_EQ(FieldsOf(anywhere.ExplicitUTC2LTC(u"Nowhere/Else", false)),
            "2021-07-01 12:00:00.000000");
  EXPECT_EQ(FieldsOf(anywhere.ExplicitUTC2LTC(u"America/Montreal", true)),
            "2021-07-01 09:00:00.000000");
  // The mixed reading: 2021-03-27 (a Saturday) 23:30 UTC is 00:30 on the 28th in Brussels; the
  // hour (0) comes from the local reading and fails the rule's hour test.
  LqDateTime late(2021, 3, 27, 23, 30, 0, 0, 0);
  EXPECT_EQ(FieldsOf(late.ExplicitUTC2LTC(u"Europe/Brussels", true)), "2021-03-28 00:30:00.000000");
  LqDateTime early(2021, 3, 27, 1, 30, 0, 0, 0);
  EXPECT_EQ(FieldsOf(early.ExplicitUTC2LTC(u"Europe/Brussels", true)),
            "2021-03-27 03:30:00.000000");
}

TEST_F(ZoneFile, PlainFallbackKeepsMillisecondsOnlyOneWay) {
  const char* saved = getenv("TZ");
  const std::string savedTz = saved ? saved : "";
  setenv("TZ", "UTC0", 1);
  tzset();
  const LqDateTime value(2021, 7, 1, 12, 0, 0, 123, 456);
  EXPECT_EQ(FieldsOf(value.LTC2UTC()), "2021-07-01 12:00:00.123000");
  EXPECT_EQ(FieldsOf(value.UTC2LTC()), "2021-07-01 12:00:00.123456");
  if (saved)
    setenv("TZ", savedTz.c_str(), 1);
  else
    unsetenv("TZ");
  tzset();
}

TEST_F(ZoneFile, SupportedZonesFailWithoutAFolderOnlyOnce) {
  std::vector<LqWString> names(1, LqWString(u"kept"));
  WriteZone("Test/Listed", TzifBytes({}, {}, {{0, 0}}));
  ASSERT_TRUE(LqTimeZone::GetSupportedOlsonTimeZones(names));
  EXPECT_EQ(Narrow(names.front()), "kept");
  bool listed = false;
  for (const LqWString& name : names)
    listed |= Narrow(name) == "Test/Listed";
  EXPECT_TRUE(listed);
}

}  // namespace
