#include "TestNode.h"

#include <algorithm>
#include <utility>

#include "Error.h"

namespace QorUnit {

TestNode::TestNode(TestNodeSetup setup, Calls& calls)
    : AutoCompleteNode(setup.modes, QorCliUtilities::VALIDATION_NONE,
                       setup.terminal, setup.hidden),
      setup_(std::move(setup)),
      calls_(calls) {}

TestNode::~TestNode() { calls_.push_back("delete " + setup_.keyword); }

std::string TestNode::keyword() const { return setup_.keyword; }

int TestNode::autoComplete(
    QorCliUtilities::CliApiContext&, std::vector<std::string> const&,
    std::string const& lastToken, unsigned& position, bool endsWithSpace,
    bool helpRequest, std::vector<QorCliUtilities::AutoCompleteResult>& results,
    QorCliUtilities::IOutput&) {
  calls_.push_back("complete " + setup_.keyword + ' ' +
                   std::to_string(position) + " '" + lastToken + "'" +
                   (endsWithSpace ? " space" : "") +
                   (helpRequest ? " help" : ""));
  for (std::string const& text : setup_.offers) {
    addPossibility({1, text}, text, "", QOR_CLI_TOKEN_NEXT_WORD, results);
  }
  ++position;
  return setup_.status;
}

bool TestNode::isMatch(QorCliUtilities::CliApiContext&,
                       std::vector<std::string> const& tokens,
                       unsigned& position, QorCliUtilities::IOutput&,
                       bool executing) {
  calls_.push_back("match " + setup_.keyword + ' ' + std::to_string(position) +
                   (executing ? " executing" : " completing"));
  if (position >= tokens.size())
    throw QorCliUtilities::Error("past the last token", 0);
  bool const fits =
      setup_.accepts.empty() || tokens[position] == setup_.accepts;
  unsigned const taken = setup_.multiToken ? 1 : setup_.swallows;
  position = std::min(position + taken, static_cast<unsigned>(tokens.size()));
  if (fits) ++matched_;
  return fits;
}

bool TestNode::isMultiTokenNode() const { return setup_.multiToken; }

bool TestNode::isLastMultiTokenElement(QorCliUtilities::CliApiContext&) const {
  return setup_.elements != 0 && matched_ >= setup_.elements;
}

void TestNode::resetNode(QorCliUtilities::CliApiContext&) {
  calls_.push_back("reset " + setup_.keyword);
  matched_ = 0;
}

bool TestNode::ignoreCase() const { return setup_.ignoreCase; }

bool TestNode::internalSpacesAllowed() const { return setup_.internalSpaces; }

bool TestNode::doNoAddCRCompletion(QorCliUtilities::CliApiContext const&,
                                   std::vector<std::string> const&) const {
  return setup_.noReturn;
}

std::string TestNode::toString() const { return "node " + setup_.keyword; }

}  // namespace QorUnit
