#ifndef QOR_CLI_PATTERN_GROUPS_H
#define QOR_CLI_PATTERN_GROUPS_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// The parts of a regular expression that can be repeated as a whole: groups of
// all kinds, and calls of groups; with what their repetitions make of them.
// Parts are added and ended in the order of the pattern. Used by one thread at
// a time.
class PatternGroups {
 public:
  // A part, and what becomes of it.
  struct Part {
    std::size_t parent;  // index; of the whole pattern, which is the first, 0
    std::size_t begin;
    std::size_t end;  // behind its last character
    // As often as it is copied in its place, and how many of the copies are
    // nested in each other.
    std::size_t copies = 1;
    std::size_t nested = 0;
    // Known after finish():
    std::size_t length = 0;     // of one copy, with the copies of its parts
    std::size_t allCopies = 1;  // in the whole pattern
    std::size_t level = 0;      // how many parts are around it
    std::size_t deepest = 0;    // the most that are around a part in it
  };

  explicit PatternGroups(std::string_view pattern);

  // Adds a part of `parent` that begins at `begin`, and ends with the pattern
  // unless it is ended. Returns its index.
  std::size_t add(std::size_t parent, std::size_t begin);

  // From here on, the part may be repeated.
  void end(std::size_t part, std::size_t end);

  // To be called for each character that a scan stands at. Repeats the part
  // that ended last where a repetition such as {2,3} begins behind it;
  // something else in between belongs to that.
  void visit(std::size_t i);

  // To be called once, at last.
  void finish();

  std::vector<Part> const& parts() const { return parts_; }

  // Whether any part has copies.
  bool hasCopies() const { return hasCopies_; }

 private:
  void repeat(std::size_t i);

  std::string_view pattern_;
  bool hasWideBlanks_;  // some outside ASCII
  std::vector<Part> parts_;
  std::size_t last_ = 0;    // what may be repeated; 0 for nothing
  std::size_t behind_ = 0;  // the last part, or its repetition
  bool hasCopies_ = false;
};

}  // namespace QorCliPipe

#endif
