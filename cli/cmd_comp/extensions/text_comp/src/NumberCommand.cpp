#include "NumberCommand.h"

#include <cinttypes>
#include <cstdio>

namespace QorCliText {

QorCliUtilities::CommandSyntax NumberCommand::syntax() {
  return {"number", "Print each line with its number in front"};
}

NumberCommand::NumberCommand(QorCliUtilities::Arguments const&) {}

// The format of cat -n.
void NumberCommand::line(std::string_view text,
                         QorCliUtilities::Printer& printer) {
  char column[32];
  std::snprintf(column, sizeof column, "%6" PRIu64 "\t", ++number_);
  printer.line(column, text);
}

}  // namespace QorCliText
