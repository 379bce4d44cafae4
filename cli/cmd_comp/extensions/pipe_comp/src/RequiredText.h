#ifndef QOR_CLI_REQUIRED_TEXT_H
#define QOR_CLI_REQUIRED_TEXT_H

#include <string>
#include <string_view>
#include <vector>

namespace QorCliPipe {

// What can be said of every line that a regular expression matches without
// matching it.
struct RequiredText {
  // The line contains at least one of these; when there is none, nothing can be
  // said. With an expression that ignores case, the case of ASCII letters does
  // not count.
  std::vector<std::string> anyOf;
  // And every line that contains it matches: the expression is a plain text.
  bool sufficient = false;
};

// Reads `pattern`, a valid expression. It understands characters, classes,
// groups and repetitions as they are commonly written, and says nothing of a
// pattern with anything else in it. Takes time proportional to the pattern and
// constant stack. Throws std::bad_alloc only. Callable from any thread; the
// result owns its texts.
RequiredText requiredText(std::string_view pattern);

}  // namespace QorCliPipe

#endif
