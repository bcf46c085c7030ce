// lqtool json get|fmt
#include <cstdio>
#include <filesystem>
#include <memory>

#include <lqtools/json/JsonDocument.h>

#include "Commands.h"
#include "Common.h"

namespace lqtool {

namespace {

struct JsonOptions {
  std::string file;
  std::string path;
  std::string output;
};

void LoadJson(const std::string& file, JsonDocument& document) {
  bool parsed;
  if (file == "-") {
    parsed = document.Parse(ReadInput(file).c_str());
  } else {
    InputPath(file);
    std::error_code unknown;
    const auto size = std::filesystem::file_size(file, unknown);
    Progress progress("json fmt", unknown ? 0 : static_cast<uint64_t>(size));
    parsed = document.Load(Wide(file));
  }
  if (!parsed || !document.Root()) throw Failure(kAnswerNo, file, "does not parse as JSON");
}

// Strings print as their text, everything else in the JSON form the writer gives it.
void Get(const JsonOptions& o) {
  JsonDocument document;
  LoadJson(o.file, document);
  JsonDocument::JsonNode* node = document.Root()->Node(Wide(o.path));
  if (!node) throw Failure(kAnswerNo, o.file, "no node at " + o.path);
  if (node->Type() == JsonDocument::JsonString) {
    std::printf("%s\n", Utf8(node->ValueString()).c_str());
    return;
  }
  // The writer's text of the node, without the member name in front of it.
  std::u16string text;
  node->CreateJsonCode(text);
  std::string value = Utf8(text.c_str());
  if (!node->String().IsEmpty() && !value.empty() && value[0] == '"') {
    const std::size_t colon = value.find("\": ");
    if (colon != std::string::npos) value.erase(0, colon + 3);
  }
  std::printf("%s\n", value.c_str());
}

void Format(const JsonOptions& o) {
  JsonDocument document;
  LoadJson(o.file, document);
  if (o.output.empty() || o.output == "-") {
    document.Root()->SaveJsonCode(stdout);
    std::printf("\n");
    return;
  }
  const std::string temporary = TemporaryBeside(o.output);
  if (!document.SaveAs(Wide(temporary))) {
    std::remove(temporary.c_str());
    throw Failure(kUnusable, o.output, "cannot write");
  }
  ReplaceWith(temporary, o.output);
}

}  // namespace

void AddJsonCommands(CLI::App& app) {
  auto* json = app.add_subcommand("json", "JSON files: read a value, format");
  json->require_subcommand(1);
  auto o = std::make_shared<JsonOptions>();

  auto* get = json->add_subcommand("get", "print the value at PATH");
  get->add_option("FILE", o->file, "JSON file, or - for standard input")->required();
  get->add_option("PATH", o->path, "slash path, such as server/name")->required();
  get->callback([o] { Get(*o); });

  auto* fmt = json->add_subcommand("fmt", "parse FILE and write it back in the library's form");
  fmt->add_option("FILE", o->file, "JSON file, or -")->required();
  fmt->add_option("-o,--output", o->output, "write to OUT instead of standard output");
  fmt->callback([o] { Format(*o); });
}

}  // namespace lqtool
