#include "FuzzSession.h"

#include <cstdlib>
#include <utility>

#include "LibraryEntry.h"

namespace qor_fuzz {
namespace {

QorMgmtSpiComponent_1* registered = nullptr;

QorReturnT registerComponent(QorMgmtSpiComponent_1* component) {
  registered = component;
  return 0;
}

QorMgmtSpiInterfacePortal* portal(char const*) {
  static QorMgmtSpiInterfacePortal thePortal{};
  thePortal.registerComponent = registerComponent;
  return &thePortal;
}

QorMgmtSpiComponent_1 const& component() {
  if (registered == nullptr) {
    QorMgmtSpiInterfacePortalAccessor accessor{portal};
    if (qorLCMinit(&accessor, nullptr) != 0) std::abort();
  }
  return *registered;
}

QorReturnT acceptPrompt(QorCliApiContext_5*, char const*) { return 0; }

}  // namespace

FuzzSession::FuzzSession()
    : commands_(reinterpret_cast<QorCliApiPipeCommandComponent_1 const*>(
          component().providedInterfaces[0])) {
  call_.record.setPrompt = acceptPrompt;
  call_.record.setOutput = keepOutput;
  call_.record.setSortableAutocompleteResult = countCandidate;
}

std::vector<std::string> FuzzSession::takeOutput() {
  return std::exchange(call_.output, {});
}

QorReturnT FuzzSession::keepOutput(QorCliApiContext_5* record, unsigned,
                                   unsigned, unsigned, char const* text) {
  reinterpret_cast<Call*>(record)->output.emplace_back(text);
  return 0;
}

QorReturnT FuzzSession::countCandidate(QorCliApiContext_5* record, unsigned,
                                       unsigned, unsigned, unsigned,
                                       char const* completion, char const* help,
                                       unsigned, char const* key) {
  if (completion == nullptr || help == nullptr || key == nullptr) std::abort();
  ++reinterpret_cast<Call*>(record)->candidates;
  return 0;
}

}  // namespace qor_fuzz
