#ifndef QOR_CLI_BEGIN_COMMAND_H
#define QOR_CLI_BEGIN_COMMAND_H

#include <LineFilter.h>
#include <PipeCommand.h>

#include <optional>

namespace QorCliText {

// A run of "begin": prints the first line that matches a pattern and all lines
// after it, without matching these.
class BeginCommand : public QorCliUtilities::TextProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  // Throws QorCliMatching::PatternError when the pattern is malformed.
  explicit BeginCommand(QorCliUtilities::Arguments const& typed);

  // Throws QorCliMatching::PatternError when matching a line fails.
  void text(std::string_view lines, QorCliUtilities::Printer& printer) override;

 private:
  // Empty once a line has matched.
  std::optional<QorCliMatching::LineFilter> filter_;
};

}  // namespace QorCliText

#endif
