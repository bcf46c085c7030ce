// UTC to local and back with a loaded zone (Europe/Brussels, dates spread over 1999 to 2037, the
// range of the value), and the explicit pair switching between two zones on every call, beside
// Howard Hinnant's date library doing the same conversions over the system's zone database.
#include <benchmark/benchmark.h>
#include <date/tz.h>
#include <lqtools/datetime/LqDateTime.h>
#include <lqtools/datetime/LqTimeZone.h>

#include <chrono>
#include <random>
#include <vector>

namespace {

constexpr int kDates = 4096;

std::vector<long long> SpreadOfInstants() {
  std::mt19937 random(7);
  std::uniform_int_distribution<long long> pick(915148800LL, 2145916799LL);
  std::vector<long long> instants(kDates);
  for (long long& t : instants) t = pick(random);
  return instants;
}

std::vector<LqDateTime> SpreadOfValues() {
  std::vector<LqDateTime> values;
  for (long long t : SpreadOfInstants()) {
    tm fields{};
    xgmtime(&t, &fields);
    values.emplace_back(fields);
  }
  return values;
}

void BM_LqUtcToLocal(benchmark::State& state) {
  LqTimeZone::Get().Set(LqWString(u"Europe/Brussels"));
  const std::vector<LqDateTime> values = SpreadOfValues();
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(values[i++ % kDates].UTC2LTC());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LqUtcToLocal);

void BM_LqLocalToUtc(benchmark::State& state) {
  LqTimeZone::Get().Set(LqWString(u"Europe/Brussels"));
  const std::vector<LqDateTime> values = SpreadOfValues();
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(values[i++ % kDates].LTC2UTC());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LqLocalToUtc);

void BM_LqExplicitSwitching(benchmark::State& state) {
  std::vector<LqDateTime> values = SpreadOfValues();
  std::size_t i = 0;
  for (auto _ : state) {
    LqDateTime& value = values[i++ % kDates];
    benchmark::DoNotOptimize(value.ExplicitUTC2LTC(i & 1 ? u"Europe/Brussels" : u"Asia/Tokyo", false));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LqExplicitSwitching);

using Seconds = date::sys_seconds;

void BM_DateUtcToLocal(benchmark::State& state) {
  const date::time_zone* zone = date::locate_zone("Europe/Brussels");
  const std::vector<long long> instants = SpreadOfInstants();
  std::size_t i = 0;
  for (auto _ : state) {
    const Seconds utc{std::chrono::seconds(instants[i++ % kDates])};
    benchmark::DoNotOptimize(zone->to_local(utc));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DateUtcToLocal);

void BM_DateLocalToUtc(benchmark::State& state) {
  const date::time_zone* zone = date::locate_zone("Europe/Brussels");
  const std::vector<long long> instants = SpreadOfInstants();
  std::size_t i = 0;
  for (auto _ : state) {
    const date::local_seconds local{std::chrono::seconds(instants[i++ % kDates])};
    benchmark::DoNotOptimize(zone->to_sys(local, date::choose::latest));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DateLocalToUtc);

void BM_DateExplicitSwitching(benchmark::State& state) {
  const std::vector<long long> instants = SpreadOfInstants();
  std::size_t i = 0;
  for (auto _ : state) {
    const Seconds utc{std::chrono::seconds(instants[i++ % kDates])};
    const date::time_zone* zone = date::locate_zone(i & 1 ? "Europe/Brussels" : "Asia/Tokyo");
    benchmark::DoNotOptimize(zone->to_local(utc));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DateExplicitSwitching);

}  // namespace

BENCHMARK_MAIN();
