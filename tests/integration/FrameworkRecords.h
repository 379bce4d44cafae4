#ifndef QOR_TEST_FRAMEWORK_RECORDS_H
#define QOR_TEST_FRAMEWORK_RECORDS_H

#include <cstdint>

// The framework's records, declared a second time, as by a framework compiled
// separately. Nothing comes from the plug-in's headers, so that a moved member
// is noticed.

namespace qor_test {

extern "C" {

struct InterfaceIdentity {
  char const* componentName;
  char const* interfaceName;
  char const* interfaceVersion;
};

struct ContextRecord {
  std::uint32_t sessionId;
  unsigned long transactionHandle;
  char const* loginName;
  std::uint32_t mode;
  char const* cursor;
  char const* prompt;
  std::uint32_t timeout;
  std::uint32_t spare;
  std::uint64_t authorisationHandle;
  std::int32_t (*setCursor)(ContextRecord*, char const* cursor);
  std::int32_t (*setPrompt)(ContextRecord*, char const* prompt);
  std::int32_t (*setOutput)(ContextRecord*, unsigned index, unsigned count,
                            unsigned actionId, char const* text);
  std::int32_t (*setAutocompleteResult)(ContextRecord*, unsigned index,
                                        unsigned count, unsigned actionId,
                                        unsigned token, char const* completion,
                                        char const* help);
  std::int32_t (*sessionShutdown)(ContextRecord*, unsigned reason);
  std::uint8_t exclusiveUse;
  std::int32_t (*setSortableAutocompleteResult)(
      ContextRecord*, unsigned index, unsigned count, unsigned actionId,
      unsigned token, char const* completion, char const* help,
      unsigned sortOrder, char const* sortKey);
  std::int32_t lastStatus;
  std::uint32_t lock;
  std::int32_t (*setLock)(ContextRecord*, unsigned lock);
};

struct PipeCommandInterface {
  InterfaceIdentity identity;
  std::int32_t (*useModule)(ContextRecord*, unsigned action, unsigned actionId,
                            unsigned* commandMatchCount,
                            char const* commandLine, char const* input);
  char const* (*moduleName)();
  std::int32_t (*inputComplete)(ContextRecord*, unsigned actionId);
};

struct ComponentRecord {
  InterfaceIdentity identity;
  PipeCommandInterface const* const* providedInterfaces;
  InterfaceIdentity const* const* dependencies;
  std::int32_t (*start)(unsigned reason);
  std::int32_t (*stop)(unsigned reason);
};

using UnusedOperation = void (*)();

struct PortalRecord {
  UnusedOperation unused0;
  UnusedOperation unused1;
  UnusedOperation unused2;
  std::int32_t (*getInterface)(char const* componentName,
                               char const* interfaceName,
                               char const* interfaceVersion, void** interface);
  UnusedOperation unused4;
  std::int32_t (*registerComponent)(ComponentRecord* component);
  std::int32_t (*unregisterComponent)(ComponentRecord* component);
};

struct PortalAccessorRecord {
  PortalRecord* (*getPortal)(char const* version);
};

using InitFunction = std::int32_t (*)(PortalAccessorRecord* accessor,
                                      char const* configuration);
using TerminateFunction = void (*)();

}  // extern "C"

// Actions of PipeCommandInterface::useModule.
constexpr unsigned kExecute = 2;
constexpr unsigned kComplete = 3;
constexpr unsigned kHelp = 4;

}  // namespace qor_test

#endif
