// String table lookups, number rendering and date patterns, side by side with their plain peers:
//   - LqLoadString of 5000 ids spread over a 20000-entry table, on 1 and 2 threads, beside the
//     plain design of such a reader (an ordered map index, a mutex, a seek and a read per lookup);
//   - a million FormatNumber renderings of 1234567.891 beside snprintf("%.2f") of the same value;
//   - a million ParseDate renderings of "dd/MM/yyyy HH:mm:ss" beside strftime("%d/%m/%Y %H:%M:%S").
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <lqtools/localisation/DatePattern.h>
#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/LqStringTableWriter.h>
#include <lqtools/localisation/NumberFormat.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace {

constexpr unsigned kEntries = 20000;
constexpr unsigned kLookups = 5000;
constexpr int kRenderings = 1000000;

std::string g_folder;

void RemoveFolder() {
  std::remove((g_folder + "/strings.lqs").c_str());
  ::rmdir(g_folder.c_str());
}

// The table file, written once into a temporary folder (removed at exit) and loaded into the
// process-wide table.
const std::string& TablePath() {
  static const std::string path = [] {
    char folder[] = "/tmp/lqtools-bench-XXXXXX";
    const std::string made = mkdtemp(folder);
    g_folder = made;
    std::atexit(RemoveFolder);
    LqStringTableWriter writer;
    for (unsigned i = 0; i < kEntries; ++i) {
      const std::string text = "Message " + std::to_string(i) + ": " +
                               std::string(20 + i % 60, static_cast<char>('a' + i % 26));
      writer.Add(i * 3, text.c_str());
    }
    const std::string file = made + "/strings.lqs";
    writer.Save(file.c_str());
    SetLqLoadStringTableFile(file.c_str(), nullptr);
    return file;
  }();
  return path;
}

const std::vector<unsigned>& LookupIds() {
  static const std::vector<unsigned> ids = [] {
    std::vector<unsigned> v;
    uint32_t x = 7;
    for (unsigned i = 0; i < kLookups; ++i) {
      x = x * 1664525u + 1013904223u;
      v.push_back((x >> 8) % kEntries * 3);
    }
    return v;
  }();
  return ids;
}

// The plain design of a string table reader.
class PlainTable {
 public:
  explicit PlainTable(const std::string& path) : m_handle(::open(path.c_str(), O_RDONLY)) {
    unsigned char head[2];
    if (::read(m_handle, head, 2) != 2) return;
    const unsigned count = head[0] << 8 | head[1];
    std::vector<unsigned char> entries(count * 8u);
    if (::read(m_handle, entries.data(), entries.size()) != static_cast<ssize_t>(entries.size()))
      return;
    for (unsigned i = 0; i < count; ++i) {
      const unsigned char* p = &entries[i * 8u];
      const uint32_t offset = static_cast<uint32_t>(p[2]) << 24 | p[3] << 16 | p[4] << 8 | p[5];
      m_index.emplace(static_cast<uint16_t>(p[0] << 8 | p[1]),
                      Entry{offset, static_cast<uint16_t>(p[6] << 8 | p[7])});
    }
  }
  ~PlainTable() { ::close(m_handle); }

  bool Lookup(unsigned id, std::string& text) {
    std::lock_guard<std::mutex> guard(m_lock);
    const auto found = m_index.find(static_cast<uint16_t>(id));
    if (found == m_index.end()) return false;
    if (::lseek(m_handle, found->second.offset, SEEK_SET) != found->second.offset) return false;
    std::vector<char> buffer(found->second.length + 1u);
    if (::read(m_handle, buffer.data(), found->second.length) != found->second.length) return false;
    text.assign(buffer.data(), found->second.length);
    return true;
  }

 private:
  struct Entry {
    uint32_t offset;
    uint16_t length;
  };
  int m_handle;
  std::map<uint16_t, Entry> m_index;
  std::mutex m_lock;
};

void LqLoadStringLookups(benchmark::State& state) {
  TablePath();
  const std::vector<unsigned>& ids = LookupIds();
  LqString text;
  for (auto _ : state) {
    for (unsigned id : ids)
      benchmark::DoNotOptimize(LqLoadString(id, text));
  }
  state.SetItemsProcessed(state.iterations() * kLookups);
}
BENCHMARK(LqLoadStringLookups)->Threads(1)->Threads(2)->UseRealTime();

void PlainTableLookups(benchmark::State& state) {
  static PlainTable table(TablePath());
  const std::vector<unsigned>& ids = LookupIds();
  std::string text;
  for (auto _ : state) {
    for (unsigned id : ids)
      benchmark::DoNotOptimize(table.Lookup(id, text));
  }
  state.SetItemsProcessed(state.iterations() * kLookups);
}
BENCHMARK(PlainTableLookups)->Threads(1)->Threads(2)->UseRealTime();

void SetSeparators() {
  localeInformation.SetThousandSeparator(",");
  localeInformation.SetDecimalSeparator(".");
  localeInformationWide.SetThousandSeparator(u",");
  localeInformationWide.SetDecimalSeparator(u".");
}

void FormatNumberMillion(benchmark::State& state) {
  SetSeparators();
  LqString text;
  for (auto _ : state) {
    for (int i = 0; i < kRenderings; ++i)
      benchmark::DoNotOptimize(FormatNumber(text, 1234567.891, 2, true));
  }
}
BENCHMARK(FormatNumberMillion)->Unit(benchmark::kMillisecond);

void FormatNumberWideMillion(benchmark::State& state) {
  SetSeparators();
  LqWString text;
  for (auto _ : state) {
    for (int i = 0; i < kRenderings; ++i)
      benchmark::DoNotOptimize(FormatNumber(text, 1234567.891, 2, true));
  }
}
BENCHMARK(FormatNumberWideMillion)->Unit(benchmark::kMillisecond);

void SnprintfMillion(benchmark::State& state) {
  char buffer[64];
  for (auto _ : state) {
    for (int i = 0; i < kRenderings; ++i)
      benchmark::DoNotOptimize(std::snprintf(buffer, sizeof buffer, "%.2f", 1234567.891));
  }
}
BENCHMARK(SnprintfMillion)->Unit(benchmark::kMillisecond);

void ParseDateMillion(benchmark::State& state) {
  SetupLocalize();
  const LqDateTime value(2024, 3, 5, 9, 7, 3, 0, 0);
  const LqWString pattern(u"dd/MM/yyyy HH:mm:ss");
  for (auto _ : state) {
    for (int i = 0; i < kRenderings; ++i) {
      LqWString out;
      ParseDate(out, pattern, value);
      benchmark::DoNotOptimize(out);
    }
  }
}
BENCHMARK(ParseDateMillion)->Unit(benchmark::kMillisecond);

void StrftimeMillion(benchmark::State& state) {
  std::tm fields{};
  fields.tm_year = 124;
  fields.tm_mon = 2;
  fields.tm_mday = 5;
  fields.tm_hour = 9;
  fields.tm_min = 7;
  fields.tm_sec = 3;
  char buffer[64];
  for (auto _ : state) {
    for (int i = 0; i < kRenderings; ++i)
      benchmark::DoNotOptimize(std::strftime(buffer, sizeof buffer, "%d/%m/%Y %H:%M:%S", &fields));
  }
}
BENCHMARK(StrftimeMillion)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
