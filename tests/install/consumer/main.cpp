// A program of somebody else's: a command tree with one command, and a line
// that is run on it.

#include <ACKeyword.h>
#include <AutoCompleteTree.h>
#include <CliApiContext5.h>
#include <LinesOutput.h>
#include <QorReturn.h>

#include <iostream>

using namespace QorCliUtilities;

static_assert(__cplusplus >= 201703L, "the headers need C++17");

namespace {

class Greet : public AbstractCommand {
 public:
  Greet() : AbstractCommand("Greet") {}

  int execute(CliApiContext&, std::vector<std::string> const& tokens,
              IOutput& output) override {
    output.push_back("hello from " + tokens.front());
    return 0;
  }
};

QorReturnT ignorePrompt(QorCliApiContext_5*, char const*) { return 0; }

}  // namespace

int main() {
  Greet greet;
  AutoCompleteTree tree;
  tree.addPathToTree(
      {new ACKeyword("greet", "Say hello", {QOR_CLI_MODE_ANY}, true, false,
                     QOR_CLI_TOKEN_NEXT_WORD, false, true, false, false, false),
       new AutoCompleteNode(&greet)});
  QorCliApiContext_5 record{};
  record.setPrompt = ignorePrompt;
  CliApiContext5 context(&record);
  LinesOutput output;
  unsigned matches = 0;
  int const status = tree.executeCommand(context, "greet", &matches, output);
  std::cout << output.getOutput().at(0) << ": "
            << Qor::QorReturn::strerror(status) << '\n';
  return matches == 1 ? status : 1;
}
