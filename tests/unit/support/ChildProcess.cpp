#include "ChildProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace QorUnit {
namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> list;
  for (std::string& text : texts) list.push_back(text.data());
  list.push_back(nullptr);
  return list;
}

void redirect(int descriptor, std::string const& path) {
  int const file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  if (file < 0 || dup2(file, descriptor) < 0) _exit(126);
}

}  // namespace

TemporaryFile::TemporaryFile() {
  char const* const root = std::getenv("TMPDIR");
  folder_ = std::string(root == nullptr ? "/tmp" : root) + "/unit-XXXXXX";
  if (mkdtemp(folder_.data()) == nullptr) {
    throw std::runtime_error("no temporary folder");
  }
}

TemporaryFile::~TemporaryFile() {
  unlink(path().c_str());
  rmdir(folder_.c_str());
}

std::string TemporaryFile::read(std::size_t offset) const {
  std::ifstream file(path(), std::ios::binary);
  file.seekg(static_cast<std::streamoff>(offset));
  return {std::istreambuf_iterator<char>(file), {}};
}

ChildResult runChild(std::string const& program, std::string const& argument,
                     std::map<std::string, std::string> const& environment) {
  TemporaryFile const out;
  TemporaryFile const err;
  std::vector<std::string> arguments{program, argument};
  std::vector<std::string> variables;
  for (auto const& [name, value] : environment) {
    variables.push_back(name + '=' + value);
  }
  pid_t const child = fork();
  if (child == 0) {
    redirect(STDOUT_FILENO, out.path());
    redirect(STDERR_FILENO, err.path());
    execve(program.c_str(), pointers(arguments).data(),
           pointers(variables).data());
    _exit(127);
  }
  int status = 0;
  bool const exited =
      child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status);
  return {exited ? WEXITSTATUS(status) : -1, out.read(), err.read()};
}

}  // namespace QorUnit
