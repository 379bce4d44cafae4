#include "session/Shell.h"

#include <Poco/String.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <string_view>

#include "commands/CommandLine.h"
#include "output/ControlCharacters.h"
#include "output/Layout.h"
#include "output/Messages.h"
#include "output/Terminal.h"
#include "system/Interrupts.h"
#include "terminal/History.h"
#include "terminal/LineEditor.h"

namespace QorCliEngine {
namespace {

// What stands for the last line.
constexpr std::string_view kRepeat = "!!";

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

// Whether a line is the last one again, perhaps piped further.
bool isRepetition(std::string const& line) {
  std::string const text = Poco::trim(line);
  if (text.rfind(kRepeat, 0) != 0) return false;
  std::string const behind = Poco::trimLeft(text.substr(kRepeat.size()));
  return behind.empty() || behind.front() == '|';
}

}  // namespace

Shell::Shell(Session& session, Completer& completer, History& history,
             CommandRunner& runner)
    : session_(session),
      completer_(completer),
      history_(history),
      runner_(runner) {}

bool Shell::run() {
  chooseEncoding();
  Interrupts::install();
  // Standard output may be a file; the line is edited on the terminal then,
  // too.
  std::FILE* const screen = ::isatty(STDOUT_FILENO) != 0 ? stdout : stderr;
  std::fputs(banner().c_str(), screen);
  LineEditor editor(session_, completer_, history_, screen);
  bool succeeded = true;
  std::string line;
  while (!session_.isShutDown() && !Interrupts::leaving() &&
         editor.read(line)) {
    bool const repeats = isRepetition(line);
    if (repeats && !repeat(line)) continue;
    if (repeats)
      std::fprintf(screen, "%s\n",
                   ControlCharacters::visibleInLine(line).c_str());
    if (!line.empty()) history_.add(line);
    succeeded = runLine(line);
  }
  return succeeded;
}

// Puts the last line that runs something in the place of what stands for it;
// false when there is none.
bool Shell::repeat(std::string& line) const {
  std::vector<std::string> const lines = history_.lines();
  auto const last =
      std::find_if_not(lines.rbegin(), lines.rend(), CommandLine::isSilent);
  if (last == lines.rend()) {
    Messages::show("there is no line to repeat");
    return false;
  }
  std::string const behind = line.substr(line.find(kRepeat) + kRepeat.size());
  line = *last + Poco::trimRight(behind);
  return true;
}

bool Shell::runLine(std::string const& line) {
  // Ctrl-C that comes before the line has begun to run is meant for it.
  bool const succeeded = runner_.run(line);
  // The terminal has shown "^C" in the middle of a row.
  if (Interrupts::take()) std::fputs("\n", stderr);
  return succeeded;
}

}  // namespace QorCliEngine
