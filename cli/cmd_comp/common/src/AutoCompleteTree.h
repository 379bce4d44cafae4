#ifndef QOR_CLI_AUTO_COMPLETE_TREE_H
#define QOR_CLI_AUTO_COMPLETE_TREE_H

#include <memory>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"

namespace QorCliUtilities {

// A command tree: the syntax of a set of commands, by which command lines are
// executed, completed and helped.
//
// It is built from paths, one per command form: a node for each word, then a
// node with the command. Paths with a common prefix share nodes. The tree owns
// its nodes, but not the commands.
//
//   KeywordSettings show{"show", "Print something"};
//   KeywordSettings log{"log", "The log"};
//   log.potentialTerminalNode = true;  // a line may end here
//   tree.addPathToTree(std::make_unique<ACKeyword>(show),
//                      std::make_unique<ACKeyword>(log),
//                      std::make_unique<AutoCompleteNode>(&showLogCommand));
//
// The tree is built first and only read afterwards, but nodes may keep state
// while a line is matched: one call at a time on a tree.
class AutoCompleteTree {
 public:
  AutoCompleteTree() = default;
  virtual ~AutoCompleteTree();
  AutoCompleteTree(AutoCompleteTree const&) = delete;
  AutoCompleteTree& operator=(AutoCompleteTree const&) = delete;

  // ---- Building (AutoCompleteTree.cpp)

  // Whether a path has been added since construction or deleteTree().
  bool readyForUse() const;

  // The root, or null. It matches no word; matching starts at its children.
  AutoCompleteNode* getRoot() const;

  // Merges a path into the tree and returns 0. No node may be null. The tree
  // takes ownership of all nodes, even if it throws: each is linked or deleted.
  // A node that the tree already has (the same keyword(), byte by byte, below
  // the same parent) is merged into the existing one, which becomes valid in
  // the modes of both. Unless the new node has a command, the existing one also
  // becomes visible if either is, potentially terminal if either is, and as
  // strict as the stricter one. It keeps its command or its lack of one. Throws
  // Error "Can't add path to the tree, index out of bound." for an empty path
  // on a tree without a root, which has one afterwards.
  unsigned addPathToTree(std::vector<AutoCompleteNode*> const& path);

  // The same for a path of unique pointers.
  template <class First, class... Rest>
  unsigned addPathToTree(std::unique_ptr<First> first,
                         std::unique_ptr<Rest>... rest) {
    std::vector<AutoCompleteNode*> const path{first.get(), rest.get()...};
    // From here on, the tree owns the nodes, even if it throws.
    static_cast<void>(first.release());
    (static_cast<void>(rest.release()), ...);
    return addPathToTree(path);
  }

  // Links path[index], ..., path[last] as a chain below `parent`, which is not
  // null, and returns 0. The tree takes ownership of these nodes. Throws Error
  // as above if `index` is not below the path's length.
  unsigned addSubPathToTree(std::vector<AutoCompleteNode*> const& path,
                            unsigned index, AutoCompleteNode* parent);

  // The first child of `parent` with the same keyword() as `node`, or null if
  // there is none or `parent` is null.
  AutoCompleteNode* findChildNode(AutoCompleteNode* parent,
                                  AutoCompleteNode& node) const;

  // Deletes all nodes. Paths can be added again.
  void deleteTree();

  // Deletes `node` and all nodes below it. Null is allowed.
  void deleteSearch(AutoCompleteNode* node);

  // ---- Tokens (Tokenizer.cpp)

  // Appends the words of `line` to `tokens`. Quoted text stays in one word;
  // outside it, blanks around "=", ",", "[" and "]" are removed. Returns false
  // if quoted text is glued to other text; `tokens` then holds the words before
  // it. Ignores `output`.
  bool tokenize(std::string const& line, std::vector<std::string>& tokens,
                IOutput& output) const;

  // Whether every quoted text within the `length` bytes at `offset` of `line`
  // is preceded and followed by a permitted character. If not, stores the index
  // of the first other character in `errorPosition`.
  bool validateToken(std::string const& line, unsigned const& offset,
                     unsigned const& length, unsigned& errorPosition) const;

