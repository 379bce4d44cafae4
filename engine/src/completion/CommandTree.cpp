#include "completion/CommandTree.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace QorCliEngine {
namespace {

// What stands for a placeholder in a question: a number, a text and a path.
constexpr char kSample[] = "1";
// After the commands themselves, what is offered again is the same word; the
// name of a command may well be another command's argument.
constexpr std::size_t kDepthOfCommands = 1;
// How the help of a keyword begins, which says what it is in a second line.
constexpr char kKeywordMark[] = "() ";

std::string firstLine(std::string const& help) {
  std::string const line = help.substr(0, help.find('\n'));
  std::size_t const mark = sizeof kKeywordMark - 1;
  return line.compare(0, mark, kKeywordMark) == 0 ? line.substr(mark) : line;
}

std::set<std::string> textsOf(std::vector<Candidate> const& candidates) {
  std::set<std::string> texts;
  for (Candidate const& each : candidates) texts.insert(each.completion);
  return texts;
}

std::vector<Candidate> wordsBehind(std::string const& line,
                                   CommandTreeExplorer::Ask const& ask) {
  auto const completing = ask(QOR_CLI_ACTION_COMPLETE, line);
  auto const helping = ask(QOR_CLI_ACTION_HELP, line);
  std::vector<Candidate> both;
  auto const add = [&both](std::vector<Candidate> const& answer,
                           std::vector<Candidate> const& other) {
    std::set<std::string> const known = textsOf(other);
    for (Candidate const& candidate : answer) {
      if (known.empty() || Candidates::isReturn(candidate) ||
          known.count(candidate.completion) != 0) {
        both.push_back(candidate);
      }
    }
  };
  add(helping, completing);
  add(completing, helping);
  return Candidates::merged(std::move(both));
}

TreeWord const* find(std::vector<TreeWord> const& words,
                     TreeWord const& wanted) {
  auto const found =
      std::find_if(words.begin(), words.end(), [&](TreeWord const& word) {
        return word.text == wanted.text && word.help == wanted.help;
      });
  return found == words.end() ? nullptr : &*found;
}

TreeWord named(std::size_t number, std::string text, std::string help) {
  TreeWord word;
  word.number = number;
  word.text = std::move(text);
  word.help = std::move(help);
  return word;
}

}  // namespace

TreeWord CommandTreeExplorer::explore(std::string const& name,
                                      std::string const& help, Ask const& ask) {
  TreeWord root = named(words_++, name, help);
  follow(root, "", 0, {}, ask);
  return root;
}

// Recursion is limited by kMaxDepth.
void CommandTreeExplorer::follow(TreeWord& word, std::string const& line,
                                 std::size_t depth, Words above,
                                 Ask const& ask) {
  if (depth == kMaxDepth || words_ >= kMaxWords) {
    word.leftOut = "not followed any further";
    return;
  }
  try {
    addNext(word, wordsBehind(line, ask), above);
  } catch (std::runtime_error const& failure) {
    word.leftOut = failure.what();
  }
  if (depth >= kDepthOfCommands) {
    above.insert(above.end(), word.next.begin(), word.next.end());
  }
  for (TreeWord& next : word.next) {
    if (next.isReturn) continue;
    bool const sample = Candidates::isPlaceholder(next.text);
    follow(next, line + (sample ? kSample : next.text) + ' ', depth + 1, above,
           ask);
  }
}

void CommandTreeExplorer::addNext(TreeWord& word,
                                  std::vector<Candidate> const& candidates,
                                  Words const& above) {
  std::size_t const count = std::min(candidates.size(), kMaxNext);
  for (std::size_t i = 0; i < count; ++i) {
    Candidate const& candidate = candidates[i];
    TreeWord next =
        named(words_, candidate.completion, firstLine(candidate.help));
    next.isReturn = Candidates::isReturn(candidate);
    TreeWord const* const known = next.isReturn ? nullptr : find(above, next);
    if (known == nullptr) {
      word.next.push_back(next);
      ++words_;
    } else {
      word.again.push_back(named(known->number, known->text, known->help));
    }
  }
  if (count < candidates.size()) {
    word.leftOut = "and " + std::to_string(candidates.size() - count) + " more";
  }
}

}  // namespace QorCliEngine
