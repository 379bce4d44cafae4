// A minimal CLI engine: runs one pipe command over standard input, or prints
// its completions.
//
//   small_engine PLUGIN COMMAND
//   small_engine --complete PLUGIN COMMAND

#include <QorCliPipeCommand.h>
#include <QorMgmtSpi.h>
#include <QorReturn.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

// ---- The portal, with which a plug-in registers its component

QorMgmtSpiComponent_1* registered = nullptr;

QorReturnT getInterface(char const*, char const*, char const*, void**) {
  return QOR_RETURN_NOT_FOUND;
}

QorReturnT registerComponent(QorMgmtSpiComponent_1* component) {
  if (registered != nullptr) return QOR_RETURN_ALREADY_EXISTS;
  registered = component;
  return QOR_RETURN_SUCCESS;
}

QorReturnT unregisterComponent(QorMgmtSpiComponent_1* component) {
  if (registered != component) return QOR_RETURN_NOT_FOUND;
  registered = nullptr;
  return QOR_RETURN_SUCCESS;
}

QorMgmtSpiInterfacePortal* getPortal(char const* version) {
  static QorMgmtSpiInterfacePortal portal{};
  portal.getInterface = getInterface;
  portal.registerComponent = registerComponent;
  portal.unregisterComponent = unregisterComponent;
  return std::strcmp(version, "1") == 0 ? &portal : nullptr;
}

// ---- The life cycle

void require(bool condition, std::string const& what) {
  if (!condition) throw std::runtime_error(what);
}

// Calls into a plug-in. The type of an exception may be defined in the plug-in,
// and its code is unloaded with it, so rethrows it as one of the engine's.
template <typename Call>
auto guarded(Call call) {
  try {
    return call();
  } catch (std::exception const& exception) {
    throw std::runtime_error("the plug-in throws: " +
                             std::string(exception.what()));
  } catch (...) {
    throw std::runtime_error("the plug-in throws something unknown");
  }
}

// A plug-in with one component, from loading to unloading.
class Plugin {
 public:
  explicit Plugin(char const* path)
      : library_(::dlopen(path, RTLD_NOW | RTLD_LOCAL), ::dlclose) {
    require(library_ != nullptr, "cannot load the plug-in");
    init_ = reinterpret_cast<QorLCMinitFunction>(
        ::dlsym(library_.get(), "qorLCMinit"));
    terminate_ = reinterpret_cast<QorLCMterminateFunction>(
        ::dlsym(library_.get(), "qorLCMterminate"));
    require(init_ != nullptr && terminate_ != nullptr, "no entry points");
  }

  void start() {
    QorMgmtSpiInterfacePortalAccessor accessor{getPortal};
    require(guarded([&] { return init_(&accessor, ""); }) == 0,
            "the plug-in does not initialise");
    require(registered != nullptr, "the plug-in registers nothing");
    require(
        guarded([] { return registered->start(QOR_STATE_CHANGE_NORMAL); }) == 0,
        "the component does not start");
    started_ = true;
  }

  ~Plugin() {
    if (started_) leave([] { registered->stop(QOR_STATE_CHANGE_NORMAL); });
    leave(terminate_);
  }

  // The component's pipe command interface.
  QorCliApiPipeCommandComponent_1 const& pipeCommands() const {
    for (auto entry = registered->providedInterfaces; *entry != nullptr;
         ++entry) {
      if (std::strcmp((*entry)->interfaceName,
                      "QorCliApiPipeCommandComponent") == 0) {
        return reinterpret_cast<QorCliApiPipeCommandComponent_1 const&>(
            **entry);
      }
    }
    throw std::runtime_error("the component has no pipe commands");
  }

 private:
  // A step of unloading. A failure does not prevent the next one.
  template <typename Call>
  static void leave(Call call) {
    try {
      guarded(call);
    } catch (std::exception const& failure) {
      std::cerr << "small_engine: " << failure.what() << '\n';
    }
  }

