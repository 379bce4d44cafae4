#include "session/Shell.h"

#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <string>

#include "output/Layout.h"
#include "output/Terminal.h"
#include "system/Interrupts.h"
#include "terminal/History.h"
#include "terminal/LineEditor.h"

namespace QorCliEngine {
namespace {

std::string banner() {
  return Layout::inTwoColumns(
      {{"?", "Show what can be typed, at any time"},
       {"Tab", "Complete the word that is being typed"},
       {"Try", "show file /etc/passwd | filter -i root"}},
      Terminal::size().columns);
}

// The line editor works in the locale's encoding; without any, in UTF-8.
void chooseEncoding() {
  char const* const chosen = std::setlocale(LC_CTYPE, "");
  bool const none = chosen == nullptr || std::string(chosen) == "C" ||
                    std::string(chosen) == "POSIX";
  if (none) std::setlocale(LC_CTYPE, "C.UTF-8");
}

}  // namespace

Shell::Shell(Session& session, Completer& completer, CommandRunner& runner)
    : session_(session), completer_(completer), runner_(runner) {}

bool Shell::run() {
  chooseEncoding();
  Interrupts::install();
  // Standard output may be a file; the line is edited on the terminal then,
  // too.
  std::FILE* const screen = ::isatty(STDOUT_FILENO) != 0 ? stdout : stderr;
  std::fputs(banner().c_str(), screen);
  History history;
  LineEditor editor(session_, completer_, history, screen);
  bool succeeded = true;
  std::string line;
  while (!session_.isShutDown() && !Interrupts::leaving() &&
         editor.read(line)) {
    if (!line.empty()) history.add(line);
    succeeded = runLine(line);
  }
  return succeeded;
}

bool Shell::runLine(std::string const& line) {
  // Ctrl-C that comes before the line has begun to run is meant for it.
  bool const succeeded = runner_.run(line);
  // The terminal has shown "^C" in the middle of a row.
  if (Interrupts::take()) std::fputs("\n", stderr);
  return succeeded;
}

}  // namespace QorCliEngine
