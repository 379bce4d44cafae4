#ifndef QOR_CLI_FILTER_ARGUMENTS_H
#define QOR_CLI_FILTER_ARGUMENTS_H

#include <string>
#include <vector>

#include "Grammar.h"

namespace QorCliPipe {

// What the words of a filter command ask for. A plain value. Nothing here is
// kept between calls; different objects may be used by different threads.
struct FilterArguments {
  bool ignoreCase = false;
  bool invert = false;
  int after = 0;   // lines of trailing context, from 0 (none) to 2147483647
  int before = 0;  // lines of leading context, likewise
  std::string pattern;  // without quotes; may be empty although it was given
};

// The options and the pattern. Valid until the library is unloaded.
QorCliUtilities::Grammar const& filterGrammar();

// Reads the words behind tokens[0] into `arguments`, which must be as
// constructed. Options may be written in any letter case. Returns an empty
// string, or the text of the error (with a line feed) when the words make no
// sense; `arguments` is then as it was.
std::string parseFilterArguments(std::vector<std::string> const& tokens,
                                 FilterArguments& arguments);

}  // namespace QorCliPipe

#endif
