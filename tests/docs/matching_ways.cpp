// Prints the matching strategy of some patterns, and why, for docs/matching.md.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string>

#include "LineMatcher.h"

namespace {

using QorCliMatching::LineMatcher;
using QorCliMatching::PatternFacts;

struct Row {
  char const* pattern;
  bool ignoreCase = false;
};

constexpr Row kRows[] = {
    {"error"},
    {"error|fail|down"},
    {"link (up|down)$"},
    {"^Mar .* core1"},
    {R"(\d{1,3}(\.\d{1,3}){3})"},
    {R"(\d+\.\d+\.\d+\.\d+)"},
    {"([0-9a-f]{2}:){5}[0-9a-f]{2}", true},
    {"(?:[0-9a-f]{1,4}:){7}[0-9a-f]{1,4}"},
    {R"(\b\d{5}\b.*retry)"},
    {"a.*b.*[cd]"},
    {"(a|a){20}b"},
    {R"((\w+\s?)+$)"},
    {"(1|)b*1"},
    {"a.*a.*a.*y"},
    {"\xC3\xB6l.*f\xC3\xBCllt"},
    {"(\xC3\xB6|\xC3\xBC)l+.*x"},
    {".*"},
    {"(?<!no )retry"},
    {"(.)\\1\\1"},
    {"(?>a+)b"},
    {R"(^(\((?:[^()]|(?1))*\))$)"},
};

std::string strategyOf(LineMatcher const& matcher) {
  if (matcher.facts().sufficient) return "text search";
  switch (matcher.strategy()) {
    case LineMatcher::Strategy::kPlain:
      return "PCRE2, plain";
    case LineMatcher::Strategy::kLinear:
      return "RE2";
    case LineMatcher::Strategy::kTimed:
      break;
  }
  return "PCRE2, timed";
}

constexpr std::size_t kBytes = 100;  // of the line in the examples

std::string reason(LineMatcher const& matcher) {
  PatternFacts const& facts = matcher.facts();
  if (facts.sufficient) return "a literal, or an alternation of literals";
  bool const isPlain = matcher.strategy() == LineMatcher::Strategy::kPlain;
  if (!isPlain && *facts.reason != '\0') return facts.reason;
  std::size_t const bytes = std::min(kBytes, matcher.maxPlainLine());
  double const steps =
      facts.backtracking.steps(static_cast<double>(isPlain ? bytes : kBytes));
  std::string const text =
      std::to_string(std::llround(steps)) + " steps per start offset";
  bool const grows = facts.backtracking.loops + facts.backtracking.passes > 0;
  if (!isPlain || !grows) return text;
  return text + " in " + std::to_string(bytes) + " bytes; " +
         (facts.regular.empty() ? "timed" : "RE2") + " from " +
         std::to_string(matcher.maxPlainLine() + 1) + " on";
}

}  // namespace

int main() {
  std::printf("%-36s %-13s %s\n", "pattern", "strategy", "why");
  for (Row const& row : kRows) {
    LineMatcher const matcher(row.pattern, row.ignoreCase, 1.0);
    std::string const pattern =
        (row.ignoreCase ? "-i " : "") + std::string(row.pattern);
    std::printf("%-36s %-13s %s\n", pattern.c_str(),
                strategyOf(matcher).c_str(), reason(matcher).c_str());
  }
}
