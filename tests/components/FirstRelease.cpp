// A plug-in written with the headers of the first release: it must still
// compile without warnings, and behave the same.

#include <ACPipeKeyword.h>
#include <AbstractCommand.h>
#include <AutoCompleteTree.h>
#include <FrameworkPortal.h>
#include <LibraryEntry.h>
#include <LinesOutput.h>
#include <PipeAction.h>
#include <PipeComponentRecord.h>
#include <Poco/RegularExpression.h>
#include <QorSingleton.h>
#include <Tokenizer.h>

#include <map>
#include <set>
#include <sstream>
#include <type_traits>

using namespace QorCliUtilities;

// The pipe command "count": the number of lines, or of those that match a
// pattern.
class CountCommand : public QorCliUtilities::AbstractCommand {
 public:
  CountCommand() : AbstractCommand("Count") {}

  // Adds the forms of the command to `tree`:
  //
  //   count
  //   count [-i] PATTERN
  void addTo(QorCliUtilities::AutoCompleteTree& tree);

  // Counts the lines of a chunk of the input. Prints nothing, or an error text
  // if the pattern is malformed or exceeds a limit on a line.
  int execute(QorCliUtilities::CliApiContext& context,
              std::vector<std::string> const& tokens,
              QorCliUtilities::IOutput& output) override;

  // Prints the count of an action whose input is complete.
  void complete(unsigned actionId, QorCliUtilities::IOutput& output);

 private:
  std::map<unsigned, std::size_t> counts_;  // by action id
};

using Poco::RegularExpression;
using Words = std::vector<std::string>;

namespace {

std::set<unsigned> const kModes{QOR_CLI_MODE_ANY};

AutoCompleteNode* keyword() {
  return new ACPipeKeyword("count", "Count lines", kModes, true);
}

AutoCompleteNode* ignore() {
  return new ACKeyword("-i|--ignore", "Ignore the case of letters", kModes,
                       false, false, QOR_CLI_TOKEN_OPTION, true, true, false,
                       false, false);
}

// Any word that does not look like an option.
class Pattern : public AutoCompleteNode {
 public:
  Pattern() : AutoCompleteNode(kModes, VALIDATION_KEYWORD, true, false) {}

  std::string keyword() const override { return "<pattern>"; }

  bool isMatch(CliApiContext&, Words const& words, unsigned& position, IOutput&,
               bool) override {
    return extractToken(words, position).rfind('-', 0) != 0;
  }

  int autoComplete(CliApiContext& context, Words const& words,
                   std::string const&, unsigned& position, bool, bool,
                   std::vector<AutoCompleteResult>& results,
                   IOutput& output) override {
    if (!isMatch(context, words, position, output, false)) return 0;
    addPossibility({QOR_CLI_SORT_LAST, keyword()}, keyword(),
                   "Count the lines that match", QOR_CLI_TOKEN_OPTION, results);
    return 0;
  }
};

// The tree accepts: count, count PATTERN, count -i PATTERN.
std::size_t countLines(std::string const& text, Words const& words) {
  // Without a pattern, every line matches. The limits are for hostile patterns.
  std::string pattern = words.size() > 1 ? words.back() : "";
  RegularExpression const expression(
      "(*LIMIT_MATCH=1000000)(*LIMIT_RECURSION=1000)" + trimQuotes(pattern),
      words.size() > 2 ? RegularExpression::RE_CASELESS : 0);
  std::istringstream lines(text);
  std::size_t count = 0;
  for (std::string line; std::getline(lines, line);) {
    RegularExpression::Match match;
    expression.match(line, 0, match);
    if (match.offset != std::string::npos) ++count;
  }
  return count;
}

}  // namespace

void CountCommand::addTo(AutoCompleteTree& tree) {
  auto const end = [this] { return new AutoCompleteNode(this); };
  tree.addPathToTree({keyword(), end()});
  tree.addPathToTree({keyword(), new Pattern, end()});
  tree.addPathToTree({keyword(), ignore(), new Pattern, end()});
}

int CountCommand::execute(CliApiContext& context, Words const& words,
                          IOutput& output) {
  std::string const input = output.getOutput().front();
  output.getOutput().clear();
  unsigned const action = context.getActionId();
  try {
    counts_[action] += countLines(input, words);
    return 0;
  } catch (Poco::Exception const&) {
    counts_.erase(action);
    output.push_back("ERROR: Malformed or too costly a pattern\n");
    return -1;
  }
}

void CountCommand::complete(unsigned actionId, IOutput& output) {
  auto const count = counts_.find(actionId);
  if (count == counts_.end()) return;
  output.push_back(std::to_string(count->second) + '\n');
  counts_.erase(count);
}

namespace {

// The component: what the engine calls.
class CountComp : public Qor::Singleton<CountComp> {
 public:
  CountComp() { command_.addTo(tree_); }

  QorMgmtSpiComponent_1* record() { return record_.get(); }

  QorReturnT start(QorStateChangeReason) { return 0; }
  QorReturnT stop(QorStateChangeReason) { return 0; }
  static char const* moduleName() { return "CountCommands"; }

  QorReturnT useModule(CliApiContext& context, QorCliActionEnum_2T action,
                       unsigned actionId, unsigned* commandMatchCount,
                       char const* commandLine, char const* input) {
    return answerPipeAction(
        tree_, context,
        {action, actionId, commandMatchCount, commandLine, input});
  }

  QorReturnT inputComplete(CliApiContext& context, unsigned actionId) {
    if (!canAnswer(context)) return -1;
    LinesOutput output;
    command_.complete(actionId, output);
    emitOutput(context, actionId, output.getOutput(), 0);
    return 0;
  }

 private:
  CountCommand command_;
  AutoCompleteTree tree_;
  PipeComponentRecord<CountComp> record_{"CountComp"};
};

FrameworkPortal portal;

// The operations, which a plug-in may name by type.
static_assert(
    std::is_constructible_v<
        ACKeyword, std::string const&, std::string const&, std::set<unsigned>,
        bool, bool, QorCliCompletionToken_1T, bool, bool, bool, bool, bool>);
static_assert(
    std::is_constructible_v<ACPipeKeyword, std::string const&,
                            std::string const&, std::set<unsigned>, bool>);
static_assert(std::is_constructible_v<ACPipeKeyword, std::string const&,
                                      std::string const&, std::set<unsigned>,
                                      bool, bool, QorCliCompletionToken_1T,
                                      bool, bool, bool, bool, bool>);
[[maybe_unused]] unsigned (AutoCompleteTree::*const kAddPath)(
    std::vector<AutoCompleteNode*> const&) = &AutoCompleteTree::addPathToTree;
[[maybe_unused]] int (*const kAnswer)(AutoCompleteTree&, CliApiContext&,
                                      PipeAction const&, char const*,
                                      char const*, unsigned) = answerPipeAction;
[[maybe_unused]] int (*const kPerform)(AutoCompleteTree&, CliApiContext&,
                                       PipeAction const&,
                                       LinesOutput&) = performPipeAction;
[[maybe_unused]] void (*const kEmit)(CliApiContext&, unsigned,
                                     std::vector<std::string> const&,
                                     int) = emitOutput;

}  // namespace

QorReturnT qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor,
                      char const*) {
  QorReturnT const status = portal.fetch(accessor);
  if (status != 0) return status;
  return portal.registerComponent(CountComp::instance().record());
}

void qorLCMterminate() {
  portal.unregisterComponent(CountComp::instance().record());
}
