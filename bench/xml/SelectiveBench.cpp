// One branch of 10 KB taken from near the end of a generated 100 MB file by LoadNodeByPath with a
// buffer of 64 KB, beside full loads of the same file by XmlDocument::Load and by pugixml. Each
// benchmark reports MB/s of the file and, as the counter peak_rss_MB, the peak resident memory of
// the process. That peak is only meaningful when the process runs that one benchmark:
//
//   lqtools_selective_bench --benchmark_filter=BM_BareProcess
//   lqtools_selective_bench --benchmark_filter=BM_LoadNodeByPath
//   lqtools_selective_bench --benchmark_filter=BM_XmlDocumentLoad
//   lqtools_selective_bench --benchmark_filter=BM_PugixmlLoad
//
// The file is written once to /tmp/lqtools-selective-bench.xml, in blocks, so that making it
// does not raise the peak.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include <lqtools/xml/XmlDocument.h>
#include <pugixml.hpp>

namespace {

constexpr std::size_t kFileSize = 100 * 1000 * 1000;
constexpr std::size_t kTailSize = 200 * 1000;  // items behind the branch

const char* const kFile = "/tmp/lqtools-selective-bench.xml";

std::string Item(int index) {
  const std::string n = std::to_string(index);
  return "<item><name>sensor " + n + " of the north line</name><unit>kPa</unit><text>reading " + n +
         " taken every ten seconds, averaged over one minute and kept for a year</text>" +
         "</item>\n";
}

// The branch: 10 KB of entries, each a pair of plain elements.
std::string Goal() {
  std::string text = "<goal>\n";
  for (int i = 0; text.size() < 10 * 1000; ++i)
    text += "<entry><key>k" + std::to_string(i) + "</key><value>v" + std::to_string(i * 7) +
            "</value></entry>\n";
  return text + "</goal>\n";
}

const std::string& FilePath() {
  static const std::string path = [] {
    if (std::filesystem::exists(kFile) && std::filesystem::file_size(kFile) > kFileSize)
      return kFile;
    FILE* file = std::fopen(kFile, "wb");
    if (!file) return kFile;
    std::size_t written = 0;
    auto put = [&](const std::string& text) {
      std::fwrite(text.data(), 1, text.size(), file);
      written += text.size();
    };
    put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n");
    int index = 0;
    while (written < kFileSize - kTailSize)
      put(Item(index++));
    put(Goal());
    while (written < kFileSize)
      put(Item(index++));
    put("</root>\n");
    std::fclose(file);
    return kFile;
  }();
  return path;
}

double FileMegabytes() { return static_cast<double>(std::filesystem::file_size(FilePath())) / 1e6; }

void ReportPeak(benchmark::State& state) {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peak_rss_MB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
}

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

void BM_BareProcess(benchmark::State& state) {
  FilePath();
  for (auto _ : state)
    benchmark::DoNotOptimize(state.iterations());
  ReportPeak(state);
}

void BM_LoadNodeByPath(benchmark::State& state) {
  const std::u16string file = Wide(FilePath());
  for (auto _ : state) {
    std::unique_ptr<XmlDocument::XmlNode> node(
        XmlDocument::LoadNodeByPath(file, u"/goal", 64 * 1024));
    if (!node || node->Size() == 0) state.SkipWithError("the branch was not found");
    benchmark::DoNotOptimize(node.get());
  }
  // The reader stops at the branch's end tag, a little short of the end of the file.
  state.SetBytesProcessed(
      static_cast<int64_t>(state.iterations() * (FileMegabytes() * 1e6 - kTailSize)));
  ReportPeak(state);
}

void BM_XmlDocumentLoad(benchmark::State& state) {
  const std::u16string file = Wide(FilePath());
  for (auto _ : state) {
    XmlDocument document;
    if (!document.Load(file.c_str())) state.SkipWithError("the file did not load");
    benchmark::DoNotOptimize(document.Root());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * FileMegabytes() * 1e6));
  ReportPeak(state);
}

void BM_PugixmlLoad(benchmark::State& state) {
  const std::string file = FilePath();
  for (auto _ : state) {
    pugi::xml_document document;
    if (!document.load_file(file.c_str())) state.SkipWithError("the file did not load");
    benchmark::DoNotOptimize(document.first_child());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * FileMegabytes() * 1e6));
  ReportPeak(state);
}

}  // namespace

BENCHMARK(BM_BareProcess)->Iterations(1);
BENCHMARK(BM_LoadNodeByPath)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(BM_XmlDocumentLoad)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_PugixmlLoad)->Unit(benchmark::kMillisecond)->Iterations(3);

BENCHMARK_MAIN();
