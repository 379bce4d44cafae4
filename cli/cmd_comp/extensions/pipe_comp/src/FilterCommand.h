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
// Its constructor adds the command to PipeCmdTree. That happens once, so a tree
// that is emptied later stays empty. The command lives until the library is
// unloaded. One call at a time.
class FilterCommand : public Qor::Singleton<FilterCommand>,
                      public QorCliUtilities::AbstractCommand {
 public:
  FilterCommand();

  // Replaces the text in `output` by its kept lines and the separators between
  // groups, one string each. Text after the last line feed is dropped. The
  // state of the context rules for the next chunk is stored in
  // PipeCmd::FilterMap under the context's action id.
  //
  // Returns 0. On failure, returns -1 and clears the state of all actions:
  // invalid words leave one error text in `output`; a malformed pattern, or one
  // that fails on a line (LineFilter), leaves the lines kept so far, and the
  // reason is logged.
  int execute(QorCliUtilities::CliApiContext& context,
              std::vector<std::string> const& tokens,
              QorCliUtilities::IOutput& output) override;

  // Whether `text` consists of decimal digits only. An empty text does, and has
  // the value 0.
  static bool isNumber(std::string const& text);

 private:
  void filterLines(std::string_view text, FilterArguments const& arguments,
                   unsigned actionId, std::vector<std::string>& kept);

  // The filter of the last call, or null: the chunks of a text share a pattern,
  // which is compiled once.
  std::unique_ptr<QorCliMatching::LineFilter> lastFilter_;
};

}  // namespace QorCliPipe

#endif
