#include "LinearExpression.h"

#include <pthread.h>
#include <re2/re2.h>

#include <csetjmp>
#include <cstdint>
#include <new>

namespace QorCliMatching {
namespace {

constexpr std::int64_t kMaxMemory = std::int64_t{8} << 20;  // bytes

// Cost of a byte per instruction of the program, if RE2 has to track many
// states.
constexpr double kSecondsPerInstruction = 40e-9;

// RE2 is not exception-safe: its destructors read members that are gone by
// then. So when it runs out of memory, the new-handler jumps back over RE2's
// frames, and what they held is leaked. The handler is shared by all threads of
// the process; only the worker jumps. The jump unwinds pthread_once(), which
// RE2 uses for lazy initialisation: with glibc, the next call starts over.
std::jmp_buf jumpTarget;
pthread_t worker;
std::new_handler hostHandler = nullptr;

// The host's handler goes first: it may free some memory.
void freeMemoryOrAbandon() {
  try {
    if (hostHandler == nullptr) throw std::bad_alloc();
    return hostHandler();
  } catch (...) {
    if (pthread_equal(worker, pthread_self()) == 0) throw;
  }
  std::longjmp(jumpTarget, 1);
}

template <typename Work>
void withoutException(Work const& work) {
  worker = pthread_self();
  hostHandler = std::set_new_handler(freeMemoryOrAbandon);
  bool const isAbandoned = setjmp(jumpTarget) != 0;
  if (!isAbandoned) work();
  std::set_new_handler(hostHandler);
  if (isAbandoned) throw std::bad_alloc();
}

re2::RE2::Options options(bool ignoreCase) {
  re2::RE2::Options result(re2::RE2::Latin1);
  result.set_case_sensitive(!ignoreCase);
  result.set_never_capture(true);
  result.set_log_errors(false);
  result.set_max_mem(kMaxMemory);
  return result;
}

}  // namespace

LinearExpression::LinearExpression(std::string const& regular,
                                   bool ignoreCase) {
  re2::RE2* made = nullptr;
  withoutException([&made, &regular, ignoreCase] {
    made = new re2::RE2(regular, options(ignoreCase));
  });
  expression_.reset(made);
}

LinearExpression::~LinearExpression() = default;

bool LinearExpression::isUsable() const { return expression_->ok(); }

double LinearExpression::maxSeconds(std::size_t bytes) const {
  return kSecondsPerInstruction * expression_->ProgramSize() *
         static_cast<double>(bytes);
}

// Released while RE2 works: after a jump it must not be destroyed.
bool LinearExpression::matches(std::string_view line) {
  re2::RE2* const expression = expression_.release();
  bool isMatch = false;
  withoutException([&isMatch, expression, line] {
    isMatch = expression->Match({line.data(), line.size()}, 0, line.size(),
                                re2::RE2::UNANCHORED, nullptr, 0);
  });
  expression_.reset(expression);
  return isMatch;
}

}  // namespace QorCliMatching
