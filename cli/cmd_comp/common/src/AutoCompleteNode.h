#ifndef QOR_CLI_AUTO_COMPLETE_NODE_H
#define QOR_CLI_AUTO_COMPLETE_NODE_H

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "AbstractCommand.h"
#include "AutoCompleteResult.h"
#include "CliApiContext.h"
#include "IOutput.h"

namespace QorCliUtilities {

// How strictly a line is validated at a node, weakest first. If two command
// paths share a node, the larger value wins. Other values may be used as well.
enum Validation_Type : std::int32_t {
  // In execution, a keyword node matches without consuming a word.
  VALIDATION_NONE = 0,
  // The word must be the node's own. Keyword nodes start with this value.
  VALIDATION_KEYWORD = 3,
};

// A node of a command tree.
//
// A node represents one word of a command line, or several (a multi-token
// node). A subclass decides which words match and which candidates are offered.
// A node with a command ends a path: it is never matched against a word, and
// its parent must be a potential terminal node.
//
// Nodes are allocated with new and passed to AutoCompleteTree::addPathToTree,
// which takes ownership. Copying, assigning and comparing them throws Error
// "Hit private code".
//
// Positions are indexes into the token list. One call at a time on the nodes of
// a tree, since multi-token nodes may keep state while a line is matched.
class AutoCompleteNode {
 public:
  // A node that ends a path and runs `command`, which is not owned and must
  // outlive the node; if `command` is null, the root of a tree. Valid in no
  // mode, not hidden, VALIDATION_NONE, not a potential terminal node.
  explicit AutoCompleteNode(AbstractCommand* command);

  // A node that is valid in `modes` (QorCliModeEnum_1T values; QOR_CLI_MODE_ANY
  // means all). `potentialTerminalNode`: a command line may end here.
  // `hidden`: the node is not offered.
  AutoCompleteNode(std::set<unsigned> modes, Validation_Type validationType,
                   bool potentialTerminalNode, bool hidden);

  // Deletes neither the children nor the command.
  virtual ~AutoCompleteNode() = default;

  // The text that identifies the node among its parent's children.
  virtual std::string keyword() const;

  // Adds the node's candidates to `results`. `position` is that of the word to
  // complete, or the number of tokens if that word is empty; `lastToken` is the
  // partly typed word as the engine sees it, empty for help; `endsWithSpace`
  // says that the line ends in a blank, `helpRequest` selects help instead of
  // completion. Throws Error when `position` is invalid for the node. Returns
  // 0, or a status of the subclass.
  virtual int autoComplete(CliApiContext& ctx,
                           std::vector<std::string> const& tokens,
                           std::string const& lastToken, unsigned& position,
                           bool endsWithSpace, bool helpRequest,
                           std::vector<AutoCompleteResult>& results,
                           IOutput& output);

  // Whether the node matches at `position`, which advances past the tokens
  // examined, even if they do not match. `executing`: the line is being run,
  // not completed or helped. Throws Error when there is no token at `position`
  // or the node is not valid in the session's mode.
  virtual bool isMatch(CliApiContext& ctx,
                       std::vector<std::string> const& tokens,
                       unsigned& position, IOutput& output, bool executing);

  // Whether isMatch is called once for each of several tokens.
  virtual bool isMultiTokenNode() const;
  // Whether the token that a multi-token node just matched was its last one.
  virtual bool isLastMultiTokenElement(CliApiContext& ctx) const;
  // Clears what a multi-token node has matched so far.
  virtual void resetNode(CliApiContext& ctx);
  // Whether the words of the node may be typed in any letter case.
  virtual bool ignoreCase() const;
  // Whether a word of the node may contain blanks.
  virtual bool internalSpacesAllowed() const;
  // Whether to suppress "<cr>" after this node.
  virtual bool doNoAddCRCompletion(
      CliApiContext const& ctx, std::vector<std::string> const& tokens) const;

  // For traces: the command's name and " command", or "Root".
  virtual std::string toString() const;
  // As toString(), unless a subclass provides something shorter.
  virtual std::string toShortString() const;

  // Whether the node is the root, or `mode` or QOR_CLI_MODE_ANY is among its
  // modes.
  bool isValidForMode(QorCliModeEnum_1T mode) const;
  // Whether keyword() is "Root".
  bool isRoot() const;
  // Whether the node has a command.
  bool isExecutable() const;
  // Whether completion and help omit the node.
  bool isHidden() const;
  void unsetHidden();
  // Whether a command line may end here.
  bool potentialTerminalNode() const;
  void setPotentialTerminalNode(bool value);
  // How strictly a line is validated here.
  Validation_Type validationType() const;
  void setValidationType(Validation_Type value);

  // Makes the node also valid in the modes of `other`.
  void addState(AutoCompleteNode const& other);

  // The children in the order in which they were added; none is null. The tree
  // owns them, so only the tree calls these three.
  std::vector<AutoCompleteNode*> const& children() const { return children_; }
  void addChild(AutoCompleteNode* child) { children_.push_back(child); }
  // Forgets the children without deleting them.
  void clearChildren() { children_.clear(); }

  // Whether the session in `context` may run the node's command; true if it has
  // none.
  bool isAuthorized(CliApiContext& context) const;

  // Runs the command with `tokens`, the whole line, and returns its result.
  // Returns -1 if the node has no command, or, with "Not allowed" added to
  // `output`, if the session may not run it. Throws what the command throws.
  int execute(CliApiContext& context, std::vector<std::string> const& tokens,
              IOutput& output);

  // Whether `typed` is a prefix of `candidate`, ignoring the case of ASCII
  // letters. An empty `typed` is a prefix of everything.
  static bool match(std::string candidate, std::string typed);

  // Returns the token at `position`, or an empty string if there is none.
  // Always increments `position`. Never fails.
  static std::string extractToken(std::vector<std::string> const& tokens,
                                  unsigned& position);

  // Appends a candidate to `results`, without sorting or removing duplicates.
  static void addPossibility(AutoCompleteResult::SortIndex sortIndex,
                             std::string completion, std::string help,
                             QorCliCompletionToken_1T token,
                             std::vector<AutoCompleteResult>& results);

  // Throw Error "Hit private code".
  AutoCompleteNode(AutoCompleteNode const& other);
  AutoCompleteNode& operator=(AutoCompleteNode const& other);
  bool operator==(AutoCompleteNode const& other) const;

 private:
  std::vector<AutoCompleteNode*> children_;
  std::set<unsigned> modes_;
  bool potentialTerminalNode_ = false;
  AbstractCommand* command_ = nullptr;
  bool hidden_ = false;
  Validation_Type validationType_ = VALIDATION_NONE;
};

}  // namespace QorCliUtilities

#endif
