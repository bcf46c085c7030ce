// Loads any bytes as a zone file and asks offsets (every mode, UTC and local) and Dst for a
// spread of dates. The file lies in a private temporary folder, reached by a name that climbs out
// of the zone folder, so the system's zone database is never written.
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqTimeZone.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace {

std::string g_file;
LqWString g_name;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  char folder[] = "/tmp/lqtools-tz-fuzz-XXXXXX";
  if (!mkdtemp(folder)) abort();
  g_file = std::string(folder) + "/zone";
  std::u16string name = u"../../../../../../../../../../../../../../../..";
  for (char c : g_file) name += static_cast<char16_t>(c);
  g_name = LqWString(name.c_str());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FILE* file = std::fopen(g_file.c_str(), "wb");
  if (!file) return 0;
  std::fwrite(data, 1, size, file);
  std::fclose(file);

  LqTimeZone zone(g_name);
  LqTimeZone copy(zone);
  const LqDateTime dates[] = {
      LqDateTime(1999, 1, 1, 0, 0, 0, 0, 0),   LqDateTime(2021, 3, 28, 2, 30, 0, 0, 0),
      LqDateTime(2021, 10, 31, 2, 30, 0, 0, 0), LqDateTime(2037, 12, 31, 23, 59, 59, 0, 0),
      LqDateTime(2038, 1, 19, 3, 14, 8, 0, 0), LqDateTime(2135, 2, 6, 6, 28, 15, 0, 0),
      LqDateTime()};
  for (const LqDateTime& date : dates) {
    for (int mode = 0; mode < 3; ++mode) {
      const int utc = copy.Offset(date, true, mode);
      const int local = zone.Offset(date, false, mode);
      (void)utc;
      (void)local;
    }
    (void)zone.Dst(date);
  }
  LqTimeZone::GetAnother().Reset();
  LqDateTime value(2021, 7, 1, 12, 0, 0, 0, 0);
  (void)value.ExplicitUTC2LTC(static_cast<const char16_t*>(g_name), true);
  (void)value.ExplicitLTC2UTC(static_cast<const char16_t*>(g_name), true);
  return 0;
}
