#include <algorithm>
#include <utility>

#include "AutoCompleteTree.h"
#include "LowerCase.h"
#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

constexpr char kReturnCandidate[] = "<cr>";

// One completion or help request.
struct Request {
  AutoCompleteTree& tree;
  CliApiContext& context;
  std::vector<std::string> const& tokens;
  std::string const& lastToken;
  std::vector<AutoCompleteResult>& results;
  IOutput& output;
  bool endsWithSpace;
  bool help;

  bool matches(AutoCompleteNode& node, unsigned& position) const {
    return node.isMatch(context, tokens, position, output, false);
  }

  // Takes the position by value: its callers ignore how a node changes it.
  int offer(AutoCompleteNode& node, unsigned position) const {
    return node.autoComplete(context, tokens, lastToken, position,
                             endsWithSpace, help, results, output);
  }

  int search(AutoCompleteNode& node, unsigned position) const {
    return tree.autocompleteSearch(&node, context, tokens, lastToken, position,
                                   results, output, endsWithSpace, help);
  }

  int validate(AutoCompleteNode& node, unsigned position) const {
    return tree.autocompleteValidation(&node, context, tokens, lastToken,
                                       position, results, output, endsWithSpace,
                                       help);
  }

  bool isLastElement(AutoCompleteNode const& node) const {
    return node.isLastMultiTokenElement(context);
  }

  // Whether `node` considers the last word complete.
  bool isComplete(AutoCompleteNode const& node) const {
    return endsWithSpace && !node.internalSpacesAllowed();
  }

  bool offersReturn(AutoCompleteNode const& node) const {
    return !node.doNoAddCRCompletion(context, tokens);
  }
};

// Asks a multi-token node that starts before the last token.
void completeMultiToken(Request const& request, AutoCompleteNode& node,
                        unsigned position) {
  QOR_CLI_TRACE("We found multi token node.");
  while (position < request.tokens.size()) {
    if (!request.matches(node, position)) return;
    if (request.isLastElement(node)) break;
  }
  if (request.isLastElement(node)) {
    request.offer(node, position);
    return;
  }
  QOR_CLI_TRACE("current position is %u", position);
  if (position == request.tokens.size())
    request.tree.addCRtoOutput(request.results);
}

// Asks a multi-token node that matched the last token, just before `position`.
void completeMultiTokenAtEnd(Request const& request, AutoCompleteNode& node,
                             unsigned position) {
  QOR_CLI_TRACE("We found multi token node.");
  QOR_CLI_TRACE("currentPosition is %u", position);
  if (request.isLastElement(node) && !request.help) {
    request.tree.addCRtoOutput(request.results);
  } else {
    request.offer(node, position);
  }
}

// Asks an ordinary node that matched the last token, at `position`, before its
// children are asked.
int completeMatched(Request const& request, AutoCompleteNode& node,
                    unsigned position) {
  bool const complete = request.isComplete(node);
  if (request.help) return complete ? 0 : request.offer(node, position);
  if (!node.potentialTerminalNode()) {
    if (node.isHidden() || !node.internalSpacesAllowed()) return 0;
    return request.offer(node, position);
  }
  int result = 0;
  if (!complete) {
    result = request.offer(node, position);
    if (request.offersReturn(node) && position < request.tokens.size()) {
      request.tree.removeOutput(request.results, request.tokens[position],
                                node.ignoreCase());
    }
  }
  if (request.offersReturn(node)) request.tree.addCRtoOutput(request.results);
  return result;
}

// Asks the children of a node that matched the last token. Unlike the search,
// filters them by mode only.
int completeChildren(Request const& request, AutoCompleteNode const& node,
                     unsigned position, int result) {
  for (AutoCompleteNode* child : node.children()) {
    if (child == nullptr) continue;
    QOR_CLI_TRACE("We are checking node '%s'", child->toString().c_str());
    if (!child->isValidForMode(request.context.getMode())) continue;
    QOR_CLI_TRACE("We will autocomplete for node '%s'",
                  child->toString().c_str());
    result = request.offer(*child, position);
  }
  return result;
}

}  // namespace

int AutoCompleteTree::autoCompleteCommand(
    CliApiContext& context, std::string line, std::string lastToken,
    std::vector<AutoCompleteResult>& results, IOutput& output) {
  OperationTrace const trace;
  return trace.exitWith(helpRequestAndAutoCompleteCommand(
      context, std::move(line), std::move(lastToken), results, output, false));
}

int AutoCompleteTree::helpRequest(CliApiContext& context, std::string line,
                                  std::vector<AutoCompleteResult>& results,
                                  IOutput& output) {
  OperationTrace const trace;
  return trace.exitWith(helpRequestAndAutoCompleteCommand(
      context, std::move(line), "", results, output, true));
}

