// lqtool render: a text template rendered in the user's locale with the given string tables.
#include <cstdio>
#include <memory>

#include <lqtools/localisation/LqLocaleInformation.h>
#include <lqtools/localisation/LqStringTableFile.h>
#include <lqtools/localisation/TextTemplates.h>

#include "Commands.h"
#include "Common.h"

namespace lqtool {

namespace {

struct RenderOptions {
  std::string templateFile;
  std::string table;
  std::string secondary;
};

void Render(const RenderOptions& o) {
  const std::string text = ReadInput(o.templateFile);
  if (!o.table.empty()) {
    InputPath(o.table);
    if (!o.secondary.empty()) InputPath(o.secondary);
    if (!SetLqLoadStringTableFile(o.table.c_str(), o.secondary.empty() ? nullptr : o.secondary.c_str()))
      throw Failure(kAnswerNo, o.table, "not a string table (or an empty one)");
  }
  SetupLocalize();
  LqWString result;
  ParseXMLText(text.c_str(), result);
  std::printf("%s\n", Utf8(result).c_str());
}

}  // namespace

void AddRenderCommand(CLI::App& app) {
  auto o = std::make_shared<RenderOptions>();
  auto* render = app.add_subcommand(
      "render", "render a text template in the user's locale (LANG, LC_ALL) with string tables");
  render->add_option("TEMPLATE", o->templateFile, "template file, or - for standard input")->required();
  render->add_option("--table", o->table, "string table for textId and paramId");
  render->add_option("--secondary", o->secondary, "table that answers what --table does not translate");
  render->callback([o] { Render(*o); });
}

}  // namespace lqtool
