#include "CountCommand.h"

#include <ACPipeKeyword.h>
#include <Poco/RegularExpression.h>
#include <Tokenizer.h>

#include <sstream>

using namespace QorCliUtilities;
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

// The tree lets through: count, count PATTERN, count -i PATTERN.
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
