#ifndef QOR_TEST_FILTER_ORACLE_H
#define QOR_TEST_FILTER_ORACLE_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace qor_test {

// The line between two groups of kept lines.
extern char const kSeparator[];

// One line of the filter's input.
struct OracleLine {
  std::string text;  // with its line feed
  bool wanted;       // the line itself is selected, context aside
};

// How many lines of context are kept behind and in front of a wanted line; 0 is
// none.
struct OracleContext {
  std::size_t after;
  std::size_t before;
};

// What the filter prints for `lines`, one string a line: a line is kept when it
// is wanted or stands among the context of a wanted line, and a separator
// stands wherever lines are left out between two kept ones. Without any context
// there is no separator. The text may be given to the filter in any pieces.
//
// Takes a time quadratic in the number of lines.
std::vector<std::string> keptLines(std::vector<OracleLine> const& lines,
                                   OracleContext context);

// The lines of `text`, each with its line feed, and whether `isWanted` says so
// of the line without it. Text behind the last line feed is not a line.
std::vector<OracleLine> oracleLines(
    std::string const& text,
    std::function<bool(std::string const&)> const& isWanted);

}  // namespace qor_test

#endif
