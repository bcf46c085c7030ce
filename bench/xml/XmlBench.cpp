// Parsing and writing a generated configuration-style document of 1 MB and of 50 MB, with
// LqTools beside pugixml and tinyxml2 doing the same work. Each benchmark reports MB/s of the
// document's text; the argument is the size in MB.
#include <benchmark/benchmark.h>
#include <lqtools/xml/XmlDocument.h>
#include <tinyxml2.h>
#include <pugixml.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace {

// A small fixed generator, so that every run and every library sees the same text.
class Lcg {
 public:
  uint32_t Next(uint32_t bound) {
    m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<uint32_t>(m_state >> 33) % bound;
  }

 private:
  uint64_t m_state = 42;
};

// Groups of sections of parameters: nested elements, attributes, text with an entity now and
// then, a few non-ASCII characters, and 3000 distinct parameter tags.
std::string MakeDocument(std::size_t megabytes) {
  const std::size_t target = megabytes * 1024 * 1024;
  Lcg random;
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><configuration>";
  for (int group = 0; text.size() < target; ++group) {
    text += "<group name=\"station" + std::to_string(group) + "\" enabled=\"T\">";
    for (int section = 0; section < 8 && text.size() < target; ++section) {
      text += "<section id=\"" + std::to_string(section) + "\"><description>Section " +
              std::to_string(section) + " of group " + std::to_string(group) + "</description>";
      for (int i = 0; i < 12; ++i) {
        const std::string tag = "param" + std::to_string(random.Next(3000));
        text += "<" + tag + " unit=\"ms\" type=\"int\">";
        switch (random.Next(4)) {
          case 0: text += std::to_string(random.Next(100000)); break;
          case 1:
            text += "limit &lt; " + std::to_string(random.Next(1000)) + " &amp; rising";
            break;
          case 2: text += "caf\xC3\xA9 line " + std::to_string(random.Next(50)); break;
          default: text += "0x" + std::to_string(random.Next(0xFFFF)); break;
        }
        text += "</" + tag + ">";
      }
      text += "<empty/></section>";
    }
    text += "</group>";
  }
  text += "</configuration>";
  return text;
}

const std::string& Document(std::size_t megabytes) {
  static std::map<std::size_t, std::string> documents;
  auto at = documents.find(megabytes);
  if (at == documents.end()) at = documents.emplace(megabytes, MakeDocument(megabytes)).first;
  return at->second;
}

void Report(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

// ----------------------------------------------------------------------------------------------
// Parsing

void ParseLqTools(benchmark::State& state) {
  const std::string& text = Document(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    XmlDocument document;
    if (!document.Parse(text.c_str())) state.SkipWithError("parse failed");
    benchmark::DoNotOptimize(document.Root());
  }
  Report(state, text.size());
}

void ParsePugixml(benchmark::State& state) {
  const std::string& text = Document(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    pugi::xml_document document;
    if (!document.load_buffer(text.data(), text.size())) state.SkipWithError("parse failed");
    benchmark::DoNotOptimize(document.first_child());
  }
  Report(state, text.size());
}

void ParseTinyxml2(benchmark::State& state) {
  const std::string& text = Document(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    tinyxml2::XMLDocument document;
    if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS)
      state.SkipWithError("parse failed");
    benchmark::DoNotOptimize(document.RootElement());
  }
  Report(state, text.size());
}

// ----------------------------------------------------------------------------------------------
// Writing the same tree, built once from the text

void WriteLqTools(benchmark::State& state) {
  XmlDocument document;
  document.Parse(Document(static_cast<std::size_t>(state.range(0))).c_str());
  std::size_t bytes = 0;
  for (auto _ : state) {
    LqString out;
    document.CreateXmlCode(out, true);
    bytes = static_cast<std::size_t>(out.Length());
    benchmark::DoNotOptimize(static_cast<const char*>(out));
  }
  Report(state, bytes);
}

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
};

void WritePugixml(benchmark::State& state) {
  const std::string& text = Document(static_cast<std::size_t>(state.range(0)));
  pugi::xml_document document;
  document.load_buffer(text.data(), text.size());
  std::size_t bytes = 0;
  for (auto _ : state) {
    StringWriter writer;
    document.save(writer, "", pugi::format_raw);
    bytes = writer.text.size();
    benchmark::DoNotOptimize(writer.text.data());
  }
  Report(state, bytes);
}

void WriteTinyxml2(benchmark::State& state) {
  const std::string& text = Document(static_cast<std::size_t>(state.range(0)));
  tinyxml2::XMLDocument document;
  document.Parse(text.data(), text.size());
  std::size_t bytes = 0;
  for (auto _ : state) {
    tinyxml2::XMLPrinter printer(nullptr, true);
    document.Print(&printer);
    bytes = static_cast<std::size_t>(printer.CStrSize());
    benchmark::DoNotOptimize(printer.CStr());
  }
  Report(state, bytes);
}

}  // namespace

BENCHMARK(ParseLqTools)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(ParsePugixml)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseTinyxml2)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteLqTools)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(WritePugixml)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteTinyxml2)->Arg(1)->Arg(50)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
