#ifndef QOR_CLI_PIPE_COMPONENT_RECORD_H
#define QOR_CLI_PIPE_COMPONENT_RECORD_H

#include "CliApiContext5.h"
#include "QorCliPipeCommand.h"
#include "QorMgmtSpi.h"

namespace QorCliUtilities {

// The record that registers a pipe command component, and the records that it
// points to: its pipe command interface, and its dependencies, the framework's
// log (version 1) and trace (any version).
//
// `Component` is the component's class. It is a Qor::Singleton, because the
// records hold plain functions. Each calls the corresponding member,
//
//   QorReturnT start(QorStateChangeReason reason);
//   QorReturnT stop(QorStateChangeReason reason);
//   QorReturnT useModule(CliApiContext& context, QorCliActionEnum_2T action,
//                        unsigned actionId, unsigned* commandMatchCount,
//                        char const* commandLine, char const* input);
//   static char const* moduleName();  // static text
//   QorReturnT inputComplete(CliApiContext& context, unsigned actionId);
//
// with a context created for the call. QorMgmtSpi.h and QorCliPipeCommand.h
// specify them. If the framework passes a null record, the context converts to
// false.
template <class Component>
class PipeComponentRecord {
 public:
  // `componentName` is not copied and must outlive the record.
  explicit PipeComponentRecord(char const* componentName)
      : component_{{componentName, "QorMgmtSpiComponent", "1"},
                   providedInterfaces_,
                   dependencies_,
                   start,
                   stop},
        pipeCommands_{{componentName, "QorCliApiPipeCommandComponent", "1"},
                      useModule,
                      Component::moduleName,
                      inputComplete} {}
  PipeComponentRecord(PipeComponentRecord const&) = delete;
  PipeComponentRecord& operator=(PipeComponentRecord const&) = delete;

  // The record to register. Valid and constant for the lifetime of this object.
  QorMgmtSpiComponent_1* get() { return &component_; }

 private:
  static QorReturnT start(QorStateChangeReason reason) {
    return Component::instance().start(reason);
  }

  static QorReturnT stop(QorStateChangeReason reason) {
    return Component::instance().stop(reason);
  }

  static QorReturnT useModule(QorCliApiContext_5* record, unsigned action,
                              unsigned actionId, unsigned* commandMatchCount,
                              char const* commandLine, char const* input) {
    CliApiContext5 context(record);
    return Component::instance().useModule(context, QorCliActionEnum_2T{action},
                                           actionId, commandMatchCount,
                                           commandLine, input);
  }

  static QorReturnT inputComplete(QorCliApiContext_5* record,
                                  unsigned actionId) {
    CliApiContext5 context(record);
    return Component::instance().inputComplete(context, actionId);
  }

  QorMgmtSpiComponent_1 component_;
  QorCliApiPipeCommandComponent_1 pipeCommands_;
  QorMgmtSpiInterface_1 logDependency_{nullptr, "QorMwSpiLog", "1"};
  // Null: any version.
  QorMgmtSpiInterface_1 traceDependency_{nullptr, "TavMwSpiTrace", nullptr};
  // Null-terminated.
  QorMgmtSpiInterface_1 const* providedInterfaces_[2] = {
      &pipeCommands_.identity, nullptr};
  QorMgmtSpiInterface_1 const* dependencies_[3] = {&logDependency_,
                                                   &traceDependency_, nullptr};
};

}  // namespace QorCliUtilities

#endif
