#include "PathNode.h"

#include <Poco/String.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "CommandLine.h"

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

// Blanks around these would be lost outside quotes, and the line would be cut.
bool needsQuotes(std::string const& path) {
  return path.find_first_of(" \t|\"") != std::string::npos;
}

}  // namespace

void PathNode::offerWords(
    std::string const& word,
    std::vector<QorCliUtilities::AutoCompleteResult>& results) const {
  bool const quoted = word.rfind('"', 0) == 0;
  fs::path const typed = CommandLine::unquoted(word);
  for (fs::path const& name : namesBeginningWith(typed)) {
    fs::path const path = typed.parent_path() / name;
    std::string text = path.string();
    std::error_code error;
    if (fs::is_directory(path, error)) text += '/';
    if (quoted || needsQuotes(text)) {
      text = '"' + Poco::replace(text, "\"", "\\\"");
    }
    addPossibility({QOR_CLI_SORT_COMMAND, text}, text, "", QOR_CLI_TOKEN_WORD,
                   results);
  }
}

}  // namespace QorCliEngine
