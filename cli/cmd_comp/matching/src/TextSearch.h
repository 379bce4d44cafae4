#ifndef QOR_CLI_TEXT_SEARCH_H
#define QOR_CLI_TEXT_SEARCH_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace QorCliMatching {

// The index of the first byte of the line that contains the byte at `place`,
// which is below text.size(). A line feed belongs to the line that it ends.
inline std::size_t beginOfLine(std::string_view text, std::size_t place) {
  std::size_t const feed = text.substr(0, place).rfind('\n');
  return feed == std::string_view::npos ? 0 : feed + 1;
}

// Searches a text for a substring, optionally ignoring the case of ASCII
// letters.
//
// Searches for the two bytes of the substring that are rarest in device output,
// at their distance from each other, with vector instructions on any processor,
// and compares the rest where both are found. Takes time linear in the text, at
// worst times the length of the substring. Immutable after construction.
class TextSearch {
 public:
  // `substring` has at least one byte.
  TextSearch(std::string const& substring, bool ignoreCase);

  // The index of the first occurrence at or after `from`, or npos.
  std::size_t find(std::string_view text, std::size_t from) const;

 private:
  bool matchesAt(char const* place) const;
  std::size_t findBytewise(std::string_view text, std::size_t from) const;

  std::string substring_;  // in lower case if case is ignored
  std::string folds_;      // OR masks: the case bit of letters, or 0
  std::size_t first_;      // indexes of the two rarest bytes
  std::size_t second_;
};

// Searches a text for the first of several substrings. Used by one thread at a
// time.
class AnyTextSearch {
 public:
  // None of `substrings` is empty. With no substrings, find() finds nothing.
  AnyTextSearch(std::vector<std::string> const& substrings, bool ignoreCase);

  // Whether there are no substrings.
  bool empty() const { return searches_.empty(); }

  // Starts a search in `text`, which is not owned and must outlive the search.
  void reset(std::string_view text);

  // The index of the first occurrence of any substring at or after `from`, or
  // npos. `from` must not decrease between two calls of reset().
  std::size_t find(std::size_t from);

 private:
  std::string_view text_;
  std::vector<TextSearch> searches_;
  std::vector<std::size_t> next_;  // next occurrence of each
};

}  // namespace QorCliMatching

#endif
