#ifndef QOR_TEST_SESSION_H
#define QOR_TEST_SESSION_H

#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "FrameworkRecords.h"

namespace qor_test {

// One call of the context's setOutput.
struct OutputCall {
  unsigned index;
  unsigned count;
  unsigned actionId;
  std::string text;
};

bool operator==(OutputCall const& a, OutputCall const& b);
std::ostream& operator<<(std::ostream& out, OutputCall const& call);

// One call of the context's setSortableAutocompleteResult.
struct CandidateCall {
  unsigned index;
  unsigned count;
  unsigned actionId;
  unsigned token;
  std::string completion;
  std::string help;
  unsigned sortOrder;
  std::string sortKey;
};

bool operator==(CandidateCall const& a, CandidateCall const& b);
std::ostream& operator<<(std::ostream& out, CandidateCall const& call);

// A CLI session: a context record that records every call. Every function of
// the record is set and returns 0.
class Session {
 public:
  Session();
  Session(Session const&) = delete;
  Session& operator=(Session const&) = delete;

  // Clears the recorded calls.
  void clear();

  ContextRecord record;  // first, so that its address is the session's
  std::vector<OutputCall> outputs;
  std::vector<CandidateCall> candidates;
  std::vector<std::string> otherCalls;  // names of all other functions called
};

// The texts of `calls`, in order.
std::vector<std::string> textsOf(std::vector<OutputCall> const& calls);

}  // namespace qor_test

#endif
