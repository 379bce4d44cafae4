#include "BeginCommand.h"

#include "SharedSyntax.h"

namespace QorCliText {
namespace {

using QorCliMatching::LineSink;
using QorCliUtilities::Arguments;

struct Found {
  char const* line;
};

// Throws the position of the first matching line, so that no later line is
// matched, which might fail or take time.
class FirstMatch : public LineSink {
 public:
  void selected(std::string_view lines) override { throw Found{lines.data()}; }
  void unselected(std::string_view) override {}
};

}  // namespace

QorCliUtilities::CommandSyntax BeginCommand::syntax() {
  return {"begin",
          "Print everything from the first matching line on",
          {ignoreOption()},
          {patternArgument()}};
}

BeginCommand::BeginCommand(Arguments const& typed) {
  filter_.emplace(typed.text(kPattern), typed.has("-i"));
}

void BeginCommand::text(std::string_view lines,
                        QorCliUtilities::Printer& printer) {
  try {
    FirstMatch firstMatch;
    if (filter_) filter_->filter(lines, false, firstMatch);
  } catch (Found const& found) {
    filter_.reset();
    lines.remove_prefix(static_cast<std::size_t>(found.line - lines.data()));
  }
  if (!filter_) printer.lines(lines);
}

}  // namespace QorCliText
