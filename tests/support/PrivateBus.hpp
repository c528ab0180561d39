// A private session for a test: XDG directories and a message bus of its own.
#pragma once

#include <filesystem>
#include <memory>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::test {

/// Runs a D-Bus session bus in a private runtime directory until it is destroyed. Construction waits until
/// the bus accepts connections, and throws std::runtime_error with the daemon's output if it does not.
class PrivateBus {
 public:
  PrivateBus();

  /// Returns the changes that put a child, or with ScopedEnvironment this process, into the session: the bus
  /// and the XDG directories, which start out empty. They remove any display and any other PipeWire daemon.
  Environment environment() const;

  std::filesystem::path runtimeDirectory() const { return directory_.path() / "run"; }
  std::filesystem::path configDirectory() const { return directory_.path() / "config"; }
  std::filesystem::path dataDirectory() const { return directory_.path() / "data"; }

  /// Kills the bus, as a crash would.
  void stopDaemon();
  /// Starts a new bus at the same address. Throws as the constructor does.
  void startDaemon();

 private:
  TemporaryDirectory directory_;
  std::unique_ptr<ChildProcess> daemon_;
};

}  // namespace nivlo::test
