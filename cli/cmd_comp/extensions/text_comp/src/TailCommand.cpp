#include "TailCommand.h"

#include "SharedSyntax.h"

namespace QorCliText {
namespace {

using QorCliUtilities::Printer;

// The last `count` lines of `lines`, or all of them if there are fewer.
std::string_view lastLines(std::string_view lines, std::size_t count) {
  std::size_t begin = lines.size();
  for (; count > 0 && begin > 0; --count) {
    begin = begin == 1 ? 0 : lines.rfind('\n', begin - 2) + 1;  // npos + 1: 0
  }
  return lines.substr(begin);
}

}  // namespace

QorCliUtilities::CommandSyntax TailCommand::syntax() {
  return {"tail", "Print the last lines", {}, {linesArgument()}};
}

TailCommand::TailCommand(QorCliUtilities::Arguments const& typed)
    : count_(typed.number(kLines, kDefaultLines)) {}

// Frees a line before copying the next one.
void TailCommand::text(std::string_view lines, Printer&) {
  std::string_view rest = lastLines(lines, count_);
  while (!rest.empty()) {
    std::size_t const size = rest.find('\n') + 1;
    if (last_.size() == count_) last_.pop_front();
    last_.emplace_back(rest.substr(0, size));
    rest.remove_prefix(size);
  }
}

void TailCommand::end(Printer& printer) {
  for (; !last_.empty(); last_.pop_front()) printer.lines(last_.front());
}

}  // namespace QorCliText
