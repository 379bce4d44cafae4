#ifndef QOR_CLI_CALL_GRAPH_H
#define QOR_CLI_CALL_GRAPH_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// The groups of a regular expression and the calls of groups in it. Takes
// memory proportional to the pattern, and constant stack. Not changed once
// made; any thread.
//
// Which group a call means is read from the text of the pattern. Where that may
// be misread, calls with the same text are taken to mean one group of their own
// that spans the whole pattern: there are more calls to follow then, never
// fewer.
class CallGraph {
 public:
  // A part of the pattern: `begin` to the character before `end`.
  struct Extent {
    std::size_t begin;
    std::size_t end;
  };

  // A call of a group, such as (?1).
  struct Call {
    std::size_t position;  // in the pattern
    std::size_t group;     // index into groups()
  };

  explicit CallGraph(std::string_view pattern);

  // The whole pattern first.
  std::vector<Extent> const& groups() const { return groups_; }

  // In the order of their positions. Where the library refuses a pattern before
  // it follows a call, because a group that is called is not there or the end
  // of a group or class is missing, such a call or all of them are left out.
  std::vector<Call> const& calls() const { return calls_; }

  // Whether there is no call that is too long to be read. One that is leads to
  // any group.
  bool isReadable() const { return isReadable_; }

  // How many groups at most stand around a character of the pattern.
  std::size_t depth() const { return depth_; }

 private:
  std::vector<Extent> groups_;
  std::vector<Call> calls_;
  std::size_t depth_ = 0;
  bool isReadable_ = true;
};

}  // namespace QorCliPipe

#endif
