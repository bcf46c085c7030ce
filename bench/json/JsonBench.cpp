// Parsing and writing a generated document of 1 MB and of 50 MB (objects, arrays, integers,
// floats, keywords, strings with escapes and non-ASCII text) with JsonDocument, nlohmann/json and
// RapidJSON. Every case reports the document's bytes per second. The writers of all three reuse
// one output buffer, grown before the timing starts, so that the serialisers are measured and not
// the growth of a fresh buffer. Each parser runs once before it is timed, so that the first touch
// of the memory its tree takes is not counted against one library alone.
#include <benchmark/benchmark.h>
#include <lqtools/json/JsonDocument.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace {

// A list of measurement records, `megabytes` long.
const std::string& Document(int megabytes) {
  static std::map<int, std::string> documents;
  std::string& text = documents[megabytes];
  if (!text.empty()) return text;
  const std::size_t size = static_cast<std::size_t>(megabytes) << 20;
  text = "{\"station\":\"Nord\",\"records\":[";
  char record[512];
  for (unsigned i = 0; text.size() < size; ++i) {
    std::snprintf(record, sizeof record,
                  "%s{\"id\":%u,\"name\":\"sensor \\\"%u\\\"\\tbay\",\"active\":%s,"
                  "\"values\":[%u.25,-%u.5e-3,%u,null],"
                  "\"meta\":{\"unit\":\"\xC2\xB0"
                  "C\",\"path\":\"plant\\\\line %u/probe\",\"note\":\"line one\\nline two\"}}",
                  i ? "," : "", i, i % 97, i % 3 ? "true" : "false", i % 1000, i % 777, i * 7919u,
                  i % 13);
    text += record;
  }
  text += "]}";
  return text;
}

void Report(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

void ParseLqTools(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  JsonDocument().Parse(text.c_str());
  for (auto _ : state) {
    JsonDocument doc;
    if (!doc.Parse(text.c_str())) state.SkipWithError("parse failed");
    benchmark::DoNotOptimize(doc.Root());
  }
  Report(state, text.size());
}

void ParseNlohmann(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  benchmark::DoNotOptimize(nlohmann::json::parse(text));
  for (auto _ : state) {
    nlohmann::json doc = nlohmann::json::parse(text);
    benchmark::DoNotOptimize(doc);
  }
  Report(state, text.size());
}

void ParseRapidJson(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  rapidjson::Document().Parse(text.c_str());
  for (auto _ : state) {
    rapidjson::Document doc;
    if (doc.Parse(text.c_str()).HasParseError()) state.SkipWithError("parse failed");
    benchmark::DoNotOptimize(doc);
  }
  Report(state, text.size());
}

void WriteLqToolsWide(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  JsonDocument doc;
  doc.Parse(text.c_str());
  std::u16string out;
  doc.Root()->CreateJsonCode(out);
  for (auto _ : state) {
    doc.Root()->CreateJsonCode(out);
    benchmark::DoNotOptimize(out.data());
  }
  Report(state, text.size());
}

void WriteLqToolsStream(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  JsonDocument doc;
  doc.Parse(text.c_str());
  FILE* sink = std::fopen("/dev/null", "w");
  for (auto _ : state)
    doc.Root()->SaveJsonCode(sink);
  std::fclose(sink);
  Report(state, text.size());
}

void WriteNlohmann(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  const nlohmann::json doc = nlohmann::json::parse(text);
  std::string out;
  for (auto _ : state) {
    out.clear();
    nlohmann::detail::serializer<nlohmann::json> writer(nlohmann::detail::output_adapter<char>(out),
                                                        ' ');
    writer.dump(doc, false, false, 0);
    benchmark::DoNotOptimize(out.data());
  }
  Report(state, text.size());
}

void WriteRapidJson(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  rapidjson::Document doc;
  doc.Parse(text.c_str());
  rapidjson::StringBuffer out;
  out.Reserve(text.size());
  for (auto _ : state) {
    out.Clear();
    rapidjson::Writer<rapidjson::StringBuffer> writer(out);
    doc.Accept(writer);
    benchmark::DoNotOptimize(out.GetString());
  }
  Report(state, text.size());
}

// Argument: the document's size in MB.
#define JSON_BENCHMARK(function) \
  BENCHMARK(function)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond)->MinTime(2.0)

JSON_BENCHMARK(ParseLqTools);
JSON_BENCHMARK(ParseNlohmann);
JSON_BENCHMARK(ParseRapidJson);
JSON_BENCHMARK(WriteLqToolsWide);
JSON_BENCHMARK(WriteLqToolsStream);
JSON_BENCHMARK(WriteNlohmann);
JSON_BENCHMARK(WriteRapidJson);

}  // namespace

BENCHMARK_MAIN();
