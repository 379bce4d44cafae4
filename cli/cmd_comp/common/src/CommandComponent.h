#ifndef QOR_CLI_COMMAND_COMPONENT_H
#define QOR_CLI_COMMAND_COMPONENT_H

#include "CommandSet.h"
#include "LibraryEntry.h"
#include "PipeComponentRecord.h"
#include "QorSingleton.h"

namespace QorCliUtilities {

// A component that consists of pipe commands, and a plug-in that consists of
// the component:
//
//   class Head : public LineProcessor { ... };
//   class Unique : public LineProcessor { ... };
//
//   struct TextComp : CommandComponent<TextComp, Head, Unique> {
//     static constexpr char kName[] = "TextComp";
//   };
//   QOR_CLI_ENTRY_POINTS(TextComp)
//
// Each of `Processors` is a class for makePipeCommand() (PipeCommand.h).
// `kName` names the component and its command module; it must be unique among
// all loaded components.
//
// No call throws. Exceptions of commands are reported to the operator; others
// are written to the system log at severity 4, and the call returns -1. One
// call at a time.
template <class Component, class... Processors>
class CommandComponent : public Qor::Singleton<Component> {
 public:
  CommandComponent() : record_(Component::kName) {
    (commands_.add(makePipeCommand<Processors>()), ...);
  }

  // The life cycle of the plug-in, as in LibraryEntry.h.
  static QorReturnT initialise(QorMgmtSpiInterfacePortalAccessor* accessor) {
    return answerWithoutThrowing([accessor] {
      CommandComponent& self = Component::instance();
      return self.commands_.initialise(accessor, self.record_.get());
    });
  }
  static void terminate() {
    answerWithoutThrowing([] {
      CommandComponent& self = Component::instance();
      return self.commands_.terminate(self.record_.get());
    });
  }

  // The members that PipeComponentRecord calls.
  static char const* moduleName() { return Component::kName; }
  QorReturnT start(QorStateChangeReason) { return 0; }
  QorReturnT stop(QorStateChangeReason) { return commands_.stop(); }
  QorReturnT useModule(CliApiContext& context, QorCliActionEnum_2T action,
                       unsigned actionId, unsigned* commandMatchCount,
                       char const* commandLine, char const* input) {
    return commands_.answer(
        context, {action, actionId, commandMatchCount, commandLine, input});
  }
  QorReturnT inputComplete(CliApiContext& context, unsigned actionId) {
    return commands_.complete(context, actionId);
  }

 private:
  CommandSet commands_;
  PipeComponentRecord<Component> record_;
};

}  // namespace QorCliUtilities

// Defines the two entry points of a plug-in that consists of `Component`, a
// CommandComponent. Use it once in a plug-in, outside any namespace.
#define QOR_CLI_ENTRY_POINTS(Component)                              \
  QorReturnT qorLCMinit(QorMgmtSpiInterfacePortalAccessor* accessor, \
                        char const*) {                               \
    return Component::initialise(accessor);                          \
  }                                                                  \
  void qorLCMterminate() { Component::terminate(); }

#endif
