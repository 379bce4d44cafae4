#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>

#include "FailingAllocator.h"
#include "Plugin.h"
#include "QuietPortal.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

constexpr std::size_t kThreadStack = std::size_t{1} << 20;  // bytes
constexpr int kMaxAllocations = 100000;                     // of a call

// The output of the plug-in. Recording it allocates nothing, so that all
// failing allocations are the plug-in's.
std::string transcript;

void note(char const* text) {
  ASSERT_LT(transcript.size() + std::char_traits<char>::length(text) + 1,
            transcript.capacity());
  transcript += text;
  transcript += '|';
}

extern "C" {

std::int32_t noteOutput(ContextRecord*, unsigned, unsigned, unsigned,
                        char const* text) {
  note(text);
  return 0;
}

std::int32_t noteCandidate(ContextRecord*, unsigned, unsigned, unsigned,
                           unsigned, char const* completion, char const* help,
                           unsigned, char const* sortKey) {
  note(completion);
  note(help);
  note(sortKey);
  return 0;
}

std::int32_t acceptPrompt(ContextRecord*, char const*) { return 0; }

}  // extern "C"

// The outcome of a call.
struct Outcome {
  bool reached;  // the failing allocation
  bool thrown;   // std::bad_alloc
  std::int32_t status;
};

Outcome callFailingAt(int number, std::function<std::int32_t()> const& call,
                      bool andAllLater = false) {
  Outcome outcome{false, false, 0};
  transcript.clear();
  failAllocation(number, andAllLater);
  try {
    outcome.status = call();
  } catch (std::bad_alloc const&) {
    outcome.thrown = true;
  }
  outcome.reached = stopFailing();
  return outcome;
}

constexpr char kBeginning[] =
    "a first line of some length\na second line of some length\n";
constexpr char kRest[] =
    "a third line of some length\n"
    "a line that matches, M: abab\n"
    "one line of trailing context\n"
    "a line that is left out of it\n";
// One for each strategy: PCRE2's JIT code, RE2, and PCRE2 with a time limit.
constexpr char kFilter[] = "filter -b 2 -a 1 \"M: [ab]*\"";
constexpr char kLinearFilter[] = "filter -b 2 -a 1 \"M: (a|b)*\"";
constexpr char kTimedFilter[] = "filter -b 2 -a 1 \"(*UTF8)M: (a|b)*\"";
constexpr char kKept[] =
    "a second line of some length\n|a third line of some length\n|"
    "a line that matches, M: abab\n|one line of trailing context\n|";

class AllocationFailure : public testing::Test {
 protected:
  AllocationFailure() {
    transcript.reserve(std::size_t{1} << 16);
    record_.setPrompt = acceptPrompt;
    record_.setOutput = noteOutput;
    record_.setSortableAutocompleteResult = noteCandidate;
  }

  static std::int32_t init(Plugin const& plugin) {
    return plugin.init(QuietPortal::accessor(), nullptr);
  }

  std::int32_t use(unsigned action, char const* line, char const* input) {
    unsigned matches = 0;
    return QuietPortal::commands().useModule(&record_, action, 1, &matches,
                                             line, input);
  }

  std::int32_t complete() {
    return QuietPortal::commands().inputComplete(&record_, 1);
  }

  // The output of a call if nothing fails.
  std::string answer(unsigned action, char const* line, char const* input) {
    transcript.clear();
    EXPECT_EQ(0, use(action, line, input));
    return transcript;
  }

  // A complete action works, and leaves no state.
  void expectWorks() {
    EXPECT_EQ("", answer(kExecute, kFilter, kBeginning));
    EXPECT_EQ(kKept, answer(kExecute, kFilter, kRest));
    EXPECT_EQ(0, complete());
    EXPECT_EQ("filter|() Print lines matching a pattern\nType: Command|filter|",
              answer(kHelp, "", ""));
  }

 private:
  ContextRecord record_{};
};

// ---- A newly loaded library

