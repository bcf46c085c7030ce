// lqtool: the command line of the LqTools formats. Subcommands by format, --help everywhere,
// "-" for standard input, results on standard output, one line on standard error for a failure,
// exit status 0 on success, 1 when the answer is "no" or "not found", 2 for usage errors and
// unreadable inputs.
#include <cstdio>

#include "Commands.h"
#include "Common.h"

#ifndef LQTOOL_VERSION
#define LQTOOL_VERSION "0"
#endif

int main(int argc, char** argv) {
  CLI::App app{"lqtool: read, write, check and convert the LqTools file formats", "lqtool"};
  app.set_version_flag("--version", "lqtool " LQTOOL_VERSION);
  app.require_subcommand(1);
  app.failure_message(CLI::FailureMessage::help);
  lqtool::AddXmlCommands(app);
  lqtool::AddJsonCommands(app);
  lqtool::AddCfgCommands(app);
  lqtool::AddStrtabCommands(app);
  lqtool::AddRenderCommand(app);
  lqtool::AddTzCommands(app);
  lqtool::AddSecurityCommands(app);
  lqtool::AddDemoCommand(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForVersion& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::fprintf(stderr, "lqtool: %s (see lqtool --help)\n", e.what());
    return lqtool::kUnusable;
  } catch (const lqtool::Failure& e) {
    std::fflush(stdout);
    std::fprintf(stderr, "lqtool: %s\n", e.what());
    return e.status;
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "lqtool: out of memory\n");
    return lqtool::kUnusable;
  }
  return 0;
}
