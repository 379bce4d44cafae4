#ifndef QOR_CLI_ENGINE_OPTIONS_H
#define QOR_CLI_ENGINE_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace QorCliEngine {

// The engine's exit statuses.
constexpr int kExitSuccess = 0;
constexpr int kExitFailedCommand = 1;
constexpr int kExitUnusable = 2;  // wrong usage, or no usable plug-in

// What the engine was asked to do, by its arguments.
struct Options {
  std::vector<std::string> plugins;
  std::vector<std::string> lines;
  std::optional<std::string> lineToComplete;
  std::optional<std::string> lineToHelp;
  std::uint32_t mode = 0;
  std::string cursor;
  std::string loginName;
  bool noPager = false;
  bool raw = false;
  bool trace = false;
  bool timing = false;

  // Reads the arguments into this object. Returns the exit status when the
  // engine is to end at once: after --help or --version, or wrong usage, which
  // is then explained on standard error.
  std::optional<int> parse(int argc, char const* const* argv);
};

}  // namespace QorCliEngine

#endif
