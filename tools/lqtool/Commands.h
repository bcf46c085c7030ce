// The command families of lqtool, each in a file of its own, each adding its subcommands to the
// application.
#pragma once

#include <CLI/CLI.hpp>

namespace lqtool {

void AddXmlCommands(CLI::App& app);
void AddJsonCommands(CLI::App& app);
void AddCfgCommands(CLI::App& app);
void AddStrtabCommands(CLI::App& app);
void AddRenderCommand(CLI::App& app);
void AddTzCommands(CLI::App& app);
void AddSecurityCommands(CLI::App& app);
void AddDemoCommand(CLI::App& app);

}  // namespace lqtool
