#ifndef QOR_CLI_HEAD_COMMAND_H
#define QOR_CLI_HEAD_COMMAND_H

#include <PipeCommand.h>

namespace QorCliText {

// A run of "head": prints the first lines.
class HeadCommand : public QorCliUtilities::TextProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  explicit HeadCommand(QorCliUtilities::Arguments const& typed);

  void text(std::string_view lines, QorCliUtilities::Printer& printer) override;

 private:
  unsigned left_;  // lines still to be printed
};

}  // namespace QorCliText

#endif
