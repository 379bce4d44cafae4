#ifndef QOR_CLI_ENGINE_PIPE_COMPONENT_H
#define QOR_CLI_ENGINE_PIPE_COMPONENT_H

#include <functional>
#include <string>

#include "QorCliPipeCommand.h"
#include "calls/CallContext.h"

namespace QorCliEngine {

// What the engine asks a pipe command component to do.
struct PipeRequest {
  QorCliActionEnum_2T action;
  unsigned actionId;
  std::string const& commandLine;
  char const* input;  // whole lines
};

// A loaded component that has pipe commands, as the engine calls it.
//
// Whatever a component throws arrives as a std::runtime_error whose what() says
// so in plain words; so does a failure of the engine's own functions while the
// component called them. Valid while the plug-in is loaded. One call at a time.
class PipeComponent {
 public:
  // `functions` belongs to the component; its functions are not null.
  explicit PipeComponent(QorCliApiPipeCommandComponent_1 const& functions)
      : functions_(&functions) {}

  // The component's name. Belongs to the component.
  char const* name() const { return functions_->identity.componentName; }

  // Returns the component's status; raises `matches` for a command that was
  // run.
  QorReturnT use(CallContext& context, PipeRequest const& request,
                 unsigned& matches) const;

  QorReturnT inputComplete(CallContext& context, unsigned actionId) const;

 private:
  QorReturnT guarded(CallContext& context,
                     std::function<QorReturnT()> const& call) const;

  QorCliApiPipeCommandComponent_1 const* functions_;
};

}  // namespace QorCliEngine

#endif
