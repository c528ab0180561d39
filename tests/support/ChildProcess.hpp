// A program started by a test.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

#include "linux/handles/Descriptor.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo::test {

/// Runs a program as the leader of a process group of its own. The whole group is killed when the object
/// goes, and the program also when the thread that started it ends. What it writes is kept.
class ChildProcess {
 public:
  /// Starts `arguments[0]`, looked up in PATH, with the arguments given, in this process's environment with
  /// the changes on top. A program that cannot be run ends at once with exit status 127. Throws
  /// std::system_error when the system cannot start another process.
  explicit ChildProcess(std::vector<std::string> arguments, const Environment& changes = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Waits for a whole line, of standard output or standard error, that contains `text`, and returns it. Each
  /// line is found only once: the next search of the same output starts behind the line that the last one
  /// found. Nothing when the time is up, or as soon as the program has ended without such a line.
  std::optional<std::string> waitForLine(std::string_view text,
                                         std::chrono::milliseconds timeout = kPatience);

  /// Waits for the first such line and returns it. Throws as expectReady does when it does not come.
  std::string expectLine(std::string_view text);

  /// Waits until the condition holds. Throws std::runtime_error, with all that the program has written, when
  /// it ends before or the time is up.
  void expectReady(const std::function<bool()>& condition);

  /// All that has been written so far, to standard output and then to standard error.
  std::string output() const;

  /// What has been written to standard output alone, so far.
  std::string standardOutput() const;

  /// Writes to its standard input, all of it. Returns false once the program does not read any more.
  bool write(std::string_view text);

  /// Its standard input reads end of file from now on.
  void closeInput();

  /// Sends a signal to the program alone. Does nothing once its end has been seen.
  void signal(int number);

  /// Asks it to end (SIGTERM) and waits. Returns what waitForExit does.
  std::optional<int> terminate(std::chrono::milliseconds timeout = kPatience);

  /// Kills it with its whole group, and waits until it is gone.
  void kill();

  /// Its exit status, 128 + N when signal N ended it; nothing when it still runs after `timeout`.
  std::optional<int> waitForExit(std::chrono::milliseconds timeout = kPatience);

  bool isRunning();
  pid_t pid() const { return pid_; }

 private:
  /// What the program writes to one of its outputs.
  struct Collected {
    Descriptor file;
    std::size_t searched = 0;  ///< bytes

    Collected();
    std::string text() const;
    std::optional<std::string> findLine(std::string_view text);
  };

  void require(bool holds) const;

  std::string name_;
  pid_t pid_ = -1;
  std::optional<int> exitStatus_;
  Descriptor input_;
  Collected output_, error_;
};

/// Runs a program to its end and returns what it has written to standard output. Throws std::runtime_error,
/// with all that it has written, unless it ends with status 0.
std::string outputOf(std::vector<std::string> arguments, const Environment& changes = {});

}  // namespace nivlo::test
