#include "UniqueCommand.h"

#include <cinttypes>
#include <cstdio>

namespace QorCliText {
namespace {

using QorCliUtilities::Printer;

// The format of uniq -c.
std::string columnOf(std::uint64_t times) {
  char column[32];
  std::snprintf(column, sizeof column, "%7" PRIu64 " ", times);
  return column;
}

}  // namespace

QorCliUtilities::CommandSyntax UniqueCommand::syntax() {
  return {"unique",
          "Leave out lines that repeat the one before",
          {{"-c", "--count", "Print how often each line stood in a row"}}};
}

UniqueCommand::UniqueCommand(QorCliUtilities::Arguments const& typed)
    : count_(typed.has("-c")) {}

// Only the last line is copied. A swap, to free the memory of a long one.
void UniqueCommand::text(std::string_view lines, Printer& printer) {
  std::string_view last = last_;
  while (!lines.empty()) {
    std::string_view const line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(line.size() + 1);
    if (times_ == 0 || line != last) {
      print(last, printer);
      last = line;
      times_ = 0;
    }
    ++times_;
  }
  if (last.data() != last_.data()) std::string(last).swap(last_);
}

void UniqueCommand::end(Printer& printer) { print(last_, printer); }

void UniqueCommand::print(std::string_view line, Printer& printer) const {
  if (times_ != 0) printer.line(count_ ? columnOf(times_) : "", line);
}

}  // namespace QorCliText
