#ifndef QOR_TEST_FILTER_ORACLE_H
#define QOR_TEST_FILTER_ORACLE_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace qor_test {

// The separator between groups of kept lines.
extern char const kSeparator[];

// One line of the filter's input.
struct OracleLine {
  std::string text;  // with its line feed
  bool selected;     // itself, not as context
};

// The number of context lines to keep after and before a selected line.
struct OracleContext {
  std::size_t after;
  std::size_t before;
};

// The filter's output for `lines`, one string per line: selected lines and
// their context, with a separator wherever lines between two kept ones are
// skipped. Without any context there are no separators. The filter must print
// the same for any division of the text into chunks.
//
// Takes time quadratic in the number of lines.
std::vector<std::string> keptLines(std::vector<OracleLine> const& lines,
                                   OracleContext context);

// The lines of `text`, each with its line feed, selected by `isSelected`, which
// gets the line without it. Ignores text after the last line feed.
std::vector<OracleLine> oracleLines(
    std::string const& text,
    std::function<bool(std::string const&)> const& isSelected);

}  // namespace qor_test

#endif
