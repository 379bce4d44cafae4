// The time of the parts of the component that process text: the tokenizer, the
// matcher and the filter core. Every result is checked before it is timed; a
// wrong one ends the program with exit status 1.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "AutoCompleteTree.h"
#include "ContextRules.h"
#include "LineFilter.h"
#include "LineFreeList.h"
#include "LineMatcher.h"
#include "PipeOutput1.h"

namespace {

using QorCliMatching::LineFilter;
using QorCliMatching::LineMatcher;
using QorCliPipe::ContextRules;

constexpr double kSeconds = 1;  // time limit of a call

void require(bool right, std::string const& what) {
  if (right) return;
  std::cerr << "wrong answer: " << what << '\n';
  std::exit(1);
}

// ---- Tokenizer

void tokenize(benchmark::State& state, std::string const& line,
              std::size_t words) {
  QorCliUtilities::AutoCompleteTree const tree;
  QorCliPipe::PipeOutput1 output;
  std::vector<std::string> tokens;
  require(tree.tokenize(line, tokens, output) && tokens.size() == words, line);
  for (auto _ : state) {
    tokens.clear();
    tree.tokenize(line, tokens, output);
    benchmark::DoNotOptimize(tokens.data());
  }
}

// ---- Text with a share of selected lines

constexpr std::size_t kTextSize = std::size_t{1} << 20;  // bytes
constexpr std::size_t kLineSize = 64;  // bytes, with the line feed
constexpr char kSelected[] = "core1 error: crc on 10.0.1.1, retry 3";
constexpr char kOther[] = "core1 all is well";

// A line of `size` bytes that begins with `begin`.
std::string line(std::string begin, std::size_t size) {
  begin.resize(size - 1, ' ');
  return begin + '\n';
}

struct Text {
  std::string text;
  std::size_t lines = 0;
  std::size_t selected = 0;
};

// Of a hundred lines, `percent` are selected, evenly spread.
Text textOf(std::size_t percent, std::size_t lineSize = kLineSize) {
  Text result;
  while (result.text.size() + lineSize <= kTextSize) {
    ++result.lines;
    bool const isSelected = result.lines * percent / 100 > result.selected;
    if (isSelected) ++result.selected;
    result.text += line(isSelected ? kSelected : kOther, lineSize);
  }
  return result;
}

// ---- Matcher

struct Pattern {
  char const* name;
  char const* pattern;
  bool ignoreCase;
};

constexpr Pattern kPatterns[] = {
    {"word", "error", false},
    {"word, any case", "ERROR", true},
    {"text and digits", "retry [0-9]", false},
    {"alternatives", "(?:error|fail\\w*)", false},
    {"dotted quad", "[0-9]{1,3}\\.[0-9]{1,3}\\.[0-9]{1,3}\\.[0-9]{1,3}", false},
    {"no literal text", "\\d \\d|[a-z]{5}: [a-z]", false},
    {"regular", "(\\w+\\W+)+retry", false},
    {"timed", "(?<!, )crc on", false}};

void matchLine(benchmark::State& state, Pattern const& pattern, bool selected) {
  LineMatcher matcher(pattern.pattern, pattern.ignoreCase, kSeconds);
  std::string const text(selected ? kSelected : kOther);
  require(matcher.matches(text) == selected, pattern.name);
  for (auto _ : state) benchmark::DoNotOptimize(matcher.matches(text));
}

// Compiling the pattern, including JIT code.
void compile(benchmark::State& state, Pattern const& pattern) {
  for (auto _ : state) {
    LineMatcher matcher(pattern.pattern, pattern.ignoreCase, kSeconds);
    benchmark::DoNotOptimize(&matcher);
  }
}

// ---- Filter core

struct Job {
  Pattern pattern;
  bool invert;
  int context;  // lines, before and after
};

// Filters the text once; returns the number of kept strings.
std::size_t filter(LineFilter& filter, Job const& job,
                   std::string const& text) {
  QorCliPipe::PipeCmd::FilterStruct state;
  std::vector<std::string> kept;
  ContextRules rules(job.context, job.context, state, kept);
  filter.filter(text, job.invert, rules);
  std::size_t const count = kept.size();
  QorCliPipe::recycleLines(kept);
  return count;
}

void filterText(benchmark::State& state, Job const& job, Text const& text) {
  LineFilter lineFilter(job.pattern.pattern, job.pattern.ignoreCase);
  std::size_t const kept = filter(lineFilter, job, text.text);
  std::size_t const selected =
      job.invert ? text.lines - text.selected : text.selected;
  require(job.context == 0 ? kept == selected : kept >= selected,
          job.pattern.name);
  for (auto _ : state) {
    benchmark::DoNotOptimize(filter(lineFilter, job, text.text));
  }
  state.SetBytesProcessed(
      static_cast<std::int64_t>(state.iterations() * text.text.size()));
}

// ---- Kept lines, in new memory or in memory of the free list

constexpr std::size_t kKeptLines = 2000;  // as in a chunk

void keepLines(benchmark::State& state, bool useFreeList) {
  std::string const kept = line(kSelected, kLineSize);
  std::vector<std::string> lines;
  for (auto _ : state) {
    for (std::size_t i = 0; i < kKeptLines; ++i) {
      QorCliPipe::appendLine(kept, lines);
    }
    benchmark::DoNotOptimize(lines.data());
    if (useFreeList) {
      QorCliPipe::recycleLines(lines);
    } else {
      lines = {};
    }
  }
  state.SetItemsProcessed(state.iterations() * kKeptLines);
}

// ---- All of them

constexpr std::size_t kShares[] = {0, 1, 10, 100};  // percent
constexpr std::size_t kLineSizes[] = {64, 1000, 10'000, 100'000};

void registerTokenizer() {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("Tokenize/a word", tokenize, "filter error", 2);
  RegisterBenchmark("Tokenize/options", tokenize,
                    "filter -i -b 2 --after 2 \"link (up|down)$\"", 7);
}

void registerMatcher() {
  for (Pattern const& pattern : kPatterns) {
    std::string const name = pattern.name;
    benchmark::RegisterBenchmark(("Compile/" + name).c_str(), compile, pattern);
    benchmark::RegisterBenchmark(("Match/found/" + name).c_str(), matchLine,
                                 pattern, true);
    benchmark::RegisterBenchmark(("Match/not found/" + name).c_str(), matchLine,
                                 pattern, false);
  }
}

void registerFilter(std::string const& name, Job const& job, Text const& text) {
  benchmark::RegisterBenchmark(("Filter/" + name).c_str(), filterText, job,
                               text);
}

void registerFilters() {
  for (std::size_t const share : kShares) {
    Text const text = textOf(share);
    std::string const percent = std::to_string(share) + " %/";
    for (Pattern const& pattern : kPatterns) {
      registerFilter(percent + pattern.name, {pattern, false, 0}, text);
    }
    registerFilter(percent + "word, inverted", {kPatterns[0], true, 0}, text);
    registerFilter(percent + "word, context 2", {kPatterns[0], false, 2}, text);
  }
  for (std::size_t const size : kLineSizes) {
    std::string const bytes = "lines of " + std::to_string(size) + " bytes/";
    for (Pattern const& pattern : {kPatterns[0], kPatterns[5]}) {
      registerFilter(bytes + pattern.name, {pattern, false, 0},
                     textOf(10, size));
    }
  }
}

void registerLines() {
  benchmark::RegisterBenchmark("KeepLines/new memory", keepLines, false);
  benchmark::RegisterBenchmark("KeepLines/free list", keepLines, true);
}

}  // namespace

int main(int argc, char** argv) {
  registerTokenizer();
  registerMatcher();
  registerFilters();
  registerLines();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
