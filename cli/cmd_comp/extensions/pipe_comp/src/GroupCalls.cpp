#include "GroupCalls.h"

#include <algorithm>
#include <vector>

#include "CallGraph.h"

namespace QorCliPipe {
namespace {

class Walk {
 public:
  explicit Walk(CallGraph const& graph)
      : graph_(graph), isInside_(graph.groups().size()) {}

  std::size_t reach(std::size_t limit) {
    enter(0);
    while (!way_.empty() && read_ < limit) step();
    return std::min(read_, limit);
  }

 private:
  // A group that was entered, and its calls that are yet to be followed.
  struct Entered {
    std::size_t group;
    std::size_t next;
    std::size_t end;
  };

  void step() {
    Entered& last = way_.back();
    if (last.next == last.end) {
      isInside_[last.group] = false;
      way_.pop_back();
      return;
    }
    std::size_t const called = graph_.calls()[last.next++].group;
    if (!isInside_[called]) enter(called);
  }

  void enter(std::size_t group) {
    CallGraph::Extent const& extent = graph_.groups()[group];
    read_ += extent.end - extent.begin;
    isInside_[group] = true;
    way_.push_back(
        {group, firstCallFrom(extent.begin), firstCallFrom(extent.end)});
  }

  std::size_t firstCallFrom(std::size_t position) const {
    auto const& calls = graph_.calls();
    auto const first = std::partition_point(
        calls.begin(), calls.end(),
        [&](CallGraph::Call const& call) { return call.position < position; });
    return static_cast<std::size_t>(first - calls.begin());
  }

  CallGraph const& graph_;
  std::vector<bool> isInside_;  // by group
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
