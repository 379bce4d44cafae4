// A pipeline prints the same as its commands one by one, each over the whole
// text: for any plug-ins, any chunks, and whatever state a component drops when
// an input is complete.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "Seed.h"
#include "SmallStack.h"
#include "calls/Session.h"
#include "diagnostics/Diagnostics.h"
#include "output/OutputWriter.h"
#include "pipeline/Pipeline.h"
#include "plugins/LineInstances.h"
#include "plugins/Plugins.h"
#include "sources/Source.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {
namespace {

// A text in chunks of random sizes, at most a few lines, with a pause after
// each.
class ChunksSource : public Source {
 public:
  ChunksSource(std::string const& text, std::mt19937& random)
      : text_(text), random_(random) {}

  State read(LineChunker& chunker) override {
    constexpr std::size_t kMax = 12;  // bytes
    std::size_t const size =
        std::uniform_int_distribution<std::size_t>(1, kMax)(random_);
    std::string const chunk = text_.substr(done_, size);
    chunker.append(chunk);
    done_ += chunk.size();
    return done_ < text_.size() ? State::kIdle : State::kEnd;
  }

 private:
  std::string const& text_;
  std::mt19937& random_;
  std::size_t done_ = 0;
};

// In any order, so that each may be the first one asked for a command, even if
// it has no instances left.
std::vector<std::string> pluginsInAnyOrder(std::mt19937& random) {
  std::vector<std::string> paths{QOR_CLI_PIPE_LIBRARY, QOR_STATEFUL_OWN,
                                 QOR_STATEFUL_ALL, QOR_STATEFUL_ONE,
                                 QOR_TWO_COMMANDS};
  std::shuffle(paths.begin(), paths.end(), random);
  return paths;
}

class Pipelines : public testing::Test {
 protected:
  // The output of a pipeline.
  std::string run(std::vector<std::string> const& stages,
                  std::string const& text) {
    std::vector<PipeStage> made;
    for (std::string const& stage : stages) {
      made.emplace_back(StageText{made.size() + 1, stage, stage},
                        session_.nextActionId(), session_, nullptr, nullptr);
    }
    OutputWriter output;
    Pipeline line("text", std::move(made), output, diagnostics_);
    ChunksSource source(text, random_);
    LineInstances instances(plugins_);
    line.run(source, instances);
    return output.buffer();
  }

  std::string runOneByOne(std::vector<std::string> const& stages,
                          std::string text) {
    for (std::string const& stage : stages) text = run({stage}, text);
    return text;
  }

  std::size_t number(std::size_t min, std::size_t max) {
    return std::uniform_int_distribution<std::size_t>(min, max)(random_);
  }

  std::string oneOf(std::vector<std::string> const& words) {
    return words[number(0, words.size() - 1)];
  }

  // Few different lines, so that some repeat.
  std::string randomText() {
    std::string text;
    for (std::size_t i = number(0, 12); i > 0; --i) {
      text += oneOf({"a", "b", "ab", "c", ""}) + '\n';
    }
    return text;
  }

  std::string randomStage() {
    std::size_t const plugin = number(0, 4);
    if (plugin == 0) return oneOf({"unique", "unique -c", "head", "head 2"});
    if (plugin < 3) {
      return "filter" + oneOf({"", " -v"}) + oneOf({"", " -a 1", " -a 2"}) +
             oneOf({"", " -b 1", " -b 2"}) + ' ' + oneOf({"a", "b", "c", "."});
    }
    return oneOf({"own", "all", "one"}) + '-' +
           oneOf({"number", "runs", "late", "last", "title", "nothing"});
  }

  std::vector<std::string> randomStages() {
    std::vector<std::string> stages;
    for (std::size_t i = number(2, 5); i > 0; --i) {
      stages.push_back(randomStage());
    }
    return stages;
  }

