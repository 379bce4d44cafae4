#include "HeadCommand.h"

#include "SharedSyntax.h"

namespace QorCliText {

QorCliUtilities::CommandSyntax HeadCommand::syntax() {
  return {"head", "Print the first lines", {}, {linesArgument()}};
}

HeadCommand::HeadCommand(QorCliUtilities::Arguments const& typed)
    : left_(typed.number(kLines, kDefaultLines)) {}

void HeadCommand::text(std::string_view lines,
                       QorCliUtilities::Printer& printer) {
  std::size_t end = 0;
  for (; left_ > 0 && end < lines.size(); --left_) {
    end = lines.find('\n', end) + 1;
  }
  printer.lines(lines.substr(0, end));
}

}  // namespace QorCliText
