#ifndef QOR_CLI_ENGINE_LINE_INSTANCES_H
#define QOR_CLI_ENGINE_LINE_INSTANCES_H

#include <cstddef>
#include <string>
#include <vector>

#include "plugins/PipeComponent.h"
#include "plugins/Plugins.h"
#include "system/EngineErrors.h"

namespace QorCliEngine {

// The plug-ins as the stages of one command line share them out: no two stages
// have the same instance.
//
// A component may forget the state of all its actions when the input of one is
// complete. In a line, one stage's input is complete while later ones still
// have text to come. One thread.
class LineInstances {
 public:
  // `plugins` is not owned.
  explicit LineInstances(Plugins& plugins)
      : plugins_(plugins), taken_(plugins.size()), failures_(plugins.size()) {}

  // How many plug-ins there are, in the order in which they are asked.
  std::size_t plugins() const { return taken_.size(); }

  // The pipe commands of a plug-in, by an instance that serves no stage yet.
  // None when one is needed that cannot be loaded, which is tried once a line.
  std::vector<PipeComponent> unused(std::size_t plugin) {
    if (!failures_[plugin].empty()) return {};
    try {
      return plugins_.instance(plugin, taken_[plugin]).pipeComponents();
    } catch (PluginFailure const& failure) {
      failures_[plugin] = failure.what();
      return {};
    }
  }

  // Why the first plug-in that has no unused instance has none; empty when they
  // all have.
  std::string failure() const {
    for (std::string const& failure : failures_) {
      if (!failure.empty()) return failure;
    }
    return "";
  }

  // Says that what unused() returns serves a stage from now on.
  void take(std::size_t plugin) { ++taken_[plugin]; }

 private:
  Plugins& plugins_;
  std::vector<std::size_t> taken_;     // instances of each plug-in
  std::vector<std::string> failures_;  // of each plug-in; mostly empty
};

}  // namespace QorCliEngine

#endif
