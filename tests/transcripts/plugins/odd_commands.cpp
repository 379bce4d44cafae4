// Pipe commands that do what a well-behaved component never does, and a few
// that a well-behaved one may do and the filter does not.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>

#include "SmallPlugin.h"

namespace {

// One call of useModule that executes a command.
struct Call {
  QorCliApiContext_5* context;
  unsigned actionId;
  unsigned* matches;
  std::string input;

  void print(std::string const& text) const {
    context->setOutput(context, 0, 1, actionId, text.c_str());
  }
};

using Command = QorReturnT (*)(Call const&);

std::map<unsigned, std::size_t> lineCounts;
std::map<unsigned, std::string> endings;  // printed, or thrown, at the end

QorReturnT throwException(Call const&) {
  throw std::runtime_error("disk on fire");
}

QorReturnT throwInt(Call const&) { throw 42; }

QorReturnT throwLater(Call const& call) {
  if (!call.input.empty()) throw std::logic_error("not this text");
  return 0;
}

QorReturnT failLater(Call const& call) {
  if (call.input.empty()) return 0;
  call.print("the text is\nno good");
  return 2;
}

// Prints the text up to the piece that holds the marker.
QorReturnT failAtMarker(Call const& call) {
  if (call.input.find("010000\n") != std::string::npos) return 1;
  call.print(call.input);
  return 0;
}

QorReturnT failAtEnd(Call const& call) {
  endings[call.actionId] = "fail";
  return 0;
}

QorReturnT printNulls(Call const& call) {
  call.context->setOutput(call.context, 0, 2, call.actionId, nullptr);
  call.context->setOutput(call.context, 1, 2, call.actionId, "");
  call.context->setOutput(nullptr, 1, 2, call.actionId, "lost");
  call.context->setPrompt(call.context, nullptr);
  call.context->setCursor(call.context, nullptr);
  if (!call.input.empty()) call.print("without a line feed");
  return 0;
}

QorReturnT countWrongly(Call const& call) {
  *call.matches += 1000;
  call.print(call.input);
  return 0;
}

// Prints how many lines there were, when there are no more.
QorReturnT countLines(Call const& call) {
  auto const lines = std::count(call.input.begin(), call.input.end(), '\n');
  lineCounts[call.actionId] += static_cast<std::size_t>(lines);
  endings[call.actionId] = "count";
  return 0;
}

// Prints a line for each piece of the text that it is given.
QorReturnT showPieces(Call const& call) {
  if (call.input.empty()) return 0;
  bool const whole = call.input.back() == '\n';
  call.print(std::to_string(call.input.size()) + " bytes, " +
             (whole ? "whole lines" : "cut"));
  return 0;
}

// Takes 20 milliseconds for each line, and prints none; says at once, past the
// engine, that it has begun.
QorReturnT takeTime(Call const& call) {
  if (call.input.empty()) std::fputs("begun\n", stderr);
  auto const lines = std::count(call.input.begin(), call.input.end(), '\n');
  std::this_thread::sleep_for(lines * std::chrono::milliseconds(20));
  return 0;
}

QorReturnT showHeader(Call const& call) {
  call.print(call.input.empty() ? "header" : call.input);
  return 0;
}

// Shows what the session is, and changes it.
QorReturnT showSession(Call const& call) {
  if (call.input.empty()) return 0;
  QorCliApiContext_5& context = *call.context;
  call.print("login " + std::string(context.loginName) + ", mode " +
             std::to_string(context.mode) + ", cursor '" + context.cursor +
             "', prompt '" + context.prompt + "', lock " +
             std::to_string(context.lock) + ", exclusive " +
             std::to_string(context.exclusiveUse) + ", status " +
             std::to_string(context.lastStatus) + ", transaction " +
             std::to_string(context.transactionHandle));
  context.mode = QorCliModeEnum_1T{context.mode + 1};
  context.exclusiveUse = true;
  context.lastStatus = 9;
  context.transactionHandle = 77;
  context.setCursor(&context, "here");
  context.setPrompt(&context, "changed> ");
  context.setLock(&context, QOR_CLI_LOCK_EXCLUSIVE);
  return 0;
}

QorReturnT shutDown(Call const& call) {
  return call.context->sessionShutdown(call.context, 0);
}

std::map<std::string, Command> const commands{
    {"throw-exception", throwException},
    {"throw-int", throwInt},
    {"throw-later", throwLater},
    {"fail-later", failLater},
    {"fail-at-end", failAtEnd},
    {"fail-at-marker", failAtMarker},
    {"print-nulls", printNulls},
    {"count-wrongly", countWrongly},
    {"count-lines", countLines},
    {"show-pieces", showPieces},
    {"take-time", takeTime},
    {"show-header", showHeader},
    {"show-session", showSession},
    {"shut-down", shutDown},
};

void offer(QorCliApiContext_5* context, unsigned actionId, char const* text,
           char const* help, unsigned rank, char const* key) {
  context->setSortableAutocompleteResult(
      context, 0, 1, actionId, QOR_CLI_TOKEN_WORD, text, help, rank, key);
}

// Candidates that are odd in themselves, for lines that ask for them.
void offerOddities(QorCliApiContext_5* context, unsigned actionId,
                   std::string const& line) {
  if (line.rfind("throw-exception ", 0) == 0) {
    throw std::runtime_error("no candidates today");
  }
  if (line.rfind("print-nulls ", 0) == 0) {
    offer(context, actionId, nullptr, nullptr, 6, nullptr);
    context->setAutocompleteResult(context, 0, 1, actionId, QOR_CLI_TOKEN_WORD,
                                   nullptr, nullptr);
    offer(context, actionId, "back\\slash", "tab\there\nnext", 0, "k\te\ny");
  }
  if (line.rfind("fail-at-end ", 0) == 0) {
    offer(context, actionId, "ge-0/0/1", "A port", 6, "ge-0/0/1");
    offer(context, actionId, "ge-0/0/2", "A port", 6, "ge-0/0/2");
  }
  if (line == "fail-later ") {
    offer(context, actionId, "reason", "Offered all the same", 6, "reason");
  }
  if (line.rfind("count-lines ", 0) != 0) return;
  offer(context, actionId, "zebra", "Last by key, first by rank", 1, "z");
  offer(context, actionId, "apple", "By key the first", 6, "a");
  offer(context, actionId, "apple", "By key the first", 6, "a");
  offer(context, actionId, "apricot", "", 6, "b");
  offer(context, actionId, "apricot", "Help that came second", 6, "b");
  offer(context, actionId, "apricot", "Another meaning", 6, "b");
}

QorReturnT useModule(QorCliApiContext_5* context, unsigned action,
                     unsigned actionId, unsigned* matches,
                     char const* commandLine, char const* input) {
  std::string const line = commandLine;
  if (action != QOR_CLI_ACTION_EXECUTE) {
    for (auto const& [name, command] : commands) {
      if (name.rfind(line, 0) != 0) continue;
      offer(context, actionId, name.c_str(), "Odd", 6, name.c_str());
    }
    offerOddities(context, actionId, line);
    // As a command tree does behind a last keyword: help says nothing of it.
    if (action == QOR_CLI_ACTION_COMPLETE &&
        line.rfind("show-pieces", 0) == 0) {
      offer(context, actionId, "<cr>", "", 7, "<cr>");
    }
    return line == "fail-later " ? 4 : 0;
  }
  auto const found = commands.find(line);
  if (line == "print-unknown")
    Call{context, actionId, matches, input}.print("not mine");
  if (found == commands.end()) return 0;
  ++*matches;
  return found->second({context, actionId, matches, input});
}

QorReturnT inputComplete(QorCliApiContext_5* context, unsigned actionId) {
  std::string const ending = endings[actionId];
  endings.erase(actionId);
  if (ending == "fail") return 3;
  if (ending == "count") {
    std::string const count = std::to_string(lineCounts[actionId]) + " lines";
    lineCounts.erase(actionId);
    context->setOutput(context, 0, 1, actionId, count.c_str());
  }
  return 0;
}

}  // namespace

SMALL_PLUGIN_EXPORT QorReturnT
qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, char const*) {
  SmallPlugin::pipe.useModule = useModule;
  SmallPlugin::pipe.inputComplete = inputComplete;
  return SmallPlugin::registerIt(accessor);
}

SMALL_PLUGIN_EXPORT void qorLCMterminate() { SmallPlugin::unregisterIt(); }
