#include "tests/support/ChildProcess.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nivlo::test {
namespace {

/// Makes a file in memory for the program's output. Every write is appended, also those of its children.
Descriptor makeCollector() {
  Descriptor file(memfd_create("output", MFD_CLOEXEC));
  if (fcntl(file.get(), F_SETFL, O_APPEND) != 0) {
    throw std::system_error(errno, std::generic_category(), "memfd");
  }
  return file;
}

std::vector<std::string> environmentWith(const Environment& changes) {
  std::vector<std::string> result;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string_view text = *entry;
    if (!changes.contains(std::string(text.substr(0, text.find('='))))) {
      result.emplace_back(text);
    }
  }
  for (const auto& [name, value] : changes) {
    if (value) {
      result.push_back(name + "=" + *value);
    }
  }
  return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  for (std::string& string : strings) {
    pointers.push_back(string.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

/// Turns the forked child into the program. Between fork and exec it may only make system calls, because
/// other threads of the parent may have held locks.
[[noreturn]] void becomeProgram(pid_t parent, int input, int output, int error, char** arguments,
                                char** environment) {
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) {
    _exit(127);
  }
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  dup2(error, STDERR_FILENO);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  ::signal(SIGPIPE, SIG_DFL);
  execvpe(arguments[0], arguments, environment);
  _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> arguments, const Environment& changes)
    : name_(arguments.front()) {
  std::vector<std::string> environment = environmentWith(changes);
  const std::vector<char*> argumentPointers = pointersTo(arguments);
  const std::vector<char*> environmentPointers = pointersTo(environment);
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  const Descriptor readEnd(ends[0]);
  input_ = Descriptor(ends[1]);

  const pid_t self = getpid();
  pid_ = fork();
  if (pid_ < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
  }
  if (pid_ == 0) {
    becomeProgram(self, readEnd.get(), output_.file.get(), error_.file.get(),
                  const_cast<char**>(argumentPointers.data()),
                  const_cast<char**>(environmentPointers.data()));
  }
  // Parent and child both set the group, so that it exists whichever of them runs first.
  setpgid(pid_, pid_);
}

ChildProcess::~ChildProcess() { kill(); }

std::optional<std::string> ChildProcess::waitForLine(std::string_view text,
                                                     std::chrono::milliseconds timeout) {
  std::optional<std::string> line;
  waitFor(
      [&] {
        // Checked before the search, so that the search sees all that an ended program wrote.
        const bool stillRuns = isRunning();
        line = output_.findLine(text);
        if (!line) {
          line = error_.findLine(text);
        }
        return line || !stillRuns;
      },
      timeout);
  return line;
}

std::string ChildProcess::expectLine(std::string_view text) {
  const std::optional<std::string> line = waitForLine(text);
  require(line.has_value());
  return *line;
}

void ChildProcess::expectReady(const std::function<bool()>& condition) {
  bool holds = false;
  waitFor([&] {
    holds = condition();
    return holds || !isRunning();
  });
  require(holds);
}

void ChildProcess::require(bool holds) const {
  if (!holds) {
    throw std::runtime_error(name_ + " did not do what the test waited for. Its output: " + output());
  }
}

ChildProcess::Collected::Collected() : file(makeCollector()) {}

std::string ChildProcess::Collected::text() const {
  struct stat status {};
  fstat(file.get(), &status);
  std::string all(static_cast<std::size_t>(status.st_size), '\0');
  all.resize(static_cast<std::size_t>(std::max<ssize_t>(pread(file.get(), all.data(), all.size(), 0), 0)));
  return all;
}

std::optional<std::string> ChildProcess::Collected::findLine(std::string_view text) {
  const std::string all = this->text();
  const std::size_t found = all.find(text, searched);
  const std::size_t end = found == std::string::npos ? found : all.find('\n', found);
  if (end == std::string::npos) {
    return std::nullopt;
  }
  const std::size_t begin = std::max(all.rfind('\n', found) + 1, searched);
  searched = end + 1;
  return all.substr(begin, end - begin);
}

std::string ChildProcess::output() const { return output_.text() + error_.text(); }

std::string ChildProcess::standardOutput() const { return output_.text(); }

bool ChildProcess::write(std::string_view text) {
  // A program that ends while it is written to must not kill the test with SIGPIPE.
  static const auto previous = ::signal(SIGPIPE, SIG_IGN);
  static_cast<void>(previous);
  while (!text.empty()) {
    const ssize_t written = ::write(input_.get(), text.data(), text.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

void ChildProcess::closeInput() { input_ = Descriptor(); }

void ChildProcess::signal(int number) {
  if (!exitStatus_) {
    ::kill(pid_, number);
  }
}

std::optional<int> ChildProcess::terminate(std::chrono::milliseconds timeout) {
  signal(SIGTERM);
  return waitForExit(timeout);
}

void ChildProcess::kill() {
  ::kill(-pid_, SIGKILL);
  waitForExit();
}

std::optional<int> ChildProcess::waitForExit(std::chrono::milliseconds timeout) {
  waitFor([this] { return !isRunning(); }, timeout);
  return exitStatus_;
}

bool ChildProcess::isRunning() {
  if (exitStatus_) {
    return false;
  }
  int status = 0;
  if (waitpid(pid_, &status, WNOHANG) != pid_) {
    return true;
  }
  exitStatus_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return false;
}

std::string outputOf(std::vector<std::string> arguments, const Environment& changes) {
  ChildProcess process(std::move(arguments), changes);
  process.expectReady([&] { return process.waitForExit() == 0; });
  return process.standardOutput();
}

}  // namespace nivlo::test
