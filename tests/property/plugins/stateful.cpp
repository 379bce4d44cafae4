// Pipe commands that keep state between chunks, and print late, at the end, or
// nothing. Built several times, with
//
//   STATEFUL_NAME     the component's name and the prefix of its commands
//   STATEFUL_BY       the key of the state: the action id, or a constant
//   STATEFUL_FORGETS  whether an end of input drops all states or only the
//                     action's own
//
// The environment variable STATEFUL_REFUSES names a function that fails: init
// or start.
//
//   NAME-number   numbers the lines
//
//   NAME-runs     prints each run of equal lines once, with its length, when it
//                 ends
//
//   NAME-late     prints each line two lines later, or at the end
//
//   NAME-last     prints the last three lines at the end
//
//   NAME-title    prints a title and all lines
//
//   NAME-nothing  prints nothing

#include <cstddef>
#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <sstream>
#include <string>

#include "QorCliPipeCommand.h"
#include "QorMgmtSpi.h"

namespace stateful {

struct State {
  std::string command;
  bool begun = false;
  std::size_t count = 0;         // of lines, or of a run
  std::deque<std::string> held;  // lines to print later
};

// An inline variable is shared by all libraries that define it, unless it is
// hidden.
inline std::map<unsigned, State> states;

using Print = std::function<void(std::string const&)>;

void number(State& state, std::string const& line, Print const& print) {
  print(std::to_string(++state.count) + ' ' + line);
}

void printRun(State& state, Print const& print) {
  if (state.held.empty()) return;
  print(std::to_string(state.count) + ' ' + state.held.front());
  state.held.clear();
}

void countRun(State& state, std::string const& line, Print const& print) {
  if (!state.held.empty() && state.held.front() == line) {
    ++state.count;
    return;
  }
  printRun(state, print);
  state.held = {line};
  state.count = 1;
}

void hold(State& state, std::string const& line, std::size_t most,
          Print const& print) {
  state.held.push_back(line);
  if (state.held.size() <= most) return;
  if (state.command == "late") print(state.held.front());
  state.held.pop_front();
}

void take(State& state, std::string const& line, Print const& print) {
  if (state.command == "number") number(state, line, print);
  if (state.command == "runs") countRun(state, line, print);
  if (state.command == "late") hold(state, line, 2, print);
  if (state.command == "last") hold(state, line, 3, print);
  if (state.command == "title") print(line);
}

void end(State& state, Print const& print) {
  if (state.command == "runs") return printRun(state, print);
  for (std::string const& line : state.held) print(line);
}

unsigned key(unsigned actionId) { return STATEFUL_BY; }

Print printer(QorCliApiContext_5* context, unsigned actionId) {
  return [=](std::string const& line) {
    context->setOutput(context, 0, 1, actionId, (line + '\n').c_str());
  };
}

// The command's name without its prefix; empty if it is unknown.
std::string commandOf(std::string const& line) {
  std::string const begin = STATEFUL_NAME "-";
  if (line.rfind(begin, 0) != 0) return "";
  return line.substr(begin.size());
}

QorReturnT useModule(QorCliApiContext_5* context, unsigned action,
                     unsigned actionId, unsigned* matches,
                     char const* commandLine, char const* input) {
  std::string const command = commandOf(commandLine);
  if (action != QOR_CLI_ACTION_EXECUTE || command.empty()) return 0;
  ++*matches;
  State& state = states[key(actionId)];
  state.command = command;
  Print const print = printer(context, actionId);
  if (command == "title" && !state.begun) print("title");
  state.begun = true;
  std::istringstream lines(input);
  for (std::string line; std::getline(lines, line);) take(state, line, print);
  return 0;
}

QorReturnT inputComplete(QorCliApiContext_5* context, unsigned actionId) {
  end(states[key(actionId)], printer(context, actionId));
  if (STATEFUL_FORGETS) {
    states.clear();
  } else {
    states.erase(key(actionId));
  }
  return 0;
}

QorReturnT statusOf(std::string const& function) {
  char const* const refuses = std::getenv("STATEFUL_REFUSES");
  return refuses != nullptr && refuses == function ? 1 : 0;
}

QorReturnT start(QorStateChangeReason) { return statusOf("start"); }
QorReturnT stop(QorStateChangeReason) { return 0; }
char const* name() { return STATEFUL_NAME; }

QorCliApiPipeCommandComponent_1 pipe{
    {STATEFUL_NAME, "QorCliApiPipeCommandComponent", "1"},
    useModule,
    name,
    inputComplete};
QorMgmtSpiInterface_1 const* provided[] = {&pipe.identity, nullptr};
QorMgmtSpiComponent_1 component{{STATEFUL_NAME, "QorMgmtSpiComponent", "1"},
                                provided,
                                nullptr,
                                start,
                                stop};
QorMgmtSpiInterfacePortal* portal = nullptr;

}  // namespace stateful

#define STATEFUL_EXPORT extern "C" __attribute__((visibility("default")))

STATEFUL_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  if (QorReturnT const status = stateful::statusOf("init")) return status;
  stateful::portal = accessor->getPortal("1");
  return stateful::portal->registerComponent(&stateful::component);
}

STATEFUL_EXPORT void qorLCMterminate() {
  stateful::portal->unregisterComponent(&stateful::component);
}
