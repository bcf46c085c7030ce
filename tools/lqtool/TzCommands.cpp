// lqtool tz offset|convert|list|olson2win|win2olson|check|provision
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqTimeZone.h>
#include <lqtools/datetime/TimeZoneNames.h>

#include "Commands.h"
#include "Common.h"
#include "ZoneFiles.h"

namespace fs = std::filesystem;

namespace lqtool {

namespace {

constexpr char kSystemZones[] = "/usr/share/zoneinfo";

struct TzOptions {
  std::string zone;
  std::string dateTime;
  std::string from;
  std::string to;
  std::string name;
  std::string folder;
  std::string destination;
};

// "2021-07-01T12:00:00Z" or "01/07/2021 12:00:00"; now (UTC) when empty.
LqDateTime ParseDateTime(const std::string& text) {
  if (text.empty()) return LqDateTime::UTC();
  std::string value = text;
  if (value.size() == 19 && value[10] == 'T') value += 'Z';
  if (value.size() == 19 && value[10] == ' ' && value[4] == '-') value = value.substr(0, 10) + "T" + value.substr(11) + "Z";
  const LqDateTime dateTime(std::u16string(value.begin(), value.end()));
  if (!dateTime.Valid())
    throw Failure(kUnusable, text, "not a date-time of 1999 to 2135 (2021-07-01T12:00:00Z)");
  return dateTime;
}

std::string Text(const LqDateTime& value) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", value.Year(), value.Month(),
                value.Day(), value.Hour(), value.Minute(), value.Second());
  return text;
}

LqTimeZone& Loaded(LqTimeZone& zone, const std::string& name) {
  zone.Set(Wide(name));
  if (!zone.IsValid()) throw Failure(kAnswerNo, name, "no zone file in " + Utf8(GetTimeZonePath()));
  return zone;
}

void Offset(const TzOptions& o) {
  LqTimeZone zone;
  Loaded(zone, o.zone);
  const LqDateTime at = ParseDateTime(o.dateTime);
  const int offset = zone.Offset(at, true, 0);
  const int minutes = (offset < 0 ? -offset : offset) / 60;
  std::printf("%d %c%02d:%02d %s\n", offset, offset < 0 ? '-' : '+', minutes / 60, minutes % 60,
              zone.Dst(at) ? "daylight" : "standard");
}

void Convert(const TzOptions& o) {
  LqDateTime value = ParseDateTime(o.dateTime);
  LqTimeZone check;
  if (!o.from.empty()) {
    Loaded(check, o.from);
    value = value.ExplicitLTC2UTC(Wide(o.from), false);
  }
  if (!o.to.empty()) {
    Loaded(check, o.to);
    value = value.ExplicitUTC2LTC(Wide(o.to), false);
  }
  std::printf("%s\n", Text(value).c_str());
}

void List(const TzOptions&) {
  std::vector<LqWString> names;
  if (!LqTimeZone::GetSupportedOlsonTimeZones(names))
    throw Failure(kUnusable, Utf8(GetTimeZonePath()), "cannot list the zone folder");
  for (const LqWString& name : names) std::printf("%s\n", Utf8(name).c_str());
}

void Map(const TzOptions& o, const char16_t* (*map)(const char16_t*)) {
  const std::string mapped = Utf8(map(Wide(o.name)));
  if (mapped.empty()) throw Failure(kAnswerNo, o.name, "not in the table of 75 zones");
  std::printf("%s\n", mapped.c_str());
}

// Zone files whose first block is empty while the 64-bit block has transitions.
std::vector<std::string> SlimZones(const fs::path& folder) {
  std::vector<std::string> slim;
  std::error_code error;
  for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (!entry->is_regular_file(error)) continue;
    const ZoneFileCounts counts = ReadZoneFileCounts(ReadInput(entry->path().string()));
    if (counts.valid && counts.firstBlockTransitions == 0 && counts.secondBlockTransitions > 0)
      slim.push_back(fs::relative(entry->path(), folder).string());
  }
  if (error) throw Failure(kUnusable, folder.string(), error.message());
  return slim;
}

void Check(const TzOptions& o) {
  const fs::path folder = o.folder.empty() ? fs::path(Utf8(GetTimeZonePath())) : fs::path(o.folder);
  if (!fs::is_directory(folder)) throw Failure(kUnusable, folder.string(), "not a folder");
  const std::vector<std::string> slim = SlimZones(folder);
  for (const std::string& name : slim) std::printf("%s\n", name.c_str());
  if (!slim.empty())
    throw Failure(kAnswerNo, folder.string(),
                  std::to_string(slim.size()) + " zones read as offset 0 all year (lqtool tz provision fills them)");
}

