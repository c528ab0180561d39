// A session of the test's own: directories and a message bus that nobody else uses.
#pragma once

#include <filesystem>
#include <memory>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo::test {

/// Runs a D-Bus session bus in a private runtime directory, from construction on. Throws std::runtime_error,
/// with what the daemon said, when it does not come up.
class PrivateBus {
 public:
  PrivateBus();

  /// What makes a child, or with ScopedEnvironment this process, a member of the session: the XDG
  /// directories, all private and empty, and the bus. It belongs to no display.
  Environment environment() const;

  std::filesystem::path runtimeDirectory() const { return directory_.path() / "run"; }
  std::filesystem::path configDirectory() const { return directory_.path() / "config"; }
  std::filesystem::path dataDirectory() const { return directory_.path() / "data"; }

  void stopDaemon();
  void startDaemon();

 private:
  TemporaryDirectory directory_;
  std::unique_ptr<ChildProcess> daemon_;
};

}  // namespace nivlo::test
