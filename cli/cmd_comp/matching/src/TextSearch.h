#ifndef QOR_CLI_TEXT_SEARCH_H
#define QOR_CLI_TEXT_SEARCH_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace QorCliMatching {

// The index of the first byte of the line in which the byte at `place`, below
// text.size(), stands. A line feed belongs to the line that it ends.
inline std::size_t beginOfLine(std::string_view text, std::size_t place) {
  std::size_t const feed = text.substr(0, place).rfind('\n');
  return feed == std::string_view::npos ? 0 : feed + 1;
}

// Finds a text in a larger one, with or without regard to the case of ASCII
// letters.
//
// The two bytes of it that are least common in device output are looked for at
// their distance from each other, in a loop that compilers turn into vector
// instructions on any processor; where they stand, the rest is compared. Takes
// time proportional to the text searched, times the length of the text found
// when it is made to resemble it. Read-only after construction.
class TextSearch {
 public:
  // `wanted` has at least one byte.
  TextSearch(std::string const& wanted, bool ignoreCase);

  // The index of the first occurrence that begins at `from` or behind it, or
  // npos.
  std::size_t find(std::string_view text, std::size_t from) const;

 private:
  bool standsAt(char const* place) const;
  std::size_t findCarefully(std::string_view text, std::size_t from) const;

  std::string wanted_;  // in lower case, when case is ignored
  // What is set in a byte before it is compared: the bit that tells the cases
  // of a letter apart, or nothing.
  std::string folds_;
  std::size_t first_;  // indexes of the two bytes that are looked for
  std::size_t second_;
};

// Finds the first of several texts. Used by one thread at a time.
class AnyTextSearch {
 public:
  // Of `wanted`, none is empty. When there is none at all, nothing is found.
  AnyTextSearch(std::vector<std::string> const& wanted, bool ignoreCase);

  bool empty() const { return searches_.empty(); }

  // Begins with another text, which is not owned.
  void reset(std::string_view text);

  // The index of the first occurrence of any of them that begins at `from` or
  // behind it, or npos. `from` must not become less from call to call.
  std::size_t find(std::size_t from);

 private:
  std::string_view text_;
  std::vector<TextSearch> searches_;
  std::vector<std::size_t> next_;  // where each occurs next
};

}  // namespace QorCliMatching

#endif
