// Utf8ToUtf16 and Utf16ToUtf8 on 1 MB of mixed text (ASCII, Latin, CJK; argument 0) and on 1 MB
// of pure ASCII (argument 1), beside ICU's u_strFromUTF8 and u_strToUTF8 on the same text. Reports
// bytes of UTF-8 per second for all four.
#include <benchmark/benchmark.h>
#include <lqtools/text/Unicode.h>
#include <unicode/ustring.h>

#include <string>
#include <vector>

namespace {

const std::string& MixedText() {
  static const std::string text = [] {
    const std::string pieces[] = {"measure 42 at station ",
                                  "Temp\xC3\xA9rature \xC3\xA0 l'entr\xC3\xA9"
                                  "e ",
                                  "\xE6\xB8\xA9\xE5\xBA\xA6\xE4\xBC\xA0\xE6\x84\x9F\xE5\x99\xA8 ",
                                  "Stra\xC3\x9F"
                                  "e M\xC3\xBC"
                                  "nchen; "};
    std::string out;
    for (std::size_t i = 0; out.size() < (1u << 20); ++i)
      out += pieces[i % 4];
    out.resize(1u << 20);
    while ((static_cast<unsigned char>(out.back()) & 0xC0) == 0x80)
      out.pop_back();
    if (static_cast<unsigned char>(out.back()) >= 0xC0) out.pop_back();
    return out;
  }();
  return text;
}

const std::string& AsciiText() {
  static const std::string text = [] {
    std::string out;
    for (std::size_t i = 0; out.size() < (1u << 20); ++i)
      out += "measure " + std::to_string(i % 1000) + " at station " + std::to_string(i % 37) + "; ";
    out.resize(1u << 20);
    return out;
  }();
  return text;
}

const std::string& Text(const benchmark::State& state) {
  return state.range(0) ? AsciiText() : MixedText();
}

void SetBytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(Text(state).size()));
}

void LqUtf8ToUtf16(benchmark::State& state) {
  const LqString input(Text(state).c_str(), false);
  for (auto _ : state) {
    LqWString out(LqWString::GrowLargeBlock);
    Utf8ToUtf16(out, input);
    benchmark::DoNotOptimize(static_cast<const char16_t*>(out));
  }
  SetBytes(state);
}

void IcuUtf8ToUtf16(benchmark::State& state) {
  const std::string& input = Text(state);
  std::vector<UChar> out(input.size() + 1);
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8(out.data(), static_cast<int32_t>(out.size()), &length, input.data(),
                  static_cast<int32_t>(input.size()), &status);
    benchmark::DoNotOptimize(length);
  }
  SetBytes(state);
}

void LqUtf16ToUtf8(benchmark::State& state) {
  LqWString wide;
  Utf8ToUtf16(wide, LqString(Text(state).c_str(), false));
  for (auto _ : state) {
    LqString out(LqString::GrowLargeBlock);
    Utf16ToUtf8(out, wide);
    benchmark::DoNotOptimize(static_cast<const char*>(out));
  }
  SetBytes(state);
}

void IcuUtf16ToUtf8(benchmark::State& state) {
  const std::string& input = Text(state);
  std::vector<UChar> wide(input.size() + 1);
  UErrorCode status = U_ZERO_ERROR;
  int32_t wideLength = 0;
  u_strFromUTF8(wide.data(), static_cast<int32_t>(wide.size()), &wideLength, input.data(),
                static_cast<int32_t>(input.size()), &status);
  std::vector<char> out(input.size() + 1);
  for (auto _ : state) {
    UErrorCode s = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF8(out.data(), static_cast<int32_t>(out.size()), &length, wide.data(), wideLength, &s);
    benchmark::DoNotOptimize(length);
  }
  SetBytes(state);
}

BENCHMARK(LqUtf8ToUtf16)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(IcuUtf8ToUtf16)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(LqUtf16ToUtf8)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(IcuUtf16ToUtf8)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
