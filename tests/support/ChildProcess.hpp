// A program that a test runs.
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

/// Runs a program as the leader of a process group of its own, and keeps all that it writes. The whole group
/// is killed when the object is destroyed. The program alone is also killed when the thread that constructed
/// the object ends. For use by one thread.
class ChildProcess {
 public:
  /// Starts `arguments[0]`, which is looked up in PATH, with all of `arguments` and this process's
  /// environment as altered by `changes`. A program that cannot be run shows as one that exits at once with
  /// status 127. Throws std::system_error if the system cannot start another process.
  explicit ChildProcess(std::vector<std::string> arguments, const Environment& changes = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Waits until standard output or standard error has a complete line that contains `text`, and returns it
  /// without its line break. A line is returned only once: the next search of the same output starts after
  /// it. Returns nothing on timeout, or as soon as the program has ended without such a line.
  std::optional<std::string> waitForLine(std::string_view text,
                                         std::chrono::milliseconds timeout = kPatience);

  /// Like waitForLine with the default timeout, but throws as expectReady does if there is no such line.
  std::string expectLine(std::string_view text);

  /// Waits until the condition holds. Throws std::runtime_error, with all that the program has written, if it
  /// ends first or kPatience runs out.
  void expectReady(const std::function<bool()>& condition);

  /// Returns all that the program has written so far: its standard output, then its standard error.
  std::string output() const;

  /// Returns what the program has written to standard output so far.
  std::string standardOutput() const;

  /// Writes all of `text` to the program's standard input, waiting while its pipe is full. Returns false if
  /// the program has closed its standard input or has ended.
  bool write(std::string_view text);

  /// Ends the program's standard input: the program reads end of file.
  void closeInput();

  /// Sends a signal to the program but not to the rest of its group. Does nothing once the program has been
  /// seen to have ended.
  void signal(int number);

  /// Sends SIGTERM and waits for the program to end. Returns what waitForExit does.
  std::optional<int> terminate(std::chrono::milliseconds timeout = kPatience);

  /// Kills the whole group and waits until the program is gone.
  void kill();

  /// Waits for the program to end. Returns its exit status, or 128 + N if signal N killed it, or nothing if
  /// it still runs after `timeout`.
  std::optional<int> waitForExit(std::chrono::milliseconds timeout = kPatience);

  /// Returns false once the program has ended; its exit status is then known.
  bool isRunning();
  pid_t pid() const { return pid_; }

 private:
  /// The text that the program has written to one of its outputs.
  struct Collected {
    Descriptor file;
    std::size_t searched = 0;  ///< bytes that findLine has passed

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

/// Runs a program to its end and returns what it wrote to standard output. Throws std::runtime_error, with
/// all that it wrote, if it exits with another status than 0 or has not ended after kPatience.
std::string outputOf(std::vector<std::string> arguments, const Environment& changes = {});

}  // namespace nivlo::test
