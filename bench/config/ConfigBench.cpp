// Loading generated configuration files of 1 MB and 10 MB (MB/s, which stays level when loading
// is linear in the size), and 1000 filtered path lookups in the 10 MB tree (lookups/s).
#include <benchmark/benchmark.h>
#include <lqtools/config/LqCfgFile.h>
#include <lqtools/text/Unicode.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace {

// Lines of devices with channels, until the text reaches `bytes`.
std::string GeneratedFile(std::size_t bytes) {
  std::string text = "ASCII\r\nplant\r\n{\r\n";
  for (int line = 0; text.size() < bytes; ++line) {
    text += "  line\r\n  {\r\n    id = \"" + std::to_string(line) + "\"\r\n";
    for (int device = 0; device < 10; ++device) {
      text += "    device { id = \"" + std::to_string(device) + "\" type = \"meter\"\r\n";
      for (int channel = 0; channel < 4; ++channel)
        text += "      channel { n = \"" + std::to_string(channel) +
                "\" unit = \"kWh\" path = \"c://data//x\" }\r\n";
      text += "    }\r\n";
    }
    text += "  }\r\n";
  }
  return text + "}\r\n";
}

LqWString WrittenFile(std::size_t bytes, std::size_t& size) {
  const std::string text = GeneratedFile(bytes);
  size = text.size();
  const std::string path = "/tmp/lqtools-config-bench-" + std::to_string(getpid()) + "-" +
                           std::to_string(bytes) + ".cfg";
  std::FILE* file = std::fopen(path.c_str(), "wb");
  std::fwrite(text.data(), 1, text.size(), file);
  std::fclose(file);
  LqWString wide;
  Utf8ToUtf16(wide, LqString(path.c_str()));
  return wide;
}

void BM_Load(benchmark::State& state) {
  std::size_t size = 0;
  const LqWString path = WrittenFile(static_cast<std::size_t>(state.range(0)) << 20, size);
  for (auto _ : state) {
    LqCfgFile file;
    benchmark::DoNotOptimize(file.Load(path));
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * size));
  LqString narrow;
  Utf16ToUtf8(narrow, path);
  std::remove(narrow);
}
BENCHMARK(BM_Load)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

void BM_FilteredLookups(benchmark::State& state) {
  std::size_t size = 0;
  const LqWString path = WrittenFile(10u << 20, size);
  LqCfgFile file;
  file.Load(path);
  for (auto _ : state) {
    for (int i = 0; i < 1000; ++i)
      benchmark::DoNotOptimize(
          file.Group(u"plant/line:id='%d'/device:id='%d'/channel:n='%d'", i % 200, i % 10, i % 4));
  }
  state.SetItemsProcessed(state.iterations() * 1000);
  LqString narrow;
  Utf16ToUtf8(narrow, path);
  std::remove(narrow);
}
BENCHMARK(BM_FilteredLookups)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
