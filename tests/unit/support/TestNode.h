#ifndef QOR_UNIT_TEST_NODE_H
#define QOR_UNIT_TEST_NODE_H

#include <set>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"

namespace QorUnit {

using Calls = std::vector<std::string>;

// What a TestNode is and does.
struct TestNodeSetup {
  std::string keyword;
  std::set<unsigned> modes{QOR_CLI_MODE_ANY};
  bool terminal = false;
  bool hidden = false;
  std::string accepts = {};  // the token that matches; empty: any
  unsigned swallows = 1;     // tokens that a match takes, of those there are
  // Multi-token node: one token a match, and after so many, the last element
  // was matched (0: never).
  bool multiToken = false;
  unsigned elements = 0;
  bool ignoreCase = false;
  bool internalSpaces = false;
  bool noReturn = false;                 // refuses "<cr>"
  std::vector<std::string> offers = {};  // the candidates of autoComplete
  int status = 0;                        // the result of autoComplete
};

// A node that does as it is set up and writes down how it was called:
//   "match <keyword> <position> executing|completing"
//   "complete <keyword> <position> '<lastToken>'[ space][ help]"
//   "reset <keyword>"
//   "delete <keyword>"
class TestNode : public QorCliUtilities::AutoCompleteNode {
 public:
  // `calls` must outlive the node.
  TestNode(TestNodeSetup setup, Calls& calls);
  ~TestNode() override;

  std::string keyword() const override;
  int autoComplete(QorCliUtilities::CliApiContext& ctx,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& position,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<QorCliUtilities::AutoCompleteResult>& results,
                   QorCliUtilities::IOutput& output) override;
  bool isMatch(QorCliUtilities::CliApiContext& ctx,
               std::vector<std::string> const& tokens, unsigned& position,
               QorCliUtilities::IOutput& output, bool executing) override;
  bool isMultiTokenNode() const override;
  bool isLastMultiTokenElement(
      QorCliUtilities::CliApiContext& ctx) const override;
  void resetNode(QorCliUtilities::CliApiContext& ctx) override;
  bool ignoreCase() const override;
  bool internalSpacesAllowed() const override;
  bool doNoAddCRCompletion(
      QorCliUtilities::CliApiContext const& ctx,
      std::vector<std::string> const& tokens) const override;
  std::string toString() const override;

 private:
  TestNodeSetup setup_;
  Calls& calls_;
  unsigned matched_ = 0;
};

}  // namespace QorUnit

#endif
