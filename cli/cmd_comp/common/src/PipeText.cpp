#include "PipeText.h"

#include <cstdio>
#include <exception>
#include <utility>

#include "Error.h"

namespace QorCliUtilities {
namespace {

constexpr std::size_t kErrorBufferSize = 2000;  // bytes, the final NUL included

}  // namespace

std::string takeText(std::vector<std::string>& strings) {
  std::string text;
  if (!strings.empty()) text = std::move(strings.front());
  for (std::size_t i = 1; i < strings.size(); ++i) text += strings[i];
  strings.clear();
  return text;
}

std::string errorLine(std::string const& text) {
  char buffer[kErrorBufferSize];
  std::snprintf(buffer, sizeof buffer, "ERROR: %s", text.c_str());
  return buffer;
}

std::string reasonOfException() {
  try {
    throw;
  } catch (Error const& error) {
    return error.what();
  } catch (Poco::Exception const& exception) {
    return exception.displayText();
  } catch (std::exception const& exception) {
    return exception.what();
  } catch (...) {
    return "Exception of an unknown type";
  }
}

}  // namespace QorCliUtilities
