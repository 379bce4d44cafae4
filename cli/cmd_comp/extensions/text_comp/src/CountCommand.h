#ifndef QOR_CLI_COUNT_COMMAND_H
#define QOR_CLI_COUNT_COMMAND_H

#include <LineFilter.h>
#include <PipeCommand.h>

#include <cstdint>
#include <optional>

namespace QorCliText {

// A run of "count": prints the number of lines, or of those that match a
// pattern.
class CountCommand : public QorCliUtilities::TextProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  // Throws QorCliMatching::PatternError when the pattern is malformed.
  explicit CountCommand(QorCliUtilities::Arguments const& typed);

  // Throws QorCliMatching::PatternError when matching a line fails.
  void text(std::string_view lines, QorCliUtilities::Printer& printer) override;
  void end(QorCliUtilities::Printer& printer) override;

 private:
  std::optional<QorCliMatching::LineFilter> filter_;  // empty: count all
  std::uint64_t count_ = 0;
};

}  // namespace QorCliText

#endif
