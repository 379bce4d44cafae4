#pragma once

#include <AbstractCommand.h>
#include <AutoCompleteTree.h>

#include <map>

// The pipe command "count": how many lines there were, or with a pattern, how
// many of them match it.
class CountCommand : public QorCliUtilities::AbstractCommand {
 public:
  CountCommand() : AbstractCommand("Count") {}

  // Adds the forms of the command to `tree`:
  //
  //   count
  //   count [-i] PATTERN
  void addTo(QorCliUtilities::AutoCompleteTree& tree);

  // Counts the lines of one piece of the input. Prints nothing, or one error
  // text when the pattern is malformed or matching gives up on a line.
  int execute(QorCliUtilities::CliApiContext& context,
              std::vector<std::string> const& tokens,
              QorCliUtilities::IOutput& output) override;

  // Prints the count of an action whose input is complete.
  void complete(unsigned actionId, QorCliUtilities::IOutput& output);

 private:
  std::map<unsigned, std::size_t> counts_;  // by action id
};
