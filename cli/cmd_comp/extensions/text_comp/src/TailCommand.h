#ifndef QOR_CLI_TAIL_COMMAND_H
#define QOR_CLI_TAIL_COMMAND_H

#include <PipeCommand.h>

#include <deque>
#include <string>

namespace QorCliText {

// A run of "tail": prints the last lines at the end of the text.
class TailCommand : public QorCliUtilities::TextProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  explicit TailCommand(QorCliUtilities::Arguments const& typed);

  void text(std::string_view lines, QorCliUtilities::Printer& printer) override;
  void end(QorCliUtilities::Printer& printer) override;

 private:
  std::size_t count_;  // lines to keep
  std::deque<std::string> last_;
};

}  // namespace QorCliText

#endif