  std::mt19937 random_{qor_test::testSeed()};
  Diagnostics diagnostics_{false, false};
  Session session_{0, "", "tester"};
  Plugins plugins_{pluginsInAnyOrder(random_), diagnostics_};
};

std::size_t openFiles() {
  std::filesystem::directory_iterator const files("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::string joined(std::vector<std::string> const& stages) {
  std::string line;
  for (std::string const& stage : stages) line += " | " + stage;
  return line;
}

// The inputs end in order, which makes the third stage's component drop its
// state.
TEST_F(Pipelines, aStageKeepsItsStateAtTheEndOfAnEarlierOne) {
  std::vector<std::string> const stages{"filter .", "own-runs",
                                        "filter -b 1 c"};
  EXPECT_EQ(run(stages, "a\nb\nc\n"), "1 b\n1 c\n");
}

TEST_F(Pipelines, printTheSameAsTheirStagesOneByOne) {
  int const count = qor_test::isSlowRun() ? 500 : 10000;
  std::size_t printed = 0;
  for (int i = 0; i < count; ++i) {
    std::vector<std::string> const stages = randomStages();
    std::string const text = randomText();
    std::string const expected = runOneByOne(stages, text);
    ASSERT_EQ(run(stages, text), expected)
        << joined(stages) << "\nover\n"
        << text << "\nwith QOR_TEST_SEED=" << qor_test::testSeed();
    if (!expected.empty()) ++printed;
  }
  EXPECT_GT(printed, static_cast<std::size_t>(count) / 10);
}

TEST_F(Pipelines, haveAsManyStagesOfAPluginAsThereAreInstances) {
  std::vector<std::string> stages(Plugins::kMaxInstances, "one-number");
  EXPECT_EQ(run(stages, "x\n"), runOneByOne(stages, "x\n"));
  for (char const* other : {"filter .", "own-title", "all-title", "unique"}) {
    stages.emplace_back(other);
  }
  EXPECT_EQ(run(stages, "x\n"), runOneByOne(stages, "x\n"));
  stages.emplace_back("one-number");
  try {
    run(stages, "x\n");
    FAIL() << "there is a stage too many";
  } catch (CommandFailure const& failure) {
    EXPECT_EQ(std::string(failure.what()),
              "stage 69 (one-number): the plug-in \"" QOR_STATEFUL_ONE
              "\" serves 64 stages already; a line can have no more of it");
  }
}

TEST(PluginInstances, areKeptForLaterLinesAndLeaveNothing) {
  std::size_t const before = openFiles();
  {
    Diagnostics diagnostics(false, false);
    Plugins plugins({QOR_STATEFUL_OWN}, diagnostics);
    std::size_t const loaded = openFiles();
    Plugin const& first = plugins.instance(0, 0);
    Plugin const& second = plugins.instance(0, 1);
    EXPECT_NE(&first, &second);
    EXPECT_EQ(&plugins.instance(0, 1), &second);
    EXPECT_EQ(plugins.size(), 1U);
    EXPECT_EQ(openFiles(), loaded + 1);
  }
  EXPECT_EQ(openFiles(), before);
}

// The loader finds a loaded library by its name, even if its file is gone.
TEST(PluginInstances, failWithTheReasonWhenTheFileCannotBeOpened) {
  namespace fs = std::filesystem;
  std::string const path = fs::path(testing::TempDir()) /
                           ("gone-" + std::to_string(::getpid()) + ".so");
  fs::copy_file(QOR_STATEFUL_OWN, path);
  void* const loaded = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  fs::remove(path);
  ASSERT_NE(loaded, nullptr);
  Diagnostics diagnostics(false, false);
  Plugins plugins({path}, diagnostics);
  try {
    plugins.instance(0, 1);
    FAIL() << "the file has been opened";
  } catch (PluginFailure const& failure) {
    EXPECT_EQ(failure.what(), "cannot load the plug-in \"" + path +
                                  "\" again: cannot read it: No such file or "
                                  "directory");
  }
  ::dlclose(loaded);
}

// The name of an instance's component.
std::string nameOf(Plugin const& plugin) {
  return plugin.pipeComponents().front().name();
}

void failInstance(Plugins& plugins, std::size_t plugin, char const* function) {
  ::setenv("STATEFUL_REFUSES", function, 1);
  EXPECT_THROW(plugins.instance(plugin, 1), PluginFailure) << function;
  ::unsetenv("STATEFUL_REFUSES");
}

TEST(PluginInstances, thatFailLeaveNothing) {
  for (char const* function : {"init", "start"}) {
    Diagnostics diagnostics(false, false);
    Plugins plugins({QOR_STATEFUL_OWN, QOR_STATEFUL_ALL}, diagnostics);
    std::size_t const before = openFiles();
    failInstance(plugins, 0, function);
    EXPECT_EQ(openFiles(), before) << function;
    EXPECT_EQ(nameOf(plugins.instance(1, 1)), "all") << function;
    EXPECT_EQ(nameOf(plugins.instance(0, 1)), "own") << function;
  }
}

// The loader finds it by its path, which no other library may use then.
TEST(PluginInstances, thatStayLoadedAreNotConfusedWithOthers) {
  for (char const* function : {"init", "start"}) {
    Diagnostics diagnostics(false, false);
    Plugins plugins({QOR_STATEFUL_KEPT, QOR_STATEFUL_ALL}, diagnostics);
    failInstance(plugins, 0, function);
    EXPECT_EQ(nameOf(plugins.instance(1, 1)), "all") << function;
    EXPECT_EQ(nameOf(plugins.instance(0, 1)), "kept") << function;
  }
}

}  // namespace
}  // namespace QorCliEngine
