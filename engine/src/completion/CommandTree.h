#ifndef QOR_CLI_ENGINE_COMMAND_TREE_H
#define QOR_CLI_ENGINE_COMMAND_TREE_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "output/Candidates.h"

namespace QorCliEngine {

// A word of a command, and what may follow it.
struct TreeWord {
  std::size_t number = 0;  // never the same twice in one explorer's trees
  std::string text;
  std::string help;             // one line
  std::vector<TreeWord> next;   // "<cr>" where the line may end
  std::vector<TreeWord> again;  // words drawn further up that may follow, too
  std::string leftOut;          // what of all this is missing; often empty
  bool isReturn = false;        // "<cr>", which nothing follows
};

// Finds out which commands there are, and what they take, by asking for
// candidates as for an operator: nothing else is known of a plug-in's commands.
//
// What both completion and help offer after a word may follow it; a request
// that is answered with nothing says nothing, and "<cr>" counts when either
// offers it. A placeholder is answered with a "1". Words that are offered again
// after themselves or their neighbours, as options are, are followed once.
// Depth, words after a word, and words in all are limited. One thread.
class CommandTreeExplorer {
 public:
  static constexpr std::size_t kMaxDepth = 8;     // words in a command
  static constexpr std::size_t kMaxNext = 40;     // words after a word
  static constexpr std::size_t kMaxWords = 2000;  // in all trees

  // Returns the candidates for completing or helping a line. May throw
  // std::runtime_error.
  using Ask = std::function<std::vector<Candidate>(QorCliActionEnum_2T,
                                                   std::string const& line)>;

  // Returns the tree of all commands that `ask` knows, below a root that is no
  // word of theirs.
  TreeWord explore(std::string const& name, std::string const& help,
                   Ask const& ask);

 private:
  using Words = std::vector<TreeWord>;

  void follow(TreeWord& word, std::string const& line, std::size_t depth,
              Words above, Ask const& ask);
  void addNext(TreeWord& word, std::vector<Candidate> const& candidates,
               Words const& above);

  std::size_t words_ = 0;
};

}  // namespace QorCliEngine

#endif