  // ---- Execution (AutoCompleteTreeExecution.cpp)
  //
  // `*commandMatchCount` is incremented just before a command is run and never
  // reset: it tells the caller whether the line was a command. The pointer is
  // not null. Exceptions of nodes and commands propagate.

  // Runs the first command that matches `line`. Returns its result, 0 if none
  // matches, -1 if the line cannot be tokenized.
  int executeCommand(CliApiContext& context, std::string line,
                     unsigned* commandMatchCount, IOutput& output);

  // As executeCommand, for a tokenized line.
  int execute(CliApiContext& context, std::vector<std::string> const& tokens,
              unsigned* commandMatchCount, IOutput& output);

  // Runs the first command below `node`, which is not null, that matches the
  // tokens from `position` on. Returns its result, or 0 if there is none.
  int executeSearch(AutoCompleteNode* node, CliApiContext& context,
                    std::vector<std::string> const& tokens, unsigned position,
                    unsigned* commandMatchCount, IOutput& output);

  // Runs the command that ends at `node`, which is not null, if the node
  // matches at `position` and a line may end there. Returns its result,
  // otherwise 0.
  int executeValidation(AutoCompleteNode* node, CliApiContext& context,
                        std::vector<std::string> const& tokens,
                        unsigned position, unsigned* commandMatchCount,
                        IOutput& output);

  // Whether the session may run all commands at and below `node`, which is not
  // null.
  bool isCommandAuthorized(AutoCompleteNode* node, CliApiContext& context);

  // ---- Completion and help (AutoCompleteTreeCompletion.cpp)
  //
  // Candidates are appended to `results` in tree order; the list is neither
  // cleared nor sorted. Of the results, only -1 has a meaning: the line cannot
  // be tokenized. No command is run. Exceptions of nodes propagate.

  // Offers completions of the last word of `line`. `lastToken` is that word as
  // the engine sees it, for the nodes.
  int autoCompleteCommand(CliApiContext& context, std::string line,
                          std::string lastToken,
                          std::vector<AutoCompleteResult>& results,
                          IOutput& output);

  // Offers help on the last word of `line`, or on what may follow.
  int helpRequest(CliApiContext& context, std::string line,
                  std::vector<AutoCompleteResult>& results, IOutput& output);

  // Implements both; `helpRequest` selects help instead of completion.
  int helpRequestAndAutoCompleteCommand(
      CliApiContext& context, std::string line, std::string lastToken,
      std::vector<AutoCompleteResult>& results, IOutput& output,
      bool helpRequest);

  // As above, for a tokenized line; `endsWithSpace`: its last character was a
  // blank.
  int autocomplete(CliApiContext& context,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken,
                   std::vector<AutoCompleteResult>& results, IOutput& output,
                   bool endsWithSpace, bool helpRequest);

  // Collects the candidates of every branch below `node` that matches the
  // tokens from `position` on.
  int autocompleteSearch(AutoCompleteNode* node, CliApiContext& context,
                         std::vector<std::string> const& tokens,
                         std::string const& lastToken, unsigned position,
                         std::vector<AutoCompleteResult>& results,
                         IOutput& output, bool endsWithSpace, bool helpRequest);

  // Collects the candidates of `node` at the last token and, if the node
  // matches it, of its children.
  int autocompleteValidation(AutoCompleteNode* node, CliApiContext& context,
                             std::vector<std::string> const& tokens,
                             std::string const& lastToken, unsigned position,
                             std::vector<AutoCompleteResult>& results,
                             IOutput& output, bool endsWithSpace,
                             bool helpRequest);

  // Removes the first candidate with the text `name`, in any letter case if
  // `ignoreCase`; does nothing if there is none.
  void removeOutput(std::vector<AutoCompleteResult>& results,
                    std::string const& name, bool ignoreCase) const;

  // Appends the candidate "<cr>": the line may end here.
  void addCRtoOutput(std::vector<AutoCompleteResult>& results) const;

 private:
  AutoCompleteNode* root_ = nullptr;  // owned
};

}  // namespace QorCliUtilities

#endif
