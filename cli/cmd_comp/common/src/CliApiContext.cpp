#include "CliApiContext.h"

#include "OperationTrace.h"

namespace QorCliUtilities {

QorCliApiContext_5 const* CliApiContext::get_v5() const {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

QorCliApiContext_5* CliApiContext::get_v5() {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

QorCliApiContext_6 const* CliApiContext::get_v6() const {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

QorCliApiContext_6* CliApiContext::get_v6() {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

QorCliApiContext_7 const* CliApiContext::get_v7() const {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

QorCliApiContext_7* CliApiContext::get_v7() {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

QorCliApiContext_8 const* CliApiContext::get_v8() const {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

QorCliApiContext_8* CliApiContext::get_v8() {
  OperationTrace const trace;
  trace.exit();
  return nullptr;
}

}  // namespace QorCliUtilities
