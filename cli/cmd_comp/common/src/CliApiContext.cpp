#include "CliApiContext.h"

#include "OperationTrace.h"

namespace QorCliUtilities {

QorCliApiContext_5 const* CliApiContext::get_v5() const {
  return OperationTrace().exitWith<QorCliApiContext_5 const>(nullptr);
}

QorCliApiContext_5* CliApiContext::get_v5() {
  return OperationTrace().exitWith<QorCliApiContext_5>(nullptr);
}

QorCliApiContext_6 const* CliApiContext::get_v6() const {
  return OperationTrace().exitWith<QorCliApiContext_6 const>(nullptr);
}

QorCliApiContext_6* CliApiContext::get_v6() {
  return OperationTrace().exitWith<QorCliApiContext_6>(nullptr);
}

QorCliApiContext_7 const* CliApiContext::get_v7() const {
  return OperationTrace().exitWith<QorCliApiContext_7 const>(nullptr);
}

QorCliApiContext_7* CliApiContext::get_v7() {
  return OperationTrace().exitWith<QorCliApiContext_7>(nullptr);
}

QorCliApiContext_8 const* CliApiContext::get_v8() const {
  return OperationTrace().exitWith<QorCliApiContext_8 const>(nullptr);
}

QorCliApiContext_8* CliApiContext::get_v8() {
  return OperationTrace().exitWith<QorCliApiContext_8>(nullptr);
}

}  // namespace QorCliUtilities
