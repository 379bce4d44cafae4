#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <string>
#include <vector>

#include "PluginTest.h"
#include "SmallStack.h"

namespace qor_test {
namespace {

// A slow run does less.
int const kCalls = isSlowRun() ? 16000 : 160000;
constexpr int kFirstCalls = 1000;
int const kLoads = isSlowRun() ? 50 : 200;
constexpr int kFirstLoads = 20;

// The allocator does not return every page at once; AddressSanitizer's retains
// 256 MiB.
long const kTolerance = (isSlowRun() ? 320L : 1L) << 20;  // bytes

// Freed blocks in the allocator's caches count as allocated.
constexpr std::size_t kCachedBlocks = 8 * 1024;  // bytes

// The resident memory of this process.
long residentBytes() {
  std::ifstream file("/proc/self/statm");
  long total = 0;
  long resident = 0;
  file >> total >> resident;
  EXPECT_TRUE(file) << "/proc/self/statm cannot be read";
  return resident * sysconf(_SC_PAGESIZE);
}

// Allocated memory; 0 in a slow run, whose allocator checks for leaks itself.
std::size_t allocatedBytes() {
  if (isSlowRun()) return 0;
  struct mallinfo2 const info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// ---- Calls

struct Call {
  unsigned action;
  char const* line;
  char const* input;
  std::int32_t status;
};

constexpr std::array<Call, 16> kMix = {{
    {kExecute, "filter a", "a\nb\nc\n", 0},
    {kComplete, "fil", "", 0},
    {kHelp, "filter ", "", 0},
    {kExecute, "filter -b 2 -a 1 \"(M|N)+$\"", "1\n2\n3\nM\n4\n5\n", 0},
    {kComplete, "filter --a", "", 0},
    {kExecute, "filter (", "a\n", -1},
    {kExecute, "filter a b", "a\n", -1},
    {kComplete, "filter ", "", 0},
    {kExecute, "filter -a x y", "a\n", -1},
    {kHelp, "", "", 0},
    {kExecute, "a\"b\"", "a\n", -1},
    {kExecute, "show", "a\n", 0},
    {kExecute, "filter -v -i \"(a|b)\\1\"", "aa\nAB\n", 0},
    {99, "filter a", "a\n", 0},
    {kExecute, "filter -b 5 x", "1\n2\n3\n", 0},
    {kHelp, "filter -b 5", "", 0},
}};

class Endurance : public PluginTest {
 protected:
  void callOnce() {
    Call const& call = kMix[static_cast<std::size_t>(calls_) % kMix.size()];
    session.clear();
    auto const actionId = static_cast<unsigned>(calls_);
    if (use(call.action, actionId, call.line, call.input).status !=
        call.status) {
      ++failures_;
    }
    ++calls_;
    // Some inputs are completed more often than others.
    if (calls_ % 50 == 0 &&
        interface->inputComplete(&session.record, actionId) != 0) {
      ++failures_;
    }
  }

  void callUntil(int calls) {
    while (calls_ < calls) callOnce();
  }

  int calls_ = 0;
  int failures_ = 0;
};

TEST_F(Endurance, DoesNotLeakOverManyCalls) {
  callUntil(kFirstCalls);
  long const resident = residentBytes();
  std::size_t const allocated = allocatedBytes();
  callUntil(kFirstCalls + kCalls);
  EXPECT_LE(residentBytes(), resident + kTolerance);
  // Both are measured at the same call of the mix, after the state is cleared.
  ASSERT_EQ(0, kCalls % static_cast<int>(kMix.size()));
  EXPECT_LE(allocatedBytes(), allocated + kCachedBlocks);
  EXPECT_EQ(0, failures_);
}

// ---- Loads

void loadOnce(char const* command) {
  Plugin plugin;
  Portal portal;
  Session session;
  ASSERT_EQ(0, plugin.init(&portal.accessor, nullptr));
  ASSERT_EQ(0, portal.registered->start(1));
  PipeCommandInterface const& commands =
      *portal.registered->providedInterfaces[0];
  unsigned matches = 0;
  ASSERT_EQ(0, commands.useModule(&session.record, kExecute, 1, &matches,
                                  command, "b\na\nc\n"));
  ASSERT_EQ((std::vector<std::string>{"b\n", "a\n"}), textsOf(session.outputs));
  ASSERT_EQ(0, portal.registered->stop(1));
  plugin.terminate();
  ASSERT_TRUE(plugin.unload());
}

void loadTimes(int loads, char const* command = "filter -b 3 a") {
  for (int i = 0; i < loads && !testing::Test::HasFatalFailure(); ++i) {
    loadOnce(command);
    ASSERT_FALSE(Plugin::isMapped()) << "after load " << i;
  }
}

TEST(EndlessLoading, LeavesNoLibraryAndNoMemory) {
  loadTimes(kFirstLoads);
  long const resident = residentBytes();
  std::size_t const allocated = allocatedBytes();
  loadTimes(kLoads);
  EXPECT_LE(residentBytes(), resident + kTolerance);
  EXPECT_LE(allocatedBytes(), allocated + kCachedBlocks);
}

// RE2 repeats its lazy initialisation when it is loaded again, and leaks it.
TEST(EndlessLoading, LeaksLittleWithAPatternForRe2) {
  constexpr std::size_t leakPerLoad = 256;  // bytes
  constexpr char command[] = "filter -b 3 \"(a|d)+$\"";
  loadTimes(kFirstLoads, command);
  std::size_t const allocated = allocatedBytes();
  loadTimes(kLoads, command);
  EXPECT_LE(allocatedBytes(),
            allocated + kCachedBlocks +
                static_cast<std::size_t>(kLoads) * leakPerLoad);
}

}  // namespace
}  // namespace qor_test
