#include "Error.h"

#include <cstdio>

#include "QorReturn.h"

namespace QorCliUtilities {
namespace {

constexpr std::size_t kSuffixBufferSize =
    2000;  // bytes, the final NUL included

}  // namespace

Error::Error(std::string const& message, int code)
    : Poco::Exception(message, code) {
  setMsgString();
}

char const* Error::name() const noexcept { return msgString.c_str(); }

char const* Error::what() const noexcept { return name(); }

void Error::setMsgString() {
  msgString = message();
  if (code() == 0) return;
  char suffix[kSuffixBufferSize];
  std::snprintf(suffix, sizeof suffix, ", rc = %d, error:%s", code(),
                Qor::QorReturn::strerror(code()));
  msgString += suffix;
}

}  // namespace QorCliUtilities
