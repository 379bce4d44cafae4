#ifndef QOR_CLI_ENGINE_COMMAND_NODE_H
#define QOR_CLI_ENGINE_COMMAND_NODE_H

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "commands/ArgumentsNode.h"
#include "commands/CommandLine.h"

namespace QorCliEngine {

// Arguments that are the words of a command: offers the commands whose first
// word begins as the word does.
class CommandNode : public ArgumentsNode {
 public:
  // Returns the first words of commands that begin as `word` does.
  using Names =
      std::function<std::vector<std::string>(std::string const& word)>;

  CommandNode(unsigned wordsBefore, std::string placeholder, std::string help,
              Names names)
      : ArgumentsNode(wordsBefore, Count::kMany, std::move(placeholder),
                      std::move(help)),
        names_(std::move(names)) {}

 protected:
  bool mayBeFirst(std::string const& word) const override {
    return !names_(CommandLine::unquoted(word)).empty();
  }

  void offerWords(std::size_t index, std::string const& word,
                  std::vector<QorCliUtilities::AutoCompleteResult>& results)
      const override {
    if (index != 0) return;
    for (std::string const& name : names_(word)) {
      addPossibility({QOR_CLI_SORT_COMMAND, name}, name, "", QOR_CLI_TOKEN_WORD,
                     results);
    }
  }

 private:
  Names names_;
};

}  // namespace QorCliEngine

#endif
