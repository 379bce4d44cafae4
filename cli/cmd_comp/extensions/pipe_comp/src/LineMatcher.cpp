#include "LineMatcher.h"

#include <Poco/Exception.h>

#include <algorithm>
#include <ctime>

#include "CompileStack.h"
#include "PatternTraits.h"

// A line is decided by the first of these ways that does not give up:
//
// 1. Machine code over the whole line. The library limits the steps from one
//    beginning of a match only, so the limit is set such that all the
//    beginnings of the line together stay within kLineSteps. This decides all
//    but the pathological.
// 2. Machine code from one beginning after the other, each with more steps,
//    until kLineTime of processor time is used up. This decides long lines
//    under patterns for which the first way is not tried on them. Where a match
//    is not the one at the first of all beginnings at which there is one,
//    machine code over the whole line again, with more steps.
// 3. Poco over the whole line, under limits of the same kind.
// 4. Poco as in the second way, where there is no machine code.
//
// A step is a place to which the library may come back. Repeated characters and
// parts that are never come back to run through the line without a step; where
// a pattern has any, a step is taken to cost as much as the whole line, and
// long lines are left to the ways whose clock sees all work.

namespace QorCliPipe {
namespace {

using Answer = JitExpression::Answer;

// Steps that may be spent on one line, and on one beginning in it; on a line
// that is searched as a whole again and again, in the end.
constexpr std::uint64_t kLineSteps = 50'000'000;
constexpr std::uint64_t kMostLineSteps = 256 * kLineSteps;
constexpr std::uint32_t kStepsFromOneStart = 10'000'000;

// With how many steps one beginning is tried at first; where steps cost as much
// as the line, so many bytes looked at instead.
constexpr std::size_t kFirstSteps = 64 * 1024;
constexpr std::size_t kFirstBytes = 10'000'000;
constexpr std::size_t kMoreSteps = 4;  // times as many, when they were too few

// Poco counts the repetitions of characters as steps, too: it looks at less of
// the line within a step, by this factor. But where groups are called, a step
// takes a time that grows with the calls that are under way.
constexpr std::size_t kPocoAdvantage = 64;

// So many groups more make a step cost as much as looking at so many bytes.
constexpr std::size_t kCheapGroups = 64;
constexpr std::size_t kCostOfGroups = 512;  // bytes

// Longer lines are long: work that grows with the square of shorter ones is
// done within a second.
constexpr std::size_t kLongLine = 32 * 1024;  // bytes

// Processor time that may be spent on one line, beginning by beginning; how
// many beginnings are tried between two looks at the clock.
constexpr double kLineTime = 1.0;  // seconds
constexpr std::size_t kStartsPerLook = 16;

// What may be read of a pattern in order to follow the calls of groups in it
// when it is compiled: that takes half a second.
constexpr std::size_t kMostCallReach = 64 * 1024 * 1024;  // bytes

// Ranges of characters in which the other case of each is looked for when the
// pattern is compiled: that takes half a second.
constexpr std::ptrdiff_t kMostFoldedRanges = 150;

// What it takes to compile the pattern, which can be done here.
CompileDemand checkedDemand(std::string const& pattern, bool ignoreCase) {
  CompileDemand const demand = compileDemand(pattern, kMostCallReach);
  if (demand.reach == kMostCallReach) {
    throw Poco::RegularExpressionException("too many calls of groups");
  }
  if (mayFoldRanges(pattern, ignoreCase) &&
      std::count(pattern.begin(), pattern.end(), '-') > kMostFoldedRanges) {
    throw Poco::RegularExpressionException("too many ranges");
  }
  checkCompileStack(demand);
  return demand;
}

// Rounded down to a power of two, so that lines of similar length have the
// same, but for the most; at least 1.
std::uint32_t roundedSteps(std::uint64_t steps) {
  if (steps >= kStepsFromOneStart) return kStepsFromOneStart;
  auto const some =
      static_cast<std::uint32_t>(std::max<std::uint64_t>(steps, 1));
  return std::uint32_t{1} << (31 - __builtin_clz(some));
}

// How many steps from each beginning of the line keep all of them within
// `lineSteps`, when a step costs as much as looking at `stepCost` bytes.
std::uint32_t stepsFromEachStart(std::uint64_t lineSteps, std::string_view line,
                                 std::size_t stepCost) {
  return roundedSteps(lineSteps / (line.size() + 1) /
                      std::max<std::size_t>(stepCost, 1));
}

// How many steps are tried at first from one beginning.
std::size_t stepsFromOneStart(std::size_t stepCost) {
  return std::min(kFirstSteps, kFirstBytes / (stepCost + 1));
}

double processorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) +
         1e-9 * static_cast<double>(now.tv_nsec);
}

// attempt(steps) looks for a match: with more steps when they were too few, as
// long as the time that the last ones took says that there is time for more
// before `end`, up to `most`. `steps` are what it begins with, and afterwards
// what it took.
//
// The first attempt is not timed, for most need no more; for those that do, it
// is made again.
template <typename Attempt>
Answer tryWithMore(std::size_t& steps, std::size_t most, double end,
                   Attempt attempt) {
  Answer answer = attempt(roundedSteps(steps));
  double begin = 0;
  while (answer == Answer::kUndecided && steps < most) {
    double const now = processorSeconds();
    double const next = begin == 0 ? 0 : (now - begin) * kMoreSteps;
    if (now + next > end) break;
    if (begin != 0) steps *= kMoreSteps;
    begin = now;
    answer = attempt(roundedSteps(steps));
  }
  return answer;
}

