#ifndef QOR_CLI_ERROR_H
#define QOR_CLI_ERROR_H

#include <Poco/Exception.h>

#include <string>

namespace QorCliUtilities {

// The one exception of the command tree framework: an operation rejected a
// command line, a path or a call. Thrown by value, caught by reference.
//
// message() and code() are the base's. what() and name() give the full text:
// the message and, when the code is not 0, ", rc = <code>, error:" and the
// framework's text for that code. Copyable; a copy has its own text. Making or
// copying one may throw std::bad_alloc. Different objects may be used by
// different threads.
class Error : public Poco::Exception {
 public:
  // `code` is a framework status code (QorReturnT), 0 for none.
  Error(std::string const& message, int code);

  // The full text, not a class name, so that a caller who prints name() prints
  // what happened. Owned by the exception, valid as long as it.
  char const* name() const noexcept override;

  // The same text as name(), also in a subclass that overrides name().
  char const* what() const noexcept override;

  // Composes the full text anew from the message and the code. The suffix for
  // the code is cut to 1999 characters, the message never.
  void setMsgString();

 private:
  std::string msgString;
};

}  // namespace QorCliUtilities

#endif
