#include "AutoCompleteTree.h"
#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

// The only multi-token node that may end before its last element: it matches
// any number of tokens, so it may end with the line.
constexpr char kOpenEndedKeyword[] = "MultiParms";

// The execution of one line.
struct Execution {
  AutoCompleteTree& tree;
  CliApiContext& context;
  std::vector<std::string> const& tokens;
  unsigned* commandMatchCount;
  IOutput& output;

  bool matches(AutoCompleteNode& node, unsigned& position) const {
    return node.isMatch(context, tokens, position, output, true);
  }

  int search(AutoCompleteNode& node, unsigned position) const {
    return tree.executeSearch(&node, context, tokens, position,
                              commandMatchCount, output);
  }

  int validate(AutoCompleteNode& node, unsigned position) const {
    return tree.executeValidation(&node, context, tokens, position,
                                  commandMatchCount, output);
  }

  // Matches tokens from `position` on with a multi-token node until it reports
  // its last element or the line ends. False if the node rejects a token or the
  // line ends too early.
  bool matchesMultiToken(AutoCompleteNode& node, unsigned position) const {
    while (position < tokens.size()) {
      if (!matches(node, position)) return false;
      if (node.isLastMultiTokenElement(context)) break;
    }
    return node.isLastMultiTokenElement(context) ||
           node.keyword() == kOpenEndedKeyword;
  }

  int tryMultiTokenNode(AutoCompleteNode& node, unsigned position) const {
    QOR_CLI_TRACE("We found multi token node.");
    if (!matchesMultiToken(node, position)) return 0;
    node.resetNode(context);
    return validate(node, position);
  }

  // If a node consumed the rest of the line and no command ends there, its
  // children are searched from the last token, so that a keyword after a greedy
  // node is still found.
  int tryOrdinaryNode(AutoCompleteNode& node, unsigned position) const {
    if (!matches(node, position)) return 0;
    QOR_CLI_TRACE("We found exact match node '%s'", node.toString().c_str());
    if (position == tokens.size()) {
      QOR_CLI_TRACE("We found exact match node position = %u", position);
      --position;
      unsigned const before = *commandMatchCount;
      int const result = validate(node, position);
      if (*commandMatchCount > before) return result;
    }
    return search(node, position);
  }

  int tryNode(AutoCompleteNode& node, unsigned position) const {
    if (position + std::size_t{1} == tokens.size()) {
      QOR_CLI_TRACE("We are at last token.");
      return validate(node, position);
    }
    return node.isMultiTokenNode() ? tryMultiTokenNode(node, position)
                                   : tryOrdinaryNode(node, position);
  }
};

}  // namespace

int AutoCompleteTree::executeCommand(CliApiContext& context, std::string line,
                                     unsigned* commandMatchCount,
                                     IOutput& output) {
  OperationTrace const trace;
  std::vector<std::string> tokens;
  if (!tokenize(line, tokens, output)) return trace.exitWith(-1);
  return trace.exitWith(execute(context, tokens, commandMatchCount, output));
}

int AutoCompleteTree::execute(CliApiContext& context,
                              std::vector<std::string> const& tokens,
                              unsigned* commandMatchCount, IOutput& output) {
  OperationTrace const trace;
  if (root_ == nullptr) return trace.exitWith(0);
  return trace.exitWith(
      executeSearch(root_, context, tokens, 0, commandMatchCount, output));
}

// Takes the first child, in stored order, that leads to a command. Only the
// match counter tells whether one did, since a command may return anything.
//
// Recurses as deep as the tree, whatever the line.
int AutoCompleteTree::executeSearch(AutoCompleteNode* node,
                                    CliApiContext& context,
                                    std::vector<std::string> const& tokens,
                                    unsigned position,
                                    unsigned* commandMatchCount,
                                    IOutput& output) {
  OperationTrace const trace;
  QOR_CLI_TRACE("There are %zu children", node->children().size());
  Execution const execution{*this, context, tokens, commandMatchCount, output};
  unsigned const before = *commandMatchCount;
  int result = 0;
  for (unsigned i = 0; i < node->children().size(); ++i) {
    AutoCompleteNode* const child = node->children()[i];
    QOR_CLI_TRACE("Checking child %u: %s", i, child->keyword().c_str());
    if (!child->isValidForMode(context.getMode())) continue;
    if (tokens.empty()) return trace.exitWith(0);
    result = execution.tryNode(*child, position);
    if (*commandMatchCount > before) break;
  }
  return trace.exitWith(result);
}

int AutoCompleteTree::executeValidation(AutoCompleteNode* node,
                                        CliApiContext& context,
                                        std::vector<std::string> const& tokens,
                                        unsigned position,
                                        unsigned* commandMatchCount,
                                        IOutput& output) {
  OperationTrace const trace;
  if (!node->isMatch(context, tokens, position, output, true) ||
      node->children().empty() || !node->potentialTerminalNode()) {
    return trace.exitWith(0);
  }
  for (AutoCompleteNode* child : node->children()) {
    QOR_CLI_TRACE("We are checking node '%s'", child->toString().c_str());
    if (!child->isExecutable()) continue;
    ++*commandMatchCount;
    return trace.exitWith(child->execute(context, tokens, output));
  }
  return trace.exitWith(0);
}

bool AutoCompleteTree::isCommandAuthorized(AutoCompleteNode* node,
                                           CliApiContext& context) {
  OperationTrace const trace;
  bool authorized = node->isAuthorized(context);
  for (AutoCompleteNode* child : node->children()) {
    if (!authorized) break;
    authorized = isCommandAuthorized(child, context);
  }
  return trace.exitWith(authorized ? 1 : 0) != 0;
}

}  // namespace QorCliUtilities
