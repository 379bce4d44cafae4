#include "CompileDemand.h"

#include <algorithm>
#include <vector>

#include "CallGraph.h"

namespace QorCliPipe {
namespace {

// The calls in a group: indices into those of the graph.
struct CallsOfGroup {
  std::size_t begin;
  std::size_t end;
  bool isInside;  // the group was entered, and not yet left
};

class Walk {
 public:
  explicit Walk(CallGraph const& graph)
      : groups_(graph.groups()), calls_(graph.calls()) {
    callsOf_.reserve(groups_.size());
    for (CallGraph::Group const& group : groups_) {
      callsOf_.push_back(
          {firstCallFrom(group.begin), firstCallFrom(group.end), false});
    }
  }

  void go(std::size_t limit) {
    enter(0, 0);
    while (!way_.empty() && read_ < limit) step();
  }

  std::size_t read() const { return read_; }
  std::size_t levels() const { return levels_; }

 private:
  // A group that was entered, and the next of its calls to be followed.
  struct Entered {
    std::size_t group;
    std::size_t level;  // how many groups are around it, on the way here
    std::size_t next;
    std::size_t followed;  // copies of that call that have been
  };

  void step() {
    Entered& last = way_.back();
    CallsOfGroup& own = callsOf_[last.group];
    if (last.next == own.end) {
      own.isInside = false;
      way_.pop_back();
      return;
    }
    CallGraph::Group const& group = groups_[last.group];
    CallGraph::Call const& call = calls_[last.next];
    std::size_t const copies =
        callsOf_[call.group].isInside ? 0 : call.copies / group.copies;
    if (last.followed >= copies) {
      ++last.next;
      last.followed = 0;
      return;
    }
    ++last.followed;
    enter(call.group, last.level + call.level - group.level);
  }

  void enter(std::size_t group, std::size_t level) {
    read_ += groups_[group].length;
    levels_ = std::max(levels_, level + groups_[group].levels);
    callsOf_[group].isInside = true;
    way_.push_back({group, level, callsOf_[group].begin, 0});
  }

  std::size_t firstCallFrom(std::size_t position) const {
    auto const first = std::partition_point(
        calls_.begin(), calls_.end(),
        [&](CallGraph::Call const& call) { return call.position < position; });
    return static_cast<std::size_t>(first - calls_.begin());
  }

  std::vector<CallGraph::Group> const& groups_;
  std::vector<CallGraph::Call> const& calls_;
  std::vector<CallsOfGroup> callsOf_;  // by group
  std::vector<Entered> way_;
  std::size_t read_ = 0;
  std::size_t levels_ = 0;
};

// How much deeper it gets where the references to groups are followed, each
// group once; with calls, of which `levels` follow, from each of them.
std::size_t levelsByReferences(CallGraph const& graph, std::size_t levels) {
  bool const hasCalls = !graph.calls().empty();
  std::size_t result = 0;
  for (std::size_t const group : graph.referred()) {
    result += hasCalls ? levels : graph.groups()[group].levels;
  }
  return result;
}

}  // namespace

CompileDemand compileDemand(std::string_view pattern, std::size_t reachLimit) {
  CallGraph const graph(pattern);
  CompileDemand demand{0, graph.groups().front().levels, graph.choices()};
  if (!graph.isReadable()) demand.reach = reachLimit;
  if (graph.isReadable() && !graph.calls().empty()) {
    std::size_t const times = demand.levels + 1;
    Walk walk(graph);
    walk.go(reachLimit / times + 1);
    demand.reach =
        std::min(std::max(walk.read() * times, graph.lookups()), reachLimit);
    demand.levels = walk.levels();
  }
  demand.levels += levelsByReferences(graph, demand.levels);
  return demand;
}

}  // namespace QorCliPipe
