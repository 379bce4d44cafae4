#ifndef QOR_CLI_FILTER_ARGUMENTS_H
#define QOR_CLI_FILTER_ARGUMENTS_H

#include <string>
#include <vector>

#include "Grammar.h"

namespace QorCliPipe {

// The arguments of a filter command. A plain value; different objects may be
// used by different threads.
struct FilterArguments {
  bool ignoreCase = false;
  bool invert = false;
  int after = 0;   // lines of trailing context, from 0 (none) to 2147483647
  int before = 0;  // lines of leading context, from 0 to 2147483647
  std::string pattern;  // without quotes; may be empty
};

// The options and the pattern. Valid until the library is unloaded. Any thread.
QorCliUtilities::Grammar const& filterGrammar();

// Parses the words after tokens[0] into `arguments`, which must be
// default-constructed. Options may be typed in any letter case. Returns an
// empty string or, for invalid input, the error text with a line feed;
// `arguments` is then unchanged.
std::string parseFilterArguments(std::vector<std::string> const& tokens,
                                 FilterArguments& arguments);

}  // namespace QorCliPipe

#endif
