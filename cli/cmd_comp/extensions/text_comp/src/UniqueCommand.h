#ifndef QOR_CLI_UNIQUE_COMMAND_H
#define QOR_CLI_UNIQUE_COMMAND_H

#include <PipeCommand.h>

#include <cstdint>
#include <string>

namespace QorCliText {

// A run of "unique": prints each run of equal lines once, optionally with its
// length. A line is printed when the next one differs.
class UniqueCommand : public QorCliUtilities::TextProcessor {
 public:
  static QorCliUtilities::CommandSyntax syntax();

  explicit UniqueCommand(QorCliUtilities::Arguments const& typed);

  void text(std::string_view lines, QorCliUtilities::Printer& printer) override;
  void end(QorCliUtilities::Printer& printer) override;

 private:
  void print(std::string_view line, QorCliUtilities::Printer& printer) const;

  bool count_;
  std::string last_;         // the last line
  std::uint64_t times_ = 0;  // its repetitions so far
};

}  // namespace QorCliText

#endif