class LoadedLibrary : public AllocationFailure {
 protected:
  // Returns whether the failing allocation was reached.
  bool initFailingAt(int number) {
    Plugin plugin;
    Outcome const outcome = callFailingAt(number, [&] { return init(plugin); });
    EXPECT_EQ(0, outcome.status) << number;
    std::int32_t const again = outcome.thrown ? init(plugin) : 0;
    EXPECT_EQ(0, again) << number;
    expectWorks();
    plugin.terminate();
    return outcome.reached;
  }

  bool terminateFailingAt(int number) {
    Plugin plugin;
    EXPECT_EQ(0, init(plugin));
    Outcome const outcome = callFailingAt(number, [&] {
      plugin.terminate();
      return 0;
    });
    EXPECT_FALSE(outcome.thrown) << number;
    return outcome.reached;
  }

  // Makes each allocation fail in turn; returns their number. The loader frees
  // some of its memory only at every other load, hence a second load.
  static int failEach(std::function<bool(int)> const& failingAt) {
    // Allocations that are made once per process.
    for (int first : {1, kMaxAllocations, 1, kMaxAllocations}) failingAt(first);
    int number = 1;
    for (; number < kMaxAllocations && !HasFailure(); ++number) {
      long const before = outstandingAllocations();
      bool const reached = failingAt(number);
      failingAt(kMaxAllocations);
      EXPECT_EQ(before, outstandingAllocations()) << number;
      if (!reached) break;
    }
    return number - 1;
  }
};

TEST_F(LoadedLibrary, CanBeInitialisedAgain) {
  EXPECT_GT(failEach([this](int number) { return initFailingAt(number); }), 10);
}

TEST_F(LoadedLibrary, IsTerminatedWithoutMemory) {
  failEach([this](int number) { return terminateFailingAt(number); });
  Plugin plugin;
  EXPECT_EQ(0, init(plugin));
  expectWorks();
  plugin.terminate();
}

// ---- Calls

class InitialisedLibrary : public AllocationFailure {
 protected:
  InitialisedLibrary() {
    EXPECT_EQ(0, init(plugin_));
    // RE2's lazy initialisation: RE2 replaces JIT code that failed to compile.
    EXPECT_EQ(0, use(kExecute, kLinearFilter, kRest));
    EXPECT_EQ(0, complete());
    expectWorks();
  }
  ~InitialisedLibrary() override { plugin_.terminate(); }

  // Makes each allocation of `call` fail in turn, after `prepare`, or only the
  // first hundred and some later ones where that would take long. The call then
  // still gives the whole answer, or fails: with std::bad_alloc and no answer,
  // or with -1 and at most the first text of the answer. Returns the number of
  // allocations.
  int failEach(std::function<void()> const& prepare,
               std::function<std::int32_t()> const& call,
               std::string const& answer) {
    compileAnotherFilter();
    int number = 1;
    for (; number < kMaxAllocations && !HasFailure(); number += step(number)) {
      long const before = outstandingAllocations();
      prepare();
      compileAnotherFilter();
      Outcome const outcome = outcomeOf(number, call);
      expectConsistent(outcome, answer);
      // The state is still usable.
      EXPECT_EQ(0, use(kExecute, kFilter, kRest));
      EXPECT_EQ(0, complete());
      expectWorks();
      compileAnotherFilter();
      if (!mayLeak_) {
        EXPECT_EQ(before, outstandingAllocations()) << number;
      }
      if (!outcome.reached) break;
    }
    return number - 1;
  }

  bool onThread_ = false;  // whether to call on another thread
  bool lasting_ = false;   // whether all later allocations fail, too
  // When memory runs out, RE2 leaks, since it is not exception-safe. Sometimes
  // it reports that on standard error.
  bool mayLeak_ = false;

 private:
  // The next call must compile its own pattern.
  void compileAnotherFilter() {
    EXPECT_EQ(0, use(kExecute, "filter something_else", "a line\n"));
  }

