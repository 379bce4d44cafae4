#ifndef QOR_CLI_ENGINE_CANDIDATE_CONTEXT_H
#define QOR_CLI_ENGINE_CANDIDATE_CONTEXT_H

#include <vector>

#include "calls/CallContext.h"

namespace QorCliEngine {

// Collects the candidates that a component offers, in the order given.
class CandidateContext : public CallContext {
 public:
  // `candidates` is not owned and must outlive the context.
  CandidateContext(Session& session,
                   std::vector<QorCliUtilities::AutoCompleteResult>& candidates)
      : CallContext(session), candidates_(candidates) {}

 protected:
  void acceptCandidate(
      QorCliUtilities::AutoCompleteResult const& candidate) override {
    candidates_.push_back(candidate);
  }

 private:
  std::vector<QorCliUtilities::AutoCompleteResult>& candidates_;
};

}  // namespace QorCliEngine

#endif
