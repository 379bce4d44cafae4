#ifndef QOR_CLI_PATTERN_SCAN_H
#define QOR_CLI_PATTERN_SCAN_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// Goes through the characters of a regular expression that may begin or end a
// group: all but those in character classes, comments, verbs with their names,
// callouts, and behind the first character of an escape, of which \Q...\E is
// one. Reads as the library does; a pattern that the library refuses may be
// read in any way from the place on for which it does so.
//
// From a part on that is hard to read, or never ends, nothing is left out, and
// the scan is not sure any more.
//
// Takes time proportional to the pattern, memory proportional to the nesting of
// its groups, and constant stack. Refers to the pattern. Used by one thread at
// a time.
class PatternScan {
 public:
  // Stands at the first such character.
  explicit PatternScan(std::string_view pattern);

  bool atEnd() const { return position_ >= pattern_.size(); }

  // Index of the character. Only before the end.
  std::size_t position() const { return position_; }

  // Whether all that was left out up to here is sure not to be part of a group.
  bool isSure() const { return isSure_; }

  // Whether something to be left out was found that never ends, which the
  // library refuses.
  bool isRefused() const { return isRefused_; }

  // Goes to the next one, or to the end.
  void advance();

 private:
  void openGroup();
  void closeGroup();
  void setOptions(std::string_view options);
  void leaveOut();
  std::size_t behindHidden() const;
  std::size_t behindComment() const;

  std::string_view pattern_;
  std::vector<std::string_view> newlines_;  // what ends a comment of option x
  std::size_t position_ = 0;
  bool isSure_ = true;
  bool isRefused_ = false;
  // Whether option x was given twice somewhere.
  bool mayBeExtendedMore_ = false;
  // Whether "#" begins a comment, as option x has it: here, and behind each of
  // the groups around.
  bool isExtended_ = false;
  std::vector<bool> extendedBehind_;
};

}  // namespace QorCliPipe

#endif
