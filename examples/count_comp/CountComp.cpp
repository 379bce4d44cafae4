#include <FrameworkPortal.h>
#include <LibraryEntry.h>
#include <LinesOutput.h>
#include <PipeAction.h>
#include <PipeComponentRecord.h>
#include <QorSingleton.h>

#include "CountCommand.h"

using namespace QorCliUtilities;

namespace {

// The component: what the engine calls.
class CountComp : public Qor::Singleton<CountComp> {
 public:
  CountComp() { command_.addTo(tree_); }

  QorMgmtSpiComponent_1* record() { return record_.get(); }

  QorReturnT start(QorStateChangeReason) { return 0; }
  QorReturnT stop(QorStateChangeReason) { return 0; }
  static char const* moduleName() { return "CountCommands"; }

  QorReturnT useModule(CliApiContext& context, QorCliActionEnum_2T action,
                       unsigned actionId, unsigned* commandMatchCount,
                       char const* commandLine, char const* input) {
    return answerPipeAction(
        tree_, context,
        {action, actionId, commandMatchCount, commandLine, input});
  }

  QorReturnT inputComplete(CliApiContext& context, unsigned actionId) {
    if (!canAnswer(context)) return -1;
    LinesOutput output;
    command_.complete(actionId, output);
    emitOutput(context, actionId, output.getOutput(), 0);
    return 0;
  }

 private:
  CountCommand command_;
  AutoCompleteTree tree_;
  PipeComponentRecord<CountComp> record_{"CountComp"};
};

FrameworkPortal portal;

}  // namespace

QorReturnT qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor,
                      char const*) {
  QorReturnT const status = portal.fetch(accessor);
  if (status != 0) return status;
  return portal.registerComponent(CountComp::instance().record());
}

void qorLCMterminate() {
  portal.unregisterComponent(CountComp::instance().record());
}
