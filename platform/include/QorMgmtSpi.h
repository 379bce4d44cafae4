#ifndef QOR_MGMT_SPI_H
#define QOR_MGMT_SPI_H

#include <cstddef>

#include "QorTypes.h"

// The records through which a plug-in and the framework find each other.
//
// All are plain records of pointers in a fixed order. Texts are NUL-terminated
// and stay the property of whoever filled the record. The framework calls a
// plug-in's entry points and its component's start and stop one at a time; the
// functions of accessor and portal are called from within them.

extern "C" {

// Names an interface and a version of it. In a dependency a null member means
// "any"; in the identity of something that exists no member is null.
struct QorMgmtSpiInterface_1 {
  char const* componentName;
  char const* interfaceName;
  char const* interfaceVersion;  // a decimal number, "1"
};

// A component, as it registers itself. The record must stay valid and unchanged
// from its registration until it is unregistered.
struct QorMgmtSpiComponent_1 {
  QorMgmtSpiInterface_1
      identity;  // interface "QorMgmtSpiComponent", version "1"
  // Null-terminated. Each entry is the identity at the start of a larger record
  // of functions, whose layout the interface name and version imply.
  QorMgmtSpiInterface_1 const* const* providedInterfaces;
  // Null-terminated: what must be there before the component can start.
  QorMgmtSpiInterface_1 const* const* dependencies;
  // Told that the component may begin, and that it has to end, each with the
  // framework's reason. 0 on success. Neither is null.
  QorReturnT (*start)(QorStateChangeReason reason);
  QorReturnT (*stop)(QorStateChangeReason reason);
};

// An operation of the portal that this library's world does not use.
using QorMgmtSpiOpaque = void (*)();

// The framework's services for plug-ins. Valid until the plug-in is terminated.
struct QorMgmtSpiInterfacePortal {
  QorMgmtSpiOpaque reserved0;
  QorMgmtSpiOpaque reserved1;
  QorMgmtSpiOpaque reserved2;
  // Finds an interface by name; a null name or version means "any". Stores the
  // record of functions in `*interface` and returns 0, or returns another code.
  // The record belongs to the component that provides it and is valid until
  // that is unregistered.
  QorReturnT (*getInterface)(char const* componentName,
                             char const* interfaceName,
                             char const* interfaceVersion, void** interface);
  QorMgmtSpiOpaque reserved4;
  // Makes a component known, which must not be null. 0 on success.
  QorReturnT (*registerComponent)(QorMgmtSpiComponent_1* component);
  // Takes a component back that was registered. 0 on success.
  QorReturnT (*unregisterComponent)(QorMgmtSpiComponent_1* component);
};

// What a plug-in is given to fetch the portal with.
struct QorMgmtSpiInterfacePortalAccessor {
  // Returns the portal of a version ("1"), or null when there is none. The
  // portal belongs to the framework.
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
