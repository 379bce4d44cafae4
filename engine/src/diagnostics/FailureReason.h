#ifndef QOR_CLI_ENGINE_FAILURE_REASON_H
#define QOR_CLI_ENGINE_FAILURE_REASON_H

#include <cstddef>
#include <optional>
#include <string>

namespace QorCliEngine {

// Why a call failed, as the component has logged it.
struct FailureReason {
  // A place in a text that the operator typed.
  struct Place {
    std::string text;    // as the sentence quotes it
    std::size_t offset;  // in bytes, from 0

    // The text with the bytes that are written as \xNN, two capital
    // hexadecimal digits, as a log writes what is not ASCII.
    std::string inBytes() const;
  };

  // Takes the last error out of log records, if there is one.
  static std::optional<FailureReason> takeFrom(std::string& records);

  std::string sentence;  // without a full stop
  // What the sentence quotes, and the offset that it ends with, if it does.
  std::optional<Place> place;
};

}  // namespace QorCliEngine

#endif