void Provision(const TzOptions& o) {
  const fs::path destination(o.destination);
  if (!fs::is_directory(destination)) throw Failure(kUnusable, o.destination, "not a folder");
  const fs::path target = destination / "zoneinfo";
  const fs::path work = destination / (".zoneinfo-" + std::to_string(getpid()));
  std::error_code error;
  fs::remove_all(work, error);
  int filled = 0;
  int copied = 0;
  try {
    for (fs::recursive_directory_iterator entry(kSystemZones, fs::directory_options::none, error), end;
         !error && entry != end; entry.increment(error)) {
      const fs::path relative = fs::relative(entry->path(), kSystemZones);
      if (entry->is_directory(error)) {
        fs::create_directories(work / relative);
        continue;
      }
      if (!entry->is_regular_file(error)) continue;
      std::string bytes = ReadInput(entry->path().string());
      const ZoneFileCounts counts = ReadZoneFileCounts(bytes);
      if (counts.valid && counts.firstBlockTransitions == 0 && counts.secondBlockTransitions > 0) {
        std::string rewritten = WithFilledFirstBlock(bytes);
        if (!rewritten.empty()) {
          bytes.swap(rewritten);
          ++filled;
        }
      }
      std::FILE* file = std::fopen((work / relative).c_str(), "wb");
      if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size() || std::fclose(file) != 0)
        throw Failure(kUnusable, (work / relative).string(), "cannot write");
      ++copied;
    }
    if (error) throw Failure(kUnusable, kSystemZones, error.message());
    const fs::path old = destination / (".zoneinfo-old-" + std::to_string(getpid()));
    if (fs::exists(fs::symlink_status(target))) fs::rename(target, old);
    fs::rename(work, target);
    fs::remove_all(old, error);
  } catch (const fs::filesystem_error& e) {
    fs::remove_all(work, error);
    throw Failure(kUnusable, e.path1().string(), e.code().message());
  } catch (...) {
    fs::remove_all(work, error);
    throw;
  }
  std::printf("%s: %d zone files, %d of them with their first block filled\n", target.c_str(), copied, filled);
}

}  // namespace

void AddTzCommands(CLI::App& app) {
  auto* tz = app.add_subcommand("tz", "time zones from the zoneinfo/ folder beside the program");
  tz->require_subcommand(1);
  auto o = std::make_shared<TzOptions>();

  auto* offset = tz->add_subcommand("offset", "print the offset of ZONE at DATETIME (UTC; default now)");
  offset->add_option("ZONE", o->zone, "Olson name, such as Europe/Brussels")->required();
  offset->add_option("DATETIME", o->dateTime, "2021-07-01T12:00:00Z");
  offset->callback([o] { Offset(*o); });

  auto* convert = tz->add_subcommand("convert", "convert a reading from one zone's local time to another's");
  convert->add_option("DATETIME", o->dateTime, "2021-07-01T12:00:00")->required();
  convert->add_option("--from", o->from, "zone of DATETIME (default UTC)");
  convert->add_option("--to", o->to, "zone of the result (default UTC)");
  convert->callback([o] { Convert(*o); });

  auto* list = tz->add_subcommand("list", "list the zones of the zone folder, two levels deep");
  list->callback([o] { List(*o); });

  auto* toWindows = tz->add_subcommand("olson2win", "print the Windows name of an Olson name");
  toWindows->add_option("NAME", o->name, "such as Europe/Brussels")->required();
  toWindows->callback([o] { Map(*o, OlsonTimeZoneToWin32TimeZone); });
  auto* toOlson = tz->add_subcommand("win2olson", "print the Olson name of a Windows name");
  toOlson->add_option("NAME", o->name, "such as \"Romance Standard Time\"")->required();
  toOlson->callback([o] { Map(*o, Win32TimeZoneToOlsonTimeZone); });

  auto* check = tz->add_subcommand(
      "check", "list zone files whose 32-bit block is empty while the file has transitions");
  check->add_option("FOLDER", o->folder, "zone folder (default: the one the library reads)");
  check->callback([o] { Check(*o); });

  auto* provision = tz->add_subcommand(
      "provision", "write DEST/zoneinfo/ from the system's zones, with every first block filled");
  provision->add_option("DEST", o->destination, "folder of the host program")->required();
  provision->callback([o] { Provision(*o); });
}

}  // namespace lqtool