// attempt(start, steps) looks for a match from `start`. Where one beginning
// took more steps, the next ones are tried with as many, looking at the clock
// each time.
template <typename Attempt>
Answer tryStarts(std::size_t starts, std::size_t steps, Attempt attempt) {
  std::size_t const few = steps;
  double now = processorSeconds();
  double const end = now + kLineTime;
  for (std::size_t start = 0; start < starts; ++start) {
    if (steps != few || start % kStartsPerLook == 0) now = processorSeconds();
    if (now > end) return Answer::kUndecided;
    Answer const answer =
        tryWithMore(steps, kStepsFromOneStart, end,
                    [&](std::uint32_t more) { return attempt(start, more); });
    if (answer != Answer::kNoMatch) return answer;
  }
  return Answer::kNoMatch;
}

}  // namespace

LineMatcher::LineMatcher(std::string const& pattern, bool ignoreCase)
    : pattern_(pattern),
      ignoreCase_(ignoreCase),
      demand_(checkedDemand(pattern, ignoreCase)),
      longSteps_(stepsMayBeLong(pattern)),
      callsGroups_(callsGroups(pattern)),
      independentStarts_(beginningsAreIndependent(pattern)),
      expression_(pattern, pocoOptions(ignoreCase), true) {
  if (machineCodeAgrees(pattern) && hasStackForMachineCode(demand_)) {
    jit_.emplace(pattern, ignoreCase, JitExpression::Beginning::kAnywhere);
    if (!jit_->isUsable()) jit_.reset();
  }
}

bool LineMatcher::matches(std::string_view line) {
  Answer answer = jit_ ? matchInMachineCode(line) : Answer::kUndecided;
  if (answer == Answer::kUndecided) answer = matchWithPoco(line);
  if (answer == Answer::kUndecided) {
    throw Poco::RegularExpressionException("matching was given up");
  }
  return answer == Answer::kMatch;
}

// atOnce(steps) looks for the first match in the line, from(start, steps) for
// one at that place.
template <typename AtOnce, typename From>
Answer LineMatcher::decide(std::string_view line, std::size_t stepCost,
                           AtOnce atOnce, From from) {
  bool const tooLong = isTooLongAtOnce(line);
  std::uint32_t const steps = stepsFromEachStart(kLineSteps, line, stepCost);
  Answer const answer = tooLong ? Answer::kUndecided : atOnce(steps);
  if (answer != Answer::kUndecided) return answer;
  if (independentStarts_) {
    return tryStarts(starts(line), stepsFromOneStart(stepCost), from);
  }
  if (tooLong) return Answer::kUndecided;
  std::size_t moreSteps = steps;
  return tryWithMore(moreSteps,
                     stepsFromEachStart(kMostLineSteps, line, stepCost),
                     processorSeconds() + kLineTime, atOnce);
}

Answer LineMatcher::matchInMachineCode(std::string_view line) {
  return decide(
      line, longSteps_ ? line.size() : 1,
      [&](std::uint32_t steps) { return jit_->match(line, 0, steps); },
      [&](std::size_t start, std::uint32_t steps) {
        return anchored().match(line, start, steps);
      });
}

Answer LineMatcher::matchWithPoco(std::string_view line) {
  if (!poco_) poco_.emplace(pattern_, ignoreCase_, traits(), demand_);
  poco_->setLine(line);
  std::size_t const stepCost = pocoStepCost(line);
  auto const atOnce = [&](std::uint32_t steps) { return poco_->search(steps); };
  if (jit_) {
    return isTooLongAtOnce(line)
               ? Answer::kUndecided
               : atOnce(stepsFromEachStart(kLineSteps, line, stepCost));
  }
  return decide(line, stepCost, atOnce,
                [&](std::size_t start, std::uint32_t steps) {
                  return poco_->matchAt(start, steps);
                });
}

bool LineMatcher::isTooLongAtOnce(std::string_view line) const {
  return longSteps_ && line.size() > kLongLine;
}

// How many places there are where a match may begin.
std::size_t LineMatcher::starts(std::string_view line) {
  return traits().oneBeginning ? 1 : line.size() + 1;
}

// What a step costs Poco: where groups are many, as much as they are.
std::size_t LineMatcher::pocoStepCost(std::string_view line) {
  std::size_t const advantage = callsGroups_ ? 1 : kPocoAdvantage;
  return (longSteps_ ? line.size() / advantage : 1) +
         traits().groups / kCheapGroups * kCostOfGroups;
}

JitExpression const& LineMatcher::anchored() {
  if (!anchored_) {
    if (!hasStackForMachineCode(demand_)) {
      throw Poco::RegularExpressionException("no stack for machine code");
    }
    anchored_.emplace(pattern_, ignoreCase_, JitExpression::Beginning::kHere);
  }
  return *anchored_;
}

JitExpression::Traits const& LineMatcher::traits() {
  if (!traits_) {
    checkCompileStack(demand_);
    traits_ = JitExpression::traits(pattern_, ignoreCase_);
  }
  return *traits_;
}

}  // namespace QorCliPipe
