#ifndef QOR_CLI_PIPE_TEXT_H
#define QOR_CLI_PIPE_TEXT_H

#include <string>
#include <vector>

namespace QorCliUtilities {

// Empties `strings`, those of a sink, and returns their texts as one: the input
// of a pipe command.
std::string takeText(std::vector<std::string>& strings);

// What a command that fails prints: "ERROR: " and `text`, cut to 1999 bytes in
// all. `text` brings its own line feed.
std::string errorLine(std::string const& text);

// Why the exception that is being handled was thrown: what() of an Error and of
// a standard exception, displayText() of another of Poco's, whose what() is but
// its class. To be called in a catch clause; may throw std::bad_alloc.
std::string reasonOfException();

}  // namespace QorCliUtilities

#endif
