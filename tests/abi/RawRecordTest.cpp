#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Plugin.h"

// The plug-in driven through words and bytes alone: every record is an array,
// and a member is an index.

namespace qor_test {
namespace {

using testing::ElementsAre;

using Word = void*;
using Function = void (*)();

constexpr bool kIsIlp32 = sizeof(void*) == 4;
constexpr std::size_t kModeOffset = kIsIlp32 ? 12 : 24;
constexpr std::size_t kSetPromptOffset = kIsIlp32 ? 44 : 72;
constexpr std::size_t kSetOutputOffset = kIsIlp32 ? 48 : 80;
constexpr std::size_t kSetSortableOffset = kIsIlp32 ? 64 : 112;
constexpr std::size_t kContextSize = kIsIlp32 ? 80 : 136;

// Members of the portal, the component record and the provided interface, as
// words from 0.
constexpr std::size_t kPortalWords = 7;
constexpr std::size_t kRegisterWord = 5;
constexpr std::size_t kUnregisterWord = 6;
constexpr std::size_t kProvidedWord = 3;
constexpr std::size_t kDependenciesWord = 4;
constexpr std::size_t kStartWord = 5;
constexpr std::size_t kStopWord = 6;
constexpr std::size_t kUseModuleWord = 3;
constexpr std::size_t kModuleNameWord = 4;
constexpr std::size_t kInputCompleteWord = 5;

using UseModule = std::int32_t (*)(void*, unsigned, unsigned, unsigned*,
                                   char const*, char const*);

Word portalWords[kPortalWords];
Word accessorWords[1];
Word* component;
Word* unregistered;
std::vector<std::string> answers;

template <class Pointer>
Word asWord(Pointer function) {
  static_assert(sizeof(Pointer) == sizeof(Word));
  Word word;
  std::memcpy(&word, &function, sizeof word);
  return word;
}

template <class Pointer>
Pointer fromWord(Word word) {
  static_assert(sizeof(Pointer) == sizeof(Word));
  Pointer function;
  std::memcpy(&function, &word, sizeof function);
  return function;
}

char const* textAt(Word const* words, std::size_t index) {
  return static_cast<char const*>(words[index]);
}

extern "C" {

void* givePortal(char const*) { return portalWords; }

std::int32_t keepComponent(void* record) {
  component = static_cast<Word*>(record);
  return 0;
}

std::int32_t dropComponent(void* record) {
  unregistered = static_cast<Word*>(record);
  return 0;
}

std::int32_t noteOutput(void*, unsigned index, unsigned count,
                        unsigned actionId, char const* text) {
  answers.push_back(std::to_string(index) + ' ' + std::to_string(count) + ' ' +
                    std::to_string(actionId) + ' ' + text);
  return 0;
}

std::int32_t noteCandidate(void*, unsigned index, unsigned count,
                           unsigned actionId, unsigned token,
                           char const* completion, char const* help,
                           unsigned order, char const* key) {
  answers.push_back(std::to_string(index) + ' ' + std::to_string(count) + ' ' +
                    std::to_string(actionId) + ' ' + std::to_string(token) +
                    ' ' + completion + ' ' + help + ' ' +
                    std::to_string(order) + ' ' + key);
  return 0;
}

std::int32_t failPrompt(void*, char const*) { return -1; }

}  // extern "C"

class RawRecord : public testing::Test {
 protected:
  RawRecord() {
    answers.clear();
    component = nullptr;
    unregistered = nullptr;
    std::memset(portalWords, 0, sizeof portalWords);
    portalWords[kRegisterWord] = asWord(keepComponent);
    portalWords[kUnregisterWord] = asWord(dropComponent);
    accessorWords[0] = asWord(givePortal);
    auto const init =
        fromWord<std::int32_t (*)(void*, char const*)>(asWord(plugin_.init));
    EXPECT_EQ(0, init(accessorWords, nullptr));
    putWord(kSetPromptOffset, asWord(failPrompt));
    putWord(kSetOutputOffset, asWord(noteOutput));
    putWord(kSetSortableOffset, asWord(noteCandidate));
    std::uint32_t const mode = 1;
    std::memcpy(context_ + kModeOffset, &mode, sizeof mode);
  }

  ~RawRecord() override {
    plugin_.terminate();
    EXPECT_EQ(component, unregistered);
  }

  void putWord(std::size_t offset, Word word) {
    std::memcpy(context_ + offset, &word, sizeof word);
  }

  Word* provided() {
    return static_cast<Word*>(static_cast<Word*>(component[kProvidedWord])[0]);
  }

  std::int32_t use(unsigned action, char const* line, char const* input) {
    unsigned matches = 0;
    return fromWord<UseModule>(provided()[kUseModuleWord])(
        context_, action, 0xfffffffeU, &matches, line, input);
  }

  Plugin plugin_;
  alignas(8) unsigned char context_[kContextSize] = {};
};

TEST_F(RawRecord, TheComponentHasItsLayout) {
  EXPECT_STREQ("QorCliPipeCmdComp", textAt(component, 0));
  EXPECT_STREQ("QorMgmtSpiComponent", textAt(component, 1));
  EXPECT_STREQ("1", textAt(component, 2));
  auto const* dependencies = static_cast<Word*>(component[kDependenciesWord]);
  auto const* trace = static_cast<Word*>(dependencies[1]);
  EXPECT_STREQ("TavMwSpiTrace", textAt(trace, 1));
  EXPECT_EQ(nullptr, trace[2]);
  EXPECT_EQ(nullptr, dependencies[2]);
  using StateChange = std::int32_t (*)(unsigned);
  EXPECT_EQ(0, fromWord<StateChange>(component[kStartWord])(1));
  EXPECT_EQ(0, fromWord<StateChange>(component[kStopWord])(2));
}

TEST_F(RawRecord, TheInterfaceHasItsLayout) {
  EXPECT_STREQ("QorCliPipeCmdComp", textAt(provided(), 0));
  EXPECT_STREQ("QorCliApiPipeCommandComponent", textAt(provided(), 1));
  EXPECT_STREQ("1", textAt(provided(), 2));
  using ModuleName = char const* (*)();
  EXPECT_STREQ("QorBasicCommands",
               fromWord<ModuleName>(provided()[kModuleNameWord])());
}

TEST_F(RawRecord, AnExecutionCallsItsMember) {
  EXPECT_EQ(0, use(2, "filter -v a", "a\nb\nc\n"));
  EXPECT_THAT(answers, ElementsAre("0 2 4294967294 b\n", "1 2 4294967294 c\n"));
}

TEST_F(RawRecord, ACompletionCallsItsMember) {
  EXPECT_EQ(0, use(3, "filter --af", nullptr));
  EXPECT_THAT(answers,
              ElementsAre("0 1 4294967294 3 --after Print number of lines of "
                          "trailing context after matching lines 1 --after"));
}

TEST_F(RawRecord, InputCompleteClearsTheAction) {
  EXPECT_EQ(0, use(2, "filter -b 1 M", "x\n"));
  using InputComplete = std::int32_t (*)(void*, unsigned);
  EXPECT_EQ(0, fromWord<InputComplete>(provided()[kInputCompleteWord])(
                   context_, 0xfffffffeU));
  EXPECT_EQ(0, use(2, "filter -b 1 M", "M\n"));
  EXPECT_THAT(answers, ElementsAre("0 1 4294967294 M\n"));
}

}  // namespace
}  // namespace qor_test
