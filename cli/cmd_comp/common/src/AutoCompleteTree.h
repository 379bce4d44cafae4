#ifndef QOR_CLI_AUTO_COMPLETE_TREE_H
#define QOR_CLI_AUTO_COMPLETE_TREE_H

#include <memory>
#include <string>
#include <vector>

#include "AutoCompleteNode.h"

namespace QorCliUtilities {

// A command tree: the syntax of a set of commands, against which command lines
// are executed, completed and helped.
//
// It is filled with paths, one per command form: a node for each word from the
// first to the last, then a node that carries the command. Paths that begin
// alike share nodes. The tree owns its nodes; commands are referred to only.
//
//   tree.addPathToTree(std::make_unique<ACKeyword>(show),
//                      std::make_unique<ACKeyword>(log),
//                      std::make_unique<AutoCompleteNode>(&showLog));
//
// The tree is built before it is used and only read afterwards, but nodes may
// keep state while a line is matched: no two calls on one tree may overlap.
class AutoCompleteTree {
 public:
  AutoCompleteTree() = default;
  virtual ~AutoCompleteTree();
  AutoCompleteTree(AutoCompleteTree const&) = delete;
  AutoCompleteTree& operator=(AutoCompleteTree const&) = delete;

  // ---- Building (AutoCompleteTree.cpp)

  // Whether a path has been added since the tree was made or deleted.
  bool readyForUse() const;

  // The root, or null. It stands for no word; matching starts at its children.
  AutoCompleteNode* getRoot() const;

  // Merges one path into the tree and returns 0. No node may be null. All nodes
  // belong to the tree from the call on, whatever comes of it: each is linked
  // or deleted. A node that the tree already has (the same keyword(), byte by
  // byte, below the same parent) is merged into that one, which becomes valid
  // in the modes of both and, unless the new node carries a command, visible
  // when either is, potentially terminal when either is, and as strict as the
  // stricter of the two. An existing node keeps its command or its lack of one.
  // Throws Error "Can't add path to the tree, index out of bound." for an empty
  // path on a tree without a root, which has one afterwards.
  unsigned addPathToTree(std::vector<AutoCompleteNode*> const& path);

  // The same for a path of nodes that their pointers own.
  template <class First, class... Rest>
  unsigned addPathToTree(std::unique_ptr<First> first,
                         std::unique_ptr<Rest>... rest) {
    std::vector<AutoCompleteNode*> const path{first.get(), rest.get()...};
    // The tree owns the nodes from here on, whatever comes of the call.
    static_cast<void>(first.release());
    (static_cast<void>(rest.release()), ...);
    return addPathToTree(path);
  }

  // Links path[index], ..., path[last] as a chain below `parent`, which is not
  // null, and returns 0. These nodes belong to the tree from the call on.
  // Throws Error as above when `index` is not below the path's length.
  unsigned addSubPathToTree(std::vector<AutoCompleteNode*> const& path,
                            unsigned index, AutoCompleteNode* parent);

  // The first child of `parent` with the same keyword() as `node`, or null;
  // null as well when `parent` is null.
  AutoCompleteNode* findChildNode(AutoCompleteNode* parent,
                                  AutoCompleteNode& node) const;

  // Deletes all nodes. The tree can be filled again.
  void deleteTree();

  // Deletes `node` and all nodes below it. Null is allowed.
  void deleteSearch(AutoCompleteNode* node);

  // ---- Tokens (Tokenizer.cpp)

  // Appends the words of `line` to `tokens`, with quoted text kept whole and
  // blanks around "=", ",", "[" and "]" outside of it removed. Returns false
  // when quoted text is glued to other text; `tokens` then holds the words
  // before it. `output` is not written to.
  bool tokenize(std::string const& line, std::vector<std::string>& tokens,
                IOutput& output) const;

  // Whether every quoted text within the `length` bytes at `offset` of `line`
  // stands between characters that may stand there. If not, stores the index of
  // the first that may not in `errorPosition`.
  bool validateToken(std::string const& line, unsigned const& offset,
                     unsigned const& length, unsigned& errorPosition) const;

