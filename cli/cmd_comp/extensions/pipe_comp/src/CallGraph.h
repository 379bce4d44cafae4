#ifndef QOR_CLI_CALL_GRAPH_H
#define QOR_CLI_CALL_GRAPH_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// The groups of a regular expression that can be called, and the calls of
// groups in it, as they are once the library has copied what is repeated, such
// as (a){3}: a group that may occur up to three times is three groups then, and
// those that need not occur are nested in each other. Takes memory proportional
// to the pattern, and constant stack. Not changed once made; any thread.
//
// Which group a call means is read from the text of the pattern. Where that may
// be misread, calls with the same text are taken to mean one group of their own
// that spans the whole pattern: there are more calls to follow then, never
// fewer.
class CallGraph {
 public:
  // A group that can be called, or the whole pattern.
  struct Group {
    std::size_t begin;   // in the pattern
    std::size_t end;     // behind its last character
    std::size_t length;  // characters of one copy, with all copies in it
    std::size_t copies;  // in the whole pattern
    std::size_t level;   // how many groups are around its innermost copy
    std::size_t levels;  // how deeply groups are nested in it, with itself
  };

  // A call of a group, such as (?1), or a reference to its text, such as \1:
  // the library follows both.
  struct Call {
    std::size_t position;  // in the pattern
    std::size_t group;     // index into groups()
    std::size_t copies;    // in the whole pattern
    std::size_t level;     // how many groups are around it, with its own
  };

  explicit CallGraph(std::string_view pattern);

  // The whole pattern first.
  std::vector<Group> const& groups() const { return groups_; }

  // In the order of their positions. Where the library refuses a pattern before
  // it follows a call, because a group that is called is not there or the end
  // of a group or class is missing, such a call or all of them are left out.
  std::vector<Call> const& calls() const { return calls_; }

  // The groups whose text is referred to, as by \1: indices into groups(), each
  // once; the whole pattern in place of one that is unsure.
  std::vector<std::size_t> const& referred() const { return referred_; }

  // Repetitions and alternatives, in all copies at most.
  std::size_t choices() const { return choices_; }

  // What is gone through to find the groups that are called: names, and the
  // pattern for a group that follows.
  std::size_t lookups() const { return lookups_; }

  // Whether there is no call that is too long to be read, and none in a pattern
  // with copies that may be misread. One that is leads to any group.
  bool isReadable() const { return isReadable_; }

 private:
  std::vector<Group> groups_;
  std::vector<Call> calls_;
  std::vector<std::size_t> referred_;
  std::size_t choices_ = 0;
  std::size_t lookups_ = 0;
  bool isReadable_ = true;
};

}  // namespace QorCliPipe

#endif
