#include "QuietPortal.h"

namespace qor_test {
namespace {

ComponentRecord* registered = nullptr;

extern "C" {

std::int32_t remember(ComponentRecord* component) {
  registered = component;
  return 0;
}

std::int32_t accept(ComponentRecord*) { return 0; }

PortalRecord* quietPortal(char const*) {
  static PortalRecord portal{nullptr, nullptr,  nullptr, nullptr,
                             nullptr, remember, accept};
  return &portal;
}

}  // extern "C"

}  // namespace

PortalAccessorRecord* QuietPortal::accessor() {
  static PortalAccessorRecord theAccessor{quietPortal};
  return &theAccessor;
}

PipeCommandInterface const& QuietPortal::commands() {
  return *registered->providedInterfaces[0];
}

}  // namespace qor_test
