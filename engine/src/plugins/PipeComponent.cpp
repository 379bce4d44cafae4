#include "plugins/PipeComponent.h"

#include <stdexcept>

namespace QorCliEngine {

QorReturnT PipeComponent::use(CallContext& context, PipeRequest const& request,
                              unsigned& matches) const {
  return guarded(context, [&] {
    return functions_->useModule(context.record(), request.action,
                                 request.actionId, &matches,
                                 request.commandLine.c_str(), request.input);
  });
}

QorReturnT PipeComponent::inputComplete(CallContext& context,
                                        unsigned actionId) const {
  return guarded(context, [&] {
    return functions_->inputComplete(context.record(), actionId);
  });
}

QorReturnT PipeComponent::guarded(
    CallContext& context, std::function<QorReturnT()> const& call) const {
  QorReturnT status = 0;
  try {
    status = call();
  } catch (std::exception const& exception) {
    throw std::runtime_error(
        std::string("an exception came out of the component: ") +
        exception.what());
  } catch (...) {
    throw std::runtime_error(
        "an exception of an unknown type came out of the component");
  }
  context.rethrow();
  return status;
}

}  // namespace QorCliEngine
