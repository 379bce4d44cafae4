#ifndef QOR_CLI_SHARED_SYNTAX_H
#define QOR_CLI_SHARED_SYNTAX_H

#include <Grammar.h>

#include <string>

namespace QorCliText {

// Options and arguments of several commands.

constexpr char kPattern[] = "<pattern>";
constexpr char kLines[] = "<lines>";
constexpr unsigned kDefaultLines = 10;

inline QorCliUtilities::Option ignoreOption() {
  return {"-i", "--ignore", "Ignore the case of letters"};
}

inline QorCliUtilities::Parameter patternArgument() {
  return QorCliUtilities::Parameter::text(kPattern,
                                          "The text used for pattern matching");
}

inline QorCliUtilities::Parameter linesArgument() {
  return QorCliUtilities::Parameter::number(
             kLines,
             "How many lines; " + std::to_string(kDefaultLines) + " by default")
      .optional();
}

}  // namespace QorCliText

#endif
