// Makes one call of the plug-in between two markers for a tracer: calls of
// getppid, which nothing else in this program makes.
//
//   SystemCallProbe main|thread execute|complete|help|end [LINE [INPUT]]
//
// Writes the status to standard output afterwards.

#include <malloc.h>
#include <pthread.h>
#include <unistd.h>

#include <cstring>
#include <iostream>
#include <stdexcept>
#include <string>

#include "Plugin.h"
#include "QuietPortal.h"

namespace qor_test {
namespace {

ContextRecord quietSession() {
  ContextRecord record{};
  record.setPrompt = [](ContextRecord*, char const*) { return 0; };
  record.setOutput = [](ContextRecord*, unsigned, unsigned, unsigned,
                        char const*) { return 0; };
  return record;
}

struct Call {
  std::string what;
  std::string line;
  std::string input;
  std::int32_t status = 0;
};

std::int32_t made(Call const& call) {
  ContextRecord session = quietSession();
  PipeCommandInterface const& commands = QuietPortal::commands();
  if (call.what == "end") return commands.inputComplete(&session, 1);
  unsigned const action = call.what == "execute"    ? kExecute
                          : call.what == "complete" ? kComplete
                                                    : kHelp;
  unsigned matches = 0;
  return commands.useModule(&session, action, 1, &matches, call.line.c_str(),
                            call.input.c_str());
}

void* makeCall(void* argument) {
  Call& call = *static_cast<Call*>(argument);
  getppid();
  call.status = made(call);
  getppid();
  return nullptr;
}

void makeCallOnThread(Call& call) {
  pthread_t thread{};
  if (pthread_create(&thread, nullptr, makeCall, &call) != 0 ||
      pthread_join(thread, nullptr) != 0) {
    throw std::runtime_error("no thread");
  }
}

int run(int count, char** arguments) {
  if (count < 3) throw std::runtime_error("too few arguments");
  Call call{arguments[2], count > 3 ? arguments[3] : "",
            count > 4 ? arguments[4] : ""};
  // One allocator arena: creating another one reads files.
  mallopt(M_ARENA_MAX, 1);
  Plugin plugin;
  if (plugin.init(QuietPortal::accessor(), nullptr) != 0) return 1;
  if (std::strcmp(arguments[1], "thread") == 0) {
    makeCallOnThread(call);
  } else {
    makeCall(&call);
  }
  plugin.terminate();
  std::cout << "status " << call.status << std::endl;
  return 0;
}

}  // namespace
}  // namespace qor_test

int main(int count, char** arguments) {
  try {
    return qor_test::run(count, arguments);
  } catch (std::exception const& e) {
    std::cerr << e.what() << std::endl;
    return 2;
  }
}
