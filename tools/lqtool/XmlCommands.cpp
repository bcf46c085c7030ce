// lqtool xml get|set|check|fmt|to-json|branch
#include <cstdio>
#include <filesystem>
#include <memory>

#include <lqtools/files/LqLog.h>
#include <lqtools/json/JsonDocument.h>
#include <lqtools/xml/XmlDocument.h>

#include "Commands.h"
#include "Common.h"

namespace lqtool {

namespace {

struct XmlOptions {
  std::string file;
  std::string path;
  std::string value;
  std::string defaultValue;
  std::string output;
  unsigned long long buffer = 65536;
  bool hasDefault = false;
};

// Loads `file` ("-" for standard input); Failure(2) when unreadable, Failure(1) when it does not
// parse.
void LoadXml(const std::string& file, XmlDocument& document) {
  bool parsed;
  if (file == "-") {
    parsed = document.Parse(ReadInput(file).c_str());
  } else {
    InputPath(file);
    parsed = document.Load(Wide(file));
  }
  if (!parsed || !document.Root()) throw Failure(kAnswerNo, file, "does not parse as XML");
}

const XmlDocument::XmlNode* NodeAt(const XmlDocument& document, const XmlOptions& o) {
  const XmlDocument::XmlNode* node = document.Root()->Node(Wide(o.path));
  if (!node && !o.hasDefault) throw Failure(kAnswerNo, o.file, "no node at " + o.path);
  return node;
}

void Get(const XmlOptions& o) {
  XmlDocument document;
  LoadXml(o.file, document);
  const XmlDocument::XmlNode* node = NodeAt(document, o);
  std::printf("%s\n", node ? Utf8(node->Value()).c_str() : o.defaultValue.c_str());
}

void Set(const XmlOptions& o) {
  if (o.file == "-") throw Failure(kUnusable, o.file, "set needs a file to change");
  XmlDocument document;
  LoadXml(o.file, document);
  document.Root()->SetValue(Wide(o.path), Wide(o.value));
  const std::string temporary = TemporaryBeside(o.file);
  if (!document.SaveAs(Wide(temporary))) {
    std::remove(temporary.c_str());
    throw Failure(kUnusable, o.file, "cannot write");
  }
  ReplaceWith(temporary, o.file);
}

void Check(const XmlOptions& o) {
  XmlDocument document;
  LoadXml(o.file, document);
  std::printf("%s: well-formed\n", o.file.c_str());
}

void Format(const XmlOptions& o) {
  XmlDocument document;
  {
    std::error_code unknown;
    const auto size = o.file == "-" ? 0 : std::filesystem::file_size(o.file, unknown);
    Progress progress("xml fmt", unknown ? 0 : static_cast<uint64_t>(size));
    LoadXml(o.file, document);
  }
  LqString text;
  document.CreateXmlCode(text, true);
  WriteOutput(o.output, std::string(static_cast<const char*>(text),
                                    static_cast<std::size_t>(text.Length())));
}

void ToJson(const XmlOptions& o) {
  XmlDocument document;
  LoadXml(o.file, document);
  XmlDocument::XmlNode* node = document.Root();
  if (!o.path.empty()) {
    node = document.Root()->Node(Wide(o.path));
    if (!node) throw Failure(kAnswerNo, o.file, "no node at " + o.path);
  }
  JsonDocument json;
  json.Create(JsonDocument::JsonObject);
  node->toJson(json.Root());
  json.Root()->SaveJsonCode(stdout);
  std::printf("\n");
}

void Branch(const XmlOptions& o) {
  const std::string file = InputPath(o.file);
  Progress progress("xml branch", static_cast<uint64_t>(std::filesystem::file_size(file)));
  std::unique_ptr<XmlDocument::XmlNode> node(XmlDocument::LoadNodeByPath(
      static_cast<const char16_t*>(Wide(file)), static_cast<const char16_t*>(Wide(o.path)), o.buffer));
  if (!node) throw Failure(kAnswerNo, o.file, "no branch at " + o.path + " (see " + LqLogFileName() + ")");
  LqString text;
  node->CreateXmlCode(text);
  std::printf("%s\n", static_cast<const char*>(text));
}

}  // namespace

void AddXmlCommands(CLI::App& app) {
  auto* xml = app.add_subcommand("xml", "XML settings files: read, change, check, format, convert");
  xml->require_subcommand(1);
  auto o = std::make_shared<XmlOptions>();

  auto* get = xml->add_subcommand("get", "print the value at PATH (below the root)");
  get->add_option("FILE", o->file, "XML file, or - for standard input")->required();
  get->add_option("PATH", o->path, "slash path, such as device?id=7?/name")->required();
  get->add_option("--default", o->defaultValue, "print TEXT when there is no such node")
      ->each([o](const std::string&) { o->hasDefault = true; });
  get->callback([o] { Get(*o); });

  auto* set = xml->add_subcommand("set", "store VALUE at PATH and save the file in place");
  set->add_option("FILE", o->file, "XML file")->required();
  set->add_option("PATH", o->path, "slash path below the root")->required();
  set->add_option("VALUE", o->value, "the new value")->required();
  set->callback([o] { Set(*o); });

  auto* check = xml->add_subcommand("check", "exit 0 when FILE parses, 1 when it does not");
  check->add_option("FILE", o->file, "XML file, or -")->required();
  check->callback([o] { Check(*o); });

  auto* fmt = xml->add_subcommand("fmt", "parse FILE and write it back in the library's file form");
  fmt->add_option("FILE", o->file, "XML file, or -")->required();
  fmt->add_option("-o,--output", o->output, "write to OUT instead of standard output");
  fmt->callback([o] { Format(*o); });

  auto* toJson = xml->add_subcommand("to-json", "print FILE, or the branch at PATH, as JSON");
  toJson->add_option("FILE", o->file, "XML file, or -")->required();
  toJson->add_option("PATH", o->path, "slash path of the branch (default: the root)");
  toJson->callback([o] { ToJson(*o); });

  auto* branch = xml->add_subcommand(
      "branch", "print one branch of a file of any size, read front to back without loading it");
  branch->add_option("FILE", o->file, "XML file, or -")->required();
  branch->add_option("PATH", o->path, "tags below the root, such as /a/b")->required();
  branch->add_option("--buffer", o->buffer, "bytes read at a time (default 65536)")
      ->check(CLI::Range(2ull, 1ull << 30));
  branch->callback([o] { Branch(*o); });
}

}  // namespace lqtool
