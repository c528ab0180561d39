#include "linux/codes/process/ReaderProcess.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <string_view>
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

[[noreturn]] void fail(std::string_view cause, std::string_view remedy) {
  throw std::runtime_error(fmt::format("{}. {}", cause, remedy));
}

[[noreturn]] void failToStart(int error) {
  fail(fmt::format("no codes are read because nivlo-reader could not be started ({})",
                   std::generic_category().message(error)),
       "Nivlo keeps trying; check the limits on processes and open files, or reinstall Nivlo");
}

[[noreturn]] void failWithInvalidReply() {
  fail("nivlo-reader sent an invalid reply, which is discarded",
       "It will be restarted and this picture is skipped; if codes stay unread, reinstall Nivlo");
}

struct FailedStart {
  int status;
  const char* cause;
  const char* remedy;
};

constexpr FailedStart kFailedStarts[] = {
    {kReaderNotReady, "nivlo-reader could not prepare itself, probably for lack of memory",
     "It will be restarted; close other programs, or raise the limit on memory that Nivlo runs under"},
    {static_cast<int>(SandboxStep::Privileges), "nivlo-reader cannot give up its privileges here (prctl)",
     "Allow prctl, for example in the settings of the container that Nivlo runs in"},
    {static_cast<int>(SandboxStep::Limits), "nivlo-reader cannot limit its own resources here (setrlimit)",
     "Allow setrlimit, for example in the settings of the container that Nivlo runs in"},
    {static_cast<int>(SandboxStep::Filter), "nivlo-reader cannot filter its own system calls here (seccomp)",
     "Allow seccomp, for example in the settings of the container that Nivlo runs in, and use a kernel that "
     "has it"},
};

[[noreturn]] void failWithExit(int waitStatus) {
  if (WIFSIGNALED(waitStatus)) {
    const int signal = WTERMSIG(waitStatus);
    const char* description = sigdescr_np(signal);
    fail(fmt::format(
             "nivlo-reader was killed by signal {} ({}), probably because of a picture it cannot handle",
             signal, description ? description : "unknown"),
         "It will be restarted and this picture is skipped");
  }
  for (const auto& [status, cause, remedy] : kFailedStarts) {
    if (status == WEXITSTATUS(waitStatus)) {
      fail(fmt::format("no codes are read because {}", cause), remedy);
    }
  }
  fail(fmt::format("nivlo-reader exited with status {}", WEXITSTATUS(waitStatus)),
       "It will be restarted and this picture is skipped; if codes stay unread, reinstall Nivlo");
}

/// Returns the program's end and the child's. The child's number is above those that the child inherits, so
/// that setting up one of them cannot overwrite it.
std::pair<Descriptor, Descriptor> makeSockets() {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    failToStart(errno);
  }
  Descriptor ours(ends[0]);
  const Descriptor low(ends[1]);
  Descriptor theirs(fcntl(low.get(), F_DUPFD_CLOEXEC, kReaderPicture + 1));
  if (theirs.get() < 0) {
    failToStart(errno);
  }
  return {std::move(ours), std::move(theirs)};
}

/// Leaves the child no descriptors but its own two and the standard ones, which lead to /dev/null. Sanitizers
/// report on standard error, so there it stays open. The child starts in "/", so that nothing in the folder
/// where the program was started can be loaded into it.
class FileActions {
 public:
  FileActions(int socket, int picture) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addchdir_np(&actions_, "/");
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

/// Unblocks all signals and restores their default actions. Gives the child a session of its own, so that it
/// does not receive Ctrl+C meant for the program and cannot put input into the terminal.
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

/// Returns true once the descriptor can be read or its other end has been closed, false at the deadline.
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
    : reply_(kMaxReplySize, '\0') {
  auto [ours, theirs] = makeSockets();
  const FileActions actions(theirs.get(), picture);
  const Attributes attributes;
  std::string name = program.string();
  std::array<char*, 2> arguments = {name.data(), nullptr};
  std::array<char*, 1> environment = {nullptr};
  const int error =
      posix_spawn(&pid_, name.c_str(), actions.get(), attributes.get(), arguments.data(), environment.data());
  if (error != 0) {
    failToStart(error);
  }
  socket_ = std::move(ours);
}

ReaderProcess::~ReaderProcess() { killAndReap(); }

std::vector<DecodedCode> ReaderProcess::look(LookRequest request, std::chrono::milliseconds deadline) {
  request.number = ++looks_;
  const auto end = Clock::now() + deadline;
  if (send(socket_.get(), &request, sizeof request, MSG_NOSIGNAL) < 0) {
    failWithExit(killAndReap());
  }
  if (!waitUntilReadable(socket_.get(), end)) {
    fail(fmt::format("nivlo-reader did not reply within {} ms and is killed", deadline.count()),
         "It will be restarted and this picture is skipped; the computer may be overloaded");
  }
  // With MSG_TRUNC a reply that is too long is cut, but its full length is returned.
  const auto size = recv(socket_.get(), reply_.data(), reply_.size(), MSG_TRUNC | MSG_DONTWAIT);
  if (size <= 0) {
    failWithExit(killAndReap());
  }
  if (static_cast<std::size_t>(size) > reply_.size()) {
    failWithInvalidReply();
  }
  auto codes = parseReply(request, std::string_view(reply_).substr(0, size));
  if (!codes) {
    failWithInvalidReply();
  }
  return std::move(*codes);
}

/// Returns the wait status, which is the process's own if it has ended by itself, and 0 if it is gone
/// already.
int ReaderProcess::killAndReap() {
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
