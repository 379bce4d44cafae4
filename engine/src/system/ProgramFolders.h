#ifndef QOR_CLI_ENGINE_PROGRAM_FOLDERS_H
#define QOR_CLI_ENGINE_PROGRAM_FOLDERS_H

#include <string>
#include <vector>

namespace QorCliEngine {

// The folders in which programs are looked for: those of the environment
// variable PATH, in its order.
std::vector<std::string> programFolders();

}  // namespace QorCliEngine

#endif
