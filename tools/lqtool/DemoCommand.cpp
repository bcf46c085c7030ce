// lqtool demo: the typical request of a host program, end to end, on the sample plant shipped
// with LqTools (examples/plant/, installed as share/lqtool/plant/).
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>

#include <lqtools/config/LqCfgFile.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqTimeZone.h>
#include <lqtools/files/LqLog.h>
#include <lqtools/files/PathHelpers.h>
#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/NumberFormat.h>
#include <lqtools/localisation/TextTemplates.h>
#include <lqtools/xml/XmlDocument.h>

#include "Commands.h"
#include "Common.h"
#include "StringTableSource.h"

namespace fs = std::filesystem;

namespace lqtool {

namespace {

struct DemoOptions {
  std::string data;
  std::string language = "en";
};

// The sample data: --data, else beside an installed program, else in the source tree that
// built this one.
fs::path DataFolder(const std::string& given) {
  if (!given.empty()) return given;
  const fs::path program = fs::path(Utf8(GetAppPath()));
  for (const fs::path& candidate :
       {program / "../../share/lqtool/plant", program / "../../../share/lqtool/plant",
        fs::path(LQTOOL_SOURCE_DIR) / "examples/plant"})
    if (fs::exists(candidate / "settings.xml")) return fs::weakly_canonical(candidate);
  throw Failure(kUnusable, "demo", "no sample data found; give --data FOLDER (examples/plant)");
}

void Step(int number, const char* what, const std::string& result) {
  std::printf("%d. %-34s %s\n", number, what, result.c_str());
}

void Demo(const DemoOptions& o) {
  const fs::path data = DataFolder(o.data);
  std::printf("LqTools demo on %s (language %s)\n\n", data.c_str(), o.language.c_str());

  XmlDocument settings;
  if (!settings.Load(Wide((data / "settings.xml").string())))
    throw Failure(kAnswerNo, (data / "settings.xml").string(), "does not parse as XML");
  Step(1, "load the settings", (data / "settings.xml").filename().string() + ", site " +
                                   Utf8(settings.Root()->Value(u"site/name", u"?")));

  const LqWString message = settings.Root()->Value(u"devices/device?id=7?/message", u"");
  Step(2, "read devices/device?id=7?/message", Utf8(message));

  // The tables: the chosen language in front of the complete English one.
  char folder[] = "/tmp/lqtool-demo-XXXXXX";
  if (!mkdtemp(folder)) throw Failure(kUnusable, "/tmp", "cannot make a working folder");
  const fs::path work(folder);
  const fs::path english = work / "texts-en.bin";
  WriteOutput(english.string(), BuildStringTable(ReadInput((data / "texts-en.txt").string()), "texts-en.txt"));
  fs::path primary = english;
  if (o.language != "en") {
    const fs::path source = data / ("texts-" + o.language + ".txt");
    if (!fs::exists(source)) throw Failure(kUnusable, o.language, "no sample texts in that language");
    primary = work / ("texts-" + o.language + ".bin");
    WriteOutput(primary.string(), BuildStringTable(ReadInput(source.string()), source.filename().string()));
  }
  SetLqLoadStringTableFile(primary.c_str(), primary == english ? nullptr : english.c_str());
  SetupLocalize();
  LqWString rendered;
  ParseXMLText(Utf8(message).c_str(), rendered);
  Step(3, "render it", Utf8(rendered));

  const LqWString zone = settings.Root()->Value(u"site/zone", u"");
  LqTimeZone::Get().Set(zone);
  std::string zoneNote;
  if (!LqTimeZone::Get().IsValid()) {
    // No zone folder beside this program: the zone file shipped with the sample stands in.
    LqTimeZone::Get().Set(Wide("../../../../../../../../../../../.." + (data / "Brussels.tzif").string()));
    zoneNote = " (from the sample's zone file)";
  }
  const LqWString time = settings.Root()->Value(u"devices/device?id=7?/reading/time", u"");
  const LqDateTime utc(std::u16string(static_cast<const char16_t*>(time)));
  const LqDateTime local = utc.UTC2LTC();
  char stamp[64];
  std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d %s%s", local.Year(), local.Month(),
                local.Day(), local.Hour(), local.Minute(), local.Second(), Utf8(zone).c_str(),
                zoneNote.c_str());
  Step(4, "reading time in the site's zone", Utf8(time) + " -> " + stamp);

  const double value = settings.Root()->dValue(u"devices/device?id=7?/reading/value", 0.0);
  LqWString number;
  FormatNumber(number, value, 2, true);
  Step(5, "format the reading the local way", Utf8(number) + " kWh");

  LqCfgFile site;
  const LqCfgFile::LqGroup* meter = nullptr;
  if (site.Load(Wide((data / "site.cfg").string()))) meter = site.Group(Wide("site/line/meter:id='7'"));
  const LqWString none(u"?");
  Step(6, "config site/line/meter:id='7'", "port " + Utf8(meter ? meter->OptionValue(u"port", none) : none));

  printlog("demo: device 7 at %s reads %s\n", stamp, Utf8(number).c_str());
  Step(7, "write a log line", std::string("appended to ") + LqLogFileName());

  std::error_code ignored;
  fs::remove_all(work, ignored);
  std::printf("\nTry: lqtool demo --lang fr\n");
}

}  // namespace

void AddDemoCommand(CLI::App& app) {
  auto o = std::make_shared<DemoOptions>();
  auto* demo = app.add_subcommand("demo", "run the typical request of the library on the sample plant");
  demo->add_option("--data", o->data, "sample folder (default: the shipped examples/plant)");
  demo->add_option("--lang", o->language, "en (default) or fr, half translated in front of en");
  demo->callback([o] { Demo(*o); });
}

}  // namespace lqtool
