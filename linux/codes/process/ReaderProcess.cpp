#include "linux/codes/process/ReaderProcess.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include "linux/codes/protocol/Sanitized.hpp"

namespace nivlo {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(int error) {
  throw std::system_error(error, std::generic_category(), "cannot be started");
}

/// The program's end, and the child's, which lies clear of the numbers that are set up in the child.
std::pair<Descriptor, Descriptor> makeSockets() {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    fail(errno);
  }
  Descriptor ours(ends[0]);
  const Descriptor low(ends[1]);
  Descriptor theirs(fcntl(low.get(), F_DUPFD_CLOEXEC, kReaderPicture + 1));
  if (theirs.get() < 0) {
    fail(errno);
  }
  return {std::move(ours), std::move(theirs)};
}

/// What the child begins with: nothing but its own two descriptors.
class FileActions {
 public:
  FileActions(int socket, int picture) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
    if (!kSanitized) {
      posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDERR_FILENO);
    }
    posix_spawn_file_actions_adddup2(&actions_, socket, kReaderSocket);
    posix_spawn_file_actions_adddup2(&actions_, picture, kReaderPicture);
    posix_spawn_file_actions_addclosefrom_np(&actions_, kReaderPicture + 1);
  }
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// No signal blocked or ignored; a session of its own, so that Ctrl+C in a terminal ends the program alone
/// and no terminal can be typed into.
class Attributes {
 public:
  Attributes() {
    posix_spawnattr_init(&attributes_);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setflags(&attributes_,
                             POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
  }
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

/// Returns whether it can be read from, or has been closed at the other end, before the deadline.
bool waitUntilReadable(int descriptor, Clock::time_point deadline) {
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd wanted{descriptor, POLLIN, 0};
    const int ready = poll(&wanted, 1, std::max(0, static_cast<int>(left.count())));
    if (ready > 0) {
      return true;
    }
    if (ready == 0 || errno != EINTR) {
      return false;
    }
  }
}

}  // namespace

ReaderProcess::ReaderProcess(const std::filesystem::path& program, int picture)
    : reply_(kLongestReply, '\0') {
  auto [ours, theirs] = makeSockets();
  const FileActions actions(theirs.get(), picture);
  const Attributes attributes;
  std::string name = program.string();
  std::array<char*, 2> arguments = {name.data(), nullptr};
  std::array<char*, 1> environment = {nullptr};
  const int error =
      posix_spawn(&pid_, name.c_str(), actions.get(), attributes.get(), arguments.data(), environment.data());
  if (error != 0) {
    fail(error);
  }
  socket_ = std::move(ours);
}

ReaderProcess::~ReaderProcess() { end(); }

std::vector<DecodedCode> ReaderProcess::look(LookRequest request, std::chrono::milliseconds deadline) {
  request.number = ++looks_;
  const auto end = Clock::now() + deadline;
  if (send(socket_.get(), &request, sizeof request, MSG_NOSIGNAL) < 0) {
    failAsItEnded();
  }
  if (!waitUntilReadable(socket_.get(), end)) {
    throw std::runtime_error(fmt::format("had not answered after {} ms", deadline.count()));
  }
  // A longer answer is cut, but its whole length is told.
  const auto size = recv(socket_.get(), reply_.data(), reply_.size(), MSG_TRUNC | MSG_DONTWAIT);
  if (size <= 0) {
    failAsItEnded();
  }
  if (static_cast<std::size_t>(size) > reply_.size()) {
    throw std::runtime_error("answered too much");
  }
  auto codes = parseReply(request, std::string_view(reply_).substr(0, size));
  if (!codes) {
    throw std::runtime_error("answered nonsense");
  }
  return std::move(*codes);
}

void ReaderProcess::failAsItEnded() {
  const int status = end();
  if (WIFEXITED(status) && WEXITSTATUS(status) == kReaderUncaged) {
    throw std::runtime_error("runs only where system calls can be filtered (seccomp), which is not so here");
  }
  if (WIFEXITED(status)) {
    throw std::runtime_error(fmt::format("ended with status {}", WEXITSTATUS(status)));
  }
  const int signal = WTERMSIG(status);
  const char* description = sigdescr_np(signal);
  throw std::runtime_error(
      fmt::format("was ended by signal {} ({})", signal, description ? description : "unknown"));
}

/// Returns its status. One that has ended by itself keeps its own.
int ReaderProcess::end() {
  if (pid_ < 0) {
    return 0;
  }
  kill(pid_, SIGKILL);
  int status = 0;
  while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  pid_ = -1;
  return status;
}

}  // namespace nivlo
