#include "calls/CallContext.h"

#include <type_traits>

#include "OrEmpty.h"

namespace QorCliEngine {
namespace {

using QorCliUtilities::orEmpty;

constexpr QorReturnT kFailed = -1;

}  // namespace

// The functions of the record.
struct CallContext::Functions {
  static_assert(std::is_standard_layout_v<Record>);

  template <class Action>
  static QorReturnT perform(QorCliApiContext_5* record, Action const& action) {
    if (record == nullptr) return kFailed;
    CallContext& context = *reinterpret_cast<Record*>(record)->context;
    try {
      action(context);
      return 0;
    } catch (...) {
      if (!context.error_) context.error_ = std::current_exception();
      return kFailed;
    }
  }

  static QorReturnT setCursor(QorCliApiContext_5* record, char const* cursor) {
    return perform(record, [&](CallContext& context) {
      context.session_.setCursor(cursor);
      record->cursor = context.session_.record().cursor;
    });
  }

  static QorReturnT setPrompt(QorCliApiContext_5* record, char const* prompt) {
    return perform(record, [&](CallContext& context) {
      context.session_.setPrompt(prompt);
      record->prompt = context.session_.record().prompt;
    });
  }

  static QorReturnT setOutput(QorCliApiContext_5* record, unsigned, unsigned,
                              unsigned, char const* text) {
    return perform(record, [&](CallContext& context) {
      context.acceptOutput(orEmpty(text));
    });
  }

  // An older way to offer a candidate: without a place among the others.
  static QorReturnT setAutocompleteResult(QorCliApiContext_5* record,
                                          unsigned index, unsigned count,
                                          unsigned actionId, unsigned token,
                                          char const* completion,
                                          char const* help) {
    return setSortableAutocompleteResult(record, index, count, actionId, token,
                                         completion, help, QOR_CLI_SORT_COMMAND,
                                         completion);
  }

  static QorReturnT sessionShutdown(QorCliApiContext_5* record, unsigned) {
    return perform(record,
                   [](CallContext& context) { context.session_.shutDown(); });
  }

  static QorReturnT setSortableAutocompleteResult(
      QorCliApiContext_5* record, unsigned, unsigned, unsigned, unsigned token,
      char const* completion, char const* help, unsigned sortOrder,
      char const* sortKey) {
    return perform(record, [&](CallContext& context) {
      context.acceptCandidate({QorCliCompletionToken_1T{token},
                               orEmpty(completion),
                               orEmpty(help),
                               {sortOrder, orEmpty(sortKey)}});
    });
  }

  static QorReturnT setLock(QorCliApiContext_5* record, unsigned lock) {
    return perform(record, [&](CallContext& context) {
      context.session_.setLock(lock);
      record->lock = context.session_.record().lock;
    });
  }
};

CallContext::CallContext(Session& session)
    : session_(session), record_{session.record(), this} {
  QorCliApiContext_5& record = record_.record;
  record.setCursor = Functions::setCursor;
  record.setPrompt = Functions::setPrompt;
  record.setOutput = Functions::setOutput;
  record.setAutocompleteResult = Functions::setAutocompleteResult;
  record.sessionShutdown = Functions::sessionShutdown;
  record.setSortableAutocompleteResult =
      Functions::setSortableAutocompleteResult;
  record.setLock = Functions::setLock;
}

CallContext::~CallContext() { session_.adopt(record_.record); }

void CallContext::rethrow() const {
  if (error_) std::rethrow_exception(error_);
}

void CallContext::acceptOutput(char const*) {}

void CallContext::acceptCandidate(QorCliUtilities::AutoCompleteResult const&) {}

}  // namespace QorCliEngine