  // ---- Execution (AutoCompleteTreeExecution.cpp)
  //
  // `*commandMatchCount` is raised by one just before a command is run and
  // never reset: afterwards it tells whether the line was a command. The
  // pointer is not null. Exceptions of nodes and commands are passed on.

  // Runs the first command that `line` fits. Returns its result, 0 when none
  // fits, -1 when the line cannot be tokenized.
  int executeCommand(CliApiContext& context, std::string line,
                     unsigned* commandMatchCount, IOutput& output);

  // As executeCommand, for a line that has been tokenized.
  int execute(CliApiContext& context, std::vector<std::string> const& tokens,
              unsigned* commandMatchCount, IOutput& output);

  // Looks below `node`, which is not null, for the command that the tokens from
  // `position` on fit, runs the first one found and returns its result, or 0.
  int executeSearch(AutoCompleteNode* node, CliApiContext& context,
                    std::vector<std::string> const& tokens, unsigned position,
                    unsigned* commandMatchCount, IOutput& output);

  // Runs the command that ends at `node`, which is not null, if the node
  // matches at `position` and a line may end there. Returns its result, or 0.
  int executeValidation(AutoCompleteNode* node, CliApiContext& context,
                        std::vector<std::string> const& tokens,
                        unsigned position, unsigned* commandMatchCount,
                        IOutput& output);

  // Whether the session may run every command at and below `node`, which is not
  // null.
  bool isCommandAuthorized(AutoCompleteNode* node, CliApiContext& context);

  // ---- Completion and help (AutoCompleteTreeCompletion.cpp)
  //
  // Candidates are appended to `results` in tree order; the list is neither
  // cleared nor sorted. Of the returned numbers, only -1 for a line that cannot
  // be tokenized has a meaning. Nothing is run. Exceptions of nodes are passed
  // on.

  // Offers what completes the last word of `line`. `lastToken` is that word as
  // the engine sees it, handed to the nodes.
  int autoCompleteCommand(CliApiContext& context, std::string line,
                          std::string lastToken,
                          std::vector<AutoCompleteResult>& results,
                          IOutput& output);

  // Offers what may stand at the end of `line`, with help texts.
  int helpRequest(CliApiContext& context, std::string line,
                  std::vector<AutoCompleteResult>& results, IOutput& output);

  // What the two above share; `helpRequest` tells them apart.
  int helpRequestAndAutoCompleteCommand(
      CliApiContext& context, std::string line, std::string lastToken,
      std::vector<AutoCompleteResult>& results, IOutput& output,
      bool helpRequest);

  // As above, for a line that has been tokenized; `endsWithSpace` says that its
  // last character was a blank.
  int autocomplete(CliApiContext& context,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken,
                   std::vector<AutoCompleteResult>& results, IOutput& output,
                   bool endsWithSpace, bool helpRequest);

  // Collects the candidates of every branch below `node` that the tokens from
  // `position` on fit.
  int autocompleteSearch(AutoCompleteNode* node, CliApiContext& context,
                         std::vector<std::string> const& tokens,
                         std::string const& lastToken, unsigned position,
                         std::vector<AutoCompleteResult>& results,
                         IOutput& output, bool endsWithSpace, bool helpRequest);

  // Collects the candidates of `node` at the last token, and of its children
  // when the node matches it.
  int autocompleteValidation(AutoCompleteNode* node, CliApiContext& context,
                             std::vector<std::string> const& tokens,
                             std::string const& lastToken, unsigned position,
                             std::vector<AutoCompleteResult>& results,
                             IOutput& output, bool endsWithSpace,
                             bool helpRequest);

  // Removes the first candidate whose text equals `name`, with `ignoreCase` in
  // any letter case; does nothing when there is none.
  void removeOutput(std::vector<AutoCompleteResult>& results,
                    std::string const& name, bool ignoreCase) const;

  // Appends the candidate "<cr>": the line may be run as it stands.
  void addCRtoOutput(std::vector<AutoCompleteResult>& results) const;

 private:
  AutoCompleteNode* root_ = nullptr;  // owned
};

}  // namespace QorCliUtilities

#endif
