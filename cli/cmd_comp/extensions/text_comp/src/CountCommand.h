#ifndef QOR_CLI_COUNT_COMMAND_H
#define QOR_CLI_COUNT_COMMAND_H

#include <LineFilter.h>
#include <PipeCommand.h>

#include <cstdint>
#include <optional>

namespace QorCliText {

// A run of "count": prints how many lines there were, or how many of them match
// a pattern.
class CountCommand : public QorCliUtilities::TextProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  // Throws QorCliMatching::PatternError when the pattern is malformed.
  explicit CountCommand(QorCliUtilities::Arguments const& typed);

  // Throws QorCliMatching::PatternError when a line has no answer in time.
  void text(std::string_view lines, QorCliUtilities::Printer& printer) override;
  void end(QorCliUtilities::Printer& printer) override;

 private:
  std::optional<QorCliMatching::LineFilter> filter_;  // without: every line
  std::uint64_t count_ = 0;
};

}  // namespace QorCliText

#endif
