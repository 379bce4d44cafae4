#ifndef QOR_UNIT_RECORDING_CONTEXT_H
#define QOR_UNIT_RECORDING_CONTEXT_H

#include <string>
#include <vector>

#include "CliApiContext5.h"
#include "QorCliApiContext.h"

namespace QorUnit {

// A context record with all functions, each of which writes down its name and
// its arguments, separated by blanks, and returns `result`.
struct RecordingRecord : QorCliApiContext_5 {
  RecordingRecord();

  std::vector<std::string> calls;
  QorReturnT result = 0;
};

// A session in mode 2 without a cursor.
struct RecordingContext {
  RecordingRecord record;
  QorCliUtilities::CliApiContext5 context{&record};
};

}  // namespace QorUnit

#endif
