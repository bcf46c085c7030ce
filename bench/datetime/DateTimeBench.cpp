// Building a date-time from its fields and reading back year, month and day, for ten million
// values: LqDateTime side by side with Howard Hinnant's date library doing the same work.
#include <benchmark/benchmark.h>
#include <date/date.h>
#include <lqtools/datetime/LqDateTime.h>

#include <chrono>
#include <cstdint>
#include <vector>

namespace {

constexpr int kValues = 10000000;

struct Fields {
  int year, month, day, hour, minute, second;
};

// The same ten million valid date-times for both sides, spread over 1999 to 2098.
const std::vector<Fields>& Inputs() {
  static const std::vector<Fields> inputs = [] {
    std::vector<Fields> v;
    v.reserve(kValues);
    uint32_t x = 12345;
    for (int i = 0; i < kValues; ++i) {
      x = x * 1664525u + 1013904223u;
      v.push_back({1999 + static_cast<int>(x >> 8) % 100, 1 + static_cast<int>(x >> 4) % 12,
                   1 + static_cast<int>(x >> 12) % 28, static_cast<int>(x >> 3) % 24,
                   static_cast<int>(x >> 16) % 60, static_cast<int>(x >> 20) % 60});
    }
    return v;
  }();
  return inputs;
}

void LqDateTimeFieldsRoundTrip(benchmark::State& state) {
  const std::vector<Fields>& inputs = Inputs();
  for (auto _ : state) {
    int64_t sum = 0;
    for (const Fields& f : inputs) {
      const LqDateTime v(f.year, f.month, f.day, f.hour, f.minute, f.second, 0, 0);
      sum += v.Year() + v.Month() + v.Day();
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kValues);
}

void HinnantDateFieldsRoundTrip(benchmark::State& state) {
  using namespace std::chrono;
  const std::vector<Fields>& inputs = Inputs();
  for (auto _ : state) {
    int64_t sum = 0;
    for (const Fields& f : inputs) {
      const date::sys_seconds t = date::sys_days{date::year{f.year} / f.month / f.day} +
                                  hours{f.hour} + minutes{f.minute} + seconds{f.second};
      const date::year_month_day ymd{date::floor<date::days>(t)};
      sum += static_cast<int>(ymd.year()) + static_cast<int>(static_cast<unsigned>(ymd.month())) +
             static_cast<int>(static_cast<unsigned>(ymd.day()));
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kValues);
}

BENCHMARK(LqDateTimeFieldsRoundTrip)->Unit(benchmark::kMillisecond);
BENCHMARK(HinnantDateFieldsRoundTrip)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
