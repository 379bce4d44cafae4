#include "LinearExpression.h"

#include <pthread.h>
#include <re2/re2.h>

#include <csetjmp>
#include <cstdint>
#include <new>

namespace QorCliMatching {
namespace {

constexpr std::int64_t kMostMemory = std::int64_t{8} << 20;  // bytes

// Of a byte of a line, for each instruction of the program, where RE2 has to
// follow many paths at once.
constexpr double kSecondsOfInstruction = 40e-9;

// RE2 does not survive an exception: its destructors read what is gone by then.
// So when memory runs out within it, the handler of operator new abandons the
// work: it jumps back over RE2's frames, and what they held is lost. The
// handler serves all threads of the process; only the worker jumps. The jump
// unwinds pthread_once(), by which RE2 makes what it makes once: with glibc,
// the next call begins that anew.
std::jmp_buf wayBack;
pthread_t worker;
std::new_handler hostsHandler = nullptr;

// The host's handler comes first: it may free some memory.
void freeMemoryOrAbandon() {
  try {
    if (hostsHandler == nullptr) throw std::bad_alloc();
    return hostsHandler();
  } catch (...) {
    if (pthread_equal(worker, pthread_self()) == 0) throw;
  }
  std::longjmp(wayBack, 1);
}

template <typename Work>
void withoutException(Work const& work) {
  worker = pthread_self();
  hostsHandler = std::set_new_handler(freeMemoryOrAbandon);
  bool const isAbandoned = setjmp(wayBack) != 0;
  if (!isAbandoned) work();
  std::set_new_handler(hostsHandler);
  if (isAbandoned) throw std::bad_alloc();
}

re2::RE2::Options options(bool ignoreCase) {
  re2::RE2::Options result(re2::RE2::Latin1);
  result.set_case_sensitive(!ignoreCase);
  result.set_never_capture(true);
  result.set_log_errors(false);
  result.set_max_mem(kMostMemory);
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

double LinearExpression::mostSeconds(std::size_t bytes) const {
  return kSecondsOfInstruction * expression_->ProgramSize() *
         static_cast<double>(bytes);
}

// While RE2 is at work, nobody owns it: abandoned, it must not be destroyed.
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
