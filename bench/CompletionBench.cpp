// The time of the component for a Tab, a "?" and a call that filters a small
// text. Every result is checked before it is timed; a wrong one ends the
// program with exit status 1.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "FuzzSession.h"

namespace {

using qor_fuzz::FuzzSession;

constexpr unsigned kActionId = 1;

void require(bool right, std::string const& line) {
  if (right) return;
  std::cerr << "wrong answer to \"" << line << "\"\n";
  std::exit(1);
}

// A partly typed line and its number of candidates.
struct TypedLine {
  std::string name;
  std::string text;
  unsigned candidates;
};

std::string words(std::size_t count) {
  std::string line = "filter";
  for (std::size_t i = 1; i < count; ++i) line += " word";
  return line;
}

std::vector<TypedLine> typedLines() {
  return {{"an empty line", "", 1},
          {"fil", "fil", 1},
          {"filter (blank)", "filter ", 9},
          {"filter -", "filter -", 8},
          {"filter --af", "filter --af", 1},
          {"filter -i -a 3 -", "filter -i -a 3 -", 1},
          {"1000 words", words(1000), 1}};
}

// Performs `action`; returns the number of candidates.
unsigned ask(FuzzSession& session, QorCliActionEnum_2T action,
             std::string const& line) {
  unsigned const before = session.candidates();
  unsigned matches = 0;
  session.commands().useModule(session.record(), action, kActionId, &matches,
                               line.c_str(), "");
  return session.candidates() - before;
}

void answerKey(benchmark::State& state, QorCliActionEnum_2T action,
               TypedLine const& line) {
  FuzzSession session;
  require(ask(session, action, line.text) == line.candidates, line.name);
  for (auto _ : state) {
    benchmark::DoNotOptimize(ask(session, action, line.text));
  }
}

constexpr std::size_t kTextSize = 4096;    // bytes
constexpr std::size_t kLineSize = 64;      // bytes, with the line feed
constexpr std::size_t kSelectedEvery = 8;  // lines

// Lines of 64 bytes, every eighth of which contains the word "error".
std::string logText() {
  std::string text;
  for (std::size_t i = 0; text.size() < kTextSize; ++i) {
    std::string line =
        i % kSelectedEvery == 0 ? "core1 error: crc" : "core1 link is up";
    line.resize(kLineSize - 1, '.');
    text += line + '\n';
  }
  return text;
}

// One action: the call that filters the text, and the end of its input.
std::vector<std::string> run(FuzzSession& session, std::string const& line,
                             std::string const& text) {
  unsigned matches = 0;
  session.commands().useModule(session.record(), QOR_CLI_ACTION_EXECUTE,
                               kActionId, &matches, line.c_str(), text.c_str());
  session.commands().inputComplete(session.record(), kActionId);
  return session.takeOutput();
}

// Filters the text by each of `lines` in turn, repeatedly. The component keeps
// the pattern of the last call, so with several lines it compiles one in every
// call.
void filterText(benchmark::State& state,
                std::vector<std::string> const& lines) {
  FuzzSession session;
  std::string const text = logText();
  std::size_t const selected = kTextSize / kLineSize / kSelectedEvery;
  for (std::string const& line : lines) {
    require(run(session, line, text).size() == selected, line);
  }
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(run(session, lines[next], text));
    next = (next + 1) % lines.size();
  }
}

void registerAll() {
  for (TypedLine const& line : typedLines()) {
    benchmark::RegisterBenchmark(("Tab/" + line.name).c_str(), answerKey,
                                 QOR_CLI_ACTION_COMPLETE, line);
    benchmark::RegisterBenchmark(("Help/" + line.name).c_str(), answerKey,
                                 QOR_CLI_ACTION_HELP, line);
  }
  using Lines = std::vector<std::string>;
  benchmark::RegisterBenchmark("Execute/a word", filterText,
                               Lines{"filter error"});
  benchmark::RegisterBenchmark("Execute/an expression", filterText,
                               Lines{"filter -i \"(error|fail.*): [a-z]\""});
  benchmark::RegisterBenchmark("Execute/a new word each time", filterText,
                               Lines{"filter error", "filter crc"});
}

}  // namespace

int main(int argc, char** argv) {
  registerAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
