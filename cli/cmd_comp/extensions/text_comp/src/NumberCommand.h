#ifndef QOR_CLI_NUMBER_COMMAND_H
#define QOR_CLI_NUMBER_COMMAND_H

#include <PipeCommand.h>

#include <cstdint>

namespace QorCliText {

// A run of "number": prints each line with its number, counted from 1.
class NumberCommand : public QorCliUtilities::LineProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  explicit NumberCommand(QorCliUtilities::Arguments const& typed);

  void line(std::string_view text, QorCliUtilities::Printer& printer) override;

 private:
  std::uint64_t number_ = 0;
};

}  // namespace QorCliText

#endif
