#include "commands/ProgramNode.h"

#include <unistd.h>

#include <filesystem>
#include <set>
#include <system_error>

#include "commands/CommandLine.h"
#include "system/ProgramFolders.h"

namespace QorCliEngine {
namespace {

namespace fs = std::filesystem;

bool isProgram(fs::path const& path) {
  std::error_code error;
  return !fs::is_directory(path, error) && ::access(path.c_str(), X_OK) == 0;
}

std::set<std::string> programsBeginningWith(std::string const& begin) {
  std::set<std::string> names;
  for (std::string const& folder : programFolders()) {
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    for (; !error && entries != fs::directory_iterator();
         entries.increment(error)) {
      std::string const name = entries->path().filename().string();
      bool const fits = name.rfind(begin, 0) == 0;
      if (fits && isProgram(entries->path())) names.insert(name);
    }
  }
  return names;
}

}  // namespace

std::string ProgramNode::argumentIn(std::string const& word) {
  bool const quoted = word.rfind('"', 0) == 0;
  return quoted ? CommandLine::unquoted(word) : pathIn(word);
}

std::string ProgramNode::meant(std::string const& word) const {
  return argumentIn(word);
}

void ProgramNode::offerWords(
    std::size_t index, std::string const& word,
    std::vector<QorCliUtilities::AutoCompleteResult>& results) const {
  std::string const begin = CommandLine::unquoted(word);
  bool const isPath = index != 0 || begin.find('/') != std::string::npos;
  if (isPath) return PathNode::offerWords(index, word, results);
  bool const quoted = word.rfind('"', 0) == 0;
  for (std::string const& name : programsBeginningWith(begin)) {
    addPossibility({QOR_CLI_SORT_COMMAND, name}, asTyped(name, quoted, true),
                   "", QOR_CLI_TOKEN_WORD, results);
  }
}

}  // namespace QorCliEngine
