#include "commands/PathNode.h"

#include <Poco/String.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "commands/CommandLine.h"
#include "output/Candidates.h"

namespace QorCliEngine {
namespace {

namespace fs = std::filesystem;

// The names in the folder that `typed` is about, sorted.
std::vector<fs::path> namesBeginningWith(fs::path const& typed) {
  std::string const begin = typed.filename().string();
  fs::path const folder = typed.parent_path();
  std::vector<fs::path> names;
  std::error_code error;
  fs::directory_iterator entries(folder.empty() ? "." : folder, error);
  for (; !error && entries != fs::directory_iterator();
       entries.increment(error)) {
    std::string const name = entries->path().filename().string();
    bool const hidden = name.front() == '.' && begin.empty();
    if (!hidden && name.rfind(begin, 0) == 0) names.emplace_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

// Outside quotes the line would be cut at these or take the path for a pattern,
// blanks around punctuation would be lost with what they separate, and a
// placeholder is never typed.
bool needsQuotes(std::string const& path) {
  constexpr char kCutting[] = " \t\n\v\f\r|\"*?[";
  constexpr std::string_view kPunctuation = "=,[]";
  auto const isPunctuation = [&](char c) {
    return kPunctuation.find(c) != std::string_view::npos;
  };
  return path.find_first_of(kCutting) != std::string::npos ||
         isPunctuation(path.front()) || isPunctuation(path.back()) ||
         Candidates::isPlaceholder(path);
}

}  // namespace

std::string PathNode::pathIn(std::string const& word) {
  std::string path = CommandLine::unquoted(word);
  char const* const home = std::getenv("HOME");
  bool const inHome = path.rfind("~/", 0) == 0 && home != nullptr;
  return inHome ? home + path.substr(1) : path;
}

std::string PathNode::meant(std::string const& word) const {
  return pathIn(word);
}

std::string PathNode::nameOf(std::string const& text) {
  std::string const path = CommandLine::unquoted(text);
  std::size_t const last = path.size() < 2 ? 0 : path.size() - 2;
  std::size_t const slash = path.rfind('/', last);
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string PathNode::asTyped(std::string const& path, bool quoted, bool ends) {
  if (!quoted && !needsQuotes(path)) return path;
  return '"' + Poco::replace(path, "\"", "\\\"") + (ends ? "\"" : "");
}

void PathNode::offerWords(
    std::size_t, std::string const& word,
    std::vector<QorCliUtilities::AutoCompleteResult>& results) const {
  bool const quoted = word.rfind('"', 0) == 0;
  fs::path const typed = CommandLine::unquoted(word);
  fs::path const path = meant(word);
  for (fs::path const& name : namesBeginningWith(path)) {
    std::error_code error;
    bool const folder = fs::is_directory(path.parent_path() / name, error);
    std::string const end = folder ? "/" : "";
    std::string const text = (typed.parent_path() / name).string() + end;
    std::string const whole = (path.parent_path() / name).string() + end;
    std::string offered = asTyped(text, quoted, !folder);
    // Quotes may take the meaning of its "~" away.
    if (fs::path(meant(offered)) != fs::path(whole)) {
      offered = asTyped(whole, quoted, !folder);
    }
    addPossibility({QOR_CLI_SORT_COMMAND, text}, offered, "",
                   QOR_CLI_TOKEN_WORD, results);
  }
}

}  // namespace QorCliEngine
