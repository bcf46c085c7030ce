// A typical stored message rendered from its template (parsing included), beside the same text
// built by hand from the library's own LqLoadString, FormatDouble and ParseDate.
#include <benchmark/benchmark.h>
#include <lqtools/datetime/DateTimeText.h>
#include <lqtools/localisation/DatePattern.h>
#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/LqStringTableWriter.h>
#include <lqtools/localisation/NumberFormat.h>
#include <lqtools/localisation/TextTemplates.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

constexpr char kTemplate[] =
    "<textParams><textId>IDS_00013</textId><paramId>IDS_00012</paramId>"
    "<paramInteger>5</paramInteger></textParams>"
    "<textStr>: </textStr>"
    "<textValue><value>1234.5</value><integers>6</integers><decimals>2</decimals>"
    "<thousandSeparator>T</thousandSeparator></textValue>"
    "<textStr> at </textStr>"
    "<textDate><date>31122020235958</date><pattern>dd/MM/yyyy HH:mm:ss</pattern></textDate>";

void LoadTable() {
  static bool loaded = false;
  if (loaded) return;
  const std::string path = "/tmp/lqtools-template-bench-" + std::to_string(getpid());
  LqStringTableWriter writer;
  writer.Add(12, "Power");
  writer.Add(13, "%s is %d kW");
  if (writer.Save(path.c_str()) != LqStringTableWriter::Ok ||
      !SetLqLoadStringTableFile(path.c_str(), nullptr))
    std::abort();
  unlink(path.c_str());
  localeInformationWide.SetThousandSeparator(u",");
  localeInformationWide.SetDecimalSeparator(u".");
  loaded = true;
}

void BM_Template(benchmark::State& state) {
  LoadTable();
  LqWString result;
  for (auto _ : state) {
    ParseXMLText(kTemplate, result);
    benchmark::DoNotOptimize(result);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Template);

void BM_ByHand(benchmark::State& state) {
  LoadTable();
  LqWString result;
  for (auto _ : state) {
    // The format's words put together around the two values.
    LqWString format, name, count, number;
    LqLoadString(13, format);
    LqLoadString(12, name);
    FormatInteger(count, 5, 0);
    result = name;
    result += u" is ";
    result += count;
    result += u" kW: ";
    FormatDouble(number, 1234.5, 6, 2, true, false, false);
    result += number;
    result += u" at ";
    LqDateTime date;
    String2DateTime(date, "31122020235958");
    ParseDate(result, LqWString(u"dd/MM/yyyy HH:mm:ss"), date);
    benchmark::DoNotOptimize(result);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ByHand);

}  // namespace

BENCHMARK_MAIN();
