#ifndef QOR_FUZZ_SESSION_H
#define QOR_FUZZ_SESSION_H

#include <string>
#include <vector>

#include "QorCliApiContext.h"
#include "QorCliPipeCommand.h"

namespace qor_fuzz {

// A minimal framework: registers the component once, and provides its pipe
// command interface and a context record that collects output.
class FuzzSession {
 public:
  FuzzSession();

  QorCliApiPipeCommandComponent_1 const& commands() const { return *commands_; }
  QorCliApiContext_5* record() { return &call_.record; }

  // The component's output since the last call of takeOutput.
  std::vector<std::string> takeOutput();
  // The number of candidates offered since construction.
  unsigned candidates() const { return call_.candidates; }

 private:
  struct Call {
    QorCliApiContext_5
        record;  // first, so that the record's address is the call's
    std::vector<std::string> output;
    unsigned candidates;
  };

  static QorReturnT keepOutput(QorCliApiContext_5* record, unsigned, unsigned,
                               unsigned, char const* text);
  static QorReturnT countCandidate(QorCliApiContext_5* record, unsigned,
                                   unsigned, unsigned, unsigned,
                                   char const* completion, char const* help,
                                   unsigned, char const* key);

  Call call_{};
  QorCliApiPipeCommandComponent_1 const* commands_;
};

}  // namespace qor_fuzz

#endif
