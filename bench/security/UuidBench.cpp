// uuid creation, printing and parsing per second, beside libuuid's uuid_generate_random,
// uuid_unparse_upper and uuid_parse.
#include <benchmark/benchmark.h>
#include <lqtools/security/uuid.h>
#include <uuid/uuid.h>

#include <string>

namespace {

void BM_LqCreate(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(uuid::create());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LqCreate);

void BM_LibuuidGenerateRandom(benchmark::State& state) {
  uuid_t id;
  for (auto _ : state) {
    uuid_generate_random(id);
    benchmark::DoNotOptimize(id);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LibuuidGenerateRandom);

void BM_LqToString(benchmark::State& state) {
  const uuid id = uuid::create();
  for (auto _ : state) benchmark::DoNotOptimize(id.toString());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LqToString);

void BM_LqGuidtoc(benchmark::State& state) {
  const uuid id = uuid::create();
  char text[37];
  for (auto _ : state) benchmark::DoNotOptimize(guidtoc(id, text));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LqGuidtoc);

void BM_LibuuidUnparseUpper(benchmark::State& state) {
  uuid_t id;
  uuid_generate_random(id);
  char text[37];
  for (auto _ : state) {
    uuid_unparse_upper(id, text);
    benchmark::DoNotOptimize(text);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LibuuidUnparseUpper);

void BM_LqCreateFromString(benchmark::State& state) {
  const std::string text = uuid::create().toString();
  for (auto _ : state) benchmark::DoNotOptimize(uuid::createFromString(text));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LqCreateFromString);

void BM_LibuuidParse(benchmark::State& state) {
  const std::string text = uuid::create().toString();
  uuid_t id;
  for (auto _ : state) {
    benchmark::DoNotOptimize(uuid_parse(text.c_str(), id));
    benchmark::DoNotOptimize(id);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LibuuidParse);

}  // namespace

BENCHMARK_MAIN();
