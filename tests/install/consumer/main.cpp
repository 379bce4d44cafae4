// A program of somebody else's: a command tree with one command, and a line
// that is run on it; then three lines that are filtered.

#include <ACKeyword.h>
#include <AutoCompleteTree.h>
#include <CliApiContext5.h>
#include <LineFilter.h>
#include <LinesOutput.h>
#include <QorReturn.h>

#include <iostream>
#include <string_view>

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

int greet() {
  Greet command;
  AutoCompleteTree tree;
  tree.addPathToTree(
      {new ACKeyword("greet", "Say hello", {QOR_CLI_MODE_ANY}, true, false,
                     QOR_CLI_TOKEN_NEXT_WORD, false, true, false, false, false),
       new AutoCompleteNode(&command)});
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

class Selected : public QorCliMatching::LineSink {
 public:
  void selected(std::string_view lines) override { std::cout << lines; }
  void unselected(std::string_view) override {}
};

// Each pattern is answered in a way of its own.
void filter() {
  Selected sink;
  for (char const* pattern : {"e.h", "(e|x)+t", "(?=l).*down"}) {
    QorCliMatching::LineFilter(pattern, false)
        .filter("eth0 link up\next1 idle\neth2 link down\n", false, sink);
  }
}

}  // namespace

int main() {
  filter();
  return greet();
}
