#include "Portal.h"

namespace qor_test {
namespace {

Portal* current = nullptr;

extern "C" {

PortalRecord* getPortal(char const* version) {
  current->calls.push_back(std::string("getPortal ") + version);
  return &current->record;
}

std::int32_t getInterface(char const*, char const*, char const*, void**) {
  current->calls.emplace_back("getInterface");
  return -1;
}

std::int32_t registerComponent(ComponentRecord* component) {
  current->calls.emplace_back("register");
  current->registered = component;
  return current->registerResult;
}

std::int32_t unregisterComponent(ComponentRecord* component) {
  current->calls.emplace_back("unregister");
  current->unregistered = component;
  return current->unregisterResult;
}

}  // extern "C"

}  // namespace

Portal::Portal()
    : accessor{getPortal},
      record{nullptr,
             nullptr,
             nullptr,
             getInterface,
             nullptr,
             registerComponent,
             unregisterComponent} {
  current = this;
}

Portal::~Portal() { current = nullptr; }

}  // namespace qor_test