  std::unique_ptr<void, int (*)(void*)> library_;
  QorLCMinitFunction init_ = nullptr;
  QorLCMterminateFunction terminate_ = nullptr;
  bool started_ = false;
};

// ---- The context record of a call

QorReturnT printOutput(QorCliApiContext_5*, unsigned, unsigned, unsigned,
                       char const* text) {
  std::size_t const length = std::strlen(text);
  std::cout << text;
  if (length != 0 && text[length - 1] != '\n') std::cout << '\n';
  return 0;
}

QorReturnT printCandidate(QorCliApiContext_5*, unsigned, unsigned, unsigned,
                          unsigned, char const* completion, char const* help,
                          unsigned, char const*) {
  std::cout << completion << '\t' << help << '\n';
  return 0;
}

QorReturnT ignorePrompt(QorCliApiContext_5*, char const*) { return 0; }

QorCliApiContext_5 newRecord() {
  QorCliApiContext_5 record{};
  record.sessionId = 1;
  record.loginName = "operator";
  record.mode = QOR_CLI_MODE_EXEC;
  record.cursor = "";
  record.prompt = "> ";
  record.setPrompt = ignorePrompt;
  record.setOutput = printOutput;
  record.setSortableAutocompleteResult = printCandidate;
  return record;
}

// ---- The actions

void execute(QorCliApiPipeCommandComponent_1 const& commands,
             char const* command, unsigned actionId, std::string const& input) {
  QorCliApiContext_5 record = newRecord();
  unsigned matches = 0;
  QorReturnT const status = guarded([&] {
    return commands.useModule(&record, QOR_CLI_ACTION_EXECUTE, actionId,
                              &matches, command, input.c_str());
  });
  require(matches != 0, "unknown or incomplete command");
  require(status == 0, "the command failed");
}

// Passes standard input on in chunks of whole lines, with one action id.
void feed(QorCliApiPipeCommandComponent_1 const& commands, char const* command,
          unsigned actionId) {
  constexpr std::size_t kChunk = 65536;  // bytes, unless a line is longer
  execute(commands, command, actionId, "");
  std::string chunk;
  for (std::string line; std::getline(std::cin, line);) {
    std::replace(line.begin(), line.end(), '\0', ' ');
    chunk += line + '\n';
    if (chunk.size() < kChunk) continue;
    execute(commands, command, actionId, chunk);
    chunk.clear();
  }
  if (!chunk.empty()) execute(commands, command, actionId, chunk);
}

// Completes the input even if the command has failed.
void run(QorCliApiPipeCommandComponent_1 const& commands, char const* command) {
  constexpr unsigned kActionId = 1;
  std::string failure;
  try {
    feed(commands, command, kActionId);
  } catch (std::exception const& exception) {
    failure = exception.what();
  }
  QorCliApiContext_5 record = newRecord();
  QorReturnT const status =
      guarded([&] { return commands.inputComplete(&record, kActionId); });
  require(failure.empty(), failure);
  require(status == 0, "the command failed at the end of its input");
}

void complete(QorCliApiPipeCommandComponent_1 const& commands,
              char const* command) {
  QorCliApiContext_5 record = newRecord();
  unsigned matches = 0;
  QorReturnT const status = guarded([&] {
    return commands.useModule(&record, QOR_CLI_ACTION_COMPLETE, 1, &matches,
                              command, "");
  });
  require(status == 0, "the line cannot be understood");
}

}  // namespace

int main(int argc, char** argv) {
  bool const completing = argc == 4 && std::strcmp(argv[1], "--complete") == 0;
  if (argc != 3 && !completing) {
    std::cerr << "usage: small_engine [--complete] PLUGIN COMMAND\n";
    return 2;
  }
  try {
    Plugin plugin(argv[argc - 2]);
    plugin.start();
    (completing ? complete : run)(plugin.pipeCommands(), argv[argc - 1]);
    return 0;
  } catch (std::exception const& failure) {
    std::cerr << "small_engine: " << failure.what() << '\n';
    return 1;
  }
}
