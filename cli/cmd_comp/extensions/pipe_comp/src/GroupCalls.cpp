#include "GroupCalls.h"

#include <algorithm>
#include <vector>

#include "CallGraph.h"

namespace QorCliPipe {
namespace {

// What is read of a group each time that it is entered.
struct Group {
  std::size_t length;
  // The calls in it: indices into those of the graph.
  std::size_t firstCall;
  std::size_t endOfCalls;
  bool isInside;  // entered, and not yet left
};

class Walk {
 public:
  explicit Walk(CallGraph const& graph) : calls_(graph.calls()) {
    groups_.reserve(graph.groups().size());
    for (CallGraph::Extent const& extent : graph.groups()) {
      groups_.push_back({extent.end - extent.begin, firstCallFrom(extent.begin),
                         firstCallFrom(extent.end), false});
    }
  }

  std::size_t reach(std::size_t limit) {
    enter(0);
    while (!way_.empty() && read_ < limit) step();
    return std::min(read_, limit);
  }

 private:
  // A group that was entered, and the next of its calls to be followed.
  struct Entered {
    std::size_t group;
    std::size_t next;
  };

  void step() {
    Entered& last = way_.back();
    Group& group = groups_[last.group];
    if (last.next == group.endOfCalls) {
      group.isInside = false;
      way_.pop_back();
      return;
    }
    std::size_t const called = calls_[last.next++].group;
    if (!groups_[called].isInside) enter(called);
  }

  void enter(std::size_t index) {
    Group& group = groups_[index];
    read_ += group.length;
    group.isInside = true;
    way_.push_back({index, group.firstCall});
  }

  std::size_t firstCallFrom(std::size_t position) const {
    auto const first = std::partition_point(
        calls_.begin(), calls_.end(),
        [&](CallGraph::Call const& call) { return call.position < position; });
    return static_cast<std::size_t>(first - calls_.begin());
  }

  std::vector<CallGraph::Call> const& calls_;
  std::vector<Group> groups_;
  std::vector<Entered> way_;
  std::size_t read_ = 0;
};

}  // namespace

std::size_t callReach(std::string_view pattern, std::size_t limit) {
  CallGraph const graph(pattern);
  if (graph.calls().empty()) return 0;
  if (!graph.isReadable()) return limit;
  std::size_t const times = graph.depth() + 1;
  return std::min(Walk(graph).reach(limit / times + 1) * times, limit);
}

}  // namespace QorCliPipe
