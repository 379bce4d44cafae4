#ifndef QOR_CLI_FILTER_COMMAND_H
#define QOR_CLI_FILTER_COMMAND_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "AbstractCommand.h"
#include "FilterArguments.h"
#include "LineFilter.h"
#include "QorSingleton.h"

namespace QorCliPipe {

// The pipe command "filter": keeps the lines of a text that match a regular
// expression, with lines of context.
//
// Creating the command adds its path to PipeCmdTree. That happens once, so a
// tree that is emptied afterwards stays empty. The tree refers to the command,
// which lives until the library is unloaded. One call at a time.
class FilterCommand : public Qor::Singleton<FilterCommand>,
                      public QorCliUtilities::AbstractCommand {
 public:
  FilterCommand();

  // Replaces the text in `output` by what is kept of it: one string for each
  // kept line and for each separator between groups. Text behind the last line
  // feed is not a line and is dropped. Whatever the context rules carry on to
  // the next chunk of the text stays in PipeCmd::FilterMap under the context's
  // action id.
  //
  // Returns 0. On failure returns -1 and forgets the state of all actions:
  // invalid words leave one error text in `output`; an expression that is
  // malformed, or has no answer for a line in time (LineFilter), leaves what
  // was kept before that line, and the reason is logged.
  int execute(QorCliUtilities::CliApiContext& context,
              std::vector<std::string> const& tokens,
              QorCliUtilities::IOutput& output) override;

  // Whether `text` is a number: decimal digits only. An empty text is one, and
  // reads as 0.
  static bool isNumber(std::string const& text);

 private:
  void filterLines(std::string_view text, FilterArguments const& arguments,
                   unsigned actionId, std::vector<std::string>& kept);

  // The filter of the last call: the chunks of one text come with one pattern,
  // which is compiled once. None, before the first line of all.
  std::unique_ptr<QorCliMatching::LineFilter> lastFilter_;
};

}  // namespace QorCliPipe

#endif
