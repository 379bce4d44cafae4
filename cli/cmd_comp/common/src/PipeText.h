#ifndef QOR_CLI_PIPE_TEXT_H
#define QOR_CLI_PIPE_TEXT_H

#include <string>
#include <vector>

namespace QorCliUtilities {

// Empties `strings`, those of a sink, and returns them as one text: the input
// of a pipe command. Any thread.
std::string takeText(std::vector<std::string>& strings);

// The output of a failed command: "ERROR: " and `text`, truncated to 1999 bytes
// in total. `text` includes its line feed. Any thread.
std::string errorLine(std::string const& text);

// The reason of the current exception: what() of Error and of standard
// exceptions, displayText() of Poco's, whose what() is only the class name.
// Called within a catch clause; may throw std::bad_alloc. Any thread.
std::string reasonOfException();

}  // namespace QorCliUtilities

#endif
