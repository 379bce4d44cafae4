#include "Options.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "output/Messages.h"

namespace QorCliEngine {
namespace {

std::string userName() {
  char const* const name = std::getenv("USER");
  return name == nullptr ? "" : name;
}

// Takes one argument each time the option is given; any text, also none.
CLI::Option* addTexts(CLI::App& app, char const* name,
                      std::vector<std::string>& texts, char const* help) {
  auto const add = [&texts](std::string const& text) { texts.push_back(text); };
  return app.add_option_function<std::string>(name, add, help)
      ->trigger_on_parse();
}

void addOptions(CLI::App& app, Options& options) {
  addTexts(app, "-c", options.lines, "Run a command line; repeatable")
      ->type_name("LINE");
  addTexts(app, "--plugin", options.plugins,
           "Load a plug-in; repeatable. Default: those beside the engine")
      ->type_name("PATH");
  app.add_option("--complete", options.lineToComplete,
                 "Print what completes a line: kind, text, help, rank, key")
      ->type_name("LINE");
  app.add_option("--help-line", options.lineToHelp,
                 "Print the help for a line, likewise")
      ->type_name("LINE");
  app.add_option("--mode", options.mode,
                 "The session's mode, a number. Default: 0")
      ->type_name("N");
  app.add_option("--cursor", options.cursor,
                 "Where in the model the session stands. Default: empty")
      ->type_name("TEXT");
  app.add_option("--login", options.loginName,
                 "The session's login name. Default: $USER")
      ->type_name("NAME");
  app.add_flag("--no-pager", options.noPager,
               "Never show long output with a pager");
  app.add_flag("--raw", options.raw,
               "Leave control characters as they are, at a terminal, too");
  app.add_flag("--trace", options.trace,
               "Show each line's walk through the command trees, on standard "
               "error");
  app.add_flag("--timing", options.timing,
               "Show lines, bytes and time of each stage, likewise");
}

// Shows help, the version, or what is wrong; returns the exit status.
int explain(CLI::App const& app, CLI::ParseError const& error) {
  if (error.get_exit_code() != 0) {
    Messages::show(std::string(error.what()) + "; --help lists the options");
    return kExitUnusable;
  }
  errno = 0;
  app.exit(error);
  // Nobody reads it: the end, quietly.
  if (std::cout.flush() || errno == EPIPE) return kExitSuccess;
  Messages::show(std::string("cannot write the output: ") +
                 std::strerror(errno));
  return kExitFailedCommand;
}

}  // namespace

std::optional<int> Options::parse(int argc, char const* const* argv) {
  CLI::App app(
      "A command line whose output can be piped through plug-in commands.\n"
      "Without -c, command lines are typed, or come from standard input.",
      "qorcli");
  app.set_version_flag("--version", "qorcli " QOR_ENGINE_VERSION);
  app.footer("Example: qorcli -c 'show file /etc/passwd | filter -i root'");
  loginName = userName();
  addOptions(app, *this);
  try {
    app.parse(argc, argv);
  } catch (CLI::ParseError const& error) {
    return explain(app, error);
  }
  return std::nullopt;
}

}  // namespace QorCliEngine
