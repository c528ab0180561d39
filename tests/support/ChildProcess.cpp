#include "tests/support/ChildProcess.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nivlo::test {
namespace {

struct Pipe {
  FileDescriptor readEnd, writeEnd;
};

Pipe makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

std::vector<std::string> environmentWith(const Environment& changes) {
  std::vector<std::string> result;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string_view text = *entry;
    if (!changes.contains(std::string(text.substr(0, text.find('='))))) result.emplace_back(text);
  }
  for (const auto& [name, value] : changes) {
    if (value) result.push_back(name + "=" + *value);
  }
  return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& strings) {
  std::vector<char*> pointers;
  for (std::string& string : strings) pointers.push_back(string.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Runs between fork and exec: system calls only.
[[noreturn]] void becomeProgram(pid_t parent, int input, int output, int error, char** arguments,
                                char** environment) {
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(127);
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

ChildProcess::ChildProcess(std::vector<std::string> arguments, const Environment& changes) {
  std::vector<std::string> environment = environmentWith(changes);
  const std::vector<char*> argumentPointers = pointersTo(arguments);
  const std::vector<char*> environmentPointers = pointersTo(environment);
  Pipe input = makePipe();
  Pipe output = makePipe();
  Pipe error = makePipe();
  stop_ = FileDescriptor(eventfd(0, EFD_CLOEXEC));

  const pid_t self = getpid();
  pid_ = fork();
  if (pid_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (pid_ == 0) {
    becomeProgram(self, input.readEnd.get(), output.writeEnd.get(), error.writeEnd.get(),
                  const_cast<char**>(argumentPointers.data()),
                  const_cast<char**>(environmentPointers.data()));
  }
  // Both sides set the group, so that it exists whichever of them comes first.
  setpgid(pid_, pid_);
  input_ = std::move(input.writeEnd);
  output_ = std::move(output.readEnd);
  error_ = std::move(error.readEnd);
  collector_ = std::thread([this] { collect(); });
}

ChildProcess::~ChildProcess() {
  kill();
  // A grandchild that left the group may still hold the pipes, so their end is not waited for.
  eventfd_write(stop_.get(), 1);
  collector_.join();
}

std::optional<std::string> ChildProcess::waitForLine(std::string_view text,
                                                     std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  std::unique_lock lock(mutex_);
  for (;;) {
    for (std::size_t i = searched_; i < lines_.size(); ++i) {
      if (!lines_[i].complete || lines_[i].text.find(text) == std::string::npos) continue;
      searched_ = i + 1;
      return lines_[i].text;
    }
    if (closed_) return std::nullopt;
    if (arrived_.wait_until(lock, deadline) == std::cv_status::timeout) return std::nullopt;
  }
}

std::string ChildProcess::output() const {
  const std::lock_guard lock(mutex_);
  std::string all;
  for (const Line& line : lines_) all += line.complete ? line.text + "\n" : line.text;
  return all;
}

std::string ChildProcess::standardOutput() const {
  const std::lock_guard lock(mutex_);
  std::string all;
  for (const Line& line : lines_) {
    if (line.source == Source::Output) all += line.complete ? line.text + "\n" : line.text;
  }
  return all;
}

bool ChildProcess::write(std::string_view text) {
  // A program that ends while it is written to must not take the test down with SIGPIPE.
  static const auto previous = ::signal(SIGPIPE, SIG_IGN);
  static_cast<void>(previous);
  while (!text.empty()) {
    const ssize_t written = ::write(input_.get(), text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

void ChildProcess::closeInput() { input_.reset(); }

void ChildProcess::signal(int number) {
  if (!exitStatus_) ::kill(pid_, number);
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
  if (exitStatus_) return false;
  int status = 0;
  if (waitpid(pid_, &status, WNOHANG) != pid_) return true;
  exitStatus_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return false;
}

void ChildProcess::collect() {
  std::array<pollfd, 3> watched{pollfd{output_.get(), POLLIN, 0}, pollfd{error_.get(), POLLIN, 0},
                                pollfd{stop_.get(), POLLIN, 0}};
  while (watched[0].fd >= 0 || watched[1].fd >= 0) {
    if (poll(watched.data(), watched.size(), -1) < 0 && errno != EINTR) break;
    if (watched[0].revents != 0 && !collectFrom(output_, Source::Output)) watched[0].fd = -1;
    if (watched[1].revents != 0 && !collectFrom(error_, Source::Error)) watched[1].fd = -1;
    if (watched[2].revents != 0) break;
  }
  const std::lock_guard lock(mutex_);
  closed_ = true;
  arrived_.notify_all();
}

bool ChildProcess::collectFrom(const FileDescriptor& from, Source source) {
  std::array<char, 4096> bytes{};
  const ssize_t count = read(from.get(), bytes.data(), bytes.size());
  if (count < 0 && errno == EINTR) return true;
  if (count <= 0) return false;
  append(source, std::string_view(bytes.data(), static_cast<std::size_t>(count)));
  return true;
}

void ChildProcess::append(Source source, std::string_view text) {
  const std::lock_guard lock(mutex_);
  while (!text.empty()) {
    const auto open = std::find_if(lines_.rbegin(), lines_.rend(), [source](const Line& line) {
      return line.source == source && !line.complete;
    });
    Line& line = open != lines_.rend() ? *open : lines_.emplace_back(Line{source, {}});
    const std::size_t end = text.find('\n');
    line.text += text.substr(0, end);
    line.complete = end != std::string_view::npos;
    text.remove_prefix(line.complete ? end + 1 : text.size());
  }
  arrived_.notify_all();
}

}  // namespace nivlo::test
