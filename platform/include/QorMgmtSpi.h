#ifndef QOR_MGMT_SPI_H
#define QOR_MGMT_SPI_H

#include <cstddef>

#include "QorTypes.h"

// The records that plug-ins and the framework exchange.
//
// All are plain records of pointers in a fixed order. Texts are NUL-terminated
// and owned by whoever filled the record. The framework calls a plug-in's entry
// points and its component's start and stop one at a time; the functions of the
// accessor and the portal are called from within them.

extern "C" {

// Identifies an interface and its version. In a dependency, a null member means
// "any"; in the identity of an existing interface, no member is null.
struct QorMgmtSpiInterface_1 {
  char const* componentName;
  char const* interfaceName;
  char const* interfaceVersion;  // a decimal number, "1"
};

// A component. The record must stay valid and unchanged while it is registered.
struct QorMgmtSpiComponent_1 {
  QorMgmtSpiInterface_1
      identity;  // interface "QorMgmtSpiComponent", version "1"
  // Null-terminated. Each entry is the identity at the start of a larger record
  // of functions, whose layout the interface name and version imply.
  QorMgmtSpiInterface_1 const* const* providedInterfaces;
  // Null-terminated: interfaces required before the component can start.
  QorMgmtSpiInterface_1 const* const* dependencies;
  // Start and stop the component, for the framework's reason. Return 0 on
  // success. Neither is null.
  QorReturnT (*start)(QorStateChangeReason reason);
  QorReturnT (*stop)(QorStateChangeReason reason);
};

// An operation of the portal that is not used here.
using QorMgmtSpiOpaque = void (*)();

// The framework's services for plug-ins. Valid until the plug-in is terminated.
struct QorMgmtSpiInterfacePortal {
  QorMgmtSpiOpaque reserved0;
  QorMgmtSpiOpaque reserved1;
  QorMgmtSpiOpaque reserved2;
  // Finds an interface; a null name or version means "any". Stores the function
  // record in `*interface` and returns 0, or returns another status. The record
  // belongs to the component that provides it and is valid until that component
  // is unregistered.
  QorReturnT (*getInterface)(char const* componentName,
                             char const* interfaceName,
                             char const* interfaceVersion, void** interface);
  QorMgmtSpiOpaque reserved4;
  // Registers a component, which must not be null. Returns 0 on success.
  QorReturnT (*registerComponent)(QorMgmtSpiComponent_1* component);
  // Unregisters a registered component. Returns 0 on success.
  QorReturnT (*unregisterComponent)(QorMgmtSpiComponent_1* component);
};

// The accessor with which a plug-in fetches the portal.
struct QorMgmtSpiInterfacePortalAccessor {
  // Returns the portal of the given version ("1"), or null if there is none.
  // The framework owns the portal.
  QorMgmtSpiInterfacePortal* (*getPortal)(char const* version);
};

// The two functions that a plug-in exports, as "qorLCMinit" and
// "qorLCMterminate". The accessor is valid during the call and not null; the
// configuration may be null. Initialisation returns 0 on success.
using QorLCMinitFunction = QorReturnT (*)(
    QorMgmtSpiInterfacePortalAccessor* accessor, char const* configuration);
using QorLCMterminateFunction = void (*)();

}  // extern "C"

static_assert(sizeof(QorMgmtSpiInterface_1) == 3 * sizeof(void*));
static_assert(sizeof(QorMgmtSpiComponent_1) == 7 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiComponent_1, providedInterfaces) ==
              3 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiComponent_1, dependencies) ==
              4 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiComponent_1, start) == 5 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiComponent_1, stop) == 6 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiInterfacePortal, getInterface) ==
              3 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiInterfacePortal, registerComponent) ==
              5 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiInterfacePortal, unregisterComponent) ==
              6 * sizeof(void*));
static_assert(offsetof(QorMgmtSpiInterfacePortalAccessor, getPortal) == 0);

#endif