int AutoCompleteTree::helpRequestAndAutoCompleteCommand(
    CliApiContext& context, std::string line, std::string lastToken,
    std::vector<AutoCompleteResult>& results, IOutput& output,
    bool helpRequest) {
  OperationTrace const trace;
  bool const endsWithSpace = !line.empty() && line.back() == ' ';
  std::vector<std::string> tokens;
  if (!tokenize(line, tokens, output)) return trace.exitWith(-1);
  return trace.exitWith(autocomplete(context, tokens, lastToken, results,
                                     output, endsWithSpace, helpRequest));
}

int AutoCompleteTree::autocomplete(CliApiContext& context,
                                   std::vector<std::string> const& tokens,
                                   std::string const& lastToken,
                                   std::vector<AutoCompleteResult>& results,
                                   IOutput& output, bool endsWithSpace,
                                   bool helpRequest) {
  OperationTrace const trace;
  if (root_ == nullptr) return trace.exitWith(0);
  return trace.exitWith(autocompleteSearch(root_, context, tokens, lastToken, 0,
                                           results, output, endsWithSpace,
                                           helpRequest));
}

// Unlike execution, searches every matching branch. Recurses as deep as the
// tree, whatever the line.
int AutoCompleteTree::autocompleteSearch(
    AutoCompleteNode* node, CliApiContext& context,
    std::vector<std::string> const& tokens, std::string const& lastToken,
    unsigned position, std::vector<AutoCompleteResult>& results,
    IOutput& output, bool endsWithSpace, bool helpRequest) {
  OperationTrace const trace;
  Request const request{*this,   context, tokens,        lastToken,
                        results, output,  endsWithSpace, helpRequest};
  QOR_CLI_TRACE("There are %zu children", node->children().size());
  int result = 0;
  for (unsigned i = 0; i < node->children().size(); ++i) {
    AutoCompleteNode* const child = node->children()[i];
    QOR_CLI_TRACE("Checking child %u: %s", i, child->keyword().c_str());
    if (!isCommandAuthorized(child, context)) continue;
    if (!child->isValidForMode(context.getMode())) continue;
    unsigned next = position;
    if (tokens.empty()) {
      result = request.offer(*child, position);
    } else if (position + std::size_t{1} == tokens.size()) {
      result = request.validate(*child, position);
    } else if (child->isMultiTokenNode()) {
      completeMultiToken(request, *child, position);
    } else if (request.matches(*child, next)) {
      QOR_CLI_TRACE("We found exact match node '%s' ",
                    child->toString().c_str());
      result = request.search(*child, next);
    }
  }
  return trace.exitWith(result);
}

int AutoCompleteTree::autocompleteValidation(
    AutoCompleteNode* node, CliApiContext& context,
    std::vector<std::string> const& tokens, std::string const& lastToken,
    unsigned position, std::vector<AutoCompleteResult>& results,
    IOutput& output, bool endsWithSpace, bool helpRequest) {
  OperationTrace const trace;
  Request const request{*this,   context, tokens,        lastToken,
                        results, output,  endsWithSpace, helpRequest};
  unsigned next = position;
  if (!request.matches(*node, next)) {
    if (!request.isComplete(*node)) request.offer(*node, position);
    return trace.exitWith(0);
  }
  QOR_CLI_TRACE("We found last token exact matches node '%s' ",
                node->toString().c_str());
  if (node->isMultiTokenNode()) {
    completeMultiTokenAtEnd(request, *node, next);
    return trace.exitWith(0);
  }
  int const result = completeMatched(request, *node, position);
  return trace.exitWith(completeChildren(request, *node, next, result));
}

void AutoCompleteTree::removeOutput(std::vector<AutoCompleteResult>& results,
                                    std::string const& name,
                                    bool ignoreCase) const {
  OperationTrace const trace;
  auto const compared = [ignoreCase](std::string const& text) {
    return ignoreCase ? lowerCased(text) : text;
  };
  std::string const typed = compared(name);
  auto const repeated = std::find_if(
      results.begin(), results.end(), [&](AutoCompleteResult const& result) {
        return compared(result.completion) == typed;
      });
  if (repeated != results.end()) results.erase(repeated);
  trace.exit();
}

void AutoCompleteTree::addCRtoOutput(
    std::vector<AutoCompleteResult>& results) const {
  OperationTrace const trace;
  results.push_back({QOR_CLI_TOKEN_OPTION,
                     kReturnCandidate,
                     "",
                     {QOR_CLI_SORT_LAST, kReturnCandidate}});
  trace.exit();
}

}  // namespace QorCliUtilities
