#ifndef QOR_CLI_I_OUTPUT_H
#define QOR_CLI_I_OUTPUT_H

#include <string>
#include <vector>

namespace QorCliUtilities {

// A sink of output lines: what a command prints.
//
// Strings are stored as given; no line break is added or removed, and one
// string may hold several lines. Used by one thread at a time.
class IOutput {
 public:
  virtual ~IOutput() = default;

  // Appends a copy of `line`.
  virtual void push_back(std::string const& line) = 0;

  // Appends copies of all of `lines`, in order.
  virtual void push_back(std::vector<std::string> const& lines) = 0;

  // The strings appended so far, oldest first; the caller may modify them.
  // Owned by the sink and valid for its lifetime. A sink without storage does
  // not override this; the call then throws Error ("Output sink has no
  // storage", code 0).
  virtual std::vector<std::string>& getOutput();
};

}  // namespace QorCliUtilities

#endif