  static int step(int number) { return isSlowRun() && number > 100 ? 9 : 1; }

  Outcome outcomeOf(int number, std::function<std::int32_t()> const& call) {
    if (!onThread_) return callFailingAt(number, call, lasting_);
    Outcome outcome{};
    runOnStackOf(kThreadStack,
                 [&] { outcome = callFailingAt(number, call, lasting_); });
    return outcome;
  }

  static void expectConsistent(Outcome const& outcome,
                               std::string const& answer) {
    if (outcome.thrown) {
      EXPECT_EQ("", transcript);
    } else if (outcome.status == 0) {
      EXPECT_EQ(answer, transcript);
    } else {
      EXPECT_TRUE(outcome.reached);
      EXPECT_EQ(-1, outcome.status);
      std::string const first = answer.substr(0, answer.find('|') + 1);
      EXPECT_TRUE(transcript.empty() || transcript == first) << transcript;
    }
  }

  Plugin plugin_;
};

void nothing() {}

// With AddressSanitizer, the operator new of this program throws without the
// new-handler, which RE2 does not survive.
constexpr char const* kFilters[] = {
    kFilter,
    kTimedFilter,
#if !QOR_TEST_ADDRESS_SANITIZER
    kLinearFilter,
#endif
};

class Executing : public InitialisedLibrary {
 protected:
  void failEachOfEveryFilter() {
    for (char const* command : kFilters) {
      SCOPED_TRACE(command);
      mayLeak_ = command == kLinearFilter;
      EXPECT_GT(failEach([&] { use(kExecute, command, kBeginning); },
                         [&] { return use(kExecute, command, kRest); }, kKept),
                10);
    }
  }
};

TEST_F(Executing, AnswersOrFails) { failEachOfEveryFilter(); }

TEST_F(Executing, FailsWhereNoMemoryComesBack) {
  lasting_ = true;
  failEachOfEveryFilter();
}

TEST_F(InitialisedLibrary, ExecutesTheFirstCallOfAnAction) {
  failEach(
      nothing, [this] { return use(kExecute, kFilter, kBeginning); }, "");
}

TEST_F(InitialisedLibrary, ExecutesOnAnotherThread) {
  onThread_ = true;
  EXPECT_GT(failEach([this] { use(kExecute, kFilter, kBeginning); },
                     [this] { return use(kExecute, kFilter, kRest); }, kKept),
            10);
}

TEST_F(InitialisedLibrary, ReportsErrors) {
  std::string const error =
      "ERROR: Invalid value 'x' for integer parameter '-a'. Valid values are "
      "in range : [0,4294967295]\n|";
  constexpr char command[] = "filter -a x pattern";
  transcript.clear();
  EXPECT_EQ(-1, use(kExecute, command, kBeginning));
  EXPECT_EQ(error, transcript);
  EXPECT_GT(failEach(
                nothing, [&] { return use(kExecute, command, kBeginning) + 1; },
                error),
            5);
}

TEST_F(InitialisedLibrary, Completes) {
  for (char const* line : {"fi", "filter ", "filter --", "filter -a 5 "}) {
    std::string const expected = answer(kComplete, line, "");
    EXPECT_GT(failEach(
                  nothing, [&] { return use(kComplete, line, ""); }, expected),
              2)
        << line;
  }
}

TEST_F(InitialisedLibrary, Helps) {
  for (char const* line : {"", "fi", "filter ", "filter --after "}) {
    std::string const expected = answer(kHelp, line, "");
    EXPECT_GT(failEach(
                  nothing, [&] { return use(kHelp, line, ""); }, expected),
              2)
        << line;
  }
}

TEST_F(InitialisedLibrary, CompletesTheInput) {
  failEach([this] { use(kExecute, kFilter, kBeginning); },
           [this] { return complete(); }, "");
}

// ---- A component of commands, which never throws

