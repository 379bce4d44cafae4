#include "system/Interrupts.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace QorCliEngine {
namespace {

bool caught = false;
int wakeEnds[2] = {-1, -1};
volatile std::sig_atomic_t interrupted = 0;
volatile std::sig_atomic_t ended = 0;
volatile std::sig_atomic_t resized = 0;
volatile std::sig_atomic_t continued = 0;

// Makes descriptor() readable. Called by the handler.
void wake() {
  int const error = errno;
  char const byte = 0;
  ssize_t const written = ::write(wakeEnds[1], &byte, 1);
  // Where no more fits, the other end is readable already.
  static_cast<void>(written);
  errno = error;
}

void forgetWaking() {
  char bytes[64];
  while (::read(wakeEnds[0], bytes, sizeof bytes) > 0) {
  }
}

extern "C" void noteSignal(int signal) {
  switch (signal) {
    case SIGINT:
      interrupted = 1;
      wake();
      break;
    case SIGWINCH:
      resized = 1;
      break;
    case SIGCONT:
      continued = 1;
      break;
    default:
      ended = 1;
      wake();
  }
}

bool takeFlag(volatile std::sig_atomic_t& flag) {
  if (flag == 0) return false;
  flag = 0;
  return true;
}

}  // namespace

void Interrupts::install() {
  if (::pipe2(wakeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "cannot wait");
  }
  struct sigaction action {};
  action.sa_handler = noteSignal;
  sigemptyset(&action.sa_mask);
  for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGWINCH, SIGCONT}) {
    sigaction(signal, &action, nullptr);
  }
  caught = true;
}

bool Interrupts::installed() { return caught; }

bool Interrupts::requested() { return interrupted != 0 || leaving(); }
// A signal that comes between the steps is not lost: it wakes again.
bool Interrupts::take() {
  bool const was = takeFlag(interrupted);
  forgetWaking();
  if (requested()) wake();
  return was;
}
int Interrupts::descriptor() { return wakeEnds[0]; }
bool Interrupts::leaving() { return ended != 0; }
bool Interrupts::takeResized() { return takeFlag(resized); }
bool Interrupts::takeContinued() { return takeFlag(continued); }

}  // namespace QorCliEngine
