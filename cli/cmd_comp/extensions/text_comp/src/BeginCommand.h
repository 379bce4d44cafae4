#ifndef QOR_CLI_BEGIN_COMMAND_H
#define QOR_CLI_BEGIN_COMMAND_H

#include <LineFilter.h>
#include <PipeCommand.h>

#include <optional>

namespace QorCliText {

// A run of "begin": prints the first line that matches a pattern and all lines
// behind it. Those are not matched any more.
class BeginCommand : public QorCliUtilities::TextProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  // Throws QorCliMatching::PatternError when the pattern is malformed.
  explicit BeginCommand(QorCliUtilities::Arguments const& typed);

  // Throws QorCliMatching::PatternError when a line has no answer in time.
  void text(std::string_view lines, QorCliUtilities::Printer& printer) override;

 private:
  // Until a line matches.
  std::optional<QorCliMatching::LineFilter> filter_;
};

}  // namespace QorCliText

#endif