class InitialisedComponent : public AllocationFailure {
 protected:
  InitialisedComponent() {
    EXPECT_EQ(0, init(plugin_));
    for (int i = 0; i < 2; ++i) expectCounts();
  }
  ~InitialisedComponent() override { plugin_.terminate(); }

  void expectCounts() {
    EXPECT_EQ("2 a\n|", execute("a\na\nb\n"));
    transcript.clear();
    EXPECT_EQ(0, complete());
    EXPECT_EQ("1 b\n|", transcript);
  }

  std::string execute(char const* text) {
    return answer(kExecute, kCount, text);
  }

  // Makes each allocation of `call` fail in turn, after `prepare`. The call
  // then still gives `answer`, or fails, with or without a reason, and leaves
  // no run.
  void failEach(std::function<void()> const& prepare,
                std::function<std::int32_t()> const& call,
                std::string const& answer) {
    for (int number = 1; number < kMaxAllocations && !HasFailure(); ++number) {
      SCOPED_TRACE(number);
      long const before = outstandingAllocations();
      prepare();
      Outcome const outcome = callFailingAt(number, call);
      EXPECT_FALSE(outcome.thrown);
      expectConsistent(outcome, answer);
      transcript.clear();
      EXPECT_EQ(0, complete());
      EXPECT_TRUE(outcome.status == 0 || transcript.empty()) << transcript;
      expectCounts();
      EXPECT_EQ(before, outstandingAllocations());
      if (!outcome.reached) break;
    }
  }

  static constexpr char kCount[] = "unique --count";

 private:
  static void expectConsistent(Outcome const& outcome,
                               std::string const& answer) {
    if (outcome.status == 0) {
      EXPECT_EQ(answer, transcript);
    } else {
      EXPECT_TRUE(outcome.reached);
      EXPECT_EQ(-1, outcome.status);
      EXPECT_TRUE(transcript.empty() ||
                  transcript == "ERROR: std::bad_alloc\n|")
          << transcript;
    }
  }

  Plugin plugin_{QOR_TWO_COMMANDS};
};

TEST_F(InitialisedComponent, Executes) {
  failEach([] {}, [this] { return use(kExecute, kCount, kBeginning); },
           "1 a first line of some length\n|");
}

TEST_F(InitialisedComponent, ExecutesAgain) {
  failEach(
      [this] { use(kExecute, kCount, "a long line that is not complete"); },
      [this] { return use(kExecute, kCount, " yet\nb\n"); },
      "1 a long line that is not complete yet\n|");
}

TEST_F(InitialisedComponent, CompletesTheInput) {
  failEach(
      [this] { use(kExecute, kCount, "a long line that is not complete"); },
      [this] { return complete(); }, "1 a long line that is not complete\n|");
}

TEST_F(InitialisedComponent, CompletesAndHelps) {
  for (unsigned const action : {kComplete, kHelp}) {
    for (char const* line : {"u", "unique ", "head "}) {
      std::string const expected = answer(action, line, "");
      SCOPED_TRACE(line);
      failEach([] {}, [&] { return use(action, line, ""); }, expected);
    }
  }
}

class LoadedComponent : public AllocationFailure {};

TEST_F(LoadedComponent, CanBeInitialisedAgain) {
  bool reached = true;
  int number = 1;
  for (; reached && !HasFailure(); ++number) {
    SCOPED_TRACE(number);
    Plugin plugin(QOR_TWO_COMMANDS);
    Outcome const outcome = callFailingAt(number, [&] { return init(plugin); });
    EXPECT_FALSE(outcome.thrown);
    EXPECT_TRUE(outcome.status == 0 || outcome.status == -1);
    EXPECT_EQ(0, outcome.status == 0 ? 0 : init(plugin));
    EXPECT_EQ(
        "unique|() Print repeated lines once\nType: Command|unique|"
        "head|() Print the first lines\nType: Command|head|",
        answer(kHelp, "", ""));
    plugin.terminate();
    reached = outcome.reached;
  }
  EXPECT_GT(number, 10);
}

}  // namespace
}  // namespace qor_test
