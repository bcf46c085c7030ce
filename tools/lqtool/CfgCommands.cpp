// lqtool cfg to-xml|get
#include <cstdio>
#include <memory>

#include <lqtools/config/LqCfgFile.h>
#include <lqtools/config/LqCfgFile2XmlDocument.h>

#include "Commands.h"
#include "Common.h"

namespace lqtool {

namespace {

struct CfgOptions {
  std::string file;
  std::string group;
  std::string option;
  std::string output;
};

void ToXml(const CfgOptions& o) {
  const std::string input = InputPath(o.file);
  XmlDocument document;
  if (!LqCfgFile2XmlDocument(Wide(input), Wide(o.output.empty() ? "-" : o.output), document))
    throw Failure(kAnswerNo, o.file, "does not load as a configuration file");
  LqString text;
  document.CreateXmlCode(text, true);
  WriteOutput(o.output, std::string(static_cast<const char*>(text),
                                    static_cast<std::size_t>(text.Length())));
}

void Get(const CfgOptions& o) {
  LqCfgFile file;
  if (!file.Load(Wide(InputPath(o.file))))
    throw Failure(kAnswerNo, o.file, "does not load as a configuration file");
  const LqCfgFile::LqGroup* group = nullptr;
  try {
    group = file.Group(Wide(o.group));
  } catch (const std::exception&) {
    throw Failure(kUnusable, o.group, "not a group path");
  }
  if (!group) throw Failure(kAnswerNo, o.file, "no group at " + o.group);
  const LqWString missing;
  const LqWString& value = group->OptionValue(Wide(o.option), missing);
  if (&value == &missing) throw Failure(kAnswerNo, o.file, "no option " + o.option + " in " + o.group);
  std::printf("%s\n", Utf8(value).c_str());
}

}  // namespace

void AddCfgCommands(CLI::App& app) {
  auto* cfg = app.add_subcommand("cfg", "group/option configuration files: convert, read");
  cfg->require_subcommand(1);
  auto o = std::make_shared<CfgOptions>();

  auto* toXml = cfg->add_subcommand("to-xml", "convert FILE into an XML document with root main");
  toXml->add_option("FILE", o->file, "configuration file, or -")->required();
  toXml->add_option("-o,--output", o->output, "write to OUT instead of standard output");
  toXml->callback([o] { ToXml(*o); });

  auto* get = cfg->add_subcommand("get", "print OPTION of the group at GROUPPATH");
  get->add_option("FILE", o->file, "configuration file, or -")->required();
  get->add_option("GROUPPATH", o->group, "such as meter:id='7'/port")->required();
  get->add_option("OPTION", o->option, "option name")->required();
  get->callback([o] { Get(*o); });
}

}  // namespace lqtool
