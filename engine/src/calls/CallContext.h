#ifndef QOR_CLI_ENGINE_CALL_CONTEXT_H
#define QOR_CLI_ENGINE_CALL_CONTEXT_H

#include <exception>

#include "AutoCompleteResult.h"
#include "QorCliApiContext.h"
#include "calls/Session.h"

namespace QorCliEngine {

// The context record of one call to a component, and what answers it.
//
// The record begins as the session's; what the component changes reaches the
// session at once, or at the end when it writes a member of the record. Every
// function of the record returns 0, or -1 when it could not do its work. One
// thread.
class CallContext {
 public:
  // `session` is not owned and must outlive the context.
  explicit CallContext(Session& session);
  virtual ~CallContext();
  CallContext(CallContext const&) = delete;
  CallContext& operator=(CallContext const&) = delete;

  // Valid as long as the context.
  QorCliApiContext_5* record() { return &record_.record; }

  // Throws what a function of the record ran into, if anything. Nothing is
  // thrown through the component that called the function.
  void rethrow() const;

 protected:
  // A text that the component printed. Never null. Dropped, in this class.
  virtual void acceptOutput(char const* text);
  // A candidate that the component offered. Dropped, in this class.
  virtual void acceptCandidate(
      QorCliUtilities::AutoCompleteResult const& candidate);

 private:
  struct Functions;

  // What a function of the record is given points at the first member.
  struct Record {
    QorCliApiContext_5 record;
    CallContext* context;
  };

  Session& session_;
  Record record_;
  std::exception_ptr error_;
};

}  // namespace QorCliEngine

#endif
