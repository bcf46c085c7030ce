// printlog of a short line, in lines per second, beside the plain open, print and close per line
// that it does on purpose (the text is on disk when the call returns). Both write into the log
// folder of the build (LqLogFileName), which is emptied first.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include <lqtools/files/LqLog.h>

namespace {

void BM_Printlog(benchmark::State& state) {
  std::remove(LqLogFileName());
  for (auto _ : state)
    printlog("sensor %d read %s\n", 17, "ok");
  state.SetItemsProcessed(state.iterations());
  std::remove(LqLogFileName());
}

void BM_PrintlogWide(benchmark::State& state) {
  std::remove(LqLogFileName());
  for (auto _ : state)
    printlog(u"sensor %d read %ls\n", 17, u"ok");
  state.SetItemsProcessed(state.iterations());
  std::remove(LqLogFileName());
}

void BM_FopenFprintfFclose(benchmark::State& state) {
  const std::string path = std::string(LqLogFileName()) + ".plain";
  std::remove(path.c_str());
  for (auto _ : state) {
    FILE* file = std::fopen(path.c_str(), "a+");
    if (!file) {
      state.SkipWithError("cannot open the file");
      break;
    }
    std::fprintf(file, "%s - sensor %d read %s\n", "2026-01-01T00:00:00.000Z", 17, "ok");
    std::fclose(file);
  }
  state.SetItemsProcessed(state.iterations());
  std::remove(path.c_str());
}

}  // namespace

BENCHMARK(BM_Printlog);
BENCHMARK(BM_PrintlogWide);
BENCHMARK(BM_FopenFprintfFclose);

BENCHMARK_MAIN();
