#include "TailCommand.h"

#include "SharedSyntax.h"

namespace QorCliText {
namespace {

using QorCliUtilities::Printer;

// The last lines of `lines`, at most `most`. The others are not looked at.
std::string_view lastLines(std::string_view lines, std::size_t most) {
  std::size_t begin = lines.size();
  for (; most > 0 && begin > 0; --most) {
    begin = begin == 1 ? 0 : lines.rfind('\n', begin - 2) + 1;  // npos + 1: 0
  }
  return lines.substr(begin);
}

}  // namespace

QorCliUtilities::CommandSyntax TailCommand::syntax() {
  return {"tail", "Print the last lines", {}, {linesArgument()}};
}

TailCommand::TailCommand(QorCliUtilities::Arguments const& typed)
    : most_(typed.number(kLines, kDefaultLines)) {}

// A line makes room before the next one is copied.
void TailCommand::text(std::string_view lines, Printer&) {
  std::string_view rest = lastLines(lines, most_);
  while (!rest.empty()) {
    std::size_t const size = rest.find('\n') + 1;
    if (last_.size() == most_) last_.pop_front();
    last_.emplace_back(rest.substr(0, size));
    rest.remove_prefix(size);
  }
}

void TailCommand::end(Printer& printer) {
  for (; !last_.empty(); last_.pop_front()) printer.lines(last_.front());
}

}  // namespace QorCliText
