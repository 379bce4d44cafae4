#ifndef QOR_CLI_ERROR_H
#define QOR_CLI_ERROR_H

#include <Poco/Exception.h>

#include <string>

namespace QorCliUtilities {

// The exception of the command tree framework: an operation rejected a command
// line, a path or a call. Thrown by value, caught by reference.
//
// message() and code() are those of the base class. what() and name() return
// the full text: the message and, if the code is not 0, ", rc = <code>, error:"
// and the framework's text for that code. Copyable; a copy owns its text.
// Constructing or copying one may throw std::bad_alloc. Different objects may
// be used by different threads.
class Error : public Poco::Exception {
 public:
  // `code` is a framework status code (QorReturnT), 0 for none.
  Error(std::string const& message, int code);

  // The full text instead of a class name, so that printing name() tells what
  // happened. Owned by the exception and valid for its lifetime.
  char const* name() const noexcept override;

  // The result of name(), even if a subclass overrides that.
  char const* what() const noexcept override;

  // Rebuilds the full text from the message and the code. The suffix for the
  // code is truncated to 1999 characters, the message never.
  void setMsgString();

 private:
  std::string msgString;
};

}  // namespace QorCliUtilities

#endif
