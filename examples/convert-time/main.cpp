// A host converting a time between zones: a local reading of one zone shown in another, through
// the zone files of the zoneinfo/ folder beside this program.
//   convert-time "2021-07-01T12:00:00Z" FROM-ZONE TO-ZONE
#include <cstdio>
#include <string>

#include <lqtools/LqTools.h>

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: convert-time 2021-07-01T12:00:00Z FROM-ZONE TO-ZONE\n");
    return 2;
  }
  const std::string text = argv[1];
  LqDateTime reading(std::u16string(text.begin(), text.end()));
  LqWString from, to;
  Utf8ToUtf16(from, LqString(argv[2]));
  Utf8ToUtf16(to, LqString(argv[3]));
  if (!reading.Valid() || !LqTimeZone(from).IsValid() || !LqTimeZone(to).IsValid()) {
    LqString folder;
    Utf16ToUtf8(folder, GetTimeZonePath());
    std::fprintf(stderr, "convert-time: a date-time and two zones of %s, please\n",
                 static_cast<const char*>(folder));
    return 1;
  }
  LqDateTime utc = reading.ExplicitLTC2UTC(from, false);
  const LqDateTime local = utc.ExplicitUTC2LTC(to, false);
  std::printf("%04d-%02d-%02d %02d:%02d:%02d\n", local.Year(), local.Month(), local.Day(),
              local.Hour(), local.Minute(), local.Second());
  return 0;
}
