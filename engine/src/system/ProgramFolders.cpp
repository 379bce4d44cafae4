#include "system/ProgramFolders.h"

#include <Poco/StringTokenizer.h>

#include <cstdlib>

namespace QorCliEngine {

std::vector<std::string> programFolders() {
  std::vector<std::string> folders;
  char const* const path = std::getenv("PATH");
  for (std::string const& folder :
       Poco::StringTokenizer(path == nullptr ? "" : path, ":")) {
    folders.push_back(folder.empty() ? "." : folder);
  }
  return folders;
}

}  // namespace QorCliEngine
